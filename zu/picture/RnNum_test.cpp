#include "zu/picture/RnNum.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "zu/testing/zuDigest.h"

namespace {

// Two rows to show a locale's symbols at work, and the edges the random
// pictures below (half a million of them, recorded, with the radix position
// and the ASCII-digits option) seldom or never reach: rounding in the
// decimal text, a carry into the exponent, full-width symbols, extreme values.
TEST(RnNumTest, FormatsThroughPictures) {
  struct Case {
    const char *locale, *value, *picture, *expected;
  } const cases[] = {
      {"en_US", "2.675", "9.99", "2.68"},   // rounded from the decimal text, not the double
      {"en_US", "-0.001", "9.99", "0.00"},  // no sign on a value that rounds to zero
      {"de_DE", "-1234.5", "z,zz9.99 $", "-1.234,50 \u20ac"},
      {"ar", "-1234.5", "z,zz9.99", "\u061c-\u0661\u066c\u0662\u0663\u0664\u066b\u0665\u0660"},
      {"en_US", "1234.5", "\uff5a\uff0c\uff5a\uff5a\uff19\uff0e\uff19\uff19", "1,234.50"},
      {"en_US", "9.999", "9.99E", "1.00E+1"},  // rounding carries into the exponent
      {"en_US", "1e-300", "9.9E", "1.0E-300"},
      {"en_US", "1e400", "9", ""},  // one past the range of a double
  };
  for (const Case& c : cases) {
    RnNum number(c.value, c.locale);
    EXPECT_STREQ(number.format(c.picture), c.expected)
        << c.locale << " value \"" << c.value << "\" picture \"" << c.picture << "\"";
  }
}

// Random numeric pictures from a few kept ones (so that the thread's memo
// of pictures hits, misses and evicts) and fresh ones, with random values:
// formatted, parsed back and parsed from random texts, in several locales.
uint64_t numericDigest(uint32_t seed, int cases) {
  static const char* const kPieces[] = {
      "9",  "8", "Z", "z", ",", ".",   "V", "v", "S", "s", "(",  ")",  "CR",     "cr", "DB",
      "db", "E", "%", "$", "t", "'x'", "-", " ", "9", "z", "99", "zz", "\uFF19", "''", "C"};
  static const char* const kLocales[] = {"en_US", "de_DE", "fr_FR", "ar", "hi_IN", "ja_JP", ""};
  static const char kValueChars[] = "0123456789.-+eE 9";
  std::mt19937 random(seed);
  auto pick = [&](size_t count) { return random() % count; };
  std::vector<std::string> kept;
  auto picture = [&] {
    if (kept.size() > 11 && pick(2) == 0) return kept[pick(kept.size())];
    std::string made;
    for (size_t n = 1 + pick(9); n > 0; --n) made += kPieces[pick(std::size(kPieces))];
    if (kept.size() < 12) kept.push_back(made);
    return made;
  };
  auto text = [&](const char* chars, size_t count) {
    std::string made;
    for (size_t n = pick(12); n > 0; --n) made += chars[pick(count)];
    return made;
  };
  zu::testing::Digest digest;
  for (int i = 0; i < cases; ++i) {
    const std::string shape = picture();
    const zuString locale(kLocales[pick(std::size(kLocales))]);
    std::string value = text(kValueChars, sizeof kValueChars - 1);
    if (pick(4) != 0) {  // mostly numbers: sign, digits, fraction
      value = text("0123456789", 10);
      value.push_back('0');
      if (pick(3) == 0) value.insert(value.begin(), '-');
      if (pick(2) == 0) value.append(1, '.').append(text("0123456789", 10));
    }
    RnNum number(zuString(value.c_str()), locale);
    unsigned radix = 0;
    const zuString out = number.format(shape.c_str(), &radix, static_cast<int>(pick(2)));
    digest.add(out);
    digest.add(radix);
    digest.add(number.isValid());
    RnNum back(zuString(""), locale);
    digest.add(back.parse(pick(4) == 0 ? zuString(text("0123456789.,-$ %", 16).c_str()) : out,
                          shape.c_str()));
    digest.add(back.getText());
    digest.add(back.getValue());
    digest.add(back.IsNonIgnorable('9'));
  }
  return digest.value;
}

// Recorded from the engine that read every picture and value anew on each
// call; the memos must change none of its answers.
TEST(RnNumTest, RandomPicturesGiveTheRecordedAnswers) {
  EXPECT_EQ(numericDigest(1, 250000), 0x4CFD99BA91CEFB35ull);
  EXPECT_EQ(numericDigest(2, 250000), 0x8B9F0CA2D596DBA9ull);
}

}  // namespace
