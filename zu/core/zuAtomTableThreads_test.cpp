#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "zu/core/zuAtomTable.h"

namespace {

// Threads make run-time atoms at once, enough for their tables to grow:
// each thread's atoms are its own, unseen by the others even once made,
// while the global ones are shared.
TEST(zuAtomTableThreadsTest, RunTimeAtomsArePerThreadAndGlobalOnesShared) {
  constexpr int kThreads = 8;
  zuGlobalAtomTable();  // filled at start-up, before any thread runs
  std::latch allMade(kThreads);
  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 5000; ++i) {
        zuAtomTable::getAtom(("filler" + std::to_string(i)).c_str(), 0);
      }
      const std::string mine = "zuAtomTableThreadsTest." + std::to_string(t);
      zuAtomStore* own = zuAtomTable::getAtom(mine.c_str(), 0);
      allMade.arrive_and_wait();
      const std::string theirs = "zuAtomTableThreadsTest." + std::to_string((t + 1) % kThreads);
      failures += zuAtomTable::peekAtom(theirs.c_str(), 0) != nullptr;
      failures += zuAtomTable::peekAtom(mine.c_str(), 0) != own;
      failures += zuAtomTable::getAtom("1", 0) != aUT_One;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);
  EXPECT_EQ(zuAtomTable::peekAtom("zuAtomTableThreadsTest.0", 0), nullptr);
}

}  // namespace
