// zuMemoryCache: a pool of fixed-size blocks, one raw area cut into equal
// blocks, with a free list. The building brick of zuCacheManager.
//
// Every block starts with a pointer-sized header holding the address of its
// pool, so that a block can be freed knowing nothing but its address. The
// caller's bytes follow the header and are 8-byte aligned (blocks are laid
// out in steps of 8 from a heap area).
//
//   zuMemoryCache* pool = zuMemoryCache::Create(32, 100, nullptr, nullptr);
//   void* bytes = pool->Take();              // null once all 100 are used
//   zuMemoryCache::FromBlock(bytes)->Give(bytes);
//   zuMemoryCache::Destroy(pool);
//
// Pools are normally made and released by zuCacheManager only, which also
// parks wholly free pools for reuse (see zuCacheManager.h). A pool is used by
// one thread and takes no lock.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zu/core/zuExport.h"

class zuCacheManager;
class zuMemoryCacheList;

class ZU_EXPORT zuMemoryCache {
 public:
  // The bytes in front of every block: the owning pool's address.
  static constexpr std::size_t kHeaderBytes = sizeof(void*);
  // Alignment of the caller's bytes.
  static constexpr std::size_t kAlignment = 8;

  // A pool of `blockCount` blocks (at least 1) of `blockSize` bytes each
  // (0 counts as 1), owned by `list` of `manager`. One heap allocation holds
  // the pool and all its blocks. Throws zuExMemory.
  static zuMemoryCache* Create(std::size_t blockSize, std::size_t blockCount,
                               zuMemoryCacheList* list, zuCacheManager* manager);
  // Frees the pool and its blocks, in use or not.
  static void Destroy(zuMemoryCache* pool);
  // Bytes of pool areas alive in the whole process (every manager's pools,
  // parked or not, and pools cut loose from a dead manager). Any thread.
  static std::size_t LiveAreaBytes();

  // The pool named in the header of a block handed out by Take(); null when
  // the header was cleared (the block was already given back).
  static zuMemoryCache* FromBlock(void* block) {
    return *reinterpret_cast<zuMemoryCache**>(static_cast<char*>(block) - kHeaderBytes);
  }

  // Pops a free block (lowest address first in a fresh pool) and writes
  // this pool into its header; null when every block is in use.
  void* Take() {
    char* block = freeHead_;
    if (block != nullptr) {
      freeHead_ = *reinterpret_cast<char**>(block);
    } else if (untouched_ < end_) {
      block = untouched_ + kHeaderBytes;
      untouched_ += stride_;
    } else {
      return nullptr;
    }
    *reinterpret_cast<zuMemoryCache**>(block - kHeaderBytes) = this;
    ++inUse_;
    return block;
  }

  // Pushes a block of this pool back on the free list and clears its
  // header, so that freeing it again is detected.
  void Give(void* block) {
    char* bytes = static_cast<char*>(block);
    *reinterpret_cast<zuMemoryCache**>(bytes - kHeaderBytes) = nullptr;
    *reinterpret_cast<char**>(bytes) = freeHead_;
    freeHead_ = bytes;
    --inUse_;
  }

  bool IsFull() const { return inUse_ == blockCount_; }
  std::size_t BlockSize() const { return blockSize_; }
  std::size_t BlockCount() const { return blockCount_; }
  std::size_t InUse() const { return inUse_; }
  // Bytes of the one allocation holding the pool and its blocks.
  std::size_t AreaBytes() const { return areaBytes_; }
  zuMemoryCacheList* List() const { return list_; }
  zuCacheManager* Manager() const { return manager_; }

  // Position in the owning list, kept by the list for constant-time removal.
  std::size_t ListIndex() const { return listIndex_; }
  void SetListIndex(std::size_t index) { listIndex_ = index; }
  // Cuts the pool loose from its list and manager; see zuCacheManager's
  // destructor.
  void Orphan() {
    list_ = nullptr;
    manager_ = nullptr;
    parked_ = false;
  }

  zuMemoryCache(const zuMemoryCache&) = delete;
  zuMemoryCache& operator=(const zuMemoryCache&) = delete;

 private:
  // The manager links the pools it parks (zuCacheManager::ParkPool).
  friend class zuCacheManager;

  zuMemoryCache(std::size_t blockSize, std::size_t blockCount, std::size_t areaBytes,
                std::size_t stride, char* area, zuMemoryCacheList* list, zuCacheManager* manager);
  ~zuMemoryCache() = default;

  std::size_t blockSize_;
  std::size_t blockCount_;
  std::size_t areaBytes_;  // the one allocation holding the pool and its blocks
  std::size_t stride_;     // header + block size rounded up to kAlignment
  std::size_t inUse_ = 0;
  // Blocks given back, most recent first; their first word links the next.
  char* freeHead_ = nullptr;
  // Blocks never handed out yet lie in [untouched_, end_), in address
  // order: the free list of a fresh pool, threaded as it is consumed.
  char* untouched_;
  char* end_;
  zuMemoryCacheList* list_;
  zuCacheManager* manager_;
  std::size_t listIndex_ = 0;
  // The manager's chain of parked pools, oldest first; parked_ while in it.
  zuMemoryCache* parkedOlder_ = nullptr;
  zuMemoryCache* parkedNewer_ = nullptr;
  bool parked_ = false;
};
