#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "zu/picture/RnNum.h"

namespace {

// What only a reader meets: texts that neither formatting nor the random
// texts of the recorded digest in RnNum_test.cpp (which parses both by the
// hundred thousand) produce.
TEST(RnNumParseTest, ReadsTextThroughPicture) {
  struct Case {
    const char *locale, *text, *picture;
    const char* expected;  // null: the parse fails
  } const cases[] = {
      {"en_US", "+012.50", "s999.99", "12.5"},
      {"en_US", "234.50", "zz9.99zz", "234.5"},  // optional digits leave the 9s theirs
      {"de_DE", "1.234,50 eur", "z,zz9.99 $$", "1234.5"},
      {"en_US", "\uff11\uff12", "99", "12"},
      // Two signs: a text no formatting writes.
      {"en_US", "-5CR", "s9CR", nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.locale) + " \"" + c.text + "\" through \"" + c.picture + "\"");
    RnNum number("99", c.locale);
    const bool parsed = number.parse(c.text, c.picture);
    EXPECT_EQ(parsed, c.expected != nullptr);
    EXPECT_STREQ(number.getText(), parsed ? c.expected : "99");
  }
}

// Every value comes back from its own formatting, to the picture's precision;
// only a percentage with more digits than its picture is blanked. This is
// where the plain inverses of formatting are checked.
TEST(RnNumParseTest, RoundTripsInManyLocales) {
  static const char* const kLocales[] = {"en_US", "de_DE", "fr_FR", "ar",    "hi_IN",
                                         "ja_JP", "fa",    "de_CH", "ru_RU", "th_TH_TH",
                                         "ar_EG", "es_ES", "zh_CN"};
  static const char* const kPictures[] = {
      "z,zzz,zz9.99",    "s999999.999", "zzzzz9.88",     "(z,zzz,zz9.99)", "9.999E",
      "zz,zzz,zz9.99CR", "zzz,zz9%",    "$z,zzz,zz9.99", "$$ zzzzzz9.zz",  "ZZZZZZ9v99",
  };
  static const char* const kValues[] = {"0",         "1",    "-1",   "12.5",   "-1234.56",
                                        "999999.99", "0.07", "-0.5", "100000", "31.4159"};
  auto overflows = [](std::string_view picture, std::string_view value) {
    return picture == "zzz,zz9%" && (value == "100000" || value == "999999.99");
  };
  for (const char* locale : kLocales) {
    for (const char* picture : kPictures) {
      for (const char* value : kValues) {
        RnNum source(value, locale);
        const zuString text = source.format(picture);
        ASSERT_EQ(text.IsEmpty(), overflows(picture, value))
            << locale << " " << value << " " << picture;
        if (text.IsEmpty()) continue;
        RnNum back("", locale);
        ASSERT_TRUE(back.parse(text, picture))
            << locale << " " << value << " \"" << picture << "\" gave \"" << text << "\"";
        EXPECT_EQ(RnNum(back.getText(), locale).format(picture), text)
            << locale << " " << value << " \"" << picture << "\" read back as " << back.getText();
      }
    }
  }
}

// Pseudo-random pictures and texts: nothing throws, nothing crashes, and
// a long picture is read in linear time.
TEST(RnNumParseTest, BadInputNeverThrows) {
  static const char kAlphabet[] = "(%$,.)89BCDERSVZbcdrsvzt'9z -";
  uint32_t seed = 12345;
  auto next = [&seed] {
    seed = seed * 1103515245u + 12345u;
    return (seed >> 16) & 0x7FFF;
  };
  for (int round = 0; round < 2000; ++round) {
    std::string picture, text;
    const unsigned length = next() % 12;
    for (unsigned i = 0; i < length; ++i) picture += kAlphabet[next() % (sizeof kAlphabet - 1)];
    for (unsigned i = 0; i < length; ++i) text += kAlphabet[next() % (sizeof kAlphabet - 1)];
    RnNum number(round % 2 ? "-12.5" : "0", round % 3 ? "ar" : "de_DE");
    EXPECT_NO_THROW(number.format(picture.c_str()));
    EXPECT_NO_THROW(number.parse(text.c_str(), picture.c_str()));
  }
  const std::string huge(200000, 'z');
  RnNum number("5", "en_US");
  EXPECT_STREQ(number.format(huge.c_str()), "");
  EXPECT_STREQ(number.format((std::string(200000, ',') + "9").c_str()), "5");
  EXPECT_FALSE(number.parse(std::string(200000, '1').c_str(), "999"));
  EXPECT_TRUE(number.parse((std::string(199999, '0') + "7").c_str(), huge.c_str()));
}

TEST(RnNumParseTest, ConversionHelpers) {
  zuString out;
  EXPECT_TRUE(RnNum::DblToStr(-1.5, 7, 2, false, out));
  EXPECT_STREQ(out, "-001.50");
  EXPECT_TRUE(RnNum::DblToStr(12.0, 0, 0, true, out));
  EXPECT_STREQ(out, "12.");
  EXPECT_TRUE(RnNum::DblToStr(0.1 + 0.2, 0, 17, false, out));
  EXPECT_STREQ(out, "0.300000000000000");
  EXPECT_FALSE(RnNum::DblToStr(1.0 / 0.0, 0, 2, false, out));
  EXPECT_FALSE(RnNum::DblToStr(1.0, 326, 2, false, out));

  double value = 7;
  EXPECT_TRUE(RnNum::StrToDbl(" -1.25e2 ", value));
  EXPECT_EQ(value, -125.0);
  EXPECT_TRUE(RnNum::StrToDbl(".5", value));
  EXPECT_EQ(value, 0.5);
  for (const char* bad : {"", "1,5", "1.2.3", "inf", "0x10", "1e", "--1", "1e400"}) {
    EXPECT_FALSE(RnNum::StrToDbl(bad, value)) << bad;
  }
  EXPECT_EQ(value, 0.5);

  zuString text("a\u00e9\u20ac\U0001F600b");
  RnNum::Reverse(text);
  EXPECT_STREQ(text, "b\U0001F600\u20ac\u00e9a");

  unsigned leading = 0, trailing = 0;
  RnNum::getSymbolCount("$z,zz9.99'9'", leading, trailing);
  EXPECT_EQ(leading, 4u);
  EXPECT_EQ(trailing, 2u);
  RnNum::getSymbolCount("9.9.9", leading, trailing);
  EXPECT_EQ(leading + trailing, 0u);

  RnNum number("1", "en_US");
  number.format("99.99");
  EXPECT_TRUE(number.IsNonIgnorable(0xFF19));  // full-width 9
  EXPECT_FALSE(number.IsNonIgnorable(','));
}

}  // namespace
