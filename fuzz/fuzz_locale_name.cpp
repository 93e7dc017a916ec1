// Normalises, dequalifies and resolves arbitrary locale names, and reads
// every accessor of the resolved handle.
//
// Input: the name up to the first NUL byte; with a byte left after it, the
// name is also registered for the thread first (and the registry reset
// afterwards), so that registry searches see odd names too.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "zu/locale/RnLocale.h"

namespace {

void readAll(const RnLocale& locale) {
  if (locale.isValid() != (std::strcmp(locale.getName(), "x") != 0 || locale.getHandle() < 0)) {
    __builtin_trap();
  }
  (void)std::strlen(locale.getWinName());
  (void)std::strlen(locale.getCharSet());
  (void)locale.getWinLCID();
  (void)(locale.isArabic() + locale.isChinese() + locale.isSimplifiedChinese() +
         locale.isTraditionalChinese() + locale.isJapanese() + locale.isKorean() +
         locale.isKoreanHani() + locale.isThai() + locale.isBIDI() + locale.isIdeographic() +
         locale.needsDictionaryBreaking());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* text = reinterpret_cast<const char*>(data);
  const std::string name(text, strnlen(text, size));
  // A zuString made from bytes that start with a byte-order mark (UTF-8 or
  // UTF-16) reads or drops the mark, so such a name means one thing as bytes
  // and another as a zuString; the checks below compare the two paths.
  if (std::strcmp(zuString(name.c_str()), name.c_str()) != 0) return 0;
  const bool registerFirst = name.size() + 1 < size;
  if (registerFirst) RnLocale::update(name.c_str(), "de_DE");

  const zuString normalized = RnLocale::normalize(name.c_str());
  bool qualified = false;
  const zuString bare = RnLocale::dequalify(normalized, qualified);
  if (bare.Length() > normalized.Length() || (!qualified && !bare.IsEmpty())) __builtin_trap();

  const RnLocale locale(name.c_str());
  readAll(locale);
  readAll(RnLocale(normalized));
  readAll(RnLocale(bare));
  if (RnLocale::searchMap(normalized) != 0 && !locale.isValid()) __builtin_trap();

  if (registerFirst) RnLocale::reset();
  return 0;
}
