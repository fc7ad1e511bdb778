// The base of the scripted provider's objects and the frame that every provider call runs in.
#pragma once

#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "mapi/entry_points.h"
#include "script.h"

// The script of the program that loaded this provider.
Script& CurrentScript();

// Marks that the provider's own code is running.
class Inside {
  public:
    Inside() { ++CurrentScript().depth; }
    ~Inside() { --CurrentScript().depth; }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;
};

// One call of the provider: it is noted and counted, and answered as the script or one of its faults says.
class Call {
  public:
    Call(const std::string& object, const char* function, const std::string& arguments);

    // `give` hands out what the call hands out; a call that fails leaves the caller's variables as they are.
    template <class Give>
    HRESULT Answer(HRESULT scripted, Give give) const {
        if (fault_ ? fault_->gives : SUCCEEDED(scripted)) give();
        return fault_ ? fault_->result : scripted;
    }
    HRESULT Answer(HRESULT scripted) const {
        return Answer(scripted, [] {});
    }

  private:
    Inside inside_;
    std::optional<Fault> fault_;
};

// An object that stays in memory after its last Release, so that what is done with it then is noticed.
template <class Interface>
class Object : public Interface {
  public:
    explicit Object(std::string name) : label_(std::move(name)) {
        CurrentScript().Lend(static_cast<IUnknown*>(this), {Kind::Object, {}});
    }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    static void* operator new(size_t size) {
        void* memory = std::malloc(size);
        if (memory == nullptr) throw std::bad_alloc();
        return memory;
    }
    static void operator delete(void* memory) { std::free(memory); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return Unexpected("QueryInterface");
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        const Inside inside;
        CheckAlive("AddRef");
        return ++references_;
    }
    ULONG STDMETHODCALLTYPE Release() override {
        const Inside inside;
        CheckAlive("Release");
        if (references_ == 0) return 0;
        if (CurrentScript().keepsCalls) CurrentScript().calls.push_back(label_ + ".Release()");
        if (CurrentScript().during) CurrentScript().during("Release");
        if (--references_ == 0) {
            CurrentScript().TakeBack(static_cast<IUnknown*>(this), Kind::Object, label_ + ".Release");
            CurrentScript().retired.push_back(this);
            Retire();
        }
        return references_;
    }

  protected:
    virtual void Retire() { std::string().swap(label_); }
    void CheckAlive(const char* function) {
        if (references_ == 0) CurrentScript().Misused(std::string(function) + " of a released object");
    }
    HRESULT Unexpected(const char* function) {
        CurrentScript().Misused(label_ + "." + function + " is not among the calls that a provider must answer");
        return MAPI_E_NO_SUPPORT;
    }
    Call Begin(const char* function, const std::string& arguments) {
        CheckAlive(function);
        return Call(label_, function, arguments);
    }

    std::string label_;

  private:
    ULONG references_ = 1;
};

// Readable arguments.
inline std::string Show(const char* text) {
    return text == nullptr ? "null" : '"' + std::string(text) + '"';
}
std::string Show(ULONG number);
std::string Show(const void* pointer);
std::string Show(const SPropTagArray* tags);
std::string ShowIdentifier(ULONG size, const BYTE* bytes);
template <class... Arguments>
std::string ShowAll(const Arguments&... arguments) {
    std::string all;
    ((all += all.empty() ? "" : ", ", all += arguments), ...);
    return all;
}

// The values of a row in the order of the columns, in blocks of exactly their size that belong to the loan.
SPropValue* MakeValues(const Row& row, const SPropTagArray* columns, Loan& loan, ULONG& count);
void* Allocate(size_t size, Loan& loan);

// The object that OpenEntry gives for an identifier of the script.
IUnknown* MakeEntry(const std::string& id, const Entry& entry);
IAddrBook* MakeAddressBook();
SessionSupport* MakeSupport();
ProfileAdministration* MakeAdministration();
// Gives back the address list and the property arrays of its entries.
void FreeAddressListAndValues(ADRLIST* list, const std::string& function);
