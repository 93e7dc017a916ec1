// Character classes of single code points, as the string class tests them.
//
// IsSpace accepts only the ASCII white space tab, LF, VT, FF, CR and space.
// Below 128 everything follows ASCII. Above, IsDigit takes Unicode decimal
// numbers and IsAlpha/IsAlnum Unicode letters (and digits); IsUpper also
// accepts U+00C0..U+00D6 and U+00D8..U+00DF, IsLower U+00E0..U+00F6 and
// U+00F8..U+00FF. ToUpper/ToLower map only ASCII letters.
#pragma once

namespace zu::internal {

int isSpaceCodePoint(unsigned int codePoint);
int isDigitCodePoint(unsigned int codePoint);
int isUpperCodePoint(unsigned int codePoint);
int isLowerCodePoint(unsigned int codePoint);
int isAlphaCodePoint(unsigned int codePoint);
int isAlnumCodePoint(unsigned int codePoint);
// U+00A0, U+202F or a Unicode space separator.
int isUniSpaceCodePoint(unsigned int codePoint);
// ASCII a-z to A-Z; everything else unchanged.
unsigned int toUpperAscii(unsigned int codePoint);
unsigned int toLowerAscii(unsigned int codePoint);

}  // namespace zu::internal
