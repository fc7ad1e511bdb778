// A caller of the provider library: loads the built file by name, as any caller would, and gives everything back.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "mapi/entry_points.h"
#include "mapi_objects/owned.h"
#include "qdxl7ra.h"

template <typename Interface>
using Held = Owned<Interface>;

// One row or property array: the values that are not missing. Text as it is, numbers in decimal, binary as its bytes.
using Values = std::map<ULONG, std::string>;

class ProviderLibrary {
  public:
    ProviderLibrary();
    ~ProviderLibrary();
    ProviderLibrary(const ProviderLibrary&) = delete;
    ProviderLibrary& operator=(const ProviderLibrary&) = delete;

    VOKOpenFunction* Open;
    VOKAdminProfilesFunction* AdminProfiles;
    VOKAllocateBufferFunction* AllocateBuffer;
    VOKAllocateMoreFunction* AllocateMore;
    VOKFreeBufferFunction* FreeBuffer;
    VOKFreeProwsFunction* FreeProws;
    SetResourceDllHandleFunction* SetResourceDllHandle;
    VOKDiagnoseFunction* Diagnose;
    VOKCountUnreadFunction* CountUnread;
    VOKListProfilesFunction* ListProfiles;
    VOKSetMessageReceiverFunction* SetMessageReceiver;
    VOKStopReadingFunction* StopReading;

  private:
    HMODULE module_;
};

// The columns that the tests ask every table for.
inline constexpr PropTagArray<13> testColumns = {
    .aulPropTag = {PR_DISPLAY_NAME, PR_ENTRYID, PR_OBJECT_TYPE, PR_ADDRTYPE, PR_PRIMARY_FAX_NUMBER, PR_HOME_FAX_NUMBER,
                   PR_BUSINESS_FAX_NUMBER, PR_COMMENT, PR_ORIGINAL_DISPLAY_NAME, PR_EMAIL_ADDRESS, PR_COMPANY_NAME,
                   PR_DEPARTMENT_NAME, PR_VOK_EXTENDED_FAX}};

// A session with the calls that most tests make; a call that fails throws what it answered.
struct CallFailed {
    HRESULT result;
};

class Caller {
  public:
    explicit Caller(const char* profile = nullptr);

    // Opens an identifier as a row gave it.
    Held<IUnknown> OpenEntry(const std::string& entryId, ULONG* type = nullptr);
    std::vector<Values> ListBooks() { return ReadHierarchy(*Container(std::string())); }
    std::vector<Values> ListContainers(const std::string& entryId) { return ReadHierarchy(*Container(entryId)); }
    // The contents of a container, or the direct members of a group.
    std::vector<Values> ListContents(const std::string& entryId);
    // What GetContentsTable answered for it.
    HRESULT Style(const std::string& entryId);
    // The contents of the only address book, or of the one that is named.
    std::vector<Values> ListBook(const std::string& name = {});
    std::string BookId(const std::string& name = {});
    Values GetProps(const std::string& entryId, const SPropTagArray* tags);
    // As a caller sends to a group: the group's entry, its expansion, the members' columns.
    std::vector<Values> Expand(const std::string& entryId);

    IAddrBook& AddressBook() { return *addressBook_; }
    SessionSupport& Support() { return *support_; }
    ProviderLibrary& Library() { return *library_; }
    std::vector<Values> ReadTable(IMAPITable& table, const SPropTagArray* columns = testColumns.Get());
    IABContainer* ContainerOf(IUnknown* object) { return static_cast<IABContainer*>(object); }

  private:
    Held<IABContainer> Container(const std::string& entryId);
    std::vector<Values> ReadHierarchy(IABContainer& container);

    std::unique_ptr<ProviderLibrary> library_ = std::make_unique<ProviderLibrary>();
    Held<IAddrBook> addressBook_;
    Held<SessionSupport> support_;
};

// An empty folder that the provider takes for the user's contacts, with the profiles file and the diagnostics beside
// it, until the test ends.
class ContactsFolderForTest {
  public:
    ContactsFolderForTest();
    ~ContactsFolderForTest();
    ContactsFolderForTest(const ContactsFolderForTest&) = delete;
    ContactsFolderForTest& operator=(const ContactsFolderForTest&) = delete;

    // Makes the folders on the way. Cards are separated by their BEGIN and END lines only.
    void Write(const std::string& file, const std::string& text);
    std::filesystem::path Contacts() const { return folder_ / "contacts"; }
    std::filesystem::path Profiles() const { return folder_ / "profiles.ini"; }
    std::string Diagnostics() const;

  private:
    std::filesystem::path folder_;
};

std::string ReadText(const std::filesystem::path& file);
