// zuThreadLocalStorage: fixed per-thread slots in a table keyed by thread id.
//
// Each thread that asks owns 14 slots, one per library subsystem that keeps
// a per-thread cache (converters, locales, atoms, the block cache, ...). A
// slot holds a zuThreadStorage, which the table destroys through its virtual
// destructor. Every holder follows the same pattern:
//
//   auto* atoms = static_cast<AtomTable*>(zuThreadLocalStorage::getThreadStorage(
//       zuThreadLocalStorage::eAtomTable));
//   if (atoms == nullptr) {
//     atoms = new AtomTable;               // zuExMemory when that fails
//     zuThreadLocalStorage::setThreadStorage(zuThreadLocalStorage::eAtomTable, atoms);
//   }
//
// A thread's entry, and every object in its slots, is released when the
// thread exits, whoever created the thread (a library zuThread, std::thread
// or plain pthread_create): the first entry a thread gets registers an exit
// hook. Linux hands out thread ids again quickly; because the release runs in
// the exiting thread itself, a later thread with the same id always starts
// with empty slots.
//
// Lookups scan the table without a lock; only creating an entry (and
// appending a block of entries) takes the table's mutex. Slot contents belong
// to their thread: reading another thread's slot is allowed but not
// synchronised, and is meant for objects the owner no longer changes.
#pragma once

#include "zu/core/zuExport.h"

// The base of every object kept in a slot. Slots are released through the
// virtual destructor.
class ZU_EXPORT zuThreadStorage {
 public:
  virtual ~zuThreadStorage();
};

class ZU_EXPORT zuThreadLocalStorage {
 public:
  // The slots, named after their holders; the enumerator is the slot number.
  enum eCacheType {
    eUnusedSlot0 = 0,
    eUnusedSlot1 = 1,
    eCharConverterCache = 2,  // character-converter cache
    eLocaleCache = 3,         // per-thread locale registry
    eLocaleRuntimeData = 4,   // locale run-time data
    eUnusedSlot5 = 5,
    eFileIdState = 6,  // file-identifier state
    eUnusedSlot7 = 7,
    eResourceLoader = 8,  // the message loader's secondary catalogues
    eUnusedSlot9 = 9,
    eAtomTable = 10,     // the thread's run-time atoms
    eCacheManager = 11,  // the thread's block cache
    eTraceHandler = 12,  // trace handler holder
    eUnusedSlot13 = 13,
    eCacheTypeCount = 14  // number of slots; not a slot
  };

  // In every function below a thread id of 0 means the calling thread, and a
  // slot number of 14 or more throws ZuExThrow(16479).

  // The kernel id of the calling thread (never 0).
  static unsigned int getThreadId();

  // The object in `slot` of the thread, null when the slot is empty. The
  // first query of a thread creates its (empty) entry and returns null.
  // Throws zuExMemory when the entry cannot be allocated.
  static zuThreadStorage* getThreadStorage(eCacheType slot, unsigned int threadId = 0);

  // Stores `value` in `slot` (the table takes ownership). Does nothing when
  // the thread has no entry yet: get first, then set.
  static void setThreadStorage(eCacheType slot, zuThreadStorage* value, unsigned int threadId = 0);

  // Destroys the object in `slot` and clears the slot.
  static void resetThreadStorage(eCacheType slot, unsigned int threadId = 0);

  // Releases the thread's entry and destroys every object in its slots (the
  // block cache last, since the other holders return blocks to it). Called
  // automatically when a thread exits; calling it earlier is allowed, and a
  // later query simply creates a fresh entry.
  static void resetThreadStorage(unsigned int threadId);

  zuThreadLocalStorage();
  // Destroys the slot objects only when the destroy-slots flag is set.
  // Releasing a thread's entry always sets it, so slot objects never outlive
  // their thread; it stays 0 while the storage is in use.
  ~zuThreadLocalStorage();
  zuThreadLocalStorage(const zuThreadLocalStorage&) = delete;
  zuThreadLocalStorage& operator=(const zuThreadLocalStorage&) = delete;

  zuThreadStorage* Slot(eCacheType slot) const { return slots_[slot]; }
  void Slot(eCacheType slot, zuThreadStorage* value) { slots_[slot] = value; }
  int DestroySlots() const { return destroySlots_; }
  void DestroySlots(int destroy) { destroySlots_ = destroy; }

 private:
  int destroySlots_ = 0;
  zuThreadStorage* slots_[eCacheTypeCount] = {};
};
