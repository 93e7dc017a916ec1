// The UTF-8 conversions against ICU, once on the scalar walk and once with
// the AVX2 blocks (where the processor has them), and the two walks against
// each other on random text. The rules differ where zuUnicode.h says so:
// - a NUL ends the text here; ICU converts it;
// - ConvertFromUTF8 decodes surrogate values, values up to U+7FFFFFFF (F4 90
//   and above, the 5- and 6-byte forms) and skips a leading byte-order mark,
//   where ICU stops or keeps the mark;
// - ConvertToUTF8 masks code points to 21 bits and encodes surrogate values,
//   where ICU's u_strFromUTF32 stops.
#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "zu/core/internal/zuUnicodeSimd.h"
#include "zu/core/zuUnicode.h"

namespace {

unsigned int sizeOf(const std::string& text) {
  return static_cast<unsigned int>(text.size());
}

std::u16string ours16(const std::string& text) {
  std::u16string out(text.size() + 1, u'\0');
  out.resize(zuUTF8toUTF16(out.data(), sizeOf(text) + 1, text.data(), sizeOf(text)));
  return out;
}

std::vector<unsigned int> ours32(const std::string& text) {
  std::vector<unsigned int> out(text.size() + 1);
  out.resize(ConvertFromUTF8(out.data(), sizeOf(text) + 1, text.data(), sizeOf(text)));
  return out;
}

std::string ours8(const std::vector<unsigned int>& codePoints) {
  std::string out(4 * codePoints.size(), '\0');
  out.resize(ConvertToUTF8(out.data(), sizeOf(out), codePoints.data(),
                           static_cast<unsigned int>(codePoints.size())));
  return out;
}

// ICU's UTF-16 up to the first sequence it cannot convert.
std::u16string icu16(const std::string& text) {
  std::u16string out(text.size() + 1, u'\0');
  int32_t units = 0;
  int32_t substitutions = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &units, text.data(),
                       static_cast<int32_t>(text.size()), 0xFFFD, &substitutions, &status);
  EXPECT_TRUE(U_SUCCESS(status)) << u_errorName(status);
  out.resize(substitutions == 0 ? static_cast<size_t>(units) : out.find(u'\uFFFD'));
  return out;
}

std::vector<unsigned int> icu32(const std::u16string& utf16) {
  std::vector<unsigned int> out(utf16.size() + 1);
  int32_t count = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF32(reinterpret_cast<UChar32*>(out.data()), static_cast<int32_t>(out.size()), &count,
               utf16.data(), static_cast<int32_t>(utf16.size()), &status);
  EXPECT_TRUE(U_SUCCESS(status)) << u_errorName(status);
  out.resize(static_cast<size_t>(count));
  return out;
}

std::string icu8(const std::vector<unsigned int>& codePoints) {
  std::u16string utf16(2 * codePoints.size(), u'\0');
  std::string out(4 * codePoints.size(), '\0');
  int32_t units = 0;
  int32_t bytes = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF32(utf16.data(), static_cast<int32_t>(utf16.size()), &units,
                 reinterpret_cast<const UChar32*>(codePoints.data()),
                 static_cast<int32_t>(codePoints.size()), &status);
  u_strToUTF8(out.data(), static_cast<int32_t>(out.size()), &bytes, utf16.data(), units, &status);
  EXPECT_TRUE(U_SUCCESS(status)) << u_errorName(status);
  out.resize(static_cast<size_t>(bytes));
  return out;
}

// Where two long results first differ (-1 when they do not), printed
// instead of the results themselves.
template <typename Sequence>
long firstDifference(const Sequence& a, const Sequence& b) {
  if (a == b) return -1;
  return std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
}

// Valid text of exactly `bytes` bytes, `pattern` repeated then padded.
std::string filler(size_t bytes, const std::string& pattern) {
  std::string text;
  while (text.size() + pattern.size() <= bytes) text += pattern;
  return text + std::string(bytes - text.size(), 'q');
}

// Each test runs once on the scalar walk and once with the AVX2 blocks.
class zuUnicodeWalkTest : public ::testing::TestWithParam<bool> {
 protected:
  void SetUp() override { previous_ = zu::internal::setUnicodeSimd(GetParam()); }
  void TearDown() override { zu::internal::setUnicodeSimd(previous_); }

 private:
  bool previous_ = true;
};

INSTANTIATE_TEST_SUITE_P(Walks, zuUnicodeWalkTest, ::testing::Values(false, true),
                         [](const auto& walk) { return walk.param ? "Simd" : "Scalar"; });

TEST_P(zuUnicodeWalkTest, EveryCodePointAsIcuConvertsIt) {
  std::vector<unsigned int> codePoints;
  for (unsigned int cp = 1; cp <= 0x10FFFF; ++cp) {
    if (cp < 0xD800 || cp > 0xDFFF) codePoints.push_back(cp);
  }
  std::vector<unsigned int> shuffled = codePoints;
  std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(23));
  for (const std::vector<unsigned int>* order : {&codePoints, &shuffled}) {
    const std::string utf8 = icu8(*order);
    EXPECT_EQ(firstDifference(ours8(*order), utf8), -1);
    const std::u16string utf16 = icu16(utf8);
    EXPECT_EQ(firstDifference(ours16(utf8), utf16), -1);
    EXPECT_EQ(firstDifference(ours32(utf8), *order), -1);
    EXPECT_EQ(firstDifference(icu32(utf16), *order), -1);
  }
  // Surrogate values: encoded and decoded here, refused by ICU.
  const std::vector<unsigned int> surrogates = {0x41, 0xD800, 0xDBFF, 0xDC00, 0xDFFF};
  const std::string encoded = ours8(surrogates);
  EXPECT_EQ(encoded, "A\xED\xA0\x80\xED\xAF\xBF\xED\xB0\x80\xED\xBF\xBF");
  EXPECT_EQ(ours32(encoded), surrogates);
  EXPECT_EQ(icu16(encoded), u"A");
  EXPECT_EQ(ours16(encoded), u"A");
}

TEST_P(zuUnicodeWalkTest, InvalidSequenceAtEveryOffsetStopsWhereIcuStops) {
  struct Fault {
    std::string bytes;
    unsigned int decodedByConvertFromUTF8;  // 0 when it stops where ICU stops
  } const faults[] = {
      {"\xC3", 0},
      {"\xE2\x82", 0},
      {"\xF0\x9F\x98", 0},  // truncated
      {"\xC0\xAF", 0},
      {"\xC1\xBF", 0},
      {"\xE0\x9F\xBF", 0},  // over-long
      {"\xF0\x8F\xBF\xBF", 0},
      {"\xE2\x82\x41", 0},
      {"\xF0\x9F\x98\x41", 0},  // cut short
      {"\x80", 0},
      {"\xBF", 0},
      {"\xE2\x82\xAC\x80", 0},  // no lead
      {"\xC3\xA9\xBF", 0},
      {"\xF0\x9F\x98\x80\x80", 0},  // no lead
      {"\xFE", 0},
      {"\xFF", 0},
      {"\xED\xA0\x80", 0xD800},  // no form
      {"\xED\xBF\xBF", 0xDFFF},
      {"\xF4\x90\x80\x80", 0x110000},
      {"\xF7\xBF\xBF\xBF", 0x1FFFFF},
      {"\xF8\x88\x80\x80\x80", 0x200000},
      {"\xFD\xBF\xBF\xBF\xBF\xBF", 0x7FFFFFFF},
  };
  // Text around the fault of every length of sequence, and of 1 and 2 only.
  const std::string patterns[] = {
      "\xC3\xA9z\xE2\x82\xAC\xF0\x9F\x98\x80"
      "a\xE6\x9D\xB1",
      "\xC3\xA9z\xD0\x96"};
  for (const std::string& pattern : patterns) {
    const std::string tail = filler(80, pattern);
    for (const Fault& fault : faults) {
      for (size_t offset = 0; offset <= 96; ++offset) {
        const std::string prefix = filler(offset, pattern);
        const std::string text = prefix + fault.bytes + tail;
        SCOPED_TRACE(testing::PrintToString(text));
        ASSERT_EQ(ours16(text), icu16(text));
        std::vector<unsigned int> expected = icu32(icu16(text));
        if (fault.decodedByConvertFromUTF8 != 0) {
          expected.push_back(fault.decodedByConvertFromUTF8);
          const std::vector<unsigned int> rest = ours32(tail);
          expected.insert(expected.end(), rest.begin(), rest.end());
        }
        ASSERT_EQ(ours32(text), expected);
      }
    }
  }
  // A NUL ends the text here and is a character to ICU.
  const std::string half = filler(50, patterns[0]);
  const std::string withNul = half + std::string(1, '\0') + half;
  EXPECT_EQ(ours16(withNul), icu16(half));
  EXPECT_EQ(icu16(withNul), icu16(half) + u'\0' + icu16(half));
}

// Runs `convert(out, room)` on `room` units and returns those it says it
// wrote; the units past `room` must stay untouched.
template <typename Unit, typename Convert>
std::vector<Unit> written(unsigned int room, Convert convert) {
  std::vector<Unit> out(room + 8, Unit{0x5A});
  const unsigned int count = convert(out.data(), room);
  EXPECT_TRUE(std::all_of(out.begin() + room, out.end(), [](Unit unit) { return unit == 0x5A; }));
  out.resize(count);
  return out;
}

// Both walks on one text and capacity, and on code points to encode.
void compareWalks(const std::string& text, unsigned int room,
                  const std::vector<unsigned int>& codePoints, unsigned int room8) {
  std::vector<unsigned int> decoded[2];
  std::vector<char16_t> utf16[2];
  std::vector<char> utf8[2];
  for (const bool simd : {false, true}) {
    zu::internal::setUnicodeSimd(simd);
    decoded[simd] = written<unsigned int>(room, [&](unsigned int* out, unsigned int max) {
      return ConvertFromUTF8(out, max, text.data(), sizeOf(text));
    });
    utf16[simd] = written<char16_t>(room, [&](char16_t* out, unsigned int max) {
      return zuUTF8toUTF16(out, max, text.data(), sizeOf(text));
    });
    utf8[simd] = written<char>(room8, [&](char* out, unsigned int max) {
      return ConvertToUTF8(out, max, codePoints.data(),
                           static_cast<unsigned int>(codePoints.size()));
    });
  }
  ASSERT_EQ(decoded[0], decoded[1]) << testing::PrintToString(text) << " room " << room;
  ASSERT_EQ(utf16[0], utf16[1]) << testing::PrintToString(text) << " room " << room;
  ASSERT_EQ(utf8[0], utf8[1]) << testing::PrintToString(codePoints) << " room " << room8;
}

// Random text of every kind of sequence, with faults, NULs and marks, and
// random code points, through both walks with random capacities; and every
// capacity for texts whose blocks write the most past what they give.
TEST(zuUnicodeWalksTest, RandomTextGivesTheSameResultOnBothWalks) {
  const bool previous = zu::internal::setUnicodeSimd(true);
  // A 4-byte sequence at the start of a block and 3 bytes from its last 8
  // leaves the most units behind the last store.
  const std::string emoji = "\xF0\x9F\x98\x80";
  for (const std::string& pattern : {emoji + std::string(23, 'a'), "a" + emoji + "zz\xC3\xA9"}) {
    const std::string text = filler(150, pattern);
    const std::vector<unsigned int> codePoints = ours32(text);
    for (unsigned int room = 0; room <= 151; ++room) {
      ASSERT_NO_FATAL_FAILURE(compareWalks(text, room, codePoints, 4 * room));
    }
  }
  const std::string kPieces[] = {"a",
                                 "Z",
                                 "\xC3\xA9",
                                 "\xD0\x96",
                                 "\xE2\x82\xAC",
                                 "\xE6\x9D\xB1",
                                 "\xF0\x9F\x98\x80",
                                 "\xF4\x8F\xBF\xBF",  // the common ones first
                                 "\xEF\xBB\xBF",
                                 "\xED\xA0\x80",
                                 "\xF5\x80\x80\x80",
                                 "\xF8\x88\x80\x80\x80",
                                 "\xC3",
                                 "\xE2\x82",
                                 "\x80",
                                 "\xC0\x80",
                                 "\xFF",
                                 std::string(1, '\0')};
  const unsigned int kRanges[][2] = {
      {1, 0x7F}, {0x80, 0x7FF}, {0x800, 0xFFFF}, {0x10000, 0x10FFFF}, {0, 0xFFFFFFFF}};
  std::mt19937 random(2023);
  for (int round = 0; round < 300000; ++round) {
    std::string text;
    for (unsigned int pieces = random() % 80; pieces > 0; --pieces) {
      const unsigned int pick = random() % 256;
      text += kPieces[pick < 224 ? pick % 8 : 8 + pick % (std::size(kPieces) - 8)];
    }
    std::vector<unsigned int> codePoints(random() % 40);
    for (unsigned int& codePoint : codePoints) {
      const auto& range = kRanges[random() % (random() % 64 == 0 ? 5 : 4)];
      codePoint = range[0] + static_cast<unsigned int>(random() % (range[1] - range[0] + 1ull));
    }
    const unsigned int room = random() % (sizeOf(text) + 2);
    ASSERT_NO_FATAL_FAILURE(
        compareWalks(text, room, codePoints, random() % (4 * sizeOf(text) + 2)));
  }
  zu::internal::setUnicodeSimd(previous);
}

}  // namespace
