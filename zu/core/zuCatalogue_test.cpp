#include "zu/core/internal/zuCatalogue.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <string>

#include "zu/core/internal/zuCatalogueRegistry.h"
#include "zu/core/internal/zuMessageLocale.h"
#include "zu/core/zuMessageIds.h"

namespace {

// The printf-style conversions of a message text ("%d", "%5.1f", "%%"), in order.
std::string conversionsIn(const std::string& text) {
  std::string found;
  for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at)) {
    std::size_t end = at + 1;
    while (end < text.size() &&
           (std::isdigit(static_cast<unsigned char>(text[end])) || text[end] == '.'))
      ++end;
    if (end < text.size() && text[end] == 'l') ++end;
    if (end < text.size() &&
        (std::isalpha(static_cast<unsigned char>(text[end])) || text[end] == '%')) {
      found += text.substr(at, end + 1 - at);
      at = end + 1;
    } else {
      at = end;
    }
  }
  return found;
}

using zu::internal::zuCatalogueTexts;

std::map<int, std::string> parsed(const std::string& bytes) {
  zuCatalogueTexts texts;
  zu::internal::parseCatalogue(bytes.data(), bytes.size(), texts);
  return {texts.begin(), texts.end()};
}

TEST(zuCatalogueTest, ParsesLinesEscapesAndSkipsWhatIsNotAMessage) {
  struct Case {
    const char* name;
    std::string bytes;
    std::map<int, std::string> expected;
  } const cases[] = {
      {"comments and blanks", "# note\n\n1\tone\n  \n#2\tno\n", {{1, "one"}}},
      {"CRLF and no final line feed", "1\tone\r\n2\ttwo", {{1, "one"}, {2, "two"}}},
      {"escapes", "7\ta\\tb\\nc\\\\d\\qe\\", {{7, "a\tb\nc\\d\\qe\\"}}},
      {"byte-order mark",
       "\xEF\xBB\xBF"
       "3\tthree\n",
       {{3, "three"}}},
      {"bad ids", "x\tno\n65536\tno\n\tno\n12 \tno\n42no\n65535\tmax\n", {{65535, "max"}}},
      {"first line wins, empty is missing", "5\tfirst\n5\tsecond\n6\t\n", {{5, "first"}}},
      {"tab inside the text", "8\ta\tb\n", {{8, "a\tb"}}},
  };
  for (const Case& c : cases) EXPECT_EQ(parsed(c.bytes), c.expected) << c.name;
}

TEST(zuCatalogueTest, LongTextsAreCutAtACodePointWithin1023Units) {
  // 1,021 ASCII units, then a character taking two UTF-16 units fits; the
  // next one does not, and must not be split.
  const std::string ascii(1021, 'a');
  const std::string gothic = "\xF0\x90\x8C\xB0";
  const auto texts = parsed("1\t" + ascii + gothic + gothic + "\n2\t" + ascii + "ab\xC3\xA9\n");
  EXPECT_EQ(texts.at(1), ascii + gothic);
  EXPECT_EQ(texts.at(2), ascii + "ab");
}

TEST(zuCatalogueTest, LocaleNamesAndSuffixOrder) {
  struct Case {
    const char *name, *language, *country;
  } const cases[] = {
      {"fr_CA.UTF-8", "fr", "CA"},
      {"de_DE@euro", "de", "DE"},
      {"fil_PH", "fi", "PH"},
      {"pt", "pt", ""},
      {"C", "", ""},
      {"POSIX", "", ""},
      {"C.UTF-8", "", ""},
      {"", "", ""},
  };
  for (const Case& c : cases) {
    const auto pair = zu::internal::parseLocaleName(c.name);
    EXPECT_EQ(pair.language, c.language) << c.name;
    EXPECT_EQ(pair.country, c.country) << c.name;
  }
  using Suffixes = std::vector<std::string>;
  EXPECT_EQ(zu::internal::catalogueSuffixes({"fr", "CA"}, {"de", "AT"}),
            (Suffixes{"fr_CA", "fr", "de_AT", "de", "En", "Intl"}));
  EXPECT_EQ(zu::internal::catalogueSuffixes({"pt", ""}, {}), (Suffixes{"pt", "En", "Intl"}));
}

// The ids the library throws by name, the published number of each, and the
// conversions each text must hold so that the streamed argument lands in it:
// every name has a text in every catalogue, and every text a name.
TEST(zuCatalogueTest, ShippedCataloguesHaveEveryMessageIdWithMatchingPlaceholders) {
  namespace ids = zuMessageIds;
  struct Case {
    unsigned short id;
    unsigned short published;
    const char* placeholders;
  };
  const Case cases[] = {
      {ids::kInvalidArgument, 16479, ""},    {ids::kCompoundPicture, 16480, "%s"},
      {ids::kOutOfMemory, 16583, ""},        {ids::kStreamAllocation, 16656, ""},
      {ids::kInvalidBase64, 16777, ""},      {ids::kListIndex, 16984, ""},
      {ids::kUnknownUnit, 17107, "%d"},      {ids::kAngleRange, 17174, ""},
      {ids::kInvalidYear, 17185, ""},        {ids::kInvalidMonth, 17186, ""},
      {ids::kInvalidDay, 17187, ""},         {ids::kInvalidHour, 17234, ""},
      {ids::kInvalidMinute, 17235, ""},      {ids::kInvalidSecond, 17236, ""},
      {ids::kInvalidMillisecond, 17237, ""}, {ids::kMorningMarker, 17244, ""},
      {ids::kAfternoonMarker, 17245, ""},
  };
  ASSERT_EQ(std::size(ids::kAll), std::size(cases));
  for (size_t i = 0; i < std::size(cases); ++i) {
    EXPECT_EQ(cases[i].id, cases[i].published);
    EXPECT_EQ(ids::kAll[i], cases[i].id) << i;
  }
  for (const char* language : {"En", "fr", "de"}) {
    zu::internal::zuCatalogue catalogue;
    const std::string path = zu::internal::libraryDirectory() + "Resources" + language + ".msg";
    ASSERT_TRUE(zu::internal::readCatalogueFile(path, catalogue)) << path;
    EXPECT_EQ(catalogue.texts.size(), std::size(cases)) << language << ": unknown ids";
    for (const Case& c : cases) {
      const std::string* text = catalogue.find(c.id);
      ASSERT_NE(text, nullptr) << language << " " << c.id;
      EXPECT_EQ(conversionsIn(*text), c.placeholders) << language << " " << c.id << ": " << *text;
    }
  }
}

}  // namespace
