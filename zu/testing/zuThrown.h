// thrown: runs an action that must throw the library's exception and returns
// what it threw, so that a test checks the message id in one line.
//
//   EXPECT_EQ(zu::testing::thrown([] { ZuApplyFactor(1, 1, 0); }).FirstResId(), 16479);
//
// An action that throws nothing is a test failure, and the result is then an
// empty zuExFull (FirstResId() 0). Another exception type passes through.
#pragma once

#include <gtest/gtest.h>

#include "zu/core/zuException.h"

namespace zu::testing {

template <typename Action>
zuExFull thrown(Action action) {
  try {
    action();
  } catch (const zuExFull& error) {
    return error;
  }
  ADD_FAILURE() << "nothing thrown";
  return zuExFull();
}

}  // namespace zu::testing
