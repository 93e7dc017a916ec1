// zupic locales / zupic locale L: what the built-in locale data holds.
#include <cstdio>

#include "tools/zupic/zupicCommands.h"
#include "zu/locale/RnData.h"
#include "zu/locale/RnLocale.h"

namespace zupic {

namespace {

void printField(const char* label, const zuString& value) {
  std::printf("%-16s %s\n", label, static_cast<const char*>(value));
}

// A list of names joined by ", ".
template <class Getter>
void printNames(const char* label, int count, Getter name) {
  zuString joined = zuString::EmptyString();
  for (int i = 0; i < count; ++i) {
    if (i > 0) joined += ", ";
    joined += name(i);
  }
  printField(label, joined);
}

void printPatterns(const char* label, const RnData& data, zuString (RnData::*getter)(int) const) {
  static const char* const kStyles[] = {"short", "medium", "long", "full"};
  for (int style = RnData::SHORT_FMT; style <= RnData::FULL_FMT; ++style) {
    zuString text(label);
    text += " ";
    text += kStyles[style - RnData::SHORT_FMT];
    printField(text, (data.*getter)(style));
  }
}

}  // namespace

int listLocales() {
  zuStorage<zuString> names;
  RnData::getLocaleNames(names);
  for (unsigned int i = 0; i < names.GetSize(); ++i) {
    const RnLocale locale(names[i]);
    if (!locale.isValid()) continue;
    std::printf("%-12s %-32s %s\n", locale.getName(), locale.getWinName(),
                static_cast<const char*>(locale.getDescName()));
  }
  return kOk;
}

int showLocale(const std::string& name) {
  const RnLocale locale(name.c_str());
  if (!locale.isValid()) {
    std::fprintf(stderr, "zupic: unknown locale \"%s\" (see zupic locales)\n", name.c_str());
    return kNoMatch;
  }
  const RnData data(locale.getName());
  printField("name", locale.getName());
  printField("platform name", locale.getWinName());
  printField("language", locale.getDescName());
  printField("code set", locale.getCharSet());
  std::printf("%-16s %lu\n", "locale id", locale.getWinLCID());
  printNames("months", 12, [&](int i) { return data.getMonthName(i); });
  printNames("months, short", 12, [&](int i) { return data.getAbbrMonthName(i); });
  printNames("weekdays", 7, [&](int i) { return data.getWeekDayName(i); });
  printNames("weekdays, short", 7, [&](int i) { return data.getAbbrWeekDayName(i); });
  printNames("eras", 2, [&](int i) { return data.getEraName(i); });
  printNames("meridiems", 2, [&](int i) { return data.getMeridiemName(i); });
  printPatterns("date", data, &RnData::getDateFormat);
  printPatterns("time", data, &RnData::getTimeFormat);
  printField("date-time", data.getDateTimePattern());
  printField("number", data.getNumericFormat(RnData::NUMERIC));
  printField("currency", data.getNumericFormat(RnData::CURRENCY));
  printField("percent", data.getNumericFormat(RnData::PERCENT));
  printField("decimal point", data.getRadixSymbol());
  printField("grouping", data.getGroupingSymbol());
  printField("percent sign", data.getPercentSymbol());
  printField("minus sign", data.getNegativeSymbol());
  printField("plus sign", data.getPositiveSymbol());
  printField("zero digit", data.getZeroSymbol());
  printField("currency sign", data.getCurrencySymbol());
  printField("currency code", data.getCurrencyName());
  return kOk;
}

}  // namespace zupic
