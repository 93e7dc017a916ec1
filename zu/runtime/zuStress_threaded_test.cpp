// Many threads at once through the per-thread state behind the library's
// strings: each thread's strings live in its own block cache and its
// run-time atoms in its own table. (Shared global strings, the block cache
// alone and the atom tables alone have threaded tests of their own.)
#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <thread>
#include <vector>

#include "zu/core/zuAtomTable.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuString.h"
#include "zu/runtime/internal/zuThreadId.h"

namespace {

constexpr int kRounds = 40;
constexpr int kWorkers = 64;

// Strings made, copied and edited in the thread's own cache, and atoms of
// its own table; returns the faults seen.
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
  }
  return faults;
}

TEST(zuStressThreadedTest, SixtyFourThreadsKeepTheirStringsAndAtomsApart) {
  std::atomic<int> faults{0};
  std::latch start(kWorkers);
  std::vector<std::thread> threads;
  for (int worker = 0; worker < kWorkers; ++worker) {
    threads.emplace_back([&, worker] {
      start.arrive_and_wait();
      faults += privateWork(worker);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(faults.load(), 0);
}

}  // namespace
