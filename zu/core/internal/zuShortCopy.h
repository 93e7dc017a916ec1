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

// Copies the first and the last sizeof(Word) bytes of `length` (at least
// one Word, at most two): together they cover all of it.
template <class Word>
void copyEnds(char* to, const char* from, std::size_t length) {
  const Word head = loadWord<Word>(from);
  const Word tail = loadWord<Word>(from + length - sizeof(Word));
  std::memcpy(to, &head, sizeof head);
  std::memcpy(to + length - sizeof(Word), &tail, sizeof tail);
}

// Copies `length` bytes from `from` to `to` (the ranges must not overlap):
// up to sixteen bytes as two loads and stores that may overlap each other,
// longer copies through memcpy.
inline void copyShort(char* to, const char* from, std::size_t length) {
  if (length > 16) {
    std::memcpy(to, from, length);
  } else if (length >= 8) {
    copyEnds<uint64_t>(to, from, length);
  } else if (length >= 4) {
    copyEnds<uint32_t>(to, from, length);
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
