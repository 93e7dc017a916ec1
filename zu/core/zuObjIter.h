// Iterators over handles: zuAbstractObjIter, the interface; zuArrayObjIter,
// a walk over a zuStorage<zuObjWrap>; zuObjIter, the handle that owns one.
//
//   zuStorage<zuObjWrap> shapes = ...;
//   zuObjIter walk(new zuArrayObjIter(shapes));
//   while (walk.hasNext()) {
//     zuObjWrap shape = walk.next();
//     if (shape.isNull()) walk.remove();     // drops what next() returned
//   }
//
// An iterator belongs to the thread of the handles it walks.
#pragma once

#include <utility>

#include "zu/core/zuExport.h"
#include "zu/core/zuObjWrap.h"
#include "zu/core/zuStorage.h"

class ZU_EXPORT zuAbstractObjIter {
 public:
  virtual ~zuAbstractObjIter();
  // 1 while next() has an element to give, else 0.
  virtual int hasNext() = 0;
  // The next element; the null handle once the walk is over.
  virtual zuObjWrap next() = 0;
  // Removes the element the last next() returned, once; nothing before the
  // first next(), after the end or when repeated.
  virtual void remove() = 0;

 protected:
  zuAbstractObjIter() = default;
  zuAbstractObjIter(const zuAbstractObjIter&) = default;
  zuAbstractObjIter& operator=(const zuAbstractObjIter&) = default;
};

// Walks `storage` from index 0. The storage must outlive the iterator, and
// only the iterator's remove() may change it during the walk.
class ZU_EXPORT zuArrayObjIter : public zuAbstractObjIter {
 public:
  explicit zuArrayObjIter(zuStorage<zuObjWrap>& storage) : storage_(storage) {}

  int hasNext() override;
  zuObjWrap next() override;
  void remove() override;

 private:
  zuStorage<zuObjWrap>& storage_;
  unsigned int next_ = 0;
  bool canRemove_ = false;
};

// Owns one iterator (deleted with the handle) and forwards to it; move-only.
// A handle without an iterator has no element: hasNext() 0, next() null.
class ZU_EXPORT zuObjIter {
 public:
  zuObjIter() = default;
  // Takes ownership of `iterator` (null allowed).
  explicit zuObjIter(zuAbstractObjIter* iterator) : iterator_(iterator) {}
  zuObjIter(zuObjIter&& other) noexcept : iterator_(std::exchange(other.iterator_, nullptr)) {}
  zuObjIter& operator=(zuObjIter&& other) noexcept {
    if (this != &other) {
      delete iterator_;
      iterator_ = std::exchange(other.iterator_, nullptr);
    }
    return *this;
  }
  zuObjIter(const zuObjIter&) = delete;
  zuObjIter& operator=(const zuObjIter&) = delete;
  ~zuObjIter() { delete iterator_; }

  int hasNext() { return iterator_ != nullptr ? iterator_->hasNext() : 0; }
  zuObjWrap next() { return iterator_ != nullptr ? iterator_->next() : zuObjWrap(); }
  void remove() {
    if (iterator_ != nullptr) iterator_->remove();
  }

 private:
  zuAbstractObjIter* iterator_ = nullptr;
};
