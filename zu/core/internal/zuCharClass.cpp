#include "zu/core/internal/zuCharClass.h"

#include <unicode/uchar.h>

namespace zu::internal {

namespace {

constexpr unsigned int kAsciiEnd = 0x80;

int isUnicodeLetter(unsigned int codePoint) {
  switch (u_charType(static_cast<UChar32>(codePoint))) {
    case U_UPPERCASE_LETTER:
    case U_LOWERCASE_LETTER:
    case U_TITLECASE_LETTER:
    case U_MODIFIER_LETTER:
    case U_OTHER_LETTER:
      return 1;
    default:
      return 0;
  }
}

int isUnicodeDecimal(unsigned int codePoint) {
  return u_charType(static_cast<UChar32>(codePoint)) == U_DECIMAL_DIGIT_NUMBER;
}

}  // namespace

int isSpaceCodePoint(unsigned int codePoint) {
  return codePoint == ' ' || (codePoint >= '\t' && codePoint <= '\r');
}

int isDigitCodePoint(unsigned int codePoint) {
  if (codePoint < kAsciiEnd) return codePoint >= '0' && codePoint <= '9';
  return isUnicodeDecimal(codePoint);
}

int isUpperCodePoint(unsigned int codePoint) {
  return (codePoint >= 'A' && codePoint <= 'Z') ||
         (codePoint >= 0xC0 && codePoint <= 0xDF && codePoint != 0xD7);
}

int isLowerCodePoint(unsigned int codePoint) {
  return (codePoint >= 'a' && codePoint <= 'z') ||
         (codePoint >= 0xE0 && codePoint <= 0xFF && codePoint != 0xF7);
}

int isAlphaCodePoint(unsigned int codePoint) {
  if (codePoint < kAsciiEnd) {
    return (codePoint >= 'A' && codePoint <= 'Z') || (codePoint >= 'a' && codePoint <= 'z');
  }
  return isUnicodeLetter(codePoint);
}

int isAlnumCodePoint(unsigned int codePoint) {
  if (codePoint < kAsciiEnd) return isAlphaCodePoint(codePoint) || isDigitCodePoint(codePoint);
  return isUnicodeLetter(codePoint) || isUnicodeDecimal(codePoint);
}

int isUniSpaceCodePoint(unsigned int codePoint) {
  return codePoint == 0xA0 || codePoint == 0x202F ||
         u_charType(static_cast<UChar32>(codePoint)) == U_SPACE_SEPARATOR;
}

unsigned int toUpperAscii(unsigned int codePoint) {
  return codePoint >= 'a' && codePoint <= 'z' ? codePoint - ('a' - 'A') : codePoint;
}

unsigned int toLowerAscii(unsigned int codePoint) {
  return codePoint >= 'A' && codePoint <= 'Z' ? codePoint + ('a' - 'A') : codePoint;
}

}  // namespace zu::internal
