// str: a zuString's bytes as a std::string, so that tests compare and print
// texts with GoogleTest's string support.
//
//   EXPECT_EQ(zu::testing::str(zuString("a\0b", 3)), std::string("a\0b", 3));
#pragma once

#include <string>

#include "zu/core/zuString.h"

namespace zu::testing {

// Returns every byte of `text` (embedded zero bytes included); a null
// string gives "".
std::string str(const zuString& text);

}  // namespace zu::testing
