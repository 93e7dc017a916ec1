// zuTlsAnchor: a per-thread anchor kept in an operating-system thread-local
// slot, owning the zuTlsObjects that register with it.
//
//   struct ParserScratch : zuTlsObject { ... };
//   zuTlsAnchor* anchor = zuTlsAnchor::GetTlsAnchor();      // this thread's
//   int index = anchor->RegisterTlsObject(new ParserScratch);
//   auto* scratch = static_cast<ParserScratch*>(anchor->Object(index));
//
// A thread's anchor, and every object registered with it, is destroyed when
// the thread exits (whoever created the thread) or earlier through
// ThreadExitCleanup(). Indices come from one library-wide counter, so an
// index names the same kind of object in every thread that registers in the
// same order. The Linux form is zuPosixTlsAnchor.
#pragma once

#include <vector>

#include "zu/core/zuExport.h"

// The base of objects owned by a thread's anchor.
class ZU_EXPORT zuTlsObject {
 public:
  explicit zuTlsObject(int index = -1) : index_(index) {}
  virtual ~zuTlsObject();

  // The index the anchor handed out, -1 before registration.
  int Index() const { return index_; }
  void Index(int index) { index_ = index; }

 private:
  int index_;
};

class ZU_EXPORT zuTlsAnchor {
 public:
  // Destroys the registered objects, the latest first.
  virtual ~zuTlsAnchor();

  // The calling thread's anchor, created (with the system slot, on first use
  // in the process) when absent. Throws zuExMemory.
  static zuTlsAnchor* GetTlsAnchor();

  // Takes ownership of `object`, gives it the next index of the library-wide
  // counter and returns that index. Null is refused with -1.
  virtual int RegisterTlsObject(zuTlsObject* object);
  // The object registered under `index` on this anchor; null when none.
  zuTlsObject* Object(int index) const;

  // The number of objects an anchor expects: new anchors reserve room for it.
  static void SetSize(unsigned int size);
  static unsigned int Size();

  // Destroys the calling thread's anchor now, swallowing exceptions from the
  // objects' destructors. A later GetTlsAnchor makes a fresh one.
  static void ThreadExitCleanup();
  // Destroys the calling thread's anchor and gives the system slot back;
  // anchors of other threads are no longer destroyed at their exit. For
  // library shutdown.
  static void ReleaseTlsAnchorSingletons();

 protected:
  zuTlsAnchor();
  zuTlsAnchor(const zuTlsAnchor&) = delete;
  zuTlsAnchor& operator=(const zuTlsAnchor&) = delete;

 private:
  std::vector<zuTlsObject*> objects_;
};
