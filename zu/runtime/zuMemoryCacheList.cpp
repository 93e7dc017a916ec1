#include "zu/runtime/zuMemoryCacheList.h"
#include "zu/runtime/internal/zuRaise.h"

#include <new>
#include <utility>

zuMemoryCacheList::zuMemoryCacheList(std::size_t blockSize, std::size_t poolBlockCount,
                                     zuCacheManager* manager)
    : blockSize_(blockSize), poolBlockCount_(poolBlockCount), manager_(manager) {}

zuMemoryCacheList::~zuMemoryCacheList() {
  for (zuMemoryCache* pool : pools_) {
    if (pool->InUse() == 0) {
      zuMemoryCache::Destroy(pool);
    } else {
      pool->Orphan();
    }
  }
}

void* zuMemoryCacheList::TakeFromAnotherPool() {
  for (std::size_t index = 1; index < pools_.size(); ++index) {
    if (!pools_[index]->IsFull()) {
      MoveToFront(index);
      return pools_.front()->Take();
    }
  }
  try {
    pools_.reserve(pools_.size() + 1);
  } catch (const std::bad_alloc&) {
    zu::internal::raiseOutOfMemory();
  }
  zuMemoryCache* pool = zuMemoryCache::Create(blockSize_, poolBlockCount_, this, manager_);
  pools_.push_back(pool);
  if (pools_.size() == 1) {
    front_ = pool;
  } else {
    pool->SetListIndex(pools_.size() - 1);
    MoveToFront(pools_.size() - 1);
  }
  return pool->Take();
}

void zuMemoryCacheList::MoveToFront(std::size_t index) {
  std::swap(pools_[0], pools_[index]);
  pools_[0]->SetListIndex(0);
  pools_[index]->SetListIndex(index);
  front_ = pools_[0];
}

bool zuMemoryCacheList::Release(zuMemoryCache* pool) {
  const std::size_t index = pool->ListIndex();
  pools_[index] = pools_.back();
  pools_[index]->SetListIndex(index);
  pools_.pop_back();
  front_ = pools_.empty() ? nullptr : pools_[0];
  zuMemoryCache::Destroy(pool);
  return pools_.empty();
}
