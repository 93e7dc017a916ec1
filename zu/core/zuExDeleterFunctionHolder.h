// zuExDeleterFunctionHolder: frees an object allocated on the other side of
// the library boundary from a path that is about to throw.
//
// The object must release itself through its own virtual operation, so that
// the module that allocated it also frees it.
//
//   zuExDeleterFunctionHolder holder(buffer);   // buffer: a Releasable*
//   try { ... } catch (...) { holder.Delete(); throw; }
#pragma once

#include "zu/core/zuExport.h"

class ZU_EXPORT zuExDeleterFunctionHolder {
 public:
  // An object that frees itself: the destructor comes first, the release
  // second among its virtual operations.
  class ZU_EXPORT Releasable {
   public:
    virtual ~Releasable();
    virtual void Release() = 0;
  };

  explicit zuExDeleterFunctionHolder(Releasable* memory) : memory_(memory) {}
  // Copies hold the same pointer: only one of them may call Delete().
  zuExDeleterFunctionHolder(const zuExDeleterFunctionHolder&) = default;
  zuExDeleterFunctionHolder& operator=(const zuExDeleterFunctionHolder&) = default;

  // Releases the held object (if any) and forgets it. Any exception the
  // release throws is swallowed: this runs on a path that is already failing.
  void Delete();
  // The held object; null after Delete().
  Releasable* Memory() const { return memory_; }

 private:
  Releasable* memory_;
};
