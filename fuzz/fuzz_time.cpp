// Formats and parses times of day with arbitrary pictures, texts and locales.
//
// Input: a locale index byte, four bytes of a stored millisecond count, then
// the picture and the text separated by a NUL byte. The time is formatted
// with the picture (the text as its own picture too), the text is parsed
// with it, and a successful parse must format again without trouble and
// give readings inside their ranges.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "zu/picture/RnTime.h"

namespace {

const char* const kLocales[] = {"en_US", "ja_JP", "ko_KR", "zh_CN", "zh_TW", "ar_SA", "ar",
                                "de_DE", "fr_FR", "hi_IN", "th_TH", "en_CA", "xx",    ""};

void checkReadings(const RnTime& time) {
  if (!time.isValid()) return;
  if (time.getHour() < 0 || time.getHour() > 23 || time.getMinute() > 59 || time.getSecond() > 59 ||
      time.getMilliSecond() > 999) {
    __builtin_trap();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 5) return 0;
  const char* locale = kLocales[data[0] % std::size(kLocales)];
  int32_t millis = 0;
  std::memcpy(&millis, data + 1, sizeof millis);
  const char* rest = reinterpret_cast<const char*>(data + 5);
  const size_t restSize = size - 5;
  const size_t pictureLength = strnlen(rest, restSize);
  const std::string picture(rest, pictureLength);
  const std::string text =
      pictureLength < restSize
          ? std::string(rest + pictureLength + 1,
                        strnlen(rest + pictureLength + 1, restSize - pictureLength - 1))
          : std::string();

  RnTime time(millis, locale);
  time += millis;
  checkReadings(time);
  (void)time.getDays();
  zuString formatted = time.format(picture.c_str());
  formatted = time.format(text.c_str());
  time.setLocalTime();
  formatted = time.format(picture.c_str());

  const RnTime parsed(text.c_str(), picture.c_str(), locale);
  checkReadings(parsed);
  formatted = parsed.format(picture.c_str());
  const RnTime again(formatted, picture.c_str(), locale);
  checkReadings(again);
  return 0;
}
