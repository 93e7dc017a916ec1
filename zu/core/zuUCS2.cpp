#include "zu/core/zuUCS2.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "zu/core/internal/zuCodeUnitArray.h"
#include "zu/core/zuUnicode.h"

namespace {

// A single unit, surrogate halves included, takes at most 3 bytes of UTF-8.
constexpr unsigned int kUtf8BytesPerUnit = 3;

unsigned int unitCount(const unsigned short* units, unsigned int limit) {
  unsigned int count = 0;
  if (units != nullptr) {
    while (count < limit && units[count] != 0) ++count;
  }
  return count;
}

}  // namespace

zuUCS2::zuUCS2() : units_(nullptr), length_(0) {
  Assign(nullptr, 0);
}

zuUCS2::zuUCS2(const unsigned short* units) : units_(nullptr), length_(0) {
  Assign(units, unitCount(units, zuString::kMaxLength / kUtf8BytesPerUnit));
}

zuUCS2::zuUCS2(const unsigned short* units, unsigned int count) : units_(nullptr), length_(0) {
  Assign(units, unitCount(units, std::min(count, zuString::kMaxLength / kUtf8BytesPerUnit)));
}

zuUCS2::zuUCS2(const zuUCS2& other) : units_(nullptr), length_(0) {
  Assign(other.units_, other.length_);
}

zuUCS2& zuUCS2::operator=(const zuUCS2& other) {
  if (this != &other) Assign(other.units_, other.length_);
  return *this;
}

zuUCS2::~zuUCS2() {
  delete[] units_;
}

void zuUCS2::Assign(const unsigned short* units, unsigned int count) {
  auto* copy =
      zu::internal::newCodeUnitArray<unsigned short>(static_cast<unsigned long>(count) + 1);
  if (count != 0) std::memcpy(copy, units, count * sizeof *copy);
  copy[count] = 0;

  zuString text = zuString::EmptyString();
  if (count != 0) {
    char* bytes = text.ReAlloc(count * kUtf8BytesPerUnit, 0);
    unsigned int written = 0;
    for (unsigned int i = 0; i < count; ++i) {
      written += static_cast<unsigned int>(zuUCStoUTF8(bytes + written, copy[i]));
    }
    text.SetLength(written);
  }

  delete[] units_;
  units_ = copy;
  length_ = count;
  text_ = text;
}

int zuUCS2::IsLittleEndian() {
  return std::endian::native == std::endian::little ? 1 : 0;
}

void zuUCS2::ByteSwap(unsigned short* units, unsigned int count) {
  for (unsigned int i = 0; i < count; ++i) units[i] = __builtin_bswap16(units[i]);
}
