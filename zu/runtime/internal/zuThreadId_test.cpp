#include "zu/runtime/internal/zuThreadId.h"

#include <gtest/gtest.h>

#include <thread>

TEST(zuThreadIdTest, NonZeroAndDistinctPerThread) {
  const unsigned int mine = zu::internal::currentThreadId();
  EXPECT_NE(mine, 0u);
  EXPECT_EQ(mine, zu::internal::currentThreadId());
  unsigned int other = 0;
  std::thread([&] { other = zu::internal::currentThreadId(); }).join();
  EXPECT_NE(other, 0u);
  EXPECT_NE(other, mine);
}
