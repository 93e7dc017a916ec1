// Spans in many threads at once: the shared zero values and the readers and
// writers keep no state of their own, so every thread gets the same results.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "zu/measure/zuCoordPair.h"
#include "zu/measure/zuUnitSpan.h"

namespace {

TEST(zuUnitSpanThreadedTest, ThreadsReadAndWriteIndependently) {
  std::atomic<int> faults{0};
  std::vector<std::thread> threads;
  for (int worker = 0; worker < 8; ++worker) {
    threads.emplace_back([&faults, worker] {
      for (int round = 0; round < 500; ++round) {
        const zuUnitSpan read(zuString("6 picas"));
        const zuUnitSpan points(zuUnitSpan::ePoints, worker * 100000 + round);
        const zuString text = points;  // points read back exactly
        const bool right = read == zuUnitSpan(zuString("2.54cm")) && zuUnitSpan(text) == points &&
                           zuUnitSpan::Zero() == zuCoordPair::ZeroZero().X();
        if (!right) ++faults;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(faults.load(), 0);
}

}  // namespace
