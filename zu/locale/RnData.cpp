#include "zu/locale/RnData.h"

#include <cstring>
#include <string_view>

#include "zu/locale/internal/RnDataName.h"
#include "zu/locale/internal/RnDataTable.h"
#include "zu/locale/internal/RnRunTimeStore.h"

using namespace zu::internal;

const char gpRoot[] = "root";
const char gpDateMask[] = "GYMD     EJFwW     ";
const char gpTimeMask[] = "    KHMSF     AhkZz";

namespace {

// Position of a style inside a group of four patterns (full first).
int stylePosition(int style) {
  switch (style) {
    case RnData::SHORT_FMT:
      return RnData::SHORT;
    case RnData::LONG_FMT:
      return RnData::LONG;
    case RnData::FULL_FMT:
      return RnData::FULL;
    default:
      return RnData::DEFLT;
  }
}

}  // namespace

RnData::RnData(const char* locale) {
  size_t length = normaliseDataName(locale != nullptr ? locale : gpRoot, locale_, sizeof locale_);
  if (length == 0) length = normaliseDataName(gpRoot, locale_, sizeof locale_);
  localeLength_ = static_cast<unsigned char>(length);

  // The candidate names are cut from a copy, ended by a NUL at each cut.
  char name[kMaxNameLength];
  std::memcpy(name, locale_, length + 1);
  const RnRunTimeStore* store = RnRunTimeStore::current(false);
  for (;;) {
    if (store != nullptr) {
      if (const RnRunTimeData_s* data = store->find(std::string_view(name, length))) {
        candidates_[candidateCount_++] = {kRunTime, data};
      }
    }
    if (const RnDataRecord* record = findRnDataRecord(name)) {
      candidates_[candidateCount_++] = {kStatic, record};
    }
    if (std::strcmp(name, gpRoot) == 0) break;
    const size_t cut = std::string_view(name, length).rfind('_');
    // Two slots stay free for the root candidates however long the name is.
    if (cut == std::string_view::npos || candidateCount_ + 4 > kMaxCandidates) {
      length = normaliseDataName(gpRoot, name, sizeof name);
    } else {
      length = cut;
      name[length] = '\0';
    }
  }
}

zuString RnData::getLocale() const {
  return zuString(locale_, localeLength_);
}

const char* RnData::field(int index, bool& builtIn) const {
  for (int i = 0; i < candidateCount_; ++i) {
    const Candidate& candidate = candidates_[i];
    if (candidate.kind == kStatic) {
      const char* text = static_cast<const RnDataRecord*>(candidate.record)->fields[index];
      if (text != nullptr) {
        builtIn = true;
        return text;
      }
    } else if (const zuString* entry =
                   runTimeField(*static_cast<const RnRunTimeData_s*>(candidate.record), index)) {
      if (!entry->IsEmpty()) {
        builtIn = false;
        return *entry;
      }
    }
  }
  return nullptr;
}

zuString RnData::text(int index) const {
  bool builtIn = false;
  const char* found = field(index, builtIn);
  if (found == nullptr) return zuString::EmptyString();
  return builtIn ? zuString(1, found) : zuString(found);
}

zuString RnData::indexed(int firstField, int count, int index) const {
  if (index < 0 || index >= count) return zuString::EmptyString();
  return text(firstField + index);
}

zuString RnData::getMonthName(int month) const {
  return indexed(kFieldMonth, 12, month);
}
zuString RnData::getAbbrMonthName(int month) const {
  return indexed(kFieldAbbrMonth, 12, month);
}
zuString RnData::getWeekDayName(int weekDay) const {
  return indexed(kFieldWeekDay, 7, weekDay);
}
zuString RnData::getAbbrWeekDayName(int weekDay) const {
  return indexed(kFieldAbbrWeekDay, 7, weekDay);
}
zuString RnData::getMeridiemName(int meridiem) const {
  return indexed(kFieldMeridiem, 2, meridiem);
}
zuString RnData::getEraName(int era) const {
  return indexed(kFieldEra, 2, era);
}

zuString RnData::getDateFormat(int style) const {
  return text(kFieldDateFormat + stylePosition(style));
}
zuString RnData::getTimeFormat(int style) const {
  return text(kFieldTimeFormat + stylePosition(style));
}
zuString RnData::getDateTimePattern() const {
  return text(kFieldDateTime);
}

zuString RnData::getNumericFormat(int category) const {
  return indexed(kFieldNumFormat, 3, category);
}

zuString RnData::getRadixSymbol() const {
  return text(kFieldNumSymbol + NUM_DECIMAL);
}
zuString RnData::getGroupingSymbol() const {
  return text(kFieldNumSymbol + NUM_GROUPING);
}
zuString RnData::getPercentSymbol() const {
  return text(kFieldNumSymbol + NUM_PERCENT);
}
zuString RnData::getNegativeSymbol() const {
  return text(kFieldNumSymbol + NUM_MINUS);
}
zuString RnData::getZeroSymbol() const {
  return text(kFieldNumSymbol + NUM_ZERO);
}
zuString RnData::getPositiveSymbol() const {
  return zuString(1, "+");
}
zuString RnData::getCurrencySymbol() const {
  return text(kFieldCurrency + CUR_SYMBOL);
}
zuString RnData::getCurrencyName() const {
  return text(kFieldCurrency + CUR_ISONAME);
}
zuString RnData::getCurrencyRadix() const {
  return text(kFieldCurrency + CUR_DECIMAL);
}

zuStorage<zuString> RnData::getTypefaces() const {
  zuStorage<zuString> faces;
  bool builtIn = false;
  for (const char* name = field(kFieldTypefaces, builtIn); name != nullptr && *name != '\0';
       name += std::string_view(name).size() + 1) {
    faces.Add(zuString(1, name));
  }
  return faces;
}

void RnData::getLocaleNames(zuStorage<zuString>& names) {
  names.RemoveAll();
  names.Reserve(kRnDataRecordCount);
  for (unsigned int i = 0; i < kRnDataRecordCount; ++i) {
    names.Add(zuString(1, kRnDataRecords[i].fields[kFieldName]));
  }
}
