// zuUCS2: 16-bit code units beside a zuString built from them unit by unit.
//
// Each unit becomes a code point of its own, so the halves of a surrogate
// pair are NOT combined: each is written as its own 3-byte sequence. The
// UTF-8 form therefore keeps every unit, paired or not, and its byte length
// is known from the unit count alone. Use zuString(const char16_t*) for a
// proper UTF-16 decoding.
//
//   const unsigned short units[] = {0x41, 0xD83D, 0xDE00, 0};
//   zuUCS2 text(units);
//   const zuString& utf8 = text;   // "A\xED\xA0\xBD\xED\xB8\x80"
//
// A zuUCS2 belongs to the thread that uses it. Allocation failures throw
// zuExMemory.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuUCS2 {
 public:
  // No units.
  zuUCS2();
  // The units of `units` up to its terminating 0 (none for null).
  zuUCS2(const unsigned short* units);
  // The first `count` units of `units`, ending early at a 0 unit. Either
  // form keeps at most zuString::kMaxLength / 3 units.
  zuUCS2(const unsigned short* units, unsigned int count);
  zuUCS2(const zuUCS2& other);
  zuUCS2& operator=(const zuUCS2& other);
  ~zuUCS2();

  // The UTF-8 form, one sequence per unit.
  operator const zuString&() const { return text_; }
  // The 0-terminated units; valid for the life of this object.
  operator const unsigned short*() const { return units_; }
  // Number of units.
  unsigned int Length() const { return length_; }

  // 1 when this machine stores the low byte of a unit first, else 0.
  static int IsLittleEndian();
  // Reverses the byte order of each of `count` units in place.
  static void ByteSwap(unsigned short* units, unsigned int count);

 private:
  void Assign(const unsigned short* units, unsigned int count);

  unsigned short* units_;
  uint32_t length_;
  zuString text_;
};
