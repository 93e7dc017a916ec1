#include <gtest/gtest.h>

#include <clocale>

#include "zu/locale/RnData.h"
#include "zu/locale/RnLocale.h"
#include "zu/testing/zuCatalogueTestFiles.h"

namespace {

using zu::testing::zuLocaleEnvironment;

// Each test ends without a recorded locale, in the C library's "C" locale.
class RnLocaleSystemTest : public ::testing::Test {
 protected:
  void TearDown() override {
    RnLocale::setLocale("");  // forgets the recorded locale
    std::setlocale(LC_ALL, "C");
  }
};

TEST_F(RnLocaleSystemTest, GetLocaleMapsTheRecordedIdBackToARow) {
  struct Case {
    const char *set, *expected;
  } const cases[] = {
      {"de_CH", "de_CH"},       // an id carried by one row
      {"no", "nb"},             // id 20 is shared by "no" and "nb"
      {"no_NO", "nb_NO"},       // id 1044
      {"no_NO_NY", "nn_NO"},    // id 2068
      {"en_GB", "en_GB_EURO"},  // the last row carrying 2057
      {"sh_HR", "sh_HR"},       // 1050 is carried by hr_HR and, later, sh_HR
  };
  const zuLocaleEnvironment none(nullptr, nullptr);
  for (const Case& c : cases) {
    RnLocale::setLocale(c.set);
    EXPECT_STREQ(RnLocale::getLocale(), c.expected) << c.set;
  }
}

TEST_F(RnLocaleSystemTest, WithoutARecordedLocaleTheEnvironmentDecides) {
  RnLocale::setLocale("de_XX");  // records nothing
  struct Case {
    const char *all, *messages, *lang, *expected;
  } const cases[] = {
      {"", "", "fr_CA.UTF-8", "fr_CA"},            // LANG, without its code set
      {"", "de_AT@euro", "fr_CA.UTF-8", "de_AT"},  // LC_MESSAGES before LANG
      {"it_CH", "de_AT", "fr_CA", "it_CH"},        // LC_ALL before both
      {"", "C", "fr_CA", "x"},                     // the POSIX locale is none
      {"", "", "de_XX.UTF-8", "x"},                // not a row of the map
  };
  for (const Case& c : cases) {
    const zuLocaleEnvironment environment(c.all, c.lang, c.messages);
    EXPECT_STREQ(RnLocale::getLocale(), c.expected) << c.all << "|" << c.messages << "|" << c.lang;
  }
}

TEST_F(RnLocaleSystemTest, SystemSymbolsComeFromTheSystemLocaleOrEnUs) {
  const zuLocaleEnvironment none(nullptr, nullptr);
  RnLocale::setLocale("de_CH");
  EXPECT_STREQ(RnLocale::CurrencySymbol(), RnData("de_CH").getCurrencySymbol());
  EXPECT_STREQ(RnLocale::DecimalPoint(), RnData("de_CH").getRadixSymbol());
  RnLocale::setLocale("de_XX");  // every symbol comes from the same data
  EXPECT_STREQ(RnLocale::CurrencySymbol(), "$");
  EXPECT_STREQ(RnLocale::ThousandsSep(), ",");
}

}  // namespace
