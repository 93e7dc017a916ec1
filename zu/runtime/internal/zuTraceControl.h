// The trace control file's reader: bytes in, settings out, nothing opened.
//
// The file is read line by line (a line ends at a line feed, or at the end
// of the bytes). A line of more than 1,023 bytes is skipped whole; a line is
// read only up to its first NUL. Each line counts when it starts, at its
// very first byte, with one of these keys:
//   timinglog=NAME    a candidate timing log
//   nonZeroOnly=N     the non-zero-only flag: N is optional C white space,
//                     an optional sign and at least one digit; it sets the
//                     flag when any digit is not 0 (so a number beyond int
//                     counts as non-zero), clears it otherwise
//   scriptlog=NAME    a candidate script log
// NAME skips C white space (space, \t, \n, \v, \f, \r) and ends before the
// next; an empty NAME, a missing number and any other line are ignored.
// Keys may repeat: names collect in order (the first that opens wins) and
// the last nonZeroOnly line decides.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zu::internal {

// The longest line that is read; longer ones are skipped.
inline constexpr std::size_t kTraceControlLineMax = 1023;

struct TraceControlSettings {
  std::vector<std::string> timingLogs;  // candidates, in file order
  std::vector<std::string> scriptLogs;
  bool nonZeroOnly = false;
};

// What one line says.
struct TraceControlLine {
  enum Kind { eIgnored, eTimingLog, eNonZeroOnly, eScriptLog };
  Kind kind = eIgnored;
  std::string name;      // eTimingLog, eScriptLog
  bool nonZero = false;  // eNonZeroOnly: a digit other than 0
};

// One line, without its line feed and at most kTraceControlLineMax bytes
// (longer lines are the caller's to skip).
TraceControlLine parseTraceControlLine(std::string_view line);

// A whole file.
TraceControlSettings parseTraceControl(std::string_view bytes);

}  // namespace zu::internal
