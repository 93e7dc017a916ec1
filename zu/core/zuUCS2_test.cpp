#include "zu/core/zuUCS2.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zu/testing/zuTestText.h"

using zu::testing::str;

namespace {

TEST(zuUCS2Test, EachUnitIsItsOwnCodePointInAnIndependentCopy) {
  // A surrogate pair stays two sequences; a 0 unit ends the text.
  const std::pair<std::vector<unsigned short>, std::string> cases[] = {
      {{0x41, 0xE9, 0x20AC}, "A\xC3\xA9\xE2\x82\xAC"},
      {{0xD83D, 0xDE00}, "\xED\xA0\xBD\xED\xB8\x80"},
      {{0x41, 0, 0x42}, "A"},
      {{}, ""}};
  for (const auto& [units, expected] : cases) {
    SCOPED_TRACE(testing::PrintToString(expected));
    EXPECT_EQ(str(zuUCS2(units.data(), static_cast<unsigned int>(units.size()))), expected);
    std::vector<unsigned short> terminated = units;
    terminated.push_back(0);
    EXPECT_EQ(str(zuUCS2(terminated.data())), expected);
  }
  EXPECT_EQ(str(zuUCS2(nullptr)), "");
  EXPECT_FALSE(static_cast<const zuString&>(zuUCS2()).IsNull());

  // Copies are independent of the units they were made from.
  unsigned short units[] = {0x41, 0x42, 0};
  zuUCS2 copy;
  {
    const zuUCS2 original(units);
    copy = original;
  }
  units[0] = 0x5A;
  EXPECT_EQ(str(copy), "AB");
  EXPECT_EQ(static_cast<const unsigned short*>(copy)[0], 0x41);

  zuUCS2::ByteSwap(units, 2);
  EXPECT_EQ(units[0], 0x5A00);
}

}  // namespace
