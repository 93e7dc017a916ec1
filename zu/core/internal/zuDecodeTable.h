// Complete decoding tables for the stateless encodings of one- and two-byte
// characters (Shift_JIS, GBK, Big5, EUC-KR, the single-byte pages ...).
//
// ICU is asked once per process how it decodes every byte and every pair
// that starts with a lead byte; the answers are kept in a table, so that a
// short text in such an encoding turns into UTF-8 with one lookup per
// character instead of a pass through ICU's converter machinery. Only clean
// answers are kept: a byte sequence that ICU reports as illegal, unmapped,
// or decodes to something other than one BMP character is marked, and a
// text that contains one is left to ICU as a whole, so the output is always
// exactly ICU's.
//
//   if (const zuDecodeTable* table = decodeTableFor(932)) {
//     unsigned int written = 0;
//     if (table->toUTF8(in, inBytes, out, outBytes, written)) ... // done
//   }
//
// Tables are immutable once built and shared by every thread.
#pragma once

#include <cstdint>

namespace zu::internal {

class zuDecodeTable {
 public:
  // Decodes `inBytes` bytes and writes their UTF-8 to `out` (at most
  // `outBytes` bytes, no NUL). False when the text holds a sequence that
  // only ICU can decide, or the output does not fit; `out` is then garbage.
  bool toUTF8(const char* in, unsigned int inBytes, char* out, unsigned int outBytes,
              unsigned int& written) const;

  // The decoding itself; the end of the written UTF-8, or null where
  // toUTF8 gives false.
  template <bool kCheckRoom>
  unsigned char* decode(const char* in, unsigned int inBytes, char* out,
                        unsigned int outBytes) const;

  // An entry holds the character's UTF-8 bytes in its low three bytes
  // (first byte lowest) and their count in its top byte; or one of two marks.
  static constexpr uint32_t kLead = 0xFF000000u;    // starts a two-byte character
  static constexpr uint32_t kAskIcu = 0xFE000000u;  // only ICU decides
  // The entry of a BMP character that is not a surrogate.
  static uint32_t encode(char16_t unit);

  uint32_t single_[256];
  // Per lead byte, the entry of each trail byte; null for other bytes.
  const uint32_t* pairs_[256] = {};
};

// The table of `codePage`, built on first use; null when the encoding is not
// a stateless encoding of one- and two-byte characters (or ICU cannot open
// it). Thread-safe.
const zuDecodeTable* decodeTableFor(int codePage);

}  // namespace zu::internal
