// zuAtomInitializer: a static object whose construction enters a module's
// atoms into the library-wide atom table at start-up.
//
//   static zuAtomStore gWidthRecord = {"width"};
//   static zuAtomStore gHeightRecord = {"height"};
//   zuAtomStore* aWidth = &gWidthRecord;
//   zuAtomStore* aHeight = &gHeightRecord;
//   static zuAtomStore** const gAtoms[] = {&aWidth, &aHeight, nullptr};
//   static zuAtomInitializer gEnterAtoms(gAtoms);
//
// When another module already entered an equal text, the list form
// redirects the module's variable to that atom (the module's own record is
// retired). The single-atom form cannot redirect anything: a colliding atom
// is retired and keeps the marker text zuAtomTable::kRemappedText, so use
// the list form for names other modules may declare too.
#pragma once

#include "zu/core/zuAtomStore.h"
#include "zu/core/zuExport.h"

class ZU_EXPORT zuAtomInitializer {
 public:
  // Enters one atom. Throws ZuExThrow(16479) for a null atom.
  explicit zuAtomInitializer(zuAtomStore* atom);
  // Enters every variable of a null-terminated list, redirecting those whose
  // text was already entered.
  explicit zuAtomInitializer(zuAtomStore** const* list);
};
