#include "zu/picture/internal/RnDecimal.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "zu/core/internal/zuThreadMemo.h"

namespace zu::internal {

namespace {

// The last text this thread read, with what reading it gave.
struct LastRead {
  static constexpr size_t kLongest = 48;
  char text[kLongest];
  size_t length = 0;
  bool known = false;
  bool valid = false;
  RnDecimal decimal;
};

// Exponents are saturated here while read; far beyond any double.
constexpr long long kExponentLimit = 1000000000;
// A first digit at this power of ten or above overflows a double ...
constexpr long long kOverflowPoint = 310;
// ... and below this one the value is zero.
constexpr long long kUnderflowPoint = -330;

bool isAsciiSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

bool RnDecimal::read(const char* text, size_t length) {
  size_t i = 0;
  while (i < length && isAsciiSpace(text[i])) ++i;
  bool negative = false;
  if (i < length && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';

  char digits[kSignificant + 1];
  int count = 0;
  long long point = 0;
  long long fractionDigits = 0;
  bool seenPoint = false;
  bool anyDigit = false;
  char firstDropped = '0';
  bool dropped = false;
  for (; i < length; ++i) {
    const char c = text[i];
    if (c == '.') {
      if (seenPoint) return false;
      seenPoint = true;
      continue;
    }
    if (!isDigit(c)) break;
    anyDigit = true;
    if (seenPoint) ++fractionDigits;
    if (count == 0 && c == '0') {
      if (seenPoint) --point;
      continue;
    }
    if (!seenPoint) ++point;
    if (count < kSignificant) {
      digits[count++] = c;
    } else if (!dropped) {
      dropped = true;
      firstDropped = c;
    }
  }
  if (!anyDigit) return false;

  long long exponent = 0;
  if (i < length && (text[i] == 'e' || text[i] == 'E')) {
    ++i;
    bool negativeExponent = false;
    if (i < length && (text[i] == '+' || text[i] == '-')) negativeExponent = text[i++] == '-';
    if (i >= length || !isDigit(text[i])) return false;
    for (; i < length && isDigit(text[i]); ++i) {
      if (exponent < kExponentLimit) exponent = exponent * 10 + (text[i] - '0');
    }
    if (negativeExponent) exponent = -exponent;
  }
  while (i < length && isAsciiSpace(text[i])) ++i;
  if (i != length) return false;

  if (count == 0) {
    point = 0;
  } else {
    point += exponent;
    if (point >= kOverflowPoint) return false;
  }
  std::memcpy(digits_, digits, static_cast<size_t>(count));
  count_ = count;
  point_ = static_cast<int>(point < kUnderflowPoint ? kUnderflowPoint : point);
  negative_ = negative;
  const long long fraction = fractionDigits - exponent;
  textFraction_ = (seenPoint || fraction > 0)
                      ? static_cast<int>(fraction < 0 ? 0 : (fraction > 1000 ? 1000 : fraction))
                      : -1;
  if (point < kUnderflowPoint) {
    count_ = 0;
  } else if (dropped && firstDropped >= '5') {
    digits_[count_++] = firstDropped;
    roundFraction(count_ - 1 - point_);
  }
  stripTrailingZeros();
  // Below 10^308 a value is a finite double; only longer ones are tried.
  if (count_ != 0 && point_ > 308 && std::isinf(toDouble())) {
    count_ = 0;
    return false;
  }
  return true;
}

bool RnDecimal::fromDouble(double value) {
  if (!std::isfinite(value)) return false;
  char buffer[64];
  const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return read(buffer, static_cast<size_t>(result.ptr - buffer));
}

double RnDecimal::toDouble() const {
  if (count_ == 0) return negative_ ? -0.0 : 0.0;
  char buffer[kSignificant + 24];
  char* out = buffer;
  if (negative_) *out++ = '-';
  *out++ = '0';
  *out++ = '.';
  std::memcpy(out, digits_, static_cast<size_t>(count_));
  out += count_;
  *out++ = 'e';
  out = std::to_chars(out, buffer + sizeof buffer, point_).ptr;
  double value = 0;
  std::from_chars(buffer, out, value);
  return value;
}

void RnDecimal::shift(int power) {
  if (count_ != 0) point_ += power;
}

void RnDecimal::setPoint(int point) {
  if (count_ != 0) point_ = point;
}

void RnDecimal::roundFraction(int fraction) {
  const long long keep = static_cast<long long>(point_) + fraction;
  if (count_ == 0 || keep >= count_) return;
  if (keep < 0) {
    count_ = 0;
    point_ = 0;
    return;
  }
  const bool up = digits_[keep] >= '5';
  count_ = static_cast<int>(keep);
  if (up) {
    int j = count_ - 1;
    while (j >= 0 && digits_[j] == '9') digits_[j--] = '0';
    if (j >= 0) {
      ++digits_[j];
    } else {
      digits_[0] = '1';
      count_ = 1;
      ++point_;
    }
  }
  stripTrailingZeros();
}

void RnDecimal::stripTrailingZeros() {
  while (count_ > 0 && digits_[count_ - 1] == '0') --count_;
  if (count_ == 0) point_ = 0;
}

size_t RnDecimal::writeFixed(char* out, size_t capacity, int width, int precision,
                             bool withPoint) const {
  const int integerDigits = point_ > 0 ? point_ : 0;
  const size_t length = static_cast<size_t>(integerDigits > 0 ? integerDigits : 1) +
                        (withPoint ? 1 + static_cast<size_t>(precision) : 0);
  const size_t padding = static_cast<size_t>(width) > length ? width - length : 0;
  if (padding + length > capacity) return 0;
  char* p = out;
  std::memset(p, '0', padding);
  p += padding;
  if (integerDigits == 0) *p++ = '0';
  for (int k = 0; k < integerDigits; ++k) *p++ = k < count_ ? digits_[k] : '0';
  if (withPoint) {
    *p++ = '.';
    for (int k = 0; k < precision; ++k) {
      const long long index = static_cast<long long>(point_) + k;
      *p++ = index >= 0 && index < count_ ? digits_[index] : '0';
    }
  }
  return static_cast<size_t>(p - out);
}

size_t RnDecimal::writePlain(char* out, size_t capacity) const {
  const int integerDigits = point_ > 0 ? point_ : 0;
  const int fraction = count_ > point_ ? count_ - point_ : 0;
  const size_t length = 1 + static_cast<size_t>(integerDigits > 0 ? integerDigits : 1) +
                        (fraction > 0 ? 1 + static_cast<size_t>(fraction) : 0);
  if (length > capacity) return 0;
  char* p = out;
  if (negative_ && count_ != 0) *p++ = '-';
  if (integerDigits == 0) *p++ = '0';
  for (int k = 0; k < integerDigits; ++k) *p++ = k < count_ ? digits_[k] : '0';
  if (fraction > 0) {
    *p++ = '.';
    for (int k = 0; k < fraction; ++k) {
      const long long index = static_cast<long long>(point_) + k;
      *p++ = index >= 0 ? digits_[index] : '0';
    }
  }
  return static_cast<size_t>(p - out);
}

bool readRemembered(const char* text, size_t length, RnDecimal& decimal) {
  if (length > LastRead::kLongest) return decimal.read(text, length);
  LastRead& last = zuThreadMemo<LastRead>::get();
  if (!last.known || last.length != length || std::memcmp(last.text, text, length) != 0) {
    last.known = false;
    RnDecimal fresh;
    last.valid = fresh.read(text, length);
    last.decimal = fresh;
    std::memcpy(last.text, text, length);
    last.length = length;
    last.known = true;
  }
  if (last.valid) decimal = last.decimal;
  return last.valid;
}

}  // namespace zu::internal
