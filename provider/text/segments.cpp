// Fills the buffer, hands out what is complete in it, and moves the rest to its start.
#include "text/segments.h"

#include <algorithm>
#include <stdexcept>

#include "text/ascii.h"
#include "text/code_pages.h"
#include "text/utf16.h"

namespace {

// Many files hold one card: for such a file, fresh memory would cost more than all the rest.
constexpr size_t firstBufferSize = size_t{16} * 1024;
constexpr size_t usualBufferSize = size_t{256} * 1024;
// Longer than with any photo: what has no card for so long is no address file.
constexpr size_t longestCard = longestConversion;

}  // namespace

bool SegmentReader::Fill() {
    if (text_.eof()) return false;
    if (begin_ > 0) {
        std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_),
                  buffer_.begin() + static_cast<std::ptrdiff_t>(end_), buffer_.begin());
        end_ -= begin_;
        begin_ = 0;
    }
    if (end_ > longestCard) throw std::length_error("card too long");
    // Twice as large for a card that fills it: a photo can be megabytes.
    if (buffer_.empty())
        buffer_.resize(firstBufferSize);
    else if (end_ == buffer_.size() || buffer_.size() < usualBufferSize)
        buffer_.resize(std::max(buffer_.size() * 2, usualBufferSize));
    text_.read(buffer_.data() + end_, static_cast<std::streamsize>(buffer_.size() - end_));
    const auto count = static_cast<size_t>(text_.gcount());
    end_ += count;
    return count > 0;
}

// UTF-16 is converted as a whole.
void SegmentReader::ConvertUtf16() {
    std::string all(buffer_.data(), end_);
    AppendRest(text_, all);
    const std::optional<std::string> converted = Utf8FromUtf16Bytes(all);
    buffer_.assign(converted->begin(), converted->end());
    end_ = buffer_.size();
}

size_t SegmentReader::FindBoundary(size_t from) const {
    for (size_t i = end_; i > from; --i) {
        const char before = buffer_[i - 1];
        if (before != '\n' && before != '\r') continue;
        if (StartsWithIgnoringCase({buffer_.data() + i, end_ - i}, start_)) return i;
    }
    return 0;
}

bool SegmentReader::Next(std::string_view& segment) {
    bool more = Fill();
    if (atStart_ && Utf8FromUtf16Bytes({buffer_.data(), std::min<size_t>(end_, 2)})) {
        ConvertUtf16();
        more = false;
    }
    if (atStart_ && std::string_view(buffer_.data(), end_).starts_with(utf8Mark)) begin_ = utf8Mark.size();
    atStart_ = false;
    size_t searched = begin_;
    while (more) {
        const size_t boundary = FindBoundary(searched);
        if (boundary > begin_) {
            segment = {buffer_.data() + begin_, boundary - begin_};
            begin_ = boundary;
            return true;
        }
        // A start that was cut off at the end is looked at again. The next filling moves the text to the start.
        searched = std::max(begin_, end_ - std::min(end_, start_.size() + 1)) - begin_;
        more = Fill();
    }
    segment = {buffer_.data() + begin_, end_ - begin_};
    begin_ = end_;
    return !segment.empty();
}
