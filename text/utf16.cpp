// The system's conversions, with room of the right size.
#include "text/utf16.h"

#include <array>
#include <memory>
#include <stdexcept>

namespace {

// UTF-16 of a short text on the stack, of a long one on the heap.
class Utf16Room {
  public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the short text is written before it is read
    explicit Utf16Room(size_t capacity) {
        if (capacity > small_.size()) large_ = std::make_unique<WCHAR[]>(capacity);
    }
    WCHAR* Get() { return large_ ? large_.get() : small_.data(); }

  private:
    std::array<WCHAR, 256> small_;
    std::unique_ptr<WCHAR[]> large_;
};

int ConversionLength(size_t length) {
    if (length > longestConversion) throw std::length_error("text too long to convert");
    return static_cast<int>(length);
}

// False, with nothing appended, when the system cannot convert.
bool AppendFromUtf16(const WCHAR* units, int count, UINT codePage, std::string& text) {
    const int needed = WideCharToMultiByte(codePage, 0, units, count, nullptr, 0, nullptr, nullptr);
    if (needed <= 0) return false;
    const size_t start = text.size();
    text.resize(start + static_cast<size_t>(needed));
    WideCharToMultiByte(codePage, 0, units, count, text.data() + start, needed, nullptr, nullptr);
    return true;
}

// No code page turns a byte into more than one UTF-16 unit, so the number of bytes is room enough. 0 when the system
// cannot convert.
int WriteUtf16(std::string_view bytes, UINT codePage, DWORD flags, WCHAR* units) {
    const int length = ConversionLength(bytes.size());
    return MultiByteToWideChar(codePage, flags, bytes.data(), length, units, length);
}

}  // namespace

Utf16String ToUtf16(std::string_view bytes, UINT codePage) {
    Utf16String units(bytes.size(), WCHAR());
    if (!bytes.empty()) units.resize(static_cast<size_t>(WriteUtf16(bytes, codePage, 0, units.data())));
    return units;
}

std::string FromUtf16(Utf16View units, UINT codePage) {
    std::string text;
    if (!units.empty()) AppendFromUtf16(units.data(), ConversionLength(units.size()), codePage, text);
    return text;
}

bool AppendConverted(std::string_view bytes, UINT from, DWORD flags, UINT to, std::string& text) {
    if (bytes.empty()) return true;
    Utf16Room units(bytes.size());
    const int count = WriteUtf16(bytes, from, flags, units.Get());
    return count > 0 && AppendFromUtf16(units.Get(), count, to, text);
}
