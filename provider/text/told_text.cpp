// Cuts between characters; fills names into words.
#include "text/told_text.h"

std::string_view BeginningOf(std::string_view utf8, size_t mostBytes) {
    if (utf8.size() <= mostBytes) return utf8;
    const auto isContinuation = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    while (mostBytes > 0 && isContinuation(utf8[mostBytes])) --mostBytes;
    return utf8.substr(0, mostBytes);
}

void CutToTell(std::string& utf8, size_t mostBytes) {
    if (utf8.size() <= mostBytes) return;
    utf8.resize(BeginningOf(utf8, mostBytes).size());
    utf8.append("…");
}

void MessageName::AppendTo(std::string& told) const {
    const std::string_view beginning = BeginningOf(text_, mostBytes_);
    told.append(beginning).append(beginning.size() < text_.size() ? "…" : "");
}

ToldMessage FillIn(const Message& message) {
    const auto* name = message.names.begin();
    const auto fill = [&](std::string_view words) {
        std::string told;
        for (;;) {
            const size_t place = words.find("{}");
            told.append(words.substr(0, place));
            if (place == std::string_view::npos) return told;
            words.remove_prefix(place + 2);
            if (name == message.names.end())
                told.append("…");
            else
                (name++)->AppendTo(told);
        }
    };
    ToldMessage told;
    told.what = fill(message.what);
    told.advice = fill(message.advice);
    return told;
}
