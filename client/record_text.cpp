// What the library speaks, the system's code page, and what this program prints, UTF-8.
#include "client/record_text.h"

#include "client/client_error.h"
#include "text/code_pages.h"

std::string AsCodePageHasIt(std::string_view utf8) {
    return FromActiveCodePage(InActiveCodePage(utf8));
}

std::string InCodePage(std::string_view utf8, std::string_view what) {
    std::string text = InActiveCodePage(utf8);
    if (FromActiveCodePage(text) != utf8) {
        throw ClientError(std::string(what) + " \"" + std::string(utf8) +
                          "\" has characters that the system's code page " + std::to_string(GetACP()) +
                          " lacks; use another name");
    }
    return text;
}
