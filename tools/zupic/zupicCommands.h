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

// Calls `run` on each of `values`, or without values on each line of
// standard input (its line end, "\n" or "\r\n", removed). Returns whether
// every call returned true.
bool forEachValue(const std::vector<std::string>& values,
                  const std::function<bool(const char* value, size_t length)>& run);

// Formats (or parses) each of `values` through `picture` in `locale`, one
// result a line; without values, streams standard input line by line.
int runPicture(Direction direction, const std::string& picture,
               const std::vector<std::string>& values, const std::string& locale);

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

}  // namespace zupic
