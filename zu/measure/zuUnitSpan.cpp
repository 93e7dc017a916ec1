#include "zu/measure/zuUnitSpan.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "zu/core/zuException.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuMessageIds.h"
#include "zu/measure/internal/zuUnitTable.h"
#include "zu/picture/internal/zuApplyFactor.h"
#include "zu/picture/zuNumeric.h"

using zu::internal::applyFactor;
using zu::internal::kUnitRowIndex;
using zu::internal::kUnitRows;
using zu::internal::UnitRow;

namespace {

constexpr int64_t kMaxValue = INT32_MAX;

[[noreturn]] void throwUnknownUnit(unsigned code) {
  ZuExThrow(zuFormat(zuMessageIds::kUnknownUnit) << static_cast<int>(code));
}

// The row of `code`; throws 17107 when the table has none.
int rowOf(unsigned code) {
  const int row = kUnitRowIndex.rows[code & 255u];
  if (row < 0) throwUnknownUnit(code);
  return row;
}

int32_t saturate(int64_t value) {
  return static_cast<int32_t>(std::clamp(value, -kMaxValue, kMaxValue));
}

int32_t wrap(int64_t value) {
  return static_cast<int32_t>(static_cast<uint32_t>(value));
}

bool isDigit(char c) {
  return static_cast<unsigned char>(c - '0') < 10u;
}

bool isLetter(char c) {
  return static_cast<unsigned char>((c | 0x20) - 'a') < 26u;
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

// `value` from base `from` into a different base `to`, exact in 64 bits.
// Throws 17107 when either has no base.
[[gnu::always_inline]] inline int64_t convertBetweenBases(unsigned to, unsigned from,
                                                          int64_t value) {
  int64_t converted = 0;
  if (!zu::internal::withBaseFactor(from, to, [&](zu::internal::Ratio factor) {
        converted = applyFactor(value, factor.num, factor.den);
      })) {
    throwUnknownUnit(zu::internal::baseIndex(from) < 0 ? from : to);
  }
  return converted;
}

// `value` from base `from` into base `to` (whole codes; only the low four
// bits count), exact in 64 bits. Throws 17107 when the bases differ and one
// is unknown.
[[gnu::always_inline]] inline int64_t convert(unsigned to, unsigned from, int64_t value) {
  if (((to ^ from) & 15u) == 0) return value;
  return convertBetweenBases(to, from, value);
}

// 10^0 to 10^19.
constexpr auto kPowersOfTen = [] {
  std::array<uint64_t, 20> powers{};
  powers[0] = 1;
  for (size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}();

// n / d rounded half away from zero (d non-zero, no overflow).
int64_t divideRounded(int64_t n, int64_t d) {
  const int64_t quotient = n / d;
  const int64_t remainder = n % d;
  const uint64_t twice = 2 * static_cast<uint64_t>(remainder < 0 ? -remainder : remainder);
  if (twice < static_cast<uint64_t>(d < 0 ? -d : d)) return quotient;
  return quotient + ((n < 0) != (d < 0) ? -1 : 1);
}

// --- Strict reading ----------------------------------------------------------

constexpr int kMaxFractionDigits = 8;

const char* skipBlanks(const char* p) {
  while (*p == ' ') ++p;
  return p;
}

// Reads the form of the text into `data`, phase by phase: blanks, sign,
// blanks, number, then blanks and "/" (the gap), then "%" or letters and
// trailing blanks. Returns the number of fraction digits kept, or -1 when
// the text is not well formed. The text's terminating NUL (which every
// zuString has) stops every loop; a NUL before `end` fails the reading.
[[gnu::always_inline]] inline int readStrict(zuUnitSpan::ParseData& data, const char* p,
                                             const char* end, bool allowNegative, bool allowPercent,
                                             bool& negative) {
  p = skipBlanks(p);
  if (!isDigit(*p) && (*p == '+' || (*p == '-' && allowNegative))) {
    negative = *p == '-';
    p = skipBlanks(p + 1);
  }
  if (isDigit(*p)) {
    int64_t part = 0;
    for (; isDigit(*p); ++p) part = std::min(part * 10 + (*p - '0'), kMaxValue);
    data.integerPart = static_cast<int32_t>(part);
    if (*p == '.') ++p;
  } else if (*p == '.' && isDigit(p[1])) {
    ++p;
  } else {
    return -1;
  }
  int fractionCount = 0;
  int32_t fraction = 0;
  int32_t divisor = 1;
  for (; isDigit(*p); ++p) {
    if (fractionCount < kMaxFractionDigits) {
      fraction = fraction * 10 + (*p - '0');
      divisor *= 10;
      ++fractionCount;
    }
  }
  data.fractionDigits = fraction;
  data.fractionDivisor = divisor;
  bool slash = false;
  for (; *p == ' ' || *p == '/'; ++p) {
    if (*p == '/') {
      if (slash) return -1;
      slash = true;
      data.reciprocal = 1;
    }
  }
  if (p == end) return fractionCount;
  if (*p == '%') {
    data.percent = 1;
    return allowPercent && p + 1 == end ? fractionCount : -1;
  }
  uint32_t count = 0;
  for (; isLetter(*p); ++p) {
    if (count < sizeof data.unitLetters) data.unitLetters[count] = *p;
    ++count;
  }
  if (count == 0) return -1;
  data.letterCount = count;
  return skipBlanks(p) == end ? fractionCount : -1;
}

// The row whose abbreviation the two letters spell, each in either case;
// -1 when none does.
int abbreviationRow(const char* letters) {
  // Both are letters: setting bit 5 makes them lower case.
  const unsigned key = static_cast<unsigned char>(letters[0] | 0x20) |
                       static_cast<unsigned char>(letters[1] | 0x20) << 8;
  constexpr auto keyOf = [](const char* name) {
    return static_cast<unsigned>(name[0]) | static_cast<unsigned>(name[1]) << 8;
  };
  for (int row = 0; row < zu::internal::kNamedRowCount; ++row) {
    if (key == keyOf(kUnitRows[row].lower)) return row;
  }
  return -1;
}

// The unit and value of a well-formed reading with `fractionCount` fraction
// digits; false when a reciprocal of 0 was asked for.
[[gnu::always_inline]] inline bool strictValue(zuUnitSpan::ParseData& data, int fractionCount,
                                               zuUnitSpan::UnitCode defaultUnit) {
  if (data.percent) return true;
  int row;
  if (data.letterCount > 0) {
    if (data.letterCount != 2) return true;
    row = abbreviationRow(data.unitLetters);
  } else {
    row =
        kUnitRowIndex.rows[defaultUnit == zuUnitSpan::eNoUnits ? zuUnitSpan::eInches : defaultUnit];
  }
  if (row < 0) return true;
  const int64_t factor = kUnitRows[row].perShown;
  // (factor * fraction + divisor / 2) / divisor, with the fraction widened
  // to 8 digits so that the divisor is the constant 10^8.
  const int64_t fraction =
      data.fractionDigits * static_cast<int64_t>(kPowersOfTen[kMaxFractionDigits - fractionCount]);
  constexpr int64_t kEightDigits = 100000000;
  int64_t value = std::min(
      factor * data.integerPart + (factor * fraction + kEightDigits / 2) / kEightDigits, kMaxValue);
  if (data.reciprocal) {
    if (value == 0) return false;
    value = std::min((factor * factor + value / 2) / value, kMaxValue);
  }
  data.unit = static_cast<zuUnitSpan::UnitCode>(kUnitRows[row].code);
  data.value = static_cast<int32_t>(value);
  return true;
}

// The strict reading (ValidatingParse).
[[gnu::always_inline]] inline bool parseStrict(zuUnitSpan::ParseData& data, const zuString& text,
                                               zuUnitSpan::UnitCode defaultUnit, bool allowNegative,
                                               bool reciprocal, bool allowPercent) {
  data = zuUnitSpan::ParseData{};
  data.reciprocal = reciprocal;
  const char* chars = text;
  bool negative = false;
  const int fractionCount =
      readStrict(data, chars, chars + text.Length(), allowNegative, allowPercent, negative);
  if (fractionCount < 0 || !strictValue(data, fractionCount, defaultUnit)) {
    data = zuUnitSpan::ParseData{};
    return false;
  }
  if (negative) {
    data.integerPart = -data.integerPart;
    data.fractionDigits = -data.fractionDigits;
    data.value = -data.value;
  }
  return true;
}

// Whether the text ends in three letters or more (before trailing blanks).
// A text the strict reading accepts with unit letters ends in exactly
// those letters, so such a text gives the strict reading no unit.
bool endsInThreeLetters(const char* text, unsigned length) {
  const char* p = text + length;
  while (p != text && p[-1] == ' ') --p;
  int letters = 0;
  for (; p != text && letters < 3 && isLetter(p[-1]); --p) ++letters;
  return letters == 3;
}

// --- Lenient reading ---------------------------------------------------------

// Classes of characters for the lenient reader: the number's characters,
// the ends of a unit word, and "/".
enum : uint8_t { kNumberChar = 1, kWordEnd = 2, kSlash = 4 };

constexpr auto kLenientClasses = [] {
  std::array<uint8_t, 256> classes{};
  for (const char c : {'-', '.', '0', '1', '2', '3', '4', '5', '6', '7', '8', '9'}) {
    classes[static_cast<unsigned char>(c)] |= kNumberChar;
  }
  classes[' '] |= kWordEnd;
  classes['.'] |= kWordEnd;
  classes['/'] |= kSlash;
  return classes;
}();

uint8_t lenientClass(char c) {
  return kLenientClasses[static_cast<unsigned char>(c)];
}

bool isNumberChar(char c) {
  return (lenientClass(c) & kNumberChar) != 0;
}

// Where the lenient reading finds the number and the unit letters.
struct LenientScan {
  unsigned numberStart = 0;
  unsigned numberEnd = 0;  // numberStart when there is no number
  char letters[6] = {};
  unsigned letterCount = 0;  // at most 6
  bool slash = false;
};

LenientScan scanLenient(const char* text, unsigned length) {
  LenientScan scan;
  const char* end = text + length;
  const char* p = text;
  while (p != end && !isNumberChar(*p)) ++p;
  if (p != end) {
    scan.numberStart = static_cast<unsigned>(p - text);
    while (p != end && isNumberChar(*p)) ++p;
    scan.numberEnd = static_cast<unsigned>(p - text);
  } else {
    p = text;
  }
  while (p != end && (lenientClass(*p) & kWordEnd) != 0) ++p;
  unsigned count = 0;
  for (; p != end; ++p) {
    const uint8_t charClass = lenientClass(*p);
    if ((charClass & (kWordEnd | kSlash)) != 0) {
      if ((charClass & kWordEnd) != 0) break;
      scan.slash = true;
    } else if (count < sizeof scan.letters) {
      scan.letters[count++] = *p;
    }
  }
  scan.letterCount = count;
  return scan;
}

// The unit the letters name: 0 when they name none (then the default is
// kept); the unit code and the reciprocal flag through the arguments.
bool lenientUnit(const LenientScan& scan, unsigned& unit, bool& reciprocal) {
  if (scan.letterCount < 2) return true;
  const char first = lower(scan.letters[0]);
  const char second = lower(scan.letters[1]);
  switch (first) {
    case 'i':
      unit = scan.slash ? zuUnitSpan::eMicroInches : zuUnitSpan::eInches;
      break;
    case 'm':
      unit = second == 'p' || lower(scan.letters[5]) == 'p' ? zuUnitSpan::eMillipoints
                                                            : zuUnitSpan::eMillimeters;
      break;
    case 'c':
      unit = zuUnitSpan::eCentimeters;
      break;
    case 'p':
      unit = second == 'c' || second == 'i' ? zuUnitSpan::ePicas : zuUnitSpan::ePoints;
      break;
    default:
      return false;
  }
  reciprocal = scan.slash;
  return true;
}

// The magnitude of the number run in units of `factor` per shown unit:
// integer digits accumulate as part * 10 + digit * factor, the fraction
// digit at place k adds digit * factor / 10^(k-1) (truncated) to a sum, and
// the magnitude is part + (sum + 5) / 10. A "-" anywhere sets `negative`;
// further "." are skipped. False when the magnitude passes 2147483647.
bool lenientMagnitude(const char* p, const char* end, int64_t factor, int64_t& magnitude,
                      bool& negative) {
  int64_t part = 0;
  int64_t sum = 0;
  unsigned place = 0;  // of the fraction digit, from 1
  bool point = false;
  for (; p != end; ++p) {
    if (*p == '-') {
      negative = true;
    } else if (*p == '.') {
      point = true;
    } else if (!point) {
      part = part * 10 + (*p - '0') * factor;
      if (part > kMaxValue) return false;
    } else if (++place <= 7) {  // from the 8th place on, digit * factor / 10^7 is 0
      int64_t term = (*p - '0') * factor;
      for (unsigned i = 1; i < place; ++i) term /= 10;
      sum += term;
    }
  }
  magnitude = part + (sum + 5) / 10;
  return magnitude <= kMaxValue;
}

// --- Writing -----------------------------------------------------------------

// Writes a number of 10^-decimals units and its suffix into `out`, each
// character straight into its place in the string's block.
void writeNumber(zuString& out, int64_t scaled, unsigned decimals, unsigned maxDecimals,
                 unsigned minDecimals, const char* suffix, bool reciprocal) {
  uint64_t magnitude =
      scaled < 0 ? 0 - static_cast<uint64_t>(scaled) : static_cast<uint64_t>(scaled);
  if (decimals > maxDecimals) {
    // Drop digits, rounding on the last one dropped (half away from zero).
    for (unsigned drop = decimals - maxDecimals; drop > 1; --drop) magnitude /= 10;
    magnitude = (magnitude + 5) / 10;
    decimals = maxDecimals;
  }
  while (decimals > minDecimals && magnitude % 10 == 0) {
    magnitude /= 10;
    --decimals;
  }
  const bool negative = scaled < 0 && magnitude != 0;  // never "-0"
  unsigned digits = 1;
  while (digits < kPowersOfTen.size() && magnitude >= kPowersOfTen[digits]) ++digits;
  if (digits <= decimals) digits = decimals + 1;  // "0" before the point
  const unsigned suffixLength = suffix == nullptr ? 0 : reciprocal ? 3 : 2;
  const unsigned length = negative + digits + (decimals != 0) + suffixLength;
  char* const chars = out.ReAlloc(length, 0);
  char* p = chars + length;
  if (suffix != nullptr) {
    *--p = suffix[1];
    *--p = suffix[0];
    if (reciprocal) *--p = '/';
  }
  for (unsigned i = 0; i < digits; ++i) {
    if (i == decimals && decimals != 0) *--p = '.';
    *--p = static_cast<char>('0' + magnitude % 10);
    magnitude /= 10;
  }
  if (negative) *--p = '-';
  out.SetLength(length);
}

// The span's text through the row of its unit (constant factors).
void writeSpan(zuString& out, const UnitRow& unit, int32_t value, unsigned maxDecimals,
               bool withSuffix, unsigned minDecimals, bool reciprocal) {
  if (!reciprocal) {
    const int64_t scaled = applyFactor(value, unit.textNum, unit.textDen);
    writeNumber(out, scaled, unit.decimals, maxDecimals, minDecimals,
                withSuffix ? unit.suffix : nullptr, false);
    return;
  }
  // Units per unit length: (10^d)^2 over the length in 10^-d units, taken
  // from the exact value and rounded to a multiple of 100.
  int64_t count = 0;
  if (value != 0) {
    const int64_t numerator =
        static_cast<int64_t>(kPowersOfTen[2 * unit.reciprocalDecimals]) * unit.reciprocalDen;
    count = divideRounded(numerator, int64_t{value} * unit.reciprocalNum * 100) * 100;
  }
  writeNumber(out, count, unit.reciprocalDecimals, maxDecimals, minDecimals,
              withSuffix ? unit.reciprocalSuffix : nullptr, true);
}

}  // namespace

// --- Construction ------------------------------------------------------------

zuUnitSpan::zuUnitSpan(UnitCode unit, UnitCode from, long value)
    : unit_(unit), value_(static_cast<int32_t>(ConvertUnit(unit, from, value))) {}

zuUnitSpan::zuUnitSpan(double amount, UnitCode unit)
    : unit_(unit), value_(static_cast<int32_t>(UnitToValue(amount, unit))) {}

zuUnitSpan::zuUnitSpan(const zuString& text) : zuUnitSpan() {
  SetFromText(text, eNoUnits, 0);
}

zuUnitSpan::zuUnitSpan(const zuString& text, UnitCode defaultUnit, int reciprocal) : zuUnitSpan() {
  SetFromText(text, defaultUnit, reciprocal);
}

zuUnitSpan& zuUnitSpan::operator=(long value) {
  Set(eNoUnits, value);
  return *this;
}

zuUnitSpan& zuUnitSpan::operator=(const zuString& text) {
  SetFromText(text, eNoUnits, 0);
  return *this;
}

const zuUnitSpan& zuUnitSpan::Zero() {
  static constexpr zuUnitSpan kZero;
  return kZero;
}

// --- Units -------------------------------------------------------------------

long zuUnitSpan::UnitsPerInch(UnitCode unit) {
  return kUnitRows[rowOf(unit)].perInch;
}

long zuUnitSpan::UnitToValue(double amount, UnitCode unit) {
  return ZuRound(amount * kUnitRows[rowOf(unit)].perShown);
}

double zuUnitSpan::ValueToUnit(long value, UnitCode unit) {
  const int32_t perShown = kUnitRows[rowOf(unit)].perShown;
  return static_cast<int32_t>(value) / static_cast<double>(perShown);
}

long zuUnitSpan::ConvertReally(UnitCode to, UnitCode from, long value) {
  return saturate(convertBetweenBases(to, from, static_cast<int32_t>(value)));
}

void zuUnitSpan::UnitToString(UnitCode unit, zuString& out) {
  out = zuString(1, kUnitRows[rowOf(unit)].names);
}

zuUnitSpan::UnitCode zuUnitSpan::StringToUnit(const zuString& text, UnitCode fallback) {
  const char* wanted = text;
  const char* wantedEnd = wanted + text.Length();
  if (wanted != wantedEnd) {
    for (const int row : zu::internal::kNameSearchOrder) {
      const char* names = kUnitRows[row].names;
      const char* namesEnd = names + std::strlen(names);
      const auto equalFolded = [](char a, char b) { return lower(a) == lower(b); };
      if (std::search(names, namesEnd, wanted, wantedEnd, equalFolded) != namesEnd) {
        return static_cast<UnitCode>(kUnitRows[row].code);
      }
    }
  }
  return fallback == eNoUnits ? eInches : fallback;
}

// --- Reading -----------------------------------------------------------------

int zuUnitSpan::ValidatingParse(ParseData& data, const zuString& text, UnitCode defaultUnit,
                                int allowNegative, int reciprocal, int allowPercent) {
  return parseStrict(data, text, defaultUnit, allowNegative != 0, reciprocal != 0,
                     allowPercent != 0)
             ? 1
             : 0;
}

int zuUnitSpan::SetFromText(const zuString& text, UnitCode defaultUnit, int reciprocal) {
  const char* chars = text;
  ParseData strict;
  if (!endsInThreeLetters(chars, text.Length()) &&
      parseStrict(strict, text, defaultUnit, true, reciprocal != 0, false) &&
      strict.unit != eNoUnits) {
    Set(strict.unit, strict.value);
    return 1;
  }
  const LenientScan scan = scanLenient(chars, text.Length());
  unsigned unit = defaultUnit == eNoUnits ? eInches : defaultUnit;
  bool isReciprocal = reciprocal != 0;
  const bool known = lenientUnit(scan, unit, isReciprocal);
  const int row = kUnitRowIndex.rows[unit];
  const int64_t factor = row < 0 ? 0 : kUnitRows[row].perShown;
  int64_t value = 0;
  bool negative = false;
  if (!lenientMagnitude(chars + scan.numberStart, chars + scan.numberEnd, factor, value,
                        negative)) {
    Set(static_cast<UnitCode>(unit), kMaxValue);
    return 0;
  }
  if (negative) {
    value = -value;
  } else if (isReciprocal) {
    if (scan.letterCount < 2) {
      if (unit == eMillimeters) value /= 10;
      if (unit == ePoints) value /= 12;
    }
    if (value == 0) return 0;
    value = std::min(factor * factor / value, kMaxValue);
  }
  Set(static_cast<UnitCode>(unit), value);
  return known ? 1 : 0;
}

zuString zuUnitSpan::measurementValidate(zuString& text, int allowNegative) {
  const char* chars = text;
  const unsigned length = text.Length();
  const LenientScan scan = scanLenient(chars, length);
  const char first = lower(scan.letters[0]);
  if (length != 0 && isNumberChar(chars[0]) && scan.letterCount >= 2 &&
      (first == 'i' || first == 'm' || first == 'c' || first == 'p')) {
    const char* number = chars + scan.numberStart;
    const char* numberEnd = chars + scan.numberEnd;
    if (!allowNegative && std::find(number, numberEnd, '-') != numberEnd) return zuString(1, "0");
    if (std::find(number + 1, numberEnd, '-') == numberEnd &&
        std::count(number, numberEnd, '.') < 3) {
      return text;
    }
  }
  zuUnitSpan span;
  span.SetFromText(text, eNoUnits, 0);
  zuString canonical;
  span.Text(canonical, 8, 0, 0, 0);
  return canonical;
}

// --- Writing -----------------------------------------------------------------

void zuUnitSpan::Text(zuString& out, unsigned maxDecimals, int withoutSuffix, unsigned minDecimals,
                      int reciprocal) const {
  if (unit_ == eNoUnits) {
    writeNumber(out, value_, 0, 0, 0, nullptr, false);
    return;
  }
  zu::internal::withUnitRow(rowOf(unit_), [&](const UnitRow& unit) {
    writeSpan(out, unit, value_, maxDecimals, withoutSuffix == 0, minDecimals, reciprocal != 0);
  });
}

zuUnitSpan::operator zuString() const {
  zuString text;
  Text(text, 8, 0, 0, 0);
  return text;
}

// --- Arithmetic --------------------------------------------------------------

zuUnitSpan zuUnitSpan::operator+(const zuUnitSpan& other) const {
  return zuUnitSpan(unit_, wrap(int64_t{value_} + Converted(other)));
}

zuUnitSpan zuUnitSpan::operator-(const zuUnitSpan& other) const {
  return zuUnitSpan(unit_, wrap(int64_t{value_} - Converted(other)));
}

zuUnitSpan& zuUnitSpan::operator+=(const zuUnitSpan& other) {
  return *this = *this + other;
}

zuUnitSpan& zuUnitSpan::operator-=(const zuUnitSpan& other) {
  return *this = *this - other;
}

zuUnitSpan zuUnitSpan::operator*(long factor) const {
  return zuUnitSpan(unit_, wrap(int64_t{value_} * static_cast<int32_t>(factor)));
}

zuUnitSpan& zuUnitSpan::operator*=(long factor) {
  return *this = *this * factor;
}

zuUnitSpan zuUnitSpan::operator*(double factor) const {
  return zuUnitSpan(unit_, ZuRound(value_ * factor));
}

zuUnitSpan& zuUnitSpan::operator*=(double factor) {
  return *this = *this * factor;
}

zuUnitSpan zuUnitSpan::operator/(long divisor) const {
  const int32_t d = static_cast<int32_t>(divisor);
  if (d == 0) ZuExThrow(zuMessageIds::kInvalidArgument);
  return zuUnitSpan(unit_, wrap(int64_t{value_} / d));
}

zuUnitSpan& zuUnitSpan::operator/=(long divisor) {
  return *this = *this / divisor;
}

double zuUnitSpan::operator/(const zuUnitSpan& other) const {
  return static_cast<double>(value_) / Converted(other);
}

zuUnitSpan zuUnitSpan::ApplyFactor(long num, long den) const {
  int64_t n = static_cast<int32_t>(num);
  int64_t d = static_cast<int32_t>(den);
  const int64_t value = value_;
  if (d == 0) ZuExThrow(zuMessageIds::kInvalidArgument);
  if (n % d == 0) return zuUnitSpan(unit_, wrap(value * (n / d)));
  if (value % d == 0) return zuUnitSpan(unit_, wrap(value / d * n));
  while (n % 10 == 0 && d % 10 == 0) {
    n /= 10;
    d /= 10;
    if (value % d == 0) return zuUnitSpan(unit_, wrap(value / d * n));
  }
  return zuUnitSpan(unit_, ZuRound(static_cast<double>(n) / static_cast<double>(d) * value));
}

void zuUnitSpan::Grid(const zuUnitSpan& grid) {
  const int64_t step = grid.value_;
  if (step == 0) return;
  const int64_t value = convert(grid.unit_, unit_, value_);
  if (value % step == 0) return;
  const int64_t floor = value / step - ((value < 0) != (step < 0) ? 1 : 0);
  value_ = saturate(convert(unit_, grid.unit_, floor * step));
}

void zuUnitSpan::Round(const zuUnitSpan& step) {
  const int64_t magnitude = step.value_ < 0 ? -int64_t{step.value_} : step.value_;
  if (magnitude == 0) return;
  const int64_t value = convert(step.unit_, unit_, value_);
  const int64_t remainder = value % magnitude;
  if (remainder == 0) return;
  int64_t quotient = value / magnitude;
  if (2 * (remainder < 0 ? -remainder : remainder) >= magnitude) quotient += value > 0 ? 1 : -1;
  value_ = saturate(convert(unit_, step.unit_, quotient * magnitude));
}
