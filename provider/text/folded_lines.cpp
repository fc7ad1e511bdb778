// Finds line ends with memchr only, so that long folded values cost next to nothing.
#include "text/folded_lines.h"

#include "text/ascii.h"

namespace {

bool HasLoneReturns(std::string_view text) {
    // Written as HasAny is: without branches.
    unsigned char found = text.ends_with('\r') ? 1 : 0;
    for (size_t i = 1; i < text.size(); ++i) {
        const char first = text[i - 1];
        const char second = text[i];
        found = static_cast<unsigned char>(found | ((first == '\r') & (second != '\n')));
    }
    return found != 0;
}

}  // namespace

PhysicalLines::PhysicalLines(std::string_view text, size_t firstNumber)
    : text_(text), number_(firstNumber), hasLoneReturns_(HasLoneReturns(text)) {}

size_t PhysicalLines::Take() {
    ++number_;
    const size_t feed = hasLoneReturns_ ? text_.find_first_of("\r\n", position_) : text_.find('\n', position_);
    if (feed == std::string_view::npos) {
        position_ = text_.size();
        return position_;
    }
    const size_t start = position_;
    position_ = feed + 1;
    if (text_[feed] == '\r' && position_ < text_.size() && text_[position_] == '\n') ++position_;
    return feed > start && text_[feed] == '\n' && text_[feed - 1] == '\r' ? feed - 1 : feed;
}

void AppendUnfolded(std::string_view raw, bool keepBlank, std::string& text) {
    for (;;) {
        const size_t end = raw.find_first_of("\r\n");
        text.append(raw.substr(0, end));
        if (end == std::string_view::npos) return;
        raw.remove_prefix(end);
        raw.remove_prefix(raw.starts_with("\r\n") ? 2 : 1);
        if (!keepBlank && !raw.empty() && IsBlank(raw.front())) raw.remove_prefix(1);
    }
}
