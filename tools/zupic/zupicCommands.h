// The commands of the zupic tool. Each returns the process exit status:
// 0 success, 1 when a value did not match or the library reported an error,
// 2 for a usage error.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "zu/core/zuString.h"

namespace zupic {

enum ExitStatus { kOk = 0, kNoMatch = 1, kUsage = 2 };

enum class Direction { kFormat, kParse };

// What one value gave through a picture.
struct Outcome {
  zuString text;          // the result; empty when the value did not match
  bool matched = false;   // some alternative of the picture fitted
  unsigned errorId = 0;   // the library's message id when it reported an error
  std::string errorText;  // and its message text
};

// One picture applied to many values in one locale, as format and parse do.
// The object belongs to the thread that made it.
class PictureApplier {
 public:
  PictureApplier(Direction direction, const std::string& picture, const std::string& locale);
  // The value formatted (or parsed); library errors are caught into the
  // outcome, so this throws nothing but std::bad_alloc.
  Outcome apply(const char* value, size_t length) const;

 private:
  Direction direction_;
  zuString picture_;
  zuString locale_;
};

// Formats (or parses) each of `values` through `picture` in `locale`, one
// result a line; without values, streams standard input line by line, on
// `jobs` threads when that is more than 1 (results still in input order).
int runPicture(Direction direction, const std::string& picture,
               const std::vector<std::string>& values, const std::string& locale, unsigned jobs);

// One built-in locale as `zupic locales` lists it.
struct LocaleEntry {
  std::string name;          // "de_CH"
  std::string platformName;  // "German_Switzerland"
  std::string language;      // the language's own name, "Deutsch"
};
std::vector<LocaleEntry> builtInLocales();

// One line of `zupic locale L`: a label and its text.
struct LocaleField {
  std::string label;
  std::string value;
};
// The names, patterns and symbols of the locale `name`; false, `fields`
// untouched, when no built-in locale has that name.
bool localeFields(const std::string& name, std::vector<LocaleField>& fields);

// zupic date FORMAT|parse|add|subtract|diff ...: `words` follow "date".
// Dates are read and written as YYYY-MM-DD; `locale` and `centurySplit`
// are the dates' own.
int runDate(const std::vector<std::string>& words, const std::string& locale, long centurySplit);

// zupic time format|parse ...: `words` follow "time". Times are read and
// written as HH:MM:SS.fff.
int runTime(const std::vector<std::string>& words);

// Runs `run` on each of `values`, or on each line of standard input (line
// ends dropped) when there are none, with standard output in large blocks.
// True when every run returned true.
bool forEachValue(const std::vector<std::string>& values,
                  const std::function<bool(const char*, size_t)>& run);

// The work on one line of input: appends its result line to `out` and any
// message to `err`; false when the line did not match.
using LineWorker =
    std::function<bool(const char* line, size_t length, std::string& out, std::string& err)>;

// Runs the lines of standard input (line ends dropped) through `threads`
// threads, each with a worker that `makeWorker` makes on that thread, and
// writes each line's `out` and `err` in input order. True when every line
// matched.
bool forEachLineInParallel(unsigned threads, const std::function<LineWorker()>& makeWorker);

// Runs `run`; an exception of the library is caught, its message id and
// text stored, and gives false.
bool captureErrors(const std::function<void()>& run, unsigned& errorId, std::string& errorText);

// Runs `run`; an exception of the library is written to standard error as
// "zupic: error ID: TEXT" and gives false.
bool reportErrors(const std::function<bool()>& run);

// Writes the bytes and a line feed to standard output.
void writeLine(const char* text, size_t length);

// The built-in locales, one a line: name, platform name, own language name.
int listLocales();

// The names, patterns and symbols of one locale.
int showLocale(const std::string& name);

// What `zupic length` was asked for; empty names take the defaults.
struct LengthOptions {
  std::string to;        // the unit to convert into (in, cm, mm, pt, mp, pc)
  std::string unit;      // the unit of bare numbers; inches by default
  std::string decimals;  // at most this many decimals (0 to 8, default 8)
};

// Reads each of `texts` as a length, converts it and prints it, one a line;
// without texts, streams standard input line by line.
int runLength(const std::vector<std::string>& texts, const LengthOptions& options);
// zupic serve [--port N] [--host ADDRESS]: the playground page and its JSON
// API until SIGINT or SIGTERM. `arguments` are those after "serve".
int serve(const std::vector<std::string>& arguments);
// Base64 from standard input to standard output: encoding (in lines of 76
// characters and a final line feed, or one line without it), or decoding
// (LF or CRLF lines; 1 with the library's message on invalid input).
int runBase64(bool encoding, bool lineBreaks);

}  // namespace zupic
