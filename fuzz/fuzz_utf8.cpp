// Feeds arbitrary bytes to the UTF-8 decoders and checks that they agree with
// each other, respect every capacity and never read past the bytes given,
// and that the scalar walk and the AVX2 blocks give the same results.
//
// The input is copied into a heap block of exactly its size, so that the
// address sanitizer reports a read one byte too far.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "zu/core/internal/zuUnicodeSimd.h"
#include "zu/core/zuUnicode.h"

namespace {

constexpr unsigned int kSmall = 7;

void check(bool condition) {
  if (!condition) __builtin_trap();
}

template <typename T>
std::unique_ptr<T[]> exactBlock(size_t count) {
  return std::unique_ptr<T[]>(new T[count == 0 ? 1 : count]);
}

void stepDecoder(const char* bytes, unsigned int size) {
  unsigned int pos = 0;
  while (pos < size) {
    unsigned int codePoint = 0;
    const int length = zuUTF8toUCS(codePoint, bytes + pos, size - pos);
    if (length < 0) {
      ++pos;
      continue;
    }
    check(length >= 1 && length <= 6 && static_cast<unsigned int>(length) <= size - pos);
    if (length <= 4) {
      char again[4];
      check(zuUCStoUTF8(again, codePoint) == length);
      check(std::memcmp(again, bytes + pos, static_cast<size_t>(length)) == 0);
    }
    pos += static_cast<unsigned int>(length);
  }
}

void convertToCodePoints(const char* bytes, unsigned int size) {
  const unsigned int total = ConvertFromUTF8(nullptr, 0, bytes, size);
  check(total <= size);

  auto small = exactBlock<unsigned int>(kSmall);
  check(ConvertFromUTF8(small.get(), kSmall, bytes, size) == std::min(total, kSmall));

  auto all = exactBlock<unsigned int>(total);
  check(ConvertFromUTF8(all.get(), total, bytes, size) == total);
  const unsigned int utf8Bytes = ConvertToUTF8(nullptr, 0, all.get(), total);
  auto utf8 = exactBlock<char>(utf8Bytes);
  check(ConvertToUTF8(utf8.get(), utf8Bytes, all.get(), total) == utf8Bytes);
  check(zuUTF8strlen(utf8.get(), utf8Bytes) <= total);
}

void convertToUtf16(const char* bytes, unsigned int size) {
  const unsigned int units = zuUTF8toUTF16(nullptr, 0, bytes, size);
  auto small = exactBlock<char16_t>(kSmall);
  check(zuUTF8toUTF16(small.get(), kSmall, bytes, size) <= std::min(units, kSmall));

  auto utf16 = exactBlock<char16_t>(units);
  check(zuUTF8toUTF16(utf16.get(), units, bytes, size) == units);
  // What was converted is a prefix of the input, given back unchanged.
  const unsigned int back = zuUTF16toUTF8(nullptr, 0, utf16.get(), units);
  check(back <= size);
  auto utf8 = exactBlock<char>(back);
  check(zuUTF16toUTF8(utf8.get(), back, utf16.get(), units) == back);
  check(std::memcmp(utf8.get(), bytes, back) == 0);
}

void walkCounting(const char* bytes, unsigned int size) {
  auto terminated = exactBlock<char>(size + 1);
  std::memcpy(terminated.get(), bytes, size);
  terminated[size] = '\0';
  check(zuUTF8ByteLen(terminated.get(), size + 1) <= size);

  const char* p = terminated.get() + size;
  unsigned int steps = 0;
  while (p > terminated.get()) {
    const char* previous = zuUTF8PrevChar(static_cast<const char*>(terminated.get()), p);
    check(previous < p && previous >= terminated.get());
    p = previous;
    ++steps;
  }
  check(steps >= zuUTF8strlen(bytes, size));
}

// Runs `convert(out, room)` on each walk and checks the results are equal.
template <typename Unit, typename Convert>
void sameOnBothWalks(unsigned int room, Convert convert) {
  auto scalar = exactBlock<Unit>(room);
  auto simd = exactBlock<Unit>(room);
  const bool previous = zu::internal::setUnicodeSimd(false);
  const unsigned int scalarCount = convert(scalar.get(), room);
  zu::internal::setUnicodeSimd(true);
  const unsigned int simdCount = convert(simd.get(), room);
  zu::internal::setUnicodeSimd(previous);
  check(scalarCount == simdCount);
  check(std::equal(scalar.get(), scalar.get() + scalarCount, simd.get()));
}

// Both walks with room for everything and with room cut short, on the bytes
// as UTF-8 and, for the encoder, on the code points they decode to and on
// the bytes taken 4 at a time as code points.
void compareWalks(const char* bytes, unsigned int size) {
  for (const unsigned int room : {size, size / 3}) {
    sameOnBothWalks<unsigned int>(room, [&](unsigned int* out, unsigned int max) {
      return ConvertFromUTF8(out, max, bytes, size);
    });
    sameOnBothWalks<char16_t>(room, [&](char16_t* out, unsigned int max) {
      return zuUTF8toUTF16(out, max, bytes, size);
    });
  }
  auto decoded = exactBlock<unsigned int>(size);
  const unsigned int decodedCount = ConvertFromUTF8(decoded.get(), size, bytes, size);
  const unsigned int rawCount = size / 4;
  auto raw = exactBlock<unsigned int>(rawCount);
  std::memcpy(raw.get(), bytes, 4 * rawCount);
  for (const auto& [codePoints, count] :
       {std::pair{decoded.get(), decodedCount}, std::pair{raw.get(), rawCount}}) {
    for (const unsigned int room : {4 * count, count}) {
      sameOnBothWalks<char>(
          room, [&, codePoints = codePoints, count = count](char* out, unsigned int max) {
            return ConvertToUTF8(out, max, codePoints, count);
          });
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 1 << 16) return 0;
  const auto length = static_cast<unsigned int>(size);
  auto bytes = exactBlock<char>(size);
  std::memcpy(bytes.get(), data, size);

  stepDecoder(bytes.get(), length);
  convertToCodePoints(bytes.get(), length);
  convertToUtf16(bytes.get(), length);
  walkCounting(bytes.get(), length);
  compareWalks(bytes.get(), length);
  return 0;
}
