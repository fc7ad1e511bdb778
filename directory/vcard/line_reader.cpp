// Finds line ends with memchr only, so that long folded values cost next to nothing.
#include "vcard/line_reader.h"

#include <cstring>

#include "text/ascii.h"

size_t LineReader::LineEnd(size_t start) {
    if (nextFeed_ < start) {
        const size_t found = text_.find('\n', start);
        nextFeed_ = found == std::string_view::npos ? text_.size() : found;
    }
    const void* const carriageReturn = std::memchr(text_.data() + start, '\r', nextFeed_ - start);
    return carriageReturn == nullptr ? nextFeed_
                                     : static_cast<size_t>(static_cast<const char*>(carriageReturn) - text_.data());
}

size_t LineReader::SkipLineEnd(size_t end) const {
    if (end < text_.size() && text_[end] == '\r') ++end;
    if (end < text_.size() && text_[end] == '\n') ++end;
    return end;
}

size_t LineReader::TakeFolded(bool& folded) {
    for (;;) {
        const size_t end = LineEnd(position_);
        position_ = SkipLineEnd(end);
        ++number_;
        if (position_ >= text_.size() || !IsBlank(text_[position_])) return end;
        folded = true;
    }
}

bool LineReader::Next(ContentLine& line) {
    while (position_ < text_.size()) {
        const size_t start = position_;
        line.number = number_;
        line.folded = false;
        const size_t end = TakeFolded(line.folded);
        line.raw = text_.substr(start, end - start);
        if (!Trimmed(line.raw).empty()) return true;
    }
    return false;
}

bool LineReader::JoinNext(ContentLine& line) {
    if (position_ >= text_.size()) return false;
    const std::string_view next = text_.substr(position_);
    if (next.front() == '\r' || next.front() == '\n' || StartsWithIgnoringCase(next, "END:") ||
        StartsWithIgnoringCase(next, "BEGIN:"))
        return false;
    const auto start = static_cast<size_t>(line.raw.data() - text_.data());
    bool folded = false;
    line.raw = text_.substr(start, TakeFolded(folded) - start);
    return true;
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
