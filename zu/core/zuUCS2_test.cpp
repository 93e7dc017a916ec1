#include "zu/core/zuUCS2.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string bytesOf(const zuString& text) {
  return std::string(static_cast<const char*>(text), text.Length());
}

TEST(zuUCS2Test, EachUnitIsItsOwnCodePoint) {
  struct Case {
    std::vector<unsigned short> units;
    std::string expected;
  };
  const Case cases[] = {
      {{0x41, 0xE9, 0x20AC}, "A\xC3\xA9\xE2\x82\xAC"},
      {{0xD83D, 0xDE00}, "\xED\xA0\xBD\xED\xB8\x80"},  // a pair stays two sequences
      {{0xDE00, 0x41},
       "\xED\xB8\x80"
       "A"},
      {{0x41, 0, 0x42}, "A"},  // ends at a 0 unit
      {{}, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.expected));
    const auto count = static_cast<unsigned int>(c.units.size());
    const zuUCS2 text(c.units.data(), count);
    EXPECT_EQ(bytesOf(text), c.expected);
    std::vector<unsigned short> terminated = c.units;
    terminated.push_back(0);
    const zuUCS2 fromTerminated(terminated.data());
    EXPECT_EQ(bytesOf(fromTerminated), c.expected);
    const unsigned short* units = fromTerminated;
    EXPECT_EQ(units[fromTerminated.Length()], 0);
    for (unsigned int i = 0; i < fromTerminated.Length(); ++i) EXPECT_EQ(units[i], c.units[i]);
  }
  EXPECT_EQ(bytesOf(zuUCS2(nullptr)), "");
  EXPECT_FALSE(static_cast<const zuString&>(zuUCS2()).IsNull());
}

TEST(zuUCS2Test, CopiesAreIndependentAndBytesSwap) {
  unsigned short units[] = {0x41, 0x42, 0};
  zuUCS2 copy;
  {
    const zuUCS2 original(units);
    copy = original;
  }
  units[0] = 0x5A;
  EXPECT_EQ(bytesOf(copy), "AB");
  EXPECT_EQ(static_cast<const unsigned short*>(copy)[0], 0x41);

  zuUCS2::ByteSwap(units, 2);
  EXPECT_EQ(units[0], 0x5A00);
  EXPECT_EQ(units[1], 0x4200);
  const unsigned short probe = 1;
  EXPECT_EQ(zuUCS2::IsLittleEndian(), *reinterpret_cast<const unsigned char*>(&probe) == 1);
}

}  // namespace
