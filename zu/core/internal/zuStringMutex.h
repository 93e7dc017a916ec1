// The library-wide string mutex: held by every share and release of a global
// (thread-safe) string's block. Recursive, because a release can happen while
// an assignment already holds it.
#pragma once

#include <mutex>

namespace zu::internal {

std::recursive_mutex& stringMutex();

}  // namespace zu::internal
