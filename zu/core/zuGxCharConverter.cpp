#include "zu/core/zuGxCharConverter.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>

#include "zu/core/internal/zuCodePageNames.h"
#include "zu/core/internal/zuConverterCache.h"
#include "zu/core/zuException.h"

namespace {

using zu::internal::zuConverterCache;

constexpr unsigned int kWorstBytesPerInputByte = 6;
// ICU refuses buffers whose length does not fit in 31 bits.
constexpr unsigned int kIcuMaxBytes = 0x7FFFFFFF;

int processDefaultPage() {
  const int codePage = zu::internal::defaultTableFor(zu::internal::processCodePage());
  return codePage != 0 ? codePage : 65001;
}

// UTF-8, UTF-16 in any order, and font-specific: the forms the library
// converts by itself.
bool isLibraryForm(const zuCharConverter& converter) {
  return converter.IsUTF8CodePage() || converter.IsUTF16CodePage() || converter.IsFontCodePage();
}

// Byte order of UTF-16 or UTF-32 text: big-endian only for the pages that
// say so.
eEndianType orderOf(const zuCharConverter& converter) {
  const int codePage = converter.CodePageNum();
  return codePage == 65003 || codePage == 65006 ? eEndianBig : eEndianLittle;
}

unsigned int utf32Unit(const char* in, eEndianType order) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(in);
  if (order == eEndianBig) {
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
  }
  return uint32_t{bytes[3]} << 24 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[1]} << 8 | bytes[0];
}

unsigned int decodeToCodePoints(const zuCharConverter& from, const char* in, unsigned int inBytes,
                                unsigned int* codePoints) {
  if (from.IsUTF8CodePage()) return ConvertFromUTF8(codePoints, inBytes, in, inBytes);
  if (from.IsUTF16CodePage()) {
    return ConvertFromUTF16(codePoints, inBytes / 2, in, inBytes, orderOf(from));
  }
  for (unsigned int i = 0; i < inBytes; ++i) codePoints[i] = static_cast<unsigned char>(in[i]);
  return inBytes;
}

unsigned int lowBytes(char* out, unsigned int outBytes, const unsigned int* in,
                      unsigned int count) {
  const unsigned int written = std::min(outBytes, count);
  for (unsigned int i = 0; i < written; ++i) out[i] = static_cast<char>(in[i] & 0xFF);
  return written;
}

}  // namespace

zuGxCharConverter::zuGxCharConverter() : zuCharConverter(processDefaultPage()) {}

zuGxCharConverter::zuGxCharConverter(int codePage) : zuCharConverter(codePage) {}

zuGxCharConverter::zuGxCharConverter(const char* name)
    : zuCharConverter(ExtractCodePageNum(name)) {}

zuGxCharConverter::~zuGxCharConverter() = default;

zuCharConverter* zuGxCharConverter::Clone(const char* name) const {
  auto* clone = new (std::nothrow) zuGxCharConverter(name);
  if (clone == nullptr) throw zuExMemory();
  return clone;
}

// --- Walking ---------------------------------------------------------------------

char* zuGxCharConverter::NextChar(char* p) const {
  if (p == nullptr) return p;
  if (IsUTF32CodePage()) return utf32Unit(p, orderOf(*this)) == 0 ? p : p + 4;
  if (IsUTF16CodePage()) {
    const unsigned int unit = zuUTF16Char(p, orderOf(*this));
    if (unit == 0) return p;
    const bool pair =
        unit >= 0xD800 && unit <= 0xDBFF && (zuUTF16Char(p + 2, orderOf(*this)) & 0xFC00) == 0xDC00;
    return p + (pair ? 4 : 2);
  }
  if (*p == '\0') return p;
  if (IsUTF8CodePage()) {
    ++p;
    while ((static_cast<unsigned char>(*p) & 0xC0) == 0x80) ++p;
    return p;
  }
  if (!IsMBLeadByte(*p) || p[1] == '\0') return p + 1;
  const bool fourByteForm =
      IsQBCSCodePage() && p[1] >= '0' && p[1] <= '9' && p[2] != '\0' && p[3] != '\0';
  return p + (fourByteForm ? 4 : 2);
}

char* zuGxCharConverter::PrevChar(char* start, char* p) const {
  if (start == nullptr || p <= start) return start;
  if (IsUTF8CodePage()) return zuUTF8PrevChar(start, p);
  if (IsUTF16CodePage()) {
    return start + (zuUTF16PrevChar(start, p, orderOf(*this)) - start);
  }
  if (IsUTF32CodePage()) return p - std::min<std::ptrdiff_t>(4, p - start);
  if (!IsDBCSCodePage() && !IsQBCSCodePage()) return p - 1;
  char* walk = start;
  for (;;) {
    char* next = NextChar(walk);
    if (next == walk) next = walk + 1;  // step over an embedded NUL
    if (next >= p) return walk;
    walk = next;
  }
}

// --- Code points -------------------------------------------------------------------

unsigned int zuGxCharConverter::ConvertFromMB(unsigned int* out, unsigned int outMax,
                                              const char* in, unsigned int inBytes) const {
  if (in == nullptr) return 0;
  if (IsUTF8CodePage()) return ConvertFromUTF8(out, outMax, in, inBytes);
  if (IsUTF16CodePage()) return ConvertFromUTF16(out, outMax, in, inBytes, orderOf(*this));
  if (IsFontCodePage()) {
    if (out == nullptr) return inBytes;
    const unsigned int count = std::min(outMax, inBytes);
    for (unsigned int i = 0; i < count; ++i) out[i] = static_cast<unsigned char>(in[i]);
    return count;
  }
  const auto outBytes =
      static_cast<unsigned int>(std::min<uint64_t>(uint64_t{outMax} * 4, UINT_MAX));
  return UTF32LE()->Convert(reinterpret_cast<char*>(out), outBytes, this, in, inBytes) / 4;
}

unsigned int zuGxCharConverter::ConvertToMB(char* out, unsigned int outBytes,
                                            const unsigned int* in, unsigned int count) const {
  if (in == nullptr) return 0;
  if (IsUTF8CodePage()) return ConvertToUTF8(out, outBytes, in, count);
  if (IsUTF16CodePage()) return ConvertToUTF16(out, outBytes, in, count, orderOf(*this));
  if (IsFontCodePage()) return out == nullptr ? count : lowBytes(out, outBytes, in, count);
  const auto inBytes = static_cast<unsigned int>(std::min<uint64_t>(uint64_t{count} * 4, UINT_MAX));
  return Convert(out, outBytes, UTF32LE(), reinterpret_cast<const char*>(in), inBytes);
}

// --- Conversion ----------------------------------------------------------------------

unsigned int zuGxCharConverter::Convert(char* out, unsigned int outBytes,
                                        const zuCharConverter* from, const char* in,
                                        unsigned int inBytes) const {
  if (out == nullptr) {
    return static_cast<unsigned int>(
        std::min<uint64_t>(uint64_t{inBytes} * kWorstBytesPerInputByte, UINT_MAX));
  }
  if (from == nullptr || in == nullptr) return Terminate(out, outBytes, 0);
  if (IsUTF8CodePage() && from->IsUTF8CodePage()) {
    const unsigned int copied = std::min(outBytes, inBytes);
    std::memmove(out, in, copied);
    return Terminate(out, outBytes, copied);
  }
  if (isLibraryForm(*this) && isLibraryForm(*from)) {
    return ConvertUnicode(out, outBytes, *from, in, inBytes);
  }
  if (IsFontCodePage() && from->IsUTF32CodePage()) {
    return ConvertUTF32ToFont(out, outBytes, *from, in, inBytes);
  }
  return ConvertICU(out, outBytes, *from, in, inBytes);
}

unsigned int zuGxCharConverter::ConvertUnicode(char* out, unsigned int outBytes,
                                               const zuCharConverter& from, const char* in,
                                               unsigned int inBytes) const {
  unsigned int* codePoints = zuConverterCache::current().codePoints(inBytes);
  const unsigned int count = decodeToCodePoints(from, in, inBytes, codePoints);
  unsigned int written = 0;
  if (IsUTF8CodePage()) {
    written = ConvertToUTF8(out, outBytes, codePoints, count);
  } else if (IsUTF16CodePage()) {
    written = ConvertToUTF16(out, outBytes, codePoints, count, orderOf(*this));
  } else {
    written = lowBytes(out, outBytes, codePoints, count);
  }
  return Terminate(out, outBytes, written);
}

unsigned int zuGxCharConverter::ConvertUTF32ToFont(char* out, unsigned int outBytes,
                                                   const zuCharConverter& from, const char* in,
                                                   unsigned int inBytes) const {
  const eEndianType order = orderOf(from);
  const unsigned int written = std::min(outBytes, inBytes / 4);
  for (unsigned int i = 0; i < written; ++i) {
    out[i] = static_cast<char>(utf32Unit(in + 4 * i, order) & 0xFF);
  }
  return Terminate(out, outBytes, written);
}

unsigned int zuGxCharConverter::ConvertICU(char* out, unsigned int outBytes,
                                           const zuCharConverter& from, const char* in,
                                           unsigned int inBytes) const {
  zuConverterCache& cache = zuConverterCache::current();
  // Short texts in the common double-byte encodings skip ICU's machinery
  // (and the UTF-8 converter, which they do not need).
  if (IsUTF8CodePage()) {
    if (const zu::internal::zuDecodeTable* table = cache.decodeTable(from.CodePageNum())) {
      unsigned int written = 0;
      if (table->toUTF8(in, inBytes, out, std::min(outBytes, kIcuMaxBytes), written)) {
        if (outBytes > written) out[written] = '\0';  // UTF-8 ends with one NUL
        return written;
      }
    }
  }
  UConverter* target = cache.converter(CodePageNum());
  UConverter* source = target != nullptr ? cache.converter(from.CodePageNum()) : nullptr;
  if (source == nullptr) return Terminate(out, outBytes, 0);

  char* cursor = out;
  const char* read = in;
  UErrorCode status = U_ZERO_ERROR;
  ucnv_convertEx(target, source, &cursor, out + std::min(outBytes, kIcuMaxBytes), &read,
                 in + inBytes, nullptr, nullptr, nullptr, nullptr, true, true, &status);
  if (U_FAILURE(status)) return Terminate(out, outBytes, 0);
  return Terminate(out, outBytes, static_cast<unsigned int>(cursor - out));
}

unsigned int zuGxCharConverter::Terminate(char* out, unsigned int outBytes,
                                          unsigned int written) const {
  const unsigned int nulBytes = IsUTF16CodePage() ? 2 : 1;
  if (outBytes - written >= nulBytes) std::memset(out + written, 0, nulBytes);
  return written;
}
