// What an object or a row consists of for its readers: a value for each property, and what its text points into.
#pragma once

#include <vector>

#include "mapi_objects/memory.h"
#include "mapi_objects/unsupported.h"
#include "mapi_objects/values.h"

class PropertySource {
  public:
    // Writes the value of the writer's tag, or leaves it missing.
    virtual void Write(ValueWriter& value) const = 0;
    virtual void KeepAlive(ResultBuffer& buffer) const = 0;

  protected:
    ~PropertySource() = default;
};

// The tags of an array with their types; throws for an array that cannot be one.
std::vector<ULONG> ReadTags(const SPropTagArray* tags);
// A new tag array of these tags.
BufferOf<SPropTagArray> MakeTagArray(const std::vector<ULONG>& tags);
void RequireNarrowText(ULONG flags);

// GetProps and GetPropList for any source. Without tags, all properties that have a value.
HRESULT ReadProperties(const PropertySource& source, const SPropTagArray* tags, ULONG flags, ULONG* count,
                       SPropValue** values);
HRESULT ListProperties(const PropertySource& source, ULONG flags, SPropTagArray** tags);

// The two reading methods of every object with properties, for one of the bases in unsupported.h.
template <typename Base>
class PropertyObject : public Base, protected PropertySource {
  public:
    HRESULT STDMETHODCALLTYPE GetProps(const SPropTagArray* tags, ULONG flags, ULONG* count,
                                       SPropValue** values) final {
        return Guarded([&] { return ReadProperties(*this, tags, flags, count, values); });
    }
    HRESULT STDMETHODCALLTYPE GetPropList(ULONG flags, SPropTagArray** tags) final {
        return Guarded([&] { return ListProperties(*this, flags, tags); });
    }
};
