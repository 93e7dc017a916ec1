#include "zu/picture/RnText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "zu/picture/zuPicture.h"
#include "zu/testing/zuDigest.h"
#include "zu/testing/zuTestText.h"

using zu::testing::str;

namespace {

// A few rows to show the symbols at work, and the edges, through the static
// entry points; the recorded random pictures below run the same paths (quotes,
// literals, short and long values) over 800000 inputs.
TEST(RnTextTest, FormatsThroughPictures) {
  struct Case {
    const char *value, *picture, *expected;  // value null: the null value
  } const cases[] = {
      {"AB12", "AA-99", "AB-12"},
      {"ABC", "AA", ""},                       // a character is left over
      {"AB", "\xEF\xBC\xA1", "\xEF\xBC\xA1"},  // a full-width letter is a literal here
      {nullptr, "'x'", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(str(RnText::formatValue(zuString(c.value), c.picture)), c.expected) << c.picture;
  }
  EXPECT_EQ(str(RnText("AB12", "en_US").format("AA-99")), "AB-12");
}

TEST(RnTextTest, ParsesThroughPictures) {
  struct Case {
    const char *text, *picture;  // text null: the null value
    bool ok;
    const char* value;
  } const cases[] = {
      {"ab  cd", "XX*XX", true, "abcd"},
      {"abcd", "XX+XX", false, ""},
      {"", "", true, ""},
      {nullptr, "", false, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.text != nullptr ? c.text : "(null)") + " / " + c.picture);
    zuString value("before");
    EXPECT_EQ(RnText::parseText(zuString(c.text), c.picture, value), c.ok);
    EXPECT_EQ(str(value), c.ok ? c.value : "before");
  }
  RnText text("before", "en_US");
  EXPECT_FALSE(text.parse("A1", "AA"));
  EXPECT_EQ(str(text.getText()), "before");
  EXPECT_TRUE(text.isValid());
}

TEST(RnTextTest, ConstructorsChooseLocaleAndValidity) {
  EXPECT_STREQ(RnText("x", "xx_QQ").getLocale().getName(), "en_US");
  EXPECT_EQ(RnText("x", "ar_SA").getZeroSymbol(), 0x660u);

  EXPECT_EQ(str(RnText("AB-12", "AA-99", "en_US").getText()), "AB12");

  RnText failed("AB-12", "99-99", "en_US");
  EXPECT_FALSE(failed.isValid());
  EXPECT_TRUE(failed.getText().IsNull());
  EXPECT_FALSE(RnText(zuString(), "en_US").isValid());
}

TEST(RnTextTest, MillionSymbolPictureRoundTrips) {
  const std::string value(1000000, 'a');
  const std::string picture(1000000, 'X');
  RnText text(value.c_str(), "en_US");
  const zuString formatted = text.format(picture.c_str());
  EXPECT_EQ(formatted.Length(), value.size());
  EXPECT_TRUE(text.parse(formatted, std::string(1000000, 'A').c_str()));
  EXPECT_EQ(text.getText().Length(), value.size());
}

// Random text pictures from a few kept ones (so that the thread's memo of
// pictures hits, misses and evicts) and fresh ones, with random values
// mostly of the length getSymbolCount gives (so a wrong count changes the
// digest): formatted, parsed back and parsed from random texts.
// Each case whose picture makes a clause of the text category (quotes
// paired) and whose value is not empty is also formatted, and its result
// parsed, through the dispatcher, which takes fixed-width pictures through a layout of its own:
// `compared` counts those, `mismatches` the answers that differ from the
// engine's.
uint64_t textDigest(uint32_t seed, int cases, int& compared, int& mismatches) {
  static const char* const kPieces[] = {"9", "A",  "X",  "O",      "0",      "t",  "-",
                                        " ", "?",  "*",  "+",      "'q'",    "''", "'",
                                        "B", "99", "AA", "\uFF19", "\u00E9", "X"};
  static const char* const kChars[] = {"1", "7", "a",      "Z",      "-",      " ", "\t",
                                       "q", "B", "\u00E9", "\u0663", "\u3000", "?"};
  std::mt19937 random(seed);
  auto pick = [&](size_t count) { return random() % count; };
  std::vector<std::string> kept;
  zu::testing::Digest digest;
  for (int i = 0; i < cases; ++i) {
    std::string picture;
    if (kept.size() > 11 && pick(2) == 0) {
      picture = kept[pick(kept.size())];
    } else {
      for (size_t n = 1 + pick(7); n > 0; --n) picture += kPieces[pick(std::size(kPieces))];
      if (kept.size() < 12) kept.push_back(picture);
    }
    unsigned symbols = 0;
    RnText::getSymbolCount(picture.c_str(), symbols);
    std::string value;
    for (size_t n = pick(3) == 0 ? pick(9) : symbols; n > 0; --n) {
      value += kChars[pick(std::size(kChars) - (pick(4) == 0 ? 0 : 4))];
    }
    const zuString out = RnText::formatValue(value.c_str(), picture.c_str());
    digest.add(out);
    zuString read("unchanged");
    digest.add(
        RnText::parseText(pick(4) == 0 ? zuString(value.c_str()) : out, picture.c_str(), read));
    digest.add(read);
    if (value.empty() || std::count(picture.begin(), picture.end(), '\'') % 2 != 0) continue;
    const std::string clause = "text{" + picture + "}";
    if (!zuPicture::isTextPicture(clause.c_str())) continue;
    int status = -1;
    const zuString formatted = zuPicture::format(value.c_str(), clause.c_str(), "en_US", &status);
    mismatches += str(formatted) != str(out) || status != !out.IsEmpty();
    zuString engineRead;
    const bool engineParsed = RnText::parseText(out, picture.c_str(), engineRead);
    const zuString parsed = zuPicture::parse(out, clause.c_str(), "en_US", &status);
    mismatches += status != engineParsed || str(parsed) != (engineParsed ? str(engineRead) : "");
    ++compared;
  }
  return digest.value;
}

// Recorded from the engine that read every picture anew on each call; the
// memo of pictures and the one-pass layouts must change none of its answers.
TEST(RnTextTest, RandomPicturesGiveTheRecordedAnswers) {
  int compared = 0;
  int mismatches = 0;
  EXPECT_EQ(textDigest(1, 400000, compared, mismatches), 0x6882F10B1E6E9D41ull);
  EXPECT_EQ(textDigest(2, 400000, compared, mismatches), 0x1D0A42D3AD8B36C5ull);
  EXPECT_EQ(mismatches, 0);
  EXPECT_GT(compared, 300000);
}

}  // namespace
