// zuMargins: the four margins of a page or a box, one zuUnitSpan a side.
//
//   zuMargins margins(zuUnitSpan(zuString("1in")), zuUnitSpan(zuString("0.5in")),
//                     zuUnitSpan(zuString("1in")), zuUnitSpan(zuString("0.5in")));
//   margins.Scale(2.0, 0);        // every side doubled
//   margins.MarginTop();          // 1in
//
// Comparisons convert as zuUnitSpan does and throw ZuExThrow(17107) when
// two bases differ and one is unknown. Margins are a plain 32-byte value;
// every member may be called from any thread on margins that thread owns.
#pragma once

#include <type_traits>

#include "zu/core/zuExport.h"
#include "zu/measure/zuUnitSpan.h"

class ZU_EXPORT zuMargins {
 public:
  // All four sides 0 inches.
  constexpr zuMargins() = default;
  constexpr zuMargins(const zuUnitSpan& left, const zuUnitSpan& top, const zuUnitSpan& right,
                      const zuUnitSpan& bottom)
      : left_(left), top_(top), right_(right), bottom_(bottom) {}
  zuMargins(const zuMargins& other) = default;
  zuMargins& operator=(const zuMargins& other) = default;

  const zuUnitSpan& MarginLeft() const { return left_; }
  void MarginLeft(const zuUnitSpan& left) { left_ = left; }
  const zuUnitSpan& MarginTop() const { return top_; }
  void MarginTop(const zuUnitSpan& top) { top_ = top; }
  const zuUnitSpan& MarginRight() const { return right_; }
  void MarginRight(const zuUnitSpan& right) { right_ = right; }
  const zuUnitSpan& MarginBottom() const { return bottom_; }
  void MarginBottom(const zuUnitSpan& bottom) { bottom_ = bottom; }

  // All four sides equal / not all. 1 or 0.
  int operator==(const zuMargins& other) const;
  int operator!=(const zuMargins& other) const { return !(*this == other); }

  // Multiplies every side with zuUnitSpan::operator*=(double); the second
  // argument is not used.
  void Scale(double factor, int unused);

 private:
  zuUnitSpan left_;
  zuUnitSpan top_;
  zuUnitSpan right_;
  zuUnitSpan bottom_;
};

static_assert(std::is_trivially_copyable_v<zuMargins>);
