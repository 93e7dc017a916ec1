// Formatting a value through a numeric picture.
#include <cstring>
#include <new>

#include "zu/core/zuException.h"
#include "zu/picture/RnNum.h"
#include "zu/picture/internal/RnDecimal.h"
#include "zu/picture/internal/RnNumPicture.h"

using namespace zu::internal;

namespace {

constexpr size_t kNoRadix = static_cast<size_t>(-1);

// The texts of the ASCII digits, shared by every call that writes them.
constexpr char kAsciiDigitText[10][4] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
constexpr unsigned char kAsciiDigitLength[10] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};

}  // namespace

struct RnNum::FormatState {
  // The digit string: the rounded magnitude in fixed notation, "." as point.
  const char* digits = nullptr;
  size_t digitCount = 0;
  size_t pos = 0;
  // One past the last non-zero digit of the digit string (0: none).
  size_t nonZeroEnd = 0;
  int exponent = 0;
  bool negative = false;
  bool zeroBlank = false;
  bool signWritten = false;
  bool sawNonZero = false;
  bool digitWritten = false;
  bool radixPassed = false;
  size_t radixAt = kNoRadix;
  // The texts of the digits 0-9: the ASCII ones, or the locale's written
  // into ownText.
  const char (*digitText)[4] = kAsciiDigitText;
  const unsigned char* digitLength = kAsciiDigitLength;
  char ownText[10][4];
  unsigned char ownLength[10];
  TextSink out;

  void put(const zuString& text) { out.put(text, text.Length()); }
  void putDigit(int digit) { out.put(digitText[digit], digitLength[digit]); }
};

zuString RnNum::format(const zuString& picture, unsigned* radixPos, int flags) {
  try {
    return formatPicture(picture, radixPos, flags);
  } catch (const zuExMemory&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw zuExMemory();  // a long result grows in a standard string
  }
}

zuString RnNum::formatPicture(const zuString& picture, unsigned* radixPos, int flags) {
  if (!valid_) return zuString("");
  const CompiledPicture* compiled = xlate(picture);
  if (compiled == nullptr) return zuString("");
  const Analysis& a = analysis_;

  RnDecimal value;
  readRemembered(text_, text_.Length(), value);
  const int leading = static_cast<int>(a.leading);
  int precision =
      a.trailing < RnDecimal::kSignificant ? static_cast<int>(a.trailing) : RnDecimal::kSignificant;
  bool withPoint = a.hasRadix;
  FormatState state;
  if (a.scientific) {
    // The mantissa fills the integer digits of the picture.
    if (!value.isZero()) {
      state.exponent = value.point() - leading;
      value.setPoint(leading);
      value.roundFraction(precision);
      if (value.point() > leading) {
        state.exponent += value.point() - leading;
        value.setPoint(leading);
      }
    }
  } else {
    if (a.percent) value.shift(2);
    if (a.shortFraction) {
      int own = value.textFraction();
      if (own >= 0 && a.percent) own = own > 2 ? own - 2 : 0;
      if (own <= 0) {
        precision = 0;
        withPoint = false;
      } else if (own <= precision) {
        precision = own;
      }
    }
    value.roundFraction(precision);
  }

  const int width = leading + (withPoint ? 1 + precision : 0);
  if (width >= kMaxWidth) return zuString("");
  char digits[3 * kMaxWidth];
  size_t count = value.writeFixed(digits, sizeof digits, width, precision, withPoint);
  if (count == 0) return zuString("");
  size_t start = 0;
  if (leading == 0 && value.belowOne() && digits[0] == '0') start = 1;
  state.digits = digits + start;
  state.digitCount = count - start;
  for (size_t i = 0; i < state.digitCount; ++i) {
    if (state.digits[i] > '0') state.nonZeroEnd = i + 1;
  }
  state.negative = value.isNegative() && !value.isZero();
  state.zeroBlank = a.zeroBlanking && value.isZero();
  const uint32_t zero = (flags & ASCII_DIGITS) != 0 ? '0' : zeroDigit_;
  if (zero != '0') {
    for (int d = 0; d < 10; ++d) {
      state.ownLength[d] = static_cast<unsigned char>(encodeUtf8(zero + d, state.ownText[d]));
    }
    state.digitText = state.ownText;
    state.digitLength = state.ownLength;
  }

  for (const NumPictureItem& item : compiled->items) {
    if (item.kind == NumPictureItem::kLiteral) {
      state.out.put(item.text, item.length);
    } else if (item.kind == NumPictureItem::kQuoted) {
      for (size_t i = 0; i < item.length; ++i) {
        state.out.put(item.text[i]);
        if (item.text[i] == '\'') ++i;
      }
    } else if (!state.zeroBlank && !subFormat(state, item.symbol, item.count)) {
      return zuString("");
    }
  }
  if (!state.zeroBlank && state.pos < state.digitCount) return zuString("");
  if (radixPos != nullptr) {
    const size_t end = state.radixAt == kNoRadix ? state.out.size() : state.radixAt;
    *radixPos = static_cast<unsigned>(countCodePoints(state.out.data(), end));
  }
  return zuString::FromBytes(state.out.data(), static_cast<unsigned int>(state.out.size()));
}

bool RnNum::subFormat(FormatState& state, char symbol, unsigned count) const {
  const Analysis& a = analysis_;
  // A negative value without a sign symbol shows its minus right before
  // its first digit or radix.
  auto implicitSign = [&] {
    if (state.negative && !a.hasSign && !state.signWritten) {
      state.put(negative_);
      state.signWritten = true;
    }
  };
  switch (symbol) {
    case '9':
    case '8':
    case 'Z':
    case 'z':
      for (unsigned i = 0; i < count && state.pos < state.digitCount; ++i) {
        const char c = state.digits[state.pos++];
        if (c < '0' || c > '9') return false;
        if (c != '0') state.sawNonZero = true;
        const bool leadingZero = c == '0' && !state.sawNonZero && !state.radixPassed;
        if (leadingZero && symbol == 'Z') {
          state.out.put(' ');
          continue;
        }
        if (symbol == 'z' &&
            (leadingZero || (state.radixPassed && c == '0' && state.nonZeroEnd < state.pos))) {
          continue;
        }
        implicitSign();
        state.putDigit(c - '0');
        state.digitWritten = true;
      }
      return true;
    case '.':
    case 'V':
    case 'v':
      state.radixPassed = true;
      state.radixAt = state.out.size();
      if (state.pos >= state.digitCount) return true;    // the radix was dropped
      if (state.digits[state.pos] != '.') return false;  // the value does not fit
      ++state.pos;
      if (symbol == 'v' && !a.scientific) return true;
      if (symbol == '.' && a.dropFractionZeros && state.nonZeroEnd <= state.pos) return true;
      implicitSign();
      state.put(radix_);
      return true;
    case ',':
      for (unsigned i = 0; state.digitWritten && i < count; ++i) state.put(grouping_);
      return true;
    case 'S':
    case 's':
    case '(':
    case ')':
    case 'C':
    case 'c':
    case 'D':
    case 'd':
      state.signWritten = true;
      for (unsigned i = 0; i < count; ++i) {
        if (symbol == 'S' || symbol == 's') {
          if (state.negative) {
            state.put(negative_);
          } else if (symbol == 'S') {
            state.out.put(' ');
          }
        } else if (symbol == '(' || symbol == ')') {
          state.out.put(state.negative ? symbol : ' ');
        } else if (state.negative) {
          state.out.put(symbol == 'C' || symbol == 'c' ? "CR" : "DB", 2);
        } else if (symbol == 'C' || symbol == 'D') {
          state.out.put("  ", 2);
        }
      }
      return true;
    case 'E': {
      state.out.put('E');
      state.out.put(state.exponent < 0 ? '-' : '+');
      char buffer[16];
      unsigned magnitude =
          static_cast<unsigned>(state.exponent < 0 ? -state.exponent : state.exponent);
      int length = 0;
      do {
        buffer[length++] = static_cast<char>(magnitude % 10);
        magnitude /= 10;
      } while (magnitude != 0);
      while (length > 0) state.putDigit(buffer[--length]);
      return true;
    }
    case '%':
      for (unsigned i = 0; i < count; ++i) state.put(percent_);
      return true;
    case '$':
      for (unsigned i = 0; i < count / 2; ++i) state.put(currencyName_);
      if (count % 2 != 0) state.put(currencySymbol_);
      return true;
    case 't':
      for (unsigned i = 0; i < count; ++i) state.out.put('\t');
      return true;
    default:
      return true;
  }
}
