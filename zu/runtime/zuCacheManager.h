// zuCacheManager: the per-thread cache of small blocks.
//
// Each thread gets its own pools of fixed-size blocks, so that taking and
// returning a block is a pointer pop and push without a lock. A block
// remembers its pool in a pointer-sized header in front of the caller's
// bytes, so it is freed by address alone. The caller's bytes are 8-byte
// aligned. Pools hold about 50,000 bytes of blocks.
//
// A pool that becomes wholly free is parked, not released: it stays in its
// list, so that the next request for its block size (a string growing
// through block sizes, a value formatted, its text dropped, the next one
// formatted) takes a block from it at once. Parked pools are bounded per
// thread by kParkedBytes: when parking one more would pass the bound, the
// pools parked longest ago go back to the heap first (those wholly free), and a pool larger than
// the bound is released at once. A thread that stops asking for blocks thus
// holds at most kParkedBytes of wholly free pools, and its exit releases
// everything (a pool whose blocks outlive the thread goes with its last
// block). A list whose last pool is released leaves the manager.
//
//   void* bytes = zuCacheManager_alloc(40);    // the calling thread's cache
//   zuCacheManager_free(bytes);                // by the same thread
//
//   zuCacheManager* cache = zuCacheManager::getCacheManager(0);
//   unsigned int size = 30;
//   void* block = cache->allocMemoryMin(size, 0);   // size: the block's size
//   zuCacheManager::freeMemory(block);
//
// A manager serves one thread: blocks are freed by the thread that took
// them. setCaching(0) sends every later allocation and release to the heap
// (malloc/free); a block must be freed under the same setting it was taken.
#pragma once

#include <cstddef>
#include <vector>

#include "zu/core/zuExport.h"
#include "zu/runtime/zuMemoryCache.h"
#include "zu/runtime/zuMemoryCacheList.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace zu::internal {
struct CacheManagerPeer;  // what tests read of a manager's insides
}

class ZU_EXPORT zuCacheManager : public zuThreadStorage {
 public:
  // Requested sizes below this are mapped to their list by a direct table.
  static constexpr unsigned int kDirectSizes = 256;
  // A request of at least this many bytes gets an arena of its own.
  static constexpr unsigned int kArenaBytes = 16000;
  // An arena with less room than this is no longer searched.
  static constexpr unsigned int kArenaSlack = 200;
  // The most bytes of wholly free pools a manager keeps (pool areas counted
  // whole): 1 MiB.
  static constexpr std::size_t kParkedBytes = std::size_t{1} << 20;

  // A raw area from which memory is cut in steps of 8 bytes and never given
  // back singly; it lives as long as its manager.
  struct ArenaInfo {
    char* area;              // the allocation, freed with the manager
    char* base;              // the next free byte
    unsigned int remaining;  // bytes left after base
    int full;                // no longer searched by getArena

    // `size` bytes (rounded up to 8) from base; the caller made sure they
    // fit (getArena does).
    void* Take(unsigned int size);
  };

  // A manager for thread `threadId` (0: the calling thread) whose list of
  // pool lists starts with room for `listCapacity` and whose pools cover
  // about `poolBudget` bytes each.
  zuCacheManager(unsigned int listCapacity, unsigned int poolBudget, unsigned int threadId = 0);
  // Releases every pool and arena. A pool whose blocks are still in use is
  // cut loose instead and released when its last block is freed, so that a
  // late free never touches a dead manager.
  ~zuCacheManager() override;
  zuCacheManager(const zuCacheManager&) = delete;
  zuCacheManager& operator=(const zuCacheManager&) = delete;

  // With caching on, the manager of thread `threadId` (0: the calling thread),
  // created on first use (list capacity 10, pool budget 50,000 bytes); with
  // caching off, the library-wide manager. Throws zuExMemory.
  static zuCacheManager* getCacheManager(unsigned int threadId);

  // A block of at least `size` bytes, from a list whose block size lies in
  // [size, 2 * size]. With caching off, malloc. Throws zuExMemory.
  void* allocMemory(unsigned int size);
  // As allocMemory, accepting block sizes in [size, maxSize] (maxSize 0:
  // 2 * size); `size` is set to the block size of the chosen list (left as it
  // is with caching off). Throws zuExMemory.
  void* allocMemoryMin(unsigned int& size, unsigned int maxSize);
  // Returns a block to its pool (with caching off, free). A null pointer is
  // ignored; a block whose header names no pool throws ZuExThrow(16479).
  static void freeMemory(void* block);

  // An arena with room for `size` bytes: a dedicated one of exactly `size`
  // bytes (marked full) when size >= 16,000; else the newest arena with
  // room, dropping those with less than 200 bytes left on the way, or a new
  // 16,000-byte arena. The manager owns it. Throws zuExMemory.
  ArenaInfo* getArena(unsigned int size);

  // The thread this manager serves (0 for the library-wide manager).
  unsigned int getThreadId() const { return threadId_; }

  // Turns the per-thread pools on (non-zero, the initial state) or off for
  // the whole process. Switch while no cached block is in use.
  static void setCaching(int caching);
  static int getCaching();

  // Managers alive in the process, the library-wide one not counted; a
  // thread's manager dies with the thread.
  static std::size_t ManagerCount();

  // zuCacheManager_alloc: a block from the calling thread's manager.
  static void* AllocateForCallingThread(unsigned int size);
  // The same, also giving the thread id of the manager the block came from
  // (0 for a heap block while caching is off), as blocks that record their
  // owner need it.
  static void* AllocateForCallingThread(unsigned int size, unsigned int& ownerThreadId);

 private:
  friend struct zu::internal::CacheManagerPeer;

  // The library-wide manager used while caching is off; it serves no thread.
  struct GlobalTag {};
  explicit zuCacheManager(GlobalTag);
  static zuCacheManager& GlobalManager();
  [[gnu::noinline]] static void* AllocateSlowly(unsigned int size, unsigned int& ownerThreadId);
  // allocMemory for the calling thread's remembered manager, past the
  // direct pools.
  [[gnu::noinline]] void* TakeForCallingThread(unsigned int size, unsigned int& ownerThreadId);
  static zuCacheManager* CreateForThread(unsigned int threadId);
  void* TakeFromList(unsigned int size, unsigned long long maxSize);
  zuMemoryCacheList* ChooseList(unsigned int size, unsigned long long maxSize);
  // Clears the shortcuts to `pool`, which `list` is about to destroy.
  void ForgetPool(const zuMemoryCacheList* list, const zuMemoryCache* pool);
  zuMemoryCacheList* FindOrAddList(unsigned int size, unsigned long long maxSize);
  // Parks `pool`, whose last block in use was just freed and which is not
  // parked (or destroys it when its manager is gone).
  [[gnu::noinline]] static void PoolEmptied(zuMemoryCache* pool);
  // Makes `pool` the newest parked pool, then releases the oldest wholly
  // free ones while the parked bytes pass kParkedBytes. A parked pool keeps
  // its place while it is taken from and emptied again; when its turn to go
  // comes while it is in use, it leaves the parked pools and parks anew
  // once wholly free.
  void ParkPool(zuMemoryCache* pool);
  void UnlinkParked(zuMemoryCache* pool);
  // Destroys `pool` (no block in use) and, when it was its list's last one,
  // the list.
  void DropPool(zuMemoryCache* pool);
  // Takes a list out of the manager's lists and direct table.
  void UnlinkList(zuMemoryCacheList* list);
  // Destroys the pools of an unlinked list and keeps it as a spare.
  void RetireList(zuMemoryCacheList* list);
  ArenaInfo* NewArena(unsigned int size, int full);

  std::vector<zuMemoryCacheList*> lists_;  // sorted by block size
  zuMemoryCacheList* direct_[kDirectSizes] = {};
  // Per requested size below kDirectSizes, a pool of the list direct_ names
  // (its front when last set), so that the common allocation skips the list.
  // Cleared before such a pool is destroyed.
  zuMemoryCache* directFront_[kDirectSizes] = {};
  // Per bit width of a requested size of kDirectSizes or more, the list last
  // chosen for a size and maximum: what the search of the lists gives
  // until a list is added or removed, when it is forgotten. A string
  // growing through block sizes asks for one size per width.
  struct WideChoice {
    unsigned int size = 0;
    unsigned long long maxSize = 0;
    zuMemoryCacheList* list = nullptr;
  };
  WideChoice wide_[33];
  unsigned int poolBudget_;
  unsigned int threadId_;
  std::vector<ArenaInfo*> arenas_;      // searched, newest last
  std::vector<ArenaInfo*> fullArenas_;  // dropped or dedicated, kept until the end
  bool counted_ = true;                 // in ManagerCount()

  // Pools parked since they became wholly free, oldest first (some may have
  // been taken from again since), and the sum of their areas.
  zuMemoryCache* parkedOldest_ = nullptr;
  zuMemoryCache* parkedNewest_ = nullptr;
  std::size_t parkedBytes_ = 0;
  // Removed lists kept for reuse, so that sizes coming and going do not
  // allocate list objects at every step.
  static constexpr std::size_t kSpareLists = 4;
  zuMemoryCacheList* spareLists_[kSpareLists] = {};
  std::size_t spareListCount_ = 0;
};

// A block of `size` bytes from the calling thread's manager. Throws zuExMemory.
ZU_EXPORT void* zuCacheManager_alloc(unsigned int size);
// Frees a block from zuCacheManager_alloc (or any manager) on the thread that
// took it. Throws ZuExThrow(16479) for a block whose header names no pool.
ZU_EXPORT void zuCacheManager_free(void* block);
