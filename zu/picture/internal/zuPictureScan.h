// Scanning helpers shared by the picture-clause dispatcher: reading one
// character, stepping over a quoted literal and reading the syntax of a
// sub-picture "word[.style][(locale)]{body}". They know nothing of the
// categories or the locale data; zuPicture gives the words their meaning.
#pragma once

#include "zu/core/zuString.h"

namespace zu::internal {

// One sub-picture as written. Positions are byte offsets.
struct SubPicture {
  zuString word;
  zuString style;  // empty when no "." followed the word
  zuString locale;
  bool hasLocale = false;
  bool hasStyle = false;
  zuString body;         // raw text between the braces
  unsigned int end = 0;  // just past the closing brace
};

// The code point at `pos` and, in `next`, the position after it.
unsigned int pictureCharAt(const zuString& picture, unsigned int pos, unsigned int& next);

// Steps over the quoted literal opening at `quotePos`: `end` goes past its
// closing quote (two quotes in a row stay inside). False when it never closes.
bool skipQuotedLiteral(const zuString& picture, unsigned int quotePos, unsigned int& end);

// Reads a sub-picture at `pos` (steps 1 to 4 of the grammar: alphabetic
// word, optional ".style" up to "(" or "{", optional "(locale)", "{", body
// up to the first "}" outside quotes). False when none stands there.
bool readSubPicture(const zuString& picture, unsigned int pos, SubPicture& item);

// True for the seven category words; `takesStyle` for the four that take a
// style (num, date, time, datetime).
bool isCategoryWord(const zuString& word);
bool takesStyle(const zuString& word);

// Gives a read item its meaning: its category ("word" or "word.style"), its
// locale (the qualifier, else `locale` as passed in, which also picks the
// patterns of a style) and its body (the raw body, or the style's pattern;
// date-time patterns get "(locale)" on their parts when `qualifyDateTime`
// and a locale is known). 0 for an unknown word or style.
int resolveSubPicture(const SubPicture& item, zuString& category, zuString& locale, zuString& body,
                      bool qualifyDateTime);

// `alternative` with every styled sub-picture replaced by the locale's
// pattern: "date.short{}" becomes "date{M/D/YY}" (keeping a qualifier), and
// "datetime.S{}" becomes its qualified date and time parts. A pattern with
// alternatives gives "num{A}|num{B}": the result may hold several
// alternatives (text around such an item stays with its first or last one).
zuString expandPictureStyles(const zuString& alternative, const zuString& locale);

// Peels one level of "word{...}" off an alternative: the filler before it
// (quoted literals, literal punctuation, "0", "9"), the item's body (its
// pattern for a style) and the rest after it. A qualifier replaces
// `locale`. Without such an item the picture itself is returned.
zuString peelSubPicture(const zuString& picture, const zuString& word, zuString& locale);

}  // namespace zu::internal
