#include <gtest/gtest.h>

#include "zu/locale/RnLocale.h"

namespace {

TEST(RnLocaleNameTest, NormalizeRecasesScriptAndCountryOnly) {
  struct Case {
    const char *name, *expected;
  } const cases[] = {
      {"en-us", "en_US"},
      {"EN_us", "EN_US"},  // the language keeps its case
      {"az_cyrl_az", "az_Cyrl_AZ"},
      {"zh-Hant-TW", "zh_Hant-TW"},  // only the first "-"
      {"de-ch-x", "de_Ch-x"},        // four letters after the language read as a script
      {"fr_fr.ISO88591@Euro", "fr_FR.ISO88591@Euro"},
      {"x_abc_de", "x_ABC_DE"},  // a second "_" not five places on: no script
      {"_", "_"},
      {"", ""},
  };
  for (const Case& c : cases) EXPECT_STREQ(RnLocale::normalize(c.name), c.expected) << c.name;
  EXPECT_TRUE(RnLocale::normalize(nullptr).IsEmpty());
}

TEST(RnLocaleNameTest, DequalifyCutsAtFirstDotOrAt) {
  struct Case {
    const char *name, *expected;
    bool qualified;
  } const cases[] = {
      {"fr_FR.iso88591@euro", "fr_FR", true},
      {"de_DE@euro.utf8", "de_DE", true},
      {".utf8", "", true},
      {"en_US", "", false},
      {"", "", false},
  };
  for (const Case& c : cases) {
    bool qualified = !c.qualified;
    EXPECT_STREQ(RnLocale::dequalify(c.name, qualified), c.expected) << c.name;
    EXPECT_EQ(qualified, c.qualified) << c.name;
  }
}

}  // namespace
