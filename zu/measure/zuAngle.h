// zuAngle: a rotation angle on the page, in thousandths of a degree.
//
// Always between 0 and 360 degrees, both included (360 is kept, not folded
// to 0). Positive angles turn counter-clockwise as seen on the page.
//
//   zuAngle turn(350);
//   turn += zuAngle(20);          // 10 degrees
//   turn.Degrees();               // 10
//   zuAngle(12.3456).ResValue();  // 12345 thousandths
//
// Setting a value outside the range throws ZuExThrow(17174) ("angle out of
// range") and leaves the angle unchanged. An angle is a plain 4-byte value;
// every member may be called from any thread on angles that thread owns.
#pragma once

#include <cstdint>
#include <type_traits>

#include "zu/core/zuExport.h"

class ZU_EXPORT zuAngle {
 public:
  // The largest value: 360 degrees.
  static constexpr long kFullTurn = 360000;

  // 0 degrees.
  constexpr zuAngle() : value_(0) {}
  // Degrees(degrees): throws 17174 outside 0..360.
  explicit zuAngle(int degrees);
  // Angle(degrees): throws 17174 outside 0..360 and for NaN.
  explicit zuAngle(double degrees);
  zuAngle(const zuAngle& other) = default;
  zuAngle& operator=(const zuAngle& other) = default;

  // The angle in degrees (value / 1000).
  double Angle() const { return value_ / 1000.0; }
  // Sets `degrees`, cut toward zero to a thousandth (360.0005 is 360).
  // Throws 17174 for a negative value, NaN, or one above 360.
  void Angle(double degrees);
  // Whole degrees, rounded half away from zero (90.5 gives 91).
  long Degrees() const { return (value_ + 500) / 1000; }
  // Sets whole degrees. Throws 17174 outside 0..360.
  void Degrees(long degrees);
  // The stored thousandths of a degree, 0..360000.
  long ResValue() const { return value_; }
  // Sets thousandths of a degree. Throws 17174 outside 0..360000 (the whole
  // long is checked, it is not cut to 32 bits first).
  void ResValue(long thousandths);
  // A fixed constant of the class, 100, whatever the stored scale.
  long Resolution() const { return 100; }

  // The sum, less 360 degrees when it passes 360 (180 + 180 stays 360).
  zuAngle operator+(const zuAngle& other) const;
  // The difference, plus 360 degrees when it is negative.
  zuAngle operator-(const zuAngle& other) const;
  zuAngle& operator+=(const zuAngle& other);
  zuAngle& operator-=(const zuAngle& other);

  // On the stored values, so 0 and 360 degrees differ. 1 or 0.
  int operator==(const zuAngle& other) const { return value_ == other.value_; }
  int operator!=(const zuAngle& other) const { return value_ != other.value_; }
  int operator<(const zuAngle& other) const { return value_ < other.value_; }
  int operator<=(const zuAngle& other) const { return value_ <= other.value_; }
  int operator>(const zuAngle& other) const { return value_ > other.value_; }
  int operator>=(const zuAngle& other) const { return value_ >= other.value_; }

 private:
  int32_t value_;
};

static_assert(std::is_trivially_copyable_v<zuAngle>);
