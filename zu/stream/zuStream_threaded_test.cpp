// Base64 on several threads at once: the free functions share only constant
// tables and the processor check made at first use.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "zu/stream/zuBase64.h"
#include "zu/testing/zuRandomBytes.h"

namespace {

TEST(StreamThreadedTest, ThreadsEncodeAndDecodeIndependently) {
  constexpr int kThreads = 4, kRounds = 200;
  std::atomic<int> agreed{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t, &agreed] {
      for (int round = 0; round < kRounds; ++round) {
        const int seed = t * kRounds + round;
        const std::string bytes = zu::testing::randomBytes(seed * 37 % 2000, seed);
        const zuString text = Base64Encode(bytes.data(), static_cast<unsigned>(bytes.size()), 1);
        std::string decoded(Base64DecodeLength(text.Length()), '\0');
        unsigned length = 0;
        Base64Decode(decoded.data(), length, text);
        if (decoded.substr(0, length) == bytes) ++agreed;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(agreed.load(), kThreads * kRounds);
}

}  // namespace
