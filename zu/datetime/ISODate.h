// ISODate: a calendar date read from its ISO 8601 form ("2024-03-05",
// "20240305", "2024-03", "2024"), then shown through any date picture.
//
//   ISODate date("2024-03-05T10:00", "fr_FR");
//   date.format("EEEE D MMMM YYYY");          // "mardi 5 mars 2024"
//
// Accepted forms: YYYY, YYYYMM, YYYYMMDD (basic) and YYYY-MM, YYYY-MM-DD
// (extended, chosen by a "-" anywhere in the text); a missing month or day
// is 1. There are no week dates, ordinal dates or signed years. The year
// has four digits ("24-03-05" and "209-03-05" fail); one below 100 is
// 1900 + year, as under a "YYYY" picture ("0024-03-05" is 1924-03-05). Only
// the text before the first "T" is read, trimmed of white space at both ends.
//
// Parsing always uses the default locale's symbols; the locale given is
// installed afterwards for formatting. A text that does not match leaves
// the date invalid (day number 0); nothing throws. The century split of
// every ISODate is 30.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"
#include "zu/picture/RnDate.h"

class ZU_EXPORT ISODate : public RnDate {
 public:
  // Today, in the default locale.
  ISODate();
  // The date of day number `days` (RnDate's numbering), default locale.
  explicit ISODate(int days);
  // Today, in `locale` with `centurySplit`.
  ISODate(const zuString& locale, int centurySplit);
  // Reads `text` (see above); formatting names of `locale`.
  ISODate(const zuString& text, const zuString& locale);
  ISODate(const ISODate& other) = default;
  ISODate& operator=(const ISODate& other) = default;
  ~ISODate() = default;

 protected:
  // Reads `text` (already cut and trimmed) into the parse slots; true when
  // it is one of the accepted forms.
  bool parse(const zuString& text);
};
