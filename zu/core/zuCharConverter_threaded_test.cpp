// Converters shared by many threads: each thread opens its own ICU
// converters in its own cache, so the results never mix.
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

TEST(zuCharConverterThreadedTest, ThreadsConvertConcurrentlyWithOwnCaches) {
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

  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < 200; ++round) {
        const std::size_t index = static_cast<std::size_t>(t + round) % std::size(encodings);
        if (roundTrip(encodings[index]) != expected[index]) ++failures;
      }
      if (zuConverterCache::current().size() != zuConverterCache::kCapacity) ++failures;
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);
}

// Another thread destroys a waiting thread's converter cache; the waiting
// thread must then make a new one instead of using the one it remembered.
TEST(zuCharConverterThreadedTest, CacheResetByAnotherThreadIsNotReused) {
  const zuGxCharConverter latin1("ISO-8859-1");
  std::latch ready(2);
  std::latch reset(2);
  unsigned int workerId = 0;
  std::string before;
  std::string after;
  std::thread worker([&] {
    workerId = zuThreadLocalStorage::getThreadId();
    char out[16] = {};
    zuCharConverter::UTF8()->Convert(out, sizeof out, &latin1, "caf\xE9", 4);
    before = out;
    ready.arrive_and_wait();
    reset.arrive_and_wait();
    zuCharConverter::UTF8()->Convert(out, sizeof out, &latin1, "na\xEFve", 5);
    after = out;
  });
  ready.arrive_and_wait();
  zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::eCharConverterCache, workerId);
  reset.arrive_and_wait();
  worker.join();
  EXPECT_EQ(before, "caf\xC3\xA9");
  EXPECT_EQ(after, "na\xC3\xAFve");
}

}  // namespace
