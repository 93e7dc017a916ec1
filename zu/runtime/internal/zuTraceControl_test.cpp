#include "zu/runtime/internal/zuTraceControl.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using zu::internal::parseTraceControl;
using zu::internal::parseTraceControlLine;
using zu::internal::TraceControlLine;

TEST(zuTraceControlTest, ReadsEachLineByItsKey) {
  using namespace std::string_literals;
  const struct {
    std::string line;
    TraceControlLine::Kind kind;
    std::string name;
    bool nonZero;
  } cases[] = {
      {"timinglog=/tmp/t.log", TraceControlLine::eTimingLog, "/tmp/t.log", false},
      {"scriptlog= \t\v\f/tmp/s.log", TraceControlLine::eScriptLog, "/tmp/s.log", false},
      {"timinglog=/tmp/a b", TraceControlLine::eTimingLog, "/tmp/a", false},
      {"timinglog=/tmp/crlf\r", TraceControlLine::eTimingLog, "/tmp/crlf", false},
      {"timinglog=/tmp/nul\0tail"s, TraceControlLine::eTimingLog, "/tmp/nul", false},
      {"timinglog=", TraceControlLine::eIgnored, "", false},
      {" timinglog=/tmp/t", TraceControlLine::eIgnored, "", false},  // only at the start
      {"nonZeroOnly=0", TraceControlLine::eNonZeroOnly, "", false},
      {"nonZeroOnly= \t-0007x", TraceControlLine::eNonZeroOnly, "", true},
      {"nonZeroOnly=99999999999999999999", TraceControlLine::eNonZeroOnly, "", true},
      {"nonZeroOnly=x1", TraceControlLine::eIgnored, "", false},
      {"", TraceControlLine::eIgnored, "", false},
  };
  for (const auto& c : cases) {
    const TraceControlLine line = parseTraceControlLine(c.line);
    EXPECT_EQ(line.kind, c.kind) << c.line;
    EXPECT_EQ(line.name, c.name) << c.line;
    EXPECT_EQ(line.nonZero, c.nonZero) << c.line;
  }
}

TEST(zuTraceControlTest, ReadsAWholeFile) {
  const std::string longName(1023 - 10, 'n');  // "timinglog=" + name: 1,023 bytes
  const std::string file = "timinglog=/first\r\nnonZeroOnly=1\r\n" +
                           ("scriptlog=" + std::string(1014, 's')) + "\n" +  // 1,024: skipped
                           ("timinglog=" + longName) + "\nunknown line\ntiminglog=/second\n" +
                           "nonZeroOnly=2\nnonZeroOnly=0\nnonZeroOnly=nothing\n" +
                           "scriptlog=/script";  // no final line feed
  const auto settings = parseTraceControl(file);
  EXPECT_EQ(settings.timingLogs, (std::vector<std::string>{"/first", longName, "/second"}));
  EXPECT_EQ(settings.scriptLogs, (std::vector<std::string>{"/script"}));
  EXPECT_FALSE(settings.nonZeroOnly);  // the last number read was 0
}

}  // namespace
