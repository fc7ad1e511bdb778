// ProviderChecker: calls a provider library in every way in which the address-book interface library calls one, and
// looks at each answer. What a provider may do is said in docs/provider-guide.md.
#pragma once

#include <windows.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "client/loaded_module.h"
#include "provider/holders.h"

struct ProviderFinding {
    enum class Kind {
        Fault,   // somebody loses by it: an address, a session, memory
        Remark,  // the answer is not what is usual, and the library takes it as it is
    };
    Kind kind;
    std::string where;    // a function, or a table or entry by its name
    std::string what;     // the answer
    std::string meaning;  // what follows from it
    size_t times = 0;
};

class ProviderChecker {
  public:
    explicit ProviderChecker(const LoadedModule& theModule) : module_(theModule) {}

    // Opens a session on the profile (the default one, if it is empty), reads all that is in it, and closes it.
    void Check(const std::string& profile);

    size_t CheckCount() const { return checkCount_; }
    // In the order in which they were met, each once.
    const std::vector<ProviderFinding>& Findings() const { return findings_; }

  private:
    // What is remembered of a row.
    struct Row {
        std::optional<std::string> identifier;
        std::string name;
        std::string addressType;
        std::string address;
        ULONG type = 0;
    };

    // Each looks at one answer and tells whether it is right. Where it is not, Expect finds a fault, Prefer a remark.
    bool Expect(bool isRight, const std::string& where, const std::string& what, const char* meaning);
    bool Prefer(bool isUsual, const std::string& where, const std::string& what, const char* meaning);
    bool ExpectSuccess(HRESULT result, const std::string& where, const char* meaning);
    bool LookAt(bool isRight, ProviderFinding::Kind kind, const std::string& where, const std::string& what,
                const char* meaning);
    // The function of that name, or null; lacking it is of that kind.
    template <class Function>
    Function* Find(const char* name, ProviderFinding::Kind kind, const char* meaning);
    // Whether a value stands for the tag: it has the tag, or the same property and PT_ERROR.
    bool ExpectValue(const SPropValue& value, ULONG tag, const std::string& where);
    void ExpectValues(const SPropValue* values, ULONG count, const SPropTagArray& tags, const std::string& where);
    void CheckReferences(IUnknown& object, const std::string& where);
    void CheckSession(IAddrBook& addressBook, SessionSupport& support);
    void CheckContainer(IAddrBook& addressBook, SessionSupport& support, const Row& container,
                        std::vector<Row>& containers);
    void CheckPerson(IAddrBook& addressBook, SessionSupport& support, const Row& person, bool isFaxEntry);
    void CheckGroup(IAddrBook& addressBook, SessionSupport& support, const Row& group);
    // Whether there is an identifier that names one entry; `meaning` is that of lacking it.
    bool CheckIdentifier(const Row& row, const char* meaning);
    // False for a person in the place of what has tables. A provider may tell no type.
    bool CheckType(ULONG type, ULONG wantedType, const std::string& where, const char* meaning);
    // Nothing when the entry cannot be opened, or has no tables where they are wanted.
    // `meaning` is that of not having the entry.
    template <class Interface>
    Held<Interface> Open(IAddrBook& addressBook, const std::string& identifier, ULONG wantedType,
                         const std::string& where, const char* meaning);
    std::vector<Row> ReadTable(IMAPITable& table, const SPropTagArray& columns, const std::string& where);
    Row ReadRow(const SRow& row, const SPropTagArray& columns);

    const LoadedModule& module_;
    VOKFreeProwsFunction* freeRows_ = nullptr;
    size_t checkCount_ = 0;
    std::vector<ProviderFinding> findings_;
    std::map<std::pair<std::string, std::string>, size_t> findingPlaces_;
};
