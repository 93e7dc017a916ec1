#include "zu/picture/RnNum.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct FormatCase {
  const char* locale;
  const char* value;
  const char* picture;
  const char* expected;
};

std::string formatted(const FormatCase& c) {
  RnNum number(c.value, c.locale);
  return static_cast<const char*>(number.format(c.picture));
}

void expectFormats(const FormatCase* cases, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    const FormatCase& c = cases[i];
    EXPECT_EQ(formatted(c), c.expected)
        << c.locale << " value \"" << c.value << "\" picture \"" << c.picture << "\"";
  }
}

TEST(RnNumTest, DigitSymbolsAndZeroBlanking) {
  static const FormatCase kCases[] = {
      {"en_US", "-12.5", "s999.99", "-012.50"},
      {"en_US", "-12.5", "zz9.99", "-12.50"},
      {"en_US", "1234.5", "z,zz9.99", "1,234.50"},
      {"en_US", "34.5", "z,zz9.99", "34.50"},
      {"en_US", "12345", "999", ""},
      {"en_US", "0.5", "99%", "50%"},
      {"en_US", "0", "zzz", ""},
      {"en_US", "0", "zz9", "0"},
      {"en_US", "12.5", "99.88", "12.5"},
      {"en_US", "12", "99.88", "12"},
      {"en_US", "7", "ZZ9", "  7"},
      {"en_US", "12", "zz9.zz", "12"},
      {"en_US", "12.5", "zz9.zz", "12.5"},
      {"en_US", "12345678901234.5", "99999999999999.9", "12345678901234.5"},
      {"en_US", "2.675", "9.99", "2.68"},
      {"en_US", "-2.675", "9.99s", "2.68-"},
      {"en_US", "0.5", ".99", ".50"},
      {"en_US", "0", "'none'", "none"},
  };
  expectFormats(kCases, std::size(kCases));
}

}  // namespace
