#include "zu/picture/zuNumeric.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/picture/internal/zuApplyFactor.h"

namespace {

constexpr int kMaxDigits = 15;
// After this many multiplications by 10 every non-zero double is infinite.
constexpr unsigned kMaxTruncateSteps = 1100;

// The C library's decimal point as it prints it now (it may be longer than
// one byte): what stands between "1" and "0" in 1.0 printed with "%.1f".
std::string runtimeDecimalPoint() {
  char printed[32];
  const int length = std::snprintf(printed, sizeof printed, "%.1f", 1.0);
  if (length < 3) return ".";
  return std::string(printed + 1, static_cast<size_t>(length) - 2);
}

// 10 to an integer power by square-and-multiply; a negative exponent gives
// the reciprocal.
double powerOfTen(int exponent) {
  double result = 1.0;
  double square = 10.0;
  for (unsigned remaining = static_cast<unsigned>(exponent < 0 ? -exponent : exponent);
       remaining != 0; remaining >>= 1) {
    if (remaining & 1u) result *= square;
    square *= square;
  }
  return exponent < 0 ? 1.0 / result : result;
}

int32_t toInt32(double value) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) return INT32_MIN;
  return static_cast<int32_t>(value);
}

}  // namespace

long ZuRound(double value) {
  return value >= 0 ? toInt32(value + 0.5) : toInt32(value - 0.5);
}

long ZuApplyFactor(long value, long multiplier, long divisor) {
  const int32_t d = static_cast<int32_t>(divisor);
  if (d == 0) ZuExThrow(zuMessageIds::kInvalidArgument);
  return static_cast<int32_t>(
      zu::internal::applyFactor(static_cast<int32_t>(value), static_cast<int32_t>(multiplier), d));
}

double ZuTruncate(double value, unsigned digits) {
  if (digits > kMaxTruncateSteps) digits = kMaxTruncateSteps;
  for (unsigned i = 0; i < digits; ++i) value *= 10;
  value = value >= 0 ? std::floor(value) : std::ceil(value);
  for (unsigned i = 0; i < digits; ++i) value /= 10;
  return value;
}

zuString ZuDoubleToString(double value, unsigned digits, int round) {
  if (round == 0) value = ZuTruncate(value, digits);
  zuString text;
  text.Number(value, digits, 1);
  return text;
}

char* zuNumeric::strToDot(char* text) {
  if (text == nullptr) ZuExThrow(zuMessageIds::kInvalidArgument);
  const std::string point = runtimeDecimalPoint();
  if (point == ".") return text;
  char* write = text;
  for (const char* read = text; *read != '\0';) {
    if (std::strncmp(read, point.c_str(), point.size()) == 0) {
      *write++ = '.';
      read += point.size();
    } else {
      *write++ = *read++;
    }
  }
  *write = '\0';
  return text;
}

unsigned zuNumeric::doubleToChars(double value, int digits, char* out) {
  if (!std::isfinite(value)) return 0;
  char* p = out;
  if (std::signbit(value) && value != 0) {
    *p++ = '-';
    value = -value;
  }
  if (digits > kMaxDigits) digits = kMaxDigits;
  double integer = std::trunc(value);
  const double fraction = value - integer;
  int64_t scale = 1;
  for (int i = 0; i < digits; ++i) scale *= 10;
  int64_t fractionDigits = static_cast<int64_t>(fraction * static_cast<double>(scale) + 0.5);
  if (fractionDigits == scale) {
    integer += 1;
    fractionDigits = 0;
  }
  // Wide enough for the 309 integer digits of the largest double.
  p = std::to_chars(p, p + 320, integer, std::chars_format::fixed, 0).ptr;
  if (fractionDigits != 0) {
    *p++ = '.';
    for (int64_t shifted = fractionDigits * 10; shifted < scale; shifted *= 10) *p++ = '0';
    p = std::to_chars(p, p + 20, fractionDigits).ptr;
  }
  return static_cast<unsigned>(p - out);
}

double zuNumeric::strToDbl(char* text, int commaIsPoint) {
  if (text == nullptr) return 0;
  // A copy in the C library's own spelling: "." (and "," when asked) become
  // its decimal point, and its point in the text ends the number when it is
  // not one of those.
  const std::string point = runtimeDecimalPoint();
  std::string copy;
  for (const char* read = text; *read != '\0'; ++read) {
    if (*read == '.' || (commaIsPoint != 0 && *read == ',')) {
      copy += point;
    } else if (std::strncmp(read, point.c_str(), point.size()) == 0) {
      break;
    } else {
      copy += *read;
    }
  }
  return std::strtod(copy.c_str(), nullptr);
}

double zuNumeric::stringToDouble(const zuString& text, int commaIsPoint) {
  if (text.IsNull()) return 0;
  std::string copy(text, text.Length());
  return strToDbl(copy.data(), commaIsPoint);
}

zuString zuNumeric::doubleToString(double value, int digits, int trim) {
  char text[kBufferSize];
  dblToStr(text, value, digits, trim);
  return zuString(text);
}

char* zuNumeric::dblToStr(double value, int digits, int trim) {
  char* text = static_cast<char*>(Malloc(kBufferSize));
  dblToStr(text, value, digits, trim);
  return text;
}

void zuNumeric::dblToStr(char* out, double value, int digits, int trim) {
  out[0] = '\0';
  if (!std::isfinite(value)) return;
  if (digits < 0) {
    std::snprintf(out, kBufferSize, "%.*f", 0, value);
    return;
  }
  const std::string point = runtimeDecimalPoint();
  const int shown = digits < kMaxDigits ? digits : kMaxDigits;

  // Decide a 5 in the first hidden place by the decimal digits of the
  // fraction, not by the binary value printf would round.
  const double fraction = value - std::trunc(value);
  const double hiddenDigit =
      std::trunc(fraction * powerOfTen(shown + 1)) - 10 * std::trunc(fraction * powerOfTen(shown));
  if (hiddenDigit == 5) value += powerOfTen(-(shown + 1));
  if (hiddenDigit == -5) value -= powerOfTen(-(shown + 1));

  std::snprintf(out, kBufferSize, shown < 1 ? "%.*f" : "%#.*f", shown, value);
  if (point != ".") {
    if (char* found = std::strstr(out, point.c_str())) {
      *found = '.';
      std::memmove(found + 1, found + point.size(), std::strlen(found + point.size()) + 1);
    }
  }
  if (trim == 0) return;
  char* dot = std::strchr(out, '.');
  if (dot == nullptr) return;
  char* end = out + std::strlen(out);
  while (end > dot + 1 && end[-1] == '0') --end;
  if (end == dot + 1) end = dot;
  *end = '\0';
}

void* zuNumeric::Malloc(unsigned size) {
  char* block = new (std::nothrow) char[size];
  if (block == nullptr) throw zuExMemory();
  return block;
}
