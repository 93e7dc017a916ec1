#include "zu/core/internal/zuConverterCache.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "zu/core/internal/zuCodePageNames.h"
#include "zu/core/zuException.h"
#include "zu/runtime/internal/zuRememberedSlots.h"

namespace zu::internal {

namespace {

constexpr uint64_t kScratchStep = 32;

}  // namespace

namespace {

// The calling thread's cache and the slot generation it was found under
// (see zuRememberedSlots.h). Initial-exec: one load from the thread pointer.
[[gnu::tls_model("initial-exec")]] thread_local zuConverterCache* tCurrentCache = nullptr;
[[gnu::tls_model("initial-exec")]] thread_local uint64_t tCurrentGeneration = 0;

}  // namespace

zuConverterCache& zuConverterCache::current() {
  const uint64_t generation = gRememberedSlotGeneration.load(std::memory_order_acquire);
  if (tCurrentCache != nullptr && tCurrentGeneration == generation) return *tCurrentCache;
  auto* cache = static_cast<zuConverterCache*>(
      zuThreadLocalStorage::getThreadStorage(zuThreadLocalStorage::eCharConverterCache));
  if (cache == nullptr) {
    cache = new (std::nothrow) zuConverterCache;
    if (cache == nullptr) throw zuExMemory();
    zuThreadLocalStorage::setThreadStorage(zuThreadLocalStorage::eCharConverterCache, cache);
  }
  // Remembered under the generation read before the lookup, so that a
  // change since (setting the slot just now included) is seen next time.
  tCurrentCache = cache;
  tCurrentGeneration = generation;
  return *cache;
}

zuConverterCache::~zuConverterCache() {
  if (tCurrentCache == this) tCurrentCache = nullptr;
  for (unsigned int i = 0; i < size_; ++i) ucnv_close(entries_[i].converter);
  ::operator delete(codePoints_);
}

UConverter* zuConverterCache::converter(int codePage) {
  Entry* entry = find(codePage);
  return entry != nullptr ? entry->converter : nullptr;
}

const bool* zuConverterCache::leadBytes(int codePage) {
  static const bool kNone[256] = {};
  Entry* entry = find(codePage);
  if (entry == nullptr) return kNone;
  if (!entry->leadBytesKnown) {
    UBool starters[256] = {};
    UErrorCode status = U_ZERO_ERROR;
    // Only table-driven multi-byte converters answer; the others keep none.
    ucnv_getStarters(entry->converter, starters, &status);
    bool* table = leadByteTables_[entry->table];
    for (int byte = 0; byte < 256; ++byte) table[byte] = U_SUCCESS(status) && starters[byte] != 0;
    entry->leadBytesKnown = true;
  }
  return leadByteTables_[entry->table];
}

const zuDecodeTable* zuConverterCache::decodeTable(int codePage) {
  for (const DecodeTableMemo& memo : decodeTables_) {
    if (memo.codePage == codePage && codePage != 0) return memo.table;
  }
  const zuDecodeTable* table = decodeTableFor(codePage);
  decodeTables_[nextDecodeTable_] = DecodeTableMemo{codePage, table};
  nextDecodeTable_ = (nextDecodeTable_ + 1) % kDecodeTableMemos;
  return table;
}

unsigned int* zuConverterCache::codePoints(unsigned int count) {
  const uint64_t bytes = uint64_t{count} * sizeof(unsigned int);
  if (bytes > codePointBytes_ || codePoints_ == nullptr) {
    const uint64_t grown = (bytes / kScratchStep + 1) * kScratchStep;
    void* block = ::operator new(grown, std::nothrow);
    if (block == nullptr) throw zuExMemory();
    ::operator delete(codePoints_);
    codePoints_ = static_cast<unsigned int*>(block);
    codePointBytes_ = grown;
  }
  return codePoints_;
}

zuConverterCache::Entry* zuConverterCache::find(int codePage) {
  for (unsigned int i = 0; i < size_; ++i) {
    if (entries_[i].codePage != codePage) continue;
    if (i != 0) {
      // At most a few entries move down one place: a plain loop beats a
      // call to memmove.
      const Entry found = entries_[i];
      for (unsigned int j = i; j != 0; --j) entries_[j] = entries_[j - 1];
      entries_[0] = found;
    }
    return &entries_[0];
  }
  return open(codePage);
}

zuConverterCache::Entry* zuConverterCache::open(int codePage) {
  char name[kCodePageNameSize];
  icuNameOf(codePage, name);
  if (name[0] == '\0') return nullptr;
  UErrorCode status = U_ZERO_ERROR;
  UConverter* opened = ucnv_open(name, &status);
  if (U_FAILURE(status)) return nullptr;
  // Encodings whose characters are wider than one byte refuse a one-byte
  // substitute and keep their own.
  UErrorCode substStatus = U_ZERO_ERROR;
  ucnv_setSubstChars(opened, "?", 1, &substStatus);

  unsigned int table = size_;
  if (size_ == kCapacity) {
    // The least recently used entry goes; its lead byte table is reused.
    ucnv_close(entries_[kCapacity - 1].converter);
    table = entries_[kCapacity - 1].table;
  } else {
    ++size_;
  }
  std::rotate(entries_, entries_ + size_ - 1, entries_ + size_);
  entries_[0] = Entry{codePage, opened, table, false};
  return &entries_[0];
}

}  // namespace zu::internal
