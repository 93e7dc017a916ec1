#include "zu/runtime/zuCacheManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "zu/core/zuException.h"
#include "zu/runtime/internal/zuCacheManagerPeer.h"
#include "zu/runtime/internal/zuThreadId.h"
#include "zu/testing/zuThrown.h"

namespace {

using Peer = zu::internal::CacheManagerPeer;

// The managers under test are made like a thread's own; only the growth
// policy test below depends on what the budget comes to in blocks.
constexpr unsigned int kListCapacity = 10;
constexpr unsigned int kPoolBudget = 50000;

std::vector<std::size_t> blockSizes(const zuCacheManager& cache) {
  std::vector<std::size_t> sizes;
  for (std::size_t index = 0; index < Peer::listCount(cache); ++index) {
    sizes.push_back(Peer::list(cache, index)->BlockSize());
  }
  return sizes;
}

// Keeps blocks alive for a test and frees them at its end.
class Blocks {
 public:
  ~Blocks() {
    for (void* block : blocks_) zuCacheManager::freeMemory(block);
  }
  void* Keep(void* block) {
    blocks_.push_back(block);
    return block;
  }

 private:
  std::vector<void*> blocks_;
};

// A pool holds the budget in blocks, rounded up; the pool after a full one
// is of the same size, and the lists are made with the thread's budget.
TEST(zuCacheManagerTest, PoolsHoldTheBudgetInBlocks) {
  struct Case {
    unsigned int budget, size;
    std::size_t blocksPerPool;
  } const cases[] = {
      {50000, 200, 250}, {50000, 1000, 50}, {50000, 300, 167}, {1000, 3000, 1}, {100, 8, 13},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.budget << " / " << c.size);
    zuCacheManager cache(kListCapacity, c.budget);
    std::vector<void*> blocks;
    for (std::size_t index = 0; index <= c.blocksPerPool; ++index) {
      blocks.push_back(cache.allocMemory(c.size));
    }
    ASSERT_EQ(Peer::listCount(cache), 1u);
    EXPECT_EQ(Peer::list(cache, 0)->PoolBlockCount(), c.blocksPerPool);
    EXPECT_EQ(Peer::list(cache, 0)->PoolCount(), 2u);  // the last block opened a second pool
    for (void* block : blocks) zuCacheManager::freeMemory(block);
  }
  // A thread's own manager has the budget of 50,000 bytes (the block may
  // come from a list of a larger size made by an earlier test).
  void* block = zuCacheManager_alloc(1000);
  const zuMemoryCache* pool = zuMemoryCache::FromBlock(block);
  EXPECT_EQ(pool->BlockCount(), (50000 + pool->BlockSize() - 1) / pool->BlockSize());
  zuCacheManager_free(block);
}

TEST(zuCacheManagerTest, ChoosesListWithinSizeAndTwiceSize) {
  struct Case {
    unsigned int size;
    unsigned int maxSize;  // 0: twice the size
    unsigned int expectedBlockSize;
    std::vector<std::size_t> expectedLists;
  } const cases[] = {
      {25, 0, 25, {25}},
      {40, 0, 40, {25, 40}},        // 25 lies outside [40, 80]
      {12, 0, 12, {12, 25, 40}},    // 25 lies outside [12, 24]
      {20, 0, 25, {12, 25, 40}},    // smallest within [20, 40]
      {40, 100, 40, {12, 25, 40}},  // the exact size wins
      {300, 0, 300, {12, 25, 40, 300}},
      {299, 299, 299, {12, 25, 40, 299, 300}},  // 300 exceeds the maximum
      {290, 350, 299, {12, 25, 40, 299, 300}},  // smallest above, not the exact fit
      {0, 0, 1, {1, 12, 25, 40, 299, 300}},     // nothing is served as one byte
  };
  zuCacheManager cache(kListCapacity, kPoolBudget);
  Blocks blocks;
  for (const Case& c : cases) {
    unsigned int size = c.size;
    void* block = blocks.Keep(cache.allocMemoryMin(size, c.maxSize));
    SCOPED_TRACE(c.size);
    EXPECT_EQ(size, c.expectedBlockSize);
    EXPECT_EQ(zuMemoryCache::FromBlock(block)->BlockSize(), c.expectedBlockSize);
    EXPECT_EQ(blockSizes(cache), c.expectedLists);
    std::memset(block, 0xA5, size);
  }
  // allocMemory follows the same rule and remembers small sizes directly.
  void* block = blocks.Keep(cache.allocMemory(30));
  EXPECT_EQ(zuMemoryCache::FromBlock(block)->BlockSize(), 40u);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % zuMemoryCache::kAlignment, 0u);
}

// Sizes 200 and 150 share the list of 200-byte blocks. Size 150 last saw
// the first pool; 200 fills it and moves on to a second. When the first
// pool is released, size 150 must not be served from it.
TEST(zuCacheManagerTest, SizesSharingAListFollowItsPools) {
  zuCacheManager cache(kListCapacity, kPoolBudget);
  void* front = cache.allocMemory(200);
  std::vector<void*> first(Peer::list(cache, 0)->PoolBlockCount());
  first[0] = front;
  void* shared = cache.allocMemory(150);
  for (std::size_t index = 1; index < first.size() - 1; ++index)
    first[index] = cache.allocMemory(200);
  ASSERT_EQ(Peer::listCount(cache), 1u);
  void* second = cache.allocMemory(200);  // the first pool is full
  ASSERT_EQ(Peer::list(cache, 0)->PoolCount(), 2u);
  EXPECT_NE(zuMemoryCache::FromBlock(second), zuMemoryCache::FromBlock(shared));

  zuCacheManager::freeMemory(shared);
  for (std::size_t index = 0; index < first.size() - 1; ++index)
    zuCacheManager::freeMemory(first[index]);
  ASSERT_EQ(Peer::list(cache, 0)->PoolCount(), 1u);  // the first pool is gone
  void* again = cache.allocMemory(150);
  EXPECT_EQ(zuMemoryCache::FromBlock(again), zuMemoryCache::FromBlock(second));
  zuCacheManager::freeMemory(again);
  zuCacheManager::freeMemory(second);
  EXPECT_EQ(Peer::listCount(cache), 0u);
}

// A list whose only pool empties leaves the manager at once; taking its
// block size again brings it back, and another list emptied retires it.
TEST(zuCacheManagerTest, EmptiedListLeavesAndComesBack) {
  zuCacheManager cache(kListCapacity, kPoolBudget);
  const struct {
    unsigned int size;
    std::vector<std::size_t> listsWhileHeld;
  } steps[] = {{64, {64}}, {64, {64}}, {100, {100}}, {64, {64}}, {100, {100}}};
  for (const auto& step : steps) {
    SCOPED_TRACE(step.size);
    void* block = cache.allocMemory(step.size);
    std::memset(block, 0x5A, step.size);
    EXPECT_EQ(blockSizes(cache), step.listsWhileHeld);
    EXPECT_EQ(Peer::list(cache, 0)->PoolCount(), 1u);
    zuCacheManager::freeMemory(block);
    EXPECT_EQ(Peer::listCount(cache), 0u);
  }
}

TEST(zuCacheManagerTest, PoolsFillInAddressOrderAndReleaseWhenWhollyFree) {
  zuCacheManager cache(kListCapacity, kPoolBudget);
  const unsigned int size = 1000;
  std::vector<void*> first{cache.allocMemory(size)};
  ASSERT_EQ(Peer::listCount(cache), 1u);
  const zuMemoryCacheList* list = Peer::list(cache, 0);
  const std::size_t perPool = list->PoolBlockCount();
  while (first.size() < perPool) first.push_back(cache.allocMemory(size));
  EXPECT_EQ(list->PoolCount(), 1u);
  EXPECT_TRUE(std::is_sorted(first.begin(), first.end()));

  // A full front pool: a new pool goes in front.
  void* extra = cache.allocMemory(size);
  const zuMemoryCache* secondPool = zuMemoryCache::FromBlock(extra);
  EXPECT_EQ(list->PoolCount(), 2u);
  EXPECT_EQ(list->Pool(0), secondPool);

  // Fill the new pool too, then free one block of the old one: the old pool,
  // the first with room, moves to the front and hands out that very block.
  std::vector<void*> second{extra};
  while (second.size() < perPool) second.push_back(cache.allocMemory(size));
  const zuMemoryCache* firstPool = zuMemoryCache::FromBlock(first[7]);
  zuCacheManager::freeMemory(first[7]);
  first[7] = cache.allocMemory(size);
  EXPECT_EQ(zuMemoryCache::FromBlock(first[7]), firstPool);
  EXPECT_EQ(list->Pool(0), firstPool);

  // Freeing the last block in use of a pool releases it.
  for (void* block : second) zuCacheManager::freeMemory(block);
  EXPECT_EQ(list->PoolCount(), 1u);
  EXPECT_EQ(list->Pool(0), firstPool);

  // The last pool of a list goes with its list.
  for (void* block : first) zuCacheManager::freeMemory(block);
  EXPECT_EQ(Peer::listCount(cache), 0u);

  // ... and so do the direct-table entries of the small sizes it served.
  void* hundred = cache.allocMemory(100);
  void* sixty = cache.allocMemory(60);  // 100 lies within [60, 120]
  EXPECT_EQ(blockSizes(cache), std::vector<std::size_t>{100});
  zuCacheManager::freeMemory(hundred);
  zuCacheManager::freeMemory(sixty);
  EXPECT_EQ(Peer::listCount(cache), 0u);
  sixty = cache.allocMemory(60);
  EXPECT_EQ(zuMemoryCache::FromBlock(sixty)->BlockSize(), 60u);
  zuCacheManager::freeMemory(sixty);
}

TEST(zuCacheManagerTest, FreeingABlockWithoutPoolThrows) {
  zuCacheManager cache(kListCapacity, kPoolBudget);
  void* keep = cache.allocMemory(64);  // keeps the pool alive
  void* block = cache.allocMemory(64);
  zuCacheManager::freeMemory(block);
  // Freed twice: its header was cleared.
  EXPECT_TRUE(zu::testing::thrown([&] { zuCacheManager::freeMemory(block); }).HasResId(16479));
  EXPECT_EQ(zuMemoryCache::FromBlock(keep)->InUse(), 1u);
  zuCacheManager::freeMemory(nullptr);
  zuCacheManager_free(keep);
}

TEST(zuCacheManagerTest, CachingOffUsesTheHeapAndBack) {
  zuCacheManager* own = zuCacheManager::getCacheManager(0);
  EXPECT_EQ(own->getThreadId(), zu::internal::currentThreadId());

  zuCacheManager::setCaching(0);
  zuCacheManager* global = zuCacheManager::getCacheManager(0);
  EXPECT_NE(global, own);
  EXPECT_EQ(global->getThreadId(), 0u);
  unsigned int size = 30;
  void* fromMin = global->allocMemoryMin(size, 0);
  EXPECT_EQ(size, 30u);
  void* fromOwn = own->allocMemory(50);  // any manager goes to the heap now
  void* fromFree = zuCacheManager_alloc(70);
  EXPECT_EQ(Peer::listCount(*global), 0u);
  std::free(fromMin);  // heap blocks: the sanitizers check the pairing
  zuCacheManager::freeMemory(fromOwn);
  zuCacheManager_free(fromFree);

  zuCacheManager::setCaching(1);
  EXPECT_EQ(zuCacheManager::getCacheManager(0), own);
  void* cached = zuCacheManager_alloc(70);
  EXPECT_EQ(zuMemoryCache::FromBlock(cached)->Manager(), own);
  zuCacheManager_free(cached);
}

TEST(zuCacheManagerTest, ArenasAreDedicatedLargeOrSharedAndDropped) {
  constexpr unsigned int kShared = zuCacheManager::kArenaBytes;
  constexpr unsigned int kSlack = zuCacheManager::kArenaSlack;
  zuCacheManager cache(kListCapacity, kPoolBudget);
  zuCacheManager::ArenaInfo* big = cache.getArena(kShared + 4000);
  EXPECT_EQ(big->remaining, kShared + 4000);
  EXPECT_EQ(big->full, 1);
  EXPECT_EQ(Peer::arenaCount(cache), 0u);  // dedicated arenas are never searched

  zuCacheManager::ArenaInfo* shared = cache.getArena(100);
  EXPECT_EQ(shared->remaining, kShared);
  EXPECT_EQ(shared->full, 0);
  char* first = static_cast<char*>(shared->Take(100));
  EXPECT_EQ(shared->remaining, kShared - 104);  // steps of 8
  EXPECT_EQ(cache.getArena(5000), shared);
  EXPECT_EQ(static_cast<char*>(shared->Take(kShared - 104 - kSlack + 8)), first + 104);
  EXPECT_EQ(shared->remaining, kSlack - 8);

  // Small requests still fit what is left; a larger one drops the arena,
  // now under the slack, and opens a new one.
  EXPECT_EQ(cache.getArena(kSlack - 50), shared);
  zuCacheManager::ArenaInfo* next = cache.getArena(kSlack + 100);
  EXPECT_NE(next, shared);
  EXPECT_EQ(shared->full, 1);
  EXPECT_EQ(Peer::arenaCount(cache), 1u);
  EXPECT_EQ(cache.getArena(kSlack - 50), next);
}

TEST(zuCacheManagerTest, BlocksOutliveTheirManager) {
  void* block = nullptr;
  {
    zuCacheManager cache(kListCapacity, kPoolBudget);
    block = cache.allocMemory(48);
    std::memset(block, 1, 48);
  }
  // Its pool was cut loose; the last free releases it (checked by LeakSanitizer).
  EXPECT_EQ(zuMemoryCache::FromBlock(block)->Manager(), nullptr);
  zuCacheManager::freeMemory(block);
}

}  // namespace
