// RnNum: a number formatted through a numeric picture, and read back.
//
// The value is canonical text ("-1234.5", "." as the point); the picture is
// the body of "num{...}". Radix, grouping, sign, percent and currency texts
// and the digits come from the locale's data, so one picture serves every
// locale.
//
//   RnNum amount("1234.5", "de_DE");
//   amount.format("z,zz9.99");              // "1.234,50"
//   RnNum zero("0", "en_US");
//   zero.format("zzz");                     // "" (zero blanking)
//   RnNum read("", "de_DE");
//   read.parse("1.234,50", "z,zz9.99");     // true, getText() "1234.5"
//
// Symbols (each also accepted in its full-width form U+FF01..U+FF5E):
//   9 8 Z z    digits; 8 keeps the value's own fraction length, Z writes a
//              leading zero as a space, z writes it as nothing
//   . V v      radix; v is implied (nothing written) except in "E" notation
//   ,          grouping, once a digit has been written
//   S s ( ) CR cr DB db   signs;  E  exponent;  %  percent (value x 100)
//   $  $$      currency symbol, currency name;   t  tab
// Anything else, and text in single quotes ('' is one quote), is literal.
// A negative value under a picture without a sign symbol gets the
// locale's minus sign right before its first digit (or radix).
//
// Settled behaviour:
// - Values carry 15 significant digits, rounded half away from zero on the
//   decimal text itself (no binary noise); at most 15 fraction digits are
//   written, further fraction symbols write nothing. Pictures whose digits
//   need 326 characters or more do not format.
// - "E" writes "E", then "+" or "-", then the exponent's digits without
//   padding ("1.23E+4", "5.00E-12"), in the locale's digits.
// - A run of "$" writes the currency name for each pair and the symbol for
//   an odd one left ("$$$" is name then symbol).
// - A picture is invalid (format gives "", parse false) when it has an
//   unterminated quoted literal, a "C", "c", "D", "d" not followed by "R",
//   "r", "B", "b" (or such a letter alone), two radix symbols, more than one
//   "E", or a digit symbol after "E".
// - Parsing reads the text from its right-hand end. Digits may be ASCII,
//   the locale's digits or full-width. "9" needs one digit per symbol; "8"
//   and "z" take a digit when there is one; "Z" takes a digit, a space or
//   nothing. In the fraction an "8", "z" or "Z" leaves alone the digits the
//   "9"s further left still need ("zz9.99zz" reads "234.50"). The radix symbol may be missing only
//   when no fraction digit was read (a short or dropped fraction). "," takes the grouping symbol
//   when present (any space-like character when the locale groups with a
//   space). "$" and "$$" require the symbol and the name (the name without
//   regard to ASCII case); "%" requires the locale's or the ASCII percent
//   sign. Sign symbols take the locale's minus (or "-") for a negative value
//   and their positive form, or nothing, otherwise; "CR"/"DB" take "CR"/"DB"
//   in either case. Without a sign symbol, a minus is accepted right before
//   the leftmost digit. One sign per text; literals must match exactly; the
//   whole text must be used. The value becomes plain decimal text without
//   trailing fraction zeros ("1234.5", "-0.05"); "%" divides by 100.
// - StrToDbl accepts optional white space, an optional sign, digits with at
//   most one ".", an optional exponent ("e" or "E", optional sign, digits),
//   and nothing else (no grouping, no "inf" or "nan", no hexadecimal).
//
// An RnNum belongs to one thread (its strings are ordinary zuStrings).
#pragma once

#include <cstdint>
#include <string>

#include "zu/core/zuExport.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuString.h"
#include "zu/locale/RnLocale.h"

class ZU_EXPORT RnNum {
 public:
  // Bits of the `flags` argument of format.
  // Write ASCII digits whatever the locale's digits are.
  static constexpr int ASCII_DIGITS = 1;

  // The value text and the locale: the named one; the thread's current
  // locale (RnLocale::getLocale) when the name is empty; "en_US" when that
  // is not a known locale. The object is valid when the value reads as a
  // number (StrToDbl).
  RnNum(const zuString& value, const zuString& locale);
  // The same locale choice, then parse(value, picture): the object is valid
  // when the text matched the picture.
  RnNum(const zuString& value, const zuString& picture, const zuString& locale);
  RnNum(const RnNum& other) = default;
  RnNum& operator=(const RnNum& other) = default;
  ~RnNum() = default;

  // The value as canonical text, as a double, and whether it is a number.
  zuString getText() const { return text_; }
  double getValue() const;
  bool isValid() const { return valid_; }

  // Fills the locale's symbols: radix, signs, grouping, percent, currency
  // symbol and name, and the zero digit (digits are counted from it).
  void setNumericSymbols(const char* locale);

  // The value formatted through `picture`; the empty string when the object
  // is not valid, the picture is invalid, or the value does not fit. Throws
  // only zuExMemory, when memory runs out. `radixPos`, when not null, receives the position (in
  // code points) of the radix in the result, or the result's length when there is none. `flags`:
  // ASCII_DIGITS or 0; other bits are ignored.
  zuString format(const zuString& picture, unsigned* radixPos = nullptr, int flags = 0);
  // Reads `text` through `picture` (see above). On success the value and
  // validity are replaced and true is returned; otherwise the object is
  // unchanged. Throws only zuExMemory, when memory runs out.
  bool parse(const zuString& text, const zuString& picture);

  // "(%$,.)89BCDERSVZbcdrsvzt"
  static const zuLiteral& getNUMERIC_PICTURE_SYMBOLS();
  // The digit symbols of `picture` before and after its radix (0 and 0 for
  // an invalid picture).
  static void getSymbolCount(const zuString& picture, unsigned& leading, unsigned& trailing);

  // Whether `symbol` (a code point, full-width forms included) is one that
  // the last picture analysed cannot do without: "(%$.)BCDERSZ89" when that
  // picture has digits after its radix, "(%$.)BCDERS" otherwise.
  bool IsNonIgnorable(unsigned int symbol) const;

  // Fixed-point text of `value`: `precision` fraction digits (0 to 15; more
  // count as 15), zero-padded on the left to `width` characters, "." as the
  // point whatever the C library's locale, the point kept even without
  // fraction digits when `keepPoint`. The value is first cut to 15
  // significant digits and rounded half away from zero. False (out
  // emptied) for a value that is not finite or a width of 326 or more.
  static bool DblToStr(double value, int width, int precision, bool keepPoint, zuString& out);
  // Reads `text` (grammar above) into `value`; false, value unchanged,
  // when the text is not a number or exceeds the range of a double.
  static bool StrToDbl(const zuString& text, double& value);
  // Reverses the text code point by code point (a UTF-8 sequence is kept
  // whole; a stray byte counts as one character).
  static void Reverse(zuString& text);

 private:
  struct FormatState;
  struct SymbolCache;
  static SymbolCache& symbolCache();
  struct ParseState;
  struct CompiledPicture;
  struct Analysis {
    unsigned leading = 0;            // digit symbols before the radix
    unsigned trailing = 0;           // digit symbols after it
    unsigned nines = 0;              // "9" symbols in the whole picture
    bool scientific = false;         // "E"
    bool percent = false;            // "%"
    bool hasRadix = false;           // ".", "V" or "v"
    bool hasSign = false;            // S s ( ) CR cr DB db
    bool zeroBlanking = true;        // no "9", "8" or "Z"
    bool dropFractionZeros = false;  // fraction digits all "z"
    bool shortFraction = false;      // fraction digits all "8"
  };

  // The locale choice of the constructors.
  void init(const zuString& locale);
  void setValue(const zuString& text);
  // The analysis of `picture`, from the thread's memo of the pictures it
  // analysed last (made there when missing), copied into analysis_; null
  // when it is not a valid numeric picture. The result stays valid until
  // this thread analyses another picture.
  const CompiledPicture* xlate(const zuString& picture);
  // Reads `picture` into `compiled`: its items forward and reversed, and
  // the analysis; false when it is not a valid numeric picture.
  static bool compile(const char* picture, size_t length, CompiledPicture& compiled);
  // One run of a symbol into `a`; false when it cannot stand there.
  static bool subXlate(Analysis& a, char symbol, unsigned count, bool& allZ, bool& all8,
                       bool& afterE);
  zuString formatPicture(const zuString& picture, unsigned* radixPos, int flags);
  bool subFormat(FormatState& state, char symbol, unsigned count) const;
  bool parsePicture(const zuString& text, const zuString& picture);
  bool finishParse(const ParseState& state);
  bool subParse(ParseState& state, char symbol, unsigned count) const;
  bool scanReversed(ParseState& state, const CompiledPicture& picture) const;

  zuString text_;
  // Read from the text when first asked for.
  mutable double value_ = 0;
  mutable bool valueKnown_ = false;
  bool valid_ = false;
  RnLocale locale_;
  zuString radix_, positive_, negative_, grouping_, percent_, currencySymbol_, currencyName_;
  uint32_t zeroDigit_ = '0';
  Analysis analysis_;
};
