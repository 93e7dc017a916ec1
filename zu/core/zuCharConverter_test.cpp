#include "zu/core/zuCharConverter.h"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <array>
#include <cstring>
#include <memory>
#include <string>

#include "zu/core/internal/zuCodePageNames.h"
#include "zu/core/internal/zuConverterCache.h"
#include "zu/core/zuGxCharConverter.h"
#include "zu/core/zuString.h"
#include "zu/testing/zuConverted.h"

namespace {

using zu::internal::zuConverterCache;
using zu::testing::converted;

TEST(zuCharConverterTest, NamesAndMarksReduceToOneCodePage) {
  struct Case {
    const char *name, *canonical;
    int codePage;
  } cases[] = {
      {"Shift_JIS", "SHIFTJIS", 943},
      {"windows-1252", "1252", 1252},
      {"37", "37", 1373},
      {"66", "66", 66},                   // not a legacy number: kept
      {"caf\xC3\xA9", "CAF\xC3\xA9", 0},  // bytes above 127 are kept
      {"\xFF\xFEx-1", "\xFF\xFEX1", 0},   // no byte-order mark in a name
      {"", "", 0},
      {"abcdefghijklmnopqrstuvwxyzabcd", "ABCDEFGHIJKLMNOPQRSTUVWXYZABCD", 0},
  };
  for (const Case& c : cases) {
    EXPECT_STREQ(zuCharConverter::Canonicalize(c.name), c.canonical) << c.name;
    EXPECT_EQ(zuCharConverter::ExtractCodePageNum(c.name), c.codePage) << c.name;
  }
  EXPECT_EQ(zuCharConverter::ExtractCodePageNum(nullptr), 0);

  // Which code page is in which class is a list in the code; the classes
  // are seen where they act: the Unicode and font paths, the lead bytes and
  // the walks of double- and four-byte pages below.
  eEndianType order = eEndianUnknown;
  EXPECT_TRUE(zuCharConverter::IsUTF16CodePage(65004, &order) == 1 && order == eEndianLittle);
  EXPECT_STREQ(zuCharConverter::IsUTFData("\xEF\xBB\xBFx"), "UTF-8");
  EXPECT_STREQ(zuCharConverter::IsUTFData("\xFF\xFE"), "UTF-16LE");
  EXPECT_STREQ(zuCharConverter::IsUTFData("\xFE\xFF"), "UTF-16BE");
  EXPECT_STREQ(zuCharConverter::IsUTFData("\xFE"), "");
}

TEST(zuCharConverterTest, EachCodePageHasItsNames) {
  // The names are the table's own; these rows show each lookup reads its
  // column: an alias, names that differ by use, no code page.
  struct Case {
    int codePage;
    const char *iso, *legacyIso, *platform, *icu;
  } cases[] = {
      {932, "Shift_JIS", "Shift-JIS", "IBM-943", "IBM-943_P15A-2003"},
      {0, "", "", "", ""},
  };
  for (const Case& c : cases) {
    zuGxCharConverter converter(c.codePage);
    EXPECT_STREQ(converter.ISOCodePage(), c.iso) << c.codePage;
    EXPECT_STREQ(converter.CodePage(), c.platform) << c.codePage;
    converter.LegacyISONames(1);
    EXPECT_STREQ(converter.ISOCodePage(), c.legacyIso) << c.codePage;
    char icu[zu::internal::kCodePageNameSize];
    zu::internal::icuNameOf(c.codePage, icu);
    EXPECT_STREQ(icu, c.icu) << c.codePage;
  }
  zuGxCharConverter renamed("UTF-16BE");
  EXPECT_EQ(renamed.ByteOrder(), eEndianBig);
  renamed.CodePageName("SJIS");
  EXPECT_TRUE(renamed.CodePageNum() == 943 && renamed.ByteOrder() == eEndianUnknown);
  std::unique_ptr<zuCharConverter> clone(renamed.Clone("latin2"));
  EXPECT_EQ(clone->CodePageNum(), 912);
}

TEST(zuCharConverterTest, CharacterClassesKeepTheNarrowRules) {
  using C = zuCharConverter;
  struct Case {
    unsigned int c;
    int space, upper, lower, digit, alpha, uniSpace, brkSpace;
  } cases[] = {
      {' ', 1, 0, 0, 0, 0, 1, 1},    {'\v', 1, 0, 0, 0, 0, 0, 0},   {0xA0, 0, 0, 0, 0, 0, 1, 0},
      {0x3000, 0, 0, 0, 0, 0, 1, 1}, {'Q', 0, 1, 0, 0, 1, 0, 0},    {0xDF, 0, 1, 0, 0, 1, 0, 0},
      {0xD7, 0, 0, 0, 0, 0, 0, 0},   {0xFF, 0, 0, 1, 0, 1, 0, 0},   {0x0130, 0, 0, 0, 0, 1, 0, 0},
      {'7', 0, 0, 0, 1, 0, 0, 0},    {0x0663, 0, 0, 0, 1, 0, 0, 0}, {0x2163, 0, 0, 0, 0, 0, 0, 0},
      {0x4E00, 0, 0, 0, 0, 1, 0, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ((std::array{C::IsSpace(c.c), C::IsUpper(c.c), C::IsLower(c.c), C::IsDigit(c.c),
                          C::IsAlpha(c.c), C::IsUniSpace(c.c), C::IsUniBrkSpace(c.c)}),
              (std::array{c.space, c.upper, c.lower, c.digit, c.alpha, c.uniSpace, c.brkSpace}))
        << std::hex << c.c;
  }
  EXPECT_TRUE(C::ToUpper('a') == 'A' && C::ToUpper(0xE9) == 0xC9 && C::ToUpper(0xFF) == 0xFF);
  EXPECT_TRUE(C::ToUpper(0xF7) == 0xF7 && C::ToLower(0xDF) == 0xDF && C::ToLower(0xC0) == 0xE0);

  // The line-break and letter classes ask ICU for one property each; these
  // rows show the classes that join several of its values and the Latin
  // range taken whole.
  EXPECT_TRUE(C::IsXMLLetter(0x2163) && !C::IsXMLLetter('1'));
  EXPECT_TRUE(C::IsLatin(0x1E9E) && C::IsLatin(0x24F) && !C::IsLatin(0x0410));
  EXPECT_TRUE(C::IsMandatoryBreak('\n') && C::IsMandatoryBreak(0x2028) &&
              !C::IsMandatoryBreak(' '));
  EXPECT_TRUE(C::IsOkBreakAfter(' ') && C::IsOkBreakAfter('-') && !C::IsOkBreakAfter('a'));
}

TEST(zuCharConverterTest, LibraryPathsConvertAmongUnicodeForms) {
  const zuCharConverter& utf8 = *zuCharConverter::UTF8();
  const zuCharConverter& le = *zuCharConverter::UTF16LE();
  const zuCharConverter& be = *zuCharConverter::UTF16BE();
  const zuGxCharConverter font(101);
  const std::string text = "A\xC3\xA9\xF0\x9F\x98\x80";  // A, e-acute, U+1F600
  const std::string leBytes("A\0\xE9\0\x3D\xD8\x00\xDE", 8);
  const std::string beBytes("\0A\0\xE9\xD8\x3D\xDE\x00", 8);

  EXPECT_EQ(converted(le, utf8, text), leBytes);
  EXPECT_EQ(converted(utf8, be, beBytes), text);
  EXPECT_EQ(converted(le, be, beBytes), leBytes);
  EXPECT_EQ(converted(font, utf8, "A\xC3\xA9\xC4\x80"), std::string("A\xE9\0", 3));  // U+0100
  EXPECT_EQ(converted(font, *zuCharConverter::UTF32BE(), std::string("\0\0\0A\0\0\x01\xE9", 8)),
            "A\xE9");
  EXPECT_EQ(converted(utf8, utf8, "abcdef", 4), "abcd");

  // A NUL follows when it fits, two for UTF-16.
  char out[8];
  std::memset(out, 'x', sizeof out);
  EXPECT_TRUE(le.Convert(out, 4, &utf8, "ab", 2) == 4 && out[4] == 'x');
  EXPECT_TRUE(le.Convert(out, 6, &utf8, "ab", 2) == 4 && out[4] == 0 && out[5] == 0);
  EXPECT_EQ(utf8.Convert(nullptr, 0, &le, "ab", 2), 12u);
  EXPECT_EQ(utf8.Convert(out, sizeof out, nullptr, "ab", 2), 0u);
}

TEST(zuCharConverterTest, IcuPathSubstitutesAndFailsOnSmallBuffers) {
  const zuCharConverter& utf8 = *zuCharConverter::UTF8();
  const zuGxCharConverter sjis("SJIS");
  const zuGxCharConverter latin2("ISO-8859-2");
  EXPECT_EQ(converted(sjis, sjis, "a\x93\xFA"), "a\x93\xFA");
  EXPECT_EQ(converted(latin2, utf8, "\xC4\x85\xE2\x82\xAC"), "\xB1?");  // no euro in latin2
  EXPECT_EQ(converted(sjis, utf8, "\xE6\x97\xA5\xE6\x9C\xAC", 3), "");
  EXPECT_EQ(converted(zuGxCharConverter("no such encoding"), utf8, "abc"), "");

  unsigned int codePoints[4] = {};
  EXPECT_TRUE(latin2.ConvertFromMB(codePoints, 4, "a\xB1", 2) == 2 && codePoints[1] == 0x105);
  char bytes[8] = {};
  EXPECT_EQ(sjis.ConvertToMB(bytes, sizeof bytes, codePoints, 2), 2u);  // no U+0105 in SJIS
  EXPECT_STREQ(bytes, "a?");

  unsigned int length = 0;
  std::unique_ptr<char[]> one(sjis.GetAllocdChar(0x65E5, length));
  EXPECT_EQ(std::string(one.get(), length), "\x93\xFA");
}

// Double-byte text turns into UTF-8 through a table built from ICU's own
// answers; every byte pair, valid or not, must come out exactly as ICU
// converts it.
TEST(zuCharConverterTest, TableDecodingMatchesIcuForEveryBytePairWithinTheBuffer) {
  const zuCharConverter& utf8 = *zuCharConverter::UTF8();
  for (const char* name : {"SJIS", "GBK", "Big5", "949", "windows-1251"}) {
    SCOPED_TRACE(name);
    const zuGxCharConverter from(name);
    char icuName[zu::internal::kCodePageNameSize];
    zu::internal::icuNameOf(from.CodePageNum(), icuName);
    UErrorCode status = U_ZERO_ERROR;
    UConverter* source = ucnv_open(icuName, &status);
    UConverter* target = ucnv_open("UTF-8", &status);
    ASSERT_TRUE(U_SUCCESS(status)) << icuName;
    UErrorCode ignored = U_ZERO_ERROR;  // as the library opens its converters
    ucnv_setSubstChars(source, "?", 1, &ignored);
    int mismatches = 0;
    for (int pair = 0; pair < 0x10000; ++pair) {
      const std::string in = {'a', static_cast<char>(pair >> 8), static_cast<char>(pair), 'b'};
      char expected[32];
      char* cursor = expected;
      const char* read = in.data();
      status = U_ZERO_ERROR;
      ucnv_convertEx(target, source, &cursor, expected + sizeof expected, &read,
                     in.data() + in.size(), nullptr, nullptr, nullptr, nullptr, true, true,
                     &status);
      if (converted(utf8, from, in) != std::string(expected, cursor) && ++mismatches < 5) {
        ADD_FAILURE() << "bytes " << std::hex << pair;
      }
    }
    EXPECT_EQ(mismatches, 0);
    ucnv_close(source);
    ucnv_close(target);
  }

  // A buffer one byte short gives nothing, an exact one the whole text, a
  // larger one a NUL after it; no byte past the buffer is touched.
  const zuGxCharConverter sjis("SJIS");
  for (unsigned int size = 6; size <= 8; ++size) {
    std::string out(16, '#');
    const unsigned int written =
        zuCharConverter::UTF8()->Convert(out.data(), size, &sjis, "\x93\xFA\x96\x7Bz", 5);
    EXPECT_EQ(out.substr(0, written), size < 7 ? "" : "\xE6\x97\xA5\xE6\x9C\xACz") << size;
    EXPECT_EQ(out[7], size == 8 ? '\0' : '#') << size;
    EXPECT_EQ(out.find_first_not_of('#', size), std::string::npos) << size;
  }
}

// Nine code pages and the source through a cache of eight: the first two
// are gone, and a page used again moves to the front.
TEST(zuCharConverterTest, CacheKeepsEightConvertersMostRecentFirst) {
  zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::eCharConverterCache);
  zuConverterCache& cache = zuConverterCache::current();
  const auto order = [&cache] {
    std::vector<int> pages;
    for (unsigned int i = 0; i < cache.size(); ++i) pages.push_back(cache.codePageAt(i));
    return pages;
  };
  for (const char* name :
       {"SJIS", "GBK", "Big5", "latin1", "latin2", "latin3", "latin4", "greek", "hebrew"}) {
    converted(zuGxCharConverter(name), zuGxCharConverter("latin5"), "a");
  }
  EXPECT_EQ(order(), (std::vector<int>{920, 916, 813, 914, 913, 912, 819, 1373}));  // source last
  converted(zuGxCharConverter("latin2"), zuGxCharConverter("latin5"), "a");
  EXPECT_EQ(order(), (std::vector<int>{920, 912, 916, 813, 914, 913, 819, 1373}));
}

TEST(zuCharConverterTest, WalksStepOverWholeCharacters) {
  struct Case {
    const char* encoding;
    std::string text;
    std::vector<int> starts;
  } cases[] = {
      {"SJIS", "a\x93\xFA\\z", {0, 1, 3, 4}},  // 0x5C after a lead byte is no lead
      {"GB18030", "\x81\x30\x81\x30\xB0\xA1z", {0, 4, 6}},
      {"UTF-8", "a\xC3\xA9\xF0\x9F\x98\x80", {0, 1, 3}},
      {"UTF-16LE", std::string("a\0\x3D\xD8\x00\xDE", 6), {0, 2}},
      {"UTF-32BE", std::string("\0\0\0a\0\0\0b", 8), {0, 4}},
  };
  for (const Case& c : cases) {
    const zuGxCharConverter converter(c.encoding);
    std::string text = c.text + std::string(4, '\0');
    char* start = text.data();
    std::vector<int> forward;
    for (char* p = start; p != converter.NextChar(p); p = converter.NextChar(p)) {
      forward.push_back(static_cast<int>(p - start));
    }
    EXPECT_EQ(forward, c.starts) << c.encoding;
    std::vector<int> backward;
    for (char* p = start + c.text.size(); p != start; p = converter.PrevChar(start, p)) {
      backward.insert(backward.begin(), static_cast<int>(converter.PrevChar(start, p) - start));
    }
    EXPECT_EQ(backward, c.starts) << c.encoding;
  }
  const zuGxCharConverter sjis("SJIS");
  EXPECT_TRUE(sjis.IsMBLeadByte('\x93') && !sjis.IsMBLeadByte('a') && !sjis.IsMBLeadByte('\xA1'));
  EXPECT_FALSE(zuGxCharConverter("ISO-2022-JP").IsMBLeadByte('\x1B'));
  EXPECT_TRUE(zuCharConverter::UTF8()->IsMBLeadByte('\xC3'));
}

TEST(zuCharConverterTest, DefaultFollowsTheCharacterSetUntilReplaced) {
  EXPECT_NE(zuCharConverter::Default()->CodePageNum(), 0);
  const zuGxCharConverter latin1("latin1");
  zuCharConverter::Default(&latin1);
  zuCharConverter::Default(nullptr);
  EXPECT_NE(zuCharConverter::Default(), &latin1);
}

}  // namespace
