#include "zu/picture/zuNumeric.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

#include "zu/core/zuException.h"
#include "zu/testing/zuCommaLocale.h"
#include "zu/testing/zuTestText.h"
#include "zu/testing/zuThrown.h"

using zu::testing::str;
using zu::testing::thrown;
using zu::testing::zuCommaLocale;

namespace {

struct TextCase {
  double value;
  int digits, trim;
  const char* expected;
} const kDblToStrCases[] = {
    {0.125, 2, 0, "0.13"},
    {2.0, 2, 1, "2"},
    {2.50, 2, 1, "2.5"},
    {2.5, 0, 0, "3"},
    {1234.5, -1, 0, "1234"},
    {1e20, 1, 1, "100000000000000000000"},
    {0.1, 20, 0, "0.100000000000000"},
    {-0.0001, 3, 1, "-0"},
    {std::numeric_limits<double>::infinity(), 2, 0, ""},
};

const TextCase kDoubleToCharsCases[] = {
    {1.05, 3, 0, "1.050"},   {2.0, 3, 0, "2"},      {0.9996, 3, 0, "1"}, {-1.25, 1, 0, "-1.3"},
    {12.007, 2, 0, "12.01"}, {0.01, 3, 0, "0.010"}, {7.6, 0, 0, "8"},    {std::nan(""), 2, 0, ""},
};

TEST(zuNumericTest, WritesDecimalTextWithADotInACommaLocale) {
  const zuCommaLocale comma;
  ASSERT_TRUE(zuCommaLocale::isComma()) << "no locale with a decimal comma could be made";
  for (const TextCase& c : kDblToStrCases) {
    EXPECT_EQ(str(zuNumeric::doubleToString(c.value, c.digits, c.trim)), c.expected)
        << c.value << " " << c.digits;
  }
  char* text = zuNumeric::dblToStr(-0.125, 2, 0);  // shares the writer above
  EXPECT_STREQ(text, "-0.13");
  delete[] text;
  for (const TextCase& c : kDoubleToCharsCases) {
    char out[zuNumeric::kBufferSize];
    const unsigned length = zuNumeric::doubleToChars(c.value, c.digits, out);
    EXPECT_EQ(std::string(out, length), c.expected) << c.value << " " << c.digits;
  }
  // The integer part is exact however long; printf agrees when no point shows.
  char printed[zuNumeric::kBufferSize];
  std::snprintf(printed, sizeof printed, "%.0f", -1e300);
  char out[zuNumeric::kBufferSize];
  EXPECT_EQ(std::string(out, zuNumeric::doubleToChars(-1e300, 2, out)), printed);
  EXPECT_EQ(str(ZuDoubleToString(1.999, 2, 0)), "1.99");
  EXPECT_EQ(str(ZuDoubleToString(1.999, 2, 1)), "2");
  EXPECT_DOUBLE_EQ(zuNumeric::stringToDouble("1,5", 1), 1.5);
  char commas[] = "1,5 2,5";
  EXPECT_STREQ(zuNumeric::strToDot(commas), "1.5 2.5");
  std::string dotted = "1.25";
  EXPECT_DOUBLE_EQ(zuNumeric::strToDbl(dotted.data(), 0), 1.25);
  double read = 0;
  EXPECT_EQ(zuString("1.25").Number(&read), 1);  // the string type reads "." too
  EXPECT_DOUBLE_EQ(read, 1.25);
  EXPECT_EQ(zuString("1,25").Number(&read), 0);
}

TEST(zuNumericTest, RoundsAndScalesIntegers) {
  struct Case {
    double value;
    long expected;
  } rounds[] = {{2.5, 3},
                {-2.5, -3},
                {1e10, INT32_MIN},
                {std::nan(""), INT32_MIN},
                {2147483647.4, 2147483647}};
  for (const Case& c : rounds) EXPECT_EQ(ZuRound(c.value), c.expected) << c.value;

  // ZuApplyFactor's rules are checked step by step on random arguments below.
  EXPECT_TRUE(thrown([] { ZuApplyFactor(1, 1, 0); }).HasResId(16479));  // zero divisor
}

// The four steps of ZuApplyFactor as its documentation gives them, in 128
// bits, against the library's arithmetic on random 32-bit arguments.
TEST(zuNumericTest, ApplyFactorFollowsItsSteps) {
  std::mt19937 random(3);
  const auto any = [&] { return static_cast<int32_t>(random()) >> (random() % 32); };
  for (int i = 0; i < 200000; ++i) {
    const int32_t value = any(), multiplier = any(), divisor = any();
    if (divisor == 0) continue;
    const __int128 quotient = value / static_cast<__int128>(divisor);
    const __int128 remainder = value % static_cast<__int128>(divisor);
    __int128 tenths = remainder * multiplier * 10 / divisor;
    tenths = (tenths + (value > 0 ? 5 : -5)) / 10;
    const auto expected =
        static_cast<int32_t>(static_cast<uint32_t>(quotient * multiplier + tenths));
    ASSERT_EQ(ZuApplyFactor(value, multiplier, divisor), expected)
        << value << " * " << multiplier << " / " << divisor;
  }
}

TEST(zuNumericTest, TruncatesTowardZero) {
  struct Case {
    double value;
    unsigned digits;
    double expected;
  } cases[] = {
      {1.999, 2, 1.99},        {-1.999, 2, -1.99},
      {2.7, 0, 2.0},           {-2.7, 0, -2.0},
      {0.0, 4000000000u, 0.0}, {1.5, 4000000000u, std::numeric_limits<double>::infinity()}};
  for (const Case& c : cases) EXPECT_DOUBLE_EQ(ZuTruncate(c.value, c.digits), c.expected);
}

TEST(zuNumericTest, ReadsDecimalText) {
  struct Case {
    const char* text;
    int commaIsPoint;
    double expected;
  } cases[] = {{"  -12.5e1x", 0, -125.0}, {"+3", 0, 3.0},  {"1,234.5", 0, 1.0},
               {"1,5", 1, 1.5},           {"abc", 0, 0.0}, {"", 1, 0.0}};
  for (const Case& c : cases) {
    std::string copy = c.text;
    EXPECT_DOUBLE_EQ(zuNumeric::strToDbl(copy.data(), c.commaIsPoint), c.expected) << c.text;
  }
  EXPECT_EQ(zuNumeric::strToDbl(nullptr, 0), 0.0);
  EXPECT_EQ(zuNumeric::stringToDouble(zuString(), 0), 0.0);
  EXPECT_TRUE(thrown([] { zuNumeric::strToDot(nullptr); }).HasResId(16479));
}

}  // namespace
