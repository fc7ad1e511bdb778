// InputFile: the bytes of a file, for a stream. Nothing but a file is opened: a pipe, a socket or a device would keep
// its reader waiting, or does something when it is opened.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <streambuf>
#include <system_error>

class InputFile final : public std::streambuf {
  public:
    // Follows links.
    explicit InputFile(const std::filesystem::path& path);
    ~InputFile() override;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // It is something else than a file.
    bool IsNoFile() const { return isNoFile_; }
    bool IsOpen() const { return isOpen_; }
    // In bytes, before it was opened.
    std::uint64_t Size() const { return size_; }
    // What the system said when the file could not be opened, or later, when it could not be read to its end.
    const std::error_code& Error() const { return error_; }

  private:
    int_type underflow() override;
    std::streamsize xsgetn(char* bytes, std::streamsize count) override;
    // The number of bytes; 0 at the end and after a failure.
    size_t ReadSome(char* bytes, size_t count);

#ifdef _WIN32
    void* file_ = nullptr;
#else
    int file_ = -1;
#endif
    std::uint64_t size_ = 0;
    bool isOpen_ = false;
    bool isNoFile_ = false;
    std::error_code error_;
    std::array<char, 4096> buffer_;  // of what is not read in larger pieces
};
