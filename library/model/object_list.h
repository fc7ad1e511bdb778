// CObjectList: a list that owns its objects. The objects, their strings and identifiers and the lists inside them lie
// in the list's memory blocks and end together, at the cost of the number of blocks and whatever their depth.
#pragma once

#include "class_library/cobject.h"
#include "class_library/cstring.h"
#include "class_library/memory_blocks.h"

class CObjectList : public CObList {
  public:
    CObjectList() = default;

    // An empty list that uses the blocks of an earlier list again.
    explicit CObjectList(MemoryBlocks&& recycled) : blocks(std::move(recycled)) { blocks.Reset(); }

    CObjectList(const CObjectList&) = delete;
    CObjectList& operator=(const CObjectList&) = delete;

    MemoryBlocks blocks;
};
