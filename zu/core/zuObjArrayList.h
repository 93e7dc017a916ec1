// zuObjArrayList: a growable list of handles, and zuObjArrayListImpl, the
// counted body behind it.
//
//   zuObjArrayList shapes;                    // no body yet
//   shapes.add(zuObjWrap(new Shape));         // the body is made here
//   shapes.add(0, zuNullObj::getNULL());      // null elements are allowed
//   zuObjWrap first = shapes.get(1);          // a new reference; checked
//   shapes.indexOf(first);                    // 1: by identity, not value
//   zuObjArrayList alias = shapes;            // shares the body
//   zuObjArrayList copy = shapes.clone();     // an independent list
//
// Each element holds one reference to its body. Copies of a list handle
// share one body, and a list is itself a zuObjWrap, so lists can hold
// lists. A handle makes its body on the first operation that needs one
// (add, insert, ensureCapacity, extendSize), so a copy taken before that
// stays without a body and misses what is added to the original.
//
// Growth takes the array from the owner thread's block cache; the owner is
// fixed at the first growth (the calling thread unless another id is given),
// and the list may be grown and released only there (otherwise zuExAssert
// is thrown). Like every counted object, a list belongs to one thread.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuObj.h"
#include "zu/core/zuObjWrap.h"

class ZU_EXPORT zuObjArrayListImpl : public zuObjImpl {
 public:
  static constexpr unsigned short kTypeId = 16696;
  // The smallest capacity increment.
  static constexpr unsigned int kMinIncrement = 16;

  // A new empty body owned by thread `threadId` (0: fixed at the first
  // growth); the caller adds the first reference. Throws zuExMemory.
  static zuObjArrayListImpl* NEW(unsigned int threadId);

  // Releases every element and the array (on the owner thread).
  ~zuObjArrayListImpl() override;
  zuObjArrayListImpl(const zuObjArrayListImpl&) = delete;
  zuObjArrayListImpl& operator=(const zuObjArrayListImpl&) = delete;

  // 1 for 16696 and for the root's 16445.
  int IsDerivedFrom(unsigned short typeId) const override;
  // 16696.
  unsigned short Type() const override;

  unsigned int size() const { return count_; }
  unsigned int capacity() const { return capacity_; }
  // The step the next growth adds at least: 16 for a new body (a list
  // handle's first capacity when larger), doubled at each growth so that
  // appending stays linear.
  unsigned int increment() const { return increment_; }
  // The owner thread, 0 before the first growth.
  unsigned int ownerThreadId() const { return ownerThreadId_; }

  // Element `index` without a reference; the caller has checked the index.
  zuObjImpl* at(unsigned int index) const { return items_[index]; }

  // Makes room for `minimum` elements. When that exceeds the capacity, the
  // new capacity is max(minimum, capacity + increment), rounded up to what
  // the block taken holds (a block of up to 1,024 bytes more than asked is
  // accepted); the increment then doubles. A step that would take the array
  // past 32-bit bytes stops at the largest array (536,870,911 elements).
  // `threadId` fixes the owner at the first growth (0: the calling thread).
  // A minimum beyond that largest array throws zuExMemory, as does a failed
  // allocation, with the list unchanged; growth off the owner thread throws
  // zuExAssert.
  void ensureCapacity(unsigned int minimum, unsigned int threadId);
  // Appends `body`, adding a reference. Throws as ensureCapacity.
  void append(zuObjImpl* body);
  // Inserts `body` at `index` (at most the size), adding a reference;
  // beyond the size throws ZuExThrow(16984), list unchanged.
  void insert(unsigned int index, zuObjImpl* body);
  // Puts `body` (with a new reference) at `index`, which must be below the
  // size, and returns the previous element, whose reference the caller
  // takes over.
  zuObjImpl* exchange(unsigned int index, zuObjImpl* body);
  // Takes element `index` (below the size) out; the caller takes over its
  // reference.
  zuObjImpl* take(unsigned int index);
  // Appends null elements up to `newSize`; nothing when not larger.
  void extendSize(unsigned int newSize);
  // The first index holding `body` (by identity), -1 when none.
  int indexOf(const zuObjImpl* body) const;
  // Removes every element, then frees the array (on the owner thread).
  void clear();

 private:
  explicit zuObjArrayListImpl(unsigned int threadId);
  void grow(unsigned int minimum, unsigned int threadId);
  void checkOwner() const;

  unsigned int count_ = 0;
  unsigned int capacity_ = 0;
  unsigned int increment_;
  unsigned int firstIncrement_;  // the increment again after clear()
  unsigned int ownerThreadId_;
  zuObjImpl** items_ = nullptr;

  friend class zuObjArrayList;
};

class ZU_EXPORT zuObjArrayList : public zuObjWrap {
 public:
  // A list without a body; `capacity` is the room its body takes at its
  // first growth (at least 16), and the first increment.
  explicit zuObjArrayList(unsigned int capacity = 0) : initialCapacity_(capacity) {}
  zuObjArrayList(const zuObjArrayList& other) = default;
  zuObjArrayList& operator=(const zuObjArrayList& other) = default;
  ~zuObjArrayList() = default;

  unsigned int size() const { return body() != nullptr ? body()->count_ : 0; }
  int isEmpty() const { return size() == 0 ? 1 : 0; }

  // Element `index` as a new handle. With `check` non-zero an index at or
  // past the size throws ZuExThrow(16984); with `check` 0 it gives the null
  // handle.
  zuObjWrap get(unsigned int index, int check = 1) const {
    if (check != 0) return zuObjWrap(checkedAt(index));
    const zuObjArrayListImpl* list = body();
    return zuObjWrap(list != nullptr && index < list->count_ ? list->items_[index] : nullptr);
  }
  // Element `index` without a reference (it lives while the list holds it);
  // range as for get(), null past the size when unchecked.
  zuObjImpl* getIndexImpl(unsigned int index, int check = 1) const {
    if (check != 0) return checkedAt(index);
    const zuObjArrayListImpl* list = body();
    return list != nullptr && index < list->count_ ? list->items_[index] : nullptr;
  }

  // Appends `element` (null allowed) and returns 1. Throws zuExMemory.
  int add(const zuObjWrap& element) {
    zuObjArrayListImpl* list = body();
    if (list == nullptr || list->count_ == list->capacity_) return addGrowing(element);
    zuObjImpl* added = element.getImpl();
    zuObjImpl::addRef(added);
    list->items_[list->count_++] = added;
    return 1;
  }
  // Inserts `element` at `index` (at most the size; the size appends).
  // Beyond the size throws ZuExThrow(16984), list unchanged.
  void add(unsigned int index, const zuObjWrap& element);
  // Puts `element` at `index` and returns the element it replaces. An index
  // at or past the size throws ZuExThrow(16984).
  zuObjWrap set(unsigned int index, const zuObjWrap& element);
  // As set(), dropping the replaced element's reference at once.
  void replace(unsigned int index, const zuObjWrap& element);
  // Removes and returns element `index`; past the size, the null handle.
  zuObjWrap remove(unsigned int index);
  // Removes the first element holding `element`'s body: 1, or 0 when none.
  int remove(const zuObjWrap& element);
  // Removes every element of this list, last to first, whatever `other`
  // holds (it is not read); 1 when anything was removed, 0 when the list was
  // empty.
  int removeAll(const zuObjArrayList& other);
  // 1 when some element holds `element`'s body, else 0.
  int contains(const zuObjWrap& element) const { return indexOf(element) >= 0 ? 1 : 0; }
  // The first index holding `element`'s body (by identity), -1 when none.
  int indexOf(zuObjWrap element) const;
  // Releases every element and the array; the body stays.
  void clear();
  // Room for `minimum` elements, see zuObjArrayListImpl::ensureCapacity.
  void ensureCapacity(unsigned int minimum, unsigned int threadId = 0);
  // Appends null elements up to `newSize`; nothing when not larger.
  void extendSize(unsigned int newSize);
  // A new list (own body) holding the same element references.
  zuObjArrayList clone() const;

 private:
  zuObjArrayListImpl* body() const { return static_cast<zuObjArrayListImpl*>(getImpl()); }
  // The body, made first when the handle has none.
  zuObjArrayListImpl& needBody();
  zuObjImpl* checkedAt(unsigned int index) const;
  // add() when the list has no body or no room.
  int addGrowing(const zuObjWrap& element);

  unsigned int initialCapacity_;
};
