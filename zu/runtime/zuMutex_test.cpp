#include "zu/runtime/zuMutex.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

// Another thread may not release it either.
TEST(zuMutexTest, RecursiveAcquisitionNeedsEveryReleaseByTheOwner) {
  std::unique_ptr<zuMutex> mutex(zuMutex::NewMutex());
  ASSERT_TRUE(mutex->Valid());
  EXPECT_TRUE(mutex->Acquire().Ok());
  EXPECT_TRUE(mutex->Acquire().Ok());
  EXPECT_TRUE(mutex->Release().Ok());
  EXPECT_TRUE(mutex->Acquired());
  EXPECT_TRUE(mutex->Release().Ok());
  const zuSynchRet extra = mutex->Release();
  EXPECT_EQ(extra.ReturnCode(), zuSynchRet::eFailed);
  EXPECT_NE(extra.OsCode(), 0u);

  mutex->Acquire();
  zuSynchRet fromOther;
  std::thread([&] { fromOther = mutex->Release(); }).join();
  EXPECT_EQ(fromOther.ReturnCode(), zuSynchRet::eFailed);
  EXPECT_TRUE(mutex->Acquired());
  mutex->Release();
}

TEST(zuMutexTest, ScopedAcquisitionAndStaticCreation) {
  zuMutex* lazily = nullptr;
  zuMutex::StaticMutex(lazily);
  ASSERT_NE(lazily, nullptr);
  zuMutex* const first = lazily;
  zuMutex::StaticMutex(lazily);
  EXPECT_EQ(lazily, first);
  {
    zuAcquireMutex lock(lazily);
    EXPECT_TRUE(lazily->Acquired());
    lock.Release();
    EXPECT_EQ(lock.Mutex(), nullptr);
  }  // released once only
  EXPECT_FALSE(lazily->Acquired());
  EXPECT_EQ(zuAcquireMutex(nullptr).Mutex(), nullptr);
  {
    zuAcquireDefaultMutex lock;
    EXPECT_EQ(lock.Mutex(), zuMutex::Default());
    EXPECT_TRUE(zuMutex::Default()->Acquired());
  }
  EXPECT_FALSE(zuMutex::Default()->Acquired());
  delete lazily;
}
