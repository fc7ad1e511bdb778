// CObjectList: a list that owns its objects. The objects, their strings and identifiers and the lists inside them lie
// in the list's memory blocks and end together, at the cost of the number of blocks and whatever their depth.
#pragma once

#include "class_library/cobject.h"
#include "class_library/cstring.h"
#include "class_library/memory_blocks.h"

class CObjectList : public CObList {
  public:
    CObjectList() = default;
    CObjectList(const CObjectList&) = delete;
    CObjectList& operator=(const CObjectList&) = delete;

    // Ends every object. The list stays, empty, and uses its memory again.
    void DeleteAll() {
        RemoveAll();
        blocks.Reset();
    }

    MemoryBlocks blocks;
};
