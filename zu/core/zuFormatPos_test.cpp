#include "zu/core/zuFormatPos.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace {

std::string text(const zuString& value) {
  return std::string(static_cast<const char*>(value));
}

struct Case {
  const char* name;
  std::function<zuFormatPos()> build;
  const char* expected;
};

TEST(zuFormatPosTest, PlaceholdersTakeArgumentsByNumber) {
  const Case cases[] = {
      {"reordered",
       [] {
         return zuFormatPos(zuString("%2 before %1")) << "P"
                                                      << "Q";
       },
       "Q before P"},
      {"numbered from zero",
       [] {
         return zuFormatPos(zuString("%0-%1")) << "a"
                                               << "b";
       },
       "a-b"},
      {"numbered from five",
       [] {
         return zuFormatPos(zuString("%6/%5")) << "a"
                                               << "b";
       },
       "b/a"},
      {"repeated number", [] { return zuFormatPos(zuString("%1%1")) << "x"; }, "xx"},
      {"missing argument empty", [] { return zuFormatPos(zuString("%1 %3")) << "P"; }, "P "},
      {"missing stops placing", [] { return zuFormatPos(zuString("%3,%1,%2")) << "a"; }, ",,"},
      {"sequence counts earlier placeholders",
       [] {
         return zuFormatPos(zuString("%1 and %d")) << "P"
                                                   << "Q";
       },
       "P and P"},
      {"sequence letters",
       [] {
         return zuFormatPos(zuString("%s%u%X")) << "a"
                                                << "b"
                                                << "c";
       },
       "abc"},
      {"l before a letter", [] { return zuFormatPos(zuString("%lu items")) << 5; }, "5 items"},
      {"other sequence left to zuFormat", [] { return zuFormatPos(zuString("%lz %1")) << "a"; },
       "a "},
      {"percent pair survives", [] { return zuFormatPos(zuString("100%% %1")) << "x"; }, "100% x"},
      {"digit then text", [] { return zuFormatPos(zuString("%5.2f")) << "x"; }, "x.2f"},
      {"surplus ignored",
       [] {
         return zuFormatPos(zuString("[%1]")) << "a"
                                              << "b";
       },
       "[a]"},
      {"no placeholders", [] { return zuFormatPos(zuString("plain")) << "a"; }, "plain"},
      {"trailing percent", [] { return zuFormatPos(zuString("%1%")) << "a"; }, "a"},
      {"integers", [] { return zuFormatPos(zuString("%1 %2 %3")) << -7 << short{8} << 9L; },
       "-7 8 9"},
      {"int64 low 32 bits",
       [] { return zuFormatPos(zuString("%1 %2")) << int64_t{4294967297} << (1LL << 31); },
       "1 -2147483648"},
      {"long low 32 bits", [] { return zuFormatPos(zuString("%1")) << 4294967298L; }, "2"},
      {"double eight decimals", [] { return zuFormatPos(zuString("%1")) << 2.5; }, "2.50000000"},
      {"float as double", [] { return zuFormatPos(zuString("%1")) << 0.25f; }, "0.25000000"},
      {"argument constructor", [] { return zuFormatPos(zuString("<%1>"), zuString("v")); }, "<v>"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(text(c.build().GetString()), c.expected) << c.name;
  }
}

TEST(zuFormatPosTest, ParametersArePlacedTextsIncludingEmptyOnes) {
  zuFormatPos format(zuString("%2 %1 %3"));
  format << "first"
         << "second";
  ASSERT_EQ(format.GetParmCount(), 3u);
  EXPECT_EQ(text(format.GetParm(0)), "second");
  EXPECT_EQ(text(format.GetParm(1)), "first");
  EXPECT_EQ(text(format.GetParm(2)), "");
  EXPECT_EQ(text(format.GetParm(3)), "");
}

TEST(zuFormatPosTest, ArgumentsAfterTheFirstResultAreNotPlaced) {
  zuFormatPos format(zuString("%1|%2"));
  format << "a";
  EXPECT_EQ(text(format), "a|");
  format << "b";
  EXPECT_EQ(text(format), "a|");
  EXPECT_EQ(format.GetParmCount(), 2u);
}

TEST(zuFormatPosTest, CopiesAndIdsAndAllocatedText) {
  zuFormatPos original(zuString("%1-%2"));
  original << "x";
  zuFormatPos copy(original);
  copy << "y";
  original << "z";
  EXPECT_EQ(text(original), "x-z");
  EXPECT_EQ(text(copy), "x-y");
  const std::unique_ptr<char[]> allocated(copy.GetAllocdChar());
  EXPECT_STREQ(allocated.get(), "x-y");

  // Without a catalogue the template is empty: nothing is placed.
  const zuFormatPos byId(17234, zuString("arg"));
  EXPECT_EQ(byId.ResId(), 17234);
  EXPECT_EQ(text(byId), "");
  EXPECT_EQ(byId.GetParmCount(), 0u);
}

}  // namespace
