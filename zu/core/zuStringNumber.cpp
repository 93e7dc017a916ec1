// Reading and writing numbers as zuString text.
#include "zu/core/zuString.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zu/core/internal/zuDecimalPoint.h"

namespace {

int numberBase(int base) {
  return base == 8 || base == 16 ? base : 10;
}

}  // namespace

int zuString::Number(double* value) const {
  *value = 0;
  if (Length() == 0) return 0;
  char* end = nullptr;
  const char point = zu::internal::runtimeDecimalPoint();
  if (point == '.') {
    *value = std::strtod(chars_, &end);
    return end == chars_ + Length();
  }
  // strtod reads the C library's decimal point, but the text has "."; the C
  // library's own point is no point here and ends the number.
  std::string copy(chars_, Length());
  for (char& byte : copy) {
    if (byte == point) {
      byte = ' ';
    } else if (byte == '.') {
      byte = point;
    }
  }
  *value = std::strtod(copy.c_str(), &end);
  return end == copy.c_str() + copy.size();
}

int zuString::Number(int* value, int base) const {
  long wide = 0;
  const int whole = Number(&wide, base);
  *value = static_cast<int>(wide);
  return whole;
}

int zuString::Number(unsigned int* value, int base) const {
  unsigned long wide = 0;
  const int whole = Number(&wide, base);
  *value = static_cast<unsigned int>(wide);
  return whole;
}

int zuString::Number(long* value, int base) const {
  *value = 0;
  if (Length() == 0) return 0;
  char* end = nullptr;
  *value = std::strtol(chars_, &end, numberBase(base));
  return end == chars_ + Length();
}

int zuString::Number(unsigned long* value, int base) const {
  *value = 0;
  if (Length() == 0) return 0;
  char* end = nullptr;
  *value = std::strtoul(chars_, &end, numberBase(base));
  return end == chars_ + Length();
}

void zuString::AssignFormatted(const char* format, ...) {
  char text[64];
  va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  CopyBytes(text, static_cast<unsigned int>(length), 0);
}

void zuString::Number(int value) {
  AssignFormatted("%d", value);
}

void zuString::Number(long value) {
  AssignFormatted("%ld", value);
}

void zuString::Number(unsigned int value) {
  AssignFormatted("%u", value);
}

void zuString::Number(unsigned long value) {
  AssignFormatted("%lu", value);
}

void zuString::Number(unsigned long long value) {
  AssignFormatted("%llu", value);
}

int zuString::Number(double value, unsigned int decimals, int trimZeros) {
  constexpr unsigned int kMaxDecimals = 15;
  if (decimals > kMaxDecimals) decimals = kMaxDecimals;
  // The largest double prints with 309 integer digits.
  char printed[400];
  std::snprintf(printed, sizeof printed, "%#.*f", static_cast<int>(decimals), value);
  const char* point = std::strchr(printed, zu::internal::runtimeDecimalPoint());
  const unsigned int integerLength =
      static_cast<unsigned int>(point != nullptr ? point - printed : std::strlen(printed));
  const char* fraction = point != nullptr ? point + 1 : "0";
  unsigned int fractionLength = static_cast<unsigned int>(std::strlen(fraction));

  char text[sizeof printed + 2];
  std::memcpy(text, printed, integerLength);
  unsigned int length = integerLength;
  if (trimZeros) {
    while (fractionLength > 0 && fraction[fractionLength - 1] == '0') --fractionLength;
  }
  const bool dropPoint = trimZeros ? fractionLength == 0 : decimals == 0 && fractionLength == 0;
  if (!dropPoint) text[length++] = '.';
  std::memcpy(text + length, fraction, fractionLength);
  length += fractionLength;
  CopyBytes(text, length, 0);
  return 1;
}
