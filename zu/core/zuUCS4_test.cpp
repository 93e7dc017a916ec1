#include "zu/core/zuUCS4.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "zu/testing/zuTestText.h"

using zu::testing::str;

namespace {

std::vector<unsigned int> codePointsOf(const zuUCS4& text) {
  const unsigned int* data = text;
  return std::vector<unsigned int>(data, data + text.Length());
}

TEST(zuUCS4Test, BuildsFromEverySourceAndKeepsItsUTF8Current) {
  const unsigned int raw[] = {0x63, 0xE9, 0x1F600, 0, 0x78};
  EXPECT_EQ(codePointsOf(zuUCS4(raw)), (std::vector<unsigned int>{0x63, 0xE9, 0x1F600}));
  EXPECT_EQ(zuUCS4(raw, 5).Length(), 5u);  // a count takes the values as they stand
  EXPECT_EQ(codePointsOf(zuUCS4(zuString("c\xC3\xA9\xF0\x9F\x98\x80"))),
            (std::vector<unsigned int>{0x63, 0xE9, 0x1F600}));

  zuUCS4 grown;
  for (unsigned int i = 1; i <= 100; ++i) grown += i;  // past several doublings
  EXPECT_EQ(static_cast<const unsigned int*>(grown)[100], 0u);
  grown += grown;  // appending itself while the array grows
  EXPECT_EQ(grown.Length(), 200u);
  EXPECT_EQ(static_cast<const unsigned int*>(grown)[150], 51u);

  // The cached UTF-8 follows every change.
  zuUCS4 text(zuString("ab"));
  EXPECT_EQ(str(text), "ab");
  text += 0x20ACu;
  text += zuString("\xC3\xA9");
  EXPECT_EQ(str(text), "ab\xE2\x82\xAC\xC3\xA9");
  text.Swallow(1, 2);
  EXPECT_EQ(str(text), "a\xC3\xA9");
  const unsigned int more[] = {0x1F600, 0};
  text += more;
  EXPECT_EQ(str(text), "a\xC3\xA9\xF0\x9F\x98\x80");
  zuUCS4 copy = text;
  copy.Empty();  // the copy is independent
  EXPECT_EQ(str(copy) + "|" + str(text), "|a\xC3\xA9\xF0\x9F\x98\x80");
}

TEST(zuUCS4Test, RangesAreClampedAndComparisonsAreOfCodePoints) {
  const zuUCS4 text(zuString("h\xC3\xA9llo"));
  const std::tuple<unsigned int, unsigned int, std::string> cases[] = {
      {1, 3, "\xC3\xA9ll"}, {3, 99, "lo"}, {5, 1, ""}, {99, 2, ""}, {2, 0, ""}};
  for (const auto& [start, length, expected] : cases) {
    EXPECT_EQ(str(text.ZUSubstring(start, length)), expected) << start;
    EXPECT_TRUE(text.Substring(start, length) == zuString(expected.c_str())) << start;
  }
  zuUCS4 cut = text;
  cut.Swallow(3, 99);
  EXPECT_EQ(str(cut), "h\xC3\xA9l");
  cut.Swallow(99, 1);
  EXPECT_EQ(cut.Length(), 3u);

  // Comparison is of the code points, with text or another array.
  EXPECT_TRUE(zuString("h\xC3\xA9llo") == text);
  EXPECT_FALSE(text == zuString("h"));
  EXPECT_TRUE(zuUCS4() == zuString());  // empty and null are the same text
  EXPECT_FALSE(zuUCS4(zuString("ab")) == zuUCS4(zuString("ac")));

  unsigned int values[] = {0x12345678, 0x000000FF};
  zuUCS4::ByteSwap(values, 2);
  EXPECT_EQ(values[0], 0x78563412u);
}

}  // namespace
