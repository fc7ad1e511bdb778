// Standard output as a stream's buffer that knows why it could not be written.
#pragma once

#include <array>
#include <streambuf>
#include <string>
#include <string_view>

class OutputBuffer final : public std::streambuf {
  public:
    // Writes all of the bytes. The result is the reason when it could not, in words for the user, and else empty.
    using Write = std::string (*)(std::string_view bytes);

    explicit OutputBuffer(Write writeBytes) : write_(writeBytes) {
        setp(buffer_.data(), buffer_.data() + buffer_.size());
    }

    // Of the first write that failed; what follows it is dropped. Empty while none has.
    const std::string& Failure() const { return failure_; }

  protected:
    int_type overflow(int_type character) override;
    int sync() override;

  private:
    Write write_;
    std::string failure_;
    std::array<char, 1 << 14> buffer_ = {};
};
