// zuUCS4: text as an array of code points, one unsigned int each.
//
// Useful where code points are indexed or cut by position. The array is
// always 0-terminated; the UTF-8 form is built on demand and cached until the
// next change.
//
//   zuUCS4 text(zuString("caf\xC3\xA9"));   // 4 code points
//   text += 0x1F600u;
//   unsigned int e = text[3];                // 0xE9
//   const zuString& utf8 = text;             // "caf\xC3\xA9\xF0\x9F\x98\x80"
//
// A zuUCS4 belongs to the thread that uses it (its cached zuString is an
// ordinary string). Allocation failures throw zuExMemory.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuUCS4 {
 public:
  // Empty.
  zuUCS4();
  // The code points of `text` up to its terminating 0 (empty for null).
  zuUCS4(const unsigned int* text);
  // The first `count` code points of `text`, as they stand.
  zuUCS4(const unsigned int* text, unsigned int count);
  // The code points of `text`, decoded leniently as zuString::UniChar does.
  zuUCS4(const zuString& text);
  zuUCS4(const zuUCS4& other);
  zuUCS4& operator=(const zuUCS4& other);
  ~zuUCS4();

  // Appends `count` code points of `text` as they stand (nothing for null).
  void Append(const unsigned int* text, unsigned int count);
  // Appends the code points of `text` read with zuString::UniChar; the 0 that
  // UniChar gives for an unreadable lead byte is left out.
  void Append(const zuString& text);
  zuUCS4& operator+=(const zuUCS4& other);
  zuUCS4& operator+=(const zuString& text);
  // Appends up to the terminating 0.
  zuUCS4& operator+=(const unsigned int* text);
  zuUCS4& operator+=(unsigned int codePoint);

  // Removes the clamped range of code points.
  void Swallow(unsigned int start, unsigned int length);
  // The clamped range as a new zuUCS4.
  zuUCS4 Substring(unsigned int start, unsigned int length) const;
  // The clamped range as UTF-8.
  zuString ZUSubstring(unsigned int start, unsigned int length) const;
  // Removes every code point (the capacity is kept).
  void Empty();

  // Number of code points.
  unsigned int Length() const { return length_; }
  // The 0-terminated array; valid until the next change.
  operator const unsigned int*() const { return data_; }
  // The UTF-8 form (it ends at a 0 code point, if any was stored), built on
  // first use after a change. The reference is valid until the next change.
  operator const zuString&() const;

  // Same code points.
  bool operator==(const zuUCS4& other) const;
  // Same bytes as the UTF-8 form (a null zuString counts as empty).
  bool operator==(const zuString& other) const;

  // Reverses the byte order of each of `count` values in place.
  static void ByteSwap(unsigned int* data, unsigned int count);

 private:
  void Reserve(uint32_t count);
  void Changed() { text_.SetNull(1); }

  unsigned int* data_;
  uint32_t length_;
  uint32_t capacity_;  // code points that fit, not counting the terminator
  mutable zuString text_;
};
