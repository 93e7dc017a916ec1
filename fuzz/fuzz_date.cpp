// RnDate with arbitrary pictures, texts and locales: the input is split at
// its first two NUL bytes into picture, text and locale. The text is parsed
// under the picture, and both a parsed date and a date from the input's
// first bytes are formatted under it (with full-width and native forms when
// the picture asks).
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>

#include "zu/picture/RnDate.h"

namespace {

const char* const kLocales[] = {"en_US", "ja_JP", "ko_KR", "zh_CN", "zh_TW", "zh_HK",
                                "th_TH", "ar_SA", "fr_FR", "ru_RU", "hi_IN", "ko_KR_HANI"};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 5) return 0;
  // The first four bytes choose a day number, a century split and a locale.
  int32_t days = 0;
  std::memcpy(&days, data, sizeof days);
  const char* locale = kLocales[(static_cast<uint8_t>(days) >> 1) % std::size(kLocales)];
  const int split = static_cast<int8_t>(data[4]);
  const std::string rest(reinterpret_cast<const char*>(data + 5), size - 5);
  const size_t firstNul = rest.find('\0');
  const std::string picture = rest.substr(0, firstNul);
  const std::string text = firstNul == std::string::npos ? "" : rest.substr(firstNul + 1);
  const zuString pictureText(picture.c_str());
  const RnDate parsed(zuString(text.c_str()), pictureText, zuString(locale), split);
  if (parsed.isValid()) {
    zuString again = parsed.format(pictureText);
    (void)again;
  }
  RnDate date(days, locale, split);
  date += static_cast<int8_t>(data[4]) * 100000;
  zuString formatted = date.format(pictureText);
  (void)formatted;
  return 0;
}
