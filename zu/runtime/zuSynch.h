// zuSynch: the base of the library's mutexes and events, and zuSynchRet, the
// result of their operations.
//
//   zuEvent* ready = zuEvent::NewEvent(zuEvent::eManualReset);
//   zuSynchRet result = ready->Wait(500);
//   if (result.ReturnCode() == zuSynchRet::eTimedOut) { ... }
//
// A synchronisation object is shared between threads by design; its valid
// flag and name are set once by the creator and only read afterwards.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"
#include "zu/core/zuThreadSafeString.h"

// The library's code for an operation and the operating system's error code.
class ZU_EXPORT zuSynchRet {
 public:
  enum RetCode { eOk = 0, eTimedOut = 1, eFailed = 3 };

  zuSynchRet(RetCode code = eOk, unsigned long osCode = 0) : code_(code), osCode_(osCode) {}

  // Non-zero when the code is eOk.
  int Ok() const { return code_ == eOk; }
  RetCode ReturnCode() const { return code_; }
  // The operating system's error number (errno value); 0 when none.
  unsigned long OsCode() const { return osCode_; }

 private:
  RetCode code_;
  unsigned long osCode_;
};

class ZU_EXPORT zuSynch {
 public:
  virtual ~zuSynch();

  // Non-zero when the operating-system object could be created.
  int Valid() const { return valid_; }
  void Valid(int valid) { valid_ = valid; }

  // A name for diagnostics; kept in a global string, so any thread may read it.
  zuString Name() const { return name_; }
  void Name(const zuString& name) { name_ = name; }

 protected:
  zuSynch() = default;
  zuSynch(const zuSynch&) = delete;
  zuSynch& operator=(const zuSynch&) = delete;

 private:
  int valid_ = 0;
  zuThreadSafeString name_;
};
