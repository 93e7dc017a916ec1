// zuUnitTable: the units zuUnitSpan knows, in one table that both parsers,
// Text, UnitToString, StringToUnit and UnitsPerInch read, and the factors
// between the three base scales.
//
//   int row = unitRowIndex(19);                  // 0
//   kUnitRows[row].perShown;                     // 1000 millipoints a point
//   withUnitRow(row, [](const UnitRow& unit) { return unit.textDen; });   // 1
//
// A unit code's low four bits name its base scale: 0 micro-inches, 1 a
// 250000th of a centimetre, 3 millipoints. Everything here is constant.
#pragma once

#include <cstdint>

namespace zu::internal {

struct UnitRow {
  uint8_t code;
  char lower[3];  // the abbreviation the strict parser reads; "" when none
  char upper[3];
  int32_t perShown;  // internal units per shown unit
  int32_t perInch;   // internal units per inch
  // Text: value * textNum / textDen counts 10^-decimals of the shown unit.
  int32_t textNum;
  int32_t textDen;
  uint8_t decimals;
  char suffix[3];
  const char* names;  // UnitToString
  // Text of the reciprocal: value * reciprocalNum / reciprocalDen counts
  // 10^-reciprocalDecimals of the unit named by reciprocalSuffix.
  int32_t reciprocalNum;
  int32_t reciprocalDen;
  uint8_t reciprocalDecimals;
  char reciprocalSuffix[3];
};

// In the order the strict parser tries the abbreviations; the last row is
// reachable only by its code.
inline constexpr UnitRow kUnitRows[] = {
    {19, "pt", "PT", 1000, 72000, 1, 1, 3, "pt", "pt, points", 1, 12, 3, "pc"},
    {17, "mm", "MM", 25000, 635000, 10, 25, 4, "mm", "mm, millimeters", 10, 25, 5, "cm"},
    {3, "in", "IN", 72000, 72000, 125, 9, 6, "in", "in, inches", 125, 9, 6, "in"},
    {1, "cm", "CM", 250000, 635000, 10, 25, 5, "cm", "cm, centimeters", 10, 25, 5, "cm"},
    {35, "mp", "MP", 1, 72000, 1, 1, 0, "mp", "mp, millipoints", 1, 12, 3, "pc"},
    {51, "pc", "PC", 12000, 72000, 1, 12, 3, "pc", "pc, picas", 1, 12, 3, "pc"},
    {0, "", "", 1000000, 1000000, 1, 1, 6, "in", "in, inches", 1, 1, 6, "in"},
};
inline constexpr int kUnitRowCount = sizeof kUnitRows / sizeof kUnitRows[0];
inline constexpr int kNamedRowCount = kUnitRowCount - 1;

// The rows in the order StringToUnit searches their names: 3, 1, 17, 19,
// 35, 51.
inline constexpr int kNameSearchOrder[] = {2, 3, 1, 0, 4, 5};

// The row of a whole unit code; -1 when the table has none.
constexpr int unitRowIndex(unsigned code) {
  for (int row = 0; row < kUnitRowCount; ++row) {
    if (kUnitRows[row].code == code) return row;
  }
  return -1;
}

// Row indices by code, so that a lookup is one load.
struct UnitRowIndex {
  int8_t rows[256];
  constexpr UnitRowIndex() : rows() {
    for (unsigned code = 0; code < 256; ++code)
      rows[code] = static_cast<int8_t>(unitRowIndex(code));
  }
};
inline constexpr UnitRowIndex kUnitRowIndex;

// Calls fn(row) with a row whose place is known at compile time, so that the
// factors it divides by are constants. `index` must name a row.
template <typename Fn>
[[gnu::always_inline]] inline auto withUnitRow(int index, Fn fn) {
  switch (index) {
    case 0:
      return fn(kUnitRows[0]);
    case 1:
      return fn(kUnitRows[1]);
    case 2:
      return fn(kUnitRows[2]);
    case 3:
      return fn(kUnitRows[3]);
    case 4:
      return fn(kUnitRows[4]);
    case 5:
      return fn(kUnitRows[5]);
    default:
      return fn(kUnitRows[6]);
  }
}

// The base scale of a code (its low four bits) as 0 micro-inches, 1 a
// 250000th of a centimetre, 2 millipoints; -1 for a code without a base.
constexpr int baseIndex(unsigned code) {
  switch (code & 15u) {
    case 0:
      return 0;
    case 1:
      return 1;
    case 3:
      return 2;
    default:
      return -1;
  }
}

struct Ratio {
  int32_t num;
  int32_t den;
};

// kBaseFactors[from][to]: a value in base `from` times num / den is the
// value in base `to`.
inline constexpr Ratio kBaseFactors[3][3] = {
    {{1, 1}, {127, 200}, {9, 125}},
    {{200, 127}, {1, 1}, {72, 635}},
    {{125, 9}, {635, 72}, {1, 1}},
};

// Calls fn(ratio) with the factor from the base of `from` to that of `to`
// (codes whose low four bits differ) as a compile-time constant and
// returns true; false when either has no base. Millipoints and
// centimetres, the common pair, are tried first.
template <typename Fn>
[[gnu::always_inline]] inline bool withBaseFactor(unsigned from, unsigned to, Fn fn) {
  const unsigned fromBase = from & 15u;
  const unsigned toBase = to & 15u;
  if (fromBase == 3) {
    if (toBase == 1) return fn(kBaseFactors[2][1]), true;
    if (toBase == 0) return fn(kBaseFactors[2][0]), true;
  } else if (fromBase == 1) {
    if (toBase == 3) return fn(kBaseFactors[1][2]), true;
    if (toBase == 0) return fn(kBaseFactors[1][0]), true;
  } else if (fromBase == 0) {
    if (toBase == 3) return fn(kBaseFactors[0][2]), true;
    if (toBase == 1) return fn(kBaseFactors[0][1]), true;
  }
  return false;
}

}  // namespace zu::internal
