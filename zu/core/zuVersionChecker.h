// zuVersionChecker: a module's declaration of the library version it was
// built against.
//
// Each client module constructs one during its own start-up. Before the
// application initialises the library (zuUtilityInit) a wrong version is
// only recorded (the first one); from then on it is thrown as
// zuExVersionMismatchImpl.
//
//   static zuVersionChecker gChecker("3.6.19011.0", "forms-viewer");
#pragma once

#include "zu/core/zuExport.h"

class ZU_EXPORT zuVersionChecker {
 public:
  // Checks `version` (null: nothing to check) for `component` (null: an
  // empty name). Throws zuExVersionMismatchImpl with the first recorded
  // mismatch once the library is initialised.
  zuVersionChecker(const char* version, const char* component);

  // 1 when `version` matches the library's up to its last "." (the final,
  // patch number is ignored) and that part ends at a "." of the library's
  // version; a text without "." must match in full.
  static int IsCorrect(const char* version);
};
