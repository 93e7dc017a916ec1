#include "zu/runtime/zuThreadLocalStorage.h"

#include <gtest/gtest.h>

#include <atomic>

#include "zu/core/zuException.h"
#include "zu/runtime/internal/zuThreadTable.h"
#include "zu/testing/zuCounted.h"
#include "zu/testing/zuThrown.h"

namespace {

using Tls = zuThreadLocalStorage;

using zu::testing::CountedStorage;

TEST(zuThreadLocalStorageTest, SlotNumbersAreChecked) {
  using zu::testing::thrown;
  EXPECT_TRUE(
      thrown([] { Tls::getThreadStorage(static_cast<Tls::eCacheType>(-1)); }).HasResId(16479));
  EXPECT_TRUE(thrown([] { Tls::setThreadStorage(Tls::eCacheTypeCount, nullptr); }).HasResId(16479));
  EXPECT_TRUE(thrown([] { Tls::resetThreadStorage(Tls::eCacheTypeCount); }).HasResId(16479));
  EXPECT_NO_THROW(Tls::getThreadStorage(Tls::eUnusedSlot13));
}

// Dropping the whole entry, and slots used by many threads at once:
// zuThreadLocalStorage_threaded_test.
TEST(zuThreadLocalStorageTest, FirstQueryRegistersSetNeedsAnEntryAndResetDestroys) {
  Tls::resetThreadStorage(0u);
  auto& table = zu::internal::ThreadTable::instance();
  const unsigned int self = Tls::getThreadId();
  std::atomic<int> destroyed{0};
  auto* early = new CountedStorage(destroyed);
  Tls::setThreadStorage(Tls::eAtomTable, early);  // no entry yet: ignored
  EXPECT_EQ(table.find(self), nullptr);
  delete early;
  destroyed = 0;

  EXPECT_EQ(Tls::getThreadStorage(Tls::eAtomTable), nullptr);
  EXPECT_NE(table.find(self), nullptr);
  auto* trace = new CountedStorage(destroyed);
  Tls::setThreadStorage(Tls::eTraceHandler, trace, self);
  EXPECT_EQ(Tls::getThreadStorage(Tls::eTraceHandler, 0), trace);
  Tls::resetThreadStorage(Tls::eTraceHandler);
  Tls::resetThreadStorage(Tls::eTraceHandler);  // an empty slot: nothing
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(Tls::getThreadStorage(Tls::eTraceHandler), nullptr);
}

// A holder that, while being destroyed, still reaches for the block cache.
struct CacheUser : zuThreadStorage {
  explicit CacheUser(zuThreadStorage** seen) : seen_(seen) {}
  ~CacheUser() override { *seen_ = Tls::getThreadStorage(Tls::eCacheManager); }
  zuThreadStorage** seen_;
};

TEST(zuThreadLocalStorageTest, BlockCacheOutlivesTheOtherSlots) {
  std::atomic<int> destroyed{0};
  zuThreadStorage* seenByTrace = nullptr;
  zuThreadStorage* seenByConverters = nullptr;
  Tls::getThreadStorage(Tls::eCacheManager);
  auto* cache = new CountedStorage(destroyed);
  Tls::setThreadStorage(Tls::eCacheManager, cache);
  Tls::setThreadStorage(Tls::eCharConverterCache, new CacheUser(&seenByConverters));
  Tls::setThreadStorage(Tls::eTraceHandler, new CacheUser(&seenByTrace));
  Tls::resetThreadStorage(0u);
  EXPECT_EQ(seenByConverters, cache);
  EXPECT_EQ(seenByTrace, cache);
  EXPECT_EQ(destroyed, 1);
}

}  // namespace
