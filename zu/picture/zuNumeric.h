// zuNumeric and the Zu... numeric helpers: doubles, integers and decimal
// text with explicit rounding and a decimal point that is always ".".
//
// The C library's printing follows the process locale (a German LC_NUMERIC
// prints "2,5") and rounds binary fractions as they fall; these routines
// always produce and read ".", and round a trailing 5 away from zero.
//
//   ZuRound(-2.5);                               // -3
//   ZuApplyFactor(7, 1, 2);                      // 4
//   zuNumeric::doubleToString(0.125, 2, 0);      // "0.13"
//   char* text = zuNumeric::dblToStr(2.50, 2, 1);   // "2.5"
//   delete[] text;
//
// Nothing here keeps state; every function may be called from any thread
// (the C library's locale is only read).
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

// `value` rounded half away from zero to a 32-bit integer. NaN and values
// outside the 32-bit range give -2147483648, the "integer indefinite" the
// processor's conversion produces.
ZU_EXPORT long ZuRound(double value);
// value * multiplier / divisor, rounded half away from zero by the sign of
// `value` alone (0 rounds as a negative), without forming value * multiplier.
// The arguments and the result are 32-bit values (longer arguments are cut
// to their low 32 bits, the result wraps). A zero divisor throws
// ZuExThrow(16479).
ZU_EXPORT long ZuApplyFactor(long value, long multiplier, long divisor);
// `value` cut toward zero after `digits` fraction digits, by scaling with
// repeated multiplication by 10 and back. Scaling overflows to infinity
// long before 1100 steps, so larger counts behave as 1100.
ZU_EXPORT double ZuTruncate(double value, unsigned digits);
// `value` with `digits` fraction digits (at most 15) and trailing zeros
// dropped (zuString::Number); with `round` 0 the value is first cut by
// ZuTruncate instead of rounded.
ZU_EXPORT zuString ZuDoubleToString(double value, unsigned digits, int round);

class ZU_EXPORT zuNumeric {
 public:
  // Size of the buffer dblToStr returns: the widest fixed-point rendering
  // of a double with 15 fraction digits (326 characters) and a NUL.
  static constexpr unsigned kBufferSize = 327;

  // Replaces the C library's decimal point in `text` by "." in place and
  // returns `text`. Throws ZuExThrow(16479) when `text` is null.
  static char* strToDot(char* text);
  // Writes `value` with at most `digits` fraction digits (negative: none;
  // more than 15: 15) into `out` without the C library's printing, rounding
  // the fraction half up in magnitude, and returns the number of characters
  // written (no NUL). A fraction that rounds to 0 writes no point at all; a
  // non-zero one keeps its trailing zeros ("1.050"). NaN and infinities
  // write nothing. `out` needs room for 326 characters.
  static unsigned doubleToChars(double value, int digits, char* out);
  // Reads the longest decimal number at the start of `text` (leading white
  // space skipped, an optional sign, digits with "." as the decimal point,
  // an optional exponent, as strtod reads it), whatever the C library's
  // locale. With `commaIsPoint` non-zero a "," is read as the decimal point
  // as well; with 0 a "," ends the number. No grouping is accepted. 0 for
  // null text or text without a number; overflow gives +-HUGE_VAL.
  static double strToDbl(char* text, int commaIsPoint);
  // strToDbl on the string's bytes.
  static double stringToDouble(const zuString& text, int commaIsPoint);
  // `value` printed with `digits` fraction digits (at most 15) and "." as
  // the point, a trailing 5 rounded away from zero; with `trim` non-zero
  // trailing zeros after the point, and a point left bare, are removed.
  // Negative `digits` prints the integer as printf's "%.0f" rounds it (an
  // exact half to even: 1234.5 gives "1234"). NaN and infinities give "".
  static zuString doubleToString(double value, int digits, int trim);
  // The same text in a new buffer of kBufferSize bytes, NUL-terminated,
  // owned by the caller, who frees it with delete[]. Throws zuExMemory.
  static char* dblToStr(double value, int digits, int trim);

 private:
  static void dblToStr(char* out, double value, int digits, int trim);
  // A new char array of `size` bytes (delete[] frees it). Throws zuExMemory.
  static void* Malloc(unsigned size);
};
