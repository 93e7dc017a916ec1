// RnText: formats text through a text picture and reads text back through one.
//
// A text picture is positional: each of the symbols "9" (digit), "A"
// (letter), "0" and "O" (letter or digit) and "X" (any character) stands for
// one character of the value, "t" for a tab. Other ASCII letters are copied
// (or matched) as they stand, text between single quotes is a literal ("''"
// inside it is one quote), and any other character is a literal too, except
// that "?", "*" and "+" format as one space and, when parsing, match any one
// character, any white space, and at least one white-space character.
//
//   RnText part("AB12", "en_US");
//   part.format("AA-99");                    // "AB-12"
//   RnText read("ab  cd", "XX*XX", "");      // read.getText() == "abcd"
//
// Positions count characters (code points), not bytes. Character classes are
// the library's Unicode tests (zuCharConverter::IsAlpha, IsDigit, IsAlnum,
// IsUniSpace), so letters and digits of every script qualify; digits are
// copied as they stand, never translated to or from the locale's digits.
//
// Details of the walk that callers can observe:
// - A run of equal symbols is carried out at its end. Before a quote, a run
//   needing more value characters than remain makes the result empty; at the
//   end of the picture such a run is skipped. A run that writes nothing (the
//   value already used up: "t", literal letters and lone symbols included)
//   makes the result empty.
// - The character right after a closing quote starts a run whatever it is,
//   so "'x'-" writes "-" through that run (and therefore only while value
//   characters remain); "?" in that place formats as "?" itself.
// - The result is kept when the whole value or none of it was consumed;
//   value characters left over make it empty.
// - parse collects only the characters matched by "9AO0X"; tabs and literal
//   letters are checked but not kept.
//
// An object belongs to one thread (its strings do). format and parse throw
// nothing but zuExMemory, when memory runs out: every other failure is an
// empty result or false.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuString.h"
#include "zu/locale/RnLocale.h"

class ZU_EXPORT RnText {
 public:
  // The value with the locale `locale`; an empty name means the thread's
  // locale (RnLocale::getLocale()), and a name that resolves to no locale
  // gives the default locale ("en_US"). The object is valid when `value` is
  // not the null string.
  RnText(const zuString& value, const zuString& locale);
  // The same locale choice, then parse(value, picture): the object is valid,
  // with the collected characters as its value, when the parse succeeded;
  // otherwise it is invalid with a null value.
  RnText(const zuString& value, const zuString& picture, const zuString& locale);
  RnText(const RnText& other) = default;
  RnText& operator=(const RnText& other) = default;
  ~RnText() = default;

  zuString getText() const { return value_; }
  bool isValid() const { return valid_; }
  // The locale the object uses.
  const RnLocale& getLocale() const { return locale_; }
  // The first character of the locale's zero symbol (a code point, "0" for
  // most locales); kept with the object for callers that show digits in the
  // locale's script. Text pictures themselves copy digits unchanged.
  unsigned int getZeroSymbol() const { return zeroSymbol_; }
  // Reads the zero symbol of `locale` from the locale data.
  void setTextSymbols(const char* locale);

  // The value formatted through `picture`; the empty string when the value
  // does not fit (wrong class, characters left over, a run with nothing to
  // write) and for an invalid object, which has no value to show.
  zuString format(const zuString& picture);
  // Reads `text` through `picture`. On success the value becomes the
  // characters the symbols matched, the object becomes valid and the result
  // is true; on failure (a character of the wrong class, a literal that does
  // not match, text left over or missing, a picture ending inside a quote)
  // the object is left as it was and the result is false.
  bool parse(const zuString& text, const zuString& picture);

  // The same two operations without an object, for callers that already
  // hold the value: text pictures read no locale data, so the locale an
  // object would carry changes nothing. formatValue gives the empty string
  // when the value does not fit; parseText sets `value` only when it returns
  // true. A null value gives the empty string, as an object without a value
  // does, and a null text never parses.
  static zuString formatValue(const zuString& value, const zuString& picture);
  static bool parseText(const zuString& text, const zuString& picture, zuString& value);

  // "9AO0Xt".
  static const zuLiteral& getTEXT_PICTURE_SYMBOLS();
  // The number of value characters `picture` consumes: the count of "9",
  // "A", "O", "0" and "X" in runs, full-width forms (U+FF01..U+FF5E)
  // included; tabs and literals add nothing.
  static void getSymbolCount(const zuString& picture, unsigned& count);

 private:
  // The engines below read a text's characters by position through `Chars`
  // (the bytes of an ASCII text or the code points of any other), walk the
  // pieces of a picture read beforehand, and write UTF-8 through `out`,
  // which the caller has made room behind.
  template <class Chars, class Picture>
  static zuString formatChars(const Chars& value, const Picture& picture, char* buffer);
  template <class Chars, class Picture>
  static bool parseChars(const Chars& text, const Picture& picture, char* buffer, zuString& value);
  // Carries out one run of `symbol` while formatting: writes to `out` and
  // moves `pos` through the value. False when a value character has the
  // wrong class or the run wrote nothing.
  template <class Chars>
  static bool subFormat(const Chars& value, char32_t symbol, unsigned count, unsigned& pos,
                        char*& out);
  // Carries out one run while parsing: checks `count` characters of `text`
  // at `pos`, writes those of value symbols to `out`, moves `pos`.
  template <class Chars>
  static bool subParse(const Chars& text, unsigned& pos, char32_t symbol, unsigned count,
                       char*& out);
  // Writes text[from, to) to `out` as UTF-8.
  template <class Chars>
  static void getStr(const Chars& text, unsigned from, unsigned to, char*& out);
  // The number of value characters the picture consumes, its runs counted
  // through subXlate.
  template <class Chars>
  static unsigned xlate(const Chars& picture);
  static void subXlate(char32_t symbol, unsigned count, unsigned& total);
  // The length of the stretch of text[from, to) whose characters pass the
  // class test; -1 when the first one already fails.
  template <class Chars>
  static int matchNumeric(const Chars& text, unsigned from, unsigned to);
  template <class Chars>
  static int matchAlphabetic(const Chars& text, unsigned from, unsigned to);
  template <class Chars>
  static int matchAlphanumeric(const Chars& text, unsigned from, unsigned to);
  template <class Chars>
  static int matchCharacter(const Chars& text, unsigned from, unsigned to);

  void chooseLocale(const zuString& locale);

  RnLocale locale_;
  zuString value_;
  bool valid_ = false;
  unsigned int zeroSymbol_ = '0';
};
