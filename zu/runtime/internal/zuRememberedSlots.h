// A count of the changes to the thread-local slots whose objects threads
// remember directly (the block cache manager, the converter cache, the atom
// table holder) or whose absence they remember (the locale registry and the
// run-time locale data).
//
// A thread keeps a direct pointer to its own object in such a slot, or the
// knowledge that the slot is empty, so that a hot path need not search the
// thread table. The slot can change under
// it: setThreadStorage may put another object there and resetThreadStorage
// may destroy the object, also from another thread while the owner waits,
// and switching the block cache on or off changes which manager serves a
// thread. Each such change raises this count, and a remembered pointer is trusted
// only while the count is the one it was taken under.
#pragma once

#include <atomic>
#include <cstdint>

#include "zu/runtime/zuThreadLocalStorage.h"

namespace zu::internal {

inline std::atomic<uint64_t> gRememberedSlotGeneration{0};

inline bool isRememberedSlot(zuThreadLocalStorage::eCacheType slot) {
  return slot == zuThreadLocalStorage::eCacheManager ||
         slot == zuThreadLocalStorage::eCharConverterCache ||
         slot == zuThreadLocalStorage::eAtomTable || slot == zuThreadLocalStorage::eLocaleCache ||
         slot == zuThreadLocalStorage::eLocaleRuntimeData;
}

inline void noteRememberedSlotChange() {
  gRememberedSlotGeneration.fetch_add(1, std::memory_order_acq_rel);
}

}  // namespace zu::internal
