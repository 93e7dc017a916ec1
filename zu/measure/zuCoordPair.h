// zuCoordPair: a point on the page, two zuUnitSpan coordinates.
//
// The page's y axis grows downwards. Operations work coordinate by
// coordinate with zuUnitSpan's arithmetic, so the right operand is converted
// into the left one's units.
//
//   zuCoordPair corner(zuUnitSpan(zuString("2in")), zuUnitSpan(zuString("1in")));
//   zuCoordPair turned = corner.RotatePoint(zuCoordPair(zuUnitSpan(zuString("1in")),
//                                                       zuUnitSpan(zuString("1in"))),
//                                           zuAngle(90));   // (72000, 0) millipoints
//
// Members that compare or convert throw ZuExThrow(17107) as zuUnitSpan does
// when two coordinates' bases differ and one is unknown. A point is a plain
// 16-byte value; every member may be called from any thread on points that
// thread owns.
#pragma once

#include <type_traits>

#include "zu/core/zuExport.h"
#include "zu/measure/zuAngle.h"
#include "zu/measure/zuUnitSpan.h"

class ZU_EXPORT zuCoordPair {
 public:
  // (0, 0) inches.
  constexpr zuCoordPair() = default;
  constexpr zuCoordPair(const zuUnitSpan& x, const zuUnitSpan& y) : x_(x), y_(y) {}
  zuCoordPair(const zuCoordPair& other) = default;
  zuCoordPair& operator=(const zuCoordPair& other) = default;

  // A shared (0, 0) in inches, never changed.
  static const zuCoordPair& ZeroZero();

  const zuUnitSpan& X() const { return x_; }
  void X(const zuUnitSpan& x) { x_ = x; }
  const zuUnitSpan& Y() const { return y_; }
  void Y(const zuUnitSpan& y) { y_ = y; }

  // Per coordinate, with zuUnitSpan's + and - (wrapping in 32 bits).
  zuCoordPair operator+(const zuCoordPair& other) const;
  zuCoordPair operator-(const zuCoordPair& other) const;
  zuCoordPair& operator+=(const zuCoordPair& other);
  zuCoordPair& operator-=(const zuCoordPair& other);

  // Both coordinates equal / not both. 1 or 0.
  int operator==(const zuCoordPair& other) const;
  int operator!=(const zuCoordPair& other) const;
  // Reading order down the page: by y, then by x when the y are equal.
  int operator<(const zuCoordPair& other) const;
  int operator>(const zuCoordPair& other) const;

  // Multiplies each coordinate whose factor is not exactly 1.0 with
  // zuUnitSpan::operator*(double).
  void Scale(double xFactor, double yFactor);
  // zuUnitSpan::Grid / Round per coordinate; a zero coordinate of `grid`
  // leaves that coordinate as it is.
  void Grid(const zuCoordPair& grid);
  void Round(const zuCoordPair& grid);

  // The point turned by `angle` about `centre`, in millipoints (unit 3).
  // The right angle is chosen by the rounded degrees: 0 returns the point as
  // it is, in its own units (0.4 degrees turn nothing); 90, 180 and 270 turn
  // exactly (90.4 degrees turn 90), with 32-bit wrap-around; any other angle
  // uses the exact angle, theta = Angle() * 0.017453292519944444, and rounds
  // each coordinate half away from zero (ZuRound).
  zuCoordPair RotatePoint(const zuCoordPair& centre, const zuAngle& angle) const;

 private:
  zuUnitSpan x_;
  zuUnitSpan y_;
};

static_assert(std::is_trivially_copyable_v<zuCoordPair>);
