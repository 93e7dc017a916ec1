// A picture clause made ready for use: its alternatives as the categories
// see them (escapes read, styles replaced by the locale's patterns) and the
// category each one falls in, found in the fixed classification order.
//
// Reading and classifying a clause costs far more than formatting a value
// through it, and callers pass the same few clauses again and again. The
// calling thread therefore remembers the last clauses it prepared (64 of
// them, keyed by clause and locale; a newer clause may take an older one's
// place). Preparing depends on nothing but the two texts and the built-in
// locale data, so a remembered answer is always the one preparing anew
// would give.
//
//   const PreparedPicture& prepared = preparedPicture(picture, locale);
//   for (const PreparedAlternative& alternative : prepared.alternatives) ...
//
// The reference stays valid until the thread prepares another clause.
#pragma once

#include <vector>

#include "zu/core/zuString.h"
#include "zu/picture/internal/RnTextLayout.h"

namespace zu::internal {

enum class PictureKind { kNone, kNumeric, kNull, kZero, kDateTime, kDate, kTime, kText, kCompound };

struct PreparedAlternative {
  zuString text;
  // The category a value that is neither null nor empty is formatted or
  // parsed in; kNone when no category takes the alternative.
  PictureKind kind = PictureKind::kNone;
  bool takesNull = false;   // a null{} alternative
  bool takesEmpty = false;  // a sub-picture with an empty body, not null{} or zero{}
  // The date and time parts of a date-time alternative.
  zuString datePicture;
  zuString timePicture;
  // For a numeric, text, date or time alternative: the sub-picture peeled
  // off (see peelSubPicture) and the locale it is read in.
  zuString body;
  zuString bodyLocale;
  // For a text alternative: the body's layout, which most values of a
  // fixed-width picture go through without a call into the engine.
  TextLayout textLayout;
};

struct PreparedPicture {
  // False when the clause ends inside a quoted literal.
  bool readable = false;
  std::vector<PreparedAlternative> alternatives;
};

const PreparedPicture& preparedPicture(const zuString& picture, const zuString& locale);

}  // namespace zu::internal
