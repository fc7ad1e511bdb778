// ProviderChecker: calls a provider library in every way in which the address-book interface library calls one, and
// looks at each answer. What a provider may do is said in docs/provider-guide.md.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "loaded_module.h"
#include "provider/holders.h"

struct ProviderFault {
    std::string where;  // a function, or a table or entry by its name
    std::string what;
    size_t times = 0;
};

class ProviderChecker {
  public:
    explicit ProviderChecker(const LoadedModule& theModule) : module_(theModule) {}

    // Opens a session on the profile (the default one, if it is empty), reads all that is in it, and closes it.
    void Check(const std::string& profile);

    size_t CheckCount() const { return checkCount_; }
    // In the order in which they were met.
    const std::vector<ProviderFault>& Faults() const { return faults_; }

  private:
    // What is remembered of a row.
    struct Row {
        std::string identifier;
        std::string name;
        std::string addressType;
        std::string address;
        ULONG type = 0;
    };

    template <class Function>
    Function* Find(const char* name, const char* without);
    bool Expect(bool isRight, const std::string& where, const std::string& what);
    bool ExpectSuccess(HRESULT result, const std::string& where);
    // Whether a value stands for the tag: it has the tag, or the same property and PT_ERROR.
    bool ExpectValue(const SPropValue& value, ULONG tag, const std::string& where);
    void ExpectValues(const SPropValue* values, ULONG count, const SPropTagArray& tags, const std::string& where);
    void CheckReferences(IUnknown& object, const std::string& where);
    void CheckSession(IAddrBook& addressBook, SessionSupport& support);
    void CheckContainer(IAddrBook& addressBook, SessionSupport& support, const Row& container,
                        std::vector<Row>& containers);
    void CheckPerson(IAddrBook& addressBook, SessionSupport& support, const Row& person, bool isFaxEntry);
    void CheckGroup(IAddrBook& addressBook, SessionSupport& support, const Row& group);
    // Nothing when the entry cannot be opened, or is of another type than wanted. A provider may tell no type.
    template <class Interface>
    Held<Interface> Open(IAddrBook& addressBook, const std::string& identifier, ULONG wantedType,
                         const std::string& where);
    std::vector<Row> ReadTable(IMAPITable& table, const SPropTagArray& columns, const std::string& where);
    Row ReadRow(const SRow& row, const SPropTagArray& columns);

    const LoadedModule& module_;
    VOKFreeProwsFunction* freeRows_ = nullptr;
    size_t checkCount_ = 0;
    std::vector<ProviderFault> faults_;
    std::map<std::pair<std::string, std::string>, size_t> faultPlaces_;
};
