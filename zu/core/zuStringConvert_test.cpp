#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "zu/core/zuCharConverter.h"
#include "zu/core/zuGxCharConverter.h"
#include "zu/core/zuString.h"

namespace {

const char kNihonUtf8[] = "\xE6\x97\xA5\xE6\x9C\xAC";  // two kanji
const char kNihonSjis[] = "\x93\xFA\x96\x7B";

TEST(zuStringConvertTest, ConstructsFromAnyEncodingOrByteOrderMark) {
  const zuGxCharConverter sjis("Shift_JIS");
  struct Case {
    std::string bytes;
    const zuCharConverter* converter;
    const char* expected;
  } const cases[] = {
      {kNihonSjis, &sjis, kNihonUtf8},
      {std::string("A\0\xE9\0\0\0", 6), zuCharConverter::UTF16LE(), "A\xC3\xA9"},
      {std::string("\0\0\0A\0\0\0\xE9\0\0\0\0", 12), zuCharConverter::UTF32BE(), "A\xC3\xA9"},
      {"a\x93", &sjis, "a\xEF\xBF\xBD"},  // a cut character becomes U+FFFD
  };
  for (const Case& c : cases) {
    EXPECT_STREQ(zuString(c.bytes.data(), c.converter), c.expected);
    EXPECT_STREQ(zuString(c.bytes.data(), static_cast<unsigned int>(c.bytes.size()), c.converter),
                 c.expected);
  }
  // An embedded NUL ends the text, as in a byte copy.
  EXPECT_EQ(zuString("ab\0cd", 5, &sjis).Length(), 2u);
  EXPECT_TRUE(zuString(static_cast<const char*>(nullptr), &sjis).IsNull());
  EXPECT_STREQ(zuString("", 0, &sjis), "");

  // Without a converter a byte-order mark chooses one. Assigning a plain C
  // string with a UTF-16 mark throws: zuString_test.
  const std::pair<std::string, const char*> marked[] = {
      {std::string("\xFF\xFEz\0", 4), "z"},
      {std::string("\xFE\xFF\0z\0\xE9", 6), "z\xC3\xA9"},
      {std::string("\xFF\xFEz\0\0\0y\0", 8), "z"},  // a 0 unit ends the text
      {std::string("\xEF\xBB\xBFxyz", 6), "xyz"},
  };
  for (const auto& [bytes, expected] : marked) {
    EXPECT_STREQ(zuString(bytes.data(), static_cast<unsigned int>(bytes.size())), expected);
  }
}

TEST(zuStringConvertTest, GetAllocdCharInEveryForm) {
  const zuString text(kNihonUtf8);
  const zuGxCharConverter sjis("SJIS");
  unsigned int bytes = 0;
  std::unique_ptr<char[]> byName(text.GetAllocdChar("sjis", bytes));
  EXPECT_EQ(std::string(byName.get(), bytes), kNihonSjis);
  std::unique_ptr<char[]> byConverter(text.GetAllocdChar(&sjis, bytes));
  EXPECT_EQ(bytes, 4u);
  EXPECT_STREQ(std::unique_ptr<char[]>(text.GetAllocdChar(&sjis)).get(), kNihonSjis);
  EXPECT_STREQ(std::unique_ptr<char[]>(text.GetAllocdChar("windows-1252")).get(), "??");

  std::unique_ptr<char[]> wide(zuString("ab").GetAllocdChar(zuCharConverter::UTF32LE(), bytes));
  EXPECT_EQ(bytes, 8u);
  EXPECT_EQ(std::string(wide.get(), 12), std::string("a\0\0\0b\0\0\0\0\0\0\0", 12));
  EXPECT_STREQ(std::unique_ptr<char[]>(zuString().GetAllocdChar(&sjis)).get(), "");
}

TEST(zuStringConvertTest, CopyToCharGrowsTheCallersArrayOnlyWhenNeeded) {
  const zuGxCharConverter sjis("SJIS");
  char* buffer = nullptr;
  unsigned int capacity = 0;
  EXPECT_EQ(zuString(kNihonUtf8).CopyToChar(buffer, capacity, &sjis), 4u);
  EXPECT_STREQ(buffer, kNihonSjis);
  const char* first = buffer;
  const unsigned int firstCapacity = capacity;
  EXPECT_EQ(zuString("x").CopyToChar(buffer, capacity, &sjis), 1u);
  EXPECT_TRUE(buffer == first && capacity == firstCapacity);
  EXPECT_STREQ(buffer, "x");
  EXPECT_EQ(zuString(std::string(200, 'y').c_str()).CopyToChar(buffer, capacity, &sjis), 200u);
  EXPECT_GT(capacity, firstCapacity);
  delete[] buffer;
}

}  // namespace
