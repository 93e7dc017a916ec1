// RnLocale's links to the platform: the thread's recorded locale, the C
// library's locale and numeric conventions, and ICU's language names.
#include <unicode/uloc.h>
#include <unicode/ustring.h>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zu/core/internal/zuDecimalPoint.h"
#include "zu/locale/RnData.h"
#include "zu/locale/RnLocale.h"
#include "zu/locale/internal/RnLocaleMap.h"
#include "zu/locale/internal/RnLocaleName.h"
#include "zu/locale/internal/RnThreadLocale.h"

using zu::internal::findLocaleMapRow;
using zu::internal::kLocaleMap;
using zu::internal::kLocaleMapRows;

namespace {

// The locale id setLocale recorded for this thread; 0 when none was.
thread_local uint32_t tRecordedLcid = 0;

// The row for a platform locale id. Norwegian ids name their rows directly,
// since "no" and "nb" share id 20; any other id takes the last row that
// carries it. 0 when no row does.
int rowForLcid(uint32_t lcid) {
  switch (lcid) {
    case 20:
      return findLocaleMapRow("nb");
    case 1044:
      return findLocaleMapRow("nb_NO");
    case 2068:
      return findLocaleMapRow("nn_NO");
    default:
      for (int row = kLocaleMapRows - 1; row >= 1; --row) {
        if (kLocaleMap[row].lcid == lcid) return row;
      }
      return 0;
  }
}

// Names longer than this cannot be canonical locale names; they are cut.
constexpr size_t kNameBuffer = 64;

// The user's default locale from the environment, without its code set and
// modifier, copied into `name`; empty when unset or the POSIX locale.
void userDefaultLocale(char (&name)[kNameBuffer]) {
  name[0] = '\0';
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value == '\0') continue;
    size_t length = zu::internal::unqualifiedLength(value, std::strlen(value));
    if (length >= kNameBuffer) length = kNameBuffer - 1;
    std::memcpy(name, value, length);
    name[length] = '\0';
    if (std::strcmp(name, "C") == 0 || std::strcmp(name, "POSIX") == 0) name[0] = '\0';
    return;
  }
}

// The fewest characters ICU's name of a language must have to be used.
constexpr int32_t kShortestLanguageName = 4;

}  // namespace

const char* zu::internal::threadLocaleName(bool& isMapRow) {
  if (tRecordedLcid != 0) {
    isMapRow = true;
    return kLocaleMap[rowForLcid(tRecordedLcid)].name;
  }
  char name[kNameBuffer];
  userDefaultLocale(name);
  const RnLocale userDefault(name);
  isMapRow = userDefault.getHandle() > 0;
  return userDefault.getName();
}

zuString RnLocale::getLocale(unsigned int) {
  bool isMapRow = false;
  return zuString(zu::internal::threadLocaleName(isMapRow));
}

void RnLocale::setLocale(const zuString& name) {
  const RnLocale locale(name);
  tRecordedLcid = locale.isValid() ? static_cast<uint32_t>(locale.getWinLCID()) : 0;
  if (!locale.isValid()) {
    std::setlocale(LC_ALL, "");
  } else if (std::strcmp(locale.getName(), C) == 0) {
    std::setlocale(LC_ALL, "C");
  } else {
    const std::string platformName = std::string(locale.getName()) + ".UTF-8";
    std::setlocale(LC_ALL, platformName.c_str());
  }
}

zuString RnLocale::getDescName() const {
  if (handle_ < 0) return zuString(getWinName());
  const char* name = getName();
  UChar language[64];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length =
      uloc_getDisplayLanguage(name, name, language, sizeof language / sizeof language[0], &status);
  if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING ||
      u_countChar32(language, length) < kShortestLanguageName) {
    return zuString(getWinName());
  }
  return zuString(language);
}

// --- Numeric conventions -----------------------------------------------------------

namespace {

RnData systemLocaleData() {
  const RnLocale system(RnLocale::getLocale());
  const char* name =
      system.isValid() ? system.getName() : static_cast<const char*>(RnLocale::getDEFAULT_LOCALE());
  return RnData(name);
}

}  // namespace

zuString RnLocale::CurrencySymbol() {
  return systemLocaleData().getCurrencySymbol();
}
zuString RnLocale::NegativeSign() {
  return systemLocaleData().getNegativeSymbol();
}
zuString RnLocale::PositiveSign() {
  return systemLocaleData().getPositiveSymbol();
}
zuString RnLocale::DecimalPoint() {
  return systemLocaleData().getRadixSymbol();
}
zuString RnLocale::ThousandsSep() {
  return systemLocaleData().getGroupingSymbol();
}

char RnLocale::SystemDecimalPointAsChar() {
  return zu::internal::runtimeDecimalPoint();
}

zuString RnLocale::SystemDecimalPoint() {
  zuString point;
  point = SystemDecimalPointAsChar();
  return point;
}

void RnLocale::resetLocaleConv() {}
