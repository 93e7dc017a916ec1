#include "zu/runtime/zuMutex.h"

#include <gtest/gtest.h>

#include <memory>

TEST(zuMutexTest, RecursiveAcquisitionNeedsEveryRelease) {
  std::unique_ptr<zuMutex> mutex(zuMutex::NewMutex());
  ASSERT_TRUE(mutex->Valid());
  EXPECT_FALSE(mutex->Acquired());
  EXPECT_TRUE(mutex->Acquire().Ok());
  EXPECT_TRUE(mutex->Acquire().Ok());
  EXPECT_TRUE(mutex->Release().Ok());
  EXPECT_TRUE(mutex->Acquired());
  EXPECT_TRUE(mutex->Release().Ok());
  EXPECT_FALSE(mutex->Acquired());
  const zuSynchRet extra = mutex->Release();
  EXPECT_EQ(extra.ReturnCode(), zuSynchRet::eFailed);
  EXPECT_NE(extra.OsCode(), 0u);
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
    EXPECT_EQ(lock.Mutex(), lazily);
    EXPECT_TRUE(lazily->Acquired());
    lock.Release();
    EXPECT_EQ(lock.Mutex(), nullptr);
    EXPECT_FALSE(lazily->Acquired());
  }
  EXPECT_FALSE(lazily->Acquired());
  {
    zuAcquireMutex none(nullptr);
    EXPECT_EQ(none.Mutex(), nullptr);
  }
  {
    zuAcquireDefaultMutex lock;
    EXPECT_EQ(lock.Mutex(), zuMutex::Default());
    EXPECT_TRUE(zuMutex::Default()->Acquired());
  }
  EXPECT_FALSE(zuMutex::Default()->Acquired());
  delete lazily;
}
