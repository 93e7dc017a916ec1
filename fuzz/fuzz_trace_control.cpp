// Reads arbitrary bytes as a trace control file, and checks each line of at
// most 1,023 bytes against sscanf with the file's formats ("timinglog=%1023s",
// "nonZeroOnly=%d", "scriptlog=%1023s").
//
// Lines holding a NUL byte are left out of the comparison, as are
// nonZeroOnly numbers beyond int, where sscanf's result is undefined. Every
// name read must be at most 1,023 bytes without white space, and the whole
// file must give the names of its lines in order.
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "zu/runtime/internal/zuTraceControl.h"

namespace {

using zu::internal::TraceControlLine;

bool isCSpace(char byte) {
  return byte != '\0' && std::strchr(" \t\n\v\f\r", byte) != nullptr;
}

void checkName(const std::string& name) {
  if (name.empty() || name.size() > zu::internal::kTraceControlLineMax) __builtin_trap();
  for (char byte : name) {
    if (isCSpace(byte)) __builtin_trap();
  }
}

// Whether the number sscanf's %d would read from `text` fits in an int.
bool numberFitsInt(const char* text) {
  errno = 0;
  const long value = std::strtol(text, nullptr, 10);
  return errno == 0 && value >= INT_MIN && value <= INT_MAX;
}

void compareWithSscanf(const std::string& line, const TraceControlLine& ours) {
  static char name[1024];
  int number = 0;
  TraceControlLine::Kind expected = TraceControlLine::eIgnored;
  if (std::sscanf(line.c_str(), "timinglog=%1023s", name) == 1) {
    expected = TraceControlLine::eTimingLog;
  } else if (line.starts_with("nonZeroOnly=")) {
    if (!numberFitsInt(line.c_str() + 12)) return;
    if (std::sscanf(line.c_str(), "nonZeroOnly=%d", &number) == 1) {
      expected = TraceControlLine::eNonZeroOnly;
    }
  } else if (std::sscanf(line.c_str(), "scriptlog=%1023s", name) == 1) {
    expected = TraceControlLine::eScriptLog;
  }
  if (ours.kind != expected) __builtin_trap();
  if (expected == TraceControlLine::eNonZeroOnly && ours.nonZero != (number != 0)) __builtin_trap();
  if ((expected == TraceControlLine::eTimingLog || expected == TraceControlLine::eScriptLog) &&
      ours.name != name) {
    __builtin_trap();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const zu::internal::TraceControlSettings settings = zu::internal::parseTraceControl(bytes);
  for (const std::string& name : settings.timingLogs) checkName(name);
  for (const std::string& name : settings.scriptLogs) checkName(name);

  std::vector<std::string> timingLogs;
  std::vector<std::string> scriptLogs;
  std::size_t start = 0;
  while (start < size) {
    std::size_t end = bytes.find('\n', start);
    if (end == std::string_view::npos) end = size;
    const std::string line(bytes.substr(start, end - start));
    start = end + 1;
    if (line.size() > zu::internal::kTraceControlLineMax) continue;
    const TraceControlLine ours = zu::internal::parseTraceControlLine(line);
    if (ours.kind == TraceControlLine::eTimingLog) timingLogs.push_back(ours.name);
    if (ours.kind == TraceControlLine::eScriptLog) scriptLogs.push_back(ours.name);
    if (line.find('\0') == std::string::npos) compareWithSscanf(line, ours);
  }
  if (timingLogs != settings.timingLogs || scriptLogs != settings.scriptLogs) __builtin_trap();
  return 0;
}
