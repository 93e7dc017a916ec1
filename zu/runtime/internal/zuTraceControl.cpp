#include "zu/runtime/internal/zuTraceControl.h"

#include <utility>

namespace zu::internal {

namespace {

constexpr std::string_view kTimingLogKey = "timinglog=";
constexpr std::string_view kNonZeroOnlyKey = "nonZeroOnly=";
constexpr std::string_view kScriptLogKey = "scriptlog=";

// White space as the C locale's isspace sees it, whatever the process's
// locale is.
bool isCSpace(char byte) {
  return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\v' || byte == '\f' ||
         byte == '\r';
}

bool isDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

std::string_view skipSpace(std::string_view text) {
  std::size_t start = 0;
  while (start < text.size() && isCSpace(text[start])) ++start;
  return text.substr(start);
}

// The first word of `text` after white space; empty when there is none.
std::string_view firstWord(std::string_view text) {
  text = skipSpace(text);
  std::size_t end = 0;
  while (end < text.size() && !isCSpace(text[end])) ++end;
  return text.substr(0, end);
}

}  // namespace

TraceControlLine parseTraceControlLine(std::string_view line) {
  line = line.substr(0, line.find('\0'));
  TraceControlLine result;
  if (line.starts_with(kTimingLogKey) || line.starts_with(kScriptLogKey)) {
    const bool timing = line.starts_with(kTimingLogKey);
    const std::string_view name =
        firstWord(line.substr(timing ? kTimingLogKey.size() : kScriptLogKey.size()));
    if (name.empty()) return result;
    result.kind = timing ? TraceControlLine::eTimingLog : TraceControlLine::eScriptLog;
    result.name = name;
  } else if (line.starts_with(kNonZeroOnlyKey)) {
    std::string_view number = skipSpace(line.substr(kNonZeroOnlyKey.size()));
    if (!number.empty() && (number[0] == '+' || number[0] == '-')) number.remove_prefix(1);
    if (number.empty() || !isDigit(number[0])) return result;
    result.kind = TraceControlLine::eNonZeroOnly;
    for (std::size_t index = 0; index < number.size() && isDigit(number[index]); ++index) {
      if (number[index] != '0') result.nonZero = true;
    }
  }
  return result;
}

TraceControlSettings parseTraceControl(std::string_view bytes) {
  TraceControlSettings settings;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    const std::string_view line = bytes.substr(0, end);
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    if (line.size() > kTraceControlLineMax) continue;
    TraceControlLine parsed = parseTraceControlLine(line);
    switch (parsed.kind) {
      case TraceControlLine::eTimingLog:
        settings.timingLogs.push_back(std::move(parsed.name));
        break;
      case TraceControlLine::eScriptLog:
        settings.scriptLogs.push_back(std::move(parsed.name));
        break;
      case TraceControlLine::eNonZeroOnly:
        settings.nonZeroOnly = parsed.nonZero;
        break;
      case TraceControlLine::eIgnored:
        break;
    }
  }
  return settings;
}

}  // namespace zu::internal
