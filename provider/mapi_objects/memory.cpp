// Every live buffer is known by its address, so that a pointer that is none, or no longer one, is told from one.
#include "mapi_objects/memory.h"

#include <algorithm>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace {

using Piece = std::unique_ptr<std::byte[]>;

struct Buffer {
    size_t size = 0;
    std::vector<Piece> pieces;  // the first is the buffer itself
    std::vector<std::shared_ptr<const void>> owners;
};

struct LiveBuffers {
    std::mutex mutex;
    std::unordered_map<const void*, Buffer> buffers;
};

LiveBuffers& Live() {
    static LiveBuffers live;
    return live;
}

Piece NewPiece(size_t size) {
    return Piece(new std::byte[std::max<size_t>(size, 1)]);
}

}  // namespace

void* AllocateBuffer(size_t size) {
    Piece piece = NewPiece(size);
    void* const address = piece.get();
    Buffer buffer;
    buffer.size = size;
    buffer.pieces.push_back(std::move(piece));
    LiveBuffers& live = Live();
    const std::lock_guard lock(live.mutex);
    live.buffers.emplace(address, std::move(buffer));
    return address;
}

void* AllocateMore(size_t size, void* buffer) {
    Piece piece = NewPiece(size);
    void* const address = piece.get();
    LiveBuffers& live = Live();
    const std::lock_guard lock(live.mutex);
    const auto found = live.buffers.find(buffer);
    if (found == live.buffers.end()) return nullptr;
    found->second.pieces.push_back(std::move(piece));
    return address;
}

void KeepAlive(void* buffer, std::shared_ptr<const void> owner) {
    LiveBuffers& live = Live();
    const std::lock_guard lock(live.mutex);
    live.buffers.at(buffer).owners.push_back(std::move(owner));
}

bool FreeBuffer(void* buffer) {
    LiveBuffers& live = Live();
    std::unique_lock lock(live.mutex);
    // What the buffer kept alive may end with it, after the lock.
    const auto freed = live.buffers.extract(buffer);
    lock.unlock();
    return !freed.empty();
}

size_t BufferSize(const void* buffer) {
    LiveBuffers& live = Live();
    const std::lock_guard lock(live.mutex);
    const auto found = live.buffers.find(buffer);
    return found == live.buffers.end() ? 0 : found->second.size;
}

ResultBuffer::ResultBuffer(size_t expected)
    : buffer_(AllocateBuffer(expected)), next_(static_cast<std::byte*>(buffer_.get())), left_(expected) {}

void* ResultBuffer::TakeBytes(size_t size) {
    constexpr size_t pieceSize = 16384;
    const size_t rounded = (size + alignof(void*) - 1) / alignof(void*) * alignof(void*);
    if (rounded > left_) {
        const size_t next = std::max(rounded, pieceSize);
        next_ = static_cast<std::byte*>(AllocateMore(next, buffer_.get()));
        left_ = next;
    }
    std::byte* const piece = next_;
    next_ += rounded;
    left_ -= rounded;
    return piece;
}
