// zuRect: an axis-aligned rectangle on the page, four zuUnitSpan edges.
//
// The page's y axis grows downwards: the top is the smaller y. Every setter
// goes through LeftRight and TopBottom, which store the smaller value as
// left (top) and the larger as right (bottom), so a corner set past its
// opposite swaps the edges.
//
//   zuRect box(zuCoordPair(zuUnitSpan(zuString("5in")), zuUnitSpan(zuString("5in"))),
//              zuCoordPair(zuUnitSpan(zuString("1in")), zuUnitSpan(zuString("1in"))));
//   box.Left();                   // 1in: the corners were sorted
//   box &= other;                 // the common part, or all zero
//
// Edges keep their own units; comparisons and arithmetic convert as
// zuUnitSpan does and throw ZuExThrow(17107) when two bases differ and one
// is unknown (nothing is changed then). A rectangle is a plain 32-byte
// value; every member may be called from any thread on rectangles that
// thread owns.
#pragma once

#include <type_traits>

#include "zu/core/zuExport.h"
#include "zu/measure/zuAngle.h"
#include "zu/measure/zuCoordPair.h"
#include "zu/measure/zuUnitSpan.h"

class ZU_EXPORT zuRect {
 public:
  // All four edges 0 inches.
  constexpr zuRect() = default;
  zuRect(const zuRect& other) = default;
  // The rectangle spanned by two opposite corners, in any order.
  zuRect(const zuCoordPair& a, const zuCoordPair& b);
  zuRect(const zuUnitSpan& left, const zuUnitSpan& top, const zuUnitSpan& right,
         const zuUnitSpan& bottom);
  zuRect& operator=(const zuRect& other) = default;

  // --- Setting edges -------------------------------------------------------------

  // LeftRight(left, right), then TopBottom(top, bottom).
  void Rect(const zuUnitSpan& left, const zuUnitSpan& top, const zuUnitSpan& right,
            const zuUnitSpan& bottom);
  // The smaller of the two as left (top), the larger as right (bottom).
  void LeftRight(const zuUnitSpan& a, const zuUnitSpan& b);
  void TopBottom(const zuUnitSpan& a, const zuUnitSpan& b);
  // LeftRight(left, left + width); RightWidth: LeftRight(right - width,
  // right). Likewise for heights.
  void LeftWidth(const zuUnitSpan& left, const zuUnitSpan& width);
  void RightWidth(const zuUnitSpan& right, const zuUnitSpan& width);
  void TopHeight(const zuUnitSpan& top, const zuUnitSpan& height);
  void BottomHeight(const zuUnitSpan& bottom, const zuUnitSpan& height);
  // The new width from the left edge (`fromRight` 0) or from the right one.
  void Width(const zuUnitSpan& width, int fromRight);
  // The new height from the top edge (`fromBottom` 0) or from the bottom one.
  void Height(const zuUnitSpan& height, int fromBottom);

  // --- Edges and corners -----------------------------------------------------------

  const zuUnitSpan& Left() const { return left_; }
  const zuUnitSpan& Top() const { return top_; }
  const zuUnitSpan& Right() const { return right_; }
  const zuUnitSpan& Bottom() const { return bottom_; }
  // One edge, against the opposite one (LeftRight or TopBottom).
  void Left(const zuUnitSpan& left) { LeftRight(left, right_); }
  void Top(const zuUnitSpan& top) { TopBottom(top, bottom_); }
  void Right(const zuUnitSpan& right) { LeftRight(left_, right); }
  void Bottom(const zuUnitSpan& bottom) { TopBottom(top_, bottom); }
  // right - left and bottom - top, in the left (top) edge's units.
  zuUnitSpan Width() const { return right_ - left_; }
  zuUnitSpan Height() const { return bottom_ - top_; }

  zuCoordPair TopLeft() const { return zuCoordPair(left_, top_); }
  zuCoordPair TopRight() const { return zuCoordPair(right_, top_); }
  zuCoordPair BottomLeft() const { return zuCoordPair(left_, bottom_); }
  zuCoordPair BottomRight() const { return zuCoordPair(right_, bottom_); }
  // Moves one corner, against the opposite edges.
  void TopLeft(const zuCoordPair& corner);
  void TopRight(const zuCoordPair& corner);
  void BottomLeft(const zuCoordPair& corner);
  void BottomRight(const zuCoordPair& corner);
  // (left + (right - left) / 2, top + (bottom - top) / 2), halves truncated.
  zuCoordPair Centre() const;

  // --- Tests -------------------------------------------------------------------

  // 1 when right <= left or bottom <= top, else 0.
  int IsDegenerate() const;
  // 1 when left <= x <= right and top <= y <= bottom (edges included).
  int Contains(const zuCoordPair& point) const;
  // 1 when both the top-left and the bottom-right corner of `other` are in.
  int Contains(const zuRect& other) const;
  // other.right >= left, other.left <= right, other.bottom >= top and
  // other.top <= bottom. Rectangles that only touch both overlap and are
  // disjoint.
  int Overlaps(const zuRect& other) const;
  // other.right <= left, or other.left >= right, or other.bottom <= top, or
  // other.top >= bottom.
  int Disjoint(const zuRect& other) const;

  // --- Combining -----------------------------------------------------------------

  // Moved by the point: left and right by x, top and bottom by y.
  zuRect operator+(const zuCoordPair& offset) const;
  zuRect operator-(const zuCoordPair& offset) const;
  zuRect& operator+=(const zuCoordPair& offset);
  zuRect& operator-=(const zuCoordPair& offset);
  // The union: the smaller left and top, the larger right and bottom (the
  // all-zero rectangle is no neutral element: it adds the origin).
  zuRect operator|(const zuRect& other) const;
  zuRect& operator|=(const zuRect& other);
  // The intersection: the larger left and top, the smaller right and bottom;
  // all zero (unit 3) when that leaves left > right or top > bottom. Touching
  // rectangles give a rectangle of zero width or height, not all zero.
  zuRect operator&(const zuRect& other) const;
  zuRect& operator&=(const zuRect& other);

  // All four edges equal / not all. 1 or 0.
  int operator==(const zuRect& other) const;
  int operator!=(const zuRect& other) const;

  // Turns the four corners by `angle` about `centre` (zuCoordPair::
  // RotatePoint) and becomes their bounding box, in millipoints (unit 3). A
  // rounded angle of 0 degrees changes nothing.
  void Rotate(const zuCoordPair& centre, const zuAngle& angle);
  // zuUnitSpan::ChangeUnits on all four edges.
  void ChangeUnits(zuUnitSpan::UnitCode unit);

 private:
  // The smaller of `a` and `b` into `low`, the other into `high`.
  static void Order(zuUnitSpan a, zuUnitSpan b, zuUnitSpan& low, zuUnitSpan& high);
  static zuUnitSpan Min(const zuUnitSpan& a, const zuUnitSpan& b, const zuUnitSpan& c,
                        const zuUnitSpan& d);
  static zuUnitSpan Max(const zuUnitSpan& a, const zuUnitSpan& b, const zuUnitSpan& c,
                        const zuUnitSpan& d);

  zuUnitSpan left_;
  zuUnitSpan top_;
  zuUnitSpan right_;
  zuUnitSpan bottom_;
};

static_assert(std::is_trivially_copyable_v<zuRect>);
