#include <gtest/gtest.h>

#include <string>
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
      {"num{'a|b'}|text{X}", 1, {"num{'a|b'}", "text{X}"}},
      {"a||b", 1, {"a", "", "b"}},
      {"'it''s'|9", 1, {"'it''s'", "9"}},
      {"'open|9", 0, {}},
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
  struct Case {
    zuString (*rewrite)(const zuString&);
    const char *picture, *expected;
  } const cases[] = {
      {zu::internal::interpret, "x\\u00e9y", "x\xC3\xA9y"},
      {zu::internal::interpret, "\\u00G1", "\\u00G1"},  // not four hex digits: kept as written
      {zu::internal::interpret, "\\\\u0041", "\\A"},
      {zuPicture::Ox42ToKDL, "\"it's\"", "'it''s'"},
      {zuPicture::Ox42ToKDL, "'say \"hi\"'", "'say \"\"hi\"\"'"},
      {zuPicture::Ox42ToKDL, "99\"-\"99", "99'-'99"},
  };
  for (const Case& c : cases) EXPECT_EQ(str(c.rewrite(c.picture)), c.expected) << c.picture;
}

// What each reader of the grammar finds at a position, as text; "(none)"
// when it reads nothing or the picture is malformed.
std::string quotedLiteral(const char* picture, unsigned int pos) {  // "text@end"
  unsigned int end = 0;
  zuString text;
  return zu::internal::getLiteralSubstr(picture, pos, end, &text)
             ? str(text) + "@" + std::to_string(end)
             : "(none)";
}
std::string subPicture(const char* picture, unsigned int pos) {  // "category|locale|body"
  zuString category("x"), locale, body("x");
  return zuPicture::isSubPicture(picture, pos, category, locale, body)
             ? str(category) + "|" + str(locale) + "|" + str(body)
             : "(none)";
}
// The first sub-picture after literals and filler (which go in front of
// the body), as "category|body".
std::string firstSubPicture(const char* picture, unsigned int pos) {
  zuString category, locale, body;
  return zuPicture::hasSubPicture(picture, pos, category, locale, body)
             ? str(category) + "|" + str(body)
             : "(none)";
}
std::string firstLocale(const char* picture, unsigned int) {  // "" for none
  zuString out("stale");
  return zuPicture::getLocaleFromPicture(picture, "", out) ? str(out) : "(none)";
}

TEST(zuPictureGrammarTest, ReadersFindTheirPiece) {
  struct Case {
    std::string (*read)(const char*, unsigned int);
    const char* picture;
    unsigned int pos;
    const char* expected;
  } const cases[] = {
      {quotedLiteral, "9'it''s'9", 1, "it's@8"},
      {quotedLiteral, "'open", 0, "(none)"},
      {subPicture, "num{z9.99}", 0, "num||z9.99"},
      {subPicture, "text(fr_FR){99'}'A}", 0, "text|fr_FR|99'}'A"},
      {subPicture, "'x'date{D}", 3, "date||D"},
      {subPicture, "null.whatever{}", 0, "null||"},
      {subPicture, "color{9}", 0, "(none)"},
      {subPicture, "num{9", 0, "(none)"},
      // Styles take the locale's patterns and ignore the body.
      {subPicture, "time.full(de_DE){ignored}", 0, "time.full|de_DE|HH:MM:SS Z"},
      {subPicture, "num.currency(de_DE){}", 0, "num.currency|de_DE|zzz,zzz,zzz,zzz,zz9.99 $"},
      {subPicture, "datetime.medium(fr_FR){}", 0,
       "datetime.medium|fr_FR|date(fr_FR){D MMM YYYY}, time(fr_FR){HH:MM:SS}"},
      {subPicture, "num.short{}", 0, "(none)"},
      {firstSubPicture, "99'x'-num{9}", 0, "num|99'x'-9"},
      {firstSubPicture, "0.9", 0, "|0.9"},
      {firstSubPicture, "1num{9}", 0, "(none)"},
      {firstSubPicture, "'open", 0, "(none)"},
      {firstSubPicture, "datetime.medium(fr_FR){}", 0,
       "datetime.medium|date{D MMM YYYY}, time{HH:MM:SS}"},
      {firstLocale, "'a' 9 date{D}/time(ja_JP){HH}", 0, "ja_JP"},
      {firstLocale, "num{9}", 0, ""},
      {firstLocale, "num(de_DE){9", 0, "(none)"},
  };
  for (const Case& c : cases) EXPECT_EQ(c.read(c.picture, c.pos), c.expected) << c.picture;
}

TEST(zuPictureGrammarTest, TheLocaleInForceResolvesAnUnqualifiedStyle) {
  zuString category, locale("de_DE"), body;
  ASSERT_TRUE(zuPicture::isSubPicture("date.long{}", 0, category, locale, body));
  EXPECT_EQ(str(body), str(RnData("de_DE").getDateFormat(RnData::LONG_FMT)));
}

}  // namespace
