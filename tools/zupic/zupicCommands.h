// The commands of the zupic tool. Each returns the process exit status:
// 0 success, 1 when a value did not match or the library reported an error,
// 2 for a usage error.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace zupic {

enum ExitStatus { kOk = 0, kNoMatch = 1, kUsage = 2 };

enum class Direction { kFormat, kParse };

// Formats (or parses) each of `values` through `picture` in `locale`, one
// result a line; without values, streams standard input line by line.
int runPicture(Direction direction, const std::string& picture,
               const std::vector<std::string>& values, const std::string& locale);

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

// Runs `run`; an exception of the library is written to standard error as
// "zupic: error ID: TEXT" and gives false.
bool reportErrors(const std::function<bool()>& run);

// Writes the bytes and a line feed to standard output.
void writeLine(const char* text, size_t length);

// The built-in locales, one a line: name, platform name, own language name.
int listLocales();

// The names, patterns and symbols of one locale.
int showLocale(const std::string& name);

}  // namespace zupic
