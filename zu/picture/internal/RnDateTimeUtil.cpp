#include "zu/picture/internal/RnDateTimeUtil.h"

#include <unicode/uchar.h>

#include <cstdint>
#include <cstring>

#include "zu/core/zuUnicode.h"

#include "zu/locale/RnData.h"

namespace zu::internal {
namespace {

constexpr uint32_t kFullWidthZero = 0xFF10;
constexpr uint32_t kFullWidthMinus = 0xFF0D;
constexpr uint32_t kNativeTen = 0x5341;      // 十
constexpr uint32_t kNativeZeroAlt = 0x96F6;  // 零, read but not written
constexpr uint32_t kNativeDigits[10] = {0x3007, 0x4E00, 0x4E8C, 0x4E09, 0x56DB,
                                        0x4E94, 0x516D, 0x4E03, 0x516B, 0x4E5D};
constexpr int kMaxDigits = 9;
// The most digits a number is padded to.
constexpr int kMaxPadding = 64;

// The value of a native digit (0..9), 10 for the ten sign, -1 otherwise.
int nativeValue(uint32_t codePoint) {
  if (codePoint == kNativeTen) return 10;
  if (codePoint == kNativeZeroAlt) return 0;
  for (int digit = 0; digit < 10; ++digit) {
    if (kNativeDigits[digit] == codePoint) return digit;
  }
  return -1;
}

// The value of a Unicode decimal digit, -1 for anything else.
int decimalValue(uint32_t codePoint) {
  if (codePoint >= '0' && codePoint <= '9') return static_cast<int>(codePoint - '0');
  if (codePoint < 0x80) return -1;
  if (u_charType(static_cast<UChar32>(codePoint)) != U_DECIMAL_DIGIT_NUMBER) return -1;
  return u_charDigitValue(static_cast<UChar32>(codePoint));
}

// `text` holds `length` bytes and a NUL after them.
void appendTerminated(zuString& out, const char* text, unsigned int) {
  out += text;
}
void appendTerminated(TextOut& out, const char* text, unsigned int length) {
  out.append(text, length);
}

template <class Out>
void appendNative(Out& out, uint64_t magnitude) {
  if (magnitude < 100) {
    const unsigned tens = static_cast<unsigned>(magnitude / 10);
    const unsigned units = static_cast<unsigned>(magnitude % 10);
    if (tens == 0) {
      out += kNativeDigits[units];
      return;
    }
    if (tens > 1) out += kNativeDigits[tens];
    out += kNativeTen;
    if (units != 0) out += kNativeDigits[units];
    return;
  }
  char digits[20];
  int count = 0;
  for (; magnitude != 0; magnitude /= 10) digits[count++] = static_cast<char>(magnitude % 10);
  while (count > 0) out += kNativeDigits[static_cast<int>(digits[--count])];
}

// Reads a run of native numerals: digit by digit, or with one ten sign in
// the forms 十, 十D, D十 and D十D.
int readNative(const zuString& text, unsigned int pos, int maxDigits, int& value) {
  int64_t limit = 1;
  for (int i = 0; i < maxDigits; ++i) limit *= 10;
  int64_t digitsValue = 0;
  int digitCount = 0;
  int before = -1;  // the digit before the ten sign (-1: none)
  int after = -1;   // the digit after it
  bool sawTen = false;
  unsigned int next = pos;
  for (;;) {
    unsigned int probe = next;
    const int symbol = nativeValue(text.UniChar(probe));
    if (symbol < 0) break;
    if (symbol == 10) {
      if (sawTen || digitCount > 1 || before == 0) break;
      sawTen = true;
    } else if (sawTen) {
      if (after >= 0 || symbol == 0) break;
      after = symbol;
    } else {
      if (digitCount == kMaxDigits) break;
      digitsValue = digitsValue * 10 + symbol;
      before = symbol;
      ++digitCount;
    }
    next = probe;
  }
  if (next == pos) return -1;
  int64_t result = digitsValue;
  if (sawTen) result = (digitCount == 0 ? 1 : before) * 10 + (after < 0 ? 0 : after);
  if (result >= limit) return -1;
  value = static_cast<int>(result);
  return static_cast<int>(next);
}

}  // namespace

uint32_t localeZeroDigit(const RnData& data) {
  const zuString zero = data.getZeroSymbol();
  unsigned int pos = 0;
  const uint32_t codePoint = zero.UniChar(pos);
  return decimalValue(codePoint) == 0 ? codePoint : '0';
}

template <class Out>
void appendNumberTo(Out& out, int64_t value, int minWidth, NumeralStyle style) {
  // The magnitude in unsigned arithmetic, so that the most negative value
  // has one too.
  uint64_t magnitude = static_cast<uint64_t>(value);
  if (value < 0) {
    magnitude = 0 - magnitude;
    out += style.form == NumeralForm::kFullWidth ? kFullWidthMinus : uint32_t{'-'};
  }
  if (style.form == NumeralForm::kNative) {
    appendNative(out, magnitude);
    return;
  }
  const int width = minWidth < kMaxPadding ? minWidth : kMaxPadding;
  if (style.form == NumeralForm::kLocale && style.zero == '0' && magnitude < 10000 && width <= 4) {
    // The most common case of all, a day, month or year: at most four ASCII
    // digits, appended byte by byte into the room the string has.
    const auto digits = static_cast<unsigned int>(magnitude);
    const int count = digits < 10 ? 1 : digits < 100 ? 2 : digits < 1000 ? 3 : 4;
    for (int pad = count; pad < width; ++pad) out += '0';
    if (count >= 4) out += static_cast<char>('0' + digits / 1000);
    if (count >= 3) out += static_cast<char>('0' + digits / 100 % 10);
    if (count >= 2) out += static_cast<char>('0' + digits / 10 % 10);
    out += static_cast<char>('0' + digits % 10);
    return;
  }
  if (style.form == NumeralForm::kLocale && style.zero == '0') {
    // ASCII digits: written backwards into a buffer with their padding,
    // then appended in one piece.
    char text[kMaxPadding + 1];
    char* start = text + kMaxPadding;
    *start = '\0';
    do {
      *--start = static_cast<char>('0' + magnitude % 10);
      magnitude /= 10;
    } while (magnitude != 0);
    while (text + kMaxPadding - start < width) *--start = '0';
    appendTerminated(out, start, static_cast<unsigned int>(text + kMaxPadding - start));
    return;
  }
  char digits[20];
  int count = 0;
  do {
    digits[count++] = static_cast<char>(magnitude % 10);
    magnitude /= 10;
  } while (magnitude != 0);
  const uint32_t zero = style.form == NumeralForm::kFullWidth ? kFullWidthZero : style.zero;
  for (int pad = count; pad < width; ++pad) out += zero;
  while (count > 0) out += zero + static_cast<uint32_t>(digits[--count]);
}

void appendNumber(zuString& out, int64_t value, int minWidth, NumeralStyle style) {
  appendNumberTo(out, value, minWidth, style);
}

void appendOtherNumber(TextOut& out, int64_t value, int minWidth, NumeralStyle style) {
  appendNumberTo(out, value, minWidth, style);
}

void TextOut::appendCodePoint(uint32_t codePoint) {
  char bytes[8];
  append(bytes, static_cast<unsigned int>(zuUCStoUTF8(bytes, codePoint)));
}

void TextOut::spill(const char* bytes, unsigned int length) {
  if (length_ <= kCapacity) {
    spilled_ = zuString::FromBytes(buffer_, length_);
    length_ = kCapacity + 1;
  }
  const unsigned int held = spilled_.Length();
  char* chars = spilled_.ReAlloc(held + length, 1);
  std::memcpy(chars + held, bytes, length);
  spilled_.SetLength(held + length);
}

zuString TextOut::text() const {
  if (length_ > kCapacity) return spilled_;
  if (length_ == 0) return zuString();
  return zuString::FromBytes(buffer_, length_);
}

bool isNativeNumeralAt(const zuString& text, unsigned int pos) {
  return nativeValue(text.UniChar(pos)) >= 0;
}

int readNumber(const zuString& text, unsigned int pos, int minDigits, int maxDigits, int& value) {
  if (maxDigits > kMaxDigits) maxDigits = kMaxDigits;
  if (maxDigits < 1 || minDigits > maxDigits) return -1;
  if (pos >= text.Length()) return -1;
  if (isNativeNumeralAt(text, pos)) return readNative(text, pos, maxDigits, value);
  int result = 0;
  int count = 0;
  unsigned int next = pos;
  while (count < maxDigits) {
    unsigned int probe = next;
    const int digit = decimalValue(text.UniChar(probe));
    if (digit < 0) break;
    result = result * 10 + digit;
    ++count;
    next = probe;
  }
  if (count < minDigits || count == 0) return -1;
  value = result;
  return static_cast<int>(next);
}

uint32_t fullWidthToAscii(uint32_t codePoint) {
  return codePoint >= 0xFF01 && codePoint <= 0xFF5E ? codePoint - 0xFEE0 : codePoint;
}

uint32_t asciiToFullWidth(uint32_t codePoint) {
  return codePoint >= 0x21 && codePoint <= 0x7E ? codePoint + 0xFEE0 : codePoint;
}

int matchName(const zuString& text, unsigned int pos, const zuString* names, int count,
              int& index) {
  int bestEnd = -1;
  for (int candidate = 0; candidate < count; ++candidate) {
    const zuString& name = names[candidate];
    if (name.IsEmpty()) continue;
    unsigned int namePos = 0;
    unsigned int textPos = pos;
    bool matched = true;
    while (namePos < name.Length()) {
      if (textPos >= text.Length()) {
        matched = false;
        break;
      }
      const UChar32 wanted = static_cast<UChar32>(name.UniChar(namePos));
      const UChar32 found = static_cast<UChar32>(text.UniChar(textPos));
      if (wanted != found &&
          u_foldCase(wanted, U_FOLD_CASE_DEFAULT) != u_foldCase(found, U_FOLD_CASE_DEFAULT)) {
        matched = false;
        break;
      }
    }
    if (matched && static_cast<int>(textPos) > bestEnd) {
      bestEnd = static_cast<int>(textPos);
      index = candidate;
    }
  }
  return bestEnd;
}

PictureReader::PictureReader(const zuString& picture, const char* symbols)
    : picture_(picture), text_(picture), length_(picture.Length()) {
  for (const char* symbol = symbols; *symbol != '\0'; ++symbol) {
    const auto letter = static_cast<unsigned char>(*symbol);
    if (letter > 0 && letter < 0x80) symbolMask_[letter / 64] |= uint64_t{1} << (letter % 64);
  }
}

bool PictureReader::isSymbol(uint32_t letter) const {
  if (letter == 0 || letter >= 0x80) return false;
  return (symbolMask_[letter / 64] >> (letter % 64) & 1) != 0;
}

uint32_t PictureReader::codePointAt(unsigned int& pos) const {
  // ASCII without decoding; anything else (a NUL byte included) as
  // zuString decodes it.
  if (pos < length_) {
    const auto byte = static_cast<unsigned char>(text_[pos]);
    if (byte != 0 && byte < 0x80) {
      ++pos;
      return byte;
    }
  }
  return picture_.UniChar(pos);
}

bool PictureReader::next(PictureItem& item) {
  while (pos_ < length_) {
    unsigned int after = pos_;
    const uint32_t codePoint = codePointAt(after);
    if (codePoint == '\'') {
      unsigned int peek = after;
      const bool doubled = codePointAt(peek) == '\'';
      if (doubled) {
        pos_ = peek;
        item = {inQuote_ ? PictureItem::kQuoted : PictureItem::kLiteral, '\'', 1, false};
        return true;
      }
      inQuote_ = !inQuote_;
      pos_ = after;
      continue;
    }
    if (inQuote_) {
      pos_ = after;
      item = {PictureItem::kQuoted, codePoint, 1, false};
      return true;
    }
    const uint32_t letter = fullWidthToAscii(codePoint);
    if (!isSymbol(letter)) {
      pos_ = after;
      item = {PictureItem::kLiteral, codePoint, 1, false};
      return true;
    }
    int count = 1;
    for (;;) {
      unsigned int peek = after;
      if (after >= length_ || codePointAt(peek) != codePoint) break;
      after = peek;
      if (count < INT32_MAX) ++count;
    }
    pos_ = after;
    item = {PictureItem::kSymbol, letter, count, letter != codePoint};
    return true;
  }
  return false;
}

bool isPictureSpace(uint32_t codePoint) {
  if (codePoint < 0x80) return codePoint == ' ' || (codePoint >= '\t' && codePoint <= '\r');
  return u_isUWhiteSpace(static_cast<UChar32>(codePoint));
}

}  // namespace zu::internal
