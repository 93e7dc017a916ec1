// The commands of the zupic tool. Each returns the process exit status:
// 0 success, 1 when a value did not match or the library reported an error,
// 2 for a usage error.
#pragma once

#include <string>
#include <vector>

namespace zupic {

enum ExitStatus { kOk = 0, kNoMatch = 1, kUsage = 2 };

enum class Direction { kFormat, kParse };

// Formats (or parses) each of `values` through `picture` in `locale`, one
// result a line; without values, streams standard input line by line.
int runPicture(Direction direction, const std::string& picture,
               const std::vector<std::string>& values, const std::string& locale);

// The built-in locales, one a line: name, platform name, own language name.
int listLocales();

// The names, patterns and symbols of one locale.
int showLocale(const std::string& name);

// Base64 from standard input to standard output: encoding (in lines of 76
// characters and a final line feed, or one line without it), or decoding
// (LF or CRLF lines; 1 with the library's message on invalid input).
int runBase64(bool encoding, bool lineBreaks);

}  // namespace zupic
