#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <latch>
#include <thread>
#include <vector>

#include "zu/core/zuFormat.h"
#include "zu/core/zuString.h"
#include "zu/runtime/internal/zuThreadId.h"
#include "zu/runtime/zuCacheManager.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace {

// Threads take blocks of many sizes at once (166 sizes of 40 blocks: pools
// of far more bytes than the bound), each from its own manager, and find
// their bytes as they left them; their strings live there too, shared
// within the thread and copied on write. Freed and no longer asking, each
// keeps at most the bound; their exit returns everything, managers included.
TEST(zuCacheManagerThreadedTest, ThreadsUseTheirOwnCachesKeepTheBoundAndExitReturnsAll) {
  constexpr int kThreads = 4;
  const std::size_t managersBefore = zuCacheManager::ManagerCount();
  const std::size_t bytesBefore = zuMemoryCache::LiveAreaBytes();
  std::latch idle(kThreads + 1);
  std::latch leave(kThreads + 1);
  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  for (int index = 0; index < kThreads; ++index) {
    threads.emplace_back([&, index] {
      const zuCacheManager* own = zuCacheManager::getCacheManager(0);
      if (own->getThreadId() != zu::internal::currentThreadId()) ++failures;
      const auto fill = static_cast<unsigned char>(index);
      std::vector<std::pair<unsigned char*, unsigned int>> blocks;
      for (unsigned int size = 16; size < 4000; size += 24) {
        for (int count = 0; count < 40; ++count) {
          auto* bytes = static_cast<unsigned char*>(zuCacheManager_alloc(size));
          std::memset(bytes, fill, size);
          blocks.emplace_back(bytes, size);
        }
      }
      for (const auto& [bytes, size] : blocks) {
        failures += std::count(bytes, bytes + size, fill) != size;
        zuCacheManager_free(bytes);
      }
      for (int round = 0; round < 40; ++round) {
        zuString text((zuFormat(zuString("thread %d round %d")) << index << round).GetString());
        zuString copy = text;
        failures += !copy.SharesImpl(text) || text.GetThreadId() != zu::internal::currentThreadId();
        copy += " edited";
        failures += copy.SharesImpl(text) || copy.Length() != text.Length() + 7;
      }
      idle.arrive_and_wait();
      leave.arrive_and_wait();
    });
  }
  idle.arrive_and_wait();
  const std::size_t idleBytes = zuMemoryCache::LiveAreaBytes() - bytesBefore;
  leave.arrive_and_wait();
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);
  EXPECT_GT(idleBytes, 0u);
  EXPECT_LE(idleBytes, kThreads * zuCacheManager::kParkedBytes);
  EXPECT_EQ(zuMemoryCache::LiveAreaBytes(), bytesBefore);
  EXPECT_EQ(zuCacheManager::ManagerCount(), managersBefore);
}

// Another thread destroys a waiting thread's manager; the waiting thread
// must then get a new one instead of the one it remembered.
TEST(zuCacheManagerThreadedTest, ManagerResetByAnotherThreadIsNotReused) {
  const std::size_t managersBefore = zuCacheManager::ManagerCount();
  std::latch ready(2);
  std::latch reset(2);
  unsigned int workerId = 0;
  const zuCacheManager* afterReset = nullptr;
  std::thread worker([&] {
    workerId = zu::internal::currentThreadId();
    zuCacheManager_free(zuCacheManager_alloc(40));
    ready.arrive_and_wait();
    reset.arrive_and_wait();
    void* block = zuCacheManager_alloc(40);
    afterReset = zuMemoryCache::FromBlock(block)->Manager();
    zuCacheManager_free(block);
    EXPECT_EQ(afterReset, zuCacheManager::getCacheManager(0));
    EXPECT_EQ(afterReset->getThreadId(), workerId);
  });
  ready.arrive_and_wait();
  zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::eCacheManager, workerId);
  reset.arrive_and_wait();
  worker.join();
  EXPECT_NE(afterReset, nullptr);
  EXPECT_EQ(zuCacheManager::ManagerCount(), managersBefore);
}

}  // namespace
