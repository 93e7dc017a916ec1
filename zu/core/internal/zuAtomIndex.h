// zuAtomIndex: the calling thread's one index over the atoms its lookups
// found, global and its own alike, so that looking up a known text is one
// probe instead of a walk through the global table and then the thread's.
//
// The tables stay what they are, the index only remembers their answers:
// a slot holds an atom and a 64-bit key of its text, and a hit is checked
// against the atom's own length and bytes (a retired atom never matches).
// The index is emptied when the global table gains an atom, which can
// shadow one of the thread's, or when any thread's atom table holder
// changes (see zuRememberedSlots.h), which can free the thread's atoms.
//
//   zuAtomIndex& index = zuAtomIndex::forCallingThread();
//   const uint64_t key = zuAtomIndex::keyOf(text, length);
//   zuAtomStore* atom = index.find(text, length, key);
//   if (atom == nullptr) index.insert(atom = slowLookUp(text), key);
#pragma once

#include <cstddef>
#include <cstdint>

#include <atomic>

#include "zu/core/internal/zuShortCopy.h"
#include "zu/core/internal/zuThreadMemo.h"
#include "zu/core/zuAtomStore.h"
#include "zu/runtime/internal/zuRememberedSlots.h"

class zuAtomTable;

namespace zu::internal {

// Raised each time the global table gains an atom.
inline std::atomic<uint64_t> gGlobalAtomGeneration{0};

class zuAtomIndex {
 public:
  zuAtomIndex() = default;
  ~zuAtomIndex();
  zuAtomIndex(const zuAtomIndex&) = delete;
  zuAtomIndex& operator=(const zuAtomIndex&) = delete;

  // The calling thread's index, emptied first when what it remembers may
  // be out of date. Read the index before looking in the tables, so that
  // a change while they are read is seen at the next call.
  static zuAtomIndex& forCallingThread() {
    zuAtomIndex& index = zuThreadMemo<zuAtomIndex>::get();
    const uint64_t slots = gRememberedSlotGeneration.load(std::memory_order_acquire);
    const uint64_t global = gGlobalAtomGeneration.load(std::memory_order_acquire);
    if (slots != index.slotGeneration_ || global != index.globalGeneration_) {
      index.restart(slots, global);
    }
    return index;
  }

  // The key of the `length` bytes of `text`.
  static uint64_t keyOf(const char* text, uint32_t length) {
    uint64_t key = length;
    uint32_t i = 0;
    for (; i + 8 <= length; i += 8) key = mix(key, loadWord<uint64_t>(text + i));
    if (i < length) {
      uint64_t tail = 0;
      if (length >= 8) {
        tail = loadWord<uint64_t>(text + length - 8);
      } else if (length >= 4) {
        tail = loadWord<uint32_t>(text) | uint64_t{loadWord<uint32_t>(text + length - 4)} << 32;
      } else {
        for (uint32_t k = 0; k < length; ++k) {
          tail = tail << 8 | static_cast<unsigned char>(text[k]);
        }
      }
      key = mix(key, tail);
    }
    return key ^ key >> 32;
  }

  // The remembered atom whose text is the `length` bytes of `text`, or null.
  zuAtomStore* find(const char* text, uint32_t length, uint64_t key) const {
    if (slots_ == nullptr) return nullptr;
    for (std::size_t at = key & mask_;; at = (at + 1) & mask_) {
      const Slot& slot = slots_[at];
      if (slot.atom == nullptr) return nullptr;
      if (slot.key == key && slot.atom->length == length &&
          sameBytes(slot.atom->text, text, length)) {
        return slot.atom;
      }
    }
  }
  // Remembers `atom` under `key`; without memory to grow, it is not
  // remembered. Throws nothing.
  void insert(zuAtomStore* atom, uint64_t key);

  // Called when `table` gains an atom: the global table's raises the
  // generation that empties every index.
  static void noteAtomEntered(const zuAtomTable* table);
  // The global table, once it exists, so that noteAtomEntered knows it.
  static void setGlobalTable(const zuAtomTable* table);

 private:
  struct Slot {
    uint64_t key;
    zuAtomStore* atom;
  };

  static constexpr uint64_t kMultiplier = 0x9E3779B97F4A7C15ull;
  static uint64_t mix(uint64_t key, uint64_t word) {
    const uint64_t mixed = (key ^ word) * kMultiplier;
    return mixed ^ mixed >> 29;
  }
  static bool sameBytes(const char* a, const char* b, uint32_t length);
  // Forgets every atom and takes the generations it now stands for.
  void restart(uint64_t slotGeneration, uint64_t globalGeneration);
  bool grow();

  Slot* slots_ = nullptr;
  std::size_t mask_ = 0;
  std::size_t count_ = 0;
  uint64_t slotGeneration_ = 0;
  uint64_t globalGeneration_ = 0;
};

// Words at a time, the last overlapping the one before; short texts in
// four-byte or single steps.
inline bool zuAtomIndex::sameBytes(const char* a, const char* b, uint32_t length) {
  auto word = [](const char* bytes) { return loadWord<uint64_t>(bytes); };
  if (length >= 8) {
    for (uint32_t i = 0; i + 8 < length; i += 8) {
      if (word(a + i) != word(b + i)) return false;
    }
    return word(a + length - 8) == word(b + length - 8);
  }
  for (uint32_t i = 0; i < length; ++i) {
    if (a[i] != b[i]) return false;
  }
  return true;
}

}  // namespace zu::internal
