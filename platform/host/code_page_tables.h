// The code pages of one and two bytes a character, as tables made with iconv. They agree with Windows' but for
// characters of private use, which iconv lacks in 936, 949 and 950.
#pragma once

#include <windows.h>

#include <vector>

class CodePage {
  public:
    // Null when the number is no such code page. Tables are made once and live as long as the process; making one takes
    // some milliseconds. Throws std::bad_alloc.
    static const CodePage* Find(UINT number);

    // The code page as GetCPInfo describes it; false when there is no such code page. The long tables of one with two
    // bytes are not made for it. Throws std::bad_alloc.
    static bool Describe(UINT number, CPINFO& info);

    bool IsLeadByte(BYTE byte) const { return isLeadByte_[byte]; }

    static constexpr WCHAR undefined = 0xFFFF;
    // The character of a single byte or, as lead byte * 256 + second byte, of two; `undefined` when there is none.
    WCHAR ToWide(unsigned code) const { return toWide_[code]; }
    // The reverse; 0, which only the NUL has, for a character that the code page lacks.
    unsigned FromWide(WCHAR character) const { return fromWide_[character]; }

    // What stands for bytes that are no character.
    WCHAR GetWideDefault() const { return number_ == 932 ? u'\u30FB' : u'?'; }

  private:
    CodePage(UINT theNumber, const CPINFO& info);
    void AddCharacters(class Converter& decoder, class Converter& encoder, unsigned lead);

    UINT number_;
    std::vector<bool> isLeadByte_;
    std::vector<WCHAR> toWide_;
    std::vector<WORD> fromWide_;
};

// Calls `mark` with each lead byte.
template <class Mark>
void ForEachLeadByte(const CPINFO& info, Mark mark) {
    for (int i = 0; i < MAX_LEADBYTES && info.LeadByte[i] != 0; i += 2) {
        for (unsigned byte = info.LeadByte[i]; byte <= info.LeadByte[i + 1]; ++byte) mark(byte);
    }
}
