// The per-thread atom holder kept in thread-local slot 10: the thread's atom
// table, its owner's id, and the atom records made at run time.
//
// Records come in pages of 4,096; each record points at a private copy of its
// text, kept in 64 KiB text chunks. Nothing is freed before the holder is:
// the thread's storage releases it, and with it every record, when the
// thread ends.
#pragma once

#include <cstdint>
#include <vector>

#include "zu/core/zuAtomStore.h"
#include "zu/core/zuAtomTable.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace zu::internal {

class zuAtomTableHolder : public zuThreadStorage {
 public:
  static constexpr uint32_t kRecordsPerPage = 4096;
  static constexpr uint32_t kTextChunkBytes = 64 * 1024;

  // The holder of thread `threadId` (0: the calling thread); with `create`
  // non-zero a missing holder is made and stored in the slot. Throws
  // zuExMemory.
  static zuAtomTableHolder* of(unsigned int threadId, int create);

  explicit zuAtomTableHolder(uint32_t ownerThreadId);
  ~zuAtomTableHolder() override;
  zuAtomTableHolder(const zuAtomTableHolder&) = delete;
  zuAtomTableHolder& operator=(const zuAtomTableHolder&) = delete;

  zuAtomTable& table() { return table_; }
  uint32_t ownerThreadId() const { return ownerThreadId_; }
  uint32_t pageCount() const { return static_cast<uint32_t>(pages_.size()); }

  // A new record holding a copy of the `length` bytes of `text`, entered
  // into the table. The caller has checked that the text is not there yet.
  zuAtomStore* makeAtom(const char* text, uint32_t length);

 private:
  zuAtomStore* nextRecord();
  const char* copyText(const char* text, uint32_t length);
  char* allocate(uint32_t bytes);

  zuAtomTable table_;
  uint32_t ownerThreadId_;
  std::vector<zuAtomStore*> pages_;
  uint32_t usedInLastPage_;
  std::vector<char*> textChunks_;
  char* textCursor_;
  uint32_t textLeft_;
};

}  // namespace zu::internal
