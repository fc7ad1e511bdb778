// MemoryBlocks: the chain of blocks.
#include "class_library/memory_blocks.h"

#include <algorithm>
#include <limits>

namespace {

constexpr size_t smallestBlock = size_t{4} * 1024;
constexpr size_t largestBlock = size_t{1024} * 1024;

}  // namespace

MemoryBlocks::MemoryBlocks(MemoryBlocks&& other) noexcept
    : first(std::exchange(other.first, nullptr)), current(std::exchange(other.current, nullptr)) {}

MemoryBlocks& MemoryBlocks::operator=(MemoryBlocks&& other) noexcept {
    std::swap(first, other.first);
    std::swap(current, other.current);
    return *this;
}

MemoryBlocks::~MemoryBlocks() {
    for (Block* block = first; block != nullptr;) {
        Block* next = block->next;
        ::operator delete(block);
        block = next;
    }
}

MemoryBlocks::Mark MemoryBlocks::GetMark() const {
    if (current == nullptr) return {};
    return {current, current->low, current->high};
}

void MemoryBlocks::Rewind(const Mark& mark) {
    current = mark.block;
    if (current != nullptr) {
        current->low = mark.low;
        current->high = mark.high;
    } else if (first != nullptr) {
        current = first;
        Empty(current);
    }
}

// Makes a block with that much room the current one: the next one of the chain if it is large enough, else a new one.
void MemoryBlocks::EnterBlockFor(size_t size) {
    Block* next = current != nullptr ? current->next : first;
    if (next == nullptr || next->size - sizeof(Block) < size) {
        const size_t grown = std::clamp(current != nullptr ? current->size * 2 : 0, smallestBlock, largestBlock);
        if (size > std::numeric_limits<size_t>::max() - sizeof(Block)) throw std::bad_alloc();
        const size_t blockSize = std::max(size + sizeof(Block), grown);
        Block* block = new (::operator new(blockSize)) Block{next, blockSize, nullptr, nullptr};
        (current != nullptr ? current->next : first) = block;
        next = block;
    }
    Empty(next);
    current = next;
}

void MemoryBlocks::Empty(Block* block) {
    block->low = reinterpret_cast<char*>(block + 1);
    block->high = reinterpret_cast<char*>(block) + block->size;
}
