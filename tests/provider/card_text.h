// Cards for the tests of the reader: a card around some lines, and the set that reading a text gives.
#pragma once

#include <windows.h>

#include <cstdlib>
#include <initializer_list>
#include <sstream>
#include <string>

#include "cards/card_set_builder.h"
#include "formats/vcard/card_reader.h"

inline void SetVariable(const char* name, const std::string& value) {
#ifdef _WIN32
    SetEnvironmentVariableA(name, value.c_str());
#else
    setenv(name, value.c_str(), 1);
#endif
}

inline std::string CardOf(std::initializer_list<std::string> lines, const std::string& version = "3.0") {
    std::string text = "BEGIN:VCARD\r\nVERSION:" + version + "\r\n";
    for (const std::string& line : lines) text += line + "\r\n";
    return text + "END:VCARD\r\n";
}

struct NoMessages final : MessageReceiver {
    void Take(const Message&) override {}
};

// Messages as "line: what", one in each line.
struct WrittenMessages final : MessageReceiver {
    void Take(const Message& message) override {
        text += std::to_string(message.line) + ": " + FillIn(message).what + "\n";
    }
    std::string text;
};

// "name/company/department/email: number b|h|o|p*line"; the star stands behind a preferred number.
inline std::string Described(const CardSet& set, const Card& card) {
    std::string seen = set.Text(card.name);
    for (const TextPosition text : {card.company, card.department, card.email})
        seen += std::string("/") + set.Text(text);
    for (const FaxNumber& number : set.FaxNumbers(card)) {
        seen += std::string(" ") + set.Text(number.number) + "-bhop"[static_cast<size_t>(number.kind)];
        seen += (number.preference == 1 ? "*" : "") + std::to_string(number.line);
    }
    return seen;
}

inline std::shared_ptr<const CardSet> ReadSet(const std::string& text, CardSetContents contents = {},
                                              std::optional<UINT> charset = std::nullopt) {
    NoMessages messages;
    std::istringstream stream(text);
    CardSetBuilder builder(contents, text.size(), messages);
    const std::optional<UINT> guessed = ReadCards(stream, charset, builder);
    return builder.Finish(guessed);
}
