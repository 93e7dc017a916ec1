#include "zu/runtime/zuCacheManager.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdlib>
#include <iterator>
#include <new>

#include "zu/core/zuMessageIds.h"
#include "zu/runtime/internal/zuRaise.h"
#include "zu/runtime/internal/zuRememberedSlots.h"
#include "zu/runtime/internal/zuThreadId.h"

namespace {

constexpr unsigned int kThreadListCapacity = 10;
constexpr unsigned int kThreadPoolBudget = 50000;
constexpr unsigned int kArenaStep = 8;

std::atomic<int> gCaching{1};
std::atomic<std::size_t> gManagers{0};

// The calling thread's manager, found without searching the thread table,
// and the slot generation it was found under (see zuRememberedSlots.h);
// kNoGeneration, which no generation reaches, while none is remembered, so
// that a matching generation alone vouches for the manager. The manager
// clears both when it dies on its own thread. Initial-exec keeps each lookup
// to one load relative to the thread pointer.
constexpr uint64_t kNoGeneration = ~uint64_t{0};
[[gnu::tls_model("initial-exec")]] thread_local zuCacheManager* tCallingThreadManager = nullptr;
[[gnu::tls_model("initial-exec")]] thread_local uint64_t tCallingThreadGeneration = kNoGeneration;

void* heapAlloc(unsigned int size) {
  void* block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) zu::internal::raiseOutOfMemory();
  return block;
}

// Adds to a vector, turning the runtime's allocation failure into ours.
template <typename T>
void reserveOneMore(std::vector<T>& items) {
  try {
    items.reserve(items.size() + 1);
  } catch (const std::bad_alloc&) {
    zu::internal::raiseOutOfMemory();
  }
}

unsigned int roundToStep(unsigned int size) {
  return (size + kArenaStep - 1) / kArenaStep * kArenaStep;
}

}  // namespace

void* zuCacheManager::ArenaInfo::Take(unsigned int size) {
  const unsigned int bytes = std::min(roundToStep(size), remaining);
  void* memory = base;
  base += bytes;
  remaining -= bytes;
  return memory;
}

zuCacheManager::zuCacheManager(unsigned int listCapacity, unsigned int poolBudget,
                               unsigned int threadId)
    : poolBudget_(poolBudget),
      threadId_(threadId != 0 ? threadId : zu::internal::currentThreadId()) {
  try {
    lists_.reserve(listCapacity);
  } catch (const std::bad_alloc&) {
    zu::internal::raiseOutOfMemory();
  }
  gManagers.fetch_add(1, std::memory_order_relaxed);
}

zuCacheManager::zuCacheManager(GlobalTag) : poolBudget_(0), threadId_(0), counted_(false) {}

zuCacheManager& zuCacheManager::GlobalManager() {
  static zuCacheManager manager{GlobalTag{}};
  return manager;
}

zuCacheManager::~zuCacheManager() {
  if (tCallingThreadManager == this) {
    tCallingThreadManager = nullptr;
    tCallingThreadGeneration = kNoGeneration;
  }
  if (counted_) gManagers.fetch_sub(1, std::memory_order_relaxed);
  // Deleting a list destroys its wholly free pools, parked or not, and cuts
  // loose those still in use.
  for (zuMemoryCacheList* list : lists_) delete list;
  for (std::size_t i = 0; i < spareListCount_; ++i) delete spareLists_[i];
  for (ArenaInfo* arena : arenas_) {
    std::free(arena->area);
    delete arena;
  }
  for (ArenaInfo* arena : fullArenas_) {
    std::free(arena->area);
    delete arena;
  }
}

zuCacheManager* zuCacheManager::getCacheManager(unsigned int threadId) {
  // The generation first: one that setCaching raised comes with its switch.
  const uint64_t generation =
      zu::internal::gRememberedSlotGeneration.load(std::memory_order_acquire);
  if (gCaching.load(std::memory_order_relaxed) == 0) return &GlobalManager();
  zuCacheManager* calling = tCallingThreadManager;
  if (calling != nullptr && tCallingThreadGeneration == generation &&
      (threadId == 0 || threadId == calling->threadId_)) {
    return calling;
  }
  auto* stored = static_cast<zuCacheManager*>(
      zuThreadLocalStorage::getThreadStorage(zuThreadLocalStorage::eCacheManager, threadId));
  zuCacheManager* manager = stored != nullptr ? stored : CreateForThread(threadId);
  if (manager->threadId_ == zu::internal::currentThreadId()) {
    tCallingThreadManager = manager;
    // The generation read before the lookup: a change since then is seen
    // at the next call.
    tCallingThreadGeneration = generation;
  }
  return manager;
}

zuCacheManager* zuCacheManager::CreateForThread(unsigned int threadId) {
  auto* manager =
      new (std::nothrow) zuCacheManager(kThreadListCapacity, kThreadPoolBudget, threadId);
  if (manager == nullptr) zu::internal::raiseOutOfMemory();
  zuThreadLocalStorage::setThreadStorage(zuThreadLocalStorage::eCacheManager, manager, threadId);
  return manager;
}

void* zuCacheManager::allocMemory(unsigned int size) {
  if (gCaching.load(std::memory_order_relaxed) == 0) return heapAlloc(size);
  if (size < kDirectSizes) {
    if (zuMemoryCache* pool = directFront_[size]) {
      if (void* block = pool->Take()) return block;
    }
  }
  return TakeFromList(size, 2ull * size);
}

void* zuCacheManager::allocMemoryMin(unsigned int& size, unsigned int maxSize) {
  if (gCaching.load(std::memory_order_relaxed) == 0) return heapAlloc(size);
  if (size < kDirectSizes) {
    if (zuMemoryCache* pool = directFront_[size]) {
      if (void* block = pool->Take()) {
        size = static_cast<unsigned int>(pool->BlockSize());
        return block;
      }
    }
  }
  const unsigned int requested = size;
  void* block = TakeFromList(requested, maxSize != 0 ? maxSize : 2ull * requested);
  size = static_cast<unsigned int>(zuMemoryCache::FromBlock(block)->BlockSize());
  return block;
}

void* zuCacheManager::TakeFromList(unsigned int size, unsigned long long maxSize) {
  zuMemoryCacheList* list = nullptr;
  if (size < kDirectSizes) {
    list = direct_[size];
  } else {
    const WideChoice& choice = wide_[std::bit_width(size)];
    if (choice.size == size && choice.maxSize == maxSize) list = choice.list;
  }
  if (list == nullptr) list = ChooseList(size, maxSize);
  void* block = list->Take();
  if (size < kDirectSizes) directFront_[size] = list->Front();
  return block;
}

zuMemoryCacheList* zuCacheManager::ChooseList(unsigned int size, unsigned long long maxSize) {
  // A request for nothing is served like one for a single byte.
  zuMemoryCacheList* list = FindOrAddList(size != 0 ? size : 1, std::max(maxSize, 1ull));
  if (size < kDirectSizes) {
    direct_[size] = list;
    list->NoteDirectSize(size);
  } else {
    wide_[std::bit_width(size)] = WideChoice{size, maxSize, list};
  }
  return list;
}

// The exact block size wins; else the smallest above `size` that does not
// exceed `maxSize`; else a new list of exactly `size`, kept in order.
zuMemoryCacheList* zuCacheManager::FindOrAddList(unsigned int size, unsigned long long maxSize) {
  const auto position = std::lower_bound(lists_.begin(), lists_.end(), size,
                                         [](const zuMemoryCacheList* list, unsigned int wanted) {
                                           return list->BlockSize() < wanted;
                                         });
  if (position != lists_.end() && (*position)->BlockSize() <= maxSize) return *position;

  const std::size_t blocksPerPool = poolBudget_ / size + (poolBudget_ % size != 0 ? 1 : 0);
  const std::ptrdiff_t index = position - lists_.begin();
  reserveOneMore(lists_);
  zuMemoryCacheList* list = nullptr;
  if (spareListCount_ != 0) {
    list = spareLists_[--spareListCount_];
    list->Reuse(size, blocksPerPool);
  } else {
    list = new (std::nothrow) zuMemoryCacheList(size, blocksPerPool, this);
    if (list == nullptr) zu::internal::raiseOutOfMemory();
  }
  lists_.insert(lists_.begin() + index, list);
  // A new list may be a better choice for a size remembered before.
  std::fill(std::begin(wide_), std::end(wide_), WideChoice{});
  return list;
}

void zuCacheManager::freeMemory(void* block) {
  if (block == nullptr) return;
  if (gCaching.load(std::memory_order_relaxed) == 0) {
    std::free(block);
    return;
  }
  zuMemoryCache* pool = zuMemoryCache::FromBlock(block);
  if (pool == nullptr) zu::internal::raiseMessage(zuMessageIds::kInvalidArgument);
  pool->Give(block);
  // A parked pool taken from and emptied again stays where it is.
  if (pool->InUse() == 0 && !pool->parked_) PoolEmptied(pool);
}

void zuCacheManager::PoolEmptied(zuMemoryCache* pool) {
  if (pool->List() == nullptr) {
    zuMemoryCache::Destroy(pool);
    return;
  }
  pool->Manager()->ParkPool(pool);
}

void zuCacheManager::ParkPool(zuMemoryCache* pool) {
  if (pool->AreaBytes() > kParkedBytes) {
    DropPool(pool);
    return;
  }
  pool->parked_ = true;
  pool->parkedOlder_ = parkedNewest_;
  pool->parkedNewer_ = nullptr;
  if (parkedNewest_ != nullptr) {
    parkedNewest_->parkedNewer_ = pool;
  } else {
    parkedOldest_ = pool;
  }
  parkedNewest_ = pool;
  parkedBytes_ += pool->AreaBytes();
  while (parkedBytes_ > kParkedBytes) {
    zuMemoryCache* oldest = parkedOldest_;
    UnlinkParked(oldest);
    // A pool taken from again since it was parked stays; it parks anew when
    // it is wholly free again.
    if (oldest->InUse() == 0) DropPool(oldest);
  }
}

void zuCacheManager::UnlinkParked(zuMemoryCache* pool) {
  (pool->parkedOlder_ != nullptr ? pool->parkedOlder_->parkedNewer_ : parkedOldest_) =
      pool->parkedNewer_;
  (pool->parkedNewer_ != nullptr ? pool->parkedNewer_->parkedOlder_ : parkedNewest_) =
      pool->parkedOlder_;
  pool->parkedOlder_ = nullptr;
  pool->parkedNewer_ = nullptr;
  pool->parked_ = false;
  parkedBytes_ -= pool->AreaBytes();
}

void zuCacheManager::DropPool(zuMemoryCache* pool) {
  zuMemoryCacheList* list = pool->List();
  ForgetPool(list, pool);
  if (list->PoolCount() == 1) {
    UnlinkList(list);
    RetireList(list);
  } else {
    list->Release(pool);
  }
}

void zuCacheManager::RetireList(zuMemoryCacheList* list) {
  while (list->PoolCount() != 0) list->Release(list->Front());
  if (spareListCount_ < kSpareLists) {
    spareLists_[spareListCount_++] = list;
  } else {
    delete list;
  }
}

void zuCacheManager::ForgetPool(const zuMemoryCacheList* list, const zuMemoryCache* pool) {
  const std::size_t last = std::min<std::size_t>(list->BlockSize(), kDirectSizes - 1);
  for (std::size_t size = list->LowestDirectSize(); size <= last; ++size) {
    if (directFront_[size] == pool) directFront_[size] = nullptr;
  }
}

void zuCacheManager::UnlinkList(zuMemoryCacheList* list) {
  lists_.erase(std::find(lists_.begin(), lists_.end(), list));
  for (WideChoice& choice : wide_) {
    if (choice.list == list) choice = WideChoice{};
  }
  // A list is remembered only for requested sizes up to its block size.
  const std::size_t last = std::min<std::size_t>(list->BlockSize(), kDirectSizes - 1);
  for (std::size_t size = list->LowestDirectSize(); size <= last; ++size) {
    if (direct_[size] == list) direct_[size] = nullptr;
  }
}

zuCacheManager::ArenaInfo* zuCacheManager::getArena(unsigned int size) {
  if (size >= kArenaBytes) return NewArena(size, 1);
  const unsigned int needed = roundToStep(size);
  for (std::size_t index = arenas_.size(); index-- > 0;) {
    ArenaInfo* arena = arenas_[index];
    if (arena->remaining >= needed) return arena;
    if (arena->remaining < kArenaSlack) {
      arena->full = 1;
      reserveOneMore(fullArenas_);
      fullArenas_.push_back(arena);
      arenas_.erase(arenas_.begin() + static_cast<std::ptrdiff_t>(index));
    }
  }
  return NewArena(kArenaBytes, 0);
}

zuCacheManager::ArenaInfo* zuCacheManager::NewArena(unsigned int size, int full) {
  std::vector<ArenaInfo*>& owner = full ? fullArenas_ : arenas_;
  reserveOneMore(owner);
  char* area = static_cast<char*>(std::malloc(size));
  if (area == nullptr) zu::internal::raiseOutOfMemory();
  auto* arena = new (std::nothrow) ArenaInfo{area, area, size, full};
  if (arena == nullptr) {
    std::free(area);
    zu::internal::raiseOutOfMemory();
  }
  owner.push_back(arena);
  return arena;
}

void zuCacheManager::setCaching(int caching) {
  gCaching.store(caching != 0 ? 1 : 0, std::memory_order_relaxed);
  // Another manager serves the threads now: the remembered ones are no
  // longer trusted, which keeps the switch off the allocation fast path.
  zu::internal::noteRememberedSlotChange();
}

std::size_t zuCacheManager::ManagerCount() {
  return gManagers.load(std::memory_order_relaxed);
}

int zuCacheManager::getCaching() {
  return gCaching.load(std::memory_order_relaxed);
}

void* zuCacheManager::AllocateForCallingThread(unsigned int size) {
  unsigned int ownerThreadId = 0;
  return AllocateForCallingThread(size, ownerThreadId);
}

void* zuCacheManager::AllocateForCallingThread(unsigned int size, unsigned int& ownerThreadId) {
  // The common case in a few instructions, without saving registers: the
  // remembered manager, still valid (so caching is on), has a pool for the
  // size with a block.
  if (tCallingThreadGeneration ==
      zu::internal::gRememberedSlotGeneration.load(std::memory_order_acquire)) {
    zuCacheManager* calling = tCallingThreadManager;
    if (size < kDirectSizes) {
      if (zuMemoryCache* pool = calling->directFront_[size]) {
        if (void* block = pool->Take()) {
          ownerThreadId = calling->threadId_;
          return block;
        }
      }
    }
    return calling->TakeForCallingThread(size, ownerThreadId);
  }
  return AllocateSlowly(size, ownerThreadId);
}

void* zuCacheManager::TakeForCallingThread(unsigned int size, unsigned int& ownerThreadId) {
  ownerThreadId = threadId_;
  return TakeFromList(size, 2ull * size);
}

void* zuCacheManager::AllocateSlowly(unsigned int size, unsigned int& ownerThreadId) {
  zuCacheManager* manager = getCacheManager(0);
  ownerThreadId = manager->threadId_;
  return manager->allocMemory(size);
}

void* zuCacheManager_alloc(unsigned int size) {
  return zuCacheManager::AllocateForCallingThread(size);
}

void zuCacheManager_free(void* block) {
  zuCacheManager::freeMemory(block);
}
