#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <latch>
#include <set>
#include <thread>
#include <vector>

#include "zu/runtime/internal/zuThreadId.h"
#include "zu/runtime/zuCacheManager.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace {

constexpr int kThreads = 64;
constexpr int kRounds = 1500;
constexpr int kLiveBlocks = 32;

struct LiveBlock {
  unsigned char* bytes = nullptr;
  unsigned int size = 0;
  unsigned char fill = 0;
};

// Takes and frees blocks of 16 to 256 bytes, checking that no other thread
// wrote into them meanwhile. Returns the number of damaged blocks.
int churnBlocks(int threadIndex) {
  int damaged = 0;
  LiveBlock live[kLiveBlocks];
  for (int round = 0; round < kRounds; ++round) {
    LiveBlock& slot = live[round % kLiveBlocks];
    if (slot.bytes != nullptr) {
      damaged += std::count(slot.bytes, slot.bytes + slot.size, slot.fill) != slot.size;
      zuCacheManager_free(slot.bytes);
    }
    slot.size = 16 + static_cast<unsigned int>((round * 37 + threadIndex * 11) % 241);
    slot.fill = static_cast<unsigned char>(threadIndex + round);
    slot.bytes = static_cast<unsigned char*>(zuCacheManager_alloc(slot.size));
    std::memset(slot.bytes, slot.fill, slot.size);
  }
  for (LiveBlock& slot : live) zuCacheManager_free(slot.bytes);
  return damaged;
}

TEST(zuCacheManagerThreadedTest, ThreadsUseTheirOwnCachesAndReleaseThemAtExit) {
  const std::size_t managersBefore = zuCacheManager::ManagerCount();
  std::latch started(kThreads);
  std::latch finished(kThreads);
  std::atomic<int> failures{0};
  std::vector<const zuCacheManager*> managers(kThreads);
  std::vector<std::thread> threads;
  for (int index = 0; index < kThreads; ++index) {
    threads.emplace_back([&, index] {
      started.arrive_and_wait();
      const zuCacheManager* own = zuCacheManager::getCacheManager(0);
      managers[index] = own;
      if (own->getThreadId() != zu::internal::currentThreadId()) ++failures;
      failures += churnBlocks(index);
      // Stay alive until every thread has its manager, so none is reused.
      finished.arrive_and_wait();
    });
  }
  for (std::thread& thread : threads) thread.join();

  EXPECT_EQ(failures.load(), 0);
  EXPECT_EQ(std::set<const zuCacheManager*>(managers.begin(), managers.end()).size(),
            static_cast<std::size_t>(kThreads));
  EXPECT_EQ(zuCacheManager::ManagerCount(), managersBefore);
}

// Threads that take and free blocks of many sizes (far more pools than the
// bound) and then stop asking keep at most the bound each; their exit
// returns everything.
TEST(zuCacheManagerThreadedTest, IdleThreadsKeepTheBoundAndExitReturnsAll) {
  constexpr int kIdleThreads = 4;
  const std::size_t bytesBefore = zuMemoryCache::LiveAreaBytes();
  std::latch idle(kIdleThreads + 1);
  std::latch leave(kIdleThreads + 1);
  std::atomic<std::size_t> largestHeld{0};
  std::vector<std::thread> threads;
  for (int index = 0; index < kIdleThreads; ++index) {
    threads.emplace_back([&] {
      std::vector<void*> blocks;
      for (unsigned int size = 16; size < 4000; size += 24) {
        for (int count = 0; count < 40; ++count) blocks.push_back(zuCacheManager_alloc(size));
      }
      const std::size_t held = zuMemoryCache::LiveAreaBytes();
      std::size_t seen = largestHeld.load();
      while (held > seen && !largestHeld.compare_exchange_weak(seen, held)) {
      }
      for (void* block : blocks) zuCacheManager_free(block);
      idle.arrive_and_wait();
      leave.arrive_and_wait();
    });
  }
  idle.arrive_and_wait();
  const std::size_t idleBytes = zuMemoryCache::LiveAreaBytes() - bytesBefore;
  leave.arrive_and_wait();
  for (std::thread& thread : threads) thread.join();
  EXPECT_GT(largestHeld.load() - bytesBefore, kIdleThreads * zuCacheManager::kParkedBytes);
  EXPECT_GT(idleBytes, 0u);
  EXPECT_LE(idleBytes, kIdleThreads * zuCacheManager::kParkedBytes);
  EXPECT_EQ(zuMemoryCache::LiveAreaBytes(), bytesBefore);
}

// Another thread destroys a waiting thread's manager; the waiting thread
// must then get a new one instead of the one it remembered.
TEST(zuCacheManagerThreadedTest, ManagerResetByAnotherThreadIsNotReused) {
  const std::size_t managersBefore = zuCacheManager::ManagerCount();
  std::latch ready(2);
  std::latch reset(2);
  unsigned int workerId = 0;
  unsigned int afterOwner = 0;
  int mistakes = 0;
  std::thread worker([&] {
    workerId = zu::internal::currentThreadId();
    zuCacheManager_free(zuCacheManager_alloc(40));
    ready.arrive_and_wait();
    reset.arrive_and_wait();
    mistakes = churnBlocks(0);
    afterOwner = zuCacheManager::getCacheManager(0)->getThreadId();
  });
  ready.arrive_and_wait();
  zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::eCacheManager, workerId);
  reset.arrive_and_wait();
  worker.join();
  EXPECT_EQ(mistakes, 0);
  EXPECT_EQ(afterOwner, workerId);
  EXPECT_EQ(zuCacheManager::ManagerCount(), managersBefore);
}

}  // namespace
