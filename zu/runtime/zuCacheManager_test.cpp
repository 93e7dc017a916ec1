#include "zu/runtime/zuCacheManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

#include "zu/core/zuException.h"
#include "zu/runtime/internal/zuCacheManagerPeer.h"
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

// A pool holds the budget in blocks, rounded up, handed out in address
// order. A new pool of the same size goes in front when the front one is
// full, and a pool that has room again moves to the front and hands out the
// block freed in it.
TEST(zuCacheManagerTest, PoolsHoldTheBudgetAndThePoolWithRoomLeads) {
  struct Case {
    unsigned int budget, size;
    std::size_t blocksPerPool;
  } const cases[] = {
      {50000, 300, 167},
      {1000, 3000, 1},
      {100, 8, 13},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.budget << " / " << c.size);
    zuCacheManager cache(kListCapacity, c.budget);
    std::vector<void*> blocks;
    while (blocks.size() < 2 * c.blocksPerPool) blocks.push_back(cache.allocMemory(c.size));
    ASSERT_EQ(Peer::listCount(cache), 1u);
    const zuMemoryCacheList* list = Peer::list(cache, 0);
    EXPECT_EQ(list->PoolBlockCount(), c.blocksPerPool);
    EXPECT_EQ(list->PoolCount(), 2u);
    EXPECT_TRUE(std::is_sorted(blocks.begin(), blocks.begin() + c.blocksPerPool));
    EXPECT_EQ(list->Pool(0), zuMemoryCache::FromBlock(blocks.back()));
    void* const freed = blocks.front();
    zuCacheManager::freeMemory(freed);
    blocks.front() = cache.allocMemory(c.size);
    EXPECT_EQ(blocks.front(), freed);
    EXPECT_EQ(list->Pool(0), zuMemoryCache::FromBlock(freed));
    for (void* block : blocks) zuCacheManager::freeMemory(block);
  }
}

// The boundary of the list rule, which RandomTrafficFollowsTheListRuleAndTheBound
// checks over a million requests: size 20 takes the list of 40-byte blocks
// (within twice the size), size 19 a list of its own; allocMemory asks the
// same way.
TEST(zuCacheManagerTest, ChoosesListWithinSizeAndTwiceSize) {
  zuCacheManager cache(kListCapacity, kPoolBudget);
  std::vector<void*> blocks{cache.allocMemory(40)};
  for (unsigned int size : {20u, 19u}) {
    const unsigned int asked = size;
    blocks.push_back(cache.allocMemoryMin(size, 0));
    EXPECT_EQ(size, asked == 20 ? 40u : 19u);
    EXPECT_EQ(zuMemoryCache::FromBlock(blocks.back())->BlockSize(), size);
  }
  blocks.push_back(cache.allocMemory(30));
  EXPECT_EQ(zuMemoryCache::FromBlock(blocks.back())->BlockSize(), 40u);
  for (void* block : blocks) zuCacheManager::freeMemory(block);
}

// The bytes of the pools in `cache` that have no block in use, and of all.
struct PoolBytes {
  std::size_t whollyFree = 0;
  std::size_t all = 0;
};
PoolBytes poolBytes(const zuCacheManager& cache) {
  PoolBytes bytes;
  for (std::size_t index = 0; index < Peer::listCount(cache); ++index) {
    const zuMemoryCacheList* list = Peer::list(cache, index);
    for (std::size_t pool = 0; pool < list->PoolCount(); ++pool) {
      bytes.all += list->Pool(pool)->AreaBytes();
      if (list->Pool(pool)->InUse() == 0) bytes.whollyFree += list->Pool(pool)->AreaBytes();
    }
  }
  return bytes;
}

// Wholly free pools are parked; the pools parked longest ago go once the
// bound is passed, taking their lists along, and a pool larger than the
// bound is released at once.
TEST(zuCacheManagerTest, WhollyFreePoolsAreParkedOldestReleasedFirst) {
  zuCacheManager cache(kListCapacity, kPoolBudget);
  // Pools of about 50 KB each: 21 of them pass 1 MiB.
  std::vector<std::size_t> sizes;
  for (unsigned int size = 1000; size < 1000 + 30 * 8; size += 8) {
    zuCacheManager::freeMemory(cache.allocMemory(size));
    sizes.push_back(size);
  }
  const PoolBytes bytes = poolBytes(cache);
  EXPECT_EQ(bytes.whollyFree, bytes.all);
  EXPECT_LE(bytes.all, zuCacheManager::kParkedBytes);
  const std::vector<std::size_t> kept = blockSizes(cache);
  ASSERT_LT(kept.size(), sizes.size());
  EXPECT_TRUE(std::equal(kept.begin(), kept.end(), sizes.end() - kept.size()));

  zuCacheManager::freeMemory(cache.allocMemory(zuCacheManager::kParkedBytes));
  EXPECT_EQ(blockSizes(cache), kept);
}

// Random traffic against a plain model: each request gets the block size
// the list rule picks from the lists there before it (the exact size, else
// the smallest within [size, maxSize], else a new list of exactly the size),
// sizes below 256 keeping their first choice while its list lives; blocks
// are aligned and none overlaps another (a size still served from a pool
// released under it crashes or corrupts the bytes checked here); wholly free
// pools never pass the bound; and the process-wide count of pool bytes
// follows the pools.
TEST(zuCacheManagerTest, RandomTrafficFollowsTheListRuleAndTheBound) {
  struct Live {
    unsigned char* bytes;
    unsigned int size;
    unsigned char fill;
  };
  const std::size_t areaBytesBefore = zuMemoryCache::LiveAreaBytes();
  std::mt19937 random(23);
  std::vector<Live> live;
  // Per requested size below 256, the block size first chosen for it.
  std::size_t remembered[zuCacheManager::kDirectSizes] = {};
  int mistakes = 0;
  {
    zuCacheManager cache(kListCapacity, kPoolBudget);
    for (int step = 0; step < 1000000; ++step) {
      // Live blocks drift between none and a few hundred.
      const std::size_t target = (step / 20000) % 2 == 0 ? 300 : 0;
      if (live.empty() || (live.size() < target && random() % 4 != 0) ||
          (live.size() >= target && random() % 4 == 0)) {
        const unsigned int size = random() % 8 == 0 ? random() % 3000 : random() % 300;
        const unsigned int maxSize = random() % 4 == 0 ? size + random() % (size + 1) : 0;
        const unsigned long long widest = maxSize != 0 ? maxSize : 2ull * size;
        std::size_t expected = size != 0 ? size : 1;
        const std::vector<std::size_t> lists = blockSizes(cache);
        const auto fit = std::lower_bound(lists.begin(), lists.end(), expected);
        if (fit != lists.end() && *fit <= std::max(widest, 1ull)) expected = *fit;
        if (size < zuCacheManager::kDirectSizes) {
          if (remembered[size] == 0) remembered[size] = expected;
          expected = remembered[size];
        }
        unsigned int got = size;
        auto* bytes = static_cast<unsigned char*>(cache.allocMemoryMin(got, maxSize));
        mistakes += got != expected;
        mistakes += reinterpret_cast<std::uintptr_t>(bytes) % zuMemoryCache::kAlignment != 0;
        const auto fill = static_cast<unsigned char>(step);
        std::memset(bytes, fill, got);
        live.push_back(Live{bytes, got, fill});
      } else {
        const std::size_t index = random() % live.size();
        const Live block = live[index];
        live[index] = live.back();
        live.pop_back();
        mistakes += std::count(block.bytes, block.bytes + block.size, block.fill) != block.size;
        const std::size_t listsBefore = Peer::listCount(cache);
        zuCacheManager::freeMemory(block.bytes);
        if (Peer::listCount(cache) != listsBefore) {
          const std::vector<std::size_t> lists = blockSizes(cache);
          for (std::size_t& choice : remembered) {
            if (!std::binary_search(lists.begin(), lists.end(), choice)) choice = 0;
          }
        }
        mistakes += poolBytes(cache).whollyFree > zuCacheManager::kParkedBytes;
      }
      if (step % 1000 == 0) {
        mistakes += zuMemoryCache::LiveAreaBytes() - areaBytesBefore != poolBytes(cache).all;
      }
    }
    for (const Live& block : live) zuCacheManager::freeMemory(block.bytes);
    EXPECT_LE(poolBytes(cache).all, zuCacheManager::kParkedBytes);
  }
  EXPECT_EQ(mistakes, 0);
  EXPECT_EQ(zuMemoryCache::LiveAreaBytes(), areaBytesBefore);
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
  zuCacheManager::setCaching(0);
  zuCacheManager* global = zuCacheManager::getCacheManager(0);
  EXPECT_NE(global, own);
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
  void* cached = zuCacheManager_alloc(70);
  EXPECT_EQ(zuMemoryCache::FromBlock(cached)->Manager(), own);
  zuCacheManager_free(cached);
}

TEST(zuCacheManagerTest, ArenasAreDedicatedLargeOrSharedAndDropped) {
  constexpr unsigned int kShared = zuCacheManager::kArenaBytes;
  constexpr unsigned int kSlack = zuCacheManager::kArenaSlack;
  zuCacheManager cache(kListCapacity, kPoolBudget);
  zuCacheManager::ArenaInfo* big = cache.getArena(kShared + 4000);
  EXPECT_EQ(big->full, 1);
  EXPECT_EQ(Peer::arenaCount(cache), 0u);  // dedicated arenas are never searched

  zuCacheManager::ArenaInfo* shared = cache.getArena(100);
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
