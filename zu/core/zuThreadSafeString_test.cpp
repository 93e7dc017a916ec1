#include "zu/core/zuThreadSafeString.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

namespace {

// Many threads share, copy, edit and release one global block at once. When
// every thread has finished, the block must have exactly one owner again:
// an edit of the original then happens in place.
TEST(zuThreadSafeStringTest, SharedBlockSurvivesConcurrentCopies) {
  zuThreadSafeString shared("payload shared by every thread");
  constexpr int kThreads = 4;
  constexpr int kRounds = 5000;
  std::atomic<int> mismatches{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&shared, &mismatches] {
      for (int round = 0; round < kRounds; ++round) {
        zuString reader(shared);
        zuThreadSafeString writer;
        writer = reader;
        if (!writer.SharesImpl(shared) || !reader.IsGlobal()) ++mismatches;
        writer += "!";  // copy on write, releasing the shared block
        if (writer.SharesImpl(shared)) ++mismatches;
        if (std::strcmp(reader, "payload shared by every thread") != 0) ++mismatches;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(mismatches.load(), 0);

  const char* before = shared;
  shared.Set(0, 'P');
  EXPECT_EQ(static_cast<const char*>(shared), before);
  EXPECT_STREQ(shared, "Payload shared by every thread");
}

}  // namespace
