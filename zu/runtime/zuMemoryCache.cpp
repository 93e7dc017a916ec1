#include "zu/runtime/zuMemoryCache.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

#include "zu/runtime/internal/zuRaise.h"

namespace {

constexpr std::size_t roundUp(std::size_t value, std::size_t step) {
  return (value + step - 1) / step * step;
}

// The pool object sits at the start of its own area; the blocks follow.
constexpr std::size_t kPoolBytes = roundUp(sizeof(zuMemoryCache), 16);

// Pools are made and released seldom (wholly free ones are parked first), so
// one process-wide count costs nothing on the paths that take blocks.
std::atomic<std::size_t> gLiveAreaBytes{0};

}  // namespace

zuMemoryCache::zuMemoryCache(std::size_t blockSize, std::size_t blockCount, std::size_t areaBytes,
                             std::size_t stride, char* area, zuMemoryCacheList* list,
                             zuCacheManager* manager)
    : blockSize_(blockSize),
      blockCount_(blockCount),
      areaBytes_(areaBytes),
      stride_(stride),
      untouched_(area),
      end_(area + blockCount * stride),
      list_(list),
      manager_(manager) {}

zuMemoryCache* zuMemoryCache::Create(std::size_t blockSize, std::size_t blockCount,
                                     zuMemoryCacheList* list, zuCacheManager* manager) {
  if (blockSize == 0) blockSize = 1;
  if (blockCount == 0) blockCount = 1;
  constexpr std::size_t kMax = std::numeric_limits<std::size_t>::max();
  if (blockSize > kMax / 2) zu::internal::raiseOutOfMemory();
  // A free block keeps its free-list link in its first word.
  const std::size_t payload =
      roundUp(blockSize < sizeof(char*) ? sizeof(char*) : blockSize, kAlignment);
  const std::size_t stride = kHeaderBytes + payload;
  std::size_t blockBytes = 0;
  if (__builtin_mul_overflow(blockCount, stride, &blockBytes) || blockBytes > kMax - kPoolBytes) {
    zu::internal::raiseOutOfMemory();
  }
  const std::size_t areaBytes = kPoolBytes + blockBytes;
  void* memory = std::malloc(areaBytes);
  if (memory == nullptr) zu::internal::raiseOutOfMemory();
  gLiveAreaBytes.fetch_add(areaBytes, std::memory_order_relaxed);
  char* area = static_cast<char*>(memory) + kPoolBytes;
  return new (memory) zuMemoryCache(blockSize, blockCount, areaBytes, stride, area, list, manager);
}

void zuMemoryCache::Destroy(zuMemoryCache* pool) {
  gLiveAreaBytes.fetch_sub(pool->areaBytes_, std::memory_order_relaxed);
  pool->~zuMemoryCache();
  std::free(pool);
}

std::size_t zuMemoryCache::LiveAreaBytes() {
  return gLiveAreaBytes.load(std::memory_order_relaxed);
}
