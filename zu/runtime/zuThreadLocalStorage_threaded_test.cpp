#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "zu/runtime/internal/zuThreadTable.h"
#include "zu/runtime/zuEvent.h"
#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/testing/zuCounted.h"

namespace {

using Tls = zuThreadLocalStorage;
using zu::internal::ThreadTable;

#if defined(__SANITIZE_THREAD__)
constexpr int kHammerIterations = 300;
#else
constexpr int kHammerIterations = 2000;
#endif

using Counted = zu::testing::CountedStorage;

void fillSlots(std::atomic<int>* destroyed) {
  for (Tls::eCacheType slot : {Tls::eCharConverterCache, Tls::eAtomTable, Tls::eCacheManager}) {
    EXPECT_EQ(Tls::getThreadStorage(slot), nullptr);
    Tls::setThreadStorage(slot, new Counted(*destroyed));
  }
}

void joinAll(std::vector<std::thread>& threads) {
  for (std::thread& thread : threads) thread.join();
  threads.clear();
}

TEST(zuThreadLocalStorageThreadedTest, SixtyFifthThreadAppendsABlockAndExitsFreeEntries) {
  ThreadTable& table = ThreadTable::instance();
  const unsigned int inUseBefore = table.entriesInUse();
  constexpr int kThreads = 70;
  std::atomic<int> registered{0};
  std::atomic<int> destroyed{0};
  std::unique_ptr<zuEvent> allRegistered(zuEvent::NewEvent(zuEvent::eManualReset));
  std::unique_ptr<zuEvent> finish(zuEvent::NewEvent(zuEvent::eManualReset));
  std::vector<unsigned int> ids(kThreads);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      ids[i] = Tls::getThreadId();
      fillSlots(&destroyed);
      if (++registered == kThreads) allRegistered->Post();
      finish->WaitForever();
    });
  }
  ASSERT_TRUE(allRegistered->Wait(60000).Ok());
  EXPECT_GE(table.blockCount(), 2u);
  EXPECT_EQ(table.entriesInUse(), inUseBefore + kThreads);
  finish->Post();
  joinAll(threads);

  EXPECT_EQ(destroyed, 3 * kThreads);
  EXPECT_EQ(table.entriesInUse(), inUseBefore);
  for (unsigned int id : ids) EXPECT_EQ(table.find(id), nullptr);

  // A second wave as large claims the freed entries again, with empty
  // slots; the chain does not grow.
  const unsigned int blocks = table.blockCount();
  for (int i = 0; i < kThreads; ++i) threads.emplace_back([&] { fillSlots(&destroyed); });
  joinAll(threads);
  EXPECT_EQ(table.blockCount(), blocks);
  EXPECT_EQ(table.entriesInUse(), inUseBefore);
  EXPECT_EQ(destroyed, 2 * 3 * kThreads);
}

TEST(zuThreadLocalStorageThreadedTest, ExplicitResetBeforeExitStaysValid) {
  std::atomic<int> destroyed{0};
  unsigned int id = 0;
  std::thread([&] {
    id = Tls::getThreadId();
    fillSlots(&destroyed);
    Tls::resetThreadStorage(0u);
    EXPECT_EQ(destroyed, 3);
    fillSlots(&destroyed);  // a fresh entry, released at exit
  }).join();
  EXPECT_EQ(destroyed, 6);
  EXPECT_EQ(ThreadTable::instance().find(id), nullptr);
}

TEST(zuThreadLocalStorageThreadedTest, ConcurrentGetSetAndThreadTurnover) {
  constexpr int kWorkers = 8;
  std::atomic<int> created{0};
  std::atomic<int> destroyed{0};
  std::atomic<bool> mixedUp{false};
  std::vector<std::thread> threads;
  for (int w = 0; w < kWorkers; ++w) {
    threads.emplace_back([&] {
      const unsigned int self = Tls::getThreadId();
      for (int i = 0; i < kHammerIterations; ++i) {
        const auto slot = static_cast<Tls::eCacheType>(i % Tls::eCacheTypeCount);
        if (Tls::getThreadStorage(slot, self) == nullptr) {
          auto* mine = new Counted(destroyed);
          ++created;
          Tls::setThreadStorage(slot, mine);
          if (Tls::getThreadStorage(slot) != mine) mixedUp = true;
        }
        if (i % 7 == 0) Tls::resetThreadStorage(slot);
        if (i % 500 == 0) Tls::resetThreadStorage(0u);
      }
    });
  }
  // Short-lived threads claim and free entries while the workers scan.
  threads.emplace_back([&] {
    for (int i = 0; i < kHammerIterations / 50; ++i) {
      std::thread([&] {
        Tls::getThreadStorage(Tls::eAtomTable);
        Tls::setThreadStorage(Tls::eAtomTable, new Counted(destroyed));
        ++created;
      }).join();
    }
  });
  joinAll(threads);
  EXPECT_FALSE(mixedUp);
  EXPECT_EQ(destroyed, created);
}

}  // namespace
