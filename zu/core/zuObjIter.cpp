#include "zu/core/zuObjIter.h"

zuAbstractObjIter::~zuAbstractObjIter() = default;

int zuArrayObjIter::hasNext() {
  return next_ < storage_.GetSize() ? 1 : 0;
}

zuObjWrap zuArrayObjIter::next() {
  if (next_ >= storage_.GetSize()) {
    canRemove_ = false;
    return zuObjWrap();
  }
  canRemove_ = true;
  return storage_[next_++];
}

void zuArrayObjIter::remove() {
  if (!canRemove_) return;
  canRemove_ = false;
  storage_.RemoveAt(--next_);
}
