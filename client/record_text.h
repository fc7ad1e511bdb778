// The library speaks the system's code page, everything in this program and all that it prints is UTF-8.
#pragma once

#include <string>
#include <string_view>

#include "text/code_pages.h"

// A record's text field, up to its NUL.
template <size_t size>
std::string FieldText(const char (&field)[size]) {
    const std::string_view bytes(field, size);
    return FromActiveCodePage(bytes.substr(0, bytes.find('\0')));
}

// What is left of UTF-8 text in the code page: names come out of the library so, and are looked for so.
std::string AsCodePageHasIt(std::string_view utf8);

// For what the user typed and the library is to take over. Throws ClientError when the code page lacks one of the
// characters; `what` names the text in the message.
std::string InCodePage(std::string_view utf8, std::string_view what);
