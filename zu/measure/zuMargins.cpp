#include "zu/measure/zuMargins.h"

int zuMargins::operator==(const zuMargins& other) const {
  return left_ == other.left_ && top_ == other.top_ && right_ == other.right_ &&
         bottom_ == other.bottom_;
}

void zuMargins::Scale(double factor, int /*unused*/) {
  left_ *= factor;
  top_ *= factor;
  right_ *= factor;
  bottom_ *= factor;
}
