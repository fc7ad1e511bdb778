// The memory that callers get and give back: buffers with any number of further pieces chained to them, freed together.
// A buffer can also keep something alive that its contents point into.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

// Throws std::bad_alloc. Memory is uninitialised and aligned for every property value.
void* AllocateBuffer(size_t size);
// A further piece of a live buffer; null when the buffer is not one.
void* AllocateMore(size_t size, void* buffer);
void KeepAlive(void* buffer, std::shared_ptr<const void> owner);
// False, with nothing done, for what is not a live buffer.
bool FreeBuffer(void* buffer);
// The size that a live buffer was asked for with; 0 for what is not one.
size_t BufferSize(const void* buffer);

struct BufferDeleter {
    void operator()(void* buffer) const { FreeBuffer(buffer); }
};
template <typename Contents>
using BufferOf = std::unique_ptr<Contents, BufferDeleter>;
using BufferHolder = BufferOf<void>;

// Hands out many small pieces of one buffer, in order; the first one begins the buffer.
class ResultBuffer {
  public:
    // `expected` bytes come with the buffer itself; more are chained to it.
    explicit ResultBuffer(size_t expected);

    template <typename Value>
    Value* Take(size_t count) {
        return static_cast<Value*>(TakeBytes(count * sizeof(Value)));
    }
    // The parts, one after another, as one terminated string.
    template <typename... Parts>
    char* TakeText(const Parts&... parts) {
        char* const text = Take<char>((std::string_view(parts).size() + ... + 1));
        char* end = text;
        ((end += std::string_view(parts).copy(end, std::string_view::npos)), ...);
        *end = '\0';
        return text;
    }

    void KeepAlive(std::shared_ptr<const void> owner) { ::KeepAlive(buffer_.get(), std::move(owner)); }
    void* Get() const { return buffer_.get(); }
    // To the caller, who frees it.
    void* Detach() { return buffer_.release(); }

  private:
    void* TakeBytes(size_t size);

    BufferHolder buffer_;
    std::byte* next_;
    size_t left_;
};
