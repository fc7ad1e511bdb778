// TruncateText: where characters begin in the code page in force.
#include "model/truncate_text.h"

#include <windows.h>

namespace {

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// UTF-8: bytes that the lead byte of a character announces, 1 for any byte that is not one.
size_t GetSequenceLength(char lead) {
    const auto byte = static_cast<unsigned char>(lead);
    if (byte >= 0xF0 && byte < 0xF8) return 4;
    if (byte >= 0xE0 && byte < 0xF0) return 3;
    if (byte >= 0xC0 && byte < 0xE0) return 2;
    return 1;
}

// Steps back over the last character if the cut after n bytes goes through it.
size_t FindCutInUtf8(std::string_view text, size_t n) {
    size_t start = n - 1;
    while (start > 0 && n - start < 4 && IsContinuation(text[start])) --start;
    return start + GetSequenceLength(text[start]) > n ? start : n;
}

// Whether a byte is the first or the second of a character can only be told from the beginning of the text: second
// bytes can lie in the range of first bytes.
size_t FindCutInDoubleByte(std::string_view text, size_t n) {
    size_t at = 0;
    while (at < n) {
        const size_t length = IsDBCSLeadByte(static_cast<BYTE>(text[at])) ? 2 : 1;
        if (at + length > n) break;
        at += length;
    }
    return at;
}

}  // namespace

std::string_view TruncateText(std::string_view text, size_t n) {
    if (text.size() <= n) return text;
    if (n == 0) return text.substr(0, 0);
    return text.substr(0, GetACP() == CP_UTF8 ? FindCutInUtf8(text, n) : FindCutInDoubleByte(text, n));
}
