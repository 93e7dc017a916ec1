#include "zu/core/zuNewHandler.h"

#include <gtest/gtest.h>

#include <new>

#include "zu/core/zuException.h"

namespace {

unsigned int lastSize = 99;
int calls = 0;

template <int kResult>
int countCalls(unsigned int size) {
  lastSize = size;
  ++calls;
  return kResult;
}

void runtimeHandler() {}

// The library's own handler throws zuExMemory (a std::bad_alloc).
TEST(zuNewHandlerTest, ForwardsToHandlerAndRestoresNestedHandlers) {
  const std::new_handler before = std::set_new_handler(runtimeHandler);
  {
    const zuNewHandler outer(countCalls<1>);
    {
      const zuNewHandler inner(countCalls<0>);
      calls = 0;
      EXPECT_THROW(std::get_new_handler()(), zuExMemory);  // 0: give up
      EXPECT_EQ(calls, 1);
      EXPECT_EQ(lastSize, 0u);
    }
    calls = 0;
    EXPECT_NO_THROW(std::get_new_handler()());  // non-zero: try again
    EXPECT_EQ(calls, 1);
  }
  EXPECT_EQ(std::get_new_handler(), runtimeHandler);
  {
    const zuNewHandler library(ZuExMemoryHandler);
    EXPECT_THROW(std::get_new_handler()(), zuExMemory);
  }
  std::set_new_handler(before);
}

}  // namespace
