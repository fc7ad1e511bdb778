// CObject, the root of the objects that a list holds, and CObList, their order. An object lies in the memory blocks of
// the list that owns it and stands in one list only, so the link is in the object. A CObList owns nothing by itself.
#pragma once

#include <cstddef>
#include <cstdint>

struct CObject {
    CObject* nextInList = nullptr;
};

class CObList {
  public:
    void AddTail(CObject* object) {
        (tail_ != nullptr ? tail_->nextInList : head_) = object;
        tail_ = object;
        ++count_;
    }

    // Forgets the objects, which are their owner's to end.
    void RemoveAll() { *this = {}; }

    bool IsEmpty() const { return head_ == nullptr; }
    uint32_t GetCount() const { return count_; }

    // for (const T& object : list.Each<T>()): every object, in the order of adding; all must be of class T.
    template <class T>
    auto Each() const {
        struct Iterator {
            CObject* at;
            T& operator*() const { return *static_cast<T*>(at); }
            Iterator& operator++() {
                at = at->nextInList;
                return *this;
            }
            bool operator!=(const Iterator& other) const { return at != other.at; }
        };
        struct Range {
            CObject* first;
            Iterator begin() const { return {first}; }
            Iterator end() const { return {nullptr}; }
        };
        return Range{head_};
    }

  private:
    CObject* head_ = nullptr;
    CObject* tail_ = nullptr;
    uint32_t count_ = 0;
};
