// Formats and parses arbitrary values through arbitrary picture clauses in
// arbitrary locales.
//
// Input: picture, value and locale name separated by NUL bytes (missing
// parts are empty). The value is formatted, the result parsed back through
// the picture, the value itself parsed, and the null value formatted. The
// only exception allowed out is zuExFull 16480 (a compound picture);
// anything else escapes and is reported by the fuzzer.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/picture/zuPicture.h"

namespace {

// The next NUL-separated part of the input.
std::string nextPart(const char*& cursor, const char* end) {
  const char* stop = static_cast<const char*>(std::memchr(cursor, 0, end - cursor));
  if (stop == nullptr) stop = end;
  std::string part(cursor, stop);
  cursor = stop == end ? end : stop + 1;
  return part;
}

template <class Call>
void allowCompoundOnly(Call&& call) {
  try {
    call();
  } catch (zuExFull& error) {
    if (!error.HasResId(zuMessageIds::kCompoundPicture)) throw;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* cursor = reinterpret_cast<const char*>(data);
  const char* end = cursor + size;
  const zuString picture(nextPart(cursor, end).c_str());
  const zuString value(nextPart(cursor, end).c_str());
  const zuString locale(nextPart(cursor, end).c_str());
  zuString formatted;
  allowCompoundOnly([&] {
    int status = -1;
    formatted = zuPicture::format(value, picture, locale, &status, 0);
    if (status == 1 || status == -1) (void)std::strlen(formatted);
  });
  allowCompoundOnly([&] {
    int status = -1;
    (void)zuPicture::format_new(zuString(), picture, locale, &status, 0);
  });
  allowCompoundOnly([&] {
    int status = -1;
    zuString back = zuPicture::parse(formatted, picture, locale, &status);
    (void)std::strlen(back);
  });
  allowCompoundOnly([&] { (void)zuPicture::parse(value, picture, locale); });
  return 0;
}
