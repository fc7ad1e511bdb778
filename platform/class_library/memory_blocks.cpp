// MemoryBlocks: the chain of blocks.
#include "class_library/memory_blocks.h"

#include <algorithm>
#include <limits>

namespace {

constexpr size_t smallestBlock = size_t{4} * 1024;
constexpr size_t largestBlock = size_t{1024} * 1024;

}  // namespace

MemoryBlocks::MemoryBlocks(MemoryBlocks&& other) noexcept
    : first_(std::exchange(other.first_, nullptr)), current_(std::exchange(other.current_, nullptr)) {}

MemoryBlocks& MemoryBlocks::operator=(MemoryBlocks&& other) noexcept {
    std::swap(first_, other.first_);
    std::swap(current_, other.current_);
    return *this;
}

MemoryBlocks::~MemoryBlocks() {
    for (Block* block = first_; block != nullptr;) {
        Block* next = block->next;
        ::operator delete(block);
        block = next;
    }
}

MemoryBlocks::Mark MemoryBlocks::GetMark() const {
    if (current_ == nullptr) return {};
    return {current_, current_->low, current_->high};
}

void MemoryBlocks::Rewind(const Mark& mark) {
    current_ = mark.block;
    if (current_ != nullptr) {
        current_->low = mark.low;
        current_->high = mark.high;
    } else if (first_ != nullptr) {
        current_ = first_;
        Empty(current_);
    }
}

// Makes a block with that much room the current one: the next one of the chain if it is large enough, else a new one.
void MemoryBlocks::EnterBlockFor(size_t size) {
    Block* next = current_ != nullptr ? current_->next : first_;
    if (next == nullptr || next->size - sizeof(Block) < size) {
        const size_t grown = std::clamp(current_ != nullptr ? current_->size * 2 : 0, smallestBlock, largestBlock);
        if (size > std::numeric_limits<size_t>::max() - sizeof(Block)) throw std::bad_alloc();
        const size_t blockSize = std::max(size + sizeof(Block), grown);
        Block* block = new (::operator new(blockSize)) Block{next, blockSize, nullptr, nullptr};
        (current_ != nullptr ? current_->next : first_) = block;
        next = block;
    }
    Empty(next);
    current_ = next;
}

void MemoryBlocks::Empty(Block* block) {
    block->low = reinterpret_cast<char*>(block + 1);
    block->high = reinterpret_cast<char*>(block) + block->size;
}
