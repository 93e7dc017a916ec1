#include "zu/measure/zuAngle.h"

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"

zuAngle::zuAngle(int degrees) : value_(0) {
  Degrees(degrees);
}

zuAngle::zuAngle(double degrees) : value_(0) {
  Angle(degrees);
}

void zuAngle::Angle(double degrees) {
  // Written so that NaN fails the test too.
  if (!(degrees >= 0 && degrees <= static_cast<double>(kFullTurn))) {
    ZuExThrow(zuMessageIds::kAngleRange);
  }
  ResValue(static_cast<long>(degrees * 1000));
}

void zuAngle::Degrees(long degrees) {
  if (degrees < 0 || degrees > kFullTurn) ZuExThrow(zuMessageIds::kAngleRange);
  ResValue(degrees * 1000);
}

void zuAngle::ResValue(long thousandths) {
  if (thousandths < 0 || thousandths > kFullTurn) ZuExThrow(zuMessageIds::kAngleRange);
  value_ = static_cast<int32_t>(thousandths);
}

zuAngle zuAngle::operator+(const zuAngle& other) const {
  zuAngle sum;
  sum.value_ = value_ + other.value_;
  if (sum.value_ > kFullTurn) sum.value_ -= kFullTurn;
  return sum;
}

zuAngle zuAngle::operator-(const zuAngle& other) const {
  zuAngle difference;
  difference.value_ = value_ - other.value_;
  if (difference.value_ < 0) difference.value_ += kFullTurn;
  return difference;
}

zuAngle& zuAngle::operator+=(const zuAngle& other) {
  return *this = *this + other;
}

zuAngle& zuAngle::operator-=(const zuAngle& other) {
  return *this = *this - other;
}
