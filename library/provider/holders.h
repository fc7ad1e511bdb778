// Holders of what a provider hands out. Each kind has one place that gives it back, and everything is in its holder
// from the moment it exists, so that an object given by a call that failed goes back, too.
#pragma once

#include <utility>

#include "provider/provider_table.h"

// One reference to a provider's object.
template <class Interface>
class Held {
  public:
    Held() = default;
    Held(Held&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Held& operator=(Held&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Held() { Release(); }

    explicit operator bool() const { return object_ != nullptr; }
    Interface* operator->() const { return object_; }
    Interface* Get() const { return object_; }

    // The address for a call that hands out an object; what was held before is released.
    Interface** Receive() {
        Release();
        return &object_;
    }
    // The same for a call that is declared to hand out an IUnknown and gives this interface.
    IUnknown** ReceiveUnknown() { return reinterpret_cast<IUnknown**>(Receive()); }

    void Release() {
        if (Interface* released = std::exchange(object_, nullptr)) released->Release();
    }

  private:
    Interface* object_ = nullptr;
};

// One row set of a table. Exists only while the provider has VOKFreeProws: see TableCursor.
class HeldRows {
  public:
    HeldRows() = default;
    HeldRows(HeldRows&& other) noexcept : rows_(std::exchange(other.rows_, nullptr)) {}
    HeldRows& operator=(HeldRows&& other) noexcept {
        std::swap(rows_, other.rows_);
        return *this;
    }
    ~HeldRows() { Free(); }

    const SRowSet* operator->() const { return rows_; }
    explicit operator bool() const { return rows_ != nullptr; }

    SRowSet** Receive() {
        Free();
        return &rows_;
    }
    void Free() {
        if (SRowSet* freed = std::exchange(rows_, nullptr)) providerTable.VOKFreeProws(freed);
    }

  private:
    SRowSet* rows_ = nullptr;
};

// The value array of one GetProps call.
class HeldProperties {
  public:
    explicit HeldProperties(SessionSupport* theSupport) : support_(theSupport) {}
    HeldProperties(const HeldProperties&) = delete;
    HeldProperties& operator=(const HeldProperties&) = delete;
    ~HeldProperties() {
        if (values != nullptr) support_->FreeProperties(values);
    }

    SPropValue* values = nullptr;
    ULONG count = 0;

  private:
    SessionSupport* support_;
};

// The address list of one group expansion, whichever list the provider has put in the place of the first.
class HeldAddressList {
  public:
    explicit HeldAddressList(SessionSupport* theSupport) : support_(theSupport) {}
    HeldAddressList(const HeldAddressList&) = delete;
    HeldAddressList& operator=(const HeldAddressList&) = delete;
    ~HeldAddressList() {
        if (list != nullptr) support_->FreeAddressList(list);
    }

    ADRLIST* list = nullptr;

  private:
    SessionSupport* support_;
};
