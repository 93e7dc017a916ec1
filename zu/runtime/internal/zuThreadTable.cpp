#include "zu/runtime/internal/zuThreadTable.h"

#include <new>

#include "zu/runtime/internal/zuRaise.h"
#include "zu/runtime/internal/zuThreadExitHook.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace zu::internal {

namespace {

// Set once the table exists, so that unloading releases only what was made.
std::atomic<ThreadTable*> gTable{nullptr};

void releaseExitingThread() {
  zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::getThreadId());
}

// Created at load, before client code runs, so that the first lookups of
// concurrent threads do not race for it.
__attribute__((constructor)) void createTableAtLoad() {
  ThreadTable::instance();
}

// At unload the exit hook goes, so no exiting thread calls into unloaded code.
// The table itself stays: it still holds the storage of threads running at
// unload (the unloading thread's included), which must not be touched, and
// keeps it reachable for leak checkers that run after this point.
__attribute__((destructor)) void releaseTableAtUnload() {
  if (gTable.load() != nullptr) destroyThreadExitHook();
}

}  // namespace

ThreadTable& ThreadTable::instance() {
  static ThreadTable* const table = [] {
    ThreadTable* created = new ThreadTable;
    gTable.store(created);
    return created;
  }();
  return *table;
}

ThreadTable::ThreadTable() {
  createThreadExitHook(releaseExitingThread);
}

ThreadTable::~ThreadTable() {
  destroyThreadExitHook();
  ThreadBlock* block = first_.next.load();
  while (block != nullptr) {
    ThreadBlock* next = block->next.load();
    delete block;
    block = next;
  }
}

zuThreadLocalStorage* ThreadTable::find(unsigned int threadId) const {
  for (const ThreadBlock* block = &first_; block != nullptr;
       block = block->next.load(std::memory_order_acquire)) {
    for (const ThreadEntry& entry : block->entries) {
      if (entry.threadId.load(std::memory_order_acquire) != threadId) continue;
      zuThreadLocalStorage* storage = entry.storage.load(std::memory_order_acquire);
      if (storage != nullptr) return storage;
    }
  }
  return nullptr;
}

zuThreadLocalStorage* ThreadTable::findCurrent(unsigned int self, bool& memoized) const {
  [[gnu::tls_model("initial-exec")]] thread_local zuThreadLocalStorage* memo = nullptr;
  [[gnu::tls_model("initial-exec")]] thread_local unsigned long long memoReleases = 0;
  const unsigned long long releases = releases_.load(std::memory_order_acquire);
  memoized = memo != nullptr && memoReleases == releases;
  if (memoized) return memo;
  memo = find(self);
  memoReleases = releases;
  return memo;
}

zuThreadLocalStorage* ThreadTable::findOrCreate(unsigned int threadId) {
  zuThreadLocalStorage* created = new (std::nothrow) zuThreadLocalStorage;
  if (created == nullptr) raiseOutOfMemory();
  std::lock_guard<std::mutex> lock(mutex_);
  // Another thread may have made the entry (for this id) since the scan.
  if (zuThreadLocalStorage* existing = find(threadId)) {
    delete created;
    return existing;
  }
  ThreadEntry* entry;
  try {
    entry = claimFreeEntry();
  } catch (...) {
    delete created;
    throw;
  }
  entry->storage.store(created, std::memory_order_relaxed);
  entry->threadId.store(threadId, std::memory_order_release);
  return created;
}

ThreadEntry* ThreadTable::claimFreeEntry() {
  ThreadBlock* last = &first_;
  for (ThreadBlock* block = &first_; block != nullptr;
       block = block->next.load(std::memory_order_acquire)) {
    for (ThreadEntry& entry : block->entries) {
      if (entry.threadId.load(std::memory_order_relaxed) == 0) return &entry;
    }
    last = block;
  }
  ThreadBlock* appended = new (std::nothrow) ThreadBlock;
  if (appended == nullptr) raiseOutOfMemory();
  last->next.store(appended, std::memory_order_release);
  return &appended->entries[0];
}

zuThreadLocalStorage* ThreadTable::release(unsigned int threadId) {
  std::lock_guard<std::mutex> lock(mutex_);
  for (ThreadBlock* block = &first_; block != nullptr;
       block = block->next.load(std::memory_order_acquire)) {
    for (ThreadEntry& entry : block->entries) {
      if (entry.threadId.load(std::memory_order_relaxed) != threadId) continue;
      zuThreadLocalStorage* storage = entry.storage.load(std::memory_order_relaxed);
      entry.threadId.store(0, std::memory_order_release);
      entry.storage.store(nullptr, std::memory_order_release);
      releases_.fetch_add(1, std::memory_order_acq_rel);
      return storage;
    }
  }
  return nullptr;
}

unsigned int ThreadTable::blockCount() const {
  unsigned int count = 0;
  for (const ThreadBlock* block = &first_; block != nullptr;
       block = block->next.load(std::memory_order_acquire)) {
    ++count;
  }
  return count;
}

unsigned int ThreadTable::entriesInUse() const {
  unsigned int count = 0;
  for (const ThreadBlock* block = &first_; block != nullptr;
       block = block->next.load(std::memory_order_acquire)) {
    for (const ThreadEntry& entry : block->entries) {
      if (entry.threadId.load(std::memory_order_acquire) != 0) ++count;
    }
  }
  return count;
}

}  // namespace zu::internal
