// RnDecimal: a number held as decimal digits, so that numeric pictures round
// and shift the text a user wrote instead of its nearest binary double.
//
//   RnDecimal d;
//   d.read("2.675", 5);        // 0.2675 x 10^1
//   d.roundFraction(2);        // 2.68 (half away from zero)
//   char buffer[16];
//   size_t n = d.writeFixed(buffer, sizeof buffer, 5, 2, true);   // "02.68"
#pragma once

#include <cstddef>

namespace zu::internal {

class RnDecimal {
 public:
  // Significant digits a value keeps; further digits are rounded away.
  static constexpr int kSignificant = 15;

  // Reads [spaces][+|-]digits[.digits][(e|E)[+|-]digits][spaces], with at
  // least one mantissa digit. False (object unchanged) for anything else or
  // for a magnitude beyond the range of a double.
  bool read(const char* text, size_t length);
  // The shortest decimal text that reads back as `value`, cut to
  // kSignificant digits. False for a value that is not finite.
  bool fromDouble(double value);
  double toDouble() const;

  bool isZero() const { return count_ == 0; }
  bool isNegative() const { return negative_; }
  void setNegative(bool negative) { negative_ = negative; }
  // Digits of the text read after its point, less its exponent (at least 0);
  // -1 when the text had no point.
  int textFraction() const { return textFraction_; }
  // The power of ten of the first digit plus one: 1234.5 gives 4, 0.05 -1.
  int point() const { return point_; }
  // Multiplies by 10^`power` (exact).
  void shift(int power);
  // Moves the point so that the first digit has power `point` - 1 (keeps
  // the digits: the value changes). Zero stays zero.
  void setPoint(int point);
  // Rounds to `fraction` digits after the point, half away from zero.
  void roundFraction(int fraction);
  // True when the value is below 1 in magnitude.
  bool belowOne() const { return point_ <= 0 || count_ == 0; }

  // Writes the magnitude in fixed notation with `precision` fraction digits
  // (the value must already be rounded to them), zero-padded on the left to
  // `width`, the point written when `withPoint`. Returns the length, or 0
  // when it would not fit `capacity`.
  size_t writeFixed(char* out, size_t capacity, int width, int precision, bool withPoint) const;
  // Plain decimal text with sign, without exponent or trailing zeros
  // ("-0.05", "1200"). Returns the length, or 0 when over `capacity`.
  size_t writePlain(char* out, size_t capacity) const;

 private:
  void stripTrailingZeros();

  char digits_[kSignificant + 1] = {};  // ASCII, first one non-zero
  int count_ = 0;                       // 0: the value is zero
  int point_ = 0;                       // value = 0.digits x 10^point_
  bool negative_ = false;
  int textFraction_ = -1;
};

// decimal.read(text, length), answered from the calling thread's memo of
// the last short text it read when `text` is that text again: an RnNum
// reads its value when it is made and again each time it is formatted.
bool readRemembered(const char* text, size_t length, RnDecimal& decimal);

}  // namespace zu::internal
