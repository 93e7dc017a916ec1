#include "zu/core/zuUnicode.h"

#include <bit>
#include <cstdint>
#include <cstring>

#include "zu/core/internal/zuUnicodeSimd.h"

namespace {

// One form of UTF-8 sequence, in the order of its byte count (row i is the
// (i + 1)-byte form). A lead byte belongs to the row whose mask and value it
// matches; the continuation bits gathered for the row are cut to
// `valueMask`, and a value below `lowest` is an over-long form.
struct Utf8Form {
  uint8_t leadMask;
  uint8_t leadValue;
  uint8_t shift;
  uint32_t valueMask;
  uint32_t lowest;
};

constexpr Utf8Form kUtf8Forms[] = {
    {0x80, 0x00, 0, 0x7F, 0},
    {0xE0, 0xC0, 6, 0x7FF, 0x80},
    {0xF0, 0xE0, 12, 0xFFFF, 0x800},
    {0xF8, 0xF0, 18, 0x1FFFFF, 0x10000},
    {0xFC, 0xF8, 24, 0x3FFFFFF, 0x200000},
    {0xFE, 0xFC, 30, 0x7FFFFFFF, 0x4000000},
};
constexpr unsigned int kUtf8FormCount = sizeof kUtf8Forms / sizeof kUtf8Forms[0];

constexpr unsigned char kBom8[] = {0xEF, 0xBB, 0xBF};
constexpr uint32_t kMaxCodePoint = 0x10FFFF;
constexpr uint64_t kHighBits = 0x8080808080808080ull;
constexpr uint64_t kLowBits = 0x0101010101010101ull;

inline bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}
inline bool isSurrogate(uint32_t unit) {
  return unit - 0xD800u < 0x800u;
}
inline bool isHighSurrogate(uint32_t unit) {
  return unit - 0xD800u < 0x400u;
}
inline bool isLowSurrogate(uint32_t unit) {
  return unit - 0xDC00u < 0x400u;
}

inline uint32_t combineSurrogates(uint32_t high, uint32_t low) {
  return 0x10000u + ((high - 0xD800u) << 10) + (low - 0xDC00u);
}

// Number of leading bytes at `in`, of the eight there, that are ASCII and not
// NUL, so that they can be widened as they stand.
inline unsigned int plainAsciiPrefix(const unsigned char* in) {
  uint64_t word;
  std::memcpy(&word, in, sizeof word);
  const uint64_t hasZero = (word - kLowBits) & ~word & kHighBits;
  const uint64_t stops = (word & kHighBits) | hasZero;
  if (stops == 0) return 8;
  // A borrow only runs upwards from a true NUL, so the first flagged byte is exact.
  if constexpr (std::endian::native == std::endian::little) {
    return static_cast<unsigned int>(std::countr_zero(stops)) / 8;
  } else {
    return static_cast<unsigned int>(std::countl_zero(stops)) / 8;
  }
}

// Widens the ASCII run at `in` and returns its length. All eight bytes are
// stored, whatever the run, because one unconditional store of eight is
// cheaper than a loop of the exact length; the caller has room for eight.
template <typename Unit>
inline unsigned int widenAsciiRun(Unit* out, const unsigned char* in) {
  for (unsigned int i = 0; i < 8; ++i) out[i] = in[i];
  return plainAsciiPrefix(in);
}

// Strict decoding of one sequence; the body of zuUTF8toUCS, kept inline so
// that the conversion loops do not pay for a call per character.
inline int decodeUtf8(uint32_t& out, const unsigned char* in, unsigned int avail) {
  if (avail == 0) return -1;
  const unsigned char lead = in[0];
  if (lead < 0x80) {
    out = lead;
    return 1;
  }
  // The row is fixed by the count of leading one bits; a single one is a
  // continuation byte and seven or eight match no row.
  const unsigned int length = static_cast<unsigned int>(std::countl_one(lead));
  if (length < 2 || length > kUtf8FormCount) return -1;
  const Utf8Form& form = kUtf8Forms[length - 1];
  if ((lead & form.leadMask) != form.leadValue) return -1;
  if (length > avail) return -1;
  uint32_t value = lead;
  for (unsigned int i = 1; i < length; ++i) {
    if (!isContinuation(in[i])) return -1;
    value = (value << 6) | (in[i] & 0x3Fu);
  }
  value &= form.valueMask;
  if (value < form.lowest) return -1;
  out = value;
  return static_cast<int>(length);
}

// decodeUtf8 with the common 2- and 3-byte forms taken first; every other
// lead byte, and any fault, goes through the table. `in[0]` is not ASCII.
inline int decodeUtf8Multi(uint32_t& out, const unsigned char* in, unsigned int avail) {
  const unsigned char lead = in[0];
  if (lead >= 0xC2 && lead < 0xE0 && avail >= 2 && isContinuation(in[1])) {
    out = ((lead & 0x1Fu) << 6) | (in[1] & 0x3Fu);
    return 2;
  }
  if ((lead & 0xF0) == 0xE0 && avail >= 3 && isContinuation(in[1]) && isContinuation(in[2])) {
    const uint32_t value = ((lead & 0x0Fu) << 12) | ((in[1] & 0x3Fu) << 6) | (in[2] & 0x3Fu);
    if (value >= 0x800) {
      out = value;
      return 3;
    }
  }
  return decodeUtf8(out, in, avail);
}

inline unsigned int utf8Length(uint32_t codePoint) {
  if (codePoint < 0x80) return 1;
  if (codePoint < 0x800) return 2;
  if (codePoint < 0x10000) return 3;
  return 4;
}

// Writes `codePoint` (at most 21 bits) as `length` bytes.
inline void encodeUtf8(char* out, uint32_t codePoint, unsigned int length) {
  switch (length) {
    case 1:
      out[0] = static_cast<char>(codePoint);
      return;
    case 2:
      out[0] = static_cast<char>(0xC0 | (codePoint >> 6));
      out[1] = static_cast<char>(0x80 | (codePoint & 0x3F));
      return;
    case 3:
      out[0] = static_cast<char>(0xE0 | (codePoint >> 12));
      out[1] = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
      out[2] = static_cast<char>(0x80 | (codePoint & 0x3F));
      return;
    default:
      out[0] = static_cast<char>(0xF0 | (codePoint >> 18));
      out[1] = static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
      out[2] = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
      out[3] = static_cast<char>(0x80 | (codePoint & 0x3F));
  }
}

inline uint32_t readUnit(const char* in, bool little) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(in);
  return little ? (bytes[0] | (bytes[1] << 8)) : ((bytes[0] << 8) | bytes[1]);
}

inline void writeUnit(char* out, uint32_t unit, bool little) {
  const auto high = static_cast<char>(unit >> 8);
  const auto low = static_cast<char>(unit & 0xFF);
  out[little ? 1 : 0] = high;
  out[little ? 0 : 1] = low;
}

// The byte-order mark (FE FF or FF FE) that starts a UTF-16 text of `bytes`
// bytes, in either order whatever order is given: returns its size (0 or 2)
// and sets `little` to the order to read with: the one given, else the one
// the mark says, else big-endian.
inline unsigned int leadingMark(const char* text, unsigned int bytes, eEndianType type,
                                bool& little) {
  const int mark = bytes >= 2 ? zuUTF16BOM(text) : eEndianUnknown;
  little = type == eEndianUnknown ? mark == eEndianLittle : type == eEndianLittle;
  return mark == eEndianUnknown ? 0 : 2;
}

// The conversion loops below come in a counting form (kWrite false) and a
// writing form, so that neither pays for the other's tests.

// The walk shared by the two UTF-8 decoding loops: ASCII runs are widened
// a word at a time, other sequences decoded strictly; it ends at the end of
// the input, a NUL, a rejected sequence, or when `emit` declines a code
// point. `emit(codePoint, slot, room)` stores the code point at `slot` (when
// writing) and returns the units it took, or 0 to stop.
//
// When writing with AVX2, plain blocks go through the vector path; a block
// it leaves (a fault, a NUL, a surrogate or larger value, the last bytes, a
// full output) is walked here, and the vector path is tried again after it.
template <bool kWrite, typename Unit, typename Emit>
unsigned int decodeUtf8Loop(Unit* out, unsigned int outMax, const unsigned char* in,
                            unsigned int inBytes, Emit emit) {
  using zu::internal::kUtf8BlockReach;
  using zu::internal::kUtf8BlockRoom;
  const bool blocks = kWrite && inBytes >= kUtf8BlockReach && zu::internal::unicodeSimdEnabled();
  unsigned int blocksFrom = 0;
  unsigned int pos = 0;
  unsigned int count = 0;
  while (pos < inBytes && (!kWrite || count < outMax)) {
    if (blocks && pos >= blocksFrom && inBytes - pos >= kUtf8BlockReach &&
        outMax - count >= kUtf8BlockRoom) {
      const zu::internal::BlockProgress done =
          zu::internal::utf8BlocksAvx2(out + count, outMax - count, in + pos, inBytes - pos);
      pos += done.read;
      count += done.written;
      blocksFrom = pos + zu::internal::kUtf8BlockBytes;
      continue;
    }
    const unsigned char lead = in[pos];
    if (lead < 0x80) {
      if (inBytes - pos >= 8 && (!kWrite || outMax - count >= 8)) {
        unsigned int run;
        if constexpr (kWrite) {
          run = widenAsciiRun(out + count, in + pos);
        } else {
          run = plainAsciiPrefix(in + pos);
        }
        if (run == 0) break;  // a NUL
        pos += run;
        count += run;
        continue;
      }
      if (lead == 0) break;
      if constexpr (kWrite) out[count] = lead;
      ++count;
      ++pos;
      continue;
    }
    uint32_t codePoint;
    const int length = decodeUtf8Multi(codePoint, in + pos, inBytes - pos);
    if (length < 0 || codePoint == 0) break;
    const unsigned int taken = emit(codePoint, kWrite ? out + count : nullptr, outMax - count);
    if (taken == 0) break;
    count += taken;
    pos += static_cast<unsigned int>(length);
  }
  return count;
}

template <bool kWrite>
unsigned int fromUtf8(unsigned int* out, unsigned int outMax, const unsigned char* in,
                      unsigned int inBytes) {
  return decodeUtf8Loop<kWrite>(
      out, outMax, in, inBytes,
      [](uint32_t codePoint, [[maybe_unused]] unsigned int* slot, unsigned int) {
        if constexpr (kWrite) *slot = codePoint;
        return 1u;
      });
}

template <bool kWrite>
unsigned int toUtf8(char* out, unsigned int outBytes, const unsigned int* in, unsigned int count) {
  unsigned int written = 0;
  unsigned int i = 0;
  if (kWrite && count >= 8 && zu::internal::unicodeSimdEnabled()) {
    const zu::internal::BlockProgress done =
        zu::internal::utf32BlocksAvx2(out, outBytes, in, count);
    i = done.read;
    written = done.written;
  }
  for (; i < count; ++i) {
    const uint32_t codePoint = in[i] & 0x1FFFFF;
    if (codePoint == 0) break;
    const unsigned int length = utf8Length(codePoint);
    if constexpr (kWrite) {
      if (outBytes - written < length) break;
      encodeUtf8(out + written, codePoint, length);
    }
    written += length;
  }
  return written;
}

template <bool kWrite>
unsigned int fromUtf16(unsigned int* out, unsigned int outMax, const char* in, unsigned int inBytes,
                       eEndianType type) {
  unsigned int count = 0;
  unsigned int pos = 0;
  while (!kWrite || count < outMax) {
    unsigned int codePoint;
    const int length = zuUTF16toUCS(codePoint, in + pos, inBytes - pos, type);
    if (length < 0 || codePoint == 0) break;
    if constexpr (kWrite) out[count] = codePoint;
    ++count;
    pos += static_cast<unsigned int>(length);
  }
  return count;
}

template <bool kWrite>
unsigned int toUtf16(char* out, unsigned int outBytes, const unsigned int* in, unsigned int count,
                     eEndianType type) {
  unsigned int written = 0;
  for (unsigned int i = 0; i < count; ++i) {
    const uint32_t codePoint = in[i];
    if (codePoint == 0 || codePoint > kMaxCodePoint) break;
    const unsigned int length = codePoint >= 0x10000 ? 4 : 2;
    if constexpr (kWrite) {
      if (outBytes - written < length) break;
      zuUCStoUTF16(out + written, codePoint, type);
    }
    written += length;
  }
  return written;
}

template <bool kWrite>
unsigned int utf8ToUtf16(char16_t* out, unsigned int outMax, const unsigned char* in,
                         unsigned int inBytes) {
  return decodeUtf8Loop<kWrite>(
      out, outMax, in, inBytes,
      [](uint32_t codePoint, [[maybe_unused]] char16_t* slot, [[maybe_unused]] unsigned int room) {
        if (codePoint > kMaxCodePoint || isSurrogate(codePoint)) return 0u;
        if (codePoint < 0x10000) {
          if constexpr (kWrite) *slot = static_cast<char16_t>(codePoint);
          return 1u;
        }
        if constexpr (kWrite) {
          if (room < 2) return 0u;
          slot[0] = static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10));
          slot[1] = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
        }
        return 2u;
      });
}

template <bool kWrite>
unsigned int utf16ToUtf8(char* out, unsigned int outBytes, const char16_t* in, unsigned int units) {
  unsigned int written = 0;
  unsigned int pos = 0;
  while (pos < units) {
    uint32_t codePoint = in[pos];
    unsigned int consumed = 1;
    if (codePoint == 0) break;
    if (isSurrogate(codePoint)) {
      if (!isHighSurrogate(codePoint) || units - pos < 2 || !isLowSurrogate(in[pos + 1])) break;
      codePoint = combineSurrogates(codePoint, in[pos + 1]);
      consumed = 2;
    }
    const unsigned int length = utf8Length(codePoint);
    if constexpr (kWrite) {
      if (outBytes - written < length) break;
      encodeUtf8(out + written, codePoint, length);
    }
    written += length;
    pos += consumed;
  }
  return written;
}

}  // namespace

// ---------------------------------------------------------------- UTF-8

int zuUTF8toUCS(unsigned int& out, const char* in, unsigned int avail) {
  uint32_t value;
  const int length = decodeUtf8(value, reinterpret_cast<const unsigned char*>(in), avail);
  if (length > 0) out = value;
  return length;
}

int zuUCStoUTF8(char* out, unsigned int codePoint) {
  const uint32_t value = codePoint & 0x1FFFFF;
  const unsigned int length = utf8Length(value);
  encodeUtf8(out, value, length);
  return static_cast<int>(length);
}

unsigned int zuUTF8strlen(const char* text, unsigned int bytes) {
  const auto* in = reinterpret_cast<const unsigned char*>(text);
  unsigned int start = 0;
  if (bytes >= 3 && std::memcmp(in, kBom8, 3) == 0) start = 3;
  unsigned int count = 0;
  for (unsigned int i = start; i < bytes; ++i) count += isContinuation(in[i]) ? 0 : 1;
  return count;
}

unsigned int zuUTF8ByteLen(const char* text, unsigned int codePoints) {
  const auto* in = reinterpret_cast<const unsigned char*>(text);
  unsigned int pos = 0;
  for (unsigned int n = 0; n < codePoints && in[pos] != 0; ++n) {
    ++pos;
    while (isContinuation(in[pos])) ++pos;
  }
  return pos;
}

const char* zuUTF8PrevChar(const char* start, const char* p) {
  if (p <= start) return start;
  --p;
  while (p > start && isContinuation(static_cast<unsigned char>(*p))) --p;
  return p;
}

char* zuUTF8PrevChar(char* start, char* p) {
  return const_cast<char*>(zuUTF8PrevChar(static_cast<const char*>(start), p));
}

unsigned int ConvertFromUTF8(unsigned int* out, unsigned int outMax, const char* in,
                             unsigned int inBytes) {
  auto* bytes = reinterpret_cast<const unsigned char*>(in);
  if (inBytes > 3 && std::memcmp(bytes, kBom8, 3) == 0) {
    bytes += 3;
    inBytes -= 3;
  }
  return out != nullptr ? fromUtf8<true>(out, outMax, bytes, inBytes)
                        : fromUtf8<false>(nullptr, 0, bytes, inBytes);
}

unsigned int ConvertToUTF8(char* out, unsigned int outBytes, const unsigned int* in,
                           unsigned int count) {
  return out != nullptr ? toUtf8<true>(out, outBytes, in, count)
                        : toUtf8<false>(nullptr, 0, in, count);
}

int zuIsUTF8(const char* text) {
  const auto* in = reinterpret_cast<const unsigned char*>(text);
  return in[0] == kBom8[0] && in[1] == kBom8[1] && in[2] == kBom8[2] ? 1 : 0;
}

unsigned int zuUniCharLength(const unsigned int* text) {
  if (text == nullptr) return 0;
  unsigned int count = 0;
  while (text[count] != 0) ++count;
  return count;
}

// --------------------------------------------------------------- UTF-16

int zuUTF16BOM(const char* text) {
  const auto* in = reinterpret_cast<const unsigned char*>(text);
  if (in[0] == 0xFE && in[1] == 0xFF) return eEndianBig;
  if (in[0] == 0xFF && in[1] == 0xFE) return eEndianLittle;
  return eEndianUnknown;
}

int zuUTF16AddBOM(char* out, eEndianType type) {
  writeUnit(out, 0xFEFF, type == eEndianLittle);
  return 2;
}

unsigned int zuUTF16Char(const char* in, eEndianType type) {
  return readUnit(in, type == eEndianLittle);
}

int zuUTF16toUCS(unsigned int& out, const char* in, unsigned int avail, eEndianType type) {
  if (avail < 2) return -1;
  const bool little = type == eEndianLittle;
  const uint32_t unit = readUnit(in, little);
  if (!isSurrogate(unit)) {
    out = unit;
    return 2;
  }
  if (!isHighSurrogate(unit) || avail < 4) return -1;
  const uint32_t low = readUnit(in + 2, little);
  if (!isLowSurrogate(low)) return -1;
  out = combineSurrogates(unit, low);
  return 4;
}

int zuUCStoUTF16(char* out, unsigned int codePoint, eEndianType type) {
  const bool little = type == eEndianLittle;
  if (codePoint > kMaxCodePoint) return -1;
  if (codePoint < 0x10000) {
    writeUnit(out, codePoint, little);
    return 2;
  }
  writeUnit(out, 0xD800 + ((codePoint - 0x10000) >> 10), little);
  writeUnit(out + 2, 0xDC00 + (codePoint & 0x3FF), little);
  return 4;
}

unsigned int zuUTF16strlen(const char* text, eEndianType type, int bytes) {
  const bool toTerminator = bytes < 0;
  const unsigned int limit = toTerminator ? ~0u : static_cast<unsigned int>(bytes) & ~1u;
  bool little;
  unsigned int pos = leadingMark(text, toTerminator ? 2 : limit, type, little);
  unsigned int count = 0;
  while (pos < limit) {
    const uint32_t unit = readUnit(text + pos, little);
    if (toTerminator && unit == 0) break;
    pos += 2;
    if (isHighSurrogate(unit) && pos < limit && isLowSurrogate(readUnit(text + pos, little))) {
      pos += 2;
    }
    ++count;
  }
  return count;
}

const char* zuUTF16NextChar(const char* p, const char* end, eEndianType type) {
  if (end - p < 2) return end;
  const bool little = type == eEndianLittle;
  if (end - p >= 4 && isHighSurrogate(readUnit(p, little)) &&
      isLowSurrogate(readUnit(p + 2, little))) {
    return p + 4;
  }
  return p + 2;
}

const char* zuUTF16PrevChar(const char* start, const char* p, eEndianType type) {
  if (p - start < 2) return start;
  const bool little = type == eEndianLittle;
  const char* q = p - 2;
  if (q - start >= 2 && isLowSurrogate(readUnit(q, little)) &&
      isHighSurrogate(readUnit(q - 2, little))) {
    return q - 2;
  }
  return q;
}

unsigned int zuUTF16ByteLen(const char* text, unsigned int codePoints, eEndianType type) {
  const bool little = type == eEndianLittle;
  unsigned int pos = 0;
  for (unsigned int n = 0; n < codePoints; ++n) {
    const uint32_t unit = readUnit(text + pos, little);
    if (unit == 0) break;
    pos += 2;
    // A high surrogate is followed at least by the terminating unit.
    if (isHighSurrogate(unit) && isLowSurrogate(readUnit(text + pos, little))) pos += 2;
  }
  return pos;
}

unsigned int ConvertFromUTF16(unsigned int* out, unsigned int outMax, const char* in,
                              unsigned int inBytes, eEndianType type) {
  bool little;
  // A lone mark is text, as in ConvertFromUTF8.
  if (leadingMark(in, inBytes, type, little) != 0 && inBytes > 2) {
    in += 2;
    inBytes -= 2;
  }
  const eEndianType order = little ? eEndianLittle : eEndianBig;
  return out != nullptr ? fromUtf16<true>(out, outMax, in, inBytes, order)
                        : fromUtf16<false>(nullptr, 0, in, inBytes, order);
}

unsigned int ConvertToUTF16(char* out, unsigned int outBytes, const unsigned int* in,
                            unsigned int count, eEndianType type) {
  return out != nullptr ? toUtf16<true>(out, outBytes, in, count, type)
                        : toUtf16<false>(nullptr, 0, in, count, type);
}

// ------------------------------------------------- UTF-8 <-> host UTF-16

unsigned int zuUTF8toUTF16(char16_t* out, unsigned int outMax, const char* in,
                           unsigned int inBytes) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(in);
  return out != nullptr ? utf8ToUtf16<true>(out, outMax, bytes, inBytes)
                        : utf8ToUtf16<false>(nullptr, 0, bytes, inBytes);
}

unsigned int zuUTF16toUTF8(char* out, unsigned int outBytes, const char16_t* in,
                           unsigned int units) {
  return out != nullptr ? utf16ToUtf8<true>(out, outBytes, in, units)
                        : utf16ToUtf8<false>(nullptr, 0, in, units);
}
