// The kinds of fax numbers: their codes, the table that drives the reading of numbers from columns, the suffixes of
// display names that tell a number's kind, and how a number stands inside an e-mail address.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "model/contents_row.h"

enum class FaxKind : uint32_t {
    None = 0,
    Primary = 2,
    Home = 3,
    Business = 4,
    Other = 5,
    Extended = 6,
};

struct FaxKindRow {
    ContentsColumn column;
    FaxKind kind;
};

// The columns that hold a fax number each, in the order in which they are read.
inline constexpr std::array FaxKindTable{
    FaxKindRow{ContentsColumn::PrimaryFaxNumber, FaxKind::Primary},
    FaxKindRow{ContentsColumn::BusinessFaxNumber, FaxKind::Business},
    FaxKindRow{ContentsColumn::HomeFaxNumber, FaxKind::Home},
    FaxKindRow{ContentsColumn::ExtendedFax, FaxKind::Extended},
};

// The contents styles that are told apart; any other value a provider answers means the plain reading.
inline constexpr uint32_t contentsStylePrimarySecondary = 1;
inline constexpr uint32_t contentsStyleFaxEntries = 4;

// The texts that fax entries are recognised by, loaded once for a whole read.
class FaxEntryTexts {
  public:
    FaxEntryTexts();

    // The kind that the suffix of a display name tells; None without one. Exact: letter case and blanks count.
    FaxKind GetFaxKindFromName(std::string_view name) const;

    bool IsFax(std::string_view addressType) const { return addressType == fax_; }
    bool IsSmtp(std::string_view addressType) const { return addressType == smtp_; }

  private:
    struct Suffix {
        std::string text;
        FaxKind kind;
    };
    std::string fax_;
    std::string smtp_;
    std::vector<Suffix> suffixes_;
};

// The number inside the e-mail address of a fax entry, which is the entry's plain name, one separator byte and the
// number; empty when the address is not longer than that.
std::string_view GetNumberInAddress(std::string_view address, std::string_view plainName);
