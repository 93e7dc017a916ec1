// Unit names and measurement texts as a user types them.
//
// Input: a byte giving StringToUnit's fallback (any code), a byte whose low
// bit allows negatives, then the text (every byte, NULs included). measurementValidate
// never throws, changes nothing of its argument, and settles within three
// applications (a fourth changes nothing); StringToUnit returns one of the
// named units or the fallback (3 for 255).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "zu/measure/zuUnitSpan.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const auto fallback = static_cast<zuUnitSpan::UnitCode>(data[0]);
  const int allowNegative = data[1] & 1;
  const char* bytes = reinterpret_cast<const char*>(data + 2);
  const zuString text = zuString::FromBytes(bytes, static_cast<unsigned>(size - 2));
  try {
    const unsigned unit = zuUnitSpan::StringToUnit(text, fallback);
    const bool named =
        unit == 1 || unit == 3 || unit == 17 || unit == 19 || unit == 35 || unit == 51;
    if (!named && unit != fallback) std::abort();
    if (unit == zuUnitSpan::eNoUnits) std::abort();

    zuString original = text;
    zuString once = zuUnitSpan::measurementValidate(original, allowNegative);
    if (!original.Equals(text)) std::abort();
    zuString thrice = zuUnitSpan::measurementValidate(once, allowNegative);
    thrice = zuUnitSpan::measurementValidate(thrice, allowNegative);
    if (!zuUnitSpan::measurementValidate(thrice, allowNegative).Equals(thrice)) std::abort();
  } catch (...) {
    std::abort();  // neither may throw
  }
  return 0;
}
