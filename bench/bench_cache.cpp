// The per-thread block cache against the C library's allocator (and
// mimalloc when the build found it), and zuString with caching on against
// caching off, where every string block comes from the heap.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <vector>

#include "zu/core/zuString.h"
#include "zu/runtime/zuCacheManager.h"

#ifdef ZU_BENCH_MIMALLOC
#include <dlfcn.h>
#include <mimalloc.h>
#endif

namespace {

// Block sizes from 16 to 256 bytes in a fixed, irregular order.
std::vector<unsigned int> makeSizes(std::size_t count) {
  std::vector<unsigned int> sizes(count);
  unsigned int state = 12345;
  for (unsigned int& size : sizes) {
    state = state * 1103515245u + 12345u;
    size = 16 + (state >> 16) % 241;
  }
  return sizes;
}

struct CacheAllocator {
  static void* Alloc(unsigned int size) { return zuCacheManager_alloc(size); }
  static void Free(void* block) { zuCacheManager_free(block); }
};

struct GlibcAllocator {
  static void* Alloc(unsigned int size) { return std::malloc(size); }
  static void Free(void* block) { std::free(block); }
};

#ifdef ZU_BENCH_MIMALLOC
// Loaded privately so that it does not replace malloc for the whole process,
// which would turn the glibc peer and the heap path into mimalloc too.
struct MimallocAllocator {
  using AllocFn = decltype(&mi_malloc);
  using FreeFn = decltype(&mi_free);
  static AllocFn alloc;
  static FreeFn free;
  static bool Load() {
    void* library = dlopen(ZU_BENCH_MIMALLOC, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) return false;
    alloc = reinterpret_cast<AllocFn>(dlsym(library, "mi_malloc"));
    free = reinterpret_cast<FreeFn>(dlsym(library, "mi_free"));
    return alloc != nullptr && free != nullptr;
  }
  static void* Alloc(unsigned int size) { return alloc(size); }
  static void Free(void* block) { free(block); }
};
MimallocAllocator::AllocFn MimallocAllocator::alloc = nullptr;
MimallocAllocator::FreeFn MimallocAllocator::free = nullptr;
const bool kMimallocLoaded = MimallocAllocator::Load();
#endif

// A working set of 1,024 live blocks; each step frees the oldest and takes
// a new one, as a program that keeps building and dropping small objects.
template <typename Allocator>
void BM_BlockRing(benchmark::State& state) {
  // Powers of two, so that the loop's own indexing is a mask, not a division
  // that would weigh on both allocators alike.
  constexpr std::size_t kLive = 1024;
  constexpr std::size_t kSizes = 4096;
  const std::vector<unsigned int> sizes = makeSizes(kSizes);
  std::vector<void*> live(kLive);
  for (std::size_t index = 0; index < kLive; ++index) live[index] = Allocator::Alloc(sizes[index]);
  std::size_t step = 0;
  for (auto _ : state) {
    const std::size_t slot = step % kLive;
    Allocator::Free(live[slot]);
    live[slot] = Allocator::Alloc(sizes[step % kSizes]);
    benchmark::DoNotOptimize(live[slot]);
    ++step;
  }
  for (void* block : live) Allocator::Free(block);
  state.SetItemsProcessed(state.iterations());
}

// 1,000 blocks taken, then all freed: pools are made and released each round.
template <typename Allocator>
void BM_BlockBatch(benchmark::State& state) {
  const std::vector<unsigned int> sizes = makeSizes(1000);
  std::vector<void*> blocks(sizes.size());
  for (auto _ : state) {
    for (std::size_t index = 0; index < sizes.size(); ++index) {
      blocks[index] = Allocator::Alloc(sizes[index]);
    }
    benchmark::DoNotOptimize(blocks.data());
    for (void* block : blocks) Allocator::Free(block);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(sizes.size()));
}

// One block taken and freed at a time while no other block of the thread is
// alive: the worst case of the cache, whose pool is made and released each time.
template <typename Allocator>
void BM_BlockAlone(benchmark::State& state) {
  constexpr std::size_t kSizes = 256;
  const std::vector<unsigned int> sizes = makeSizes(kSizes);
  std::size_t step = 0;
  for (auto _ : state) {
    void* block = Allocator::Alloc(sizes[step++ % kSizes]);
    benchmark::DoNotOptimize(block);
    Allocator::Free(block);
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK_TEMPLATE(BM_BlockRing, CacheAllocator)->Name("BlockRing/ours");
BENCHMARK_TEMPLATE(BM_BlockRing, GlibcAllocator)->Name("BlockRing/glibc_malloc");
BENCHMARK_TEMPLATE(BM_BlockBatch, CacheAllocator)->Name("BlockBatch/ours");
BENCHMARK_TEMPLATE(BM_BlockBatch, GlibcAllocator)->Name("BlockBatch/glibc_malloc");
BENCHMARK_TEMPLATE(BM_BlockAlone, CacheAllocator)->Name("BlockAlone/ours");
BENCHMARK_TEMPLATE(BM_BlockAlone, GlibcAllocator)->Name("BlockAlone/glibc_malloc");
#ifdef ZU_BENCH_MIMALLOC
BENCHMARK_TEMPLATE(BM_BlockRing, MimallocAllocator)->Name("BlockRing/mimalloc");
BENCHMARK_TEMPLATE(BM_BlockBatch, MimallocAllocator)->Name("BlockBatch/mimalloc");
BENCHMARK_TEMPLATE(BM_BlockAlone, MimallocAllocator)->Name("BlockAlone/mimalloc");
#endif

// Switches the string blocks' source for one benchmark; no block crosses it.
class CachingScope {
 public:
  explicit CachingScope(int caching) { zuCacheManager::setCaching(caching); }
  ~CachingScope() { zuCacheManager::setCaching(1); }
  CachingScope(const CachingScope&) = delete;
  CachingScope& operator=(const CachingScope&) = delete;
};

// One string built from 200 short appends, then dropped.
template <int kCaching>
void BM_StringAppend(benchmark::State& state) {
  CachingScope caching(kCaching);
  for (auto _ : state) {
    zuString text;
    for (int part = 0; part < 200; ++part) text += "word ";
    benchmark::DoNotOptimize(text.Length());
  }
}

// 256 live strings; each step rebuilds one from appends and copies it.
template <int kCaching>
void BM_StringWorkingSet(benchmark::State& state) {
  CachingScope caching(kCaching);
  std::vector<zuString> live(256);
  std::size_t step = 0;
  for (auto _ : state) {
    zuString text("item ");
    for (std::size_t part = 0; part < 4 + step % 12; ++part) text += "part ";
    zuString copy = text;
    copy += '!';
    live[step % live.size()] = copy;
    ++step;
  }
}

BENCHMARK_TEMPLATE(BM_StringAppend, 1)->Name("StringAppend/ours");
BENCHMARK_TEMPLATE(BM_StringAppend, 0)->Name("StringAppend/heap");
BENCHMARK_TEMPLATE(BM_StringWorkingSet, 1)->Name("StringWorkingSet/ours");
BENCHMARK_TEMPLATE(BM_StringWorkingSet, 0)->Name("StringWorkingSet/heap");

}  // namespace
