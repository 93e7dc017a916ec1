#include "zu/core/zuAtomTable.h"

#include <cstring>
#include <new>

#include "zu/core/internal/zuAtomHash.h"
#include "zu/core/internal/zuAtomIndex.h"
#include "zu/core/internal/zuAtomTableHolder.h"
#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"

using zu::internal::atomHash;
using zu::internal::zuAtomIndex;
using zu::internal::zuAtomTableHolder;

namespace {

constexpr uint32_t kInitialMask = 4095;
// Marks a retired atom: no lookup can produce this length or hash.
constexpr uint32_t kRetired = 0xFFFFFFFFu;

uint32_t thresholdFor(uint32_t mask) {
  return mask * 3u / 4u;
}

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

zuAtomTable::~zuAtomTable() {
  delete[] buckets_;
}

zuAtomStore* zuAtomTable::findInTable(const char* text, unsigned int hash,
                                      unsigned int length) const {
  for (zuAtomStore* atom = buckets_[hash & mask_]; atom != nullptr; atom = atom->next) {
    if (atom->hash == hash && atom->length == length &&
        std::memcmp(atom->text, text, length) == 0) {
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
  zuAtomIndex::noteAtomEntered(this);
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

namespace {

// The lookup through the tables themselves: the global table, then the
// thread's, where the atom is made when `create` is set and it is missing.
zuAtomStore* lookUpInTables(const char* text, unsigned int threadId, bool create) {
  uint32_t length = 0;
  const uint32_t hash = atomHash(text, length);
  if (zuAtomStore* global = zuGlobalAtomTable()->findInTable(text, hash, length)) return global;

  zuAtomTableHolder* holder = zuAtomTableHolder::of(threadId, create ? 1 : 0);
  if (holder == nullptr) {
    if (create) ZuExThrow(zuMessageIds::kInvalidArgument);
    return nullptr;
  }
  if (zuAtomStore* local = holder->table().findInTable(text, hash, length)) return local;
  return create ? holder->makeAtom(text, length) : nullptr;
}

// The calling thread's lookups go through its index first.
zuAtomStore* lookUp(const char* text, unsigned int threadId, bool create) {
  if (threadId != 0) return lookUpInTables(text, threadId, create);
  zuAtomIndex& index = zuAtomIndex::forCallingThread();
  const auto length = static_cast<uint32_t>(std::strlen(text));
  const uint64_t key = zuAtomIndex::keyOf(text, length);
  if (zuAtomStore* atom = index.find(text, length, key)) return atom;
  zuAtomStore* atom = lookUpInTables(text, 0, create);
  if (atom != nullptr) index.insert(atom, key);
  return atom;
}

}  // namespace

zuAtomStore* zuAtomTable::getAtom(const char* text, unsigned int threadId) {
  if (text == nullptr) ZuExThrow(zuMessageIds::kInvalidArgument);
  return lookUp(text, threadId, true);
}

zuAtomStore* zuAtomTable::peekAtom(const char* text, unsigned int threadId) {
  if (text == nullptr) return nullptr;
  return lookUp(text, threadId, false);
}

zuAtomStore* zuAtomTable::emptyString() {
  zuGlobalAtomTable();
  return aUT_EmptyString;
}
