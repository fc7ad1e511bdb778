// Asks the provider when the command has ended: a process runs one command.
#include "client/unread_watch.h"

#include <bit>

#include "client/client_error.h"
#include "client/loaded_module.h"

// Whether there is a provider at all is for the library to say.
UnreadWatch::UnreadWatch()
    : provider_(LoadLibraryExA(PathBesideProgram("QDXL7RA.DLL").c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
    if (provider_) count_ = std::bit_cast<VOKCountUnreadFunction*>(GetProcAddress(provider_.get(), "VOKCountUnread"));
}

void UnreadWatch::RequireAll() const {
    if (count_ == nullptr || count_() == 0) return;
    throw ClientError("this is not all: something could not be read; see what the provider said, or \"faxbook check\"");
}
