// zuPosixTlsAnchor: the Linux zuTlsAnchor, kept in a pthread key whose
// destructor destroys the anchor when its thread exits. Reached through the
// static members of zuTlsAnchor.
//
//   zuTlsAnchor* anchor = zuTlsAnchor::GetTlsAnchor();   // a zuPosixTlsAnchor
#pragma once

#include "zu/core/zuExport.h"
#include "zu/runtime/zuTlsAnchor.h"

class ZU_EXPORT zuPosixTlsAnchor : public zuTlsAnchor {
 public:
  // The calling thread's anchor; creates the key on first use in the process
  // and the anchor on first use in the thread. Throws zuExMemory.
  static zuPosixTlsAnchor* GetTlsAnchor();
  static void ThreadExitCleanup();
  static void ReleaseTlsAnchorSingletons();

 private:
  zuPosixTlsAnchor() = default;
};
