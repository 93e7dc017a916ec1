// zupic locales / zupic locale L: what the built-in locale data holds.
#include <cstdio>

#include "tools/zupic/zupicCommands.h"
#include "zu/locale/RnData.h"
#include "zu/locale/RnLocale.h"

namespace zupic {

namespace {

void addField(std::vector<LocaleField>& fields, const std::string& label, const zuString& value) {
  fields.push_back({label, static_cast<const char*>(value)});
}

// A list of names joined by ", ".
template <class Getter>
void addNames(std::vector<LocaleField>& fields, const char* label, int count, Getter name) {
  zuString joined = zuString::EmptyString();
  for (int i = 0; i < count; ++i) {
    if (i > 0) joined += ", ";
    joined += name(i);
  }
  addField(fields, label, joined);
}

void addPatterns(std::vector<LocaleField>& fields, const char* label, const RnData& data,
                 zuString (RnData::*getter)(int) const) {
  static const char* const kStyles[] = {"short", "medium", "long", "full"};
  for (int style = RnData::SHORT_FMT; style <= RnData::FULL_FMT; ++style) {
    addField(fields, std::string(label) + " " + kStyles[style - RnData::SHORT_FMT],
             (data.*getter)(style));
  }
}

}  // namespace

std::vector<LocaleEntry> builtInLocales() {
  zuStorage<zuString> names;
  RnData::getLocaleNames(names);
  std::vector<LocaleEntry> entries;
  for (unsigned int i = 0; i < names.GetSize(); ++i) {
    const RnLocale locale(names[i]);
    if (!locale.isValid()) continue;
    entries.push_back(
        {locale.getName(), locale.getWinName(), static_cast<const char*>(locale.getDescName())});
  }
  return entries;
}

bool localeFields(const std::string& name, std::vector<LocaleField>& fields) {
  const RnLocale locale(name.c_str());
  if (!locale.isValid()) return false;
  const RnData data(locale.getName());
  addField(fields, "name", locale.getName());
  addField(fields, "platform name", locale.getWinName());
  addField(fields, "language", locale.getDescName());
  addField(fields, "code set", locale.getCharSet());
  fields.push_back({"locale id", std::to_string(locale.getWinLCID())});
  addNames(fields, "months", 12, [&](int i) { return data.getMonthName(i); });
  addNames(fields, "months, short", 12, [&](int i) { return data.getAbbrMonthName(i); });
  addNames(fields, "weekdays", 7, [&](int i) { return data.getWeekDayName(i); });
  addNames(fields, "weekdays, short", 7, [&](int i) { return data.getAbbrWeekDayName(i); });
  addNames(fields, "eras", 2, [&](int i) { return data.getEraName(i); });
  addNames(fields, "meridiems", 2, [&](int i) { return data.getMeridiemName(i); });
  addPatterns(fields, "date", data, &RnData::getDateFormat);
  addPatterns(fields, "time", data, &RnData::getTimeFormat);
  addField(fields, "date-time", data.getDateTimePattern());
  addField(fields, "number", data.getNumericFormat(RnData::NUMERIC));
  addField(fields, "currency", data.getNumericFormat(RnData::CURRENCY));
  addField(fields, "percent", data.getNumericFormat(RnData::PERCENT));
  addField(fields, "decimal point", data.getRadixSymbol());
  addField(fields, "grouping", data.getGroupingSymbol());
  addField(fields, "percent sign", data.getPercentSymbol());
  addField(fields, "minus sign", data.getNegativeSymbol());
  addField(fields, "plus sign", data.getPositiveSymbol());
  addField(fields, "zero digit", data.getZeroSymbol());
  addField(fields, "currency sign", data.getCurrencySymbol());
  addField(fields, "currency code", data.getCurrencyName());
  return true;
}

int listLocales() {
  for (const LocaleEntry& entry : builtInLocales()) {
    std::printf("%-12s %-32s %s\n", entry.name.c_str(), entry.platformName.c_str(),
                entry.language.c_str());
  }
  return kOk;
}

int showLocale(const std::string& name) {
  std::vector<LocaleField> fields;
  if (!localeFields(name, fields)) {
    std::fprintf(stderr, "zupic: unknown locale \"%s\" (see zupic locales)\n", name.c_str());
    return kNoMatch;
  }
  for (const LocaleField& field : fields) {
    std::printf("%-16s %s\n", field.label.c_str(), field.value.c_str());
  }
  return kOk;
}

}  // namespace zupic
