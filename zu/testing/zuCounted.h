// Per-thread objects that count their destruction, so that a test sees when
// thread-local storage or an anchor releases what it holds; and spin(),
// which burns CPU on the calling thread.
//
//   std::atomic<int> destroyed{0};
//   zuThreadLocalStorage::setThreadStorage(slot, new zu::testing::CountedStorage(destroyed));
//   zuThreadLocalStorage::resetThreadStorage(0u);   // destroyed == 1
//
// The counter must outlive the object; it may be shared between threads.
#pragma once

#include <atomic>

#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/runtime/zuTlsAnchor.h"

namespace zu::testing {

// A thread-local storage slot object.
class CountedStorage : public zuThreadStorage {
 public:
  explicit CountedStorage(std::atomic<int>& destroyed) : destroyed_(destroyed) {}
  ~CountedStorage() override;

 private:
  std::atomic<int>& destroyed_;
};

// An object registered with a thread's anchor.
class CountedTlsObject : public zuTlsObject {
 public:
  explicit CountedTlsObject(std::atomic<int>& destroyed) : destroyed_(destroyed) {}
  ~CountedTlsObject() override;

 private:
  std::atomic<int>& destroyed_;
};

// Keeps the calling thread busy for at least `milliseconds` of wall time.
void spin(int milliseconds);

}  // namespace zu::testing
