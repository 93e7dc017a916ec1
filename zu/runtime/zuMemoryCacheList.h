// zuMemoryCacheList: every pool of one block size in a zuCacheManager.
//
// The pool that last had room is kept in front, so that taking a block is
// usually one pop from the front pool. When every pool is full a new pool
// is made and put in front. The manager decides when a wholly free pool is
// released (zuCacheManager.h); the list's last pool then takes its place.
//
//   zuMemoryCacheList list(40, 1250, manager);
//   void* bytes = list.Take();               // 40 usable bytes
//   zuCacheManager::freeMemory(bytes);
//
// Made and owned by zuCacheManager; used by its thread only, without locks.
#pragma once

#include <cstddef>
#include <vector>

#include "zu/core/zuExport.h"
#include "zu/runtime/zuMemoryCache.h"

class ZU_EXPORT zuMemoryCacheList {
 public:
  // Pools of `poolBlockCount` blocks of `blockSize` bytes, for `manager`.
  // The list starts without pools.
  zuMemoryCacheList(std::size_t blockSize, std::size_t poolBlockCount, zuCacheManager* manager);
  // Destroys the wholly free pools; pools with blocks still in use are cut
  // loose and die when their last block is freed.
  ~zuMemoryCacheList();
  zuMemoryCacheList(const zuMemoryCacheList&) = delete;
  zuMemoryCacheList& operator=(const zuMemoryCacheList&) = delete;

  // A block from the front pool, or from the first pool with room (which
  // then moves to the front), or from a new pool put in front.
  // Throws zuExMemory.
  void* Take() {
    if (front_ != nullptr) {
      if (void* block = front_->Take()) return block;
    }
    return TakeFromAnotherPool();
  }

  // Makes an unlinked list without pools serve a block size as if new.
  void Reuse(std::size_t blockSize, std::size_t poolBlockCount) {
    blockSize_ = blockSize;
    poolBlockCount_ = poolBlockCount;
    lowestDirectSize_ = static_cast<std::size_t>(-1);
  }

  // Destroys `pool`, which belongs to this list and has no block in use;
  // the last pool moves into its place. Returns true when no pool is left.
  bool Release(zuMemoryCache* pool);

  std::size_t BlockSize() const { return blockSize_; }
  // The front pool; null while the list has none.
  zuMemoryCache* Front() const { return front_; }
  std::size_t PoolBlockCount() const { return poolBlockCount_; }
  std::size_t PoolCount() const { return pools_.size(); }
  // The pool at `index` (0: the front); index < PoolCount().
  const zuMemoryCache* Pool(std::size_t index) const { return pools_[index]; }

  // The smallest requested size that the manager's direct table maps to this
  // list, so that removing the list clears only the entries it can have.
  std::size_t LowestDirectSize() const { return lowestDirectSize_; }
  void NoteDirectSize(std::size_t size) {
    if (size < lowestDirectSize_) lowestDirectSize_ = size;
  }

 private:
  void* TakeFromAnotherPool();
  void MoveToFront(std::size_t index);

  std::size_t blockSize_;
  std::size_t poolBlockCount_;
  zuCacheManager* manager_;
  std::vector<zuMemoryCache*> pools_;
  // pools_.front(), or null: spares Take() a load through the vector.
  zuMemoryCache* front_ = nullptr;
  std::size_t lowestDirectSize_ = static_cast<std::size_t>(-1);
};
