#include "zu/core/zuObjArrayList.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "zu/core/zuExAssert.h"
#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/runtime/zuCacheManager.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace {

// Bytes of slack accepted above the asked array size: the block cache may
// serve a slightly larger block, whose room becomes capacity.
constexpr uint64_t kAcceptedSlack = 1024;

}  // namespace

// --- zuObjArrayListImpl -------------------------------------------------------

zuObjArrayListImpl* zuObjArrayListImpl::NEW(unsigned int threadId) {
  return new zuObjArrayListImpl(threadId);
}

zuObjArrayListImpl::zuObjArrayListImpl(unsigned int threadId)
    : increment_(kMinIncrement), firstIncrement_(kMinIncrement), ownerThreadId_(threadId) {}

zuObjArrayListImpl::~zuObjArrayListImpl() {
  clear();
}

int zuObjArrayListImpl::IsDerivedFrom(unsigned short typeId) const {
  return typeId == kTypeId || zuObjImpl::IsDerivedFrom(typeId) != 0 ? 1 : 0;
}

unsigned short zuObjArrayListImpl::Type() const {
  return kTypeId;
}

void zuObjArrayListImpl::checkOwner() const {
  if (ownerThreadId_ != zuThreadLocalStorage::getThreadId()) {
    zuExAssertFailure("ownerThreadId_ == getThreadId()", __FILE__, __LINE__,
                      "list storage used off its owner thread");
  }
}

void zuObjArrayListImpl::ensureCapacity(unsigned int minimum, unsigned int threadId) {
  if (minimum > capacity_) grow(minimum, threadId);
}

void zuObjArrayListImpl::grow(unsigned int minimum, unsigned int threadId) {
  const unsigned int owner = ownerThreadId_ != 0 ? ownerThreadId_
                             : threadId != 0     ? threadId
                                                 : zuThreadLocalStorage::getThreadId();
  if (owner != zuThreadLocalStorage::getThreadId()) {
    zuExAssertFailure("owner == getThreadId()", __FILE__, __LINE__,
                      "list grown off its owner thread");
  }
  // The array's byte size must fit in 32 bits: a step that would pass that
  // is cut back to the largest array, and only a minimum beyond it fails.
  constexpr uint64_t kMaxItems = UINT32_MAX / sizeof(zuObjImpl*);
  if (minimum > kMaxItems) throw zuExMemory();
  const uint64_t wanted =
      std::min(kMaxItems, std::max<uint64_t>(minimum, uint64_t{capacity_} + increment_));
  const uint64_t bytes = wanted * sizeof(zuObjImpl*);
  unsigned int blockSize = static_cast<unsigned int>(bytes);
  const auto maxSize =
      static_cast<unsigned int>(std::min<uint64_t>(bytes + kAcceptedSlack, UINT32_MAX));
  auto* items = static_cast<zuObjImpl**>(
      zuCacheManager::getCacheManager(0)->allocMemoryMin(blockSize, maxSize));
  if (count_ != 0) std::memcpy(items, items_, count_ * sizeof(zuObjImpl*));
  zuCacheManager::freeMemory(items_);
  items_ = items;
  capacity_ = blockSize / sizeof(zuObjImpl*);
  ownerThreadId_ = owner;
  // Doubling keeps the number of copies per appended element bounded.
  if (increment_ <= UINT32_MAX / 2) increment_ *= 2;
}

void zuObjArrayListImpl::append(zuObjImpl* body) {
  if (count_ == capacity_) grow(count_ + 1, 0);
  zuObjImpl::addRef(body);
  items_[count_++] = body;
}

void zuObjArrayListImpl::insert(unsigned int index, zuObjImpl* body) {
  if (index > count_) ZuExThrow(zuMessageIds::kListIndex);
  if (count_ == capacity_) grow(count_ + 1, 0);
  std::memmove(items_ + index + 1, items_ + index, (count_ - index) * sizeof(zuObjImpl*));
  zuObjImpl::addRef(body);
  items_[index] = body;
  ++count_;
}

zuObjImpl* zuObjArrayListImpl::exchange(unsigned int index, zuObjImpl* body) {
  zuObjImpl::addRef(body);
  zuObjImpl* old = items_[index];
  items_[index] = body;
  return old;
}

zuObjImpl* zuObjArrayListImpl::take(unsigned int index) {
  zuObjImpl* taken = items_[index];
  --count_;
  std::memmove(items_ + index, items_ + index + 1, (count_ - index) * sizeof(zuObjImpl*));
  return taken;
}

void zuObjArrayListImpl::extendSize(unsigned int newSize) {
  if (newSize <= count_) return;
  ensureCapacity(newSize, 0);
  std::fill(items_ + count_, items_ + newSize, nullptr);
  count_ = newSize;
}

int zuObjArrayListImpl::indexOf(const zuObjImpl* body) const {
  for (unsigned int index = 0; index < count_; ++index) {
    if (items_[index] == body) return static_cast<int>(index);
  }
  return -1;
}

void zuObjArrayListImpl::clear() {
  if (items_ == nullptr) return;
  checkOwner();
  // From the end. Before a body is destroyed the count drops to the
  // elements still held, so that a destructor that reaches this list sees
  // only live elements, and the walk goes on from whatever it left.
  unsigned int index = count_;
  while (index != 0) {
    zuObjImpl* element = items_[--index];
    if (element != nullptr && element->refCount_ > 1) {
      --element->refCount_;
      continue;
    }
    count_ = index;
    zuObjImpl::removeRef(element, 1);
    index = count_;
  }
  count_ = 0;
  zuCacheManager::freeMemory(std::exchange(items_, nullptr));
  capacity_ = 0;
  increment_ = firstIncrement_;
}

// --- zuObjArrayList -------------------------------------------------------------

zuObjArrayListImpl& zuObjArrayList::needBody() {
  if (zuObjArrayListImpl* list = body()) return *list;
  zuObjArrayListImpl* list = zuObjArrayListImpl::NEW(0);
  // The first growth takes the capacity the handle was made with.
  list->increment_ = list->firstIncrement_ =
      std::max(initialCapacity_, zuObjArrayListImpl::kMinIncrement);
  *static_cast<zuObjWrap*>(this) = zuObjWrap(list);
  return *list;
}

zuObjImpl* zuObjArrayList::checkedAt(unsigned int index) const {
  const zuObjArrayListImpl* list = body();
  if (list == nullptr || index >= list->count_) ZuExThrow(zuMessageIds::kListIndex);
  return list->items_[index];
}

int zuObjArrayList::addGrowing(const zuObjWrap& element) {
  needBody().append(element.getImpl());
  return 1;
}

void zuObjArrayList::add(unsigned int index, const zuObjWrap& element) {
  if (index > size()) ZuExThrow(zuMessageIds::kListIndex);
  needBody().insert(index, element.getImpl());
}

zuObjWrap zuObjArrayList::set(unsigned int index, const zuObjWrap& element) {
  zuObjArrayListImpl* list = body();
  if (list == nullptr || index >= list->count_) ZuExThrow(zuMessageIds::kListIndex);
  return zuObjWrap::adopt(list->exchange(index, element.getImpl()));
}

void zuObjArrayList::replace(unsigned int index, const zuObjWrap& element) {
  zuObjArrayListImpl* list = body();
  if (list == nullptr || index >= list->count_) ZuExThrow(zuMessageIds::kListIndex);
  zuObjImpl::removeRef(list->exchange(index, element.getImpl()), 1);
}

zuObjWrap zuObjArrayList::remove(unsigned int index) {
  zuObjArrayListImpl* list = body();
  if (list == nullptr || index >= list->count_) return zuObjWrap();
  return zuObjWrap::adopt(list->take(index));
}

int zuObjArrayList::remove(const zuObjWrap& element) {
  zuObjArrayListImpl* list = body();
  if (list == nullptr) return 0;
  const int index = list->indexOf(element.getImpl());
  if (index < 0) return 0;
  zuObjImpl::removeRef(list->take(static_cast<unsigned int>(index)), 1);
  return 1;
}

int zuObjArrayList::removeAll(const zuObjArrayList&) {
  zuObjArrayListImpl* list = body();
  if (list == nullptr || list->count_ == 0) return 0;
  while (list->count_ != 0) zuObjImpl::removeRef(list->take(list->count_ - 1), 1);
  return 1;
}

int zuObjArrayList::indexOf(zuObjWrap element) const {
  const zuObjArrayListImpl* list = body();
  return list != nullptr ? list->indexOf(element.getImpl()) : -1;
}

void zuObjArrayList::clear() {
  if (zuObjArrayListImpl* list = body()) list->clear();
}

void zuObjArrayList::ensureCapacity(unsigned int minimum, unsigned int threadId) {
  needBody().ensureCapacity(minimum, threadId);
}

void zuObjArrayList::extendSize(unsigned int newSize) {
  if (newSize > size()) needBody().extendSize(newSize);
}

zuObjArrayList zuObjArrayList::clone() const {
  zuObjArrayList copy(initialCapacity_);
  const zuObjArrayListImpl* list = body();
  if (list == nullptr) return copy;
  zuObjArrayListImpl& target = copy.needBody();
  target.ensureCapacity(list->count_, 0);
  for (unsigned int index = 0; index < list->count_; ++index) target.append(list->items_[index]);
  return copy;
}
