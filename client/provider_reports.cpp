// No exception may pass the provider: it is kept, and thrown again behind the call.
#include "client/provider_reports.h"

#include <exception>

#include "client/client_error.h"
#include "client/loaded_module.h"
#include "client/results.h"
#include "mapi/result_codes.h"

namespace {

// Calls a function of this program on behalf of the provider.
class Calls {
  public:
    template <typename Function>
    HRESULT Make(const Function& function) noexcept {
        if (thrown_) return MAPI_E_CALL_FAILED;
        try {
            return function() ? S_OK : S_FALSE;
        } catch (...) {
            thrown_ = std::current_exception();
            return MAPI_E_CALL_FAILED;
        }
    }
    void RethrowWhatWasThrown() const {
        if (thrown_) std::rethrow_exception(thrown_);
    }

  private:
    std::exception_ptr thrown_;
};

struct ListingCall {
    ProfileListing listing;
    const TakeMessage& takeMessage;
    Calls calls;
};

struct DiagnosisCall {
    DiagnosisListener& listener;
    Calls calls;
};

template <typename Report, auto function>
HRESULT STDAPICALLTYPE Ask(void* context, const Report* report) {
    auto& call = *static_cast<DiagnosisCall*>(context);
    return call.calls.Make([&] { return (call.listener.*function)(*report); });
}

void STDAPICALLTYPE TakeProfilesFile(void* context, const char* path) {
    auto& call = *static_cast<ListingCall*>(context);
    call.calls.Make([&] {
        call.listing.file = path;
        return true;
    });
}

HRESULT STDAPICALLTYPE TakeProfile(void* context, const VOKProfileReport* report) {
    auto& call = *static_cast<ListingCall*>(context);
    return call.calls.Make([&] {
        Profile& profile = call.listing.profiles.emplace_back(Profile{report->name, report->isForDisplay != 0, {}});
        for (ULONG i = 0; i < report->serviceCount; ++i) {
            const VOKServiceReport& service = *report->services[i];
            profile.services.push_back({service.name, service.location, service.flags});
        }
        return true;
    });
}

void STDAPICALLTYPE TakeMessageOfListing(void* context, const VOKMessageReport* message) {
    auto& call = *static_cast<ListingCall*>(context);
    call.calls.Make([&] {
        call.takeMessage(*message);
        return true;
    });
}

HRESULT STDAPICALLTYPE TakeCard(void* context, const VOKCardReport* card) {
    auto& call = *static_cast<DiagnosisCall*>(context);
    return call.calls.Make([&] {
        call.listener.HearCard(*card);
        return true;
    });
}

void STDAPICALLTYPE TakeMessageOfDiagnosis(void* context, const VOKMessageReport* message) {
    auto& call = *static_cast<DiagnosisCall*>(context);
    call.calls.Make([&] {
        call.listener.HearMessage(*message);
        return true;
    });
}

}  // namespace

std::string PlaceText(const VOKReportHead& head) {
    const std::string place = *head.path != '\0' ? head.path : head.where;
    return head.line == 0 ? place : place + ":" + std::to_string(head.line);
}

std::string MessageLine(const VOKMessageReport& message) {
    std::string line = PlaceText(message.head) + ": " + message.what;
    if (*message.advice != '\0') line.append("; ").append(message.advice);
    return line;
}

ProfileListing ListProfiles(const TakeMessage& takeMessage) {
    const LoadedModule provider("QDXL7RA.DLL");
    auto* const list = provider.Resolve<VOKListProfilesFunction>("VOKListProfiles");
    ListingCall call = {{}, takeMessage, {}};
    const VOKProfileReceiver receiver = {sizeof(VOKProfileReceiver), &call, TakeProfilesFile, TakeProfile,
                                         takeMessage ? TakeMessageOfListing : nullptr};
    const HRESULT result = list(&receiver);
    call.calls.RethrowWhatWasThrown();
    if (result < 0)
        throw ClientError("cannot read the profiles in " + call.listing.file + ": " + ResultText(result) +
                          "; see what is said of it above");
    return std::move(call.listing);
}

void Diagnose(const std::string& profile, const std::string& location, DiagnosisListener& listener) {
    const LoadedModule provider("QDXL7RA.DLL");
    auto* const diagnose = provider.Resolve<VOKDiagnoseFunction>("VOKDiagnose");
    DiagnosisCall call = {listener, {}};
    const VOKDiagnosisReceiver receiver = {
        sizeof(VOKDiagnosisReceiver),
        &call,
        Ask<VOKBookReport, &DiagnosisListener::HearBook>,
        Ask<VOKFileReport, &DiagnosisListener::HearFile>,
        TakeCard,
        TakeMessageOfDiagnosis,
    };
    const HRESULT result = diagnose(profile.c_str(), location.empty() ? nullptr : location.c_str(), &receiver);
    call.calls.RethrowWhatWasThrown();
    if (result < 0)
        throw ClientError("cannot read " +
                          (profile.empty() ? "the address books" : "those of the profile \"" + profile + "\"") +
                          ": the provider answered " + ResultText(result) + "; see \"faxbook profiles\"");
}
