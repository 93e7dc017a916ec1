// Feeds arbitrary bytes to the UTF-16 decoders, in both byte orders and as
// host-order char16_t units, and checks that they agree with each other,
// respect every capacity and never read past the bytes given.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "zu/core/zuUnicode.h"

namespace {

constexpr unsigned int kSmall = 5;

void check(bool condition) {
  if (!condition) __builtin_trap();
}

template <typename T>
std::unique_ptr<T[]> exactBlock(size_t count) {
  return std::unique_ptr<T[]>(new T[count == 0 ? 1 : count]);
}

void stepDecoder(const char* bytes, unsigned int size, eEndianType type) {
  unsigned int pos = 0;
  while (pos < size) {
    unsigned int codePoint = 0;
    const int length = zuUTF16toUCS(codePoint, bytes + pos, size - pos, type);
    if (length < 0) {
      pos += 2;
      continue;
    }
    check((length == 2 || length == 4) && static_cast<unsigned int>(length) <= size - pos);
    char again[4];
    check(zuUCStoUTF16(again, codePoint, type) == length);
    check(std::memcmp(again, bytes + pos, static_cast<size_t>(length)) == 0);
    check(zuUTF16NextChar(bytes + pos, bytes + size, type) == bytes + pos + length);
    pos += static_cast<unsigned int>(length);
  }
}

void convertToCodePoints(const char* bytes, unsigned int size, eEndianType type) {
  const unsigned int total = ConvertFromUTF16(nullptr, 0, bytes, size, type);
  // Counting never counts a leading mark; decoding keeps a lone one as text.
  const bool loneMark = size == 2 && zuUTF16BOM(bytes) != eEndianUnknown;
  check(total <= zuUTF16strlen(bytes, type, static_cast<int>(size)) + (loneMark ? 1 : 0));

  auto small = exactBlock<unsigned int>(kSmall);
  check(ConvertFromUTF16(small.get(), kSmall, bytes, size, type) == std::min(total, kSmall));

  auto all = exactBlock<unsigned int>(total);
  check(ConvertFromUTF16(all.get(), total, bytes, size, type) == total);
  const unsigned int utf16Bytes = ConvertToUTF16(nullptr, 0, all.get(), total, eEndianLittle);
  auto utf16 = exactBlock<char>(utf16Bytes);
  check(ConvertToUTF16(utf16.get(), utf16Bytes, all.get(), total, eEndianLittle) == utf16Bytes);
}

void convertHostUnits(const char* bytes, unsigned int size) {
  const unsigned int units = size / 2;
  auto utf16 = exactBlock<char16_t>(units);
  std::memcpy(utf16.get(), bytes, units * sizeof(char16_t));

  const unsigned int utf8Bytes = zuUTF16toUTF8(nullptr, 0, utf16.get(), units);
  auto small = exactBlock<char>(kSmall);
  check(zuUTF16toUTF8(small.get(), kSmall, utf16.get(), units) <= std::min(utf8Bytes, kSmall));

  auto utf8 = exactBlock<char>(utf8Bytes);
  check(zuUTF16toUTF8(utf8.get(), utf8Bytes, utf16.get(), units) == utf8Bytes);
  // What was converted is a prefix of the input, given back unchanged.
  const unsigned int back = zuUTF8toUTF16(nullptr, 0, utf8.get(), utf8Bytes);
  check(back <= units);
  auto again = exactBlock<char16_t>(back);
  check(zuUTF8toUTF16(again.get(), back, utf8.get(), utf8Bytes) == back);
  check(std::memcmp(again.get(), utf16.get(), back * sizeof(char16_t)) == 0);
}

void walkBack(const char* bytes, unsigned int size, eEndianType type) {
  const char* p = bytes + (size & ~1u);
  while (p > bytes) {
    const char* previous = zuUTF16PrevChar(bytes, p, type);
    check(previous < p && previous >= bytes && (p - previous == 2 || p - previous == 4));
    p = previous;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 1 << 16) return 0;
  const auto length = static_cast<unsigned int>(size);
  auto bytes = exactBlock<char>(size);
  std::memcpy(bytes.get(), data, size);

  for (eEndianType type : {eEndianBig, eEndianLittle}) {
    stepDecoder(bytes.get(), length, type);
    walkBack(bytes.get(), length, type);
  }
  for (eEndianType type : {eEndianUnknown, eEndianBig, eEndianLittle}) {
    convertToCodePoints(bytes.get(), length, type);
  }
  convertHostUnits(bytes.get(), length);
  return 0;
}
