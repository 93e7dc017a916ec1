#include "zu/picture/RnNum.h"

#include <array>
#include <cstring>
#include <new>
#include <string>

#include "zu/core/internal/zuThreadMemo.h"
#include "zu/core/zuException.h"
#include "zu/locale/RnData.h"
#include "zu/locale/internal/RnRunTimeStore.h"
#include "zu/picture/internal/RnDecimal.h"
#include "zu/picture/internal/RnNumPicture.h"

using namespace zu::internal;

// The locale and symbols that this thread's last RnNum resolved from a
// locale name, so that making one RnNum per value stays cheap. It is used
// only while the thread has neither run-time locale data nor registered
// locales, either of which could give the name other symbols; its texts
// are then literals of the built-in data.
struct RnNum::SymbolCache {
  char name[64] = {};
  RnLocale locale;
  zuString radix, positive, negative, grouping, percent, currencySymbol, currencyName;
  uint32_t zeroDigit = '0';

  void copyTo(RnNum& number) const {
    number.radix_ = radix;
    number.positive_ = positive;
    number.negative_ = negative;
    number.grouping_ = grouping;
    number.percent_ = percent;
    number.currencySymbol_ = currencySymbol;
    number.currencyName_ = currencyName;
    number.zeroDigit_ = zeroDigit;
  }
  void copyFrom(const RnNum& number) {
    radix = number.radix_;
    positive = number.positive_;
    negative = number.negative_;
    grouping = number.grouping_;
    percent = number.percent_;
    currencySymbol = number.currencySymbol_;
    currencyName = number.currencyName_;
    zeroDigit = number.zeroDigit_;
  }
};

RnNum::SymbolCache& RnNum::symbolCache() {
  return zuThreadMemo<SymbolCache>::get();
}

RnNum::RnNum(const zuString& value, const zuString& locale) {
  init(locale);
  setValue(value);
}

RnNum::RnNum(const zuString& value, const zuString& picture, const zuString& locale) {
  init(locale);
  parse(value, picture);
}

void RnNum::init(const zuString& locale) {
  SymbolCache& cache = symbolCache();
  const bool cacheable =
      !locale.IsEmpty() && locale.Length() < sizeof cache.name && !threadHasOwnLocales();
  if (cacheable && std::strcmp(cache.name, locale) == 0) {
    locale_ = cache.locale;
    cache.copyTo(*this);
    return;
  }
  locale_ = locale.IsEmpty() ? RnLocale(RnLocale::getLocale()) : RnLocale(locale);
  if (!locale_.isValid()) locale_ = RnLocale(RnLocale::getDEFAULT_LOCALE());
  setNumericSymbols(locale_.getName());
  if (cacheable) {
    std::memcpy(cache.name, locale, locale.Length() + 1);
    cache.locale = locale_;
    cache.copyFrom(*this);
  }
}

void RnNum::setValue(const zuString& text) {
  RnDecimal decimal;
  valid_ = !text.IsNull() && readRemembered(text, text.Length(), decimal);
  text_ = text;
  valueKnown_ = false;
}

double RnNum::getValue() const {
  if (!valueKnown_) {
    value_ = 0;
    RnDecimal decimal;
    if (valid_ && readRemembered(text_, text_.Length(), decimal)) value_ = decimal.toDouble();
    valueKnown_ = true;
  }
  return value_;
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

const RnNum::CompiledPicture* RnNum::xlate(const zuString& picture) {
  // The pictures this thread analysed last, so that formatting or parsing
  // many values through one picture reads the picture once.
  constexpr size_t kKept = 8;
  struct PictureMemo {
    std::array<CompiledPicture, kKept> entries;
    size_t nextToReplace = 0;
  };
  PictureMemo& memo = zuThreadMemo<PictureMemo>::get();
  const char* bytes = picture;
  const size_t length = picture.Length();
  CompiledPicture* found = nullptr;
  for (CompiledPicture& entry : memo.entries) {
    if (entry.used && entry.text.size() == length &&
        std::memcmp(entry.text.data(), bytes, length) == 0) {
      found = &entry;
      break;
    }
  }
  if (found == nullptr) {
    found = &memo.entries[memo.nextToReplace];
    memo.nextToReplace = (memo.nextToReplace + 1) % kKept;
    found->used = false;
    try {
      compile(bytes, length, *found);
    } catch (const std::bad_alloc&) {
      throw zuExMemory();
    }
    found->used = true;
  }
  analysis_ = found->analysis;
  return found->valid ? found : nullptr;
}

bool RnNum::compile(const char* picture, size_t length, CompiledPicture& compiled) {
  compiled.valid = false;
  compiled.analysis = Analysis();
  compiled.text.assign(picture, length);
  compiled.items.clear();
  compiled.reversed.clear();
  compiled.reversedItems.clear();
  compiled.reversedFaulty = false;
  compiled.fractionNines = 0;

  Analysis& a = compiled.analysis;
  NumPictureReader reader(compiled.text.data(), length, false);
  NumPictureItem item;
  bool allZ = true, all8 = true, afterE = false;
  while (reader.next(item)) {
    if (item.kind == NumPictureItem::kSymbol &&
        !subXlate(a, item.symbol, item.count, allZ, all8, afterE)) {
      return false;
    }
    compiled.items.push_back(item);
  }
  if (reader.faulty()) return false;
  a.dropFractionZeros = a.trailing > 0 && allZ;
  a.shortFraction = a.trailing > 0 && all8;

  reverseUtf8(compiled.text.data(), length, compiled.reversed);
  NumPictureReader backwards(compiled.reversed.data(), compiled.reversed.size(), true);
  while (backwards.next(item)) compiled.reversedItems.push_back(item);
  compiled.reversedFaulty = backwards.faulty();
  // The fraction comes first in the reversed picture, up to the radix.
  if (a.hasRadix) {
    for (const NumPictureItem& run : compiled.reversedItems) {
      if (run.kind != NumPictureItem::kSymbol) continue;
      if (run.symbol == '.' || run.symbol == 'V' || run.symbol == 'v') break;
      if (run.symbol == '9') compiled.fractionNines += run.count;
    }
  }
  compiled.valid = true;
  return true;
}

bool RnNum::subXlate(Analysis& a, char symbol, unsigned count, bool& allZ, bool& all8,
                     bool& afterE) {
  switch (symbol) {
    case '9':
    case '8':
    case 'Z':
    case 'z':
      if (afterE) return false;
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
      if (a.hasRadix || count > 1 || afterE) return false;
      a.hasRadix = true;
      break;
    case 'E':
      if (a.scientific || count > 1) return false;
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
  return true;
}

const zuLiteral& RnNum::getNUMERIC_PICTURE_SYMBOLS() {
  static const zuLiteral kSymbols("(%$,.)89BCDERSVZbcdrsvzt");
  return kSymbols;
}

void RnNum::getSymbolCount(const zuString& picture, unsigned& leading, unsigned& trailing) {
  leading = trailing = 0;
  RnNum zero(zuLiteral("0.0"), zuLiteral("en_US"));
  if (!zero.xlate(picture)) return;
  leading = zero.analysis_.leading;
  trailing = zero.analysis_.trailing;
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
  precision = precision < 0
                  ? 0
                  : (precision > RnDecimal::kSignificant ? RnDecimal::kSignificant : precision);
  decimal.roundFraction(precision);
  char buffer[2 * kMaxWidth + 64];
  size_t length = 0;
  const bool negative = decimal.isNegative() && !decimal.isZero();
  if (negative) buffer[length++] = '-';
  const size_t written =
      decimal.writeFixed(buffer + length, sizeof buffer - length, width - static_cast<int>(length),
                         precision, keepPoint || precision > 0);
  if (written == 0) return false;
  out = zuString::FromBytes(buffer, static_cast<unsigned int>(length + written));
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
  text = zuString::FromBytes(reversed.data(), static_cast<unsigned int>(reversed.size()));
}
