#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <string>

#include "zu/runtime/internal/zuTimingControl.h"
#include "zu/runtime/internal/zuTraceClock.h"
#include "zu/runtime/zuTraceHandler.h"
#include "zu/testing/zuCatalogueTestFiles.h"

namespace {

using Handler = zuTraceHandler;

int64_t gNow = 0;
int64_t testClock() {
  return gNow;
}

// A scratch folder, the test clock, and timing as at process start with
// QTV_TRACE_CONTROL unset.
class TimingTest : public ::testing::Test {
 protected:
  void SetUp() override {
    gNow = 1000;
    zu::internal::setTimingClockForTesting(testClock);
    TearDown();
    Handler::resetTiming();
    zu::internal::rearmTimingControlForTesting();
  }
  void TearDown() override {
    unsetenv("QTV_TRACE_CONTROL");
    zu::internal::rearmTimingControlForTesting();
  }
  ~TimingTest() override { zu::internal::setTimingClockForTesting(nullptr); }

  std::string path(const std::string& name) const { return folder_.path() + "/" + name; }
  // Runs `type` for `millis` on the test clock.
  static void run(Handler::TimingType type, int64_t millis) {
    Handler::Timer timer(type);
    gNow += millis;
  }

  const zu::testing::zuScratchFolder folder_;
};

std::string report(const int (&totals)[9], bool nonZeroOnly) {
  static const char* const kLabels[] = {
      "KDLPA_MERGE_TIMING:       ", "KDLPA_LAYOUT_TIMING:      ", "KDLPA_RENDER_TIMING:      ",
      "KDLPA_MERGE_CALC_TIMING:  ", "KDLPA_LAYOUT_CALC_TIMING: ", "KDL_MERGE_ONLY_TIMING:    ",
      "KDL_LAYOUT_ONLY_TIMING:   ", "KDL_SCRIPTS_ONLY_TIMING:  ", "KDL_OPEN_TIMING:          "};
  std::string text = "Timing results (ms):\n";
  for (int line = 0; line < 9; ++line) {
    if (!nonZeroOnly || totals[line] != 0) {
      text += kLabels[line] + std::to_string(totals[line]) + "\n";
    }
  }
  return text + "Timing results complete.\n\n";
}

TEST_F(TimingTest, TimersCountExactlyOnlyWhileTimingIsOn) {
  run(Handler::eLayoutTiming, 30);  // no control file, not switched on
  EXPECT_EQ(Handler::getTimerMilliseconds(Handler::eLayoutTiming), 0);
  Handler::reportTimingResults(0);  // no log: nothing written, nothing thrown

  Handler::timingTraceEnabled(1);
  run(Handler::eLayoutTiming, 30);
  {
    Handler::Timer stopped(Handler::eOpenTiming);
    gNow += 5;
    EXPECT_EQ(Handler::isTimerActive(Handler::eOpenTiming), 1);
    stopped.stopTiming();
    gNow += 100;  // the destructor finds the slot idle
    Handler::Timer restarted(Handler::eTiming20);
    gNow += 50;
    restarted.startTiming();  // the last start wins
    gNow += 7;
  }
  EXPECT_EQ(Handler::getTimerMilliseconds(Handler::eLayoutTiming), 30);
  EXPECT_EQ(Handler::getTimerMilliseconds(Handler::eOpenTiming), 5);
  EXPECT_EQ(Handler::getTimerMilliseconds(Handler::eTiming20), 7);

  const auto outside = static_cast<Handler::TimingType>(21);
  run(outside, 10);  // does nothing and reads 0
  EXPECT_EQ(Handler::getTimerMilliseconds(outside), 0);
  EXPECT_EQ(Handler::isTimerActive(outside), 0);

  // Marks are 64-bit past 24.8 days of uptime; totals wrap at 32 bits.
  gNow = int64_t{1} << 40;
  run(Handler::eRenderTiming, 0x7FFFFFFF);
  run(Handler::eRenderTiming, 2);
  EXPECT_EQ(Handler::getTimerMilliseconds(Handler::eRenderTiming), -0x7FFFFFFF);
  Handler::resetTiming(Handler::eRenderTiming);
  EXPECT_EQ(Handler::getTimerMilliseconds(Handler::eRenderTiming), 0);
  EXPECT_EQ(Handler::getTimerMilliseconds(Handler::eLayoutTiming), 30);
  zuTraceHandler().activate(zuString("timing:0"));  // off, every timer reset
  EXPECT_EQ(Handler::timingTraceEnabled(), 0);
  EXPECT_EQ(Handler::getTimerMilliseconds(Handler::eLayoutTiming), 0);
}

TEST_F(TimingTest, ReportsByteForByteToTheTimingLog) {
  folder_.write("control",
                "timinglog=" + path("timing.log") + "\r\nscriptlog=" + path("script.log") + "\n");
  setenv("QTV_TRACE_CONTROL", path("control").c_str(), 1);
  Handler::Timer open(Handler::eOpenTiming);  // the first timing call reads the file
  run(Handler::eMergeTiming, 3);
  run(Handler::eScriptsOnlyTiming, 14);
  run(Handler::eTiming5, 99);  // counted, not reported
  Handler::reportTimingResults(0);
  Handler::reportTimingResults(1);  // totals cleared afterwards, marks kept
  Handler::reportTimingResults(0);
  const int totals[9] = {3, 0, 0, 0, 0, 0, 0, 14, 0};
  const int zero[9] = {};
  const std::string first = report(totals, false) + report(totals, false) + report(zero, false);
  EXPECT_EQ(folder_.read("timing.log"), first);

  // Re-read at each report: the script log is gone, nonZeroOnly now set.
  folder_.write("control", "nonZeroOnly=1\ntiminglog=" + path("timing.log") + "\n");
  run(Handler::eMergeTiming, 3);
  run(Handler::eScriptsOnlyTiming, 14);
  Handler::reportScriptInfo("not written");
  Handler::reportTimingResults(0);
  EXPECT_EQ(folder_.read("timing.log"), first + report(totals, true));
  EXPECT_EQ(folder_.read("script.log"), "");
  open.stopTiming();
  EXPECT_EQ(Handler::getTimerMilliseconds(Handler::eOpenTiming), 3 + 14 + 99 + 3 + 14);
}

TEST_F(TimingTest, ControlFileKeysAndFailures) {
  // The first script log that opens wins.
  folder_.write("control", "scriptlog=" + path("missing/folder/script.log") + "\nscriptlog=" +
                               path("script.log") + "\nscriptlog=" + path("second.log") + "\n");
  setenv("QTV_TRACE_CONTROL", path("control").c_str(), 1);
  EXPECT_EQ(Handler::scriptLoggingEnabled(), 1);
  Handler::reportScriptInfo("first");
  Handler::reportScriptInfo(nullptr);
  Handler::timingTraceEnabled(0);
  Handler::reportScriptInfo("second");  // re-read: timing on again
  EXPECT_EQ(Handler::timingTraceEnabled(), 1);
  EXPECT_EQ(folder_.read("script.log"), "first\nsecond\n");
  EXPECT_NE(access(path("second.log").c_str(), F_OK), 0);

  // Missing or a folder: timing on, no log, nothing thrown. What a file's
  // lines say is read by a parser with a test of its own.
  for (const std::string& control : {path("no-such-file"), folder_.path()}) {
    zu::internal::rearmTimingControlForTesting();
    setenv("QTV_TRACE_CONTROL", control.c_str(), 1);
    Handler::initializeTiming();
    EXPECT_EQ(Handler::timingTraceEnabled(), 1) << control;
    EXPECT_EQ(Handler::scriptLoggingEnabled(), 0) << control;
    Handler::reportTimingResults(1);
  }
  zu::internal::rearmTimingControlForTesting();
  setenv("QTV_TRACE_CONTROL", "", 1);  // set but empty counts as unset
  Handler::initializeTiming();
  EXPECT_EQ(Handler::timingTraceEnabled(), 0);
}

}  // namespace
