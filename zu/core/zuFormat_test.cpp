#include "zu/core/zuFormat.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "zu/testing/zuTestText.h"

using zu::testing::str;

namespace {

struct Case {
  const char* name;
  std::function<zuFormat()> build;
  const char* expected;
  unsigned int parmCount;
};

TEST(zuFormatTest, ConversionsByArgumentKindAndLetter) {
  const Case cases[] = {
      {"percent pair and decimal", [] { return zuFormat(zuString("a%%b%dc"), 5); }, "a%b5c", 1},
      {"x is upper-case hex", [] { return zuFormat(zuString("%x"), 255); }, "FF", 1},
      {"X is not hex", [] { return zuFormat(zuString("%X"), 255); }, "255", 1},
      {"flag taken as letter", [] { return zuFormat(zuString("%-5d"), 7); }, "75d", 1},
      {"zero padding", [] { return zuFormat(zuString("%05d"), 42); }, "00042", 1},
      {"signed long with u", [] { return zuFormat(zuString("%lu"), -1L); }, "-1", 1},
      {"long as character", [] { return zuFormat(zuString("<%c>"), 65L + 256L); }, "<A>", 0},
      {"char as itself", [] { return zuFormat(zuString("%s!"), 'z'); }, "z!", 0},
      {"unsigned", [] { return zuFormat(zuString("%u"), 4000000000u); }, "4000000000", 1},
      {"negative char as hex", [] { return zuFormat(zuString("%x"), static_cast<char>(-1)); },
       "FFFFFFFFFFFFFFFF", 1},
      {"unsigned char as itself",
       [] { return zuFormat(zuString("%s"), static_cast<unsigned char>('q')); }, "q", 0},
      {"pointer as hex",
       [] { return zuFormat(zuString("%x"), reinterpret_cast<const unsigned char*>(0xAB)); }, "AB",
       1},
      {"text ignores width", [] { return zuFormat(zuString("[%5.1s]"), "abc"); }, "[abc]", 1},
      {"null text is empty",
       [] { return zuFormat(zuString("[%s]"), static_cast<const char*>(nullptr)); }, "[]", 1},
      {"string with d", [] { return zuFormat(zuString("%d"), zuString("abc")); }, "abc", 1},
      {"shorts", [] { return zuFormat(zuString("%d %d")) << short{-2} << uint16_t{65535}; },
       "-2 65535", 2},
      {"missing argument cuts", [] { return zuFormat(zuString("a%db%dc"), 1); }, "a1b", 1},
      {"surplus argument appended bare",
       [] { return zuFormat(zuString("n=%5d;")) << 1 << 2 << "t" << 2.5; }, "n=    1;2t2.500000",
       4},
      {"trailing percent writes nothing", [] { return zuFormat(zuString("end%"), 3); }, "end3", 1},
      {"conversion at template end", [] { return zuFormat(zuString("%5"), 3); }, "    3", 1},
      {"empty template", [] { return zuFormat(zuString("")) << 1 << "x"; }, "1x", 2},
  };
  for (const Case& c : cases) {
    const zuFormat format = c.build();
    EXPECT_EQ(str(format.GetString()), c.expected) << c.name;
    EXPECT_EQ(format.GetParmCount(), c.parmCount) << c.name;
  }
}

TEST(zuFormatTest, ParametersIdsAndCopies) {
  zuFormat format(zuString("%s=%5.1f (%c)"));
  format << "width" << 2.25 << 'x';
  EXPECT_EQ(str(format), "width=  2.2 (x)");
  ASSERT_EQ(format.GetParmCount(), 2u);
  EXPECT_TRUE(str(format.GetParm(1)) == "  2.2" && str(format.GetParm(2)).empty());

  zuFormat byId(5, 2024);  // no message text: the arguments only
  byId << "y";
  EXPECT_EQ(str(byId), "2024y");

  zuFormat original(zuString("%d-%d"));
  original << 1;
  zuFormat copy(original);
  original << 2;
  copy << 3;
  EXPECT_EQ(str(original) + "|" + str(copy), "1-2|1-3");
  copy = original;
  const std::unique_ptr<char[]> allocated(copy.GetAllocdChar());
  EXPECT_STREQ(allocated.get(), "1-2");
}

TEST(zuFormatTest, AbsurdWidthAndPrecisionAreClamped) {
  const std::string wide = str(zuFormat(zuString("%999999999999999999999d"), 7));
  EXPECT_EQ(wide, std::string(zuFormat::kMaxWidth - 1, ' ') + "7");

  const std::string precise = str(zuFormat(zuString("%.99999f"), 1.0));
  EXPECT_EQ(precise, "1." + std::string(zuFormat::kMaxWidth, '0'));

  const std::string huge = str(zuFormat(zuString("%99999.99999f"), -1e308));
  EXPECT_TRUE(huge.size() == 311 + zuFormat::kMaxWidth &&
              huge.front() == '-');  // "-", 309 digits, "."
}

}  // namespace
