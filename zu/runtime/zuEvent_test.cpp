#include "zu/runtime/zuEvent.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

namespace {

std::unique_ptr<zuEvent> makeEvent(zuEvent::ResetType type) {
  std::unique_ptr<zuEvent> event(zuEvent::NewEvent(type));
  EXPECT_TRUE(event->Valid());
  return event;
}

TEST(zuEventTest, UnpostedWaitTimesOut) {
  auto event = makeEvent(zuEvent::eAutomaticReset);
  EXPECT_FALSE(event->Posted());
  EXPECT_EQ(event->Wait(0).ReturnCode(), zuSynchRet::eTimedOut);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(event->Wait(30).ReturnCode(), zuSynchRet::eTimedOut);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
}

TEST(zuEventTest, AutomaticResetReleasesOneWait) {
  auto event = makeEvent(zuEvent::eAutomaticReset);
  EXPECT_EQ(event->GetResetType(), zuEvent::eAutomaticReset);
  EXPECT_TRUE(event->Post().Ok());
  EXPECT_TRUE(event->Posted());
  EXPECT_TRUE(event->Wait(0).Ok());
  EXPECT_FALSE(event->Posted());
  EXPECT_EQ(event->Wait(0).ReturnCode(), zuSynchRet::eTimedOut);
  event->Post();
  EXPECT_TRUE(event->WaitForever().Ok());
  EXPECT_FALSE(event->Posted());
}

TEST(zuEventTest, ManualResetStaysPostedUntilReset) {
  auto event = makeEvent(zuEvent::eManualReset);
  EXPECT_NE(event->GetResetType(), 0);
  event->Post();
  EXPECT_TRUE(event->Wait(0).Ok());
  EXPECT_TRUE(event->WaitForever().Ok());
  EXPECT_TRUE(event->Posted());
  EXPECT_TRUE(event->Reset().Ok());
  EXPECT_FALSE(event->Posted());
  EXPECT_EQ(event->Wait(0).ReturnCode(), zuSynchRet::eTimedOut);
}

}  // namespace
