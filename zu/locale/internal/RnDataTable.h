// The built-in locale records and the positions of their fields.
//
// Each record is 65 UTF-8 texts; a null field is inherited from the next
// candidate of a lookup. Records are sorted by name in byte order, so that a
// name is found by binary search.
#pragma once

#include <cstddef>

namespace zu::internal {

enum RnDataField : int {
  kFieldName = 0,
  kFieldMeridiem = 1,      // AM, PM
  kFieldCurrency = 3,      // symbol, ISO code, decimal separator
  kFieldTimeFormat = 6,    // full, long, medium, short
  kFieldDateFormat = 10,   // full, long, medium, short
  kFieldDateTime = 14,     // combining pattern
  kFieldAbbrWeekDay = 15,  // Sunday first
  kFieldWeekDay = 22,      // Sunday first
  kFieldEra = 29,          // BC, AD
  kFieldAlphabet = 31,     // localised picture-symbol letters
  kFieldAbbrMonth = 32,    // January first
  kFieldMonth = 44,        // January first
  kFieldNumSymbol = 56,    // decimal, grouping, percent, minus, zero digit
  kFieldNumFormat = 61,    // number, currency, percent
  kFieldTypefaces = 64,    // family names, each ended by NUL, then a NUL
  kFieldCount = 65
};

struct RnDataRecord {
  const char* fields[kFieldCount];
};

// The table (generated from the locale data of the platform's ICU).
extern const RnDataRecord kRnDataRecords[];
extern const unsigned int kRnDataRecordCount;

// The record named exactly `name` (NUL-terminated), or null.
const RnDataRecord* findRnDataRecord(const char* name);

}  // namespace zu::internal
