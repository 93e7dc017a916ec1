#include "zu/measure/zuCoordPair.h"

#include <cmath>

#include "zu/picture/zuNumeric.h"

namespace {

// pi / 180 as the turn has always computed it, with pi = 3.14159265359.
constexpr double kRadiansPerDegree = 0.017453292519944444;

}  // namespace

const zuCoordPair& zuCoordPair::ZeroZero() {
  static constexpr zuCoordPair kZeroZero;
  return kZeroZero;
}

zuCoordPair zuCoordPair::operator+(const zuCoordPair& other) const {
  return zuCoordPair(x_ + other.x_, y_ + other.y_);
}

zuCoordPair zuCoordPair::operator-(const zuCoordPair& other) const {
  return zuCoordPair(x_ - other.x_, y_ - other.y_);
}

zuCoordPair& zuCoordPair::operator+=(const zuCoordPair& other) {
  return *this = *this + other;
}

zuCoordPair& zuCoordPair::operator-=(const zuCoordPair& other) {
  return *this = *this - other;
}

int zuCoordPair::operator==(const zuCoordPair& other) const {
  return x_ == other.x_ && y_ == other.y_;
}

int zuCoordPair::operator!=(const zuCoordPair& other) const {
  return !(*this == other);
}

int zuCoordPair::operator<(const zuCoordPair& other) const {
  return y_ < other.y_ || (y_ == other.y_ && x_ < other.x_);
}

int zuCoordPair::operator>(const zuCoordPair& other) const {
  return y_ > other.y_ || (y_ == other.y_ && x_ > other.x_);
}

void zuCoordPair::Scale(double xFactor, double yFactor) {
  if (xFactor != 1.0) x_ *= xFactor;
  if (yFactor != 1.0) y_ *= yFactor;
}

void zuCoordPair::Grid(const zuCoordPair& grid) {
  zuCoordPair snapped = *this;  // both or neither: a throw leaves the point as it was
  snapped.x_.Grid(grid.x_);
  snapped.y_.Grid(grid.y_);
  *this = snapped;
}

void zuCoordPair::Round(const zuCoordPair& grid) {
  zuCoordPair rounded = *this;
  rounded.x_.Round(grid.x_);
  rounded.y_.Round(grid.y_);
  *this = rounded;
}

zuCoordPair zuCoordPair::RotatePoint(const zuCoordPair& centre, const zuAngle& angle) const {
  const long degrees = angle.Degrees();
  if (degrees == 0) return *this;
  // Unit 3: inches, counted in millipoints.
  constexpr zuUnitSpan::UnitCode kMillipoints = zuUnitSpan::eInches;
  const zuUnitSpan x(kMillipoints, x_.ValueAsUnit(kMillipoints));
  const zuUnitSpan y(kMillipoints, y_.ValueAsUnit(kMillipoints));
  const zuUnitSpan cx(kMillipoints, centre.x_.ValueAsUnit(kMillipoints));
  const zuUnitSpan cy(kMillipoints, centre.y_.ValueAsUnit(kMillipoints));
  switch (degrees) {
    case 90:
      return zuCoordPair(cx + (y - cy), cy - (x - cx));
    case 180:
      return zuCoordPair(cx * 2L - x, cy * 2L - y);
    case 270:
      return zuCoordPair(cx - (y - cy), cy + (x - cx));
    default:
      break;
  }
  const double theta = angle.Angle() * kRadiansPerDegree;
  const double cosine = std::cos(theta);
  const double sine = std::sin(theta);
  const double dx = static_cast<double>(x.Value()) - static_cast<double>(cx.Value());
  const double dy = static_cast<double>(cy.Value()) - static_cast<double>(y.Value());
  const double centreY = static_cast<double>(cy.Value());
  return zuCoordPair(
      zuUnitSpan(kMillipoints, ZuRound(static_cast<double>(cx.Value()) + dx * cosine - dy * sine)),
      zuUnitSpan(kMillipoints, -ZuRound(dx * sine + dy * cosine - centreY)));
}
