// The template is a sequence of little-endian values, with every control beginning at a multiple of 4 bytes.
#include "developer/dialog_template.h"

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "client/record_text.h"
#include "text/utf16.h"

namespace {

constexpr uint16_t extendedVersion = 1;
constexpr uint16_t extendedSignature = 0xFFFF;
constexpr uint16_t ordinalMark = 0xFFFF;  // instead of a text: a 16-bit number follows
constexpr uint32_t fontGiven = 0x40;      // dialog style DS_SETFONT, also in DS_SHELLFONT

// Takes values from the front of the template; throws std::out_of_range when it ends too early.
class TemplateReader {
  public:
    explicit TemplateReader(std::string_view templateBytes) : bytes_(templateBytes) {}

    template <typename Value>
    Value Take() {
        Value value;
        Require(sizeof(value));
        std::memcpy(&value, bytes_.data() + position_, sizeof(value));
        position_ += sizeof(value);
        return value;
    }

    void Skip(size_t count) {
        Require(count);
        position_ += count;
    }

    void AlignTo(size_t size) { position_ = (position_ + size - 1) / size * size; }

    // A NUL-terminated UTF-16 text, or a number that stands in its place, which gives an empty text.
    std::string TakeTextOrNumber() {
        std::basic_string<WCHAR> text;
        auto unit = Take<uint16_t>();
        if (unit == ordinalMark) {
            Skip(sizeof(uint16_t));
            return {};
        }
        for (; unit != 0; unit = Take<uint16_t>()) text += static_cast<WCHAR>(unit);
        return Utf8FromUtf16(Utf16View(text));
    }

  private:
    void Require(size_t count) const {
        if (position_ > bytes_.size() || bytes_.size() - position_ < count)
            throw std::out_of_range("the template ends");
    }

    std::string_view bytes_;
    size_t position_ = 0;
};

DialogControl TakeControl(TemplateReader& reader) {
    reader.AlignTo(4);
    reader.Skip(12);  // help id, extended style, style
    reader.Skip(8);   // position and size
    DialogControl control;
    control.id = reader.Take<int32_t>();
    reader.TakeTextOrNumber();  // window class
    control.text = reader.TakeTextOrNumber();
    reader.Skip(reader.Take<uint16_t>());  // creation data
    return control;
}

}  // namespace

std::optional<DialogTemplate> ReadDialogTemplate(std::string_view bytes) try {
    TemplateReader reader(bytes);
    if (reader.Take<uint16_t>() != extendedVersion || reader.Take<uint16_t>() != extendedSignature) return std::nullopt;
    reader.Skip(8);  // help id, extended style
    const auto style = reader.Take<uint32_t>();
    const auto controlCount = reader.Take<uint16_t>();
    reader.Skip(8);             // position and size
    reader.TakeTextOrNumber();  // menu
    reader.TakeTextOrNumber();  // window class
    DialogTemplate dialog;
    dialog.caption = reader.TakeTextOrNumber();
    if ((style & fontGiven) != 0) {
        reader.Skip(6);  // size, weight, italic, character set
        reader.TakeTextOrNumber();
    }
    for (int i = 0; i < controlCount; ++i) dialog.controls.push_back(TakeControl(reader));
    return dialog;
} catch (const std::out_of_range&) {
    return std::nullopt;
}
