// Reads the address books of a session for a receiver that explains them: see qdxl7ra.h.
#pragma once

#include "books/session.h"
#include "qdxl7ra.h"

// A session's messages on their way to the receiver, which must outlive it.
class MessageForwarder final : public DiagnosticsSink {
  public:
    explicit MessageForwarder(VOKDiagnosisReceiver& receiver) : receiver_(receiver) {}
    void Take(const std::filesystem::path& file, size_t line, std::string_view what, std::string_view advice) override;

  private:
    VOKDiagnosisReceiver& receiver_;
};

// Throws Failure with the receiver's result when that is negative.
void Diagnose(Session& session, VOKDiagnosisReceiver& receiver);
