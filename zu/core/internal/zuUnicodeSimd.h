// AVX2 blocks for the UTF-8 conversion loops of zuUnicode.cpp, chosen at run
// time when the processor has AVX2. A block is taken only when it holds
// nothing that the strict scalar walk would stop at or treat apart, so that
// both give the same result; the scalar walk stays the reference and the
// tests run every conversion both ways.
#pragma once

#include <cstdint>

namespace zu::internal {

// True when the AVX2 blocks are in use: the processor has AVX2 and no test
// switched them off.
bool unicodeSimdEnabled();
// Test hook: `enabled` false makes the conversions scalar; true uses AVX2
// when the processor has it. Returns the previous setting.
bool setUnicodeSimd(bool enabled);

// What a run of blocks took from its input and gave to its output.
struct BlockProgress {
  unsigned int read;
  unsigned int written;
};

// A UTF-8 block consumes at most kUtf8BlockBytes bytes, ending at a
// character boundary, reads kUtf8BlockReach bytes from its start and needs
// room for kUtf8BlockRoom units (it writes past the units it gives).
inline constexpr unsigned int kUtf8BlockBytes = 32;
inline constexpr unsigned int kUtf8BlockReach = 40;
inline constexpr unsigned int kUtf8BlockRoom = 40;

// Decodes the UTF-8 at `in`, which starts a character, block by block into
// code points (or host-order UTF-16 units) at `out`, while each block is
// plain: well-formed UTF-8 of code points from U+0001 to U+10FFFF, without
// surrogate values. Stops before the first block that is not, or when fewer
// than kUtf8BlockReach bytes or kUtf8BlockRoom units of room remain.
// Entries past the count written may be overwritten, within `outMax`.
BlockProgress utf8BlocksAvx2(uint32_t* out, unsigned int outMax, const unsigned char* in,
                             unsigned int inBytes);
BlockProgress utf8BlocksAvx2(char16_t* out, unsigned int outMax, const unsigned char* in,
                             unsigned int inBytes);

// Encodes code points, masked to 21 bits as zuUCStoUTF8 does, 8 at a time
// into UTF-8 at `out`. Stops before 8 code points that hold a 0, or when
// fewer than 8 code points or 32 bytes of room remain. Bytes past the count
// written may be overwritten, within `outBytes`.
BlockProgress utf32BlocksAvx2(char* out, unsigned int outBytes, const uint32_t* in,
                              unsigned int count);

}  // namespace zu::internal
