#include "zu/core/internal/zuCatalogue.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <string>

#include "zu/core/internal/zuCatalogueRegistry.h"
#include "zu/core/internal/zuMessageLocale.h"
#include "zu/core/zuMessageIds.h"

namespace {

// The printf-style conversions of a message text ("%d", "%5.1f", "%%"), in order.
std::string conversionsIn(const std::string& text) {
  static const std::regex kConversion("%[0-9.]*l?[A-Za-z%]");
  std::string found;
  for (std::sregex_iterator it(text.begin(), text.end(), kConversion), end; it != end; ++it) {
    found += it->str();
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

// Every id the library throws by name has a text in every catalogue, and
// every text a name; a text holds the conversion its streamed argument needs.
TEST(zuCatalogueTest, ShippedCataloguesHaveEveryMessageIdWithMatchingPlaceholders) {
  const std::map<unsigned short, std::string> placeholders = {
      {zuMessageIds::kCompoundPicture, "%s"}, {zuMessageIds::kUnknownUnit, "%d"}};
  for (const char* language : {"En", "fr", "de"}) {
    zu::internal::zuCatalogue catalogue;
    const std::string path = zu::internal::libraryDirectory() + "Resources" + language + ".msg";
    ASSERT_TRUE(zu::internal::readCatalogueFile(path, catalogue)) << path;
    EXPECT_EQ(catalogue.texts.size(), std::size(zuMessageIds::kAll)) << language << ": unknown ids";
    for (const unsigned short id : zuMessageIds::kAll) {
      const std::string* text = catalogue.find(id);
      ASSERT_NE(text, nullptr) << language << " " << id;
      const auto expected = placeholders.find(id);
      EXPECT_EQ(conversionsIn(*text), expected != placeholders.end() ? expected->second : "")
          << language << " " << id << ": " << *text;
    }
  }
}

}  // namespace
