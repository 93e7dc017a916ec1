// zuUtilityInit: the application's one-time initialisation of the library.
//
// Constructed once at start-up, after the client modules have declared their
// versions (zuVersionChecker). From then on a version mismatch or a missing
// message catalogue is an error thrown at once, instead of being recorded or
// passed over quietly.
//
//   zuUtilityInit init("3.6.19011.0", 0);
//   const char* version;
//   const char* component;
//   if (!init.CheckVersion(&version, &component)) report(component, version);
//   zuString missing;
//   if (!init.CheckResources(missing)) report(missing);
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuUtilityInit {
 public:
  // Checks the application's own `version`, marks the library initialised
  // and, with `checkNow` non-zero, throws zuExVersionMismatchImpl for the
  // first recorded mismatch and zuExResourceFailure when the message
  // catalogue cannot be found.
  zuUtilityInit(const char* version, int checkNow);

  // 1 when no mismatch is recorded; otherwise 0 with the recorded version
  // and component (library-wide texts, not to be freed). Both are null on 1.
  int CheckVersion(const char** version, const char** component);
  // 1 when the message catalogue is found; otherwise 0 with the name of the
  // file that is missing in `missingFile`.
  int CheckResources(zuString& missingFile);
};

// The library's interface version, "3.6.19011.0"; "x.x.x.x" while
// gbUtilityVersionTestMode is non-zero.
ZU_EXPORT const char* zuGetUtilityVersion();

// Non-zero makes zuGetUtilityVersion report a placeholder, so that output
// that shows the version stays the same from one release to the next.
extern ZU_EXPORT int gbUtilityVersionTestMode;
