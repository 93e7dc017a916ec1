// The generated table: every record resolves to complete data, and the names
// and symbols of a spread of locales equal what ICU reports. That the
// patterns are valid pictures is checked by the picture tests.
#include <gtest/gtest.h>
#include <unicode/dcfmtsym.h>
#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>

#include <set>
#include <string>

#include "zu/locale/RnData.h"
#include "zu/testing/zuTestText.h"

using zu::testing::str;

namespace {

void expectDistinctNames(const std::string& locale, const char* what, int count,
                         zuString (RnData::*getter)(int) const, const RnData& data) {
  std::set<std::string> names;
  for (int i = 0; i < count; ++i) {
    const std::string name = str((data.*getter)(i));
    EXPECT_FALSE(name.empty()) << locale << " " << what << " " << i;
    names.insert(name);
  }
  EXPECT_EQ(names.size(), static_cast<size_t>(count)) << locale << " " << what << " not distinct";
}

TEST(RnDataTableTest, EveryRecordResolvesToCompleteData) {
  zuStorage<zuString> names;
  names.Add("stale");  // replaced, not appended to
  RnData::getLocaleNames(names);
  ASSERT_EQ(names.GetSize(), 190u);
  for (unsigned int n = 0; n < names.GetSize(); ++n) {
    const std::string locale = str(names[n]);
    EXPECT_TRUE(n == 0 || str(names[n - 1]) < locale) << locale << ": not sorted";
    const RnData data(locale.c_str());
    EXPECT_EQ(str(data.getLocale()), locale);
    expectDistinctNames(locale, "month", 12, &RnData::getMonthName, data);
    expectDistinctNames(locale, "abbreviated month", 12, &RnData::getAbbrMonthName, data);
    expectDistinctNames(locale, "weekday", 7, &RnData::getWeekDayName, data);
    expectDistinctNames(locale, "abbreviated weekday", 7, &RnData::getAbbrWeekDayName, data);
    for (int i = 0; i < 2; ++i) {
      EXPECT_FALSE(data.getEraName(i).IsEmpty()) << locale;
      EXPECT_FALSE(data.getMeridiemName(i).IsEmpty()) << locale;
    }
    for (int style = RnData::SHORT_FMT; style <= RnData::FULL_FMT; ++style) {
      const std::string date = str(data.getDateFormat(style));
      const std::string time = str(data.getTimeFormat(style));
      EXPECT_FALSE(date.empty() || time.empty()) << locale << " style " << style;
    }
    const std::string combining = str(data.getDateTimePattern());
    EXPECT_NE(combining.find("date{}"), std::string::npos) << locale;
    EXPECT_NE(combining.find("time{}"), std::string::npos) << locale;
    for (int category = RnData::NUMERIC; category <= RnData::PERCENT; ++category) {
      EXPECT_FALSE(data.getNumericFormat(category).IsEmpty()) << locale << " " << category;
    }
    for (const zuString& symbol :
         {data.getRadixSymbol(), data.getGroupingSymbol(), data.getPercentSymbol(),
          data.getNegativeSymbol(), data.getZeroSymbol(), data.getCurrencySymbol(),
          data.getCurrencyName(), data.getCurrencyRadix()}) {
      EXPECT_FALSE(symbol.IsEmpty()) << locale;
    }
    EXPECT_EQ(data.getCurrencyName().Length(), 3u) << locale;
    EXPECT_GT(data.getTypefaces().GetSize(), 0u) << locale;
  }
}

TEST(RnDataTableTest, NamesAndSymbolsEqualIcu) {
  const char* const locales[] = {"de_CH", "fr_CA", "ja_JP", "zh_TW", "ar_EG", "ru_RU",
                                 "pl_PL", "th_TH", "he_IL", "hi_IN", "ko_KR", "sv_FI"};
  for (const char* name : locales) {
    icu::Locale locale(name);
    UErrorCode status = U_ZERO_ERROR;
    locale.setKeywordValue("calendar", "gregorian", status);
    icu::DateFormatSymbols dates(locale, status);
    icu::DecimalFormatSymbols numbers(locale, status);
    ASSERT_TRUE(U_SUCCESS(status)) << name;
    auto utf8 = [](const icu::UnicodeString& text) {
      std::string out;
      return text.toUTF8String(out);
    };
    const RnData data(name);
    using Symbols = icu::DateFormatSymbols;
    int32_t count = 0;
    // Each of our name lists beside ICU's (whose weekdays start at index 1).
    const struct {
      zuString (RnData::*ours)(int) const;
      const icu::UnicodeString* theirs;
      int count;
    } lists[] = {
        {&RnData::getMonthName, dates.getMonths(count, Symbols::FORMAT, Symbols::WIDE), 12},
        {&RnData::getAbbrMonthName, dates.getMonths(count, Symbols::FORMAT, Symbols::ABBREVIATED),
         12},
        {&RnData::getWeekDayName, dates.getWeekdays(count, Symbols::FORMAT, Symbols::WIDE) + 1, 7},
        {&RnData::getAbbrWeekDayName,
         dates.getWeekdays(count, Symbols::FORMAT, Symbols::ABBREVIATED) + 1, 7},
        {&RnData::getEraName, dates.getEras(count), 2},
        {&RnData::getMeridiemName, dates.getAmPmStrings(count), 2}};
    for (const auto& list : lists) {
      for (int i = 0; i < list.count; ++i) {
        EXPECT_EQ(str((data.*list.ours)(i)), utf8(list.theirs[i])) << name << " " << i;
      }
    }
    using Symbol = icu::DecimalFormatSymbols::ENumberFormatSymbol;
    const std::pair<zuString, Symbol> symbols[] = {
        {data.getRadixSymbol(), icu::DecimalFormatSymbols::kDecimalSeparatorSymbol},
        {data.getGroupingSymbol(), icu::DecimalFormatSymbols::kGroupingSeparatorSymbol},
        {data.getPercentSymbol(), icu::DecimalFormatSymbols::kPercentSymbol},
        {data.getNegativeSymbol(), icu::DecimalFormatSymbols::kMinusSignSymbol},
        {data.getZeroSymbol(), icu::DecimalFormatSymbols::kZeroDigitSymbol},
        {data.getCurrencyRadix(), icu::DecimalFormatSymbols::kMonetarySeparatorSymbol},
    };
    for (const auto& [ours, which] : symbols)
      EXPECT_EQ(str(ours), utf8(numbers.getSymbol(which))) << name;
  }
}

TEST(RnDataTableTest, NamesFallBackThroughTheirParents) {
  EXPECT_EQ(str(RnData("de_CH").getCurrencyName()), "CHF");
  const RnData moldova("ro_MD");
  const RnData romanian("ro");
  EXPECT_EQ(str(moldova.getLocale()), "ro_MD");
  EXPECT_EQ(str(moldova.getMonthName(RnData::DEC)), str(romanian.getMonthName(RnData::DEC)));
  EXPECT_EQ(str(moldova.getCurrencyName()), str(romanian.getCurrencyName()));
  EXPECT_EQ(str(moldova.getDateFormat(RnData::LONG_FMT)),
            str(romanian.getDateFormat(RnData::LONG_FMT)));
  // Names that CLDR lacks take their nearest equivalent.
  EXPECT_EQ(str(RnData("no_NO_NY").getWeekDayName(RnData::MON)), "måndag");
  EXPECT_EQ(str(RnData("no_NO").getWeekDayName(RnData::MON)), "mandag");
  EXPECT_EQ(str(RnData("th_TH_TH").getZeroSymbol()), "\u0e50");
  EXPECT_EQ(str(RnData("th_TH").getZeroSymbol()), "0");
  EXPECT_EQ(str(RnData("en_GB_EURO").getCurrencyName()), "EUR");
  EXPECT_EQ(str(RnData("en_GB").getCurrencyName()), "GBP");
  EXPECT_EQ(str(RnData("sh").getMonthName(RnData::JAN)), "januar");
  EXPECT_EQ(str(RnData("sr").getMonthName(RnData::JAN)), "јануар");
  EXPECT_EQ(str(RnData("tl").getMonthName(RnData::JAN)), "Enero");
  EXPECT_EQ(str(RnData("ar").getNumericFormat(RnData::CURRENCY)), "$ z,zz9.99s");
  EXPECT_EQ(str(RnData("ja_JP").getDateFormat(RnData::LONG_FMT)), "YYYY'年'M'月'D'日'");
  EXPECT_EQ(str(RnData("de").getTimeFormat(RnData::MED_FMT)), "HH:MM:SS");
}

}  // namespace
