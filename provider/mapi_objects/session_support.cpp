// SessionSupport over the provider's memory and its recipients.
#include "mapi_objects/session_support.h"

#include "mapi_objects/counted_object.h"
#include "mapi_objects/memory.h"
#include "mapi_objects/recipients.h"
#include "reading_stop.h"

namespace {

class Support final : public CountedObject<SessionSupport> {
  public:
    explicit Support(std::shared_ptr<Session> session) : session_(std::move(session)) {}

    HRESULT STDMETHODCALLTYPE Reserved3() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE AllocateAddressList(ULONG byteCount, ADRLIST** addressList) override {
        return Guarded([&] {
            Require(addressList != nullptr);
            *addressList = nullptr;
            Require(byteCount >= sizeof(ULONG));
            *addressList = ::AllocateAddressList(byteCount);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Reserved5() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE FreeProperties(SPropValue* values) override {
        return FreeBuffer(values) ? S_OK : MAPI_E_INVALID_PARAMETER;
    }
    HRESULT STDMETHODCALLTYPE Reserved7() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE FreeAddressList(ADRLIST* addressList) override {
        return Guarded([&] {
            ::FreeAddressList(addressList);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Reserved9() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE ExpandRecipients(ULONG, ADRLIST** addressList) override {
        return Guarded([&] {
            const StoppableReading reading;
            ::ExpandRecipients(*session_, addressList);
            return S_OK;
        });
    }

  private:
    std::shared_ptr<Session> session_;
};

}  // namespace

Owned<SessionSupport> MakeSessionSupport(std::shared_ptr<Session> session) {
    return Owned<SessionSupport>(new Support(std::move(session)));
}
