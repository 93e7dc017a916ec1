// A count of the changes to any thread's block cache slot.
//
// A thread keeps a direct pointer to its own block cache manager so that an
// allocation need not search the thread table. The slot can change under it:
// setThreadStorage may put another object there and resetThreadStorage may
// destroy the manager, also from another thread while the owner waits. Each
// such change raises this count, and the pointer is trusted only while the
// count is the one it was taken under.
#pragma once

#include <atomic>
#include <cstdint>

namespace zu::internal {

inline std::atomic<uint64_t> gCacheSlotGeneration{0};

inline void noteCacheSlotChange() {
  gCacheSlotGeneration.fetch_add(1, std::memory_order_acq_rel);
}

}  // namespace zu::internal
