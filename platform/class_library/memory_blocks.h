// MemoryBlocks: memory that is given out piece by piece and given back all at once. It holds what one list owns: the
// objects of the list and the bytes of their strings and identifiers.
//
// Objects grow from the low end of a block and bytes from its high end, so objects are aligned and lie side by side,
// and bytes are packed without padding. Blocks grow from 4 KB to 1 MB; a larger request gets a block of its own.
#pragma once

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

class MemoryBlocks {
    struct Block;

  public:
    MemoryBlocks() = default;
    MemoryBlocks(MemoryBlocks&& other) noexcept;
    MemoryBlocks& operator=(MemoryBlocks&& other) noexcept;
    ~MemoryBlocks();

    // An object that ends with the blocks, without a destructor call. Throws std::bad_alloc.
    template <class Object, class... Arguments>
    Object* Create(Arguments&&... arguments) {
        static_assert(std::is_trivially_destructible_v<Object> && alignof(Object) <= objectAlignment);
        return new (AllocateObject(sizeof(Object))) Object(std::forward<Arguments>(arguments)...);
    }

    // Bytes of any alignment. Throws std::bad_alloc.
    char* AllocateBytes(size_t size) {
        if (current_ == nullptr || static_cast<size_t>(current_->high - current_->low) < size) EnterBlockFor(size);
        return current_->high -= size;
    }

    // Ends everything given out. The blocks are kept for what comes next.
    void Reset() { Rewind({}); }

    // A point that Rewind returns to: everything given out since then ends.
    struct Mark {
        Block* block = nullptr;
        char* low = nullptr;
        char* high = nullptr;
    };
    Mark GetMark() const;
    void Rewind(const Mark& mark);

  private:
    static constexpr size_t objectAlignment = 8;

    struct Block {
        Block* next;
        size_t size;  // of the whole block with this header
        char* low;
        char* high;
    };

    void* AllocateObject(size_t size) {
        size = (size + objectAlignment - 1) & ~(objectAlignment - 1);
        if (current_ == nullptr || static_cast<size_t>(current_->high - current_->low) < size) EnterBlockFor(size);
        return std::exchange(current_->low, current_->low + size);
    }
    void EnterBlockFor(size_t size);
    static void Empty(Block* block);

    Block* first_ = nullptr;
    Block* current_ = nullptr;  // the block in use; those after it are empty
};

// Ends what was given out since its construction unless Keep is called: nothing half-built outlives an exception.
class MemoryRollback {
  public:
    explicit MemoryRollback(MemoryBlocks& theBlocks) : blocks_(&theBlocks), mark_(theBlocks.GetMark()) {}
    MemoryRollback(const MemoryRollback&) = delete;
    MemoryRollback& operator=(const MemoryRollback&) = delete;
    ~MemoryRollback() {
        if (blocks_ != nullptr) blocks_->Rewind(mark_);
    }
    void Keep() { blocks_ = nullptr; }

  private:
    MemoryBlocks* blocks_;
    MemoryBlocks::Mark mark_;
};
