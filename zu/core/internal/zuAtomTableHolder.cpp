#include "zu/core/internal/zuAtomTableHolder.h"

#include <cstring>
#include <new>

#include "zu/core/zuException.h"
#include "zu/runtime/internal/zuThreadId.h"

namespace zu::internal {

namespace {

// Longer texts get a chunk of their own, so that one long name does not
// waste the rest of a shared chunk.
constexpr uint32_t kOwnChunkFrom = zuAtomTableHolder::kTextChunkBytes / 4;

// A new array of `count` T kept in `owner`, which frees it later.
template <typename T>
T* newKept(std::vector<T*>& owner, uint32_t count) {
  T* block = new (std::nothrow) T[count];
  if (block == nullptr) throw zuExMemory();
  try {
    owner.push_back(block);
  } catch (const std::bad_alloc&) {
    delete[] block;
    throw zuExMemory();
  }
  return block;
}

}  // namespace

zuAtomTableHolder* zuAtomTableHolder::of(unsigned int threadId, int create) {
  auto* holder = static_cast<zuAtomTableHolder*>(
      zuThreadLocalStorage::getThreadStorage(zuThreadLocalStorage::eAtomTable, threadId));
  if (holder != nullptr || create == 0) return holder;

  const uint32_t owner = threadId != 0 ? threadId : currentThreadId();
  holder = new (std::nothrow) zuAtomTableHolder(owner);
  if (holder == nullptr) throw zuExMemory();
  zuThreadLocalStorage::setThreadStorage(zuThreadLocalStorage::eAtomTable, holder, threadId);
  return holder;
}

zuAtomTableHolder::zuAtomTableHolder(uint32_t ownerThreadId)
    : ownerThreadId_(ownerThreadId),
      usedInLastPage_(kRecordsPerPage),
      textCursor_(nullptr),
      textLeft_(0) {}

zuAtomTableHolder::~zuAtomTableHolder() {
  for (zuAtomStore* page : pages_) delete[] page;
  for (char* chunk : textChunks_) delete[] chunk;
}

zuAtomStore* zuAtomTableHolder::makeAtom(const char* text, uint32_t length) {
  const char* copy = copyText(text, length);
  zuAtomStore* record = nextRecord();
  record->text = copy;
  record->next = nullptr;
  // The record stays used even if growing the table fails below: it is
  // already linked into its bucket.
  zuAtomStore* entered = record;
  table_.initializeAtom(entered);
  return entered;
}

zuAtomStore* zuAtomTableHolder::nextRecord() {
  if (usedInLastPage_ == kRecordsPerPage) {
    newKept(pages_, kRecordsPerPage);
    usedInLastPage_ = 0;
  }
  return &pages_.back()[usedInLastPage_++];
}

const char* zuAtomTableHolder::copyText(const char* text, uint32_t length) {
  char* copy = allocate(length + 1);
  std::memcpy(copy, text, length);
  copy[length] = '\0';
  return copy;
}

char* zuAtomTableHolder::allocate(uint32_t bytes) {
  if (bytes >= kOwnChunkFrom) {
    return newKept(textChunks_, bytes);
  }
  if (bytes > textLeft_) {
    textCursor_ = newKept(textChunks_, kTextChunkBytes);
    textLeft_ = kTextChunkBytes;
  }
  char* place = textCursor_;
  textCursor_ += bytes;
  textLeft_ -= bytes;
  return place;
}

}  // namespace zu::internal
