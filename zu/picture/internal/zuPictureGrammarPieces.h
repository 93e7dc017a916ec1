// The pieces of the picture grammar that the engines share and clients do
// not use: escapes, quoted literals, the grammar's character classes, and
// the classification tests behind zuPicture's is...Picture operations.
//
//   unsigned int pos = 0;
//   zuString literal;
//   zu::internal::getLiteralSubstr("'it''s'x", 0, pos, &literal);  // "it's", pos 7
#pragma once

#include "zu/core/zuString.h"

namespace zu::internal {

// `picture` with each "\u" and four hex digits replaced by that character.
zuString interpret(const zuString& picture);
// The quoted literal opening at `quotePos`: its text (doubled quotes read
// as one) into `out` when given, `pos` past the closing quote. 0 when the
// literal is not closed.
int getLiteralSubstr(const zuString& picture, unsigned int quotePos, unsigned int& pos,
                     zuString* out);
int isCharAlphabetic(unsigned int character);
// Only "0" and "9": the filler digits between sub-pictures.
int isCharNumeric(unsigned int character);
int isCharLiteral(unsigned int character);
int isCharQuote(unsigned int character);
// Every item is a quoted literal, literal punctuation, "0", "9" or a valid
// sub-picture of any category.
int isCompoundPicture(const zuString& picture);
// A sub-picture with an empty body at the start, not "null" or "zero".
int isEmptyPicture(const zuString& picture);
int isPicture(const zuString& picture, const zuString& word, const zuString& symbols);

}  // namespace zu::internal
