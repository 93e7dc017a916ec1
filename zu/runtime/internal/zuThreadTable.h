// The library-wide table behind zuThreadLocalStorage: a chain of blocks of
// 64 entries (thread id, storage), a free entry having thread id 0.
//
// Entries are read without a lock; they are claimed, released and blocks
// appended only under the table's mutex. Ids and next-block pointers are
// atomics so that the unlocked scan is free of data races.
#pragma once

#include <atomic>
#include <mutex>

class zuThreadLocalStorage;

namespace zu::internal {

constexpr unsigned int kThreadEntriesPerBlock = 64;

struct ThreadEntry {
  std::atomic<unsigned int> threadId{0};
  std::atomic<zuThreadLocalStorage*> storage{nullptr};
};

struct ThreadBlock {
  ThreadEntry entries[kThreadEntriesPerBlock];
  std::atomic<ThreadBlock*> next{nullptr};
};

class ThreadTable {
 public:
  // The table, created with its first block, its mutex and the thread-exit
  // hook on first use (or at library load), released at unload.
  static ThreadTable& instance();

  ThreadTable();
  ~ThreadTable();
  ThreadTable(const ThreadTable&) = delete;
  ThreadTable& operator=(const ThreadTable&) = delete;

  // The thread's storage, null when it has no entry. No lock.
  zuThreadLocalStorage* find(unsigned int threadId) const;
  // find() for the calling thread `self`, answered from a per-thread memo
  // that any release of an entry invalidates (another thread may release
  // this thread's entry). Returns whether the memo answered, so that the
  // caller can skip work it did when the memo was filled.
  zuThreadLocalStorage* findCurrent(unsigned int self, bool& memoized) const;
  // The thread's storage, its entry claimed first when absent (appending a
  // block when all are full). Throws zuExMemory.
  zuThreadLocalStorage* findOrCreate(unsigned int threadId);
  // Frees the thread's entry and returns its storage (null when none).
  zuThreadLocalStorage* release(unsigned int threadId);

  // For tests: blocks in the chain and entries in use.
  unsigned int blockCount() const;
  unsigned int entriesInUse() const;

 private:
  ThreadEntry* claimFreeEntry();

  ThreadBlock first_;
  std::mutex mutex_;
  std::atomic<unsigned long long> releases_{0};
};

}  // namespace zu::internal
