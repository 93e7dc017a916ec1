#include "zu/locale/RnData.h"

#include <gtest/gtest.h>

#include <string>

#include "zu/locale/internal/RnDataName.h"
#include "zu/testing/zuTestText.h"

using zu::testing::str;

namespace {

TEST(RnDataTest, NamesAreNormalisedBeforeLookup) {
  struct Case {
    const char *input, *expected;
  } cases[] = {
      {"de-ch", "de_CH"}, {"az-CYRL-az", "az_Cyrl_AZ"},      {"en_us_posix", "en_US_POSIX"},
      {"c", "c"},         {"zh-hant-tw.utf8", "zh_Hant_TW"},
  };
  for (const Case& c : cases) {
    char out[64];
    const size_t length = zu::internal::normaliseDataName(c.input, out, sizeof out);
    EXPECT_EQ(std::string(out, length), c.expected) << c.input;
  }
  EXPECT_EQ(str(RnData("de-ch").getLocale()), "de_CH");
  EXPECT_EQ(str(RnData(nullptr).getLocale()), "root");
}

TEST(RnDataTest, UnknownLocaleAndBadIndexesFallBackQuietly) {
  const RnData data("xx_YY");
  EXPECT_EQ(str(data.getMonthName(RnData::JAN)), "January");
  // Every indexed name goes through one bounds check, with its own count.
  for (int bad : {-1, 12}) EXPECT_TRUE(data.getMonthName(bad).IsEmpty()) << bad;
  EXPECT_TRUE(data.getWeekDayName(7).IsEmpty());
  EXPECT_TRUE(data.getNumericFormat(3).IsEmpty());
  for (int style : {RnData::DEFLT_FMT, 9, -3}) {
    EXPECT_EQ(str(data.getDateFormat(style)), "MMM D, YYYY");
    EXPECT_EQ(str(data.getTimeFormat(style)), "h:MM:SS A");
  }
  const zuStorage<zuString> faces = data.getTypefaces();  // the default list, split
  ASSERT_GT(faces.GetSize(), 1u);
  EXPECT_EQ(str(faces[0]).rfind("Noto", 0), 0u);
}

TEST(RnDataTest, UsEnglishOverridesOnlyItsCurrency) {
  const RnData us("en_US");
  const RnData root("root");
  EXPECT_EQ(str(us.getCurrencySymbol()), "$");  // its pattern is a row of the table below
  for (int style = RnData::SHORT_FMT; style <= RnData::FULL_FMT; ++style) {
    EXPECT_EQ(str(us.getDateFormat(style)), str(root.getDateFormat(style)));
  }
}

TEST(RnDataTest, LocalPatternsUseTheLocaleAlphabet) {
  const RnData root("root");
  EXPECT_EQ(str(root.getLocalDateFormat(RnData::FULL_FMT)), "EEEE, MMMM d, yyyy");
  EXPECT_EQ(str(root.getLocalDateTimeFormat()), "date{} time{}");
  const RnData arabic("ar");
  EXPECT_EQ(str(arabic.getLocalDateFormat(RnData::MED_FMT)), "jj/nn/aaaa");
  EXPECT_EQ(str(root.getDateTimeFormat(RnData::SHORT_FMT, RnData::SHORT_FMT)),
            "date{M/D/YY} time{h:MM A}");
}

TEST(RnDataTest, NumberFormatFollowsTheOptionBits) {
  struct Case {
    const char* locale;
    int kind, options;
    const char* expected;
  } cases[] = {
      {"root", RnData::DECIMAL_FMT, RnData::WITH_GROUPINGS, "z,zz9.zzz"},
      {"root", RnData::INTEGRAL_FMT, RnData::WITH_RADIX, "zzz9."},
      {"root", RnData::DECIMAL_FMT,
       RnData::WITH_GROUPINGS | RnData::WITH_EIGHTS | RnData::WITH_WIDTH(7) | RnData::WITH_PREC(2),
       "z,zzz,zz9.88"},
      {"root", RnData::PERCENT_FMT, RnData::WITH_GROUPINGS, "z,zz9%"},
      {"root", RnData::CURRENCY_FMT, RnData::KEEP_NINES | RnData::WITH_PREC(3), "s$ zzz9.99z"},
      {"en_US", RnData::CURRENCY_FMT, RnData::WITH_GROUPINGS | RnData::KEEP_NINES,
       "$z,zz9.99|($z,zz9.99)"},  // the pattern itself
      {"en_US", RnData::CURRENCY_FMT, RnData::WITH_PREC(0), "$zzz9|($zzz9)"},
      {"root", 4, 0, ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(str(RnData(c.locale).getNumberFormat(c.kind, c.options)), c.expected)
        << c.locale << " " << c.kind << " " << c.options;
  }
}

TEST(RnDataTest, NumberPrecisionCountsFractionDigits) {
  const RnData data("root");
  struct Case {
    const char* picture;
    int expected;
  } cases[] = {
      {"z,zz9.zzz", 3},   {"$z,zz9.99|($z,zz9.999)", 2},
      {"num{zz9.88}", 2}, {"99v999", 3},
      {"'.'99", 0},       {"", 0},
  };
  for (const Case& c : cases)
    EXPECT_EQ(data.getNumberPrecision(c.picture), c.expected) << c.picture;
}

TEST(RnDataTest, RunTimeDataOverridesAndIsReleased) {
  RnData::reset();
  RnRunTimeData_s data;
  data.monthNames[RnData::JAN] = "Janvier";
  data.numericSymbols[RnData::NUM_DECIMAL] = ",";
  ASSERT_EQ(RnData::update("en-us", &data), 1);
  const RnData us("en_US");
  EXPECT_EQ(str(us.getMonthName(RnData::JAN)), "Janvier");
  EXPECT_EQ(str(us.getMonthName(RnData::FEB)), "February");
  EXPECT_EQ(str(us.getRadixSymbol()), ",");
  EXPECT_EQ(str(RnData("en").getMonthName(RnData::JAN)), "January");

  RnRunTimeData_s more;
  more.monthNames[RnData::FEB] = "Fevrier";
  ASSERT_EQ(RnData::update("en_US", &more), 1);
  RnRunTimeData_s copy;
  ASSERT_EQ(RnData::get("en_US", &copy), &copy);
  EXPECT_EQ(str(copy.monthNames[RnData::JAN]), "Janvier");
  EXPECT_EQ(str(copy.monthNames[RnData::FEB]), "Fevrier");

  EXPECT_EQ(RnData::release("en_US"), 1);
  EXPECT_EQ(RnData::release("en_US"), 0);

  ASSERT_EQ(RnData::update("zz_QQ", &data), 1);
  EXPECT_EQ(str(RnData::findMatchingLocale("zz", "QQ", "X")), "zz_QQ");
  RnData::reset();
  EXPECT_EQ(RnData::get("zz_QQ"), nullptr);
  EXPECT_EQ(str(RnData::findMatchingLocale("zz", "QQ", "X")), "root");
}

TEST(RnDataTest, ValidateRejectsUnusableRunTimeData) {
  EXPECT_EQ(RnData::validate(nullptr), 0);
  RnRunTimeData_s data;
  EXPECT_EQ(RnData::validate(&data), 1);
  const char* bad[] = {"tab\there", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "x\x7F"};
  for (const char* text : bad) {
    RnRunTimeData_s broken;
    broken.eraNames[RnData::AD] = text;
    EXPECT_EQ(RnData::validate(&broken), 0) << text;
    EXPECT_EQ(RnData::update("en", &broken), 0);
  }
  data.numericSymbols[RnData::NUM_DECIMAL] = ".";
  data.numericSymbols[RnData::NUM_GROUPING] = ".";
  EXPECT_EQ(RnData::validate(&data), 0);
  data.numericSymbols[RnData::NUM_GROUPING] = "\xE2\x80\xAF";
  EXPECT_EQ(RnData::validate(&data), 1);
}

}  // namespace
