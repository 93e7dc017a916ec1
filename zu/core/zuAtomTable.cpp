#include "zu/core/zuAtomTable.h"

#include <cstring>
#include <new>

#include "zu/core/internal/zuAtomHash.h"
#include "zu/core/internal/zuAtomTableHolder.h"
#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"

using zu::internal::atomHash;
using zu::internal::zuAtomTableHolder;

namespace {

constexpr uint32_t kInitialMask = 4095;
// Marks a retired atom: no lookup can produce this length or hash.
constexpr uint32_t kRetired = 0xFFFFFFFFu;

uint32_t thresholdFor(uint32_t mask) { return mask * 3u / 4u; }

zuAtomStore** newBuckets(uint32_t mask) {
  auto* buckets = new (std::nothrow) zuAtomStore*[mask + 1u]();
  if (buckets == nullptr) throw zuExMemory();
  return buckets;
}

}  // namespace

zuAtomTable::zuAtomTable()
    : buckets_(newBuckets(kInitialMask)),
      mask_(kInitialMask),
      count_(0),
      threshold_(thresholdFor(kInitialMask)) {}

zuAtomTable::~zuAtomTable() { delete[] buckets_; }

zuAtomStore* zuAtomTable::findInTable(const char* text, unsigned int hash,
                                      unsigned int length) const {
  for (zuAtomStore* atom = buckets_[hash & mask_]; atom != nullptr; atom = atom->next) {
    if (atom->hash == hash && atom->length == length && std::memcmp(atom->text, text, length) == 0) {
      return atom;
    }
  }
  return nullptr;
}

void zuAtomTable::initializeAtom(zuAtomStore*& atom) {
  if (atom == nullptr || atom->text == nullptr) ZuExThrow(zuMessageIds::kInvalidArgument);
  uint32_t length = 0;
  atom->hash = atomHash(atom->text, length);
  atom->length = length;

  zuAtomStore* existing = findInTable(atom->text, atom->hash, atom->length);
  if (existing == atom) return;
  if (existing != nullptr) {
    // Every module that declared this text must end up with one pointer; the
    // retired record keeps a text that says where it went, for whoever finds
    // it in a debugger.
    atom->text = kRemappedText;
    atom->length = kRetired;
    atom->hash = kRetired;
    atom->next = nullptr;
    atom = existing;
    return;
  }
  insertAtHead(atom);
  ++count_;
  if (count_ >= threshold_) grow();
}

void zuAtomTable::initializeAtoms(zuAtomStore** const* list) {
  if (list == nullptr) return;
  for (; *list != nullptr; ++list) initializeAtom(**list);
}

void zuAtomTable::insertAtHead(zuAtomStore* atom) {
  zuAtomStore*& head = buckets_[atom->hash & mask_];
  atom->next = head;
  head = atom;
}

void zuAtomTable::grow() {
  const uint32_t newMask = 2u * mask_ + 1u;
  zuAtomStore** oldBuckets = buckets_;
  const uint32_t oldBucketCount = mask_ + 1u;
  buckets_ = newBuckets(newMask);  // on failure the table stays as it was
  mask_ = newMask;
  threshold_ = thresholdFor(newMask);
  for (uint32_t bucket = 0; bucket < oldBucketCount; ++bucket) {
    zuAtomStore* atom = oldBuckets[bucket];
    while (atom != nullptr) {
      zuAtomStore* next = atom->next;
      insertAtHead(atom);
      atom = next;
    }
  }
  delete[] oldBuckets;
}

zuAtomStore* zuAtomTable::getAtom(const char* text, unsigned int threadId) {
  if (text == nullptr) ZuExThrow(zuMessageIds::kInvalidArgument);
  uint32_t length = 0;
  const uint32_t hash = atomHash(text, length);
  if (zuAtomStore* global = zuGlobalAtomTable()->findInTable(text, hash, length)) return global;

  zuAtomTableHolder* holder = zuAtomTableHolder::of(threadId, 1);
  if (holder == nullptr) ZuExThrow(zuMessageIds::kInvalidArgument);
  if (zuAtomStore* local = holder->table().findInTable(text, hash, length)) return local;
  return holder->makeAtom(text, length);
}

zuAtomStore* zuAtomTable::peekAtom(const char* text, unsigned int threadId) {
  if (text == nullptr) return nullptr;
  uint32_t length = 0;
  const uint32_t hash = atomHash(text, length);
  if (zuAtomStore* global = zuGlobalAtomTable()->findInTable(text, hash, length)) return global;

  zuAtomTableHolder* holder = zuAtomTableHolder::of(threadId, 0);
  return holder != nullptr ? holder->table().findInTable(text, hash, length) : nullptr;
}

zuAtomStore* zuAtomTable::emptyString() {
  zuGlobalAtomTable();
  return aUT_EmptyString;
}
