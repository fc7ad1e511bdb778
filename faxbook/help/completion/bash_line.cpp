// What is written has no backslash outside of $'': in some character sets a letter's last byte looks like one, or a
// backslash behind half a letter is taken into it. The bytes of quotes belong to no letter anywhere.
#include "help/completion/bash_line.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "text/ascii.h"
#include "text/control_characters.h"

namespace {

enum class Quotes { None, Single, Double, Ansi };

bool IsOneOf(char c, std::string_view set) {
    return set.find(c) != std::string_view::npos;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetterOrDigit(char c) {
    return IsDigit(c) || (ToLowerAscii(c) >= 'a' && ToLowerAscii(c) <= 'z');
}

// Splits a line into words and takes the quotes off.
class Reader {
  public:
    explicit Reader(std::string_view line) : rest_(line) {
        while (!rest_.empty()) ReadNext(Take());
        isForBash |= isRedirection_;
    }

    std::vector<std::string> words = {{}};  // the last one, begun or not, is that at the line's end
    bool isForBash = false;                 // that word has an expansion in it, or is the file of a redirection
    Quotes open = Quotes::None;
    bool isJustOpened = false;
    bool hasDollar = false;  // before the open quote

  private:
    char Take() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }
    void Add(char c) {
        words.back() += c;
        isBegun_ = true;
    }
    void Open(Quotes quotes, bool withDollar = false) {
        open = quotes;
        isJustOpened = isBegun_ = true;
        hasDollar = withDollar;
    }
    void EndWord() {
        if (isRedirection_) words.back().clear();
        if (isBegun_ && !isRedirection_) words.emplace_back();
        isBegun_ = isRedirection_ = isForBash = false;
    }
    void ReadNext(char c);
    void ReadOutside(char c);
    void ReadInDouble(char c);
    void ReadInAnsi(char c);
    void ReadDollar();
    void BeginRedirection();

    std::string_view rest_;
    bool isBegun_ = false;        // the last word
    bool isRedirection_ = false;  // the last word is the file of one
};

void Reader::ReadNext(char c) {
    isJustOpened = false;
    const bool closes = open == Quotes::Double ? c == '"' : open != Quotes::None && c == '\'';
    if (closes) {
        open = Quotes::None;
    } else if (open == Quotes::None) {
        ReadOutside(c);
    } else if (open == Quotes::Single) {
        Add(c);
    } else if (open == Quotes::Double) {
        ReadInDouble(c);
    } else {
        ReadInAnsi(c);
    }
}

void Reader::ReadOutside(char c) {
    if (IsOneOf(c, " \t\n;&|()")) {
        // Of an operator such as >& or >( the redirection has not begun its word yet.
        if (isBegun_) EndWord();
    } else if (IsOneOf(c, "<>")) {
        BeginRedirection();
    } else if (c == '\'' || c == '"') {
        Open(c == '"' ? Quotes::Double : Quotes::Single);
    } else if (c == '$') {
        ReadDollar();
    } else if (c != '\\') {
        isForBash |= c == '`' || (c == '~' && !isBegun_);
        Add(c);
    } else if (!rest_.empty()) {
        const char escaped = Take();
        if (escaped != '\n') Add(escaped);
    }
}

void Reader::ReadDollar() {
    const char next = rest_.empty() ? ' ' : rest_.front();
    if (open == Quotes::None && (next == '\'' || next == '"')) {
        Take();
        return Open(next == '"' ? Quotes::Double : Quotes::Ansi, true);
    }
    isForBash |= IsLetterOrDigit(next) || IsOneOf(next, "_{([@*#?$!-");
    Add('$');
}

void Reader::ReadInDouble(char c) {
    if (c == '$') return ReadDollar();
    isForBash |= c == '`';
    if (c != '\\' || rest_.empty() || !IsOneOf(rest_.front(), "$`\"\\\n")) return Add(c);
    const char escaped = Take();
    if (escaped != '\n') Add(escaped);
}

void Reader::ReadInAnsi(char c) {
    if (c != '\\' || rest_.empty()) return Add(c);
    const char kind = Take();
    constexpr std::string_view letters = "abeEfnrtv\\'\"?";
    constexpr std::string_view meanings = "\a\b\x1B\x1B\f\n\r\t\v\\'\"?";
    if (const size_t letter = letters.find(kind); letter != std::string_view::npos) return Add(meanings[letter]);
    // The others can be left to bash: this program writes bytes.
    unsigned value = 0;
    size_t digits = 0;
    for (; kind == 'x' && digits < 2 && !rest_.empty(); ++digits) {
        const size_t digit = std::string_view("0123456789abcdef").find(ToLowerAscii(rest_.front()));
        if (digit == std::string_view::npos) break;
        value = value * 16 + static_cast<unsigned>(digit);
        Take();
    }
    isForBash |= digits == 0;
    Add(static_cast<char>(value));
}

// The number of a descriptor may stand before it.
void Reader::BeginRedirection() {
    if (std::ranges::all_of(words.back(), IsDigit)) words.back().clear();
    if (!words.back().empty()) EndWord();
    while (!rest_.empty() && IsOneOf(rest_.front(), "<>&|(")) Take();
    isBegun_ = false;
    isRedirection_ = true;
}

bool IsBare(std::string_view word) {
    return !word.empty() &&
           std::ranges::all_of(word, [](char c) { return IsLetterOrDigit(c) || IsOneOf(c, "_-./,+"); });
}

}  // namespace

BashLine::BashLine(std::string_view line, std::string_view replaced) {
    const std::string_view before = line.substr(0, line.size() - std::min(replaced.size(), line.size()));
    Reader whole(line);
    const Reader staying(before);
    words_ = std::move(whole.words);
    stays_ = staying.words.back();
    hasDollar_ = staying.isJustOpened && staying.hasDollar;
    if (staying.isJustOpened) openQuote_ = before.back();
    // Where readline sees other quotes than bash will, it exchanges something else than a part of the word.
    const bool isBehindQuote = before.ends_with('\'') || before.ends_with('"');
    const bool isBetweenQuotes = staying.open == Quotes::None && !isBehindQuote;
    canBecomeAnother_ = !whole.isForBash && line.ends_with(replaced) && staying.words.size() == words_.size() &&
                        (staying.isJustOpened || isBetweenQuotes);
    if (words_.size() > 1) words_.erase(words_.begin());
}

std::vector<std::string> BashLine::Write(const std::vector<Candidate>& candidates) const {
    if (!canBecomeAnother_) return {};
    const bool isWordNew = stays_.empty() && openQuote_ == 0;
    std::vector<Candidate> rests;
    for (const Candidate& candidate : candidates) {
        if (!candidate.word.starts_with(stays_) || (candidate.looksLikeOption && !isWordNew)) continue;
        rests.push_back({candidate.word.substr(stays_.size()), candidate.looksLikeOption});
    }
    const bool areBare = openQuote_ == 0 && std::ranges::all_of(rests, IsBare, &Candidate::word);
    std::vector<std::string> texts;
    texts.reserve(rests.size());
    for (const Candidate& rest : rests)
        texts.push_back((rest.looksLikeOption ? "-- " : "") + (areBare ? rest.word : Quote(rest.word)));
    return texts;
}

// In the quotes that are open, or in single ones. The characters that these cannot hold stand in others in between:
// everything but itself stands for itself in single quotes, and in double quotes everything but five characters.
std::string BashLine::Quote(std::string_view text) const {
    const char usual = openQuote_ == 0 ? '\'' : openQuote_;
    const auto canHold = [](char quote, char c) { return quote == '\'' ? c != '\'' : !IsOneOf(c, "\"$`\\!"); };
    std::string written;
    if (openQuote_ != 0) written = openQuote_;
    if (hasDollar_) written += openQuote_;
    char open = hasDollar_ ? '\0' : openQuote_;
    bool isAnsi = false;
    const auto change = [&](char quote, bool toAnsi) {
        if (open == quote && isAnsi == toAnsi) return;
        if (open != 0) written += open;
        if (toAnsi) written += '$';
        written += quote;
        open = quote;
        isAnsi = toAnsi;
    };
    while (!text.empty()) {
        const size_t controlLength = ControlLength(text);
        if (controlLength == 0) {
            const char now = open == 0 || isAnsi ? usual : open;
            change(canHold(now, text[0]) ? now : now == '\'' ? '"' : '\'', false);
            written += text[0];
        } else {
            change('\'', true);
            for (const char c : text.substr(0, controlLength)) {
                std::array<char, 5> escape = {};
                std::snprintf(escape.data(), escape.size(), "\\x%02x", unsigned{static_cast<unsigned char>(c)});
                written += escape.data();
            }
        }
        text.remove_prefix(std::max<size_t>(controlLength, 1));
    }
    if (open == 0) change(usual, false);
    written += open;
    if (openQuote_ != 0 && open != openQuote_) written.append(2, openQuote_);
    return written;
}
