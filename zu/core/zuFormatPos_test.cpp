#include "zu/core/zuFormatPos.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "zu/testing/zuTestText.h"

using zu::testing::str;

namespace {

zuFormatPos placed(const char* pattern, const std::vector<const char*>& arguments) {
  zuFormatPos format{zuString(pattern)};
  for (const char* argument : arguments) format << argument;
  return format;
}

TEST(zuFormatPosTest, PlaceholdersTakeArgumentsByNumberAsParameters) {
  struct Case {
    const char* pattern;
    std::vector<const char*> arguments;
    const char* expected;
  } const cases[] = {
      {"%2 before %1", {"P", "Q"}, "Q before P"},
      {"%0-%1", {"a", "b"}, "a-b"},          // numbered from zero
      {"%6/%5", {"a", "b"}, "b/a"},          // numbered from five
      {"%1 %3", {"P"}, "P "},                // a missing argument is empty
      {"%3,%1,%2", {"a"}, ",,"},             // and stops placing
      {"%1 and %d", {"P", "Q"}, "P and P"},  // a sequence counts earlier placeholders
      {"%s%u%X", {"a", "b", "c"}, "abc"},
      {"%lz %1", {"a"}, "a "},  // other sequences are left to zuFormat
      {"100%% %1", {"x"}, "100% x"},
      {"[%1]", {"a", "b"}, "[a]"},  // surplus ignored
      {"%1%", {"a"}, "a"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(str(placed(c.pattern, c.arguments).GetString()), c.expected) << c.pattern;
  }
  EXPECT_EQ(str(zuFormatPos(zuString("%1 %2 %3")) << -7 << short{8} << 9L), "-7 8 9");
  // Integers keep their low 32 bits; reals get eight decimals.
  EXPECT_EQ(str(zuFormatPos(zuString("%1 %2")) << int64_t{4294967297} << (1LL << 31)),
            "1 -2147483648");
  EXPECT_EQ(str(zuFormatPos(zuString("%1")) << 0.25f), "0.25000000");
  EXPECT_EQ(str(zuFormatPos(zuString("<%1>"), zuString("v"))), "<v>");

  // Parameters are the placed texts; arguments after the text is placed, and
  // arguments without a message text, are not placed.
  zuFormatPos format = placed("%2 %1 %3", {"first", "second"});
  ASSERT_EQ(format.GetParmCount(), 3u);
  EXPECT_EQ(str(format.GetParm(0)), "second");
  EXPECT_TRUE(str(format.GetParm(2)).empty() && str(format.GetParm(3)).empty());

  zuFormatPos late = placed("%1|%2", {"a"});
  EXPECT_EQ(str(late), "a|");
  late << "b";
  EXPECT_EQ(str(late), "a|");
  EXPECT_EQ(late.GetParmCount(), 2u);

  zuFormatPos original = placed("%1-%2", {"x"});
  zuFormatPos copy(original);
  copy << "y";
  original << "z";
  EXPECT_EQ(str(original), "x-z");
  const std::unique_ptr<char[]> allocated(copy.GetAllocdChar());
  EXPECT_STREQ(allocated.get(), "x-y");

  // Without a message text the template is empty: nothing is placed.
  const zuFormatPos byId(5, zuString("arg"));
  EXPECT_TRUE(str(byId).empty() && byId.GetParmCount() == 0);
}

}  // namespace
