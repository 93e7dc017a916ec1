#include "zu/runtime/zuTlsAnchor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "zu/testing/zuCounted.h"

namespace {

using Counted = zu::testing::CountedTlsObject;

// Objects die with their thread's anchor: at exit, at ThreadExitCleanup, or
// when the singletons are released.
TEST(zuTlsAnchorTest, ObjectsGetConsecutiveIndicesAndDieWithTheAnchor) {
  std::atomic<int> destroyed{0};
  zuTlsAnchor* anchor = zuTlsAnchor::GetTlsAnchor();
  EXPECT_EQ(zuTlsAnchor::GetTlsAnchor(), anchor);
  auto* first = new Counted(destroyed);
  auto* second = new Counted(destroyed);
  const int firstIndex = anchor->RegisterTlsObject(first);
  const int secondIndex = anchor->RegisterTlsObject(second);
  EXPECT_EQ(secondIndex, firstIndex + 1);
  EXPECT_EQ(anchor->Object(secondIndex), second);
  EXPECT_EQ(anchor->Object(secondIndex + 1), nullptr);
  EXPECT_EQ(anchor->RegisterTlsObject(nullptr), -1);

  zuTlsAnchor::ThreadExitCleanup();
  EXPECT_EQ(destroyed, 2);
  zuTlsAnchor::ThreadExitCleanup();  // no anchor: nothing
  EXPECT_EQ(zuTlsAnchor::GetTlsAnchor()->Object(firstIndex), nullptr);

  // Another thread has its own anchor, released when it exits.
  zuTlsAnchor* theirs = nullptr;
  std::thread([&] {
    theirs = zuTlsAnchor::GetTlsAnchor();
    theirs->RegisterTlsObject(new Counted(destroyed));
  }).join();
  EXPECT_NE(theirs, zuTlsAnchor::GetTlsAnchor());
  EXPECT_EQ(destroyed, 3);

  zuTlsAnchor::GetTlsAnchor()->RegisterTlsObject(new Counted(destroyed));
  zuTlsAnchor::ReleaseTlsAnchorSingletons();
  EXPECT_EQ(destroyed, 4);
  EXPECT_NE(zuTlsAnchor::GetTlsAnchor(), nullptr);  // the slot is made again
  zuTlsAnchor::ThreadExitCleanup();
}

}  // namespace
