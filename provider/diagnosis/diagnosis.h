// Reads the address books of a session for a receiver that explains them: see qdxl7ra.h.
#pragma once

#include "books/session.h"
#include "qdxl7ra.h"

// Messages on their way to a program's receiver.
class MessageForwarder final : public DiagnosticsSink {
  public:
    // The function may be null.
    MessageForwarder(VOKMessageFunction* function, void* context) : function_(function), context_(context) {}
    void Take(const VOKMessageReport& message) override {
        if (function_ != nullptr) function_(context_, &message);
    }

  private:
    VOKMessageFunction* function_;
    void* context_;
};

// Throws Failure with the receiver's result when that is negative.
void Diagnose(Session& session, const VOKDiagnosisReceiver& receiver);
