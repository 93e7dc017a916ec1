#include "zu/runtime/zuThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

#include "zu/runtime/zuEvent.h"
#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/runtime/zuTlsAnchor.h"
#include "zu/testing/zuCounted.h"

namespace {

using zu::testing::CountedStorage;
using zu::testing::CountedTlsObject;

// What the three functions saw, and two events to hold the work function.
struct Probe {
  std::unique_ptr<zuEvent> running{zuEvent::NewEvent(zuEvent::eManualReset)};
  std::unique_ptr<zuEvent> release{zuEvent::NewEvent(zuEvent::eManualReset)};
  std::atomic<zuThread*> thread{nullptr};
  std::atomic<int> startUpState{-1}, workState{-1}, stateAfterStop{-1}, exitState{-1};
  std::atomic<bool> workHadPerformance{false};
  std::atomic<int> slotObjectsDestroyed{0}, anchorObjectsDestroyed{0};
};

unsigned int startUp(void* arg) {
  auto* probe = static_cast<Probe*>(arg);
  while (probe->thread == nullptr) zuThread::zuSleep(1);
  probe->startUpState = probe->thread.load()->State();
  return 0;
}

unsigned int work(void* arg) {
  auto* probe = static_cast<Probe*>(arg);
  probe->workState = probe->thread.load()->State();
  probe->workHadPerformance = probe->thread.load()->Performance() != nullptr;
  zuThreadLocalStorage::getThreadStorage(zuThreadLocalStorage::eTraceHandler);
  zuThreadLocalStorage::setThreadStorage(zuThreadLocalStorage::eTraceHandler,
                                         new CountedStorage(probe->slotObjectsDestroyed));
  zuTlsAnchor::GetTlsAnchor()->RegisterTlsObject(
      new CountedTlsObject(probe->anchorObjectsDestroyed));
  probe->running->Post();
  probe->release->WaitForever();
  probe->stateAfterStop = probe->thread.load()->State();
  return 0;
}

unsigned int onExit(void* arg) {
  auto* probe = static_cast<Probe*>(arg);
  probe->exitState = probe->thread.load()->State();
  return 0;
}

TEST(zuThreadTest, BodyRunsThroughTheStatesAndCleansUp) {
  Probe probe;
  std::unique_ptr<zuThread> thread(
      zuThread::NewThread(0, zuThread::eBelowNormal, nullptr, &probe, startUp, onExit));
  ASSERT_TRUE(thread->Created());
  probe.thread = thread.get();

  EXPECT_TRUE(thread->Start(work, &probe).Ok());
  ASSERT_TRUE(probe.running->Wait(10000).Ok());
  EXPECT_EQ(probe.startUpState, zuThread::eCreated);
  EXPECT_EQ(probe.workState, zuThread::eRunning);
  EXPECT_TRUE(probe.workHadPerformance);
  EXPECT_EQ(thread->Start(work, &probe).RetCode(), zuThreadRet::eNotAvailable);

  EXPECT_TRUE(thread->StopFunction().Ok());
  probe.release->Post();
  EXPECT_TRUE(thread->WaitForThreadToExit(-1));

  EXPECT_EQ(probe.stateAfterStop, zuThread::eStopRequested);
  EXPECT_EQ(probe.exitState, zuThread::eAvailable);
  EXPECT_EQ(thread->State(), zuThread::eExited);
  EXPECT_EQ(probe.slotObjectsDestroyed, 1);
  EXPECT_EQ(probe.anchorObjectsDestroyed, 1);
  EXPECT_EQ(thread->StopFunction().RetCode(), zuThreadRet::eNotRunning);
}

unsigned int quick(void* arg) {
  ++*static_cast<std::atomic<int>*>(arg);
  return 0;
}

TEST(zuThreadTest, IdleThreadEndsWhenDeletedAndWorkGivenAtCreationRunsOnce) {
  std::atomic<int> calls{0};
  std::unique_ptr<zuThread> idle(
      zuThread::NewThread(64 * 1024, zuThread::eHighest, nullptr, &calls, nullptr, quick));
  ASSERT_TRUE(idle->Created());
  EXPECT_EQ(idle->StopFunction().RetCode(), zuThreadRet::eNotRunning);
  EXPECT_EQ(idle->Start(nullptr, nullptr).RetCode(), zuThreadRet::eNotAvailable);
  idle.reset();  // wakes the idle body, which runs only its exit function
  EXPECT_EQ(calls, 1);

  // Work given at creation runs once, then the thread ends.
  std::unique_ptr<zuThread> thread(
      zuThread::NewThread(0, zuThread::eNormal, quick, &calls, quick, nullptr));
  EXPECT_TRUE(thread->WaitForThreadToExit(-1));
  EXPECT_EQ(calls, 3);
  EXPECT_EQ(thread->Stats().FunctionsRun(), 1u);
}

}  // namespace
