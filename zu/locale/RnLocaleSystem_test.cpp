#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>
#include <vector>

#include "zu/locale/RnData.h"
#include "zu/locale/RnLocale.h"

namespace {

// Sets the environment variables for one test and restores them afterwards,
// with the C library's locale.
class RnLocaleSystemTest : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* variable : kVariables) {
      const char* value = std::getenv(variable);
      saved_.emplace_back(value != nullptr ? value : "");
    }
  }
  void TearDown() override {
    for (size_t i = 0; i < saved_.size(); ++i) setenv(kVariables[i], saved_[i].c_str(), 1);
    RnLocale::setLocale("");  // forgets the recorded locale
    std::setlocale(LC_ALL, "C");
  }
  static void environment(const char* all, const char* messages, const char* lang) {
    setenv("LC_ALL", all, 1);
    setenv("LC_MESSAGES", messages, 1);
    setenv("LANG", lang, 1);
  }

  static constexpr const char* kVariables[] = {"LC_ALL", "LC_MESSAGES", "LANG"};
  std::vector<std::string> saved_;
};

TEST_F(RnLocaleSystemTest, GetLocaleMapsTheRecordedIdBackToARow) {
  struct Case {
    const char *set, *expected;
  } const cases[] = {
      {"de_CH", "de_CH"},
      {"no", "nb"},           // id 20 is shared by "no" and "nb"
      {"no_NO", "nb_NO"},     // id 1044
      {"no_NO_NY", "nn_NO"},  // id 2068
      {"nn_NO", "nn_NO"},
      {"en_GB", "en_GB_EURO"},  // the last row carrying 2057
      {"sh_HR", "sh_HR"},       // 1050 is carried by hr_HR and, later, sh_HR
      {"c", "c"},
  };
  environment("", "", "");
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
      {"", "", "fr_CA.UTF-8", "fr_CA"},
      {"", "de_AT@euro", "fr_CA.UTF-8", "de_AT"},
      {"it_CH", "de_AT", "fr_CA", "it_CH"},
      {"", "C", "fr_CA", "x"},  // the POSIX locale is none
      {"POSIX.UTF-8", "", "fr_CA", "x"},
      {"", "", "de_XX.UTF-8", "x"},
      {"", "", "", "x"},
  };
  for (const Case& c : cases) {
    environment(c.all, c.messages, c.lang);
    EXPECT_STREQ(RnLocale::getLocale(), c.expected) << c.all << "|" << c.messages << "|" << c.lang;
  }
}

TEST_F(RnLocaleSystemTest, SystemSymbolsComeFromTheSystemLocaleOrEnUs) {
  environment("", "", "");
  RnLocale::setLocale("de_CH");
  EXPECT_STREQ(RnLocale::CurrencySymbol(), RnData("de_CH").getCurrencySymbol());
  EXPECT_STREQ(RnLocale::DecimalPoint(), RnData("de_CH").getRadixSymbol());
  EXPECT_STREQ(RnLocale::ThousandsSep(), RnData("de_CH").getGroupingSymbol());
  RnLocale::setLocale("de_XX");
  EXPECT_STREQ(RnLocale::CurrencySymbol(), "$");
  EXPECT_STREQ(RnLocale::NegativeSign(), "-");
  EXPECT_STREQ(RnLocale::DecimalPoint(), ".");
  EXPECT_STREQ(RnLocale::ThousandsSep(), ",");
}

}  // namespace
