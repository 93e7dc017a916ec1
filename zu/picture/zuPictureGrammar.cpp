// zuPicture: the grammar above single symbols (words, styles, qualifiers,
// quoted literals, alternatives, escapes and legacy quoting).
#include "zu/core/zuCharConverter.h"
#include "zu/locale/RnData.h"
#include "zu/locale/RnLocale.h"
#include "zu/picture/internal/zuPictureDateTimeText.h"
#include "zu/picture/internal/zuPictureGrammarPieces.h"
#include "zu/picture/internal/zuPictureScan.h"
#include "zu/picture/zuPicture.h"

using namespace zu::internal;

using zu::internal::pictureCharAt;
using zu::internal::readSubPicture;
using zu::internal::skipQuotedLiteral;
using zu::internal::SubPicture;

const zuLiteral& zuPicture::getNUM() {
  static const zuLiteral kWord("num");
  return kWord;
}
const zuLiteral& zuPicture::getNULL() {
  static const zuLiteral kWord("null");
  return kWord;
}
const zuLiteral& zuPicture::getZERO() {
  static const zuLiteral kWord("zero");
  return kWord;
}
const zuLiteral& zuPicture::getTEXT() {
  static const zuLiteral kWord("text");
  return kWord;
}
const zuLiteral& zuPicture::getDATE() {
  static const zuLiteral kWord("date");
  return kWord;
}
const zuLiteral& zuPicture::getTIME() {
  static const zuLiteral kWord("time");
  return kWord;
}
const zuLiteral& zuPicture::getDATETIME() {
  static const zuLiteral kWord("datetime");
  return kWord;
}
const zuLiteral& zuPicture::getSHORT() {
  static const zuLiteral kWord("short");
  return kWord;
}
const zuLiteral& zuPicture::getMEDIUM() {
  static const zuLiteral kWord("medium");
  return kWord;
}
const zuLiteral& zuPicture::getLONG() {
  static const zuLiteral kWord("long");
  return kWord;
}
const zuLiteral& zuPicture::getFULL() {
  static const zuLiteral kWord("full");
  return kWord;
}
const zuLiteral& zuPicture::getDEFAULT() {
  static const zuLiteral kWord("default");
  return kWord;
}
const zuLiteral& zuPicture::getINTEGER() {
  static const zuLiteral kWord("integer");
  return kWord;
}
const zuLiteral& zuPicture::getDECIMAL() {
  static const zuLiteral kWord("decimal");
  return kWord;
}
const zuLiteral& zuPicture::getCURRENCY() {
  static const zuLiteral kWord("currency");
  return kWord;
}
const zuLiteral& zuPicture::getPERCENT() {
  static const zuLiteral kWord("percent");
  return kWord;
}
const zuLiteral& zuPicture::getLITERALS() {
  static const zuLiteral kLiterals("\"' ,-./:?+*$()");
  return kLiterals;
}

// --- Character classes --------------------------------------------------------

int zu::internal::isCharAlphabetic(unsigned int character) {
  return zuCharConverter::IsAlpha(character) ? 1 : 0;
}

int zu::internal::isCharNumeric(unsigned int character) {
  return character == '0' || character == '9' ? 1 : 0;
}

int zu::internal::isCharLiteral(unsigned int character) {
  if (character == 0 || character > 0x7F) return 0;
  return zuPicture::getLITERALS().CharInString(static_cast<char>(character));
}

int zu::internal::isCharQuote(unsigned int character) {
  return character == '\'' ? 1 : 0;
}

// --- Quoted literals --------------------------------------------------------

int zu::internal::getLiteralSubstr(const zuString& picture, unsigned int quotePos,
                                   unsigned int& pos, zuString* out) {
  unsigned int end = quotePos;
  if (picture[quotePos] != '\'' || !skipQuotedLiteral(picture, quotePos, end)) return 0;
  if (out != nullptr) {
    *out = picture.Substring(quotePos + 1, end - quotePos - 2);
    out->ReplaceAll("''", "'");
  }
  pos = end;
  return 1;
}

// --- Sub-pictures -------------------------------------------------------------

namespace {

// The position of `word` in `words`, or -1.
int styleIndex(const zuString& style, const zuLiteral* const* words, int count) {
  for (int i = 0; i < count; ++i) {
    if (style.Equals(*words[i])) return i;
  }
  return -1;
}

// Inserts "(locale)" between `word` and the brace that follows its first
// occurrence (compared without case).
void qualifyPart(zuString& pattern, const char* word, const zuString& locale) {
  unsigned int at = 0;
  if (!pattern.FindNoCase(word, at)) return;
  const unsigned int brace = at + zuString::StringLength(word);
  if (pattern[brace] != '{') return;
  pattern.Replace("(" + locale + ")", brace, 0);
}

// The locale's pattern for the style of a date, time, date-time or numeric
// item; false for a style word the category does not know.
bool stylePattern(const SubPicture& item, const zuString& locale, bool qualifyDateTime,
                  zuString& pattern) {
  static const zuLiteral* const kDateStyles[] = {&zuPicture::getDEFAULT(), &zuPicture::getSHORT(),
                                                 &zuPicture::getMEDIUM(), &zuPicture::getLONG(),
                                                 &zuPicture::getFULL()};
  static const zuLiteral* const kNumStyles[] = {&zuPicture::getINTEGER(), &zuPicture::getDECIMAL(),
                                                &zuPicture::getCURRENCY(),
                                                &zuPicture::getPERCENT()};
  const RnData data(locale.IsEmpty() ? static_cast<const char*>(RnLocale::getDEFAULT_LOCALE())
                                     : static_cast<const char*>(locale));
  if (item.word.Equals(zuPicture::getNUM())) {
    const int kind = styleIndex(item.style, kNumStyles, 4);
    if (kind < 0) return false;
    // Wide enough for any double. A decimal shows up to 15 fraction digits
    // and drops trailing zeros; a currency keeps its own fixed cents.
    int options = RnData::WITH_GROUPINGS | RnData::WITH_WIDTH(15);
    if (kind == RnData::DECIMAL_FMT) options |= RnData::WITH_PREC(255);
    if (kind == RnData::CURRENCY_FMT) options |= RnData::KEEP_NINES;
    pattern = data.getNumberFormat(kind, options);
    return true;
  }
  const int style = styleIndex(item.style, kDateStyles, 5);
  if (style < 0) return false;
  if (item.word.Equals(zuPicture::getDATE())) {
    pattern = data.getDateFormat(style);
  } else if (item.word.Equals(zuPicture::getTIME())) {
    pattern = data.getTimeFormat(style);
  } else {
    pattern = data.getDateTimeFormat(style, style);
    if (qualifyDateTime && !locale.IsEmpty()) {
      qualifyPart(pattern, "date", locale);
      qualifyPart(pattern, "time", locale);
    }
  }
  return true;
}

}  // namespace

namespace zu::internal {

bool isCategoryWord(const zuString& word) {
  return word.Equals(zuPicture::getNUM()) || word.Equals(zuPicture::getNULL()) ||
         word.Equals(zuPicture::getZERO()) || word.Equals(zuPicture::getTEXT()) ||
         word.Equals(zuPicture::getDATE()) || word.Equals(zuPicture::getTIME()) ||
         word.Equals(zuPicture::getDATETIME());
}

bool takesStyle(const zuString& word) {
  return word.Equals(zuPicture::getNUM()) || word.Equals(zuPicture::getDATE()) ||
         word.Equals(zuPicture::getTIME()) || word.Equals(zuPicture::getDATETIME());
}

// Gives a read item its meaning: category, locale and body (step 5 of the
// grammar). `locale` comes in as the locale in force.
int resolveSubPicture(const SubPicture& item, zuString& category, zuString& locale, zuString& body,
                      bool qualifyDateTime) {
  if (!isCategoryWord(item.word)) return 0;
  if (item.hasLocale) locale = item.locale;
  if (!item.hasStyle || !takesStyle(item.word)) {
    category = item.word;
    body = item.body;
    return 1;
  }
  zuString pattern;
  if (!stylePattern(item, locale, qualifyDateTime, pattern)) return 0;
  category = item.word + "." + item.style;
  body = pattern;
  return 1;
}

namespace {

// "word(locale){pattern}"; a pattern with alternatives (a currency's
// negative form) becomes one such item per alternative, joined by "|".
void appendStyledItem(const SubPicture& item, const zuString& pattern, zuString& out) {
  zuStorage<zuString> alternates;
  if (!zuPicture::getAlternates(pattern, alternates) || alternates.GetSize() == 0) {
    alternates.RemoveAll();
    alternates.Add(pattern);
  }
  for (unsigned int i = 0; i < alternates.GetSize(); ++i) {
    if (i > 0) out += "|";
    out += item.word;
    if (item.hasLocale) out += "(" + item.locale + ")";
    out += "{" + alternates[i] + "}";
  }
}

}  // namespace

zuString expandPictureStyles(const zuString& alternative, const zuString& locale) {
  unsigned int dot = 0;
  if (!alternative.CharInString('.', dot)) return alternative;
  zuString out = zuString::EmptyString();
  const unsigned int length = alternative.Length();
  unsigned int copied = 0;
  for (unsigned int pos = 0; pos < length;) {
    unsigned int next = pos;
    const unsigned int character = pictureCharAt(alternative, pos, next);
    SubPicture item;
    if (character == '\'') {
      if (!skipQuotedLiteral(alternative, pos, next)) break;
    } else if (zuCharConverter::IsAlpha(character) && readSubPicture(alternative, pos, item)) {
      next = item.end;
      zuString category;
      zuString itemLocale = locale;
      zuString body;
      if (item.hasStyle && takesStyle(item.word) &&
          resolveSubPicture(item, category, itemLocale, body, true)) {
        out += alternative.Substring(copied, pos - copied);
        if (item.word.Equals(zuPicture::getDATETIME())) {
          out += body;
        } else {
          appendStyledItem(item, body, out);
        }
        copied = next;
      }
    }
    pos = next;
  }
  if (copied == 0) return alternative;
  out += alternative.Substring(copied, length - copied);
  return out;
}

zuString peelSubPicture(const zuString& picture, const zuString& word, zuString& locale) {
  const unsigned int length = picture.Length();
  for (unsigned int pos = 0; pos < length;) {
    unsigned int next = pos;
    const unsigned int character = pictureCharAt(picture, pos, next);
    if (character == '\'') {
      if (!skipQuotedLiteral(picture, pos, next)) return picture;
    } else if (!zu::internal::isCharLiteral(character) && !zu::internal::isCharNumeric(character)) {
      SubPicture item;
      zuString category;
      zuString itemLocale = locale;
      zuString body;
      if (!readSubPicture(picture, pos, item) || item.word.CompareNoCase(word) != 0 ||
          !resolveSubPicture(item, category, itemLocale, body, false)) {
        return picture;
      }
      locale = itemLocale;
      if (pos == 0 && item.end == length) return body;
      return picture.Substring(0, pos) + body + picture.Substring(item.end, length - item.end);
    }
    pos = next;
  }
  return picture;
}

}  // namespace zu::internal

namespace {

using zu::internal::resolveSubPicture;

int readCategoryAt(const zuString& picture, unsigned int pos, zuString& category, zuString& locale,
                   zuString& body, bool qualifyDateTime) {
  SubPicture item;
  if (!readSubPicture(picture, pos, item)) return 0;
  return resolveSubPicture(item, category, locale, body, qualifyDateTime);
}

}  // namespace

int zuPicture::isSubPicture(const zuString& picture, unsigned int pos, zuString& category,
                            zuString& locale, zuString& body) {
  category.Empty();
  body.Empty();
  return readCategoryAt(picture, pos, category, locale, body, true);
}

int zuPicture::hasSubPicture(const zuString& picture, unsigned int pos, zuString& category,
                             zuString& locale, zuString& body) {
  category.Empty();
  body.Empty();
  const unsigned int length = picture.Length();
  zuString filler;
  while (pos < length) {
    unsigned int next = pos;
    const unsigned int character = pictureCharAt(picture, pos, next);
    if (isCharQuote(character)) {
      if (!skipQuotedLiteral(picture, pos, next)) return 0;
    } else if (!isCharLiteral(character) && !isCharNumeric(character)) {
      if (!isCharAlphabetic(character)) return 0;
      zuString inner;
      if (!readCategoryAt(picture, pos, category, locale, inner, false)) return 0;
      body = filler + inner;
      return 1;
    }
    filler += picture.Substring(pos, next - pos);
    pos = next;
  }
  body = filler;
  return 1;
}

// --- Alternatives and escapes -------------------------------------------------

int zuPicture::getAlternates(const zuString& picture, zuStorage<zuString>& alternates) {
  alternates.RemoveAll();
  const unsigned int length = picture.Length();
  if (length == 0) return 1;
  bool quoted = false;
  unsigned int start = 0;
  for (unsigned int pos = 0; pos < length; ++pos) {
    const char byte = picture[pos];
    if (byte == '\'') {
      quoted = !quoted;
    } else if (byte == '|' && !quoted) {
      alternates.Add(picture.Substring(start, pos - start));
      start = pos + 1;
    }
  }
  if (quoted) {
    alternates.RemoveAll();
    return 0;
  }
  alternates.Add(picture.Substring(start, length - start));
  return 1;
}

namespace {

int hexValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return -1;
}

// The code point of four hex digits at `pos`, or -1.
int escapedCodePoint(const zuString& picture, unsigned int pos) {
  int codePoint = 0;
  for (unsigned int i = 0; i < 4; ++i) {
    const int digit = hexValue(picture[pos + i]);
    if (digit < 0) return -1;
    codePoint = codePoint * 16 + digit;
  }
  return codePoint;
}

}  // namespace

zuString zu::internal::interpret(const zuString& picture) {
  unsigned int escape = 0;
  if (!picture.FindCase("\\u", escape)) return picture;
  zuString out(picture, escape);
  const unsigned int length = picture.Length();
  for (unsigned int pos = escape; pos < length;) {
    const int codePoint =
        picture[pos] == '\\' && picture[pos + 1] == 'u' ? escapedCodePoint(picture, pos + 2) : -1;
    if (codePoint > 0) {
      out += static_cast<unsigned int>(codePoint);
      pos += 6;
    } else {
      out += picture[pos];
      ++pos;
    }
  }
  return out;
}

// --- Locale qualifier -----------------------------------------------------------

int zuPicture::getLocaleFromPicture(const zuString& picture, const zuString& /*locale*/,
                                    zuString& out) {
  out.Empty();
  const unsigned int length = picture.Length();
  for (unsigned int pos = 0; pos < length;) {
    unsigned int next = pos;
    const unsigned int character = pictureCharAt(picture, pos, next);
    if (isCharQuote(character)) {
      if (!skipQuotedLiteral(picture, pos, next)) return 0;
    } else if (isCharAlphabetic(character)) {
      SubPicture item;
      if (!readSubPicture(picture, pos, item)) return 0;
      if (item.hasLocale && out.IsEmpty()) out = item.locale;
      next = item.end;
    } else if (!isCharLiteral(character) && !isCharNumeric(character)) {
      return 0;
    }
    pos = next;
  }
  return 1;
}

// --- Legacy quoting ---------------------------------------------------------

zuString zuPicture::Ox42ToKDL(const zuString& picture) {
  enum class State { kOutside, kSingle, kDouble };
  const unsigned int length = picture.Length();
  unsigned int quotes = 0;
  for (unsigned int pos = 0; pos < length; ++pos) {
    if (picture[pos] == '\'' || picture[pos] == '"') ++quotes;
  }
  zuString out;
  out.ReAlloc(length + quotes, 0);
  State state = State::kOutside;
  for (unsigned int pos = 0; pos < length; ++pos) {
    const char byte = picture[pos];
    switch (state) {
      case State::kOutside:
        if (byte == '\'') state = State::kSingle;
        if (byte == '"') state = State::kDouble;
        out += byte == '"' ? '\'' : byte;
        break;
      case State::kSingle:
        if (byte == '\'') state = State::kOutside;
        if (byte == '"') out += '"';
        out += byte;
        break;
      case State::kDouble:
        if (byte == '"') {
          state = State::kOutside;
          out += '\'';
        } else {
          if (byte == '\'') out += '\'';
          out += byte;
        }
        break;
    }
  }
  return out;
}

// --- Date-time output ----------------------------------------------------------

void zuPicture::possibleLiteralStrings(zuString& picture, zuString& dateText, zuString& timeText) {
  zuString out = zuString::EmptyString();
  for (const zu::internal::DateTimeSegment& segment :
       zu::internal::dateTimeSegments(picture, zuString())) {
    switch (segment.kind) {
      case zu::internal::DateTimeSegment::kLiteral:
        out += segment.text;
        break;
      case zu::internal::DateTimeSegment::kDate:
        out += dateText;
        break;
      case zu::internal::DateTimeSegment::kTime:
        out += timeText;
        break;
    }
  }
  picture = out;
}
