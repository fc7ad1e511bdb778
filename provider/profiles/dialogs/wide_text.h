// Text of windows and resources, which is UTF-16, and the provider's own, which is UTF-8.
#pragma once

#include <string>
#include <string_view>

std::wstring WideFromUtf8(std::string_view utf8);
// A half of a surrogate pair that stands alone becomes U+FFFD.
std::string Utf8FromWide(std::wstring_view wide);
