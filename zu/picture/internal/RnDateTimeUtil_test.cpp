#include "zu/picture/internal/RnDateTimeUtil.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace zu::internal {
namespace {

TEST(RnDateTimeUtilTest, WritesAndReadsNumbersInEachForm) {
  struct Case {
    int64_t value;
    int width;
    NumeralStyle style;
    const char* expected;
  } const cases[] = {
      {5, 3, {NumeralForm::kLocale, 0x0660}, "\xD9\xA0\xD9\xA0\xD9\xA5"},
      {-42, 3, {NumeralForm::kLocale, '0'}, "-042"},
      {INT64_MIN, 1, {NumeralForm::kLocale, '0'}, "-9223372036854775808"},
      {10, 2, {NumeralForm::kNative, '0'}, "十"},
      {21, 2, {NumeralForm::kNative, '0'}, "二十一"},
      {2024, 4, {NumeralForm::kNative, '0'}, "二〇二四"},
      {0, 1, {NumeralForm::kNative, '0'}, "〇"},
  };
  for (const Case& c : cases) {
    zuString out;
    appendNumber(out, c.value, c.width, c.style);
    EXPECT_STREQ(out, c.expected) << c.value;
  }
  const NumeralStyle styles[] = {{NumeralForm::kLocale, '0'},
                                 {NumeralForm::kLocale, 0x0966},
                                 {NumeralForm::kFullWidth, '0'},
                                 {NumeralForm::kNative, '0'}};
  for (const NumeralStyle& style : styles) {
    for (int value = 0; value < 10000; value += 7) {
      zuString text;
      appendNumber(text, value, 1, style);
      int read = -1;
      EXPECT_EQ(readNumber(text, 0, 1, 4, read), static_cast<int>(text.Length())) << value;
      EXPECT_EQ(read, value);
    }
  }
  // Digits of any form are read, within the counts asked for.
  struct Read {
    const char* text;
    unsigned pos;
    int minDigits, maxDigits;
    const char* expected;  // value@end, "(none)" when no number is read
  } const reads[] = {
      {"05x", 0, 1, 2, "5@2"},
      {"5", 0, 2, 2, "(none)"},
      {"12345", 0, 1, 3, "123@3"},
      {"a7", 1, 1, 1, "7@2"},
      {"１5", 0, 1, 2, "15@4"},  // full-width then ASCII
      {"二〇二四年", 0, 4, 4, "2024@12"},
      {"二〇二四年", 0, 1, 2, "(none)"},  // 2024 needs four digits
      {"〇十", 0, 1, 2, "0@3"},
      {"9999999999", 0, 1, 12, "999999999@9"},
  };
  for (const Read& c : reads) {
    int value = 0;
    const int end = readNumber(zuString(c.text), c.pos, c.minDigits, c.maxDigits, value);
    EXPECT_EQ(end < 0 ? "(none)" : std::to_string(value) + "@" + std::to_string(end), c.expected)
        << c.text;
  }
}

// TextOut gives the bytes appended in order, whether they stay in its
// buffer or run past it into a string; nothing appended is a null string.
TEST(RnDateTimeUtilTest, TextOutKeepsEveryByteAcrossItsBuffer) {
  EXPECT_TRUE(TextOut().text().IsNull());
  for (const int pieces : {1, 20, 60, 200}) {
    TextOut out;
    std::string expected;
    for (int piece = 0; piece < pieces; ++piece) {
      out += 'a';
      out += uint32_t{0xE9};  // é
      out += zuString("-name-");
      out += "\t";
      appendNumber(out, piece, 3, {NumeralForm::kLocale, '0'});
      char number[16];
      std::snprintf(number, sizeof number, "%03d", piece);
      expected += std::string("a\xC3\xA9-name-\t") + number;
    }
    EXPECT_EQ(std::string(out.text()), expected) << pieces;
  }
}

TEST(RnDateTimeUtilTest, MatchesNamesIgnoringCaseLongestFirst) {
  const zuString names[] = {"Jun", "June", "", "\xC3\xA9t\xC3\xA9", "Mai"};
  struct Case {
    const char* text;
    unsigned pos;
    int expectedEnd, expectedIndex;
  } const cases[] = {
      {"june 5", 0, 4, 1}, {"JUN 5", 0, 3, 0},
      {"x Mai", 2, 5, 4},  {"\xC3\x89T\xC3\x89", 0, 5, 3},  // upper-case accented letters
      {"Ju", 0, -1, -1},   {"", 0, -1, -1},
  };
  for (const Case& c : cases) {
    int index = -1;
    EXPECT_EQ(matchName(zuString(c.text), c.pos, names, 5, index), c.expectedEnd) << c.text;
    EXPECT_EQ(index, c.expectedIndex) << c.text;
  }
}

TEST(RnDateTimeUtilTest, SplitsPicturesIntoSymbolsAndLiterals) {
  // Each item as kind letter (S symbol, L literal, Q quoted), character, count.
  struct Case {
    const char *picture, *expected;
  } const cases[] = {
      {"MMM D, YYYY", "S:M3 L:  S:D1 L:, L:  S:Y4"}, {"'Day' D", "Q:D1 Q:a1 Q:y1 L:  S:D1"},
      {"'it''s'''", "Q:i1 Q:t1 Q:'1 Q:s1 Q:'1"},     {"\xEF\xBC\xB9\xEF\xBC\xB9Y", "F:Y2 S:Y1"},
      {"x'open", "L:x1 Q:o1 Q:p1 Q:e1 Q:n1"},
  };
  for (const Case& c : cases) {
    zuString picture(c.picture);
    PictureReader reader(picture, "DJMEeYWwGgt");
    std::string described;
    for (PictureItem item; reader.next(item);) {
      if (!described.empty()) described += ' ';
      described += item.kind == PictureItem::kSymbol   ? (item.fullWidth ? 'F' : 'S')
                   : item.kind == PictureItem::kQuoted ? 'Q'
                                                       : 'L';
      described += ':';
      described += static_cast<char>(item.character);
      if (item.character != ' ' && item.character != ',') described += std::to_string(item.count);
    }
    EXPECT_EQ(described, c.expected) << c.picture;
  }
}

}  // namespace
}  // namespace zu::internal
