// The reader of LDIF texts. Beside what CheckReading promises of any reader: the normal form of a name is a name, and
// its own normal form, in ASCII.
#include <cstdint>
#include <string>

#include "card_checks.h"
#include "cards/distinguished_name.h"
#include "formats/ldif/ldif_cards.h"
#include "text/ascii.h"
#include "text/byte_escapes.h"

namespace {

constexpr char goodEntry[] = "\n\ndn: cn=Good\nobjectClass: person\ncn: Good\nfacsimileTelephoneNumber: +1 555 0100\n";

void CheckName(std::string_view text) {
    const std::optional<std::vector<RelativeName>> name = ParseName(text);
    if (!name) return;
    const std::string normalised = NormalisedName(*name);
    Promise(IsAscii(normalised) && normalised.find('\0') == std::string::npos, "no code page changes a name");
    const std::optional<std::vector<RelativeName>> again = ParseName(normalised);
    Promise(again && NormalisedName(*again) == normalised, "a normalised name stays what it is");
    Promise(IsUtf8(WithLetters(normalised)), "a name can be shown");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const ReadingChoice choice = TakeChoice(input);
    CheckName(input.substr(0, input.find('\n')));
    CheckReading(ReadLdifCards, std::string(input), goodEntry, choice);
    return 0;
}
