// RnDateTimeUtil: the digit and name routines shared by the date and time
// pictures.
//
// Numbers are written in one of three forms: the locale's decimal digits
// (counted from its zero digit, so "0" gives ASCII and U+0660 gives
// Arabic-Indic digits), full-width digits (U+FF10..U+FF19), or the native
// numerals of Japanese, Korean and Chinese locales. Native numerals are the
// ideographs shared by the three languages: 〇一二三四五六七八九 and 十.
// Values below 100 are written with the ten sign (5 is 五, 12 is 十二, 21 is
// 二十一, 30 is 三十); larger values digit by digit with 〇 for zero (2024 is
// 二〇二四). Native numerals ignore the minimum width: they are never padded.
//
//   zuString text;
//   appendNumber(text, 7, 2, {NumeralForm::kLocale, '0'});  // "07"
//   appendNumber(text, 12, 1, {NumeralForm::kNative, '0'}); // "十二"
//   int value = 0;
//   int next = readNumber(zuString("\xEF\xBC\x91" "5"), 0, 1, 2, value);
//   // next == 4, value == 15 (a full-width 1 followed by an ASCII 5)
//
// Positions are byte offsets into the UTF-8 text, as everywhere in zuString.
// Every routine is reentrant and allocates only into the string it appends to.
#pragma once

#include <cstdint>
#include <cstring>

#include "zu/core/zuString.h"

class RnData;

namespace zu::internal {

enum class NumeralForm : unsigned char {
  kLocale,     // decimal digits counted from `zero`
  kFullWidth,  // U+FF10..U+FF19
  kNative,     // 〇一二三四五六七八九 with 十 (see above)
};

// How a number is written: the form and, for kLocale, the zero digit.
struct NumeralStyle {
  NumeralForm form = NumeralForm::kLocale;
  uint32_t zero = '0';
};

// The locale's zero digit as a code point: the first character of
// RnData::getZeroSymbol when it is a decimal digit zero, else '0'.
uint32_t localeZeroDigit(const RnData& data);

// A text being built: its bytes go into a buffer inside the object (on the
// caller's stack) while they fit, and into a string after that; text()
// makes the string with one allocation in the common case.
//
//   TextOut out;
//   out += 'x';
//   appendNumber(out, 7, 2, {NumeralForm::kLocale, '0'});
//   zuString text = out.text();                           // "x07"
class TextOut {
 public:
  TextOut() = default;
  TextOut(const TextOut&) = delete;
  TextOut& operator=(const TextOut&) = delete;

  // One byte; a 0 byte is ignored, as zuString ignores it.
  TextOut& operator+=(char byte) {
    if (byte == '\0') return *this;
    if (length_ < kCapacity) {
      buffer_[length_++] = byte;
    } else {
      append(&byte, 1);
    }
    return *this;
  }
  // NUL-terminated text; null is ignored.
  TextOut& operator+=(const char* text) {
    if (text != nullptr) append(text, static_cast<unsigned int>(std::strlen(text)));
    return *this;
  }
  // One code point as UTF-8; 0 is ignored.
  TextOut& operator+=(uint32_t codePoint) {
    if (codePoint < 0x80) return *this += static_cast<char>(codePoint);
    appendCodePoint(codePoint);
    return *this;
  }
  TextOut& operator+=(const zuString& text) {
    append(text, text.Length());
    return *this;
  }
  void append(const char* bytes, unsigned int length) {
    if (length_ <= kCapacity && length <= kCapacity - length_) {
      std::memcpy(buffer_ + length_, bytes, length);
      length_ += length;
    } else {
      spill(bytes, length);
    }
  }
  // `value` (0..9999) in ASCII digits, with at least `minWidth` (at most 4).
  void appendSmall(unsigned int value, int minWidth) {
    char digits[4];
    const int count = value < 10 ? 1 : value < 100 ? 2 : value < 1000 ? 3 : 4;
    const int width = count < minWidth ? minWidth : count;
    for (int at = width - 1; at >= 0; --at) {
      digits[at] = static_cast<char>('0' + value % 10);
      value /= 10;
    }
    append(digits, static_cast<unsigned int>(width));
  }

  // The text; a null string when nothing was written. Throws zuExMemory.
  zuString text() const;

 private:
  void appendCodePoint(uint32_t codePoint);
  // Appends past the buffer: the text moves into spilled_ for good.
  void spill(const char* bytes, unsigned int length);

  static constexpr unsigned int kCapacity = 240;

  char buffer_[kCapacity];
  unsigned int length_ = 0;  // bytes in buffer_; kCapacity + 1 once they moved to spilled_
  zuString spilled_;
};

// Appends `value` with at least `minWidth` digits (zeros in front; the
// native form is never padded). A negative value is written with "-" (the
// full-width minus U+FF0D in the full-width form) before its digits.
void appendNumber(zuString& out, int64_t value, int minWidth, NumeralStyle style);
void appendOtherNumber(TextOut& out, int64_t value, int minWidth, NumeralStyle style);
inline void appendNumber(TextOut& out, int64_t value, int minWidth, NumeralStyle style) {
  // Days, months and years in ASCII digits without a call.
  if (style.form == NumeralForm::kLocale && style.zero == '0' && value >= 0 && value < 10000 &&
      minWidth <= 4) {
    out.appendSmall(static_cast<unsigned int>(value), minWidth);
    return;
  }
  appendOtherNumber(out, value, minWidth, style);
}

// Reads a number at byte position `pos`. Decimal digits of any script
// (ASCII, the locale's, full-width: every Unicode decimal digit, which may
// be mixed) count one digit each; from `minDigits` to `maxDigits` digits
// (at most 9) are taken. A run of native numerals (〇 or 零 for zero, 一 to
// 九, 十) is read whole instead; the digit counts do not apply to it, but
// its value must stay below 10 to the power `maxDigits`. Returns the
// position after the number and stores it in `value`, or returns -1 and
// leaves `value` alone.
int readNumber(const zuString& text, unsigned int pos, int minDigits, int maxDigits, int& value);

// Whether the character at `pos` starts a native numeral.
bool isNativeNumeralAt(const zuString& text, unsigned int pos);

// U+FF01..U+FF5E give their ASCII counterparts 0x21..0x7E; every other code
// point is returned unchanged.
uint32_t fullWidthToAscii(uint32_t codePoint);
// The reverse: 0x21..0x7E give U+FF01..U+FF5E, others unchanged.
uint32_t asciiToFullWidth(uint32_t codePoint);

// Matches one of `names[0..count)` at byte position `pos`, ignoring case:
// both sides are compared code point by code point after ICU's default
// case folding, so "MARS", "mars" and "Mars" match the same name and "ÉTÉ"
// matches "été". Empty names never match. The longest matching name wins
// (the first of equal length). Returns the position after the match and
// stores the name's index in `index`, or returns -1.
int matchName(const zuString& text, unsigned int pos, const zuString* names, int count, int& index);

// One item of a date or time picture.
struct PictureItem {
  enum Kind : unsigned char {
    kSymbol,   // a run of one symbol letter
    kLiteral,  // a character outside quotes that is not a symbol letter
    kQuoted,   // a character inside a quoted literal ("''" gives one quote)
  };
  Kind kind = kLiteral;
  uint32_t character = 0;  // kSymbol: the ASCII letter; otherwise the code point
  int count = 0;           // kSymbol: the length of the run, else 1
  bool fullWidth = false;  // kSymbol: written with full-width letters
};

// Walks a picture item by item. A run of the same symbol letter is one
// symbol; the full-width form of a symbol letter is that symbol (a run does
// not mix the two forms). A quote opens and closes a quoted literal, in which
// two quotes stand for one; outside one, two quotes are a literal quote. An
// unterminated quoted literal runs to the end of the picture.
//
//   PictureReader reader(picture, "DJMEeYWwGgt");
//   for (PictureItem item; reader.next(item);) { ... }
class PictureReader {
 public:
  // `symbols`: the ASCII symbol letters. `picture` must outlive the reader
  // and stay unchanged while it reads.
  PictureReader(const zuString& picture, const char* symbols);
  // Reads the next item; false at the end of the picture.
  bool next(PictureItem& item);

 private:
  bool isSymbol(uint32_t letter) const;
  // The code point at byte `pos`, moving `pos` past it (see zuString::UniChar).
  uint32_t codePointAt(unsigned int& pos) const;

  const zuString& picture_;
  const char* text_;
  unsigned int length_;
  uint64_t symbolMask_[2] = {0, 0};  // bit c for ASCII letter c
  unsigned int pos_ = 0;
  bool inQuote_ = false;
};

// Whether `codePoint` is white space for the "+" and "*" picture literals
// (Unicode White_Space, so no-break spaces count).
bool isPictureSpace(uint32_t codePoint);

}  // namespace zu::internal
