#include "zu/measure/zuRect.h"

// Members that set more than one edge work on a copy and assign it at the
// end, so that a conversion that throws leaves the rectangle as it was.

zuRect::zuRect(const zuCoordPair& a, const zuCoordPair& b) {
  Rect(a.X(), a.Y(), b.X(), b.Y());
}

zuRect::zuRect(const zuUnitSpan& left, const zuUnitSpan& top, const zuUnitSpan& right,
               const zuUnitSpan& bottom) {
  Rect(left, top, right, bottom);
}

void zuRect::Rect(const zuUnitSpan& left, const zuUnitSpan& top, const zuUnitSpan& right,
                  const zuUnitSpan& bottom) {
  zuRect result = *this;
  result.LeftRight(left, right);
  result.TopBottom(top, bottom);
  *this = result;
}

void zuRect::LeftRight(const zuUnitSpan& a, const zuUnitSpan& b) {
  Order(a, b, left_, right_);
}

void zuRect::TopBottom(const zuUnitSpan& a, const zuUnitSpan& b) {
  Order(a, b, top_, bottom_);
}

void zuRect::Order(zuUnitSpan a, zuUnitSpan b, zuUnitSpan& low, zuUnitSpan& high) {
  // `a` and `b` are copies: either may be one of the edges being set.
  const bool ordered = a <= b;
  low = ordered ? a : b;
  high = ordered ? b : a;
}

void zuRect::LeftWidth(const zuUnitSpan& left, const zuUnitSpan& width) {
  LeftRight(left, left + width);
}

void zuRect::RightWidth(const zuUnitSpan& right, const zuUnitSpan& width) {
  LeftRight(right - width, right);
}

void zuRect::TopHeight(const zuUnitSpan& top, const zuUnitSpan& height) {
  TopBottom(top, top + height);
}

void zuRect::BottomHeight(const zuUnitSpan& bottom, const zuUnitSpan& height) {
  TopBottom(bottom - height, bottom);
}

void zuRect::Width(const zuUnitSpan& width, int fromRight) {
  if (fromRight == 0) {
    LeftWidth(left_, width);
  } else {
    RightWidth(right_, width);
  }
}

void zuRect::Height(const zuUnitSpan& height, int fromBottom) {
  if (fromBottom == 0) {
    TopHeight(top_, height);
  } else {
    BottomHeight(bottom_, height);
  }
}

void zuRect::TopLeft(const zuCoordPair& corner) {
  Rect(corner.X(), corner.Y(), right_, bottom_);
}

void zuRect::TopRight(const zuCoordPair& corner) {
  Rect(left_, corner.Y(), corner.X(), bottom_);
}

void zuRect::BottomLeft(const zuCoordPair& corner) {
  Rect(corner.X(), top_, right_, corner.Y());
}

void zuRect::BottomRight(const zuCoordPair& corner) {
  Rect(left_, top_, corner.X(), corner.Y());
}

zuCoordPair zuRect::Centre() const {
  return zuCoordPair(left_ + (right_ - left_) / 2L, top_ + (bottom_ - top_) / 2L);
}

int zuRect::IsDegenerate() const {
  return right_ <= left_ || bottom_ <= top_;
}

int zuRect::Contains(const zuCoordPair& point) const {
  return left_ <= point.X() && right_ >= point.X() && top_ <= point.Y() && bottom_ >= point.Y();
}

int zuRect::Contains(const zuRect& other) const {
  return Contains(other.TopLeft()) && Contains(other.BottomRight());
}

int zuRect::Overlaps(const zuRect& other) const {
  return other.right_ >= left_ && other.left_ <= right_ && other.bottom_ >= top_ &&
         other.top_ <= bottom_;
}

int zuRect::Disjoint(const zuRect& other) const {
  return other.right_ <= left_ || other.left_ >= right_ || other.bottom_ <= top_ ||
         other.top_ >= bottom_;
}

zuRect zuRect::operator+(const zuCoordPair& offset) const {
  return zuRect(left_ + offset.X(), top_ + offset.Y(), right_ + offset.X(), bottom_ + offset.Y());
}

zuRect zuRect::operator-(const zuCoordPair& offset) const {
  return zuRect(left_ - offset.X(), top_ - offset.Y(), right_ - offset.X(), bottom_ - offset.Y());
}

zuRect& zuRect::operator+=(const zuCoordPair& offset) {
  return *this = *this + offset;
}

zuRect& zuRect::operator-=(const zuCoordPair& offset) {
  return *this = *this - offset;
}

zuRect zuRect::operator|(const zuRect& other) const {
  return zuRect(left_ <= other.left_ ? left_ : other.left_, top_ <= other.top_ ? top_ : other.top_,
                right_ >= other.right_ ? right_ : other.right_,
                bottom_ >= other.bottom_ ? bottom_ : other.bottom_);
}

zuRect& zuRect::operator|=(const zuRect& other) {
  return *this = *this | other;
}

zuRect zuRect::operator&(const zuRect& other) const {
  const zuUnitSpan& left = left_ >= other.left_ ? left_ : other.left_;
  const zuUnitSpan& top = top_ >= other.top_ ? top_ : other.top_;
  const zuUnitSpan& right = right_ <= other.right_ ? right_ : other.right_;
  const zuUnitSpan& bottom = bottom_ <= other.bottom_ ? bottom_ : other.bottom_;
  if (left > right || top > bottom) return zuRect();
  return zuRect(left, top, right, bottom);
}

zuRect& zuRect::operator&=(const zuRect& other) {
  return *this = *this & other;
}

int zuRect::operator==(const zuRect& other) const {
  return left_ == other.left_ && top_ == other.top_ && right_ == other.right_ &&
         bottom_ == other.bottom_;
}

int zuRect::operator!=(const zuRect& other) const {
  return !(*this == other);
}

void zuRect::Rotate(const zuCoordPair& centre, const zuAngle& angle) {
  if (angle.Degrees() == 0) return;
  const zuCoordPair a = TopLeft().RotatePoint(centre, angle);
  const zuCoordPair b = TopRight().RotatePoint(centre, angle);
  const zuCoordPair c = BottomLeft().RotatePoint(centre, angle);
  const zuCoordPair d = BottomRight().RotatePoint(centre, angle);
  *this = zuRect(Min(a.X(), b.X(), c.X(), d.X()), Min(a.Y(), b.Y(), c.Y(), d.Y()),
                 Max(a.X(), b.X(), c.X(), d.X()), Max(a.Y(), b.Y(), c.Y(), d.Y()));
}

void zuRect::ChangeUnits(zuUnitSpan::UnitCode unit) {
  // Through Rect: edges of different bases, each rounded on its own, may
  // meet the other way round in the new unit.
  const auto converted = [unit](const zuUnitSpan& edge) {
    return zuUnitSpan(unit, edge.ValueAsUnit(unit));
  };
  Rect(converted(left_), converted(top_), converted(right_), converted(bottom_));
}

zuUnitSpan zuRect::Min(const zuUnitSpan& a, const zuUnitSpan& b, const zuUnitSpan& c,
                       const zuUnitSpan& d) {
  const zuUnitSpan& ab = a <= b ? a : b;
  const zuUnitSpan& cd = c <= d ? c : d;
  return ab <= cd ? ab : cd;
}

zuUnitSpan zuRect::Max(const zuUnitSpan& a, const zuUnitSpan& b, const zuUnitSpan& c,
                       const zuUnitSpan& d) {
  const zuUnitSpan& ab = a >= b ? a : b;
  const zuUnitSpan& cd = c >= d ? c : d;
  return ab >= cd ? ab : cd;
}
