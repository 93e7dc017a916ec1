#include "zu/stream/internal/zuBase64Simd.h"

#include <immintrin.h>

#include <atomic>

#include "zu/core/internal/zuCpuFeatures.h"

namespace zu::internal {

namespace {

std::atomic<bool> simdWanted{true};

// Spreads 24 bytes into 32 lanes of 6 bits (the 3-byte groups into 4 bytes,
// most significant 6 bits first).
__attribute__((target("avx2"))) __m256i splitSixBits(__m256i input) {
  // Lane 0 takes bytes 0..11, lane 1 bytes 12..23.
  input = _mm256_permutevar8x32_epi32(input, _mm256_setr_epi32(0, 1, 2, 3, 3, 4, 5, 6));
  const __m256i groups = _mm256_shuffle_epi8(
      input, _mm256_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10, 1, 0, 2, 1, 4, 3,
                              5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
  const __m256i high = _mm256_mulhi_epu16(_mm256_and_si256(groups, _mm256_set1_epi32(0x0FC0FC00)),
                                          _mm256_set1_epi32(0x04000040));
  const __m256i low = _mm256_mullo_epi16(_mm256_and_si256(groups, _mm256_set1_epi32(0x003F03F0)),
                                         _mm256_set1_epi32(0x01000010));
  return _mm256_or_si256(high, low);
}

// 6-bit values to alphabet characters: add an offset chosen by range
// (0-25 "A", 26-51 "a", 52-61 "0", 62 "+", 63 "/").
__attribute__((target("avx2"))) __m256i toCharacters(__m256i values) {
  const __m256i offsets =
      _mm256_setr_epi8(65, 71, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 0, 0, 65, 71, -4,
                       -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 0, 0);
  __m256i index = _mm256_subs_epu8(values, _mm256_set1_epi8(51));
  index = _mm256_sub_epi8(index, _mm256_cmpgt_epi8(values, _mm256_set1_epi8(25)));
  return _mm256_add_epi8(values, _mm256_shuffle_epi8(offsets, index));
}

}  // namespace

bool base64SimdEnabled() {
  return hasAvx2() && simdWanted.load(std::memory_order_relaxed);
}

bool setBase64Simd(bool enabled) {
  return simdWanted.exchange(enabled, std::memory_order_relaxed);
}

__attribute__((target("avx2"))) void base64EncodeBlocksAvx2(char* out, const uint8_t* in,
                                                            std::size_t blocks) {
  for (; blocks > 0; --blocks, in += 24, out += 32) {
    const __m256i input = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), toCharacters(splitSixBits(input)));
  }
}

__attribute__((target("avx2"))) std::size_t base64DecodeBlocksAvx2(uint8_t* out, const uint8_t* in,
                                                                   std::size_t blocks) {
  // Character classes by low and high nibble: a character is in the
  // alphabet when its two class masks share no bit.
  const __m256i lowClasses =
      _mm256_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x13, 0x1A, 0x1B,
                       0x1B, 0x1B, 0x1A, 0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                       0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A);
  const __m256i highClasses =
      _mm256_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10, 0x10, 0x10, 0x10, 0x10,
                       0x10, 0x10, 0x10, 0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10, 0x10,
                       0x10, 0x10, 0x10, 0x10, 0x10, 0x10);
  // What to add to a character to get its value, by high nibble ("/" apart).
  const __m256i shifts = _mm256_setr_epi8(0, 16, 19, 4, -65, -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0,
                                          0, 16, 19, 4, -65, -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0);
  const __m256i slashMask = _mm256_set1_epi8(0x2F);
  std::size_t done = 0;
  for (; done < blocks; ++done, in += 32, out += 24) {
    const __m256i chars = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
    const __m256i high = _mm256_and_si256(_mm256_srli_epi32(chars, 4), slashMask);
    const __m256i lowClass = _mm256_shuffle_epi8(lowClasses, _mm256_and_si256(chars, slashMask));
    const __m256i highClass = _mm256_shuffle_epi8(highClasses, high);
    if (!_mm256_testz_si256(lowClass, highClass)) break;
    const __m256i isSlash = _mm256_cmpeq_epi8(chars, slashMask);
    const __m256i shift = _mm256_shuffle_epi8(shifts, _mm256_add_epi8(isSlash, high));
    const __m256i values = _mm256_add_epi8(chars, shift);
    // Join 4 values of 6 bits into 3 bytes per 32-bit word, then pack the
    // words' bytes in order.
    const __m256i pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
    const __m256i words = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
    const __m256i bytes = _mm256_shuffle_epi8(
        words, _mm256_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1, 2, 1, 0, 6,
                                5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
    _mm256_storeu_si256(
        reinterpret_cast<__m256i*>(out),
        _mm256_permutevar8x32_epi32(bytes, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7)));
  }
  return done;
}

}  // namespace zu::internal
