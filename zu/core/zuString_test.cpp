#include "zu/core/zuString.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <clocale>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "zu/core/zuException.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuThreadSafeString.h"
#include "zu/testing/zuTestText.h"
#include "zu/testing/zuThrown.h"

using zu::testing::str;
using zu::testing::thrown;

namespace {

// Ordinary strings share a block until one is edited; a global string never
// shares with an ordinary one, and an ordinary one taking a global one
// shares it and becomes global.
TEST(zuStringTest, SharingFollowsScopeAndLiteralsStayInPlace) {
  zuString original("per thread");
  zuString copy(original);
  zuString assigned;
  assigned = original;
  EXPECT_TRUE(copy.SharesImpl(original) && assigned.SharesImpl(original));
  copy += "!";
  assigned.Set(0, 'P');
  EXPECT_FALSE(copy.SharesImpl(original) || assigned.SharesImpl(original));
  EXPECT_EQ(str(original) + "|" + str(copy) + "|" + str(assigned),
            "per thread|per thread!|Per thread");

  zuThreadSafeString global(original);
  EXPECT_TRUE(global.IsGlobal() && !global.SharesImpl(original));
  EXPECT_EQ(global.AllocSize(), 10u);  // heap blocks are exactly the request
  zuString reader;
  reader = global;
  EXPECT_TRUE(reader.SharesImpl(global) && reader.IsGlobal());

  // Literals are used in place until edited.
  static const char kText[] = "constant";
  zuLiteral literal(kText);
  zuString fromLiteral(literal);
  EXPECT_TRUE(static_cast<const char*>(literal) == kText &&
              static_cast<const char*>(fromLiteral) == kText);
  fromLiteral.ToUpper();
  EXPECT_EQ(str(fromLiteral), "CONSTANT");
  EXPECT_STREQ(kText, "constant");
  EXPECT_EQ(static_cast<const char*>(zuString(1, kText)), kText);
  EXPECT_NE(static_cast<const char*>(zuString(0, kText)), kText);
}

// Blocks double from eight bytes. Appends that end at a block's capacity or
// one past it, to a shared block and of the string's own bytes: the random
// appends below.
TEST(zuStringTest, BlocksDoubleAndStayWhenLargeEnough) {
  zuString grown("a");
  EXPECT_EQ(grown.AllocSize(), 8u);
  for (int i = 0; i < 100; ++i) grown += 'x';
  EXPECT_EQ(grown.AllocSize(), 128u);
  const char* before = grown;
  grown.ReAlloc(50);
  EXPECT_EQ(static_cast<const char*>(grown), before);  // sole owner with room: no move
}

// Random appends of bytes and of texts (up to 40 bytes, ending anywhere in
// the last bytes of a page whose next page is unreadable, or taken from the
// string itself), to ordinary, literal, shared and global strings, give what
// std::string gives: about two million appends.
// Appends a literal to both: its length is known where it is appended.
template <std::size_t N>
void appendLiteral(zuString& text, std::string& model, const char (&literal)[N]) {
  text += literal;
  model += literal;
}

TEST(zuStringTest, AppendsMatchStdStringOnRandomInput) {
  constexpr std::size_t kPage = 4096;
  void* area = mmap(nullptr, 2 * kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(area, MAP_FAILED);
  ASSERT_EQ(mprotect(static_cast<char*>(area) + kPage, kPage, PROT_NONE), 0);
  char* const pageEnd = static_cast<char*>(area) + kPage;
  std::mt19937 random(23);
  const auto someByte = [&] { return static_cast<char>(1 + random() % 255); };
  int mismatches = 0;
  long appends = 0;
  for (int round = 0; round < 20000; ++round) {
    const std::unique_ptr<zuString> text(round % 4 == 0   ? new zuString()
                                         : round % 4 == 1 ? new zuString(1, "lit")
                                         : round % 4 == 2 ? new zuThreadSafeString("global")
                                                          : new zuString("start"));
    std::string model = str(*text);
    zuString sharer;
    for (int step = random() % 200; step > 0; --step, ++appends) {
      const unsigned int kind = random() % 9;
      if (kind < 3) {
        const char byte = kind == 0 && random() % 8 == 0 ? '\0' : someByte();
        *text += byte;
        if (byte != '\0') model += byte;
      } else if (kind < 7) {
        const std::size_t length = random() % (random() % 4 == 0 ? 41 : 8);
        char* source = pageEnd - 1 - length - random() % 12;
        for (std::size_t index = 0; index < length; ++index) source[index] = someByte();
        source[length] = '\0';
        *text += static_cast<const char*>(source);
        model += source;
      } else if (kind == 8) {
        const unsigned int which = random() % 4;
        if (which == 0) appendLiteral(*text, model, "");
        if (which == 1) appendLiteral(*text, model, "q");
        if (which == 2) appendLiteral(*text, model, "seven!!");
        if (which == 3) appendLiteral(*text, model, "eight...");
      } else if (random() % 2 == 0) {
        sharer = *text;  // the next edit copies the block
      } else {
        const std::size_t from = model.empty() ? 0 : random() % (model.size() + 1);
        *text += static_cast<const char*>(*text) + from;
        model += model.substr(from);
      }
      mismatches += text->Length() != model.size();
    }
    mismatches += str(*text) != model;
  }
  munmap(area, 2 * kPage);
  EXPECT_EQ(mismatches, 0);
  EXPECT_GT(appends, 1900000);
}

TEST(zuStringTest, PositionsAreClampedAndNullIsNotEmpty) {
  const zuString text("abcdef");
  EXPECT_TRUE(text[6] == '\0' && text.Char(100) == '\0');
  EXPECT_EQ(str(text.Substring(2, 100)), "cdef");
  EXPECT_TRUE(text.Substring(3, 0).SharesImpl(zuString::EmptyString()));
  EXPECT_TRUE(text.Substring(11, 3).IsEmpty());
  EXPECT_EQ(text.UniLength(4, 100), 2u);

  zuString edited(text);
  edited.Swallow(4, 100);
  const std::string swallowed = str(edited);
  edited.Replace("XY", 100, 5);
  edited.Truncate(10);
  edited.Set(10, 'z');
  EXPECT_EQ(swallowed + "|" + str(edited), "abcd|abcdXY");

  // Null and empty are distinct: Equals tells them apart, CompareCase does not.
  const zuString fresh;
  const zuString empty("");
  EXPECT_TRUE(fresh.IsNull() && !empty.IsNull() && empty.IsEmpty());
  EXPECT_STREQ(static_cast<const char*>(fresh), "");
  EXPECT_FALSE(empty.Equals(fresh) || empty.Equals(static_cast<const char*>(nullptr)));
  EXPECT_EQ(empty.CompareCase(fresh), 0);
}

TEST(zuStringTest, UniCharIsLenient) {
  // Each code point read, and the position after it.
  const std::tuple<std::string, std::vector<unsigned int>, std::vector<unsigned int>> cases[] = {
      {"a\xC3\xA9z", {'a', 0xE9, 'z'}, {1, 3, 4}},
      {"\x80\x41", {0x01}, {2}},              // a stray continuation starts a pair
      {"a\xFE\xFF", {'a', 0, 0}, {1, 2, 3}},  // seven or eight leading ones: 0
      {"\xC3\x41", {0xC1}, {2}},              // continuation bytes are not checked
      {"a\xE2\x82", {'a', 0x2080}, {1, 3}},   // a sequence cut by the end stops there
  };
  for (const auto& [bytes, codePoints, ends] : cases) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    const zuString text(bytes.c_str(), static_cast<unsigned int>(bytes.size()));
    unsigned int pos = 0;
    for (size_t i = 0; i < codePoints.size(); ++i) {
      EXPECT_TRUE(text.UniChar(pos) == codePoints[i] && pos == ends[i]) << i;
    }
    EXPECT_TRUE(text.UniChar(pos) == 0 && text.UniLength() == codePoints.size());
  }

  const zuString mixed("a\xC3\xA9\xE2\x82\xAC");
  unsigned int pos = 100;
  EXPECT_TRUE(mixed.UniPrev(pos) == 0x20AC && pos == 3);
  EXPECT_TRUE(mixed.UniPrev(pos) == 0xE9 && mixed.UniPrev(pos) == 'a');
  pos = 2;
  EXPECT_TRUE(zuString("\x80\x80").UniPrev(pos) == 0 && pos == 0);

  zuString edited("\xC3\xA9t\xC3\xA9");  // positions count code points
  edited.ReplaceUniChar("E", 2, 1);
  edited.ReplaceUniChar("!", 10, 4);
  EXPECT_EQ(str(edited), "\xC3\xA9tE!");
}

TEST(zuStringTest, Comparisons) {
  // Non-ASCII sorts below ASCII; only A-Z fold.
  const std::tuple<const char*, const char*, int, int> cases[] = {
      {"abc", "abd", -1, -1}, {"abc", "ab", 1, 1},       {"ABC", "abc", -1, 0},
      {"Z", "a", -1, 1},      {"\xC3\xA9", "z", -1, -1}, {"\xC3\x89", "\xC3\xA9", -1, -1}};
  for (const auto& [left, right, caseResult, noCaseResult] : cases) {
    SCOPED_TRACE(std::string(left) + " " + right);
    EXPECT_EQ(zuString(left).CompareCase(zuString(right)), caseResult);
    EXPECT_EQ(zuString(left).CompareNoCase(zuString(right)), noCaseResult);
  }
  const zuString text("abcdef");
  EXPECT_EQ(text.CompareCase("abcxyz", 3), 0);
  EXPECT_EQ(text.CompareCase(static_cast<const char*>(nullptr)), 1);
  EXPECT_TRUE(zuString("\xC3\xA9") < "z" && zuString("ABC").CompareNoCase("abc") == 0);

  std::setlocale(LC_COLLATE, "C");
  EXPECT_EQ(zuString("apple").CompareCollate(zuString("banana")), -1);
  EXPECT_EQ(zuString("a").CompareCollate(zuString()), 1);
}

TEST(zuStringTest, SearchAndSkip) {
  const zuString text("one Two one two");
  unsigned int at = 0;
  EXPECT_TRUE(text.FindCase(zuString("one"), at, 1) && at == 8);
  EXPECT_TRUE(!text.FindCase("one", at, 9) && at == text.Length());
  EXPECT_FALSE(text.FindCase("two", at, 100));
  EXPECT_TRUE(text.FindNoCase("TWO", at) && at == 4);
  EXPECT_TRUE(text.CharInString('o', at, 1) && at == 6);

  const zuString spaced("\xC2\xA0 \xC2\xA0x y");
  EXPECT_EQ(spaced.SkipOver(zuString::WhiteSpace()), 5u);
  EXPECT_EQ(spaced.SkipUntil(zuString("y"), 1), 6u);
  // Set membership compares whole code points, not bytes.
  EXPECT_EQ(zuString("\xC3\xA9").SkipOver(zuString("\xC3\xA8")), 0u);
}

TEST(zuStringTest, Tokens) {
  const zuString text(",,alpha,;beta;;");
  const zuString delimiters(",;");
  zuString token("old");
  unsigned int pos = 0;
  EXPECT_TRUE(text.GetToken(delimiters, token, pos) && str(token) == "alpha" && pos == 7);
  EXPECT_TRUE(text.GetToken(delimiters, token, pos) && str(token) == "beta");
  EXPECT_TRUE(!text.GetToken(delimiters, token, pos) && token.IsEmpty());

  zuString line(" \xE3\x80\x80 first\\ word  second\\\\ ");
  EXPECT_TRUE(line.ParseToken(token) && str(token) == "first word");
  EXPECT_TRUE(line.ParseToken(token) && str(token) == "second\\");
  EXPECT_FALSE(line.ParseToken(token));
}

TEST(zuStringTest, Editing) {
  // Occurrences do not overlap; an empty pattern changes nothing.
  const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
      {"aaaa", "aa", "b", "bb"},
      {"abcabc", "bc", "", "aa"},
      {"abc", "", "x", "abc"},
      {"abab", "ab", "abab", "abababab"}};
  for (const auto& [source, from, to, expected] : cases) {
    zuString text(source);
    text.ReplaceAll(from, to);
    EXPECT_EQ(str(text), expected) << source << " " << from << " " << to;
  }

  zuString text("hello");
  text.Replace(text, 5, 0);
  text += text;
  EXPECT_EQ(str(text), "hellohellohellohello");

  zuString spaced("\t\v a\xC2\xA0 ");  // no-break space is not trimmed
  spaced.Trim();
  EXPECT_EQ(str(spaced), "\t\v a\xC2\xA0");
  spaced.TrimStart();
  EXPECT_EQ(str(spaced), "a\xC2\xA0");

  zuString mixed("stra\xC3\x9F Ab");  // only A-Z change case
  mixed.ToUpper();
  mixed.ToLower(0, 3);
  EXPECT_EQ(str(mixed), "strA\xC3\x9F AB");

  zuString appended("a");  // single bytes, NUL included: the random appends
  appended += 0x20ACu;
  appended += u"\u00e9";
  appended += static_cast<const char*>(nullptr);
  EXPECT_EQ(str(appended), "a\xE2\x82\xAC\xC3\xA9");
  appended = 0x1F600u;
  EXPECT_EQ(str(appended), "\xF0\x9F\x98\x80");
  EXPECT_EQ(str("ab" + zuString("cd")), "abcd");
}

TEST(zuStringTest, ByteOrderMarksAndWideSources) {
  // Reading past a mark: zuStringConvert_test.
  const char littleEndian[] = "\xFF\xFE\x41\0";
  // A UTF-16 mark in a plain C string cannot be read: assigning it throws.
  EXPECT_TRUE(thrown([&] {
                zuString text;
                text = littleEndian;
              }).HasResId(16479));
  // A copy stops at the first NUL even when a longer length is given.
  EXPECT_EQ(str(zuString("ab\0cd", 5)), "ab");
  // FromBytes keeps every byte, marks and NULs included.
  EXPECT_EQ(str(zuString::FromBytes(littleEndian, 4)), std::string(littleEndian, 4));
  // Every length through the short copies and past them.
  const std::string alphabet = "abcdefghijklmnopqrstuvwxyz0123456789";
  for (unsigned length = 1; length <= alphabet.size(); ++length) {
    EXPECT_EQ(str(zuString::FromBytes(alphabet.data(), length)), alphabet.substr(0, length));
  }
  EXPECT_TRUE(zuString::FromBytes("x", 0).IsEmpty() && !zuString::FromBytes(nullptr, 0).IsNull());

  const zuString wide(u"caf\u00e9 \U0001F600");
  EXPECT_EQ(str(wide), "caf\xC3\xA9 \xF0\x9F\x98\x80");
  const std::unique_ptr<char16_t[]> units(wide.GetAllocdZuChar());
  EXPECT_EQ(std::u16string(units.get()), u"caf\u00e9 \U0001F600");
}

// Which code point is in which class is zuCharConverter's (tested there);
// a range is in a class when every code point in it is, and an empty one
// is in none. One check per class shows it asks the right one.
TEST(zuStringTest, CharacterClassesHoldForTheWholeRange) {
  const zuString text(
      "\xD9\xA3\xD9\xA1\x41\x62 \xC3\xA9");  // Arabic-Indic 3 and 1, A, b, space, e-acute
  EXPECT_TRUE(text.IsDigit(0, 4) && !text.IsDigit(0, 5) && !text.IsDigit());
  EXPECT_TRUE(text.IsUpper(4, 1) && !text.IsUpper(4, 2) && text.IsLower(7, 2));
  EXPECT_TRUE(text.IsAlpha(4, 2) && !text.IsAlpha(0, 6) && text.IsAlnum(0, 6));
  EXPECT_TRUE(text.IsSpace(6, 1) && !text.IsSpace(5, 2));
  EXPECT_TRUE(text.IsDigit(2, 100) == 0 && text.IsAlpha(7, 100) == 1);  // clamped to the end
  EXPECT_FALSE(zuString("").IsSpace() || text.IsAlpha(9, 1));
}

TEST(zuStringTest, NumberWritersAndReaders) {
  const std::tuple<double, unsigned int, int, const char*> writers[] = {
      {1.25, 0, 0, "1"}, {3.0, 2, 0, "3.00"}, {0.1, 20, 1, "0.1"}, {100.0, 2, 1, "100"}};
  zuString text;
  for (const auto& [value, decimals, trimZeros, expected] : writers) {
    EXPECT_TRUE(text.Number(value, decimals, trimZeros) == 1 && str(text) == expected) << value;
  }
  text.Number(18446744073709551615ull);
  EXPECT_EQ(str(text), "18446744073709551615");

  // Bases other than 8 and 16 read decimal.
  const std::tuple<const char*, int, int, long> readers[] = {{"101", 2, 1, 101},
                                                             {"17", 8, 1, 15},
                                                             {"0x1A", 16, 1, 26},
                                                             {"12x", 10, 0, 12},
                                                             {"", 10, 0, 0}};
  for (const auto& [digits, base, ok, expected] : readers) {
    long value = 99;
    EXPECT_TRUE(zuString(digits).Number(&value, base) == ok && value == expected) << digits;
  }
  int intValue = 0;  // the int reader goes through the long one
  unsigned int unsignedValue = 0;
  double real = 1;
  EXPECT_TRUE(zuString("17").Number(&intValue, 8) == 1 && intValue == 15);
  EXPECT_TRUE(zuString("4000000000").Number(&unsignedValue) == 1 && unsignedValue == 4000000000u);
  EXPECT_TRUE(zuString("2.5e3").Number(&real) == 1 && real == 2500.0);
  EXPECT_EQ(zuString("2.5 ").Number(&real), 0);
}

TEST(zuStringTest, ToXMLByContext) {
  const std::tuple<zuToXMLType, const char*, const char*> cases[] = {
      {zuXMLText, "a<b>&c\"'\t\n\r", "a&lt;b&gt;&amp;c\"'\t\n&#xD;"},
      {zuXMLAttributeDQuote, "a<b>\"'\t\n\r", "a&lt;b>&quot;'&#x9;&#xA;&#xD;"},
      {zuXMLAttributeSQuote, "\"'", "\"&apos;"},
      {zuXMLText, "bad\x01\x1F\xEF\xBF\xBE\xED\xA0\x80!", "bad!"}};
  for (const auto& [type, source, expected] : cases) {
    EXPECT_EQ(str(zuString(source).toXML(type)), expected) << source;
  }
  const zuString plain("nothing to do \xC3\xA9");
  EXPECT_TRUE(plain.toXML().SharesImpl(plain));

  const zuString accents("a\xC3\xA9\xE2\x82\xAC<");
  const zuString& none = zuString::EmptyString();
  EXPECT_EQ(str(accents.toXML(zuXMLText, none, 0x80, 0)), "a&#xe9;&#x20ac;&lt;");
  EXPECT_EQ(str(accents.toXML(zuXMLText, none, 0xE0, 0xFF)), "a&#xe9;\xE2\x82\xAC&lt;");
  EXPECT_EQ(str(accents.toXML(zuXMLText, zuString("a"), 0x80, 0, zuString("<\xC3\xA9"))),
            "&#x61;\xC3\xA9&#x20ac;<");
}

TEST(zuStringTest, ToXHTMLKeepsLayout) {
  const std::pair<const char*, const char*> cases[] = {
      {"a   b", "a<span style=\"kdl-spacerun:yes\">&#160;&#160; </span>b"},
      {"x\ty", "x<span style=\"kdl-tab-count:1\">&#160;</span>y"},
      {"one\ntwo", "one</p><p>two"},
      {"<&>\r\x02", "&lt;&amp;&gt;&#xD;"},
  };
  const std::string start = "<body xmlns=\"http://www.w3.org/1999/xhtml\"><p>";
  for (const auto& [source, body] : cases) {
    EXPECT_EQ(str(zuString(source).toXHTML(0)), start + body + "</p></body>") << source;
  }
  EXPECT_EQ(str(zuString("").toXHTML(1)), "<?xml version=\"1.0\"?>" + start + "</p></body>");
}

}  // namespace
