// Reading text back through a numeric picture. Text and picture are both
// reversed, so that matching runs from their right-hand ends: the fraction
// and the exponent are met first, and optional leading digits, grouping and
// signs are decided last, where the text tells how many there are.
#include <algorithm>
#include <cctype>
#include <new>
#include <string>

#include "zu/core/zuException.h"
#include "zu/picture/RnNum.h"
#include "zu/picture/internal/RnDecimal.h"
#include "zu/picture/internal/RnNumPicture.h"

using namespace zu::internal;

namespace {

// Below this power of ten a value's text may read back as zero.
constexpr int kLowestTextPoint = -300;

bool isSpaceLike(uint32_t codePoint) {
  return codePoint == ' ' || codePoint == 0xA0 || codePoint == 0x2007 || codePoint == 0x2009 ||
         codePoint == 0x202F;
}

std::string reversedOf(const zuString& text) {
  const char* bytes = text;
  const size_t length = text.Length();
  // The locale's texts are mostly one character: then as they stand.
  size_t first = 0;
  if (length == 0 || (decodeUtf8(bytes, length, 0, first), first == length)) {
    return std::string(bytes, length);
  }
  std::string reversed;
  reverseUtf8(bytes, length, reversed);
  return reversed;
}

}  // namespace

struct RnNum::ParseState {
  std::string text;  // reversed
  size_t pos = 0;
  std::string number;  // the number read so far, reversed
  bool anyDigit = false;
  bool negative = false;
  bool signTaken = false;
  bool parenthesis = false;
  bool digitsClosed = false;  // a minus before the leftmost digit was read
  bool radixPassed = false;
  bool fractionAbsent = false;  // second attempt: no fraction in the text
  bool percent = false;
  unsigned fractionDigits = 0;
  unsigned ninesLeft = 0;
  // "9" symbols of the fraction not matched yet (the fraction is read first).
  unsigned fractionNinesLeft = 0;
  // The locale's texts, reversed.
  std::string radix, grouping, negativeSign, positiveSign, percentSign, currencySymbol,
      currencyName;
  bool groupingIsSpace = false;
  uint32_t zero = '0';

  // Back to the start of the text for another attempt.
  void restart(bool withoutFraction) {
    pos = 0;
    number.clear();
    anyDigit = negative = signTaken = parenthesis = digitsClosed = radixPassed = percent = false;
    fractionDigits = 0;
    fractionAbsent = withoutFraction;
  }

  bool at(const std::string& what) const {
    return !what.empty() && text.compare(pos, what.size(), what) == 0;
  }
  bool take(const std::string& what) {
    if (!at(what)) return false;
    pos += what.size();
    return true;
  }
  bool take(const char* what) {
    const size_t length = std::char_traits<char>::length(what);
    if (text.compare(pos, length, what) != 0) return false;
    pos += length;
    return true;
  }
  bool takeNoCase(const std::string& what) {
    if (what.empty() || text.size() - pos < what.size()) return false;
    for (size_t i = 0; i < what.size(); ++i) {
      if (std::tolower(static_cast<unsigned char>(text[pos + i])) !=
          std::tolower(static_cast<unsigned char>(what[i]))) {
        return false;
      }
    }
    pos += what.size();
    return true;
  }
  // The digit at `at` in ASCII, the locale's digits or full width; -1 when none.
  int digitAt(size_t at, size_t& bytes) const {
    if (at >= text.size()) return -1;
    const uint32_t c = decodeUtf8(text.data(), text.size(), at, bytes);
    if (c >= '0' && c <= '9') return static_cast<int>(c - '0');
    if (c >= zero && c <= zero + 9) return static_cast<int>(c - zero);
    if (c >= 0xFF10 && c <= 0xFF19) return static_cast<int>(c - 0xFF10);
    return -1;
  }
  int digitAt(size_t& bytes) const { return digitAt(pos, bytes); }
  // Whether more than `count` digits follow from pos on; reads at most
  // count + 1 of them.
  bool moreDigitsThan(unsigned count) const {
    size_t at = pos;
    for (unsigned seen = 0; seen <= count; ++seen) {
      size_t bytes = 0;
      if (digitAt(at, bytes) < 0) return false;
      at += bytes;
    }
    return true;
  }
  bool takeNegative() { return take(negativeSign) || take("-"); }
  bool takeSign(bool isNegative) {
    if (signTaken) return false;
    signTaken = true;
    negative = isNegative;
    return true;
  }
};

bool RnNum::parse(const zuString& text, const zuString& picture) {
  try {
    return parsePicture(text, picture);
  } catch (const zuExMemory&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw zuExMemory();  // the working texts are standard strings
  }
}

bool RnNum::parsePicture(const zuString& text, const zuString& picture) {
  if (text.IsNull()) return false;
  const CompiledPicture* compiled = xlate(picture);
  if (compiled == nullptr) return false;
  ParseState state;
  state.text = reversedOf(text);
  state.radix = reversedOf(radix_);
  state.grouping = reversedOf(grouping_);
  state.negativeSign = reversedOf(negative_);
  state.positiveSign = reversedOf(positive_);
  state.percentSign = reversedOf(percent_);
  state.currencySymbol = reversedOf(currencySymbol_);
  state.currencyName = reversedOf(currencyName_);
  size_t bytes = 0;
  state.groupingIsSpace =
      !grouping_.IsEmpty() && isSpaceLike(decodeUtf8(grouping_, grouping_.Length(), 0, bytes));
  state.zero = zeroDigit_;

  if (scanReversed(state, *compiled)) return finishParse(state);
  // A short or dropped fraction may be missing with its radix.
  if (analysis_.shortFraction || analysis_.dropFractionZeros) {
    state.restart(true);
    if (scanReversed(state, *compiled)) return finishParse(state);
  }
  return false;
}

bool RnNum::scanReversed(ParseState& state, const CompiledPicture& picture) const {
  state.ninesLeft = analysis_.nines;
  state.fractionNinesLeft = picture.fractionNines;
  for (const NumPictureItem& item : picture.reversedItems) {
    if (item.kind == NumPictureItem::kLiteral) {
      if (state.text.compare(state.pos, item.length, item.text, item.length) != 0) return false;
      state.pos += item.length;
    } else if (item.kind == NumPictureItem::kQuoted) {
      for (size_t i = 0; i < item.length; ++i) {
        if (state.pos >= state.text.size() || state.text[state.pos] != item.text[i]) return false;
        ++state.pos;
        if (item.text[i] == '\'') ++i;
      }
    } else if (!subParse(state, item.symbol, item.count)) {
      return false;
    }
  }
  return !picture.reversedFaulty && state.pos == state.text.size();
}

bool RnNum::subParse(ParseState& state, char symbol, unsigned count) const {
  const Analysis& a = analysis_;
  auto implicitSign = [&] {
    if (!a.hasSign && !state.signTaken && state.ninesLeft == 0 && state.takeNegative()) {
      state.takeSign(true);
      state.digitsClosed = true;
    }
  };
  switch (symbol) {
    case '9':
    case '8':
    case 'Z':
    case 'z':
      for (unsigned i = 0; i < count; ++i) {
        const bool inFraction = a.hasRadix && !state.radixPassed;
        if (symbol == '9') {
          --state.ninesLeft;
          if (inFraction && state.fractionNinesLeft > 0) --state.fractionNinesLeft;
        }
        if (state.fractionAbsent && inFraction) continue;
        // In the fraction an optional digit leaves the "9"s further left
        // the digits they need: "zz9.99zz" reads "234.50".
        const bool spared =
            symbol != '9' && inFraction && !state.moreDigitsThan(state.fractionNinesLeft);
        size_t bytes = 0;
        const int digit = state.digitsClosed || spared ? -1 : state.digitAt(bytes);
        if (digit >= 0) {
          state.pos += bytes;
          state.number += static_cast<char>('0' + digit);
          state.anyDigit = true;
          if (!state.radixPassed) ++state.fractionDigits;
          implicitSign();
        } else if (symbol == '9') {
          return false;
        } else if (symbol == 'Z') {
          state.take(" ");
        }
      }
      return true;
    case '.':
    case 'V':
    case 'v':
      state.radixPassed = true;
      if (symbol == 'v' && !a.scientific) {
        state.number += '.';
        return true;
      }
      if (state.fractionAbsent) return true;
      if (state.take(state.radix)) {
        state.number += '.';
        implicitSign();
        return true;
      }
      return state.fractionDigits == 0;
    case ',':
      for (unsigned i = 0; i < count; ++i) {
        if (state.take(state.grouping)) continue;
        size_t bytes = 0;
        if (state.groupingIsSpace && state.pos < state.text.size() &&
            isSpaceLike(decodeUtf8(state.text.data(), state.text.size(), state.pos, bytes))) {
          state.pos += bytes;
        }
      }
      return true;
    case 'S':
    case 's':
      for (unsigned i = 0; i < count; ++i) {
        if (state.takeNegative()) {
          if (!state.takeSign(true)) return false;
        } else if (state.take(state.positiveSign) || state.take("+")) {
          if (!state.takeSign(false)) return false;
        } else if (symbol == 'S') {
          state.take(" ");
        }
      }
      return true;
    case '(':
    case ')': {
      const char parenthesis[2] = {symbol, '\0'};
      for (unsigned i = 0; i < count; ++i) {
        if (state.take(parenthesis)) {
          if (state.signTaken && !state.parenthesis) return false;
          state.signTaken = state.parenthesis = state.negative = true;
        } else {
          state.take(" ");
        }
      }
      return true;
    }
    case 'C':
    case 'c':
    case 'D':
    case 'd': {
      const bool credit = symbol == 'C' || symbol == 'c';
      for (unsigned i = 0; i < count; ++i) {
        if (state.take(credit ? "RC" : "BD") || state.take(credit ? "rc" : "bd")) {
          if (!state.takeSign(true)) return false;
        } else if (symbol == 'C' || symbol == 'D') {
          state.take("  ");
        }
      }
      return true;
    }
    case 'E': {
      size_t bytes = 0;
      bool anyExponentDigit = false;
      for (int digit = state.digitAt(bytes); digit >= 0; digit = state.digitAt(bytes)) {
        state.pos += bytes;
        state.number += static_cast<char>('0' + digit);
        anyExponentDigit = true;
      }
      if (!anyExponentDigit) return false;
      if (state.take("-")) {
        state.number += '-';
      } else {
        state.take("+");
      }
      if (!state.take("E") && !state.take("e")) return false;
      state.number += 'e';
      return true;
    }
    case '%':
      for (unsigned i = 0; i < count; ++i) {
        if (!state.take(state.percentSign) && !state.take("%")) return false;
      }
      state.percent = true;
      return true;
    case '$':
      if (count % 2 != 0 && !state.take(state.currencySymbol)) return false;
      for (unsigned i = 0; i < count / 2; ++i) {
        if (!state.takeNoCase(state.currencyName)) return false;
      }
      return true;
    case 't':
      for (unsigned i = 0; i < count; ++i) {
        if (!state.take("\t")) return false;
      }
      return true;
    default:
      return true;
  }
}

bool RnNum::finishParse(const ParseState& state) {
  std::string number = state.anyDigit ? state.number : std::string("0");
  std::reverse(number.begin(), number.end());
  RnDecimal decimal;
  if (!decimal.read(number.data(), number.size())) return false;
  if (state.percent) decimal.shift(-2);
  decimal.setNegative(state.negative);
  char buffer[2 * 400];
  const size_t length = decimal.writePlain(buffer, sizeof buffer);
  if (length == 0) return false;
  text_ = zuString::FromBytes(buffer, static_cast<unsigned int>(length));
  // getValue reads the double from the text, which holds these digits
  // exactly, when it is asked for; only zero's sign and digits near the
  // bottom of a double's range are not carried by the text.
  valueKnown_ = decimal.isZero() || decimal.point() < kLowestTextPoint;
  if (valueKnown_) value_ = decimal.toDouble();
  valid_ = true;
  return true;
}
