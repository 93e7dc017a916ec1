// The calling thread's open ICU converters, kept in thread-local slot 2.
//
// Up to eight converters keyed by code page, most recently used first: a hit
// moves its entry to the front, a miss opens the converter (substitution
// character "?"), closing the least recently used one when all eight are
// taken. Beside them a scratch buffer of code points that grows in steps of
// 32 bytes and never shrinks. Everything here belongs to one thread, so
// nothing is locked; the thread's storage closes the converters at exit.
#pragma once

#include <unicode/ucnv.h>

#include <cstdint>

#include "zu/core/internal/zuDecodeTable.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace zu::internal {

class zuConverterCache : public zuThreadStorage {
 public:
  static constexpr unsigned int kCapacity = 8;

  // The calling thread's cache, made on first use. Throws zuExMemory.
  static zuConverterCache& current();

  zuConverterCache() = default;
  ~zuConverterCache() override;
  zuConverterCache(const zuConverterCache&) = delete;
  zuConverterCache& operator=(const zuConverterCache&) = delete;

  // The open converter for `codePage`, now at the front; null when ICU
  // cannot open it.
  UConverter* converter(int codePage);

  // The lead bytes of `codePage`'s multi-byte characters as ICU's table
  // reports them (all false for encodings without such a table).
  const bool* leadBytes(int codePage);

  // The process-wide decoding table of `codePage` (see zuDecodeTable), null
  // for encodings that have none. The answers for the last few code pages
  // are remembered apart from the converters, so that a text decoded by
  // table neither reorders nor opens converters it does not use.
  const zuDecodeTable* decodeTable(int codePage);

  // Room for `count` code points; the buffer stays valid until the next
  // call. Throws zuExMemory.
  unsigned int* codePoints(unsigned int count);

  // Code pages in the cache, most recently used first (for tests).
  unsigned int size() const { return size_; }
  int codePageAt(unsigned int index) const { return entries_[index].codePage; }

 private:
  // Entries are small, so that moving one to the front is cheap; the lead
  // byte tables stay in place, each entry naming its own.
  struct Entry {
    int codePage = 0;
    UConverter* converter = nullptr;
    unsigned int table = 0;  // index into leadByteTables_
    bool leadBytesKnown = false;
  };
  struct DecodeTableMemo {
    int codePage = 0;  // 0: empty
    const zuDecodeTable* table = nullptr;
  };
  static constexpr unsigned int kDecodeTableMemos = 4;

  Entry* find(int codePage);
  Entry* open(int codePage);

  Entry entries_[kCapacity];
  bool leadByteTables_[kCapacity][256] = {};
  unsigned int size_ = 0;
  DecodeTableMemo decodeTables_[kDecodeTableMemos];
  unsigned int nextDecodeTable_ = 0;  // the memo replaced next
  unsigned int* codePoints_ = nullptr;
  uint64_t codePointBytes_ = 0;
};

}  // namespace zu::internal
