// Copying and reading a few bytes without a call: the library's strings
// are mostly short, and for them a call to memcpy costs more than the copy
// itself.
//
//   zu::internal::copyShort(block->chars(), text, length);
//   uint64_t first = zu::internal::loadWord<uint64_t>(text);
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zu::internal {

// The bytes at `bytes` as one word of type Word, in host byte order; any
// alignment.
template <class Word>
Word loadWord(const char* bytes) {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// Copies `length` bytes from `from` to `to` (the ranges must not overlap):
// up to sixteen bytes as two loads and stores that may overlap each other,
// longer copies through memcpy.
inline void copyShort(char* to, const char* from, std::size_t length) {
  if (length > 16) {
    std::memcpy(to, from, length);
  } else if (length >= 8) {
    uint64_t head;
    uint64_t tail;
    std::memcpy(&head, from, 8);
    std::memcpy(&tail, from + length - 8, 8);
    std::memcpy(to, &head, 8);
    std::memcpy(to + length - 8, &tail, 8);
  } else if (length >= 4) {
    uint32_t head;
    uint32_t tail;
    std::memcpy(&head, from, 4);
    std::memcpy(&tail, from + length - 4, 4);
    std::memcpy(to, &head, 4);
    std::memcpy(to + length - 4, &tail, 4);
  } else if (length > 0) {
    // One to three bytes: the first, the middle and the last.
    const char first = from[0];
    const char middle = from[length / 2];
    const char last = from[length - 1];
    to[0] = first;
    to[length / 2] = middle;
    to[length - 1] = last;
  }
}

}  // namespace zu::internal
