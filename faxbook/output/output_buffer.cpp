// Writes when the buffer is full and when it is asked to.
#include "output/output_buffer.h"

int OutputBuffer::sync() {
    if (failure_.empty() && pptr() > pbase()) failure_ = write_({pbase(), static_cast<size_t>(pptr() - pbase())});
    setp(buffer_.data(), buffer_.data() + buffer_.size());
    return failure_.empty() ? 0 : -1;
}

OutputBuffer::int_type OutputBuffer::overflow(int_type character) {
    if (sync() != 0) return traits_type::eof();
    if (!traits_type::eq_int_type(character, traits_type::eof())) sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
}
