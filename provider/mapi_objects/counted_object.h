// The life of every object that is handed out: one reference for its receiver, and an end with the last Release.
#pragma once

#include <atomic>
#include <initializer_list>

#include "guard.h"
#include "mapi/interface_ids.h"

template <typename Interface>
class CountedObject : public Interface {
  public:
    CountedObject() = default;
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;

    ULONG STDMETHODCALLTYPE AddRef() final { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() final {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) final {
        if (object == nullptr) return MAPI_E_INVALID_PARAMETER;
        *object = nullptr;
        if (!IsEqualIID(id, unknownInterface) && !Answers(id)) return MAPI_E_INTERFACE_NOT_SUPPORTED;
        AddRef();
        *object = static_cast<Interface*>(this);
        return S_OK;
    }

  protected:
    // Behind the methods of the interface, whose table it does not touch.
    virtual ~CountedObject() = default;
    virtual bool Answers(REFIID) const { return false; }

    static bool IsOneOf(REFIID id, std::initializer_list<IID> ids) {
        for (const IID& known : ids)
            if (IsEqualIID(id, known)) return true;
        return false;
    }

  private:
    std::atomic<ULONG> references_ = 1;
};
