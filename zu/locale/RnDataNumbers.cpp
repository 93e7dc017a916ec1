// Numeric pictures built from the locale's patterns and option bits.
#include <algorithm>
#include <string>
#include <string_view>

#include "zu/locale/RnData.h"
#include "zu/locale/internal/RnDataTable.h"

using namespace zu::internal;

namespace {

constexpr std::string_view kDigitSymbols = "9z8Z";
constexpr int kMaxPrecision = 15;
constexpr int kMaxWidth = 30;

bool isDigitSymbol(char c) {
  return kDigitSymbols.find(c) != std::string_view::npos;
}
bool isBodySymbol(char c) {
  return isDigitSymbol(c) || c == ',' || c == '.';
}

// The digit body of one alternative of a locale pattern.
struct DigitBody {
  size_t begin = std::string_view::npos;
  size_t end = std::string_view::npos;
  int integerDigits = 0;
  int primaryGroup = 0;    // digits after the last ","; 0 without grouping
  int secondaryGroup = 0;  // digits between the last two ","
  std::string fraction;    // the fraction digit symbols
};

DigitBody findBody(std::string_view alternative) {
  DigitBody body;
  bool quoted = false;
  for (size_t i = 0; i < alternative.size(); ++i) {
    if (alternative[i] == '\'') quoted = !quoted;
    if (!quoted && isDigitSymbol(alternative[i])) {
      body.begin = i;
      break;
    }
  }
  if (body.begin == std::string_view::npos) return body;
  body.end = body.begin;
  while (body.end < alternative.size() && isBodySymbol(alternative[body.end])) ++body.end;
  const std::string_view digits = alternative.substr(body.begin, body.end - body.begin);
  const size_t radix = std::min(digits.find('.'), digits.size());
  int sinceComma = 0;
  bool grouped = false;
  for (size_t i = 0; i < radix; ++i) {
    if (digits[i] == ',') {
      if (grouped) body.secondaryGroup = sinceComma;
      grouped = true;
      sinceComma = 0;
    } else {
      ++body.integerDigits;
      ++sinceComma;
    }
  }
  if (grouped) body.primaryGroup = sinceComma;
  if (body.secondaryGroup == 0) body.secondaryGroup = body.primaryGroup;
  for (size_t i = radix; i < digits.size(); ++i) {
    if (isDigitSymbol(digits[i])) body.fraction += digits[i];
  }
  return body;
}

std::string integerPart(int width, int primary, int secondary) {
  std::string reversed;
  for (int i = 0; i < width; ++i) {
    const bool groupStart =
        primary > 0 && i > 0 && (i == primary || (i > primary && (i - primary) % secondary == 0));
    if (groupStart) reversed += ',';
    reversed += i == 0 ? '9' : 'z';
  }
  return std::string(reversed.rbegin(), reversed.rend());
}

// The packed count of an option field, or -1 when the field is unset.
int packedCount(int options, int shift) {
  return ((options >> shift) & 0xFF) - 1;
}

}  // namespace

zuString RnData::getNumberFormat(int kind, int options) const {
  int category = 0;
  switch (kind) {
    case INTEGRAL_FMT:
    case DECIMAL_FMT:
      category = NUMERIC;
      break;
    case CURRENCY_FMT:
      category = CURRENCY;
      break;
    case PERCENT_FMT:
      category = PERCENT;
      break;
    default:
      return zuString::EmptyString();
  }
  const zuString pattern = getNumericFormat(category);
  const std::string_view whole(pattern, pattern.Length());
  const int precisionOption = packedCount(options, 4);
  const int widthOption = packedCount(options, 12);
  const char fractionSymbol = (options & WITH_EIGHTS) != 0 ? '8' : 'z';

  std::string out;
  size_t start = 0;
  bool quoted = false;
  for (size_t pos = 0; pos <= whole.size(); ++pos) {
    if (pos < whole.size() && whole[pos] == '\'') quoted = !quoted;
    if (pos < whole.size() && (quoted || whole[pos] != '|')) continue;
    const std::string_view alternative = whole.substr(start, pos - start);
    const DigitBody body = findBody(alternative);
    if (body.begin == std::string_view::npos) {
      out.append(alternative);
    } else {
      const int width =
          std::clamp(widthOption >= 0 ? widthOption : body.integerDigits, 1, kMaxWidth);
      const int defaultPrecision =
          kind == INTEGRAL_FMT ? 0 : static_cast<int>(body.fraction.size());
      const int precision =
          std::min(precisionOption >= 0 ? precisionOption : defaultPrecision, kMaxPrecision);
      const bool grouped = (options & WITH_GROUPINGS) != 0;
      out.append(alternative.substr(0, body.begin));
      out += integerPart(width, grouped ? body.primaryGroup : 0, body.secondaryGroup);
      if (precision > 0 || (options & WITH_RADIX) != 0) out += '.';
      for (int i = 0; i < precision; ++i) {
        const bool keepNine = (options & KEEP_NINES) != 0 &&
                              i < static_cast<int>(body.fraction.size()) && body.fraction[i] == '9';
        out += keepNine ? '9' : fractionSymbol;
      }
      out.append(alternative.substr(body.end));
    }
    if (pos < whole.size()) out += '|';
    start = pos + 1;
  }
  return zuString(out.data(), static_cast<unsigned int>(out.size()));
}

int RnData::getNumberPrecision(const zuString& picture) const {
  std::string_view text(picture, picture.Length());
  // A "num{...}" or "num(locale){...}" wrapper: count inside its body.
  if (text.substr(0, 3) == "num") {
    const size_t open = text.find('{');
    if (open != std::string_view::npos) text = text.substr(open + 1);
  }
  int digits = 0;
  bool quoted = false;
  bool afterRadix = false;
  for (char c : text) {
    if (c == '\'') quoted = !quoted;
    if (quoted || c == '\'') continue;
    if (c == '|' || c == '}') break;
    if (c == '.' || c == 'V' || c == 'v') {
      afterRadix = true;
    } else if (afterRadix && isDigitSymbol(c)) {
      ++digits;
    }
  }
  return digits;
}
