// Why a profile store did not do what it was asked for. What a user can do about it is in the diagnostics.
#pragma once

#include "failure.h"

class ProfileError : public Failure {
  public:
    enum class Reason {
        NotFound,         // there is no such profile, or no such service of it
        NameTaken,        // there is a profile of that name
        BadName,          // FaultOfNewName says why no profile can be called so
        BadLocation,      // a line of the file cannot hold it
        UnreadableLines,  // the file is there and cannot be understood
        NoAccess          // the file cannot be read or written, or it cannot be told whether it is there
    };

    explicit ProfileError(Reason reason) : Failure(ResultOf(reason)), reason_(reason) {}
    Reason GetReason() const { return reason_; }

  private:
    static constexpr HRESULT ResultOf(Reason reason) {
        switch (reason) {
            case Reason::NotFound:
                return MAPI_E_NOT_FOUND;
            case Reason::NameTaken:
                return MAPI_E_COLLISION;
            case Reason::BadName:
            case Reason::BadLocation:
                return MAPI_E_INVALID_PARAMETER;
            case Reason::UnreadableLines:
                return MAPI_E_CORRUPT_DATA;
            case Reason::NoAccess:
                break;
        }
        return MAPI_E_NO_ACCESS;
    }

    Reason reason_;
};
