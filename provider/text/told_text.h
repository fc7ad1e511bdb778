// What messages and explanations tell of a file's texts: their beginning is enough to find them, and a file must not be
// told again and again.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

// Bytes of UTF-8. A name is told as records show it; where a number comes from, as the comment of a record.
inline constexpr size_t longestToldName = 85;
inline constexpr size_t longestToldSource = 255;

// The first bytes of a text, at most so many, without a part of a character at the end.
std::string_view BeginningOf(std::string_view utf8, size_t mostBytes);

// Cuts a text to so many bytes; an ellipsis behind them says so.
void CutToTell(std::string& utf8, size_t mostBytes);

// Something that a user should know of a file. `what` is wrong and the advice what to do are the same words for all
// messages of a kind; each "{}" in them, in their order, stands for one of the names, which are of any length.
class MessageName {
  public:
    // NOLINTBEGIN(google-explicit-constructor): names are given as they are
    MessageName(std::string_view text) : text_(text) {}
    MessageName(const std::string& text) : text_(text) {}
    // NOLINTEND(google-explicit-constructor)
    // A path, which has a length that the system bounds.
    static MessageName Whole(std::string_view text) {
        MessageName name(text);
        name.mostBytes_ = text.size();
        return name;
    }

    void AppendTo(std::string& told) const;

  private:
    std::string_view text_;
    size_t mostBytes_ = longestToldName;
};
using MessageNames = std::initializer_list<MessageName>;
struct Message {
    size_t line = 0;  // 0: the file as a whole
    std::string_view what;
    std::string_view advice;
    MessageNames names;
};

// The words as they are told: the names cut, and an ellipsis for one that is not there.
struct ToldMessage {
    std::string what;
    std::string advice;
};
ToldMessage FillIn(const Message& message);
