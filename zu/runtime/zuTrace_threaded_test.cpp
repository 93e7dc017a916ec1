#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "zu/runtime/zuTrace.h"
#include "zu/runtime/zuTraceHandler.h"
#include "zu/testing/zuCapturedStdout.h"

namespace {

zuTrace gShared("mt-shared", 1);

// Tracers print through their own handlers while churners make and destroy
// traces (the registry), teach handlers new names and run timers (the
// process-wide slots); every line comes out whole and none is lost.
TEST(zuTraceThreadedTest, ThreadsPrintWholeLinesWhileTracesAndTimersChurn) {
  constexpr int kTracers = 8, kMessages = 150;
  const std::string out = zu::testing::capturedStdout([] {
    std::atomic<bool> tracing{true};
    std::vector<std::thread> threads;
    for (int tracer = 0; tracer < kTracers; ++tracer) {
      threads.emplace_back([tracer] {
        zuTraceHandler handler;
        zuTraceHandler::registerTraceHandler(&handler);
        handler.activate(zuString("mt-shared:1 mt-byname:2"));
        for (int message = 0; message < kMessages; ++message) {
          const zuString text(std::to_string(tracer).c_str());
          gShared.trace(1, message, text);
          zuTrace::trace(zuString("mt-byname"), 2, message, text);
        }
      });
    }
    zuTraceHandler::timingTraceEnabled(1);
    for (int churner = 0; churner < 4; ++churner) {
      threads.emplace_back([churner, &tracing] {
        zuTraceHandler handler;
        for (int round = 0; tracing.load() || round < 50; ++round) {
          const zuTrace made("mt-churn", 1);
          handler.activate(zuString(("mt-new-" + std::to_string(round) + ":1").c_str()));
          zuTraceHandler::Timer timer(zuTraceHandler::eTiming7);
          if (churner == 0) zuTraceHandler::reportTimingResults(1);
        }
      });
    }
    for (int tracer = 0; tracer < kTracers; ++tracer) threads[tracer].join();
    tracing = false;
    for (std::size_t other = kTracers; other < threads.size(); ++other) threads[other].join();
    zuTraceHandler::timingTraceEnabled(0);
    zuTraceHandler::resetTiming();
  });

  EXPECT_TRUE(out.ends_with('\n'));
  std::istringstream lines(out);
  std::vector<int> counts(kTracers);  // lines of each tracer
  for (std::string line; std::getline(lines, line);) {
    int tracer = -1, consumed = 0;
    ASSERT_EQ(
        std::sscanf(line.c_str(), "mt-%*s trace: mid=%*u tid=%*u msg: %d%n", &tracer, &consumed), 1)
        << line;
    ASSERT_TRUE(consumed == static_cast<int>(line.size()) && tracer >= 0 && tracer < kTracers)
        << line;  // one whole line
    ++counts[tracer];
  }
  EXPECT_EQ(counts, std::vector<int>(kTracers, 2 * kMessages));
}

}  // namespace
