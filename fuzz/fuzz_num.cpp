// Formats and parses through arbitrary numeric pictures in a few locales.
//
// Input: one byte choosing the locale, then the picture, the value and a
// text to parse, separated by NUL bytes. Neither format nor parse may
// throw (but for running out of memory) or crash, and whatever format
// produced is parsed back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "zu/core/zuException.h"
#include "zu/picture/RnNum.h"

namespace {

const char* const kLocales[] = {"en_US", "de_DE", "fr_FR", "ar", "hi_IN", "ja_JP", "fa", ""};

// The next NUL-separated piece of the input.
zuString nextPiece(const uint8_t*& data, const uint8_t* end) {
  const uint8_t* stop = static_cast<const uint8_t*>(std::memchr(data, 0, end - data));
  if (stop == nullptr) stop = end;
  zuString piece(reinterpret_cast<const char*>(data), static_cast<unsigned>(stop - data));
  data = stop < end ? stop + 1 : end;
  return piece;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const uint8_t* end = data + size;
  const char* locale = kLocales[*data++ % std::size(kLocales)];
  const zuString picture = nextPiece(data, end);
  const zuString value = nextPiece(data, end);
  const zuString text = nextPiece(data, end);
  try {
    RnNum number(value, locale);
    unsigned radix = 0;
    const zuString formatted = number.format(picture, &radix, value.Length() % 2);
    if (!formatted.IsEmpty() && radix > formatted.Length()) std::abort();
    RnNum back(zuString(""), locale);
    back.parse(formatted, picture);
    back.parse(text, picture);
    unsigned leading = 0, trailing = 0;
    RnNum::getSymbolCount(picture, leading, trailing);
  } catch (const zuExMemory&) {
    return 0;  // the one failure format and parse report
  } catch (...) {
    std::abort();
  }
  return 0;
}
