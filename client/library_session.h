// The library as a C++ program uses it: Library holds the loaded module and its exports, LibrarySession one open
// address book. Records are those of the library's own header, their text in the system's code page (see text.h). What
// goes wrong is thrown as ClientError.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "client/loaded_module.h"
#include "qdxl7rc.h"

// Every export that this program uses. Adding a name here declares and resolves it.
#define LIBRARY_EXPORTS(EXPORT)    \
    EXPORT(OpenAddressBook)        \
    EXPORT(CloseAddressBook)       \
    EXPORT(GetLastVOKError)        \
    EXPORT(GetAddressBookList)     \
    EXPORT(GetDestinationList)     \
    EXPORT(GetDestinationDetails)  \
    EXPORT(GetDestinationsInGroup) \
    EXPORT(CreateProfile)          \
    EXPORT(DisplayAdminProfiles)

class Library {
  public:
    // Loads QDXL7RC.DLL.
    Library();

    // The result code of the last open, profile creation or profile administration.
    int32_t LastResult() const { return GetLastVOKError(nullptr); }

    HMODULE Module() const { return module_.Handle(); }

#define DECLARE_EXPORT(name) decltype(&::name) name = nullptr;
    LIBRARY_EXPORTS(DECLARE_EXPORT)
#undef DECLARE_EXPORT

  private:
    LoadedModule module_;
};

struct ExpandedGroup {
    uint32_t recipientCount = 0;             // after expansion; a recipient can give no record, or two
    std::vector<GroupMemberRecord> records;  // one per fax destination
};

class LibrarySession {
  public:
    // Opens a session on the profile, the default one for an empty name. The library must outlive the session.
    LibrarySession(const Library& library, std::string_view profile);

    // The address books at the top level; ends all entries read before.
    std::vector<AddressBookRecord> AddressBooks();
    // All containers below an address book, depth first. A record's parent lies in the same vector.
    std::vector<AddressBookRecord> Containers(AddressBookEntry addressBook);
    // Calls the function with each destination of an address book or container, in order; ends the entries of
    // destinations read before. A record lives for the call only: a large book's records together would take hundreds
    // of megabytes.
    void ForEachDestination(AddressBookEntry addressBook,
                            const std::function<void(const DestinationRecord&)>& function);
    // The printable details, lines joined by CR LF.
    std::string Details(DestinationEntry destination);
    ExpandedGroup Members(DestinationEntry group);

  private:
    struct Closer {
        const Library* library;
        void operator()(SessionHandle* opened) const { library->CloseAddressBook(opened); }
    };

    std::vector<AddressBookRecord> ReadAddressBooks(AddressBookEntry parent);

    const Library& library_;
    std::unique_ptr<SessionHandle, Closer> handle_;
};
