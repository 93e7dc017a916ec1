#include "zu/core/zuUnicode.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace {

// A heap copy of exactly the text's bytes, so that the sanitizer reports any
// read past the count a function was given.
struct Exact {
  explicit Exact(const std::string& text)
      : size(static_cast<unsigned int>(text.size())), bytes(new char[text.size()]) {
    std::memcpy(bytes.get(), text.data(), text.size());
  }
  const char* get() const { return bytes.get(); }
  unsigned int size;
  std::unique_ptr<char[]> bytes;
};

std::string utf16Bytes(const std::vector<unsigned int>& units, eEndianType type) {
  std::string bytes;
  for (unsigned int unit : units) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += type == eEndianLittle ? std::string{low, high} : std::string{high, low};
  }
  return bytes;
}

// ConvertFromUTF8 decodes through the same code for every fault and every
// sequence of four bytes or more, against ICU at every offset in
// zuUnicodeIcu_test; here what only this entry point shows: the count it
// was given bounds the read, the 5- and 6-byte over-long forms, and a failed
// read leaves the code point as it was.
TEST(zuUnicodeTest, UTF8DecoderEncoderAndMarkEdges) {
  const std::tuple<std::string, int, unsigned int> cases[] = {
      {"\xC3\xA9zz", 2, 0xE9},  // only the first sequence is read
      {"", -1, 0},
      {"\xF0\x9F\x98", -1, 0},
      {"\xF8\x87\xBF\xBF\xBF", -1, 0},
      {"\xFC\x83\xBF\xBF\xBF\xBF", -1, 0}};
  for (const auto& [bytes, length, expected] : cases) {
    const Exact buffer(bytes);
    unsigned int codePoint = 0;
    EXPECT_EQ(zuUTF8toUCS(codePoint, buffer.get(), buffer.size), length);
    EXPECT_EQ(codePoint, expected) << testing::PrintToString(bytes);
  }
  // The encoder masks to 21 bits; ordinary values: the round trip below.
  char out[4];
  EXPECT_EQ(std::string(out, zuUCStoUTF8(out, 0xDC00)), "\xED\xB0\x80");
  EXPECT_EQ(std::string(out, zuUCStoUTF8(out, 0x200041)), "A");

  // Counting never counts a leading mark; decoding skips one only when more
  // text follows, and takes a lone mark as text.
  const std::tuple<std::string, unsigned int, std::vector<unsigned int>> marks[] = {
      {"\xEF\xBB\xBF", 0, {0xFEFF}},
      {"\xEF\xBB\xBFz", 1, {0x7A}},
      {"\xEF\xBB\xBF\xEF\xBB\xBF", 1, {0xFEFF}},
      {"a\xEF\xBB\xBF", 2, {0x61, 0xFEFF}},
  };
  for (const auto& [text, counted, expected] : marks) {
    SCOPED_TRACE(testing::PrintToString(text));
    const Exact buffer(text);
    EXPECT_EQ(zuUTF8strlen(buffer.get(), buffer.size), counted);
    std::vector<unsigned int> decoded(8);
    decoded.resize(ConvertFromUTF8(decoded.data(), 8, buffer.get(), buffer.size));
    EXPECT_EQ(decoded, expected);
  }
  // Counting alone stops at a NUL inside an eight-byte block (writing: the
  // NUL rows of zuUnicodeIcu_test; capacity: zuUTF8toUTF16 below, which
  // walks the same loop).
  EXPECT_EQ(ConvertFromUTF8(nullptr, 0, "abc\0efghijklmnop", 16), 3u);
  EXPECT_EQ(zuIsUTF8("\xEF\xBB\xBF"), 1);
  EXPECT_EQ(zuIsUTF8("\xEF\xBB"), 0);
}

TEST(zuUnicodeTest, UTF8AndUTF16StepForwardAndBack) {
  const char text[] = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z";
  const unsigned int starts[] = {0, 1, 3, 6, 10, 11};
  for (unsigned int i = 0; i < std::size(starts); ++i) {
    EXPECT_EQ(zuUTF8ByteLen(text, i), starts[i]);
    if (i > 0) {
      EXPECT_EQ(zuUTF8PrevChar(text, text + starts[i]), text + starts[i - 1]);
    }
  }
  EXPECT_EQ(zuUTF8ByteLen(text, 9), 11u);
  EXPECT_EQ(zuUTF8PrevChar(text, text), text);
  EXPECT_EQ(zuUTF8PrevChar(text + 2, text + 3), text + 2);  // never before start
  EXPECT_EQ(zuUTF8strlen("\x80\x80\x80\x80", 4), 0u);       // counting never fails

  for (eEndianType type : {eEndianBig, eEndianLittle}) {
    const std::string bytes = utf16Bytes({0x41, 0xD83D, 0xDE00, 0xDE00, 0x42, 0}, type);
    const char* units = bytes.data();
    const char* end = units + bytes.size() - 2;
    const unsigned int unitStarts[] = {0, 2, 6, 8, 10};
    for (size_t i = 1; i < std::size(unitStarts); ++i) {
      EXPECT_EQ(zuUTF16NextChar(units + unitStarts[i - 1], end, type), units + unitStarts[i]);
      EXPECT_EQ(zuUTF16PrevChar(units, units + unitStarts[i], type), units + unitStarts[i - 1]);
      EXPECT_EQ(zuUTF16ByteLen(units, static_cast<unsigned int>(i), type), unitStarts[i]);
    }
    EXPECT_EQ(zuUTF16NextChar(end, end, type), end);
    EXPECT_EQ(zuUTF16NextChar(units + 2, units + 4, type), units + 4);  // pair cut by end
    EXPECT_EQ(zuUTF16PrevChar(units + 4, units + 6, type), units + 4);  // never before start
    EXPECT_EQ(zuUTF16ByteLen(units, 99, type), 10u);
  }
}

TEST(zuUnicodeTest, UTF16EncodingAndCountingHonourTheByteOrderMark) {
  char out[4];
  // Big-endian when no order is given.
  EXPECT_EQ(std::string(out, zuUCStoUTF16(out, 0x41, eEndianUnknown)), std::string("\0A", 2));
  EXPECT_EQ(zuUCStoUTF16(out, 0x110000, eEndianBig), -1);  // pairs: the round trip

  EXPECT_TRUE(zuUTF16AddBOM(out, eEndianLittle) == 2 && zuUTF16BOM(out) == eEndianLittle);
  EXPECT_TRUE(zuUTF16AddBOM(out, eEndianUnknown) == 2 && zuUTF16BOM(out) == eEndianBig);
  EXPECT_EQ(zuUTF16BOM("ab"), eEndianUnknown);
  EXPECT_EQ(zuUTF16Char("\x12\x34", eEndianLittle), 0x3412u);

  // Counting skips a mark; the order it names is used only when none is given.
  const std::tuple<std::vector<unsigned int>, eEndianType, eEndianType, unsigned int> cases[] = {
      {{0xFEFF, 0x41, 0xD83D, 0xDE00, 0x42}, eEndianLittle, eEndianUnknown, 3},
      {{0x41, 0xDE00, 0xD83D, 0x42}, eEndianBig, eEndianBig, 4},  // lone halves count singly
      {{0xD83D}, eEndianLittle, eEndianLittle, 1},
      // A mark of either order is skipped; only type 0 lets it choose the
      // order, so FF FE 41 00 3D D8 00 DE read big-endian is 4100 3DD8 00DE.
      {{0xFEFF, 0x41, 0xD83D, 0xDE00}, eEndianLittle, eEndianBig, 3},
      {{0xFEFF, 0x41, 0xD83D, 0xDE00}, eEndianLittle, eEndianLittle, 2},
      {{0xFEFF}, eEndianBig, eEndianLittle, 0},
  };
  for (const auto& [units, written, given, expected] : cases) {
    const std::string bytes = utf16Bytes(units, written);
    SCOPED_TRACE(testing::PrintToString(bytes));
    const Exact buffer(bytes);
    EXPECT_EQ(zuUTF16strlen(buffer.get(), given, static_cast<int>(buffer.size)), expected);
    const std::string terminated = bytes + std::string(2, '\0') + "\x41\x00";
    EXPECT_EQ(zuUTF16strlen(terminated.data(), given, -1), expected);
  }
  EXPECT_EQ(zuUTF16strlen("\0A\0", eEndianBig, 3), 1u);  // odd last byte ignored
}

// Every unit is read through zuUTF16toUCS, so its pairs and faults are
// checked here and in the round trip.
TEST(zuUnicodeTest, ConvertFromUTF16StopsAtFaultZeroOrCapacity) {
  const std::tuple<std::vector<unsigned int>, unsigned int, std::vector<unsigned int>> cases[] = {
      {{0xFEFF, 0x41, 0xD83D, 0xDE00}, 10, {0x41, 0x1F600}},
      {{0xFEFF}, 10, {0xFEFF}},  // a lone mark is text
      {{0x41, 0xDE00, 0x42}, 10, {0x41}},
      {{0x41, 0xD83D}, 10, {0x41}},
      {{0x41, 0xD83D, 0x42}, 10, {0x41}},  // a high half before a plain unit
      {{0x41, 0, 0x42}, 10, {0x41}},
      {{0x41, 0x42, 0x43}, 2, {0x41, 0x42}},
  };
  for (eEndianType type : {eEndianBig, eEndianLittle}) {
    for (const auto& [units, outMax, expected] : cases) {
      const Exact buffer(utf16Bytes(units, type));
      SCOPED_TRACE(testing::PrintToString(std::string(buffer.get(), buffer.size)));
      std::vector<unsigned int> out(outMax + 1, 0xABCD);
      const eEndianType given = units.size() > 1 && units[0] == 0xFEFF ? eEndianUnknown : type;
      out.resize(ConvertFromUTF16(out.data(), outMax, buffer.get(), buffer.size, given));
      EXPECT_EQ(out, expected);
      if (outMax >= 10) {  // room for all: counting alone gives the same
        EXPECT_EQ(ConvertFromUTF16(nullptr, 0, buffer.get(), buffer.size, given), expected.size());
      }
    }
  }
  // A mark against the order given is still a mark: skipped, not decoded.
  const std::string marked = utf16Bytes({0xFEFF, 0x41}, eEndianLittle);
  unsigned int out[2] = {};
  EXPECT_TRUE(ConvertFromUTF16(out, 2, marked.data(), 4, eEndianBig) == 1 && out[0] == 0x4100);
}

// ConvertToUTF8, ConvertFromUTF8 and zuUTF8toUTF16 meet ICU on every code
// point in zuUnicodeIcu_test; here the counters and the UTF-16 forms.
TEST(zuUnicodeTest, RoundTripsThroughEveryEncoding) {
  // Code points from every plane and every UTF-8 length, edges included.
  std::vector<unsigned int> codePoints = {0x1,     0x7F,    0x80,     0x7FF,   0x800,
                                          0xD7FF,  0xE000,  0xFFFD,   0xFFFF,  0x10000,
                                          0x1F600, 0xFFFFF, 0x100000, 0x10FFFF};
  for (unsigned int cp = 0x21; cp < 0x110000; cp += 0x3F1) {
    if (cp < 0xD800 || cp > 0xDFFF) codePoints.push_back(cp);
  }
  const auto count = static_cast<unsigned int>(codePoints.size());
  std::string utf8(ConvertToUTF8(nullptr, 0, codePoints.data(), count), '\0');
  const auto utf8Bytes = static_cast<unsigned int>(utf8.size());
  ConvertToUTF8(utf8.data(), utf8Bytes, codePoints.data(), count);
  EXPECT_EQ(zuUTF8strlen(utf8.data(), utf8Bytes), count);
  EXPECT_EQ(zuUTF8ByteLen(utf8.c_str(), count), utf8Bytes);

  for (eEndianType type : {eEndianBig, eEndianLittle}) {
    std::string utf16(ConvertToUTF16(nullptr, 0, codePoints.data(), count, type), '\0');
    const auto utf16Bytes = static_cast<unsigned int>(utf16.size());
    ConvertToUTF16(utf16.data(), utf16Bytes, codePoints.data(), count, type);
    EXPECT_EQ(zuUTF16strlen(utf16.data(), type, static_cast<int>(utf16Bytes)), count);
    std::vector<unsigned int> back(count);
    ASSERT_EQ(ConvertFromUTF16(back.data(), count, utf16.data(), utf16Bytes, type), count);
    EXPECT_EQ(back, codePoints);
  }

  const unsigned int units = zuUTF8toUTF16(nullptr, 0, utf8.data(), utf8Bytes);
  std::u16string host(units, u'\0');
  zuUTF8toUTF16(host.data(), units, utf8.data(), utf8Bytes);
  std::string again(utf8Bytes, '\0');
  ASSERT_EQ(zuUTF16toUTF8(again.data(), utf8Bytes, host.data(), units), utf8Bytes);
  EXPECT_EQ(again, utf8);
}

// No writer splits a sequence to fit its room, and each stops at bad input.
TEST(zuUnicodeTest, WritersRespectCapacityAndStopAtBadInput) {
  const unsigned int codePoints[] = {0x61, 0x20AC, 0x1F600, 0x7A, 0, 0x63};
  const std::pair<unsigned int, std::string> fromCodePoints[] = {
      {3, "a"}, {7, "a\xE2\x82\xAC"}, {100, "a\xE2\x82\xAC\xF0\x9F\x98\x80z"}};
  for (const auto& [outBytes, utf8] : fromCodePoints) {
    std::string written(outBytes + 1, '#');
    written.resize(ConvertToUTF8(written.data(), outBytes, codePoints, 6) + 1);
    EXPECT_EQ(written, utf8 + "#") << outBytes;
  }
  EXPECT_EQ(ConvertToUTF8(nullptr, 0, codePoints, 6), 9u);  // stops at the 0 code point
  EXPECT_TRUE(zuUniCharLength(codePoints) == 4 && zuUniCharLength(nullptr) == 0);

  const std::tuple<std::string, unsigned int, std::u16string> toUtf16Cases[] = {
      {"abcdefghijk", 4, u"abcd"},
      {"a\xF0\x9F\x98\x80", 2, u"a"},    // a pair is never split
      {"\xEF\xBB\xBFz", 9, u"\uFEFFz"},  // the mark is kept
  };
  for (const auto& [text, outMax, expected] : toUtf16Cases) {
    const Exact buffer(text);
    std::u16string out(outMax + 1, u'#');  // the last unit must stay untouched
    out.resize(zuUTF8toUTF16(out.data(), outMax, buffer.get(), buffer.size) + 1);
    EXPECT_EQ(out, expected + u'#') << testing::PrintToString(text);
  }

  const std::pair<std::u16string, unsigned int> toUtf8Cases[] = {
      {u"a\u20AC", 3},  // the euro sign needs three bytes
      {std::u16string(u"a\xDE00z"), 9},
      {std::u16string(u"a\xD83D"), 9},
      {std::u16string(u"a\0z", 3), 9},
  };
  for (const auto& [text, outBytes] : toUtf8Cases) {
    std::string out(outBytes + 1, '#');
    const auto units = static_cast<unsigned int>(text.size());
    EXPECT_EQ(zuUTF16toUTF8(out.data(), outBytes, text.data(), units), 1u);
    EXPECT_EQ(out.substr(0, 2), "a#");
  }
}

}  // namespace
