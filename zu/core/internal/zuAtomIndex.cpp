#include "zu/core/internal/zuAtomIndex.h"

#include <atomic>
#include <cstring>
#include <new>

namespace zu::internal {

namespace {

constexpr std::size_t kFirstSlots = 256;
// The global table, once it exists.
std::atomic<const zuAtomTable*> gGlobalTable{nullptr};

}  // namespace

zuAtomIndex::~zuAtomIndex() {
  delete[] slots_;
}

void zuAtomIndex::insert(zuAtomStore* atom, uint64_t key) {
  if ((count_ + 1) * 2 > mask_ + 1 && !grow()) return;
  std::size_t at = key & mask_;
  while (slots_[at].atom != nullptr) at = (at + 1) & mask_;
  slots_[at] = Slot{key, atom};
  ++count_;
}

bool zuAtomIndex::grow() {
  const std::size_t size = slots_ == nullptr ? kFirstSlots : 2 * (mask_ + 1);
  Slot* grown = new (std::nothrow) Slot[size]();
  if (grown == nullptr) return false;
  Slot* old = slots_;
  const std::size_t oldSize = slots_ == nullptr ? 0 : mask_ + 1;
  slots_ = grown;
  mask_ = size - 1;
  count_ = 0;
  for (std::size_t i = 0; i < oldSize; ++i) {
    if (old[i].atom != nullptr) insert(old[i].atom, old[i].key);
  }
  delete[] old;
  return true;
}

void zuAtomIndex::restart(uint64_t slotGeneration, uint64_t globalGeneration) {
  if (count_ != 0) std::memset(static_cast<void*>(slots_), 0, (mask_ + 1) * sizeof(Slot));
  count_ = 0;
  slotGeneration_ = slotGeneration;
  globalGeneration_ = globalGeneration;
}

void zuAtomIndex::noteAtomEntered(const zuAtomTable* table) {
  if (table == gGlobalTable.load(std::memory_order_acquire)) {
    gGlobalAtomGeneration.fetch_add(1, std::memory_order_acq_rel);
  }
}

void zuAtomIndex::setGlobalTable(const zuAtomTable* table) {
  gGlobalTable.store(table, std::memory_order_release);
}

}  // namespace zu::internal
