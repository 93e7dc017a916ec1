// zuPicture: deciding which category a picture belongs to, and whether it is
// valid for that category.
#include <cstring>

#include "zu/picture/RnDate.h"
#include "zu/picture/RnNum.h"
#include "zu/picture/RnText.h"
#include "zu/picture/RnTime.h"
#include "zu/picture/internal/RnDateTimeUtil.h"
#include "zu/picture/internal/zuPictureGrammarPieces.h"
#include "zu/picture/internal/zuPictureScan.h"
#include "zu/picture/zuPicture.h"

using namespace zu::internal;

using zu::internal::fullWidthToAscii;
using zu::internal::pictureCharAt;
using zu::internal::readSubPicture;
using zu::internal::resolveSubPicture;
using zu::internal::skipQuotedLiteral;
using zu::internal::SubPicture;

namespace {

// The item at `pos` with its meaning resolved under the default locale.
bool resolvedItemAt(const zuString& picture, unsigned int pos, SubPicture& item, zuString& locale,
                    zuString& body) {
  zuString category;
  return readSubPicture(picture, pos, item) &&
         resolveSubPicture(item, category, locale, body, false);
}

bool isDateOrTimeWord(const zuString& word, const zuString& wanted) {
  return word.CompareNoCase(wanted) == 0;
}

// The numeric symbols that only come in pairs: "CR", "cr", "DB", "db".
bool isPairStart(char symbol) {
  return symbol == 'C' || symbol == 'c' || symbol == 'D' || symbol == 'd';
}
bool isPairEnd(char symbol) {
  return symbol == 'R' || symbol == 'r' || symbol == 'B' || symbol == 'b';
}
char pairEnd(char symbol) {
  switch (symbol) {
    case 'C':
      return 'R';
    case 'c':
      return 'r';
    case 'D':
      return 'B';
    default:
      return 'b';
  }
}

// Checks one symbol at `pos` (moving `pos` past it); the numeric pairs are
// read whole.
bool acceptSymbol(const zuString& picture, unsigned int& pos, unsigned int character,
                  const zuString& symbols, bool numeric) {
  const unsigned int symbol = fullWidthToAscii(character);
  if (symbol == 0 || symbol > 0x7F || !symbols.CharInString(static_cast<char>(symbol)))
    return false;
  if (!numeric) return true;
  const char ascii = static_cast<char>(symbol);
  if (isPairEnd(ascii)) return false;
  if (!isPairStart(ascii)) return true;
  unsigned int next = pos;
  const unsigned int following = fullWidthToAscii(pictureCharAt(picture, pos, next));
  if (following != static_cast<unsigned char>(pairEnd(ascii))) return false;
  pos = next;
  return true;
}

// The count rule of a date or time symbol run; `table` lists, per symbol
// letter, the allowed counts as a string of digits.
struct RunRule {
  char symbol;
  const char* counts;
};

constexpr RunRule kDateRules[] = {{'D', "12"}, {'J', "13"}, {'M', "1234"}, {'E', "134"},
                                  {'e', "1"},  {'Y', "24"}, {'w', "1"},    {'W', "2"},
                                  {'G', "1"},  {'g', "123"}};
constexpr RunRule kTimeRules[] = {{'h', "12"}, {'k', "12"}, {'H', "12"}, {'K', "12"}, {'M', "12"},
                                  {'S', "12"}, {'F', "3"},  {'A', "12"}, {'z', "12"}, {'Z', "123"}};

template <size_t N>
bool runAllowed(const RunRule (&rules)[N], unsigned int symbol, unsigned int count) {
  for (const RunRule& rule : rules) {
    if (static_cast<unsigned int>(rule.symbol) != symbol) continue;
    return count < 10 && std::strchr(rule.counts, static_cast<char>('0' + count)) != nullptr;
  }
  return true;  // "t" and symbols without a rule
}

// Every run of one symbol in a date or time body has an allowed count.
// Full-width symbols are left to the engines.
template <size_t N>
bool runsAllowed(const zuString& body, const RunRule (&rules)[N]) {
  const unsigned int length = body.Length();
  for (unsigned int pos = 0; pos < length;) {
    unsigned int next = pos;
    const unsigned int character = pictureCharAt(body, pos, next);
    if (character == '\'') {
      if (!skipQuotedLiteral(body, pos, next)) return false;
      pos = next;
      continue;
    }
    unsigned int count = 1;
    while (next < length && static_cast<unsigned char>(body[next]) == character) {
      ++next;
      ++count;
    }
    if (character < 0x80 && !runAllowed(rules, character, count)) return false;
    pos = next;
  }
  return true;
}

// The body of the picture's first sub-picture of category `word`, or the
// picture itself.
zuString peeledBody(const zuString& picture, const zuString& word) {
  zuString locale;
  return zu::internal::peelSubPicture(picture, word, locale);
}

bool formatsAsNumber(const zuString& value, const zuString& picture) {
  RnNum number(value, RnLocale::getDEFAULT_LOCALE());
  return number.isValid() && !number.format(picture, nullptr, 0).IsEmpty();
}

// A null or zero picture: that sub-picture first, with an empty body or one
// that formats "0".
int isSpecialPictureValid(const zuString& picture, const zuString& word) {
  SubPicture item;
  zuString locale;
  zuString body;
  if (!resolvedItemAt(picture, 0, item, locale, body) || !item.word.Equals(word)) return 0;
  return body.IsEmpty() || (zuPicture::isNumericPicture(body) && formatsAsNumber("0", body));
}

}  // namespace

int zu::internal::isPicture(const zuString& picture, const zuString& word,
                            const zuString& symbols) {
  const bool numeric = word.Equals(zuPicture::getNUM());
  const unsigned int length = picture.Length();
  for (unsigned int pos = 0; pos < length;) {
    unsigned int next = pos;
    const unsigned int character = pictureCharAt(picture, pos, next);
    if (isCharQuote(character)) {
      if (!skipQuotedLiteral(picture, pos, next)) return 0;
    } else if (!isCharLiteral(character)) {
      SubPicture item;
      zuString locale;
      zuString body;
      if (isCharAlphabetic(character) && resolvedItemAt(picture, pos, item, locale, body) &&
          item.word.CompareNoCase(word) == 0) {
        if (!isPicture(body, word, symbols)) return 0;
        next = item.end;
      } else if (!acceptSymbol(picture, next, character, symbols, numeric)) {
        return 0;
      }
    }
    pos = next;
  }
  return 1;
}

int zuPicture::isNumericPicture(const zuString& picture) {
  return isPicture(picture, getNUM(), RnNum::getNUMERIC_PICTURE_SYMBOLS());
}

int zuPicture::isTextPicture(const zuString& picture) {
  return isPicture(picture, getTEXT(), RnText::getTEXT_PICTURE_SYMBOLS());
}

int zuPicture::isDatePicture(const zuString& picture) {
  return isPicture(picture, getDATE(), RnDate::getDATE_PICTURE_SYMBOLS());
}

int zuPicture::isTimePicture(const zuString& picture) {
  return isPicture(picture, getTIME(), RnTime::getTIME_PICTURE_SYMBOLS());
}

int zuPicture::isNullPicture(const zuString& picture) {
  zuString category;
  zuString locale;
  zuString body;
  return isSubPicture(picture, 0, category, locale, body) && category.Equals(getNULL());
}

int zuPicture::isZeroPicture(const zuString& picture) {
  zuString category;
  zuString locale;
  zuString body;
  return isSubPicture(picture, 0, category, locale, body) && category.Equals(getZERO());
}

int zu::internal::isEmptyPicture(const zuString& picture) {
  zuString category;
  zuString locale;
  zuString body;
  return zuPicture::isSubPicture(picture, 0, category, locale, body) && body.IsEmpty() &&
         !category.Equals(zuPicture::getNULL()) && !category.Equals(zuPicture::getZERO());
}

namespace {

// "word(locale){body}", the form a date or time part is handed on in.
zuString partPicture(const zuString& word, const SubPicture& item, const zuString& body) {
  zuString part = word;
  if (item.hasLocale) part += "(" + item.locale + ")";
  return part + "{" + body + "}";
}

bool collectDateTimeParts(const zuString& picture, zuString& datePicture, zuString& timePicture) {
  const unsigned int length = picture.Length();
  for (unsigned int pos = 0; pos < length;) {
    unsigned int next = pos;
    const unsigned int character = pictureCharAt(picture, pos, next);
    if (zu::internal::isCharQuote(character)) {
      if (!skipQuotedLiteral(picture, pos, next)) return false;
    } else if (!zu::internal::isCharLiteral(character) && character != 'T') {
      SubPicture item;
      zuString locale;
      zuString body;
      if (!resolvedItemAt(picture, pos, item, locale, body)) return false;
      if (isDateOrTimeWord(item.word, zuPicture::getDATE()) && zuPicture::isDatePicture(body)) {
        datePicture = partPicture(zuPicture::getDATE(), item, body);
      } else if (isDateOrTimeWord(item.word, zuPicture::getTIME()) &&
                 zuPicture::isTimePicture(body)) {
        timePicture = partPicture(zuPicture::getTIME(), item, body);
      } else if (!isDateOrTimeWord(item.word, zuPicture::getDATETIME()) ||
                 !collectDateTimeParts(body, datePicture, timePicture)) {
        return false;
      }
      next = item.end;
    }
    pos = next;
  }
  return true;
}

// A sub-picture of a compound picture: date and time words in any case, the
// others exactly, each with a body of its category.
bool isValidPart(const SubPicture& item, const zuString& body) {
  if (isDateOrTimeWord(item.word, zuPicture::getDATE())) return zuPicture::isDatePicture(body);
  if (isDateOrTimeWord(item.word, zuPicture::getTIME())) return zuPicture::isTimePicture(body);
  if (item.word.Equals(zuPicture::getTEXT())) return zuPicture::isTextPicture(body);
  if (item.word.Equals(zuPicture::getNUM())) return zuPicture::isNumericPicture(body);
  if (item.word.Equals(zuPicture::getNULL()) || item.word.Equals(zuPicture::getZERO())) {
    return body.IsEmpty() || zuPicture::isNumericPicture(body);
  }
  return false;
}

}  // namespace

int zuPicture::isDateTimePicture(const zuString& picture, zuString& datePicture,
                                 zuString& timePicture) {
  datePicture.Empty();
  timePicture.Empty();
  return collectDateTimeParts(picture, datePicture, timePicture) && !datePicture.IsEmpty() &&
         !timePicture.IsEmpty();
}

int zu::internal::isCompoundPicture(const zuString& picture) {
  const unsigned int length = picture.Length();
  for (unsigned int pos = 0; pos < length;) {
    unsigned int next = pos;
    const unsigned int character = pictureCharAt(picture, pos, next);
    if (isCharQuote(character)) {
      if (!skipQuotedLiteral(picture, pos, next)) return 0;
    } else if (!isCharLiteral(character) && !isCharNumeric(character)) {
      SubPicture item;
      zuString locale;
      zuString body;
      if (!resolvedItemAt(picture, pos, item, locale, body) || !isValidPart(item, body)) return 0;
      next = item.end;
    }
    pos = next;
  }
  return 1;
}

// --- Validity -------------------------------------------------------------------

int zuPicture::isNumericPictureValid(const zuString& picture) {
  const zuString body = peeledBody(picture, getNUM());
  return isNumericPicture(body) && (formatsAsNumber("0", body) || formatsAsNumber("1", body));
}

int zuPicture::isTextPictureValid(const zuString& picture) {
  return isTextPicture(peeledBody(picture, getTEXT()));
}

int zuPicture::isDatePictureValid(const zuString& picture) {
  const zuString body = peeledBody(picture, getDATE());
  return isDatePicture(body) && runsAllowed(body, kDateRules);
}

int zuPicture::isTimePictureValid(const zuString& picture) {
  const zuString body = peeledBody(picture, getTIME());
  return isTimePicture(body) && runsAllowed(body, kTimeRules);
}

int zuPicture::isDateTimePictureValid(const zuString& picture) {
  zuString datePicture;
  zuString timePicture;
  return isDateTimePicture(picture, datePicture, timePicture) && isDatePictureValid(datePicture) &&
         isTimePictureValid(timePicture);
}

int zuPicture::isNullPictureValid(const zuString& picture) {
  return isSpecialPictureValid(picture, getNULL());
}

int zuPicture::isZeroPictureValid(const zuString& picture) {
  return isSpecialPictureValid(picture, getZERO());
}
