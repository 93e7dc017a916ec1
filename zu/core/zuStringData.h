// The layout of the block behind an ordinary or global zuString, described
// once for zuString's inline paths and the block allocator. Not for clients:
// everything here is zuString's implementation, in namespace zu::internal.
//
// A block is a header of three 32-bit words, then the characters, then a
// NUL: allocation = 12 (header) + capacity + 1 (NUL) + 4 spare bytes.
// zuString keeps a pointer to the characters; the header sits right before
// them, so the count and the capacity are the two words just below it.
//
//   const zuStringData* block = zuStringData::fromChars(chars);
//   bool canAppendInPlace = block->refCount == 1 && block->allocSize > length;
#pragma once

#include <cstddef>
#include <cstdint>

namespace zu::internal {

struct zuStringData {
  uint32_t threadId;   // owner thread; 0 for heap blocks
  uint32_t allocSize;  // capacity in bytes, the NUL not counted
  uint32_t refCount;   // strings sharing the block

  char* chars() { return reinterpret_cast<char*>(this + 1); }
  static zuStringData* fromChars(char* chars) { return reinterpret_cast<zuStringData*>(chars) - 1; }
  static const zuStringData* fromChars(const char* chars) {
    return reinterpret_cast<const zuStringData*>(chars) - 1;
  }
};
static_assert(sizeof(zuStringData) == 12, "the header is three 32-bit words");

// zuString's first word: the length in bytes in bits 31..2, the scope
// (zuString::zuStringScopeType) in bits 1..0.
inline constexpr uint32_t kStringScopeMask = 3u;
inline constexpr unsigned int kStringLengthShift = 2;

}  // namespace zu::internal
