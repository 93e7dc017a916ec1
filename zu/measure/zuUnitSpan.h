// zuUnitSpan: a length with its unit, held as an exact integer count.
//
// Inches, points and metric units each round-trip without drift; mixed
// arithmetic converts the right operand into the left one's unit.
//
//   zuUnitSpan margin(zuString("1.5in"));
//   margin += zuUnitSpan(zuString("2cm"));   // still inches
//   zuString text = margin;                  // "2.287403in"
//
// A span is a unit code and a signed 32-bit value. The code's low four bits
// name the base scale the value counts in, its high bits the unit it is shown
// in:
//
//   code  shown as     base (low bits)   per shown unit  per inch  Text
//   0     inch         0: micro-inches   1000000         1000000   6 decimals, "in"
//   1     centimetre   1: 1/250000 cm    250000          635000    5, "cm"
//   3     inch         3: millipoints    72000           72000     6, "in"
//   17    millimetre   1                 25000           635000    4, "mm"
//   19    point        3                 1000            72000     3, "pt"
//   35    millipoint   3                 1               72000     0, "mp"
//   51    pica         3                 12000           72000     3, "pc"
//   255   a plain number, without a scale
//
// Other codes may be stored and relabelled; wherever a scale is needed they
// throw ZuExThrow(zuFormat(17107) << code) ("unknown unit"), and a throw
// leaves every object unchanged. Conversions between spans judge only the
// low four bits: spans of the same base convert as they are (67 adds to 3,
// 255 to 255), other pairs convert between the three bases above by exact
// factors (inch = 2.54 cm = 72 pt), rounding half away from zero.
//
// Arithmetic: the right operand is converted into the left one's base and
// the result keeps the left one's unit. +, -, * by an integer, unary - and
// Abs wrap around in 32 bits; a conversion whose result does not fit
// saturates at +-2147483647. Arguments of type long are cut to 32 bits.
//
// A span is a plain value (8 bytes, trivially copyable); every member may be
// called from any thread on spans that thread owns. The only thing a span
// hands out is zuString text, which belongs to the calling thread.
#pragma once

#include <cstdint>
#include <type_traits>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuUnitSpan {
 public:
  // The unit codes with a name (any other value of the type may be stored).
  enum UnitCode : uint8_t {
    eMicroInches = 0,
    eCentimeters = 1,
    eInches = 3,
    eMillimeters = 17,
    ePoints = 19,
    eMillipoints = 35,
    ePicas = 51,
    eNoUnits = 255
  };

  // What the strict parser (ValidatingParse) read. After a failure every
  // field holds its initial value.
  struct ParseData {
    int32_t integerPart = 0;      // the digits before the point; sticks at 2147483647
    int32_t fractionDigits = 0;   // the first 8 digits after the point, as an integer
    int32_t fractionDivisor = 1;  // 10 to the number of digits in fractionDigits
    UnitCode unit = eNoUnits;     // the unit found; eNoUnits when none
    char unitLetters[6] = {};     // the first six letters of the unit
    uint32_t letterCount = 0;     // all the unit's letters, also those not kept
    int reciprocal = 0;           // a "/" was read, or the caller asked for it
    int percent = 0;              // the number ended with "%"
    int32_t value = 0;            // the span's value in `unit`; 0 when no unit
  };

  // --- Construction ------------------------------------------------------------

  // 0 inches (unit 3).
  constexpr zuUnitSpan() : unit_(eInches), value_(0) {}
  // A plain number: unit 255, `value` as given.
  constexpr explicit zuUnitSpan(long value)
      : unit_(eNoUnits), value_(static_cast<int32_t>(value)) {}
  // Stored as given.
  constexpr zuUnitSpan(UnitCode unit, long value)
      : unit_(unit), value_(static_cast<int32_t>(value)) {}
  // Unit `unit`, `value` converted from the base of `from` into that of
  // `unit`. Throws 17107 when the two bases differ and one is unknown.
  zuUnitSpan(UnitCode unit, UnitCode from, long value);
  // `amount` shown units of `unit` (0.5 points: 500), rounded half away from
  // zero as ZuRound does. Throws 17107 for a code outside the table.
  zuUnitSpan(double amount, UnitCode unit);
  // The text read by SetFromText(text, eNoUnits, 0).
  explicit zuUnitSpan(const zuString& text);
  // The text read by SetFromText(text, defaultUnit, reciprocal).
  zuUnitSpan(const zuString& text, UnitCode defaultUnit, int reciprocal);
  zuUnitSpan(const zuUnitSpan& other) = default;
  zuUnitSpan& operator=(const zuUnitSpan& other) = default;

  // Unit 255 and `value`.
  zuUnitSpan& operator=(long value);
  // SetFromText(text, eNoUnits, 0).
  zuUnitSpan& operator=(const zuString& text);

  // A shared span of 0 inches (unit 3), never changed.
  static const zuUnitSpan& Zero();
  // The unit a span has when nothing says otherwise: 3, inches in millipoints.
  static constexpr UnitCode DefaultUnits() { return eInches; }

  // --- Access and conversion ---------------------------------------------------

  void Set(UnitCode unit, long value) {
    unit_ = unit;
    value_ = static_cast<int32_t>(value);
  }
  UnitCode Units() const { return unit_; }
  // Relabels the value; it is not converted.
  void Units(UnitCode unit) { unit_ = unit; }
  long Value() const { return value_; }
  void Value(long value) { value_ = static_cast<int32_t>(value); }

  // The value in the base of `unit`. Throws 17107 when the bases differ and
  // one is unknown.
  long ValueAsUnit(UnitCode unit) const { return ConvertUnit(unit, unit_, value_); }
  // Converts the value into the base of `unit` and takes that unit. Throws
  // 17107 as ValueAsUnit.
  void ChangeUnits(UnitCode unit) { Set(unit, ValueAsUnit(unit)); }

  // Internal units per inch of this span's unit / of `unit` (72000 for
  // every unit counted in millipoints). Throws 17107 for a code outside the
  // table, 255 included.
  long UnitsPerInch() const { return UnitsPerInch(unit_); }
  static long UnitsPerInch(UnitCode unit);
  // `value` internal units as a number of shown units of `unit` (1500 of
  // unit 19: 1.5). Throws 17107 for a code outside the table.
  static double ValueToUnit(long value, UnitCode unit);
  // The unit's names, "in, inches" for 0 and 3, "cm, centimeters",
  // "mm, millimeters", "pt, points", "mp, millipoints", "pc, picas". Throws
  // 17107 for any other code (`out` unchanged).
  static void UnitToString(UnitCode unit, zuString& out);
  // The first of the units 3, 1, 17, 19, 35, 51 whose names (as
  // UnitToString gives them) contain `text`, ignoring ASCII case: "m" and
  // "meters" give 1, "in" 3, "p" 19. An empty text, or one found in no
  // names, gives `fallback` (3 when that is 255). Never throws.
  static UnitCode StringToUnit(const zuString& text, UnitCode fallback);

  // --- Reading text -------------------------------------------------------------

  // Reads a length the way a user types it and returns 1, or 0 (see below).
  // First the strict reading (ValidatingParse with negatives, without "%",
  // with `reciprocal` preset); when that finds a unit, it is taken. Else the
  // lenient reading:
  //  - the number is the first run of "-0123456789." characters; digits
  //    after its first "." are the fraction, further "." and any "-" are
  //    skipped as digits, and a "-" anywhere makes the value negative;
  //  - the unit letters follow the number (from the text's start when there
  //    is none) after blanks and "."; up to 6 characters up to the next
  //    blank, "." or the end; a "/" among them is no letter but asks for the
  //    reciprocal;
  //  - with two letters or more the first decides: i 3 (0 with a "/"), m 17
  //    (35 when the second or sixth letter is p), c 1, p 19 (51 when the
  //    second is c or i), ignoring case, and the reciprocal is whether "/"
  //    was there; any other letter keeps the default unit and the result is
  //    0. With fewer letters: `defaultUnit` (3 for 255) and `reciprocal`;
  //  - a unit outside the table counts 0 units per shown unit;
  //  - each integer digit accumulates as part * 10 + digit * units; when
  //    that passes 2147483647 the value is 2147483647 and the result 0. The
  //    fraction digit at place k adds digit * units / 10^(k-1) (truncated)
  //    to a sum, and the value is part + (sum + 5) / 10;
  //  - a positive reciprocal without unit letters first divides millimetres
  //    by 10 (per centimetre) and points by 12 (per pica); then the value is
  //    units^2 / value, truncated (saturated at 2147483647);
  //  - the reciprocal of 0 returns 0 and leaves the span unchanged;
  //    otherwise unit and value are stored.
  // Never throws. "1.5in" and "1.5 IN" give 3/108000, "1 inch" 3/72000,
  // "10" with default 255 gives 3/720000; "4 x" with default 17 and
  // `reciprocal` gives 17/62500 (4 per centimetre), while "4" is read
  // strictly as 4 per millimetre, 17/6250.
  int SetFromText(const zuString& text, UnitCode defaultUnit, int reciprocal);

  // The strict reading of `text` into `data`; 1 when it is well formed.
  // Blanks are U+0020 and letters ASCII. The form is: blanks, an optional
  // sign ("-" only with `allowNegative`) and blanks, a number ("12",
  // "12.", "12.5" or ".5"; integer digits stick at 2147483647 and only the
  // first 8 fraction digits count), then either "%" (only with
  // `allowPercent`), or blanks and at most one "/" (the reciprocal),
  // optionally followed by unit letters and trailing blanks. An empty text
  // fails. On success:
  //  - with "%": the number as read, no unit;
  //  - with exactly two letters: the unit whose abbreviation (pt, mm, in, cm,
  //    mp, pc) they spell, each letter in either case ("Pt"); other letters
  //    leave no unit;
  //  - without letters: `defaultUnit` (3 for 255) when the table has it
  //    (code 0 included), else no unit;
  //  - with a unit: value = units * integer + (units * fraction + divisor /
  //    2) / divisor in 64 bits, saturated at 2147483647; a reciprocal of 0
  //    fails, otherwise the value becomes units^2 / value rounded.
  // The magnitude is computed, then the integer part, fraction and value
  // are negated for "-". `reciprocal` presets data.reciprocal. Never throws.
  static int ValidatingParse(ParseData& data, const zuString& text, UnitCode defaultUnit,
                             int allowNegative, int reciprocal, int allowPercent);

  // Checks a measurement a user typed and returns it, or its canonical form:
  // the text read by SetFromText(text, eNoUnits, 0) and written by Text with
  // 8 decimals. The canonical form is returned for a text that does not
  // start with one of "-0123456789.", has fewer than two unit letters (as
  // SetFromText finds them), or whose unit does not start with i, m, c or p,
  // and for one whose number has a "-" after its start or three ".". A "-"
  // without `allowNegative` gives "0". Any other text comes back as given.
  // `text` itself is left as it is. Never throws (but zuExMemory).
  static zuString measurementValidate(zuString& text, int allowNegative);

  // --- Writing text -------------------------------------------------------------

  // Writes the span into `out` (a block of the calling thread): the value in
  // shown units with the unit's decimals (table above) rounded half away
  // from zero to at most `maxDecimals`, trailing zeros dropped (but at least
  // `minDecimals` fraction digits kept, where there are that many), the
  // point only before a fraction digit, "0" before a bare fraction, "-" for
  // a negative value (never "-0"), then the suffix unless
  // `withoutSuffix` is non-zero: "1.5in", "12pt", "0.25cm", "0in". Unit 255
  // writes the plain integer. With `reciprocal` non-zero the number of units
  // per unit length is written, "/" before the suffix: millimetres per
  // centimetre with 5 decimals, points and millipoints per pica with 3,
  // others per their own unit. The count is (10^decimals)^2 over the length
  // in 10^-decimals units, taken from the exact length (not from its
  // rounded text) and rounded half away from zero to a multiple of 100, so
  // two digits fewer than those decimals ("4/cm"; 7 millipoints give
  // "1714.3/pc"; 0 gives "0/cm"). Throws 17107 for a code outside the table
  // other than 255 (`out` unchanged).
  void Text(zuString& out, unsigned maxDecimals, int withoutSuffix, unsigned minDecimals,
            int reciprocal) const;
  // Text(out, 8, 0, 0, 0). Throws as Text.
  operator zuString() const;

  // --- Arithmetic ---------------------------------------------------------------
  // Every operator taking a span converts it into this span's base first and
  // throws 17107 when the bases differ and one is unknown.

  zuUnitSpan operator+(const zuUnitSpan& other) const;
  zuUnitSpan operator-(const zuUnitSpan& other) const;
  zuUnitSpan& operator+=(const zuUnitSpan& other);
  zuUnitSpan& operator-=(const zuUnitSpan& other);
  zuUnitSpan operator-() const {
    return zuUnitSpan(unit_, static_cast<int32_t>(0u - static_cast<uint32_t>(value_)));
  }
  // The magnitude; -2147483648 stays as it is.
  zuUnitSpan Abs() const { return value_ < 0 ? -*this : *this; }

  zuUnitSpan operator*(long factor) const;
  zuUnitSpan& operator*=(long factor);
  // The product rounded half away from zero by ZuRound (a product outside
  // 32 bits, or NaN, gives -2147483648).
  zuUnitSpan operator*(double factor) const;
  zuUnitSpan& operator*=(double factor);
  // The quotient truncated toward zero; -2147483648 / -1 wraps to itself.
  // Throws ZuExThrow(16479) for a zero divisor.
  zuUnitSpan operator/(long divisor) const;
  zuUnitSpan& operator/=(long divisor);
  // The ratio of the two values as a double (infinite or NaN for a zero
  // span).
  double operator/(const zuUnitSpan& other) const;

  // 1 or 0.
  int operator==(const zuUnitSpan& other) const { return value_ == Converted(other); }
  int operator!=(const zuUnitSpan& other) const { return value_ != Converted(other); }
  int operator<(const zuUnitSpan& other) const { return value_ < Converted(other); }
  int operator<=(const zuUnitSpan& other) const { return value_ <= Converted(other); }
  int operator>(const zuUnitSpan& other) const { return value_ > Converted(other); }
  int operator>=(const zuUnitSpan& other) const { return value_ >= Converted(other); }

  // value * num / den, keeping the unit (the span itself is unchanged):
  //  1. when den divides num: value * (num / den);
  //  2. else when den divides the value: value / den * num;
  //  3. else while num and den both end in a decimal 0, one 0 is struck off
  //     each, and as soon as den divides the value: value / den * num;
  //  4. otherwise num / den * value in floating point, rounded by ZuRound.
  // Products wrap around in 32 bits. Throws ZuExThrow(16479) for den 0.
  zuUnitSpan ApplyFactor(long num, long den) const;
  // Snaps the value down to a multiple of `grid` (floor(value / step) *
  // step, so a negative step snaps up), computed in the grid's base and
  // converted back. A zero step, or one that divides the value, changes
  // nothing.
  void Grid(const zuUnitSpan& grid);
  // Rounds the value to the nearest multiple of `step`, halves away from
  // zero, computed in the step's base and converted back. A zero step, or
  // one that divides the value, changes nothing.
  void Round(const zuUnitSpan& step);

 private:
  // round(amount * units per shown unit) by ZuRound. Throws 17107.
  static long UnitToValue(double amount, UnitCode unit);
  // `value` from the base of `from` into that of `to`: as it is when the
  // bases agree, else ConvertReally.
  static long ConvertUnit(UnitCode to, UnitCode from, long value) {
    return ((to ^ from) & 15u) == 0 ? static_cast<int32_t>(value) : ConvertReally(to, from, value);
  }
  // Converts between two different bases, saturating. Throws 17107 when
  // either has none.
  static long ConvertReally(UnitCode to, UnitCode from, long value);
  // `other`'s value in this span's base.
  int32_t Converted(const zuUnitSpan& other) const {
    return static_cast<int32_t>(ConvertUnit(unit_, other.unit_, other.value_));
  }

  UnitCode unit_;
  int32_t value_;
};

static_assert(sizeof(zuUnitSpan) == 8, "a span is a unit code and a 32-bit value");
static_assert(std::is_trivially_copyable_v<zuUnitSpan>);
