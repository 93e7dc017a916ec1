// Mutexes, counters and anchors used across threads (an event posted from
// another thread ends the waits of the zuThread tests).
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

#include "zu/runtime/zuMutex.h"
#include "zu/runtime/zuPerformTimes.h"
#include "zu/runtime/zuTlsAnchor.h"
#include "zu/testing/zuCounted.h"

namespace {

using zu::testing::spin;

TEST(zuMutexTest, ReleaseFromAnotherThreadIsRefused) {
  std::unique_ptr<zuMutex> mutex(zuMutex::NewMutex());
  mutex->Acquire();
  zuSynchRet fromOther;
  std::thread([&] { fromOther = mutex->Release(); }).join();
  EXPECT_EQ(fromOther.ReturnCode(), zuSynchRet::eFailed);
  EXPECT_TRUE(mutex->Acquired());
  mutex->Release();
}

TEST(zuTlsAnchorTest, EachThreadHasItsOwnAnchorReleasedAtExit) {
  std::atomic<int> destroyed{0};
  zuTlsAnchor* mine = zuTlsAnchor::GetTlsAnchor();
  zuTlsAnchor* theirs = nullptr;
  std::thread([&] {
    theirs = zuTlsAnchor::GetTlsAnchor();
    theirs->RegisterTlsObject(new zu::testing::CountedTlsObject(destroyed));
  }).join();
  EXPECT_NE(theirs, mine);
  EXPECT_EQ(destroyed, 1);
}

TEST(zuPerformTimesTest, ThreadTimeIsTheOwnersFromAnyThread) {
  std::unique_ptr<zuPerformTimes> times(zuPerformTimes::NewPerformTimes());
  unsigned long seenByOther = 0;
  // The other thread spins, which must not count as this thread's time.
  std::thread([&] {
    spin(40);
    seenByOther = times->ThreadTime();
  }).join();
  EXPECT_LT(seenByOther, 30u);
}

}  // namespace
