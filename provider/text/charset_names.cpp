// A table of names; the first name of a code page is the one that messages use.
#include "text/charset_names.h"

#include <string>

#include "text/ascii.h"
#include "text/code_pages.h"

namespace {

struct CharsetName {
    std::string_view name;
    UINT codePage;
};

// Supersets stand in for ISO-8859-1, -9 and -11, US-ASCII and GB2312: exporters write one and mean the other.
constexpr CharsetName charsetNames[] = {
    {"UTF-8", CP_UTF8},
    {"windows-1252", 1252},
    {"cp1252", 1252},
    {"ISO-8859-1", 1252},
    {"latin1", 1252},
    {"US-ASCII", 1252},
    {"ASCII", 1252},
    {"windows-1250", 1250},
    {"cp1250", 1250},
    {"windows-1251", 1251},
    {"cp1251", 1251},
    {"windows-1253", 1253},
    {"cp1253", 1253},
    {"windows-1254", 1254},
    {"cp1254", 1254},
    {"ISO-8859-9", 1254},
    {"latin5", 1254},
    {"windows-1255", 1255},
    {"cp1255", 1255},
    {"windows-1256", 1256},
    {"cp1256", 1256},
    {"windows-1257", 1257},
    {"cp1257", 1257},
    {"windows-1258", 1258},
    {"cp1258", 1258},
    {"windows-874", 874},
    {"ISO-8859-11", 874},
    {"TIS-620", 874},
    {"ISO-8859-2", 28592},
    {"latin2", 28592},
    {"ISO-8859-3", 28593},
    {"ISO-8859-4", 28594},
    {"ISO-8859-5", 28595},
    {"ISO-8859-6", 28596},
    {"ISO-8859-7", 28597},
    {"ISO-8859-8", 28598},
    {"ISO-8859-13", 28603},
    {"ISO-8859-15", 28605},
    {"latin9", 28605},
    {"Shift_JIS", 932},
    {"sjis", 932},
    {"MS_Kanji", 932},
    {"windows-31J", 932},
    {"cp932", 932},
    {"EUC-JP", codePageEucJp},
    {"ujis", codePageEucJp},
    {"ISO-2022-JP", codePageIso2022Jp},
    {"GBK", 936},
    {"GB2312", 936},
    {"EUC-CN", 936},
    {"cp936", 936},
    {"windows-936", 936},
    {"GB18030", 54936},
    {"Big5", 950},
    {"Big5-HKSCS", 950},
    {"cp950", 950},
    {"EUC-KR", 949},
    {"KS_C_5601-1987", 949},
    {"KSC5601", 949},
    {"UHC", 949},
    {"cp949", 949},
    {"windows-949", 949},
    {"KOI8-R", 20866},
    {"KOI8", 20866},
    {"KOI8-U", 21866},
    {"IBM437", 437},
    {"cp437", 437},
    {"IBM850", 850},
    {"cp850", 850},
    {"IBM852", 852},
    {"cp852", 852},
    {"IBM866", 866},
    {"cp866", 866},
    {"macintosh", 10000},
    {"MacRoman", 10000},
};

std::string Folded(std::string_view label) {
    std::string folded = LowerCased(label);
    std::erase_if(folded, [](char c) { return c == '-' || c == '_' || IsBlank(c); });
    if (folded.starts_with("x") && folded.size() > 1) folded.erase(0, 1);
    return folded;
}

bool IsOnThisSystem(UINT codePage) {
    CPINFO information = {};
    return codePage == CP_UTF8 || codePage == codePageIso2022Jp || GetCPInfo(codePage, &information) != 0;
}

}  // namespace

std::optional<UINT> CodePageOfCharset(std::string_view label) {
    const std::string wanted = Folded(label);
    for (const CharsetName& known : charsetNames) {
        if (Folded(known.name) != wanted) continue;
        if (IsOnThisSystem(known.codePage)) return known.codePage;
        // The characters of two bytes are the same, and the others are rare.
        return known.codePage == 54936 ? std::optional<UINT>(936) : std::nullopt;
    }
    return std::nullopt;
}

std::string_view CharsetNameOf(UINT codePage) {
    for (const CharsetName& known : charsetNames)
        if (known.codePage == codePage) return known.name;
    return "the system's code page";
}
