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
#include <tuple>
#include <vector>

#include "zu/core/internal/zuUnicodeSimd.h"
#include "zu/core/zuUnicode.h"

namespace {

using CodePoints = std::vector<unsigned int>;

unsigned int sizeOf(const std::string& text) {
  return static_cast<unsigned int>(text.size());
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

std::vector<char16_t> ours16(const std::string& text, unsigned int room) {
  return written<char16_t>(room, [&](char16_t* out, unsigned int max) {
    return zuUTF8toUTF16(out, max, text.data(), sizeOf(text));
  });
}

CodePoints ours32(const std::string& text, unsigned int room) {
  return written<unsigned int>(room, [&](unsigned int* out, unsigned int max) {
    return ConvertFromUTF8(out, max, text.data(), sizeOf(text));
  });
}

std::vector<char> ours8(const CodePoints& codePoints, unsigned int room) {
  return written<char>(room, [&](char* out, unsigned int max) {
    return ConvertToUTF8(out, max, codePoints.data(), static_cast<unsigned int>(codePoints.size()));
  });
}

// ICU's UTF-16 up to the first sequence it cannot convert.
std::vector<char16_t> icu16(const std::string& text) {
  std::u16string out(text.size() + 1, u'\0');
  int32_t units = 0;
  int32_t substitutions = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &units, text.data(),
                       static_cast<int32_t>(text.size()), 0xFFFD, &substitutions, &status);
  EXPECT_TRUE(U_SUCCESS(status)) << u_errorName(status);
  out.resize(substitutions == 0 ? static_cast<size_t>(units) : out.find(u'\uFFFD'));
  return {out.begin(), out.end()};
}

CodePoints icu32(const std::vector<char16_t>& utf16) {
  CodePoints out(utf16.size() + 1);
  int32_t count = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF32(reinterpret_cast<UChar32*>(out.data()), static_cast<int32_t>(out.size()), &count,
               utf16.data(), static_cast<int32_t>(utf16.size()), &status);
  EXPECT_TRUE(U_SUCCESS(status)) << u_errorName(status);
  out.resize(static_cast<size_t>(count));
  return out;
}

std::string icu8(const CodePoints& codePoints) {
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

// In order, then shuffled so that every length meets every other in a block.
// Results of a million characters are compared without printing them.
TEST_P(zuUnicodeWalkTest, EveryCodePointAsIcuConvertsIt) {
  CodePoints codePoints;
  for (unsigned int cp = 1; cp <= 0x10FFFF; ++cp) {
    if (cp < 0xD800 || cp > 0xDFFF) codePoints.push_back(cp);
  }
  CodePoints shuffled = codePoints;
  std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(23));
  for (const CodePoints* order : {&codePoints, &shuffled}) {
    const std::string utf8 = icu8(*order);
    const auto room = static_cast<unsigned int>(utf8.size());
    EXPECT_TRUE(ours8(*order, room) == std::vector<char>(utf8.begin(), utf8.end()));
    const std::vector<char16_t> utf16 = icu16(utf8);
    EXPECT_TRUE(ours16(utf8, room) == utf16);
    EXPECT_TRUE(ours32(utf8, room) == *order);
  }
}

TEST_P(zuUnicodeWalkTest, InvalidSequenceAtEveryOffsetStopsWhereIcuStops) {
  // Truncated, over-long, cut short by ASCII, a continuation too many, no
  // sequence at all: both stop there. Surrogate values and values above
  // U+10FFFF: ConvertFromUTF8 decodes them.
  std::vector<std::pair<std::string, unsigned int>> faults = {
      {"\xED\xA0\x80", 0xD800},           {"\xED\xBF\xBF", 0xDFFF},
      {"\xF4\x90\x80\x80", 0x110000},     {"\xF7\xBF\xBF\xBF", 0x1FFFFF},
      {"\xF8\x88\x80\x80\x80", 0x200000}, {"\xFD\xBF\xBF\xBF\xBF\xBF", 0x7FFFFFFF},
  };
  for (const char* stop :
       {"\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC0\xAF", "\xC1\xBF", "\xE0\x9F\xBF",
        "\xF0\x8F\xBF\xBF", "\xE2\x82\x41", "\xF0\x9F\x98\x41", "\x80", "\xE2\x82\xAC\x80",
        "\xC3\xA9\xBF", "\xF0\x9F\x98\x80\x80", "\xFE", "\xFF"}) {
    faults.emplace_back(stop, 0);
  }
  // Text around the fault of every length of sequence, and of 1 and 2 only.
  for (const char* pattern :
       {"\xC3\xA9z\xE2\x82\xAC\xF0\x9F\x98\x80\x61\xE6\x9D\xB1", "\xC3\xA9z\xD0\x96"}) {
    const std::string tail = filler(80, pattern);
    for (const auto& [bytes, decoded] : faults) {
      for (size_t offset = 0; offset <= 96; ++offset) {
        const std::string text = filler(offset, pattern) + bytes + tail;
        SCOPED_TRACE(testing::PrintToString(text));
        ASSERT_EQ(ours16(text, sizeOf(text)), icu16(text));
        CodePoints expected = icu32(icu16(text));
        if (decoded != 0) {
          expected.push_back(decoded);
          const CodePoints rest = ours32(tail, sizeOf(tail));
          expected.insert(expected.end(), rest.begin(), rest.end());
        }
        ASSERT_EQ(ours32(text, sizeOf(text)), expected);
      }
    }
  }
  // A NUL ends the text here; ICU converts it.
  for (const char* pattern : {"a\xC3\xA9\xE2\x82\xAC", "ascii"}) {
    const std::string half = filler(50, pattern);
    const std::string withNul = half + std::string(1, '\0') + half;
    EXPECT_EQ(ours16(withNul, 101), icu16(half));
  }
}

// Both walks on one text and room, and on code points to encode.
void compareWalks(const std::string& text, unsigned int room, const CodePoints& codePoints,
                  unsigned int room8) {
  const auto run = [&](bool simd) {
    zu::internal::setUnicodeSimd(simd);
    return std::tuple(ours32(text, room), ours16(text, room), ours8(codePoints, room8));
  };
  ASSERT_TRUE(run(false) == run(true)) << testing::PrintToString(text) << " room " << room << " "
                                       << testing::PrintToString(codePoints) << " room " << room8;
}

// Random text of every kind of sequence, with faults, NULs and marks, and
// random code points, through both walks with random rooms; and every room
// for texts whose blocks write the most past what they give.
TEST(zuUnicodeWalksTest, RandomTextGivesTheSameResultOnBothWalks) {
  const bool previous = zu::internal::setUnicodeSimd(true);
  // A 4-byte sequence at the start of a block and 3 bytes from its last 8
  // leaves the most units behind the last store.
  const std::string emoji = "\xF0\x9F\x98\x80";
  for (const std::string& pattern : {emoji + std::string(23, 'a'), "a" + emoji + "zz\xC3\xA9"}) {
    const std::string text = filler(150, pattern);
    const CodePoints codePoints = ours32(text, 150);
    for (unsigned int room = 0; room <= 151; ++room) {
      ASSERT_NO_FATAL_FAILURE(compareWalks(text, room, codePoints, 4 * room));
    }
  }
  // The common pieces first, then marks, surrogates, values too large,
  // faults and a NUL.
  std::vector<std::string> pieces;
  for (const char* piece :
       {"a", "Z", "\xC3\xA9", "\xD0\x96", "\xE2\x82\xAC", "\xE6\x9D\xB1", "\xF0\x9F\x98\x80",
        "\xF4\x8F\xBF\xBF", "\xEF\xBB\xBF", "\xED\xA0\x80", "\xF5\x80\x80\x80",
        "\xF8\x88\x80\x80\x80", "\xC3", "\xE2\x82", "\x80", "\xC0\x80", "\xFF"}) {
    pieces.emplace_back(piece);
  }
  pieces.emplace_back(1, '\0');
  // The common lengths, then rarely any value, values about 2^21 (0x200000
  // is 0 to the encoder) and 0.
  const unsigned int kRanges[][2] = {
      {1, 0x7F},       {0x80, 0x7FF},        {0x800, 0xFFFF}, {0x10000, 0x10FFFF},
      {0, 0xFFFFFFFF}, {0x1FFFFF, 0x200001}, {0, 0}};
  std::mt19937 random(2023);
  for (int round = 0; round < 300000; ++round) {
    std::string text;
    for (unsigned int count = random() % 80; count > 0; --count) {
      const unsigned int pick = random() % 256;
      text += pieces[pick < 224 ? pick % 8 : 8 + pick % (pieces.size() - 8)];
    }
    CodePoints codePoints(random() % 40);
    for (unsigned int& codePoint : codePoints) {
      const auto& range = kRanges[random() % 32 == 0 ? 4 + random() % 3 : random() % 4];
      codePoint = range[0] + static_cast<unsigned int>(random() % (range[1] - range[0] + 1ull));
    }
    const unsigned int room = random() % (sizeOf(text) + 2);
    ASSERT_NO_FATAL_FAILURE(
        compareWalks(text, room, codePoints, random() % (4 * sizeOf(text) + 2)));
  }
  zu::internal::setUnicodeSimd(previous);
}

}  // namespace
