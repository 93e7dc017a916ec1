#include "zu/core/internal/zuUnicodeSimd.h"

#include <immintrin.h>

#include <array>
#include <atomic>
#include <bit>

#include "zu/core/internal/zuCpuFeatures.h"

namespace zu::internal {

namespace {

std::atomic<bool> simdWanted{true};

using Nibbles = std::array<uint8_t, 16>;

// Validation looks at each byte with the byte before it, through three
// tables indexed by nibbles (the high and low nibble of the byte before, the
// high nibble of the byte itself). A bit set in all three is a fault:
constexpr uint8_t kTooShort = 1 << 0;          // a lead byte without continuation
constexpr uint8_t kTooLong = 1 << 1;           // a continuation after an ASCII byte
constexpr uint8_t kOverlong3 = 1 << 2;         // E0 80..9F
constexpr uint8_t kSurrogate = 1 << 3;         // ED A0..BF
constexpr uint8_t kOverlong2 = 1 << 4;         // C0 or C1, then a continuation
constexpr uint8_t kTooLarge = 1 << 5;          // F4 90..BF, F5..FF 90..BF
constexpr uint8_t kOverlong4OrLarge = 1 << 6;  // F0 80..8F, F5..FF 80..8F
// Two continuations in a row: a fault unless a 3- or 4-byte lead stands two
// or three bytes back, which the walk checks apart.
constexpr uint8_t kTwoContinuations = 1 << 7;

constexpr uint8_t kAfterLead = kTooShort | kTooLong | kTwoContinuations;
constexpr uint8_t kAfterF5 = kAfterLead | kTooLarge | kOverlong4OrLarge;
constexpr uint8_t kContinuation = kTooLong | kTwoContinuations | kOverlong2;

constexpr Nibbles kByPreviousHigh = {
    kTooLong,
    kTooLong,
    kTooLong,
    kTooLong,
    kTooLong,
    kTooLong,
    kTooLong,
    kTooLong,
    kTwoContinuations,
    kTwoContinuations,
    kTwoContinuations,
    kTwoContinuations,
    kTooShort | kOverlong2,
    kTooShort,
    kTooShort | kOverlong3 | kSurrogate,
    kTooShort | kTooLarge | kOverlong4OrLarge,
};

constexpr Nibbles kByPreviousLow = {
    kAfterLead | kOverlong3 | kOverlong2 | kOverlong4OrLarge,
    kAfterLead | kOverlong2,
    kAfterLead,
    kAfterLead,
    kAfterLead | kTooLarge,
    kAfterF5,
    kAfterF5,
    kAfterF5,
    kAfterF5,
    kAfterF5,
    kAfterF5,
    kAfterF5,
    kAfterF5,
    kAfterF5 | kSurrogate,
    kAfterF5,
    kAfterF5,
};

constexpr Nibbles kByHigh = {
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,
    kContinuation | kOverlong3 | kOverlong4OrLarge,
    kContinuation | kOverlong3 | kTooLarge,
    kContinuation | kSurrogate | kTooLarge,
    kContinuation | kSurrogate | kTooLarge,
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,
};

// Decoding lane by lane, by the high nibble of a lead byte: the bits of the
// lead that belong to the value, and how far right the four gathered 6-bit
// groups must move to leave the sequence's own bits (continuations never
// lead).
constexpr Nibbles kLeadBits = {0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F,
                               0,    0,    0,    0,    0x1F, 0x1F, 0x0F, 0x07};
constexpr Nibbles kLeadShift = {18, 18, 18, 18, 18, 18, 18, 18, 0, 0, 0, 0, 12, 12, 6, 0};

// For a 16-byte window copied into both halves of a register: lane i (0..7)
// of 32 bits takes the byte at i (the lead) and the three after it (the
// continuations), as one shuffle for each kind of byte.
constexpr std::array<int8_t, 32> kLeadSlot = {0,  -1, -1, -1, 1,  -1, -1, -1, 2,  -1, -1,
                                              -1, 3,  -1, -1, -1, 4,  -1, -1, -1, 5,  -1,
                                              -1, -1, 6,  -1, -1, -1, 7,  -1, -1, -1};
constexpr std::array<int8_t, 32> kFollowSlots = {-1, 1,  2,  3, -1, 2,  3,  4, -1, 3,  4,
                                                 5,  -1, 4,  5, 6,  -1, 5,  6, 7,  -1, 6,
                                                 7,  8,  -1, 7, 8,  9,  -1, 8, 9,  10};

// Lanes of 32 bits to move to the front, in order, for each 8-bit mask of
// lanes to keep.
constexpr std::array<uint64_t, 256> kCompress = [] {
  std::array<uint64_t, 256> table{};
  for (unsigned int mask = 0; mask < 256; ++mask) {
    unsigned int slot = 0;
    for (unsigned int lane = 0; lane < 8; ++lane) {
      if ((mask >> lane) & 1) table[mask] |= static_cast<uint64_t>(lane) << (8 * slot++);
    }
  }
  return table;
}();

// Byte shuffles that move the 16-bit units whose bit is set in an 8-bit
// mask to the front, in order.
constexpr std::array<std::array<uint8_t, 16>, 256> kUnitCompress = [] {
  std::array<std::array<uint8_t, 16>, 256> table{};
  for (unsigned int mask = 0; mask < 256; ++mask) {
    table[mask].fill(0x80);
    unsigned int slot = 0;
    for (unsigned int unit = 0; unit < 8; ++unit) {
      if ((mask >> unit) & 1) {
        table[mask][slot++] = static_cast<uint8_t>(2 * unit);
        table[mask][slot++] = static_cast<uint8_t>(2 * unit + 1);
      }
    }
  }
  return table;
}();

// The bits set in each 8-bit mask.
constexpr std::array<uint8_t, 256> kUnitCount = [] {
  std::array<uint8_t, 256> table{};
  for (unsigned int mask = 0; mask < 256; ++mask) {
    table[mask] = static_cast<uint8_t>(std::popcount(mask));
  }
  return table;
}();

// Each bit of an 8-bit mask moved to twice its place (bit i to bit 2i).
constexpr std::array<uint16_t, 256> kSpread = [] {
  std::array<uint16_t, 256> table{};
  for (unsigned int mask = 0; mask < 256; ++mask) {
    for (unsigned int bit = 0; bit < 8; ++bit) {
      if ((mask >> bit) & 1) table[mask] |= static_cast<uint16_t>(1u << (2 * bit));
    }
  }
  return table;
}();

// Encoding: for four lanes of 1 to 4 bytes each, whose lengths less one
// make the index (2 bits a lane, lane 0 lowest), the byte shuffle that
// writes each lane's sequence lead first (a lane holds its sequence last
// byte first), and the bytes it writes.
struct EncodeShuffle {
  std::array<uint8_t, 16> bytes;
  unsigned int length;
};

constexpr std::array<EncodeShuffle, 256> kEncodeShuffles = [] {
  std::array<EncodeShuffle, 256> table{};
  for (unsigned int index = 0; index < 256; ++index) {
    EncodeShuffle& entry = table[index];
    entry.bytes.fill(0x80);
    unsigned int at = 0;
    for (unsigned int lane = 0; lane < 4; ++lane) {
      const unsigned int length = ((index >> (2 * lane)) & 3) + 1;
      for (unsigned int k = length; k > 0; --k) {
        entry.bytes[at++] = static_cast<uint8_t>(4 * lane + k - 1);
      }
    }
    entry.length = at;
  }
  return table;
}();

#define ZU_AVX2 __attribute__((target("avx2")))

// GCC rebuilds broadcast constants inside a loop from general registers
// when it runs short of vector registers, at two shuffle-port operations
// each, on the port these loops are bound by. A constant passed through
// here is opaque to it: it stays in a register or is reloaded from the
// stack.
ZU_AVX2 inline __m256i opaque(__m256i value) {
  __asm__("" : "+x"(value));
  return value;
}

ZU_AVX2 inline __m256i bytesOf(uint8_t byte) {
  return opaque(_mm256_set1_epi8(static_cast<char>(byte)));
}

ZU_AVX2 inline __m256i broadcast(const Nibbles& table) {
  return opaque(
      _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(table.data()))));
}

ZU_AVX2 inline __m256i load32(const void* at) {
  return _mm256_loadu_si256(static_cast<const __m256i*>(at));
}

ZU_AVX2 inline __m128i load16(const void* at) {
  return _mm_loadu_si128(static_cast<const __m128i*>(at));
}

ZU_AVX2 inline uint32_t nonZeroBytes(__m256i bytes) {
  return ~static_cast<uint32_t>(
      _mm256_movemask_epi8(_mm256_cmpeq_epi8(bytes, _mm256_setzero_si256())));
}

// The constants of the UTF-8 block walk, built once a call.
struct Utf8Constants {
  __m256i lowNibble;
  __m256i highNibble;
  __m256i byPreviousHigh;
  __m256i byPreviousLow;
  __m256i byHigh;
  // Subtracted with saturation, these leave a non-zero byte where a block
  // ends early: at a sequence that runs past its 32 bytes, and (in the first
  // form) at a 4-byte sequence after its first byte.
  __m256i cutBeforeFourByte;
  __m256i cutAtEnd;
  __m256i belowFourByteLead;
  __m256i belowThirdByteLead;
  __m256i belowFourthByteLead;
  __m256i highBit;
  __m256i belowLead;  // 0xC0: as signed bytes above every continuation; the top two bits
  __m256i ascii;
};

ZU_AVX2 inline __m256i cutConstant(bool beforeFourByte) {
  constexpr char kNever = -1;
  constexpr auto kFourByte = static_cast<char>(0xEF);
  const char inside = beforeFourByte ? kFourByte : kNever;
  return opaque(_mm256_setr_epi8(kNever, inside, inside, inside, inside, inside, inside, inside,
                                 inside, inside, inside, inside, inside, inside, inside, inside,
                                 inside, inside, inside, inside, inside, inside, inside, inside,
                                 inside, inside, inside, inside, inside, kFourByte,
                                 static_cast<char>(0xDF), static_cast<char>(0xBF)));
}

ZU_AVX2 inline Utf8Constants utf8Constants() {
  return {
      bytesOf(0x0F),
      bytesOf(0xF0),
      broadcast(kByPreviousHigh),
      broadcast(kByPreviousLow),
      broadcast(kByHigh),
      cutConstant(true),
      cutConstant(false),
      bytesOf(0xEF),
      bytesOf(0xE0 - 0x80),
      bytesOf(0xF0 - 0x80),
      bytesOf(0x80),
      bytesOf(0xC0),
      bytesOf(0x7F),
  };
}

// The bytes of a block that starts a character where it is faulty: a NUL,
// a byte that ends a faulty pair, a continuation too many or too few.
// Also gives the bytes one and two places back (taken as ASCII before the
// block).
ZU_AVX2 inline uint32_t faultsOf(const Utf8Constants& k, __m256i bytes, __m256i& previous1,
                                 __m256i& previous2) {
  const __m256i earlier = _mm256_permute2x128_si256(bytes, bytes, 0x08);
  previous1 = _mm256_alignr_epi8(bytes, earlier, 15);
  previous2 = _mm256_alignr_epi8(bytes, earlier, 14);
  const __m256i previous3 = _mm256_alignr_epi8(bytes, earlier, 13);
  const __m256i pairs = _mm256_and_si256(
      _mm256_and_si256(
          _mm256_shuffle_epi8(k.byPreviousHigh,
                              _mm256_and_si256(_mm256_srli_epi16(previous1, 4), k.lowNibble)),
          _mm256_shuffle_epi8(k.byPreviousLow, _mm256_and_si256(previous1, k.lowNibble))),
      _mm256_shuffle_epi8(k.byHigh, _mm256_and_si256(_mm256_srli_epi16(bytes, 4), k.lowNibble)));
  // The high bit where a 3-byte lead stands two bytes back or a 4-byte
  // lead three back: exactly there two continuations in a row belong.
  const __m256i thirdOrFourth =
      _mm256_and_si256(_mm256_or_si256(_mm256_subs_epu8(previous2, k.belowThirdByteLead),
                                       _mm256_subs_epu8(previous3, k.belowFourthByteLead)),
                       k.highBit);
  return nonZeroBytes(_mm256_or_si256(_mm256_xor_si256(pairs, thirdOrFourth),
                                      _mm256_cmpeq_epi8(bytes, _mm256_setzero_si256())));
}

// Where a block cut by `cut` (see Utf8Constants) ends, and the mask of the
// bytes through that end: a fault at the end itself means the last
// sequence taken lacks a byte.
struct BlockEnd {
  unsigned int end;
  uint64_t throughEnd;
};

ZU_AVX2 inline BlockEnd blockEnd(__m256i bytes, __m256i cut) {
  const auto end = static_cast<unsigned int>(
      std::countr_zero(nonZeroBytes(_mm256_subs_epu8(bytes, cut)) | (1ull << 32)));
  return {end, (2ull << end) - 1};
}

// Decodes the sequences that start at the 8 bytes from `at`, one a lane of
// 32 bits (lanes that start no sequence hold garbage). Every sequence that
// is taken is well formed, so the bytes after `at + 7` that it uses are
// there.
ZU_AVX2 inline __m256i decodeEight(const unsigned char* at) {
  const __m256i window = _mm256_broadcastsi128_si256(load16(at));
  const __m256i high = _mm256_and_si256(_mm256_srli_epi16(window, 4), _mm256_set1_epi8(0x0F));
  const __m256i leads = _mm256_and_si256(window, _mm256_shuffle_epi8(broadcast(kLeadBits), high));
  const __m256i follows = _mm256_and_si256(window, _mm256_set1_epi8(0x3F));
  const __m256i leadSlot = load32(kLeadSlot.data());
  const __m256i gathered =
      _mm256_or_si256(_mm256_shuffle_epi8(leads, leadSlot),
                      _mm256_shuffle_epi8(follows, load32(kFollowSlots.data())));
  // Four 6-bit groups (the lead's up to 7 bits) joined, lead highest.
  const __m256i pairs = _mm256_maddubs_epi16(gathered, _mm256_set1_epi16(0x0140));
  const __m256i joined = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
  const __m256i shifts =
      _mm256_shuffle_epi8(_mm256_shuffle_epi8(broadcast(kLeadShift), high), leadSlot);
  return _mm256_srlv_epi32(joined, shifts);
}

ZU_AVX2 inline __m128i unitShuffle(unsigned int keep) {
  return load16(kUnitCompress[keep].data());
}

// The unit shuffles for the low and the high half of a register.
ZU_AVX2 inline __m256i unitShuffles(unsigned int low, unsigned int high) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(unitShuffle(low)), unitShuffle(high), 1);
}

// Stores the code points of the lanes set in `keep` (the lanes of the
// sequences that start in a group of 8 bytes), in order; returns the units
// written. `fourByte` marks the lanes of supplementary code points.
ZU_AVX2 inline unsigned int storeLanes(uint32_t* out, __m256i values, unsigned int keep,
                                       unsigned int) {
  const __m256i order =
      _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(&kCompress[keep])));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), _mm256_permutevar8x32_epi32(values, order));
  return static_cast<unsigned int>(std::popcount(keep));
}

ZU_AVX2 inline unsigned int storeLanes(char16_t* out, __m256i values, unsigned int keep,
                                       unsigned int fourByte) {
  // A lane of a supplementary code point becomes its surrogate pair, high
  // then low; any other keeps its low unit. The units to keep are then
  // moved to the front, each half of the register on its own.
  const __m256i pairs = _mm256_or_si256(
      _mm256_add_epi32(_mm256_srli_epi32(values, 10), _mm256_set1_epi32(0xD800 - (0x10000 >> 10))),
      _mm256_slli_epi32(_mm256_or_si256(_mm256_and_si256(values, _mm256_set1_epi32(0x3FF)),
                                        _mm256_set1_epi32(0xDC00)),
                        16));
  const __m256i units =
      _mm256_blendv_epi8(values, pairs, _mm256_cmpgt_epi32(values, _mm256_set1_epi32(0xFFFF)));
  const unsigned int unitKeep = kSpread[keep] | (kSpread[fourByte] << 1);
  const __m256i packed = _mm256_shuffle_epi8(units, unitShuffles(unitKeep & 0xFF, unitKeep >> 8));
  const auto lowCount = static_cast<unsigned int>(std::popcount(unitKeep & 0xFF));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(packed));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out + lowCount), _mm256_extracti128_si256(packed, 1));
  return static_cast<unsigned int>(std::popcount(unitKeep));
}

// Takes the block at `block`, which starts with a 4-byte sequence (or a
// byte F5 to FF), 8 bytes at a time into `target`; returns what it read and
// wrote, nothing when the block is faulty.
template <typename Unit>
ZU_AVX2 inline BlockProgress takeAnySequences(const Utf8Constants& k, const unsigned char* block,
                                              Unit* target) {
  const __m256i bytes = load32(block);
  const BlockEnd cut = blockEnd(bytes, k.cutAtEnd);
  __m256i previous1;
  __m256i previous2;
  if ((faultsOf(k, bytes, previous1, previous2) & cut.throughEnd) != 0) return {0, 0};
  const uint32_t leads =
      ~static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpgt_epi8(k.belowLead, bytes))) &
      static_cast<uint32_t>(cut.throughEnd >> 1);
  const uint32_t fourByteLeads = nonZeroBytes(_mm256_subs_epu8(bytes, k.belowFourByteLead)) & leads;
  unsigned int written = 0;
  for (unsigned int group = 0; group < 32; group += 8) {
    written += storeLanes(target + written, decodeEight(block + group), (leads >> group) & 0xFF,
                          (fourByteLeads >> group) & 0xFF);
  }
  return {cut.end, written};
}

// Stores the 8 units of a half register.
ZU_AVX2 inline void storeUnits(char16_t* out, __m128i units) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), units);
}

ZU_AVX2 inline void storeUnits(uint32_t* out, __m128i units) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), _mm256_cvtepu16_epi32(units));
}

// Stores the code points of a block whose characters take 1 to 3 bytes,
// each computed at the byte that ends it (marked in `ends`) from that byte
// and the two before, and returns the units written. `continuation` marks
// the continuation bytes.
template <typename Unit>
ZU_AVX2 inline unsigned int storeShortSequences(Unit* out, const Utf8Constants& k, __m256i bytes,
                                                __m256i previous1, __m256i previous2,
                                                __m256i continuation, uint32_t ends) {
  const __m256i continuation1 = _mm256_cmpgt_epi8(k.belowLead, previous1);
  // Shifts of 16-bit lanes move bits across the two bytes of a lane; the
  // masks keep only the bits that come from the byte itself.
  // Low byte: 6 bits of the last byte (7 of an ASCII one; a continuation
  // has bit 6 clear), under 2 bits of the byte before.
  const __m256i low =
      _mm256_or_si256(_mm256_and_si256(bytes, k.ascii),
                      _mm256_and_si256(_mm256_slli_epi16(previous1, 6),
                                       _mm256_and_si256(continuation, k.belowLead)));
  // High byte: 4 more bits of the byte before (3 of a 2-byte lead, whose
  // bit 5 is clear), under the 4 of a 3-byte lead two bytes back.
  const __m256i high = _mm256_and_si256(
      continuation,
      _mm256_or_si256(_mm256_and_si256(_mm256_srli_epi16(previous1, 2), k.lowNibble),
                      _mm256_and_si256(_mm256_slli_epi16(previous2, 4),
                                       _mm256_and_si256(continuation1, k.highNibble))));
  // Units of bytes 0-7 and 16-23, then of bytes 8-15 and 24-31, each eight
  // packed to the front of their half.
  const unsigned int ends0 = ends & 0xFF;
  const unsigned int ends1 = (ends >> 8) & 0xFF;
  const unsigned int ends2 = (ends >> 16) & 0xFF;
  const __m256i units0 =
      _mm256_shuffle_epi8(_mm256_unpacklo_epi8(low, high), unitShuffles(ends0, ends2));
  const __m256i units1 =
      _mm256_shuffle_epi8(_mm256_unpackhi_epi8(low, high), unitShuffles(ends1, ends >> 24));
  Unit* next = out;
  storeUnits(next, _mm256_castsi256_si128(units0));
  next += kUnitCount[ends0];
  storeUnits(next, _mm256_castsi256_si128(units1));
  next += kUnitCount[ends1];
  storeUnits(next, _mm256_extracti128_si256(units0, 1));
  next += kUnitCount[ends2];
  storeUnits(next, _mm256_extracti128_si256(units1, 1));
  return static_cast<unsigned int>(std::popcount(ends));
}

ZU_AVX2 inline void widenAscii(uint32_t* out, const unsigned char* in) {
  for (unsigned int i = 0; i < 32; i += 8) {
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(in + i));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_cvtepu8_epi32(bytes));
  }
}

ZU_AVX2 inline void widenAscii(char16_t* out, const unsigned char* in) {
  for (unsigned int i = 0; i < 32; i += 16) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_cvtepu8_epi16(load16(in + i)));
  }
}

template <typename Unit>
ZU_AVX2 BlockProgress utf8Blocks(Unit* out, unsigned int outMax, const unsigned char* in,
                                 unsigned int inBytes) {
  if (inBytes < kUtf8BlockReach || outMax < kUtf8BlockRoom) return {0, 0};
  const Utf8Constants k = utf8Constants();
  const unsigned char* block = in;
  Unit* target = out;
  const unsigned char* const lastBlock = in + (inBytes - kUtf8BlockReach);
  const Unit* const lastTarget = out + (outMax - kUtf8BlockRoom);
  while (block <= lastBlock && target <= lastTarget) {
    const __m256i bytes = load32(block);
    if (_mm256_movemask_epi8(bytes) == 0) {
      if (nonZeroBytes(bytes) != ~0u) break;
      widenAscii(target, block);
      block += 32;
      target += 32;
      continue;
    }
    if (*block >= 0xF0) {
      const BlockProgress taken = takeAnySequences(k, block, target);
      if (taken.read == 0) break;
      block += taken.read;
      target += taken.written;
      continue;
    }
    // The block ends before a sequence that runs past its 32 bytes and
    // before its first 4-byte sequence (or byte F5 to FF, which the next
    // block finds faulty).
    const BlockEnd cut = blockEnd(bytes, k.cutBeforeFourByte);
    __m256i previous1;
    __m256i previous2;
    if ((faultsOf(k, bytes, previous1, previous2) & cut.throughEnd) != 0) break;
    const __m256i continuation = _mm256_cmpgt_epi8(k.belowLead, bytes);
    const uint32_t ends = ~(static_cast<uint32_t>(_mm256_movemask_epi8(continuation)) >> 1) &
                          static_cast<uint32_t>(cut.throughEnd >> 1);
    target += storeShortSequences(target, k, bytes, previous1, previous2, continuation, ends);
    block += cut.end;
  }
  return {static_cast<unsigned int>(block - in), static_cast<unsigned int>(target - out)};
}

}  // namespace

bool unicodeSimdEnabled() {
  return hasAvx2() && simdWanted.load(std::memory_order_relaxed);
}

bool setUnicodeSimd(bool enabled) {
  return simdWanted.exchange(enabled, std::memory_order_relaxed);
}

BlockProgress utf8BlocksAvx2(uint32_t* out, unsigned int outMax, const unsigned char* in,
                             unsigned int inBytes) {
  return utf8Blocks(out, outMax, in, inBytes);
}

BlockProgress utf8BlocksAvx2(char16_t* out, unsigned int outMax, const unsigned char* in,
                             unsigned int inBytes) {
  return utf8Blocks(out, outMax, in, inBytes);
}

ZU_AVX2 BlockProgress utf32BlocksAvx2(char* out, unsigned int outBytes, const uint32_t* in,
                                      unsigned int count) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256i valueBits = opaque(_mm256_set1_epi32(0x1FFFFF));
  const __m256i above1 = opaque(_mm256_set1_epi32(0x7F));
  const __m256i above2 = opaque(_mm256_set1_epi32(0x7FF));
  const __m256i above3 = opaque(_mm256_set1_epi32(0xFFFF));
  const __m256i group0 = opaque(_mm256_set1_epi32(0x3F));
  const __m256i group1 = opaque(_mm256_set1_epi32(0x3F00));
  const __m256i group2 = opaque(_mm256_set1_epi32(0x3F0000));
  const __m256i group3 = opaque(_mm256_set1_epi32(0x07000000));
  const __m256i marks2 = opaque(_mm256_set1_epi32(0xC080));
  const __m256i marks3 = opaque(_mm256_set1_epi32(0xE08080 ^ 0xC080));
  const __m256i marks4 = opaque(_mm256_set1_epi32(static_cast<int>(0xF0808080u ^ 0xE08080)));
  BlockProgress done{0, 0};
  while (count - done.read >= 8 && outBytes - done.written >= 32) {
    const __m256i codePoints = _mm256_and_si256(load32(in + done.read), valueBits);
    const __m256i zeros = _mm256_cmpeq_epi32(codePoints, zero);
    if (!_mm256_testz_si256(zeros, zeros)) break;
    const __m256i over1 = _mm256_cmpgt_epi32(codePoints, above1);
    const auto longer1 = static_cast<unsigned int>(_mm256_movemask_ps(_mm256_castsi256_ps(over1)));
    if (longer1 == 0) {  // 8 ASCII code points: their low bytes
      const __m128i units = _mm_packus_epi32(_mm256_castsi256_si128(codePoints),
                                             _mm256_extracti128_si256(codePoints, 1));
      _mm_storel_epi64(reinterpret_cast<__m128i*>(out + done.written),
                       _mm_packus_epi16(units, units));
      done.read += 8;
      done.written += 8;
      continue;
    }
    const __m256i over2 = _mm256_cmpgt_epi32(codePoints, above2);
    const __m256i over3 = _mm256_cmpgt_epi32(codePoints, above3);
    // Each 6-bit group into its own byte, last group lowest, then the lead
    // and continuation marks of the lane's length; a 1-byte lane stays as
    // it is.
    const __m256i groups = _mm256_or_si256(
        _mm256_or_si256(_mm256_and_si256(codePoints, group0),
                        _mm256_and_si256(_mm256_slli_epi32(codePoints, 2), group1)),
        _mm256_or_si256(_mm256_and_si256(_mm256_slli_epi32(codePoints, 4), group2),
                        _mm256_and_si256(_mm256_slli_epi32(codePoints, 6), group3)));
    const __m256i marks = _mm256_xor_si256(
        _mm256_and_si256(over1, marks2),
        _mm256_xor_si256(_mm256_and_si256(over2, marks3), _mm256_and_si256(over3, marks4)));
    const __m256i words = _mm256_blendv_epi8(codePoints, _mm256_or_si256(groups, marks), over1);
    // Lengths less one, 2 bits a lane: the low bit is set for 2 or 4
    // bytes, the high bit for 3 or 4.
    const auto longer2 = static_cast<unsigned int>(_mm256_movemask_ps(_mm256_castsi256_ps(over2)));
    const auto longer3 = static_cast<unsigned int>(_mm256_movemask_ps(_mm256_castsi256_ps(over3)));
    const unsigned int index = kSpread[longer1 ^ longer2 ^ longer3] | (kSpread[longer2] << 1);
    const EncodeShuffle& low = kEncodeShuffles[index & 0xFF];
    const EncodeShuffle& high = kEncodeShuffles[index >> 8];
    const __m256i shuffle = _mm256_inserti128_si256(
        _mm256_castsi128_si256(load16(low.bytes.data())), load16(high.bytes.data()), 1);
    const __m256i bytes = _mm256_shuffle_epi8(words, shuffle);
    char* target = out + done.written;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target), _mm256_castsi256_si128(bytes));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target + low.length),
                     _mm256_extracti128_si256(bytes, 1));
    done.read += 8;
    done.written += low.length + high.length;
  }
  return done;
}

}  // namespace zu::internal
