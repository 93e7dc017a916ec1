// Many threads at once through everything that keeps per-thread state:
// strings on the thread's block cache, atoms in the thread's table, raw cache
// blocks, and global strings shared with other threads. (Entries freed by
// exiting threads and reused are checked with the thread-local storage.)
#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <thread>
#include <vector>

#include "zu/core/zuAtomTable.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuString.h"
#include "zu/core/zuThreadSafeString.h"
#include "zu/runtime/internal/zuThreadId.h"
#include "zu/runtime/zuCacheManager.h"

namespace {

constexpr int kRounds = 40;
constexpr int kWorkers = 64;
constexpr int kSharers = 8;
constexpr int kSharedSlots = 4;

// Strings (made in the thread's own cache), atoms and cache blocks of one
// thread; returns the faults seen.
int privateWork(int worker) {
  int faults = 0;
  for (int round = 0; round < kRounds; ++round) {
    zuString text("worker ");
    text += (zuFormat(zuString("%d round %d")) << worker << round).GetString();
    zuString copy = text;
    if (!copy.SharesImpl(text) || text.GetThreadId() != zu::internal::currentThreadId()) ++faults;
    copy += " edited";
    unsigned int foundAt = 0;
    if (copy.SharesImpl(text) || !copy.FindCase(" edited", foundAt) || foundAt != text.Length()) {
      ++faults;
    }

    zuFormat name(zuString("field%d"), round % 32);
    zuAtomStore* atom = zuAtomTable::getAtom(name.GetString(), 0);
    if (zuAtomTable::getAtom(name.GetString(), 0) != atom) ++faults;

    void* block = zuCacheManager_alloc(16 + static_cast<unsigned int>(round % 241));
    static_cast<char*>(block)[0] = static_cast<char>(round);
    zuCacheManager_free(block);
  }
  return faults;
}

// Shares the blocks of global strings that other threads share too: the
// shared objects are only read, while every copy, reassignment and release
// changes the count of a block that many threads hold.
int sharedWork(const zuThreadSafeString* shared, int sharer) {
  int faults = 0;
  zuThreadSafeString mine[kSharedSlots];
  for (int round = 0; round < kRounds; ++round) {
    const int slot = (sharer + round) % kSharedSlots;
    zuThreadSafeString seen(shared[slot]);
    if (!seen.SharesImpl(shared[slot])) ++faults;
    mine[slot] = seen;
    zuThreadSafeString replacement(
        (zuFormat(zuString("sharer %d round %d")) << sharer << round).GetString());
    mine[(slot + 1) % kSharedSlots] = round % 2 == 0 ? seen : replacement;
  }
  return faults;
}

TEST(zuStressThreadedTest, SixtyFourThreadsShareNothingButTheirGlobalStrings) {
  zuThreadSafeString shared[kSharedSlots] = {"a", "b", "c", "d"};
  std::atomic<int> faults{0};
  std::latch start(kWorkers + kSharers);
  std::vector<std::thread> threads;
  for (int worker = 0; worker < kWorkers; ++worker) {
    threads.emplace_back([&, worker] {
      start.arrive_and_wait();
      faults += privateWork(worker);
    });
  }
  for (int sharer = 0; sharer < kSharers; ++sharer) {
    threads.emplace_back([&, sharer] {
      start.arrive_and_wait();
      faults += sharedWork(shared, sharer);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(faults.load(), 0);
  EXPECT_STREQ(shared[0], "a");
  EXPECT_STREQ(shared[3], "d");
}

}  // namespace
