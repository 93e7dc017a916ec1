// Formats and parses arbitrary values through arbitrary text pictures.
//
// Input: a locale selector byte, then the picture up to the first NUL byte,
// the value up to the next NUL, and the rest as text to parse. Besides not
// crashing, a successful parse must collect exactly as many characters as
// the picture's symbol count (pictures without full-width forms, which only
// the count reads as symbols).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zu/core/zuString.h"
#include "zu/picture/RnText.h"

namespace {

std::string takeUntilNul(const uint8_t*& data, const uint8_t* end) {
  const uint8_t* start = data;
  while (data < end && *data != 0) ++data;
  std::string text(reinterpret_cast<const char*>(start), static_cast<size_t>(data - start));
  if (data < end) ++data;
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const char* const kLocales[] = {"en_US", "ar_SA", "", "xx_YY"};
  if (size == 0) return 0;
  const uint8_t* end = data + size;
  const char* locale = kLocales[*data++ % 4];
  const std::string pictureBytes = takeUntilNul(data, end);
  const std::string valueBytes = takeUntilNul(data, end);
  const std::string textBytes = takeUntilNul(data, end);

  const zuString picture(pictureBytes.c_str());
  RnText text(valueBytes.c_str(), locale);
  const zuString formatted = text.format(picture);

  unsigned count = 0;
  RnText::getSymbolCount(picture, count);
  const bool fullWidthFree = std::strchr(picture, '\xEF') == nullptr;
  if (text.parse(textBytes.c_str(), picture) && fullWidthFree &&
      text.getText().UniLength() != count) {
    std::abort();
  }
  if (!formatted.IsEmpty()) text.parse(formatted, picture);
  return 0;
}
