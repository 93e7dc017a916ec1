// Converters shared by many threads: each thread opens its own ICU
// converters in its own cache, so the results never mix; a cache that
// another thread destroys is made anew, never used again.
#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "zu/core/internal/zuConverterCache.h"
#include "zu/core/zuGxCharConverter.h"
#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/testing/zuConverted.h"

namespace {

using zu::internal::zuConverterCache;

TEST(zuCharConverterThreadedTest, ThreadsConvertWithOwnCachesThatSurviveAReset) {
  // Shared, read-only converters; each thread cycles through more encodings
  // than a cache holds so that it keeps opening and closing.
  const zuGxCharConverter encodings[] = {
      zuGxCharConverter("SJIS"),     zuGxCharConverter("GBK"),          zuGxCharConverter("Big5"),
      zuGxCharConverter("KSC_5601"), zuGxCharConverter("GB18030"),      zuGxCharConverter("latin2"),
      zuGxCharConverter("greek"),    zuGxCharConverter("windows-1251"), zuGxCharConverter("UTF-7"),
      zuGxCharConverter("UTF-16BE")};
  // ASCII and one kanji to the encoding and back ("?" where it is missing).
  auto roundTrip = [](const zuCharConverter& encoding) {
    const zuCharConverter& utf8 = *zuCharConverter::UTF8();
    const std::string bytes = zu::testing::converted(encoding, utf8, "abc \xE6\x97\xA5 123");
    return bytes + "|" + zu::testing::converted(utf8, encoding, bytes);
  };
  std::vector<std::string> expected;  // what one thread alone gets
  for (const auto& encoding : encodings) expected.push_back(roundTrip(encoding));

  // Half way, every thread waits while this one destroys its cache; the
  // thread must then make a new one instead of using the one it remembered.
  constexpr int kThreads = 8;
  std::latch waiting(kThreads + 1);
  std::latch reset(kThreads + 1);
  std::vector<unsigned int> threadIds(kThreads);
  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      threadIds[t] = zuThreadLocalStorage::getThreadId();
      for (int round = 0; round < 200; ++round) {
        if (round == 100) {
          waiting.arrive_and_wait();
          reset.arrive_and_wait();
        }
        const std::size_t index = static_cast<std::size_t>(t + round) % std::size(encodings);
        if (roundTrip(encodings[index]) != expected[index]) ++failures;
      }
      if (zuConverterCache::current().size() != zuConverterCache::kCapacity) ++failures;
    });
  }
  waiting.arrive_and_wait();
  for (unsigned int id : threadIds) {
    zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::eCharConverterCache, id);
  }
  reset.arrive_and_wait();
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);
}

}  // namespace
