// Base64 and memory streams on several threads at once: the free functions
// share only constant tables, and each thread's stream is its own.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "zu/stream/zuBase64.h"
#include "zu/stream/zuBase64StreamTransformer.h"
#include "zu/stream/zuMemoryStreamFile.h"
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
        const unsigned n = static_cast<unsigned>(bytes.size());
        zuMemoryStreamFile file(0, zuFileMode::eReadWrite, 0, 0, 0);
        file.Write(bytes.data(), n);
        file.PushTransformer(new zuBase64StreamTransformer);
        const zuString text = file.toString();
        std::string decoded(Base64DecodeLength(text.Length()), '\0');
        unsigned length = 0;
        Base64Decode(decoded.data(), length, text);
        if (decoded.substr(0, length) == bytes &&
            std::string(Base64Encode(bytes.data(), n, 1)) == std::string(text, text.Length())) {
          ++agreed;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(agreed.load(), kThreads * kRounds);
}

}  // namespace
