// Stopping what is being read, from any thread.
#pragma once

// While the outermost of these lives, something is being read that can be stopped. A reading that begins when none goes
// on knows nothing of stops before it.
class StoppableReading {
  public:
    StoppableReading() noexcept;
    ~StoppableReading();
    StoppableReading(const StoppableReading&) = delete;
    StoppableReading& operator=(const StoppableReading&) = delete;
};

void StopReading() noexcept;

// Throws Failure with MAPI_E_USER_CANCEL when what is being read is to end. Cheap enough to be asked for each card.
void RequireNotStopped();
