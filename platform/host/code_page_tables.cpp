// CodePage: what iconv says of every one- and two-byte code, plus what Windows adds to it.
#include "code_page_tables.h"

#include <iconv.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace {

// The code pages of two bytes with their lead bytes; all others that iconv knows have one byte a character.
struct DoubleBytePage {
    UINT number;
    BYTE leadBytes[6];
};
constexpr DoubleBytePage doubleBytePages[] = {
    {932, {0x81, 0x9F, 0xE0, 0xFC}},
    {936, {0x81, 0xFE}},
    {949, {0x81, 0xFE}},
    {950, {0x81, 0xFE}},
    {1361, {0x84, 0xD3, 0xD8, 0xDE, 0xE0, 0xF9}},
    {20932, {0x8E, 0x8E, 0xA1, 0xFE}},
};

// The code pages whose names in iconv are not made of "CP" and their number.
struct NamedPage {
    UINT number;
    const char* name;
};
constexpr NamedPage namedPages[] = {
    {10000, "MACINTOSH"},  {20127, "US-ASCII"},   {20866, "KOI8-R"},      {20932, "EUC-JP"},
    {21866, "KOI8-U"},     {28591, "ISO-8859-1"}, {28592, "ISO-8859-2"},  {28593, "ISO-8859-3"},
    {28594, "ISO-8859-4"}, {28595, "ISO-8859-5"}, {28596, "ISO-8859-6"},  {28597, "ISO-8859-7"},
    {28598, "ISO-8859-8"}, {28599, "ISO-8859-9"}, {28603, "ISO-8859-13"}, {28605, "ISO-8859-15"},
};

std::string IconvNameOf(UINT number) {
    const auto found = std::ranges::find(namedPages, number, &NamedPage::number);
    return found != std::end(namedPages) ? found->name : "CP" + std::to_string(number);
}

// The bytes from here up to the second that have no character of their own stand for the control characters of the
// same number.
constexpr unsigned firstControl = 0x80;
constexpr unsigned lastControl = 0x9F;

// A number that is not one of two bytes may be that of no code page.
CPINFO DescribeBytes(UINT number) {
    CPINFO info = {.MaxCharSize = 1, .DefaultChar = {'?'}, .LeadByte = {}};
    const auto found = std::ranges::find(doubleBytePages, number, &DoubleBytePage::number);
    if (found != std::end(doubleBytePages)) {
        info.MaxCharSize = 2;
        std::ranges::copy(found->leadBytes, info.LeadByte);
    }
    return info;
}

}  // namespace

// One direction of iconv, one character at a time.
class Converter {
  public:
    Converter(const std::string& to, const std::string& from) : state_(iconv_open(to.c_str(), from.c_str())) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (IsOpen()) iconv_close(state_);
    }

    // False when iconv lacks the character set.
    bool IsOpen() const { return state_ != reinterpret_cast<iconv_t>(-1); }

    // The number of bytes written, 0 when the input is not one whole character that the other side has.
    size_t Convert(const void* input, size_t inputSize, BYTE (&output)[8]) {
        char* from = const_cast<char*>(static_cast<const char*>(input));
        char* to = reinterpret_cast<char*>(output);
        size_t space = sizeof output;
        iconv(state_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(state_, &from, &inputSize, &to, &space) != 0 || inputSize != 0) return 0;
        // Where marks combine with the letter before them, iconv holds the letter back until it is asked for.
        if (iconv(state_, nullptr, nullptr, &to, &space) != 0) return 0;
        return sizeof output - space;
    }

  private:
    iconv_t state_;
};

bool CodePage::Describe(UINT number, CPINFO& info) {
    info = DescribeBytes(number);
    return info.MaxCharSize == 2 || Find(number) != nullptr;
}

const CodePage* CodePage::Find(UINT number) {
    static std::mutex lock;
    static auto& pages = *new std::map<UINT, std::unique_ptr<const CodePage>>;
    const std::lock_guard locked(lock);
    const auto known = pages.find(number);
    if (known != pages.end()) return known->second.get();
    const CPINFO info = DescribeBytes(number);
    if (info.MaxCharSize == 1 && !Converter("UTF-16LE", IconvNameOf(number)).IsOpen()) return nullptr;
    std::unique_ptr<const CodePage> page(new CodePage(number, info));
    return pages.emplace(number, std::move(page)).first->second.get();
}

CodePage::CodePage(UINT theNumber, const CPINFO& info)
    : number_(theNumber), isLeadByte_(0x100), toWide_(0x10000, undefined), fromWide_(0x10000) {
    const std::string name = IconvNameOf(number_);
    Converter decoder("UTF-16LE", name);
    Converter encoder(name, "UTF-16LE");
    ForEachLeadByte(info, [&](unsigned byte) { isLeadByte_[byte] = true; });
    AddCharacters(decoder, encoder, 0);
    ForEachLeadByte(info, [&](unsigned byte) { AddCharacters(decoder, encoder, byte); });
    for (unsigned byte = firstControl; byte <= lastControl; ++byte) {
        if (isLeadByte_[byte] || toWide_[byte] != undefined || fromWide_[byte] != 0) continue;
        toWide_[byte] = static_cast<WCHAR>(byte);
        fromWide_[byte] = static_cast<WORD>(byte);
    }
}

// The characters of a lead byte, or for 0 those of one byte. Of several codes of one character, iconv says which one
// the character is written as.
void CodePage::AddCharacters(Converter& decoder, Converter& encoder, unsigned lead) {
    for (unsigned last = 0; last < 0x100; ++last) {
        if (lead == 0 && isLeadByte_[last]) continue;
        const BYTE code[] = {static_cast<BYTE>(lead), static_cast<BYTE>(last)};
        BYTE wide[8];
        if (decoder.Convert(lead != 0 ? code : code + 1, lead != 0 ? 2 : 1, wide) != 2) continue;
        const unsigned index = lead << 8 | last;
        const auto character = static_cast<WCHAR>(wide[0] | wide[1] << 8);
        toWide_[index] = character;
        BYTE back[8];
        const size_t size = encoder.Convert(wide, 2, back);
        if (size == 1) fromWide_[character] = back[0];
        if (size == 2) fromWide_[character] = static_cast<WORD>(back[0] << 8 | back[1]);
    }
}
