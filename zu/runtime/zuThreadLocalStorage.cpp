#include "zu/runtime/zuThreadLocalStorage.h"

#include "zu/core/zuMessageIds.h"
#include "zu/runtime/internal/zuRaise.h"
#include "zu/runtime/internal/zuRememberedSlots.h"
#include "zu/runtime/internal/zuThreadExitHook.h"
#include "zu/runtime/internal/zuThreadId.h"
#include "zu/runtime/internal/zuThreadTable.h"

namespace {

using zu::internal::ThreadTable;

// A slot destructor may fill a slot again (a holder that needs another one
// while it shuts down); the slots are swept until empty, a bounded number of
// times.
constexpr int kMaxDestroyPasses = 4;

void checkSlot(zuThreadLocalStorage::eCacheType slot) {
  if (static_cast<unsigned int>(slot) >= zuThreadLocalStorage::eCacheTypeCount) {
    zu::internal::raiseMessage(zuMessageIds::kInvalidArgument);
  }
}

unsigned int resolve(unsigned int threadId) {
  return threadId != 0 ? threadId : zu::internal::currentThreadId();
}

void destroySlot(zuThreadLocalStorage& storage, zuThreadLocalStorage::eCacheType slot) {
  zuThreadStorage* object = storage.Slot(slot);
  if (object == nullptr) return;
  // Cleared first, so a lookup from inside the destructor never sees it.
  storage.Slot(slot, nullptr);
  if (zu::internal::isRememberedSlot(slot)) zu::internal::noteRememberedSlotChange();
  delete object;
}

bool hasSlotObjects(const zuThreadLocalStorage& storage) {
  for (int slot = 0; slot < zuThreadLocalStorage::eCacheTypeCount; ++slot) {
    if (storage.Slot(static_cast<zuThreadLocalStorage::eCacheType>(slot)) != nullptr) return true;
  }
  return false;
}

// In slot order, the block cache last: the other holders keep strings whose
// blocks go back to it as they are destroyed.
void destroySlotObjects(zuThreadLocalStorage& storage) {
  for (int pass = 0; pass < kMaxDestroyPasses && hasSlotObjects(storage); ++pass) {
    for (int slot = 0; slot < zuThreadLocalStorage::eCacheTypeCount; ++slot) {
      if (slot == zuThreadLocalStorage::eCacheManager) continue;
      destroySlot(storage, static_cast<zuThreadLocalStorage::eCacheType>(slot));
    }
    destroySlot(storage, zuThreadLocalStorage::eCacheManager);
  }
}

}  // namespace

zuThreadStorage::~zuThreadStorage() = default;

zuThreadLocalStorage::zuThreadLocalStorage() = default;

zuThreadLocalStorage::~zuThreadLocalStorage() {
  if (destroySlots_ != 0) destroySlotObjects(*this);
}

unsigned int zuThreadLocalStorage::getThreadId() {
  return zu::internal::currentThreadId();
}

zuThreadStorage* zuThreadLocalStorage::getThreadStorage(eCacheType slot, unsigned int threadId) {
  checkSlot(slot);
  const unsigned int self = zu::internal::currentThreadId();
  const unsigned int owner = threadId != 0 ? threadId : self;
  ThreadTable& table = ThreadTable::instance();
  bool memoized = false;
  zuThreadLocalStorage* storage =
      owner == self ? table.findCurrent(self, memoized) : table.find(owner);
  if (memoized) return storage->Slot(slot);
  if (storage == nullptr) {
    storage = table.findOrCreate(owner);
  }
  // Also adopts an entry another thread made for this one before it ran.
  if (owner == self) zu::internal::watchThreadExit();
  return storage->Slot(slot);
}

void zuThreadLocalStorage::setThreadStorage(eCacheType slot, zuThreadStorage* value,
                                            unsigned int threadId) {
  checkSlot(slot);
  zuThreadLocalStorage* storage = ThreadTable::instance().find(resolve(threadId));
  if (storage == nullptr) return;
  if (zu::internal::isRememberedSlot(slot)) zu::internal::noteRememberedSlotChange();
  storage->Slot(slot, value);
}

void zuThreadLocalStorage::resetThreadStorage(eCacheType slot, unsigned int threadId) {
  checkSlot(slot);
  zuThreadLocalStorage* storage = ThreadTable::instance().find(resolve(threadId));
  if (storage != nullptr) destroySlot(*storage, slot);
}

void zuThreadLocalStorage::resetThreadStorage(unsigned int threadId) {
  const unsigned int owner = resolve(threadId);
  ThreadTable& table = ThreadTable::instance();
  zuThreadLocalStorage* storage = table.find(owner);
  if (storage == nullptr) return;
  // The slot objects go while the entry still exists, so that holders that
  // reach for the thread's block cache as they are destroyed still find it.
  destroySlotObjects(*storage);
  storage = table.release(owner);
  if (storage != nullptr) {
    storage->DestroySlots(1);
    delete storage;
  }
  if (owner == zu::internal::currentThreadId()) zu::internal::unwatchThreadExit();
}
