// The text layout of a date-time picture: literal text, a date and a time in
// the order the picture gives them. Formatting fills the layout in; parsing
// finds where the date and the time lie in a user's text.
#pragma once

#include <functional>
#include <vector>

#include "zu/core/zuString.h"

namespace zu::internal {

struct DateTimeSegment {
  enum Kind { kLiteral, kDate, kTime };
  Kind kind;
  zuString text;  // the unquoted literal text (kLiteral only)
};

// The segments of a date-time alternative: quoted literals unquoted,
// "date" and "time" sub-pictures as parts, a "datetime" sub-picture (its
// style resolved under `locale`) opened up, every other character literal.
// Adjacent literals are joined.
std::vector<DateTimeSegment> dateTimeSegments(const zuString& picture, const zuString& locale);

// Matches `text` against the segments of `picture`: literals must appear as
// they stand, and the date and time parts are offered candidate stretches
// of the text (the longest first, ending where the next literal occurs)
// until `readDate` and `readTime` accept them and the whole text is used.
// The last accepted calls belong to the match. Bounded: a text that needs
// more than a few thousand attempts fails.
bool matchDateTimeText(const zuString& text, const zuString& picture, const zuString& locale,
                       const std::function<bool(const zuString&)>& readDate,
                       const std::function<bool(const zuString&)>& readTime);

}  // namespace zu::internal
