#include <gtest/gtest.h>
#include <unicode/uloc.h>

#include <strings.h>

#include <cctype>
#include <string>

#include "zu/locale/RnLocale.h"
#include "zu/locale/internal/RnLocaleMap.h"

namespace {

using zu::internal::kLocaleMap;
using zu::internal::kLocaleMapRows;

TEST(RnLocaleResolveTest, EveryMapNameResolvesToItsOwnRowInAnyCase) {
  for (int row = 1; row < kLocaleMapRows; ++row) {
    const char* name = kLocaleMap[row].name;
    EXPECT_TRUE(row == 1 || strcasecmp(kLocaleMap[row - 1].name, name) < 0) << name;
    EXPECT_EQ(RnLocale(name).getHandle(), row) << name;
    EXPECT_STREQ(RnLocale(RnLocale::normalize(name)).getName(), name);
    std::string lower = name;
    for (char& c : lower) c = static_cast<char>(std::tolower(c));
    EXPECT_EQ(RnLocale(lower.c_str()).getHandle(), row) << lower;
  }
}

TEST(RnLocaleResolveTest, UserSpellingsFindTheirRowAndUnknownNamesStayInvalid) {
  struct Case {
    const char *name, *expected;  // expected null: invalid
  } cases[] = {
      {"en-us", "en_US"},                // "-" for "_", any case
      {"fr_FR.iso88591@euro", "fr_FR"},  // code set and modifier cut
      {"de_XX", nullptr},                // no fallback to "de"
      {"x", nullptr},                    // the placeholder row never matches
      {nullptr, nullptr},
  };
  for (const Case& c : cases) {
    const RnLocale locale(c.name);
    EXPECT_EQ(locale.isValid(), c.expected != nullptr) << (c.name ? c.name : "null");
    EXPECT_STREQ(locale.getName(), c.expected != nullptr ? c.expected : "x");
  }
  EXPECT_TRUE(RnLocale("en-us") == RnLocale(RnLocale::English_US));
}

// The identifiers against ICU's; names and code sets of a few rows that are
// spelled unlike the rest (a shared identifier, the C row), and the invalid
// row. Every other row is its own lookup, checked above.
TEST(RnLocaleResolveTest, RowsCarryTheirPlatformIdentity) {
  for (const char* name : {"ar_EG", "de_CH", "fr_CA", "ja_JP", "zh_CN", "ru_RU", "pl_PL", "th_TH",
                           "he_IL", "hi_IN", "ko_KR", "sv_FI", "pt_BR", "es_MX", "en_GB",
                           "sr_Latn_CS", "az_Cyrl_AZ", "nn_NO", "km_KH"}) {
    EXPECT_EQ(RnLocale(name).getWinLCID(), uloc_getLCID(name)) << name;
  }
  struct Case {
    const char *name, *winName, *codeSet;
    unsigned long lcid;
    const char* descName;  // the language's own name; ICU's of fewer than four
                           // characters give way to the descriptive name
  } cases[] = {
      {"ja_JP", "Japanese_Japan", "shift-jis", 1041, "Japanese_Japan"},
      {"nb", "Norwegian_Bokmål", "iso88591", 20, "norsk bokmål"},
      {"no", "Norwegian", "iso88591", 20, "norsk"},
      {"c", "C", "ibm367", 64000, "C"},
      {"de_XX", "XXX", "ibm367", 512, "XXX"},
      {"de_CH", "German_Switzerland", "iso88591", 2055, "Deutsch"},
  };
  for (const Case& c : cases) {
    const RnLocale locale(c.name);
    EXPECT_STREQ(locale.getWinName(), c.winName) << c.name;
    EXPECT_STREQ(locale.getCharSet(), c.codeSet) << c.name;
    EXPECT_EQ(locale.getWinLCID(), c.lcid) << c.name;
    EXPECT_STREQ(locale.getDescName(), c.descName) << c.name;
  }
}

TEST(RnLocaleResolveTest, FamilyTests) {
  constexpr unsigned kArabic = 1 << 0, kChinese = 1 << 1, kSimplified = 1 << 2,
                     kTraditional = 1 << 3, kJapanese = 1 << 4, kKorean = 1 << 5, kHani = 1 << 6,
                     kThai = 1 << 7, kBidi = 1 << 8, kIdeographic = 1 << 9, kDictionary = 1 << 10;
  struct Case {
    const char* name;
    unsigned families;
  } cases[] = {
      {"ar_EG", kArabic | kBidi},
      {"he", kBidi},  // right to left, not Arabic
      {"zh", kChinese | kIdeographic},
      {"zh_HK", kChinese | kSimplified | kIdeographic},
      {"zh_TW", kChinese | kTraditional | kIdeographic},
      {"ja_JP", kJapanese | kIdeographic},
      {"ko_KR", kKorean | kIdeographic},
      {"ko_KR_HANI", kKorean | kHani | kIdeographic},
      {"th_TH_TH", kThai | kDictionary},
      {"en_US", 0},
  };
  for (const Case& c : cases) {
    const RnLocale l(c.name);
    const unsigned families = (l.isArabic() ? kArabic : 0u) | (l.isChinese() ? kChinese : 0u) |
                              (l.isSimplifiedChinese() ? kSimplified : 0u) |
                              (l.isTraditionalChinese() ? kTraditional : 0u) |
                              (l.isJapanese() ? kJapanese : 0u) | (l.isKorean() ? kKorean : 0u) |
                              (l.isKoreanHani() ? kHani : 0u) | (l.isThai() ? kThai : 0u) |
                              (l.isBIDI() ? kBidi : 0u) | (l.isIdeographic() ? kIdeographic : 0u) |
                              (l.needsDictionaryBreaking() ? kDictionary : 0u);
    EXPECT_EQ(families, c.families) << c.name;
  }
}

TEST(RnLocaleResolveTest, RegistryComesBeforeTheMap) {
  RnLocale::update("de-ch.utf8", "fr_FR");
  const unsigned int position = RnLocale::get("de_CH");
  ASSERT_NE(position, 0u);
  const RnLocale registered("de_CH");
  EXPECT_EQ(registered.getHandle(), -static_cast<int>(position));
  EXPECT_EQ(RnLocale::searchMap("de_CH"), registered.getHandle());
  EXPECT_STREQ(registered.getDescName(), "French_France");
  // The registry is searched by exact name; the map case-insensitively.
  EXPECT_EQ(RnLocale("DE_ch").getHandle(), RnLocale::searchMap("de_ch"));
  EXPECT_GT(RnLocale::searchMap("de_ch"), 0);

  RnLocale::update("my-loc", "A description");
  EXPECT_STREQ(RnLocale("my_LOC").getWinName(), "A description");
  EXPECT_STREQ(RnLocale("my_LOC").getCharSet(), "");
  RnLocale::update("x", "XXX");
  RnLocale::reset();
  EXPECT_EQ(RnLocale::get("de_CH"), 0u);
  EXPECT_EQ(RnLocale::get("my_LOC"), 0u);
  EXPECT_GT(RnLocale("de_CH").getHandle(), 0);
  const unsigned int placeholder = RnLocale::get("x");
  ASSERT_EQ(placeholder, 1u);
  RnLocale::release(RnLocale::get(placeholder));
  EXPECT_EQ(RnLocale::get("x"), 0u);
  EXPECT_EQ(RnLocale::get(1u), nullptr);
}

}  // namespace
