// zuPicture: formats and parses values through picture clauses.
//
// A picture clause is one or more alternatives separated by "|" outside
// quotes; each alternative is read as a category sub-picture
// ("num{z,zz9.99}", "date.long(fr_FR){}", "text{999-AA}", "null{}",
// "zero{'none'}", "date{D/M/YY}' 'time{HH:MM}", "datetime.short{}") or as
// bare symbols of one category, and handed to that category's engine (RnNum, RnText,
// RnDate, RnTime). The first alternative that fits gives the result.
//
//   int status = 0;
//   zuString shown = zuPicture::format("2024-03-05", "date{EEEE, D MMMM YYYY}",
//                                      "fr_FR", &status);   // "mardi, 5 mars 2024"
//   zuString amount = zuPicture("de_DE").format("1234.5", "num{z,zz9.99}",
//                                               &status, 0);  // "1.234,50"
//   zuString value = zuPicture::parse("1.234,50", "num{z,zz9.99}", "de_DE",
//                                     &status);             // "1234.5"
//
// Canonical values: a date is read in an ISO 8601 form ("2024-03-05" or
// "20240305", also "2024" and "2024-03") and parsed back as "YYYY-MM-DD"; a
// time is read as "HH[:MM[:SS[.FFF]]][Z|+hh:mm]" (or the basic form without
// colons) and parsed back as "HH:MM:SS", with ".FFF" when the milliseconds are
// not zero; a date-time is the two joined by "T". A date-time value without
// "T" is taken as a date at midnight. Numbers use "." as their point; texts
// are the characters themselves. The null string is the null value.
//
// Positions are byte offsets into the UTF-8 picture (the string type counts
// bytes); every scan steps over whole characters.
//
// Styles: a sub-picture "date.S", "time.S" or "datetime.S" (S one of
// "default", "short", "medium", "long", "full") and "num.S" (S one of
// "integer", "decimal", "currency", "percent") stands for the locale's own
// pattern; the text between its braces is ignored. The locale is the
// qualifier of the sub-picture, else the locale the caller passes in.
// Numeric styles group digits and allow 15 integer digits; a decimal shows
// up to 15 fraction digits, dropping trailing zeros, and a currency its
// fixed cents. A style pattern may hold alternatives (the
// negative form of a currency); they are tried in turn.
//
// Status: `status`, when given, receives 1 when some alternative fitted and 0
// when none did. It is NOT written when the picture is empty (the value is
// returned as it stands), when the picture ends inside an open quote (the
// result is empty), or when parse is given the null string. Callers preset it.
//
// Errors: nothing throws for an unrecognised picture; a compound alternative
// (for example "num{9} text{X}") raises zuExFull with message 16480 and the
// operation's name. Running out of memory is never a mismatch: the
// library's own allocations raise zuExMemory, and so does a failed operator
// new once the client installs zuNewHandler(ZuExMemoryHandler) (else the
// runtime's std::bad_alloc passes through). Engines and data are per thread: a zuPicture belongs to
// the thread that uses it, and the static operations may run on any thread.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuStorage.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuPicture {
 public:
  // --- Object form: the object's locale is the locale ------------------------

  // An object for `locale` (empty: the default locale "en_US").
  explicit zuPicture(const zuString& locale = zuString());
  zuPicture(const zuPicture& other) = default;
  zuPicture& operator=(const zuPicture& other) = default;

  const zuString& getLocale() const { return locale_; }

  // `value` through `picture`; `flags` reaches RnNum::format. Dates and
  // times are shown in local time. See the status rules above.
  zuString format(const zuString& value, const zuString& picture, int* status, int flags) const;
  // As format, but a date-time whose time crosses midnight in the local-time
  // conversion moves its date by that day.
  zuString format_new(const zuString& value, const zuString& picture, int* status, int flags) const;
  // The canonical value of `value` read through `picture`.
  zuString parse(const zuString& value, const zuString& picture, int* status) const;

  // The same operations for any locale (empty: the default locale).
  static zuString format(const zuString& value, const zuString& picture, const zuString& locale,
                         int* status = nullptr, int flags = 0);
  static zuString format_new(const zuString& value, const zuString& picture, const zuString& locale,
                             int* status = nullptr, int flags = 0);
  static zuString parse(const zuString& value, const zuString& picture, const zuString& locale,
                        int* status = nullptr);

  // --- Constant words -------------------------------------------------------

  static const zuLiteral& getNUM();
  static const zuLiteral& getNULL();
  static const zuLiteral& getZERO();
  static const zuLiteral& getTEXT();
  static const zuLiteral& getDATE();
  static const zuLiteral& getTIME();
  static const zuLiteral& getDATETIME();
  static const zuLiteral& getSHORT();
  static const zuLiteral& getMEDIUM();
  static const zuLiteral& getLONG();
  static const zuLiteral& getFULL();
  static const zuLiteral& getDEFAULT();
  static const zuLiteral& getINTEGER();
  static const zuLiteral& getDECIMAL();
  static const zuLiteral& getCURRENCY();
  static const zuLiteral& getPERCENT();
  // The 14 characters that stand for themselves in any picture:
  // "'", '"', space and ",-./:?+*$()".
  static const zuLiteral& getLITERALS();

  // --- Category formatters ----------------------------------------------------
  // Each empties `out`, writes the result there and returns non-zero on
  // success. `picture` is one alternative; a "category{...}" wrapper and its
  // locale qualifier are peeled off (the qualifier overrides `locale`).
  // `local` non-zero shows dates and times in local time.

  static int formatNumeric(const zuString& value, const zuString& picture, const zuString& locale,
                           zuString& out, int flags);
  static int formatText(const zuString& value, const zuString& picture, const zuString& locale,
                        zuString& out);
  // Only the null value; an empty body gives "", any other body is the
  // numeric picture of the value "0".
  static int formatNull(const zuString& value, const zuString& picture, const zuString& locale,
                        zuString& out);
  // Only the value "0" exactly; the body as for formatNull.
  static int formatZero(const zuString& value, const zuString& picture, const zuString& locale,
                        zuString& out);
  static int formatDate(const zuString& value, const zuString& picture, const zuString& locale,
                        zuString& out, int local);
  static int formatTime(const zuString& value, const zuString& picture, const zuString& locale,
                        zuString& out, int local);
  // `datePicture` and `timePicture` are the parts found by isDateTimePicture;
  // the result is `picture` with its date and time sub-pictures replaced by
  // the formatted parts and its quoted literals unquoted.
  static int formatDateTime(const zuString& value, const zuString& picture,
                            const zuString& datePicture, const zuString& timePicture,
                            const zuString& locale, zuString& out, int local);
  static int formatDateTime_new(const zuString& value, const zuString& picture,
                                const zuString& datePicture, const zuString& timePicture,
                                const zuString& locale, zuString& out, int local);
  // Always throws zuExFull 16480 ("zuPicture::formatCompound").
  [[noreturn]] static int formatCompound(const zuString& value, const zuString& picture,
                                         const zuString& locale, zuString& out);

  // --- Category parsers (canonical values, see above) -------------------------
  // A time is read as the wall-clock time the text shows (its zone, when the
  // picture reads one, is not applied); `local` is accepted for symmetry
  // with the formatters. A date-time text is split where its date and time
  // parts and the literals between them fit.

  static int parseNumeric(const zuString& value, const zuString& picture, const zuString& locale,
                          zuString& out);
  static int parseText(const zuString& value, const zuString& picture, const zuString& locale,
                       zuString& out);
  // The text formatNull would write gives the null value.
  static int parseNull(const zuString& value, const zuString& picture, const zuString& locale,
                       zuString& out);
  // The text formatZero would write gives "0".
  static int parseZero(const zuString& value, const zuString& picture, const zuString& locale,
                       zuString& out);
  static int parseDate(const zuString& value, const zuString& picture, const zuString& locale,
                       zuString& out, int local);
  static int parseTime(const zuString& value, const zuString& picture, const zuString& locale,
                       zuString& out, int local);
  static int parseDateTime(const zuString& value, const zuString& picture,
                           const zuString& datePicture, const zuString& timePicture,
                           const zuString& locale, zuString& out, int local);
  // Always throws zuExFull 16480 ("zuPicture::parseCompound").
  [[noreturn]] static int parseCompound(const zuString& value, const zuString& picture,
                                        const zuString& locale, zuString& out);

  // --- Classification -------------------------------------------------------
  // A picture of a category is made of quoted literals, literal punctuation,
  // the category's symbols (also in full-width form) and sub-pictures of the
  // category whose bodies are again of the category. The empty picture is
  // of every category.

  static int isNumericPicture(const zuString& picture);
  static int isTextPicture(const zuString& picture);
  static int isDatePicture(const zuString& picture);
  static int isTimePicture(const zuString& picture);
  // A "null" (or "zero") sub-picture at the start; the rest is not examined.
  static int isNullPicture(const zuString& picture);
  static int isZeroPicture(const zuString& picture);
  // A picture holding a date and a time sub-picture (possibly inside a
  // "datetime" sub-picture), with literals and "T" around them. The two are
  // written back as "date(locale){body}" and "time(locale){body}".
  static int isDateTimePicture(const zuString& picture, zuString& datePicture,
                               zuString& timePicture);

  // Validity: the category's classification holds, and
  // - numeric: a trial format of "0" or of "1" under the default locale fits;
  // - date: every symbol run has a count that symbol allows (D, M 1-2 and
  //   M 3-4; J 1 or 3; E 1, 3 or 4; e, w, G 1; W 2; Y 2 or 4; g 1-3);
  // - time: h, k, H, K, M, S 1-2; F 3; A 1-2; z 1-2; Z 1-3;
  // - text: quoted literals are closed and every unquoted character is a
  //   text symbol or literal punctuation;
  // - null, zero: the picture starts with that sub-picture, and its body is
  //   empty or formats the value "0" as a numeric picture.
  // Full-width symbols and "t" (tabs) are accepted with any count.
  static int isNumericPictureValid(const zuString& picture);
  static int isTextPictureValid(const zuString& picture);
  static int isDatePictureValid(const zuString& picture);
  static int isTimePictureValid(const zuString& picture);
  static int isDateTimePictureValid(const zuString& picture);
  static int isNullPictureValid(const zuString& picture);
  static int isZeroPictureValid(const zuString& picture);

  // --- Grammar --------------------------------------------------------------

  // Reads `category[.style][(locale)]{body}` at byte `pos`. On success
  // `category` is the word (with ".style" when a style was given), `locale`
  // the qualifier when there is one (otherwise left as passed in: it names
  // the locale whose patterns resolve a style, empty for the default), and
  // `body` the text between the braces or, for a style, the locale's
  // pattern. Date-time patterns get the locale qualifier on their date and
  // time parts. 0 when no sub-picture stands there.
  static int isSubPicture(const zuString& picture, unsigned int pos, zuString& category,
                          zuString& locale, zuString& body);
  // As isSubPicture, after skipping quoted literals, literal punctuation and
  // the filler digits "0" and "9", which are put at the front of `body`. The
  // end of the picture succeeds with an empty category. Date-time patterns
  // keep their parts unqualified.
  static int hasSubPicture(const zuString& picture, unsigned int pos, zuString& category,
                           zuString& locale, zuString& body);
  // Splits `picture` at "|" outside quoted literals into `alternates`
  // (emptied first). 0, with the list empty, when a quoted literal is open
  // at the end; the empty picture gives an empty list and 1.
  static int getAlternates(const zuString& picture, zuStorage<zuString>& alternates);
  // The locale qualifier of the picture's first qualified sub-picture into
  // `out` (empty when none). 0 when the picture holds anything but quoted
  // literals, literal punctuation, "0", "9" and well-formed sub-pictures.
  // `locale` is not consulted.
  static int getLocaleFromPicture(const zuString& picture, const zuString& locale, zuString& out);
  // Converts legacy quoting, where double quotes also delimit literals, into
  // single-quoted literals. Inside single quotes a double quote is doubled.
  static zuString Ox42ToKDL(const zuString& picture);
  // Rewrites `picture` (a date-time alternative) into its formatted text:
  // quoted literals lose their quotes and the date and time sub-pictures
  // become `dateText` and `timeText`.
  static void possibleLiteralStrings(zuString& picture, zuString& dateText, zuString& timeText);

 private:
  static zuString run(const zuString& value, const zuString& picture, const zuString& locale,
                      int* status, int flags, bool dayShift);

  zuString locale_;
};
