// zuAtomStore: one atom, the unique stored copy of a text.
//
// Two equal texts looked up in the same table give the same zuAtomStore
// pointer, so names can be compared by pointer and hashed once. A module
// declares its atoms statically and enters them into the library-wide table
// at start-up with a zuAtomInitializer; run-time atoms come from
// zuAtomTable::getAtom.
//
//   static zuAtomStore gColorRecord = {"color"};
//   zuAtomStore* aColor = &gColorRecord;
//   static zuAtomStore** const gModuleAtoms[] = {&aColor, nullptr};
//   static zuAtomInitializer gEnterAtoms(gModuleAtoms);
//   assert(zuAtomTable::getAtom("color", 0) == aColor);
#pragma once

#include "zu/core/zuExport.h"

struct ZU_EXPORT zuAtomStore {
  // NUL-terminated text; the table never copies or frees it.
  const char* text;
  // Length of the text in bytes, set when the atom enters a table.
  unsigned int length = 0;
  // Hash of the text, never 0 once the atom is in a table.
  unsigned int hash = 0;
  // Next atom in the same bucket.
  zuAtomStore* next = nullptr;
};
