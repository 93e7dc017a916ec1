#include "zu/runtime/zuCacheManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "zu/core/zuException.h"
#include "zu/runtime/internal/zuThreadId.h"
#include "zu/runtime/internal/zuCacheManagerPeer.h"

namespace {

using Peer = zu::internal::CacheManagerPeer;

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

TEST(zuCacheManagerTest, ChoosesListWithinSizeAndTwiceSize) {
  struct Case {
    unsigned int size;
    unsigned int maxSize;  // 0: twice the size
    unsigned int expectedBlockSize;
    std::vector<std::size_t> expectedLists;
  };
  const Case cases[] = {
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
  zuCacheManager cache(10, 50000);
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

// Sizes 200 and 150 share the list of 200-byte blocks (250 per pool). Size
// 150 last saw the first pool; 200 fills it and moves on to a second. When
// the first pool is released, size 150 must not be served from it.
TEST(zuCacheManagerTest, SizesSharingAListFollowItsPools) {
  zuCacheManager cache(10, 50000);
  std::vector<void*> first(250);
  first[0] = cache.allocMemory(200);
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
  zuCacheManager cache(10, 50000);
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
  zuCacheManager cache(10, 50000);
  const unsigned int size = 1000;  // 50 blocks per pool
  std::vector<void*> first;
  for (int index = 0; index < 50; ++index) first.push_back(cache.allocMemory(size));
  ASSERT_EQ(Peer::listCount(cache), 1u);
  const zuMemoryCacheList* list = Peer::list(cache, 0);
  EXPECT_EQ(list->PoolBlockCount(), 50u);
  EXPECT_TRUE(std::is_sorted(first.begin(), first.end()));

  // A full front pool: a new pool goes in front.
  void* extra = cache.allocMemory(size);
  const zuMemoryCache* secondPool = zuMemoryCache::FromBlock(extra);
  EXPECT_EQ(list->PoolCount(), 2u);
  EXPECT_EQ(list->Pool(0), secondPool);

  // Fill the new pool too, then free one block of the old one: the old pool,
  // the first with room, moves to the front and hands out that very block.
  std::vector<void*> second{extra};
  for (int index = 1; index < 50; ++index) second.push_back(cache.allocMemory(size));
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
  zuCacheManager cache(10, 50000);
  void* keep = cache.allocMemory(64);  // keeps the pool alive
  void* block = cache.allocMemory(64);
  zuCacheManager::freeMemory(block);
  try {
    zuCacheManager::freeMemory(block);  // freed twice: its header was cleared
    ADD_FAILURE() << "no exception";
  } catch (const zuExFull& error) {
    EXPECT_TRUE(error.HasResId(16479));
  }
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
  zuCacheManager cache(10, 50000);
  zuCacheManager::ArenaInfo* big = cache.getArena(20000);
  EXPECT_EQ(big->remaining, 20000u);
  EXPECT_EQ(big->full, 1);
  EXPECT_EQ(Peer::arenaCount(cache), 0u);  // dedicated arenas are never searched

  zuCacheManager::ArenaInfo* shared = cache.getArena(100);
  EXPECT_EQ(shared->remaining, 16000u);
  EXPECT_EQ(shared->full, 0);
  char* first = static_cast<char*>(shared->Take(100));
  EXPECT_EQ(shared->remaining, 16000u - 104u);  // steps of 8
  EXPECT_EQ(cache.getArena(5000), shared);
  EXPECT_EQ(static_cast<char*>(shared->Take(15700)), first + 104);
  EXPECT_EQ(shared->remaining, 192u);

  // Small requests still fit what is left; a larger one drops the arena,
  // now under 200 bytes, and opens a new one.
  EXPECT_EQ(cache.getArena(150), shared);
  zuCacheManager::ArenaInfo* next = cache.getArena(300);
  EXPECT_NE(next, shared);
  EXPECT_EQ(shared->full, 1);
  EXPECT_EQ(Peer::arenaCount(cache), 1u);
  EXPECT_EQ(cache.getArena(150), next);
}

TEST(zuCacheManagerTest, BlocksOutliveTheirManager) {
  void* block = nullptr;
  {
    zuCacheManager cache(10, 50000);
    block = cache.allocMemory(48);
    std::memset(block, 1, 48);
  }
  // Its pool was cut loose; the last free releases it (checked by LeakSanitizer).
  EXPECT_EQ(zuMemoryCache::FromBlock(block)->Manager(), nullptr);
  zuCacheManager::freeMemory(block);
}

}  // namespace
