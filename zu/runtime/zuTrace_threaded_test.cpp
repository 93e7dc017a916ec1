#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/runtime/zuTrace.h"
#include "zu/runtime/zuTraceHandler.h"
#include "zu/testing/zuCapturedStdout.h"

namespace {

zuTrace gShared("mt-shared", 1);

TEST(zuTraceThreadedTest, ThirtyTwoThreadsPrintWholeLines) {
  constexpr int kTracers = 32;
  constexpr int kMessages = 150;
  std::vector<unsigned int> threadIds(kTracers);
  const std::string out = zu::testing::capturedStdout([&threadIds] {
    std::atomic<bool> tracing{true};
    std::vector<std::thread> threads;
    for (int tracer = 0; tracer < kTracers; ++tracer) {
      threads.emplace_back([tracer, &threadIds] {
        threadIds[tracer] = zuThreadLocalStorage::getThreadId();
        zuTraceHandler handler;
        zuTraceHandler::registerTraceHandler(&handler);
        handler.activate(zuString("mt-shared:1 mt-byname:2"));
        for (int message = 0; message < kMessages; ++message) {
          char text[32];
          std::snprintf(text, sizeof text, "T%d %d", tracer, message);
          gShared.trace(1, message, zuString(text));
          zuTrace::trace(zuString("mt-byname"), 2, message, zuString(text));
          gShared.trace(2, message, zuString(text));  // above the level: not printed
        }
      });
    }
    // Traces made and destroyed, names activated, timers run and reported,
    // all while the tracers print.
    zuTraceHandler::timingTraceEnabled(1);
    for (int churner = 0; churner < 4; ++churner) {
      threads.emplace_back([churner, &tracing] {
        zuTraceHandler handler;
        for (int round = 0; tracing.load() || round < 50; ++round) {
          const zuTrace made("mt-churn", 1);
          char name[32];
          std::snprintf(name, sizeof name, "mt-new-%d-%d:1", churner, round);
          handler.activate(zuString(name));
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

  ASSERT_TRUE(out.ends_with('\n'));
  std::istringstream lines(out);
  std::vector<int> counts(kTracers);  // lines of each tracer
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    char name[64];
    unsigned int messageId = 0, threadId = 0;
    int tracer = 0, message = 0, consumed = 0;
    ASSERT_EQ(std::sscanf(line.c_str(), "%63s trace: mid=%u tid=%u msg: T%d %d%n", name, &messageId,
                          &threadId, &tracer, &message, &consumed),
              5)
        << line;
    ASSERT_EQ(consumed, static_cast<int>(line.size())) << line;  // one whole line
    ASSERT_TRUE(tracer >= 0 && tracer < kTracers) << line;
    EXPECT_TRUE(std::string(name) == "mt-shared" || std::string(name) == "mt-byname") << line;
    EXPECT_EQ(threadId, threadIds[tracer]) << line;
    EXPECT_EQ(messageId, static_cast<unsigned int>(message)) << line;
    ++counts[tracer];
  }
  EXPECT_EQ(count, 2 * kTracers * kMessages);
  EXPECT_EQ(counts, std::vector<int>(kTracers, 2 * kMessages));
}

}  // namespace
