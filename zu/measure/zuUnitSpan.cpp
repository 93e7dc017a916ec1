#include "zu/measure/zuUnitSpan.h"

#include <algorithm>
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

// `value` from base `from` into base `to` (whole codes; only the low four
// bits count), exact in 64 bits. Throws 17107 when the bases differ and one
// is unknown.
int64_t convert(unsigned to, unsigned from, int64_t value) {
  if (((to ^ from) & 15u) == 0) return value;
  const int fromBase = zu::internal::baseIndex(from);
  if (fromBase < 0) throwUnknownUnit(from);
  const int toBase = zu::internal::baseIndex(to);
  if (toBase < 0) throwUnknownUnit(to);
  return zu::internal::withBaseFactor(fromBase, toBase, [value](zu::internal::Ratio factor) {
    return applyFactor(value, factor.num, factor.den);
  });
}

// x / 10^exponent, truncated, for exponent 0..8, dividing by a constant.
uint64_t dividePowerOfTen(uint64_t x, int exponent) {
  switch (exponent) {
    case 0:
      return x;
    case 1:
      return x / 10;
    case 2:
      return x / 100;
    case 3:
      return x / 1000;
    case 4:
      return x / 10000;
    case 5:
      return x / 100000;
    case 6:
      return x / 1000000;
    case 7:
      return x / 10000000;
    default:
      return x / 100000000;
  }
}

// n / d rounded half away from zero (d non-zero, no overflow).
int64_t divideRounded(int64_t n, int64_t d) {
  const int64_t quotient = n / d;
  const int64_t remainder = n % d;
  const uint64_t twice = 2 * static_cast<uint64_t>(remainder < 0 ? -remainder : remainder);
  if (twice < static_cast<uint64_t>(d < 0 ? -d : d)) return quotient;
  return quotient + ((n < 0) != (d < 0) ? -1 : 1);
}

// --- Strict reading ----------------------------------------------------------

enum class Strict : uint8_t {
  kStart,
  kSign,
  kPoint,
  kInteger,
  kFraction,
  kGap,
  kUnit,
  kTrailing,
  kPercent
};

constexpr int32_t kMaxFractionDivisor = 10000001;  // 8 fraction digits count

// Reads the form of the text into `data`; false when it is not well formed.
bool readStrict(zuUnitSpan::ParseData& data, const char* text, const char* end, bool allowNegative,
                bool allowPercent, bool& negative) {
  if (text == end) return false;
  Strict state = Strict::kStart;
  bool slash = false;
  for (const char* p = text; p != end; ++p) {
    const char c = *p;
    switch (state) {
      case Strict::kStart:
        if (c == '+' || (c == '-' && allowNegative)) {
          negative = c == '-';
          state = Strict::kSign;
          continue;
        }
        [[fallthrough]];
      case Strict::kSign:
        if (c == ' ') continue;
        if (c == '.') {
          state = Strict::kPoint;
        } else if (isDigit(c)) {
          data.integerPart = c - '0';
          state = Strict::kInteger;
        } else {
          return false;
        }
        continue;
      case Strict::kPoint:
        if (!isDigit(c)) return false;
        data.fractionDigits = c - '0';
        data.fractionDivisor = 10;
        state = Strict::kFraction;
        continue;
      case Strict::kInteger:
        if (isDigit(c)) {
          const int64_t part = int64_t{data.integerPart} * 10 + (c - '0');
          data.integerPart = static_cast<int32_t>(std::min(part, kMaxValue));
          continue;
        }
        if (c == '.') {
          state = Strict::kFraction;
          continue;
        }
        break;
      case Strict::kFraction:
        if (isDigit(c)) {
          if (data.fractionDivisor < kMaxFractionDivisor) {
            data.fractionDigits = data.fractionDigits * 10 + (c - '0');
            data.fractionDivisor *= 10;
          }
          continue;
        }
        break;
      case Strict::kGap:
        break;
      case Strict::kUnit:
        if (isLetter(c)) {
          if (data.letterCount < sizeof data.unitLetters) data.unitLetters[data.letterCount] = c;
          ++data.letterCount;
        } else if (c == ' ') {
          state = Strict::kTrailing;
        } else {
          return false;
        }
        continue;
      case Strict::kTrailing:
        if (c != ' ') return false;
        continue;
      case Strict::kPercent:
        return false;
    }
    // After the number (integer, fraction or gap).
    if (c == ' ') {
      state = Strict::kGap;
    } else if (c == '/' && !slash) {
      slash = true;
      data.reciprocal = 1;
      state = Strict::kGap;
    } else if (c == '%' && allowPercent) {
      data.percent = 1;
      state = Strict::kPercent;
    } else if (isLetter(c)) {
      data.unitLetters[0] = c;
      data.letterCount = 1;
      state = Strict::kUnit;
    } else {
      return false;
    }
  }
  return state != Strict::kStart && state != Strict::kSign && state != Strict::kPoint;
}

// The row whose abbreviation the two letters spell, either letter in either
// case; -1 when none does.
int abbreviationRow(const char* letters) {
  for (int row = 0; row < zu::internal::kNamedRowCount; ++row) {
    const UnitRow& unit = kUnitRows[row];
    if ((letters[0] == unit.lower[0] || letters[0] == unit.upper[0]) &&
        (letters[1] == unit.lower[1] || letters[1] == unit.upper[1])) {
      return row;
    }
  }
  return -1;
}

// Number of decimal digits in a fraction divisor (10^n).
int divisorDigits(int32_t divisor) {
  int digits = 0;
  for (; divisor > 1; divisor /= 10) ++digits;
  return digits;
}

// The unit and value of a well-formed reading; false when a reciprocal of 0
// was asked for.
bool strictValue(zuUnitSpan::ParseData& data, zuUnitSpan::UnitCode defaultUnit) {
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
  const uint64_t fraction = static_cast<uint64_t>(factor * data.fractionDigits) +
                            static_cast<uint64_t>(data.fractionDivisor / 2);
  int64_t value = std::min(
      factor * data.integerPart +
          static_cast<int64_t>(dividePowerOfTen(fraction, divisorDigits(data.fractionDivisor))),
      kMaxValue);
  if (data.reciprocal) {
    if (value == 0) return false;
    value = std::min((factor * factor + value / 2) / value, kMaxValue);
  }
  data.unit = static_cast<zuUnitSpan::UnitCode>(kUnitRows[row].code);
  data.value = static_cast<int32_t>(value);
  return true;
}

// --- Lenient reading ---------------------------------------------------------

bool isNumberChar(char c) {
  return isDigit(c) || c == '-' || c == '.';
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
  unsigned pos = 0;
  while (pos < length && !isNumberChar(text[pos])) ++pos;
  if (pos < length) {
    scan.numberStart = pos;
    while (pos < length && isNumberChar(text[pos])) ++pos;
    scan.numberEnd = pos;
  } else {
    pos = 0;
  }
  while (pos < length && (text[pos] == ' ' || text[pos] == '.')) ++pos;
  for (; pos < length && text[pos] != ' ' && text[pos] != '.'; ++pos) {
    if (text[pos] == '/') {
      scan.slash = true;
    } else if (scan.letterCount < sizeof scan.letters) {
      scan.letters[scan.letterCount++] = text[pos];
    }
  }
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

// --- Writing -----------------------------------------------------------------

constexpr uint64_t kPowersOfTen[] = {1,           10,           100,          1000,      10000,
                                     100000,      1000000,      10000000,     100000000, 1000000000,
                                     10000000000, 100000000000, 1000000000000};

// Room for a sign, 20 digits, a point, "/" and a suffix.
constexpr unsigned kTextRoom = 32;

// Writes a number of 10^-decimals units and its suffix; returns the length.
unsigned writeNumber(char* out, int64_t scaled, unsigned decimals, unsigned maxDecimals,
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
  // Digits right to left, then copied out in order.
  char digits[kTextRoom];
  char* p = digits + kTextRoom;
  for (unsigned i = 0; i < decimals; ++i) {
    *--p = static_cast<char>('0' + magnitude % 10);
    magnitude /= 10;
  }
  if (decimals != 0) *--p = '.';
  do {
    *--p = static_cast<char>('0' + magnitude % 10);
    magnitude /= 10;
  } while (magnitude != 0);
  if (negative) *--p = '-';
  unsigned length = static_cast<unsigned>(digits + kTextRoom - p);
  std::memcpy(out, p, length);
  if (suffix != nullptr) {
    if (reciprocal) out[length++] = '/';
    out[length++] = suffix[0];
    out[length++] = suffix[1];
  }
  return length;
}

// The span's text through the row of its unit (constant factors).
unsigned writeSpan(char* out, const UnitRow& unit, int32_t value, unsigned maxDecimals,
                   bool withSuffix, unsigned minDecimals, bool reciprocal) {
  if (!reciprocal) {
    const int64_t scaled = applyFactor(value, unit.textNum, unit.textDen);
    return writeNumber(out, scaled, unit.decimals, maxDecimals, minDecimals,
                       withSuffix ? unit.suffix : nullptr, false);
  }
  // Units per unit length: (10^d)^2 over the length in 10^-d units, taken
  // from the exact value and rounded to a multiple of 100.
  int64_t count = 0;
  if (value != 0) {
    const int64_t numerator =
        static_cast<int64_t>(kPowersOfTen[2 * unit.reciprocalDecimals]) * unit.reciprocalDen;
    count = divideRounded(numerator, int64_t{value} * unit.reciprocalNum * 100) * 100;
  }
  return writeNumber(out, count, unit.reciprocalDecimals, maxDecimals, minDecimals,
                     withSuffix ? unit.reciprocalSuffix : nullptr, true);
}

void assign(zuString& out, const char* text, unsigned length) {
  char* chars = out.ReAlloc(length, 0);
  std::memcpy(chars, text, length);
  out.SetLength(length);
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
  return saturate(convert(to, from, static_cast<int32_t>(value)));
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
  data = ParseData{};
  data.reciprocal = reciprocal != 0;
  const char* chars = text;
  bool negative = false;
  if (!readStrict(data, chars, chars + text.Length(), allowNegative != 0, allowPercent != 0,
                  negative) ||
      !strictValue(data, defaultUnit)) {
    data = ParseData{};
    return 0;
  }
  if (negative) {
    data.integerPart = -data.integerPart;
    data.fractionDigits = -data.fractionDigits;
    data.value = -data.value;
  }
  return 1;
}

int zuUnitSpan::SetFromText(const zuString& text, UnitCode defaultUnit, int reciprocal) {
  ParseData strict;
  if (ValidatingParse(strict, text, defaultUnit, 1, reciprocal, 0) && strict.unit != eNoUnits) {
    Set(strict.unit, strict.value);
    return 1;
  }
  const char* chars = text;
  const LenientScan scan = scanLenient(chars, text.Length());
  unsigned unit = defaultUnit == eNoUnits ? eInches : defaultUnit;
  bool isReciprocal = reciprocal != 0;
  const bool known = lenientUnit(scan, unit, isReciprocal);
  const int row = kUnitRowIndex.rows[unit];
  const int64_t factor = row < 0 ? 0 : kUnitRows[row].perShown;

  int64_t part = 0;
  int64_t sum = 0;
  unsigned place = 0;  // of the fraction digit, from 1
  bool point = false;
  bool negative = false;
  for (unsigned pos = scan.numberStart; pos < scan.numberEnd; ++pos) {
    const char c = chars[pos];
    if (c == '-') {
      negative = true;
    } else if (c == '.') {
      point = true;
    } else if (!point) {
      part = part * 10 + (c - '0') * factor;
      if (part > kMaxValue) {
        Set(static_cast<UnitCode>(unit), kMaxValue);
        return 0;
      }
    } else if (++place <= 7) {  // from the 8th place on, digit * units / 10^7 is 0
      int64_t term = (c - '0') * factor;
      for (unsigned i = 1; i < place; ++i) term /= 10;
      sum += term;
    }
  }
  int64_t value = part + (sum + 5) / 10;
  if (value > kMaxValue) {
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
  char text[kTextRoom];
  unsigned length;
  if (unit_ == eNoUnits) {
    length = writeNumber(text, value_, 0, 0, 0, nullptr, false);
  } else {
    length = zu::internal::withUnitRow(rowOf(unit_), [&](const UnitRow& unit) {
      return writeSpan(text, unit, value_, maxDecimals, withoutSuffix == 0, minDecimals,
                       reciprocal != 0);
    });
  }
  assign(out, text, length);
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
