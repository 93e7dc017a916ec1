// Converts arbitrary bytes between arbitrary pairs of the supported
// encodings, into exact-size output buffers both generous and small, and
// canonicalises arbitrary names. The sanitizers catch any write past the
// buffer; results must stay within the bytes offered.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "zu/core/zuGxCharConverter.h"
#include "zu/core/zuString.h"

namespace {

const int kCodePages[] = {
    65001, 65002, 65003, 65004,  65005,  65006, 65007, 65000, 101,  943,  1363, 1373,
    1386,  1392,  1383,  2566,   50220,  50222, 50225, 1250,  1252, 1255, 1258, 874,
    88591, 88592, 88597, 885913, 885915, 850,   367,   10000, 1089, 1124, 0,    12345,
};
constexpr size_t kPageCount = sizeof kCodePages / sizeof kCodePages[0];

void check(bool condition) {
  if (!condition) __builtin_trap();
}

void convertInto(const zuCharConverter& to, const zuCharConverter& from, const char* in,
                 unsigned int inBytes, unsigned int outBytes) {
  std::unique_ptr<char[]> out(new char[outBytes == 0 ? 1 : outBytes]);
  const unsigned int written = to.Convert(out.get(), outBytes, &from, in, inBytes);
  check(written <= outBytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 3 || size > 4096) return 0;
  const zuGxCharConverter to(kCodePages[data[0] % kPageCount]);
  const zuGxCharConverter from(kCodePages[data[1] % kPageCount]);
  const unsigned int small = data[2] % 16;
  const auto inBytes = static_cast<unsigned int>(size - 3);
  std::unique_ptr<char[]> in(new char[inBytes == 0 ? 1 : inBytes]);
  std::memcpy(in.get(), data + 3, inBytes);

  const unsigned int worst = to.Convert(nullptr, 0, &from, in.get(), inBytes);
  convertInto(to, from, in.get(), inBytes, worst + 2);
  convertInto(to, from, in.get(), inBytes, small);

  std::unique_ptr<unsigned int[]> codePoints(new unsigned int[small + 1]);
  check(from.ConvertFromMB(codePoints.get(), small, in.get(), inBytes) <= small);

  // The input as an encoding name.
  std::unique_ptr<char[]> name(new char[inBytes + 1]);
  std::memcpy(name.get(), in.get(), inBytes);
  name[inBytes] = '\0';
  const zuString canonical = zuCharConverter::Canonicalize(name.get());
  check(canonical.Length() <= std::strlen(name.get()));
  const zuGxCharConverter named(name.get());
  check(std::strlen(named.CodePage()) < 32);
  check(named.ISOCodePage() != nullptr);
  return 0;
}
