// Reading properties into the array that a caller gets.
#include "mapi_objects/property_source.h"

namespace {

// More than any caller's column set; a larger count is not a count.
constexpr ULONG mostTags = 4096;

std::vector<ULONG> PropertiesOf(const PropertySource& source) {
    std::vector<ULONG> tags;
    ResultBuffer scratch(1024);
    for (const ULONG tag : knownProperties) {
        SPropValue value = {};
        ValueWriter writer(tag, value, scratch);
        source.Write(writer);
        if (!writer.IsMissing()) tags.push_back(tag);
    }
    return tags;
}

}  // namespace

std::vector<ULONG> ReadTags(const SPropTagArray* tags) {
    Require(tags != nullptr && tags->cValues > 0 && tags->cValues <= mostTags);
    std::vector<ULONG> read(tags->cValues);
    for (ULONG i = 0; i < tags->cValues; ++i) read[i] = TagWithType(tags->aulPropTag[i]);
    return read;
}

BufferOf<SPropTagArray> MakeTagArray(const std::vector<ULONG>& tags) {
    BufferOf<SPropTagArray> array(
        static_cast<SPropTagArray*>(AllocateBuffer(offsetof(SPropTagArray, aulPropTag) + tags.size() * sizeof(ULONG))));
    array->cValues = static_cast<ULONG>(tags.size());
    std::copy(tags.begin(), tags.end(), array->aulPropTag);
    return array;
}

void RequireNarrowText(ULONG flags) {
    Require((flags & MAPI_UNICODE) == 0, MAPI_E_BAD_CHARWIDTH);
}

HRESULT ReadProperties(const PropertySource& source, const SPropTagArray* tags, ULONG flags, ULONG* count,
                       SPropValue** values) {
    Require(count != nullptr && values != nullptr);
    *count = 0;
    *values = nullptr;
    RequireNarrowText(flags);
    const std::vector<ULONG> wanted = tags != nullptr ? ReadTags(tags) : PropertiesOf(source);
    ResultBuffer buffer(wanted.size() * sizeof(SPropValue) + 256);
    auto* const array = buffer.Take<SPropValue>(wanted.size());
    HRESULT result = S_OK;
    for (size_t i = 0; i < wanted.size(); ++i) {
        ValueWriter writer(wanted[i], array[i], buffer);
        source.Write(writer);
        if (writer.IsMissing()) result = MAPI_W_ERRORS_RETURNED;
    }
    source.KeepAlive(buffer);
    buffer.Detach();
    *count = static_cast<ULONG>(wanted.size());
    *values = array;
    return result;
}

HRESULT ListProperties(const PropertySource& source, ULONG flags, SPropTagArray** tags) {
    Require(tags != nullptr);
    *tags = nullptr;
    RequireNarrowText(flags);
    *tags = MakeTagArray(PropertiesOf(source)).release();
    return S_OK;
}
