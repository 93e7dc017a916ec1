// zuAtomTable: a hash table of atoms, and the lookups that make run-time atoms.
//
// There is one library-wide table, filled at start-up with the atoms modules
// declare statically (see zuAtomInitializer) and only read afterwards, and
// one table per thread for atoms made at run time. A lookup tries the global
// table first, then the calling thread's, so neither needs a lock. Equal
// texts give the same atom within one thread, and everywhere for atoms
// declared at start-up; two threads making the same new text get different
// atoms.
//
//   zuAtomStore* name = zuAtomTable::getAtom("fontSize", 0);
//   assert(zuAtomTable::getAtom("fontSize", 0) == name);   // same thread
//   assert(zuAtomTable::peekAtom("neverSeen", 0) == nullptr);
//
// A table starts with 4,096 buckets; when its atom count reaches three
// quarters of the bucket count it doubles and re-enters every atom.
#pragma once

#include <cstdint>

#include "zu/core/zuAtomStore.h"
#include "zu/core/zuExport.h"

class ZU_EXPORT zuAtomTable {
 public:
  // The text a retired atom is given when an equal atom was already entered.
  static constexpr const char* kRemappedText =
      "Atom was remapped!!  See zuAtomTable::initializeAtom";

  // An empty table of 4,096 buckets. Throws zuExMemory.
  zuAtomTable();
  // Frees the bucket array; the atoms themselves belong to whoever made them.
  ~zuAtomTable();
  zuAtomTable(const zuAtomTable&) = delete;
  zuAtomTable& operator=(const zuAtomTable&) = delete;

  // --- Lookups through the global and the per-thread tables -----------------
  // `threadId` names the thread whose table is used (0: the calling thread).
  // Using another running thread's table is not synchronised.

  // The atom of `text`, made in the thread's table when it is in neither
  // table. The atom lives as long as the thread's storage. Throws
  // ZuExThrow(16479) for a null text or when the thread has no table,
  // zuExMemory when the atom cannot be stored.
  static zuAtomStore* getAtom(const char* text, unsigned int threadId);
  // The atom of `text` if either table has it, else null. Makes nothing.
  static zuAtomStore* peekAtom(const char* text, unsigned int threadId);
  // The predefined atom of "" (aUT_EmptyString).
  static zuAtomStore* emptyString();

  // --- This table -----------------------------------------------------------

  // Enters `atom` (its text set by the caller) into this table, computing its
  // length and hash. When an equal atom is already there, `atom` is retired
  // (its text becomes kRemappedText, its length and hash all ones) and the
  // variable is redirected to the atom already entered. Entering an atom
  // that is itself in the table changes nothing. Throws ZuExThrow(16479)
  // for a null atom or text, zuExMemory when growing fails. Not locked.
  void initializeAtom(zuAtomStore*& atom);
  // initializeAtom for each variable of a null-terminated list of atom
  // variables; a null list does nothing.
  void initializeAtoms(zuAtomStore** const* list);
  // The entered atom with this hash, length and bytes, or null.
  zuAtomStore* findInTable(const char* text, unsigned int hash, unsigned int length) const;

  // Writes the table to `file` as UTF-8 text, replacing it: a header line
  //   zuAtomTable<TAB>buckets=4096<TAB>atoms=3<TAB>threshold=3071
  // then one line per atom, buckets in ascending order and each chain from
  // its head:
  //   <bucket><TAB><hash, 8 hex digits><TAB><length><TAB><text>
  // In the text a tab, line feed and backslash are written "\t", "\n" and
  // "\\", other bytes below 0x20 "\xHH". Returns 1 on success, 0 when `file`
  // is null or cannot be written.
  int dumpAtomTable(const char* file) const;

  unsigned int bucketCount() const { return mask_ + 1; }
  unsigned int atomCount() const { return count_; }
  unsigned int growThreshold() const { return threshold_; }

 private:
  void insertAtHead(zuAtomStore* atom);
  void grow();

  zuAtomStore** buckets_;
  uint32_t mask_;
  uint32_t count_;
  uint32_t threshold_;
};

// The library-wide table, made on first use with the four predefined atoms.
// Safe to call from any thread; filling it after start-up is not.
ZU_EXPORT zuAtomTable* zuGlobalAtomTable();

// The atom table of thread `threadId` (0: the calling thread), kept in the
// thread's storage and released with it. With `create` 0 a missing table
// gives null; otherwise it is made (throws zuExMemory).
ZU_EXPORT zuAtomTable* zuThreadLocalAtomTable(unsigned int threadId, int create);

// The predefined atoms, in the global table from its first use.
ZU_EXPORT extern zuAtomStore* aUT_EmptyString;  // ""
ZU_EXPORT extern zuAtomStore* aUT_Zero;         // "0"
ZU_EXPORT extern zuAtomStore* aUT_One;          // "1"
ZU_EXPORT extern zuAtomStore* aUT_Asterisk;     // "*"
