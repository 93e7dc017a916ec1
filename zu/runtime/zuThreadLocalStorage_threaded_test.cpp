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
using Counted = zu::testing::CountedStorage;

// Seventy threads (the sixty-fifth appends a block to the table) claim
// entries, set, read and reset their slots and drop their whole entry, all
// at once; each then takes a fresh entry, which its exit frees with the
// objects in it.
TEST(zuThreadLocalStorageThreadedTest, ThreadsClaimUseAndFreeEntriesAtOnce) {
  constexpr int kThreads = 70;
  constexpr int kIterations = 300;
  ThreadTable& table = ThreadTable::instance();
  const unsigned int inUseBefore = table.entriesInUse();
  std::atomic<int> registered{0}, created{0}, destroyed{0}, mixedUp{0};
  std::unique_ptr<zuEvent> allRegistered(zuEvent::NewEvent(zuEvent::eManualReset));
  std::unique_ptr<zuEvent> finish(zuEvent::NewEvent(zuEvent::eManualReset));
  std::vector<unsigned int> ids(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      const unsigned int self = ids[t] = Tls::getThreadId();
      for (int i = 0; i < kIterations; ++i) {
        const auto slot = static_cast<Tls::eCacheType>(i % Tls::eCacheTypeCount);
        if (Tls::getThreadStorage(slot, self) == nullptr) {
          auto* mine = new Counted(destroyed);
          ++created;
          Tls::setThreadStorage(slot, mine);
          mixedUp += Tls::getThreadStorage(slot) != mine;
        }
        if (i % 7 == 0) Tls::resetThreadStorage(slot);
      }
      Tls::resetThreadStorage(0u);  // the whole entry, before exit
      mixedUp += table.find(self) != nullptr;
      for (Tls::eCacheType slot : {Tls::eCharConverterCache, Tls::eAtomTable}) {
        mixedUp += Tls::getThreadStorage(slot) != nullptr;
        Tls::setThreadStorage(slot, new Counted(destroyed));
        ++created;
      }
      if (++registered == kThreads) allRegistered->Post();
      finish->WaitForever();
    });
  }
  ASSERT_TRUE(allRegistered->Wait(60000).Ok());
  EXPECT_GE(table.blockCount(), 2u);
  EXPECT_EQ(table.entriesInUse(), inUseBefore + kThreads);
  finish->Post();
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(mixedUp.load(), 0);
  EXPECT_EQ(destroyed.load(), created.load());
  EXPECT_EQ(table.entriesInUse(), inUseBefore);
  for (unsigned int id : ids) EXPECT_EQ(table.find(id), nullptr);
}

}  // namespace
