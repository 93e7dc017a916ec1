#include "zu/runtime/zuEvent.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(zuEventTest, AutomaticResetReleasesOneWaitManualStaysPosted) {
  for (zuEvent::ResetType type : {zuEvent::eAutomaticReset, zuEvent::eManualReset}) {
    SCOPED_TRACE(type);
    const std::unique_ptr<zuEvent> event(zuEvent::NewEvent(type));
    ASSERT_TRUE(event->Valid());
    EXPECT_EQ(event->Wait(0).ReturnCode(), zuSynchRet::eTimedOut);
    EXPECT_TRUE(event->Post().Ok());
    EXPECT_TRUE(event->Posted());
    EXPECT_TRUE(event->WaitForever().Ok());
    EXPECT_EQ(event->Posted(), type == zuEvent::eManualReset);
    EXPECT_EQ(event->Wait(0).Ok(), type == zuEvent::eManualReset);
    EXPECT_TRUE(event->Reset().Ok());
    EXPECT_FALSE(event->Posted());
  }
}

}  // namespace
