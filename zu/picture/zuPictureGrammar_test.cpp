#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "zu/locale/RnData.h"
#include "zu/picture/internal/zuPictureGrammarPieces.h"
#include "zu/picture/zuPicture.h"
#include "zu/testing/zuTestText.h"

using zu::testing::str;

namespace {

TEST(zuPictureGrammarTest, AlternativesSplitOutsideQuotesOnly) {
  struct Case {
    const char* picture;
    int ok;
    std::vector<std::string> pieces;
  } cases[] = {
      {"", 1, {}},
      {"num{9}", 1, {"num{9}"}},
      {"num{'a|b'}|text{X}", 1, {"num{'a|b'}", "text{X}"}},
      {"a||b", 1, {"a", "", "b"}},
      {"'it''s'|9", 1, {"'it''s'", "9"}},
      {"'open|9", 0, {}},
      {"num{9}|'", 0, {}},
  };
  for (const Case& c : cases) {
    zuStorage<zuString> pieces;
    pieces.Add("stale");
    EXPECT_EQ(zuPicture::getAlternates(c.picture, pieces), c.ok) << c.picture;
    ASSERT_EQ(pieces.GetSize(), c.pieces.size()) << c.picture;
    for (unsigned int i = 0; i < pieces.GetSize(); ++i) EXPECT_EQ(str(pieces[i]), c.pieces[i]);
  }
}

TEST(zuPictureGrammarTest, EscapesAndLegacyQuotes) {
  const char* escapes[][2] = {
      {"\\u0041", "A"},   {"x\\u00e9y", "x\xC3\xA9y"}, {"\\u00G1", "\\u00G1"},
      {"\\u41", "\\u41"}, {"\\\\u0041", "\\A"},        {"num{9}", "num{9}"},
  };
  for (const auto& e : escapes) EXPECT_EQ(str(zu::internal::interpret(e[0])), e[1]) << e[0];
  const char* legacy[][2] = {
      {"\"it's\"", "'it''s'"},
      {"'say \"hi\"'", "'say \"\"hi\"\"'"},
      {"99\"-\"99", "99'-'99"},
      {"plain", "plain"},
  };
  for (const auto& l : legacy) EXPECT_EQ(str(zuPicture::Ox42ToKDL(l[0])), l[1]) << l[0];
}

TEST(zuPictureGrammarTest, QuotedLiteralReadsDoubledQuotes) {
  // The literal and the position after it, as "text@end"; "(none)" when it is not closed.
  const std::tuple<const char*, unsigned int, const char*> cases[] = {
      {"'abc'9", 0, "abc@5"},
      {"9'it''s'9", 1, "it's@8"},
      {"''", 0, "@2"},
      {"'open", 0, "(none)"},
  };
  for (const auto& [picture, quotePos, expected] : cases) {
    unsigned int pos = 0;
    zuString text;
    const bool ok = zu::internal::getLiteralSubstr(picture, quotePos, pos, &text);
    EXPECT_EQ(ok ? str(text) + "@" + std::to_string(pos) : "(none)", expected) << picture;
  }
}

// What a sub-picture reads, as "category|locale|body"; "(none)" when it
// reads nothing.
TEST(zuPictureGrammarTest, SubPictureReadsWordQualifierAndBody) {
  const std::tuple<const char*, unsigned int, const char*> cases[] = {
      {"num{z9.99}", 0, "num||z9.99"},
      {"text(fr_FR){99'}'A}", 0, "text|fr_FR|99'}'A"},
      {"'x'date{D}", 3, "date||D"},
      {"null.whatever{}", 0, "null||"},
      {"date.tiny{}", 0, "(none)"},
      {"color{9}", 0, "(none)"},
      {"num{'open}", 0, "(none)"},
      {"num{9", 0, "(none)"},
      {"num", 0, "(none)"},
      {"9num{9}", 0, "(none)"},
  };
  for (const auto& [picture, pos, expected] : cases) {
    zuString category("x"), locale, body("x");
    const bool ok = zuPicture::isSubPicture(picture, pos, category, locale, body);
    EXPECT_EQ(ok ? str(category) + "|" + str(locale) + "|" + str(body) : "(none)", expected)
        << picture;
  }
}

TEST(zuPictureGrammarTest, StylesTakeTheLocalePatterns) {
  const RnData de("de_DE");
  zuString category, locale, body;
  ASSERT_TRUE(zuPicture::isSubPicture("time.full(de_DE){ignored}", 0, category, locale, body));
  EXPECT_EQ(str(category) + " " + str(locale), "time.full de_DE");
  EXPECT_EQ(str(body), str(de.getTimeFormat(RnData::FULL_FMT)));
  locale = "de_DE";  // the locale in force resolves an unqualified style
  ASSERT_TRUE(zuPicture::isSubPicture("date.long{}", 0, category, locale, body));
  EXPECT_EQ(str(body), str(de.getDateFormat(RnData::LONG_FMT)));
  ASSERT_TRUE(zuPicture::isSubPicture("num.currency(de_DE){}", 0, category, locale, body));
  EXPECT_NE(str(body).find("zz9.99 "), std::string::npos) << str(body);
  ASSERT_TRUE(zuPicture::isSubPicture("datetime.medium(fr_FR){}", 0, category, locale, body));
  EXPECT_NE(str(body).find("date(fr_FR){"), std::string::npos) << str(body);
  EXPECT_NE(str(body).find("time(fr_FR){"), std::string::npos) << str(body);
  ASSERT_TRUE(zuPicture::hasSubPicture("datetime.medium(fr_FR){}", 0, category, locale, body));
  EXPECT_EQ(str(body).find("(fr_FR)"), std::string::npos) << str(body);
  EXPECT_FALSE(zuPicture::isSubPicture("num.short{}", 0, category, locale, body));
}

// The first sub-picture after literals and filler, as "category|body" (the
// filler goes in front of the body); "(none)" when the picture is malformed.
TEST(zuPictureGrammarTest, HasSubPictureSkipsFiller) {
  const std::pair<const char*, const char*> cases[] = {
      {"99'x'-num{9}", "num|99'x'-9"},
      {"0 text{X}", "text|0 X"},
      {"1num{9}", "(none)"},
      {"", "|"},
      {"9.9", "|9.9"},
      {"'open", "(none)"},
      {"z9", "(none)"},
  };
  for (const auto& [picture, expected] : cases) {
    zuString category, locale, body;
    const bool ok = zuPicture::hasSubPicture(picture, 0, category, locale, body);
    EXPECT_EQ(ok ? str(category) + "|" + str(body) : "(none)", expected) << picture;
  }
}

// The first locale qualifier ("" for none); "(none)" for a malformed picture.
TEST(zuPictureGrammarTest, LocaleFromPicture) {
  const std::pair<const char*, const char*> cases[] = {
      {"num(de_DE){9}", "de_DE"},
      {"'a' 9 date{D}/time(ja_JP){HH}", "ja_JP"},
      {"num{9}", ""},
      {"num(de_DE){9", "(none)"},
      {"#", "(none)"},
  };
  for (const auto& [picture, expected] : cases) {
    zuString out("stale");
    const bool ok = zuPicture::getLocaleFromPicture(picture, "", out);
    EXPECT_EQ(ok ? str(out) : "(none)", expected) << picture;
  }
}

TEST(zuPictureGrammarTest, CharacterClasses) {
  EXPECT_TRUE(zu::internal::isCharNumeric('0') && zu::internal::isCharNumeric('9'));
  EXPECT_FALSE(zu::internal::isCharNumeric('1'));
  EXPECT_TRUE(zu::internal::isCharLiteral('$') && zu::internal::isCharLiteral('"'));
  EXPECT_FALSE(zu::internal::isCharLiteral('|') || zu::internal::isCharLiteral('{'));
  EXPECT_TRUE(zu::internal::isCharAlphabetic(0xE9) && zu::internal::isCharAlphabetic('q'));
  EXPECT_FALSE(zu::internal::isCharAlphabetic('9'));
  EXPECT_TRUE(zu::internal::isCharQuote('\''));
  EXPECT_FALSE(zu::internal::isCharQuote('"'));
}

}  // namespace
