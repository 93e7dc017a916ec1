#include "zu/picture/RnNum.h"

#include <string>

#include "zu/core/zuException.h"
#include "zu/locale/RnData.h"
#include "zu/picture/internal/RnDecimal.h"
#include "zu/picture/internal/RnNumPicture.h"
#include "zu/picture/internal/RnNumText.h"

using namespace zu::internal;

namespace {

constexpr unsigned short kInvalidArgument = 16479;
// Widths from here on cannot be formatted.
constexpr int kMaxWidth = 326;

}  // namespace

RnNum::RnNum(const zuString& value, const zuString& locale) {
  init(locale);
  setValue(value);
}

RnNum::RnNum(const zuString& value, const zuString& picture, const zuString& locale) {
  init(locale);
  parse(value, picture);
}

void RnNum::init(const zuString& locale) {
  locale_ = locale.IsEmpty() ? RnLocale(RnLocale::getLocale()) : RnLocale(locale);
  if (!locale_.isValid()) locale_ = RnLocale(RnLocale::getDEFAULT_LOCALE());
  setNumericSymbols(locale_.getName());
}

void RnNum::setValue(const zuString& text) {
  RnDecimal decimal;
  valid_ = !text.IsNull() && decimal.read(text, text.Length());
  text_ = text;
  value_ = valid_ ? decimal.toDouble() : 0;
}

void RnNum::setNumericSymbols(const char* locale) {
  const RnData data(locale);
  radix_ = data.getRadixSymbol();
  positive_ = data.getPositiveSymbol();
  negative_ = data.getNegativeSymbol();
  grouping_ = data.getGroupingSymbol();
  percent_ = data.getPercentSymbol();
  currencySymbol_ = data.getCurrencySymbol();
  currencyName_ = data.getCurrencyName();
  const zuString zero = data.getZeroSymbol();
  size_t bytes = 0;
  zeroDigit_ = zero.IsEmpty() ? '0' : decodeUtf8(zero, zero.Length(), 0, bytes);
}

void RnNum::xlate(const zuString& picture) {
  analysis_ = Analysis();
  NumPictureReader reader(picture, picture.Length(), false);
  NumPictureItem item;
  bool allZ = true, all8 = true, afterE = false;
  while (reader.next(item)) {
    if (item.kind == NumPictureItem::kSymbol) subXlate(item.symbol, item.count, allZ, all8, afterE);
  }
  analysis_.dropFractionZeros = analysis_.trailing > 0 && allZ;
  analysis_.shortFraction = analysis_.trailing > 0 && all8;
}

void RnNum::subXlate(char symbol, unsigned count, bool& allZ, bool& all8, bool& afterE) {
  Analysis& a = analysis_;
  switch (symbol) {
    case '9':
    case '8':
    case 'Z':
    case 'z':
      if (afterE) ZuExThrow(kInvalidArgument);
      if (a.hasRadix) {
        a.trailing += count;
        allZ = allZ && symbol == 'z';
        all8 = all8 && symbol == '8';
      } else {
        a.leading += count;
      }
      if (symbol != 'z') a.zeroBlanking = false;
      if (symbol == '9') a.nines += count;
      break;
    case '.':
    case 'V':
    case 'v':
      if (a.hasRadix || count > 1 || afterE) ZuExThrow(kInvalidArgument);
      a.hasRadix = true;
      break;
    case 'E':
      if (a.scientific || count > 1) ZuExThrow(kInvalidArgument);
      a.scientific = afterE = true;
      break;
    case '%':
      a.percent = true;
      break;
    case 'S':
    case 's':
    case '(':
    case ')':
    case 'C':
    case 'c':
    case 'D':
    case 'd':
      a.hasSign = true;
      break;
    default:
      break;
  }
}

const zuLiteral& RnNum::getNUMERIC_PICTURE_SYMBOLS() {
  static const zuLiteral kSymbols("(%$,.)89BCDERSVZbcdrsvzt");
  return kSymbols;
}

void RnNum::getSymbolCount(const zuString& picture, unsigned& leading, unsigned& trailing) {
  leading = trailing = 0;
  try {
    RnNum zero(zuLiteral("0.0"), zuLiteral("en_US"));
    zero.xlate(picture);
    leading = zero.analysis_.leading;
    trailing = zero.analysis_.trailing;
  } catch (...) {
    leading = trailing = 0;
  }
}

bool RnNum::IsNonIgnorable(unsigned int symbol) const {
  const char ascii = numericSymbol(symbol);
  if (ascii == 0) return false;
  const char* set = analysis_.trailing > 0 ? "(%$.)BCDERSZ89" : "(%$.)BCDERS";
  for (; *set != '\0'; ++set) {
    if (*set == ascii) return true;
  }
  return false;
}

bool RnNum::DblToStr(double value, int width, int precision, bool keepPoint, zuString& out) {
  out.Empty();
  RnDecimal decimal;
  if (width >= kMaxWidth || !decimal.fromDouble(value)) return false;
  precision = precision < 0 ? 0 : (precision > RnDecimal::kSignificant ? RnDecimal::kSignificant
                                                                        : precision);
  decimal.roundFraction(precision);
  char buffer[2 * kMaxWidth + 64];
  size_t length = 0;
  const bool negative = decimal.isNegative() && !decimal.isZero();
  if (negative) buffer[length++] = '-';
  const size_t written =
      decimal.writeFixed(buffer + length, sizeof buffer - length, width - static_cast<int>(length),
                         precision, keepPoint || precision > 0);
  if (written == 0) return false;
  out = stringOfBytes(buffer, length + written);
  return true;
}

bool RnNum::StrToDbl(const zuString& text, double& value) {
  RnDecimal decimal;
  if (text.IsNull() || !decimal.read(text, text.Length())) return false;
  value = decimal.toDouble();
  return true;
}

void RnNum::Reverse(zuString& text) {
  std::string reversed;
  reverseUtf8(text, text.Length(), reversed);
  text = stringOfBytes(reversed.data(), reversed.size());
}
