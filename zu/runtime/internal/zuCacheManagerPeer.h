// What tests read of a zuCacheManager's insides: its pool lists and open
// arenas, so that the growth and release rules can be checked without
// making them part of the class's interface.
//
//   EXPECT_EQ(zu::internal::CacheManagerPeer::listCount(cache), 1u);
#pragma once

#include <cstddef>

#include "zu/runtime/zuCacheManager.h"

namespace zu::internal {

struct CacheManagerPeer {
  // The pool lists, in order of block size.
  static std::size_t listCount(const zuCacheManager& cache) { return cache.lists_.size(); }
  static const zuMemoryCacheList* list(const zuCacheManager& cache, std::size_t index) {
    return cache.lists_[index];
  }
  // The open (still searched) arenas, oldest first.
  static std::size_t arenaCount(const zuCacheManager& cache) { return cache.arenas_.size(); }
};

}  // namespace zu::internal
