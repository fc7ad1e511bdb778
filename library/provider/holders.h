// Holders of what a provider hands out. Each kind has one place that gives it back, and everything is in its holder
// from the moment it exists, so that an object given by a call that failed goes back, too.
#pragma once

#include <utility>

#include "provider/entry_points.h"

// One reference to a provider's object.
template <class Interface>
class Held {
  public:
    Held() = default;
    Held(Held&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    Held& operator=(Held&& other) noexcept {
        std::swap(object, other.object);
        return *this;
    }
    ~Held() { Release(); }

    explicit operator bool() const { return object != nullptr; }
    Interface* operator->() const { return object; }
    Interface* Get() const { return object; }

    // The address for a call that hands out an object; what was held before is released.
    Interface** Receive() {
        Release();
        return &object;
    }
    // The same for a call that is declared to hand out an IUnknown and gives this interface.
    IUnknown** ReceiveUnknown() { return reinterpret_cast<IUnknown**>(Receive()); }

    void Release() {
        if (Interface* released = std::exchange(object, nullptr)) released->Release();
    }

  private:
    Interface* object = nullptr;
};

// One row set of a table. Exists only while the provider has VOKFreeProws: see TableCursor.
class HeldRows {
  public:
    HeldRows() = default;
    HeldRows(HeldRows&& other) noexcept : rows(std::exchange(other.rows, nullptr)) {}
    HeldRows& operator=(HeldRows&& other) noexcept {
        std::swap(rows, other.rows);
        return *this;
    }
    ~HeldRows() { Free(); }

    const SRowSet* operator->() const { return rows; }
    explicit operator bool() const { return rows != nullptr; }

    SRowSet** Receive() {
        Free();
        return &rows;
    }
    void Free() {
        if (SRowSet* freed = std::exchange(rows, nullptr)) providerTable.VOKFreeProws(freed);
    }

  private:
    SRowSet* rows = nullptr;
};

// The value array of one GetProps call.
class HeldProperties {
  public:
    explicit HeldProperties(SessionSupport* theSupport) : support(theSupport) {}
    HeldProperties(const HeldProperties&) = delete;
    HeldProperties& operator=(const HeldProperties&) = delete;
    ~HeldProperties() {
        if (values != nullptr) support->FreeProperties(values);
    }

    SPropValue* values = nullptr;
    ULONG count = 0;

  private:
    SessionSupport* support;
};

// The address list of one group expansion, whichever list the provider has put in the place of the first.
class HeldAddressList {
  public:
    explicit HeldAddressList(SessionSupport* theSupport) : support(theSupport) {}
    HeldAddressList(const HeldAddressList&) = delete;
    HeldAddressList& operator=(const HeldAddressList&) = delete;
    ~HeldAddressList() {
        if (list != nullptr) support->FreeAddressList(list);
    }

    ADRLIST* list = nullptr;

  private:
    SessionSupport* support;
};
