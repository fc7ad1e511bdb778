// The reader of vCard texts. Beside what CheckCards looks at: a text gives the same cards each time, and whatever it
// is, a good card behind it is read.
#include <cstdint>
#include <string>

#include "card_checks.h"
#include "formats/vcard/card_reader.h"

namespace {

// The empty line ends a quoted-printable value that was going on.
constexpr char goodCard[] =
    "\r\n\r\nBEGIN:VCARD\r\nVERSION:3.0\r\nFN:Good\r\nTEL;TYPE=WORK,FAX:+1 555 0100\r\nEND:VCARD\r\n";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const ReadingChoice choice = TakeChoice(input);
    CheckReading(ReadCards, std::string(input), goodCard, choice);
    return 0;
}
