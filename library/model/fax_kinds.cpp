// Fax kinds: loading the suffixes and looking for them.
#include "model/fax_kinds.h"

#include "resources/string_table.h"

namespace {

struct SuffixRange {
    UINT first;
    FaxKind kind;
};

constexpr UINT idsInRange = 10;

// In the order in which they are tried. The first absent string ends its range.
constexpr SuffixRange suffixRanges[] = {
    {IDS_HOME_FAX_SUFFIX, FaxKind::Home},
    {IDS_BUSINESS_FAX_SUFFIX, FaxKind::Business},
    {IDS_OTHER_FAX_SUFFIX, FaxKind::Other},
};

}  // namespace

FaxEntryTexts::FaxEntryTexts() : fax_(LoadLibraryString(IDS_FAX)), smtp_(LoadLibraryString(IDS_SMTP)) {
    for (const SuffixRange& range : suffixRanges) {
        for (UINT id = range.first; id < range.first + idsInRange; ++id) {
            std::string text = LoadLibraryString(id);
            if (text.empty()) break;
            suffixes_.push_back({std::move(text), range.kind});
        }
    }
}

FaxKind FaxEntryTexts::GetFaxKindFromName(std::string_view name) const {
    for (const Suffix& suffix : suffixes_)
        if (name.ends_with(suffix.text)) return suffix.kind;
    return FaxKind::None;
}

std::string_view GetNumberInAddress(std::string_view address, std::string_view plainName) {
    return address.substr(std::min(address.size(), plainName.size() + 1));
}
