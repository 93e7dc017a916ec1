// The calling thread's secondary catalogues, kept in thread-local slot 8.
// The message loader consults them, in the order registered, after the
// library's own catalogue; they die with the thread's storage.
#pragma once

#include <vector>

#include "zu/core/zuResourceLoader.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace zu::internal {

class zuPosixResourceTLS : public zuThreadStorage {
 public:
  // The calling thread's holder; with `create` a missing one is made.
  // Null when there is none and `create` is 0. Throws zuExMemory.
  static zuPosixResourceTLS* current(int create);

  void add(zuModule module);
  // Removes every entry equal to `module`.
  void remove(zuModule module);
  const std::vector<zuModule>& handles() const { return handles_; }

 private:
  std::vector<zuModule> handles_;
};

}  // namespace zu::internal
