// A text of cards or entries in pieces that end where one begins, so that a file of any size is read through one small
// buffer.
//
// Files are read and not mapped: another program that shortens a mapped file would end this process, or on Windows
// could not save its file while it is mapped here. And a buffer that is used again stays in the processor's caches.
#pragma once

#include <cstddef>
#include <istream>
#include <string_view>
#include <vector>

class SegmentReader {
  public:
    // `start` is what a line begins with that begins a card, in any case of its letters; it outlives this object.
    SegmentReader(std::istream& text, std::string_view start) : text_(text), start_(start) {}

    // The next piece, without a byte-order mark and never UTF-16; it is valid until the next call. False at the end.
    bool Next(std::string_view& segment);

  private:
    bool Fill();
    void ConvertUtf16();
    // Behind the last line end that a card's start follows; 0 when there is none at or behind the position.
    size_t FindBoundary(size_t from) const;

    std::istream& text_;
    std::string_view start_;
    std::vector<char> buffer_;
    size_t begin_ = 0;  // of what was read and not handed out yet
    size_t end_ = 0;
    bool atStart_ = true;
};
