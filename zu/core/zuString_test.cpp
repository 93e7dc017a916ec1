#include "zu/core/zuString.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <string>

#include "zu/core/zuException.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuThreadSafeString.h"

namespace {

std::string bytes(const zuString& text) {
  return std::string(static_cast<const char*>(text), text.Length());
}

TEST(zuStringTest, CopySharesBlockUntilEdited) {
  zuString original("shared text");
  zuString copy(original);
  EXPECT_TRUE(copy.SharesImpl(original));
  EXPECT_EQ(copy.HashCode(), original.HashCode());
  EXPECT_EQ(original.ScopeType(), zuString::eOrdinary);

  copy += "!";
  EXPECT_FALSE(copy.SharesImpl(original));
  EXPECT_EQ(bytes(original), "shared text");
  EXPECT_EQ(bytes(copy), "shared text!");

  zuString separate("shared text");
  EXPECT_NE(separate.HashCode(), original.HashCode());
  EXPECT_TRUE(separate == original);

  zuString assigned;
  assigned = original;
  EXPECT_TRUE(assigned.SharesImpl(original));
  assigned.Set(0, 'S');
  EXPECT_EQ(bytes(original), "shared text");
  EXPECT_EQ(bytes(assigned), "Shared text");
}

TEST(zuStringTest, GlobalNeverSharesWithOrdinary) {
  zuString ordinary("per thread");
  zuThreadSafeString global(ordinary);
  EXPECT_TRUE(global.IsGlobal());
  EXPECT_FALSE(global.SharesImpl(ordinary));
  EXPECT_EQ(bytes(global), "per thread");
  EXPECT_EQ(global.GetThreadId(), 0u);
  EXPECT_EQ(global.AllocSize(), 10u);  // heap blocks are exactly the request

  zuThreadSafeString other;
  other = global;
  EXPECT_TRUE(other.SharesImpl(global));

  // An ordinary string taking a global one shares it and becomes global.
  zuString reader;
  reader = global;
  EXPECT_TRUE(reader.SharesImpl(global));
  EXPECT_TRUE(reader.IsGlobal());

  // Assigning an ordinary string into a global one copies.
  other = ordinary;
  EXPECT_FALSE(other.SharesImpl(ordinary));
  EXPECT_TRUE(other.IsGlobal());

  other = "";
  EXPECT_TRUE(other.IsGlobal());
  EXPECT_FALSE(other.IsNull());
  other = "more";
  EXPECT_TRUE(other.IsGlobal());
  EXPECT_EQ(bytes(other), "more");
}

TEST(zuStringTest, ScopesAndLiteralState) {
  static const char kText[] = "constant";
  zuLiteral literal(kText);
  EXPECT_EQ(static_cast<const char*>(literal), kText);
  EXPECT_EQ(literal.ScopeType(), zuString::eLiteral);
  EXPECT_TRUE(literal.IsLiteral());
  EXPECT_TRUE(literal.IsThreadSafe());
  EXPECT_EQ(literal.AllocSize(), 0u);

  zuString copy(literal);
  EXPECT_EQ(static_cast<const char*>(copy), kText);
  copy.ToUpper();
  EXPECT_EQ(bytes(copy), "CONSTANT");
  EXPECT_STREQ(kText, "constant");
  EXPECT_EQ(copy.ScopeType(), zuString::eOrdinary);
  EXPECT_EQ(copy.AllocSize(), 8u);

  zuString pointing(1, kText);
  EXPECT_EQ(static_cast<const char*>(pointing), kText);
  zuString copied(0, kText);
  EXPECT_NE(static_cast<const char*>(copied), kText);
}

TEST(zuStringTest, NullAndEmptyAreDistinct) {
  zuString fresh;
  EXPECT_TRUE(fresh.IsNull());
  EXPECT_EQ(fresh.ScopeType(), zuString::eDefault);
  EXPECT_STREQ(static_cast<const char*>(fresh), "");

  zuString empty("");
  EXPECT_FALSE(empty.IsNull());
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_EQ(empty.ScopeType(), zuString::eDefault);

  zuString text("x");
  text.SetNull(1);
  EXPECT_TRUE(text.IsNull());
  EXPECT_EQ(text.Length(), 0u);

  EXPECT_TRUE(zuString().Equals(zuString()));
  EXPECT_FALSE(empty.Equals(fresh));
  EXPECT_FALSE(fresh.Equals(empty));
  EXPECT_TRUE(empty.Equals(""));
  EXPECT_FALSE(empty.Equals(static_cast<const char*>(nullptr)));
  EXPECT_EQ(empty.CompareCase(fresh), 0);
}

TEST(zuStringTest, BlockCapacityDoublesFromEight) {
  zuString text("a");
  EXPECT_EQ(text.AllocSize(), 8u);
  zuString longer("123456789");
  EXPECT_EQ(longer.AllocSize(), 16u);
  unsigned int grownTo = 0;
  for (int i = 0; i < 100; ++i) {
    text += 'x';
    grownTo = text.AllocSize();
    EXPECT_EQ(grownTo & (grownTo - 1), 0u) << "capacity " << grownTo;
  }
  EXPECT_EQ(grownTo, 128u);
  EXPECT_EQ(text.Length(), 101u);
  const char* before = text;
  text.ReAlloc(50);
  EXPECT_EQ(static_cast<const char*>(text), before);  // sole owner with room: no move
  EXPECT_NE(text.GetThreadId(), 0u);
}

TEST(zuStringTest, PositionsAreClamped) {
  const zuString text("abcdef");
  EXPECT_EQ(text[6], '\0');
  EXPECT_EQ(text.Char(100), '\0');
  EXPECT_EQ(text.LastChar(), 'f');
  EXPECT_EQ(bytes(text.Substring(2, 100)), "cdef");
  EXPECT_TRUE(text.Substring(3, 0).SharesImpl(zuString::EmptyString()));
  EXPECT_TRUE(text.Substring(11, 3).IsEmpty());
  EXPECT_EQ(bytes(text(1, 2)), "bc");
  EXPECT_EQ(text.UniLength(4, 100), 2u);

  zuString edited(text);
  edited.Swallow(4, 100);
  EXPECT_EQ(bytes(edited), "abcd");
  edited.Replace("XY", 100, 5);
  EXPECT_EQ(bytes(edited), "abcdXY");
  edited.Truncate(10);
  EXPECT_EQ(bytes(edited), "abcdXY");
  edited.Truncate(2);
  EXPECT_EQ(bytes(edited), "ab");
  edited.Set(5, 'z');
  EXPECT_EQ(bytes(edited), "ab");
}

TEST(zuStringTest, UniCharIsLenient) {
  struct Case {
    const char* text;
    std::vector<unsigned int> codePoints;
    std::vector<unsigned int> ends;
  };
  const Case cases[] = {
      {"a\xC3\xA9z", {'a', 0xE9, 'z'}, {1, 3, 4}},
      {"\xE2\x82\xAC", {0x20AC}, {3}},
      {"\xF0\x9F\x98\x80", {0x1F600}, {4}},
      // A stray continuation byte starts a two-byte sequence.
      {"\x80\x41", {0x01}, {2}},
      // Seven or eight leading ones: 0, one byte.
      {"a\xFE\xFF", {'a', 0, 0}, {1, 2, 3}},
      // Continuation bytes are not checked.
      {"\xC3"
       "A",
       {0xC1},
       {2}},
      // A sequence cut by the end stops at the end.
      {"a\xE2\x82", {'a', 0x2080}, {1, 3}},
  };
  for (const Case& c : cases) {
    const zuString text(c.text, static_cast<unsigned int>(std::strlen(c.text)));
    unsigned int pos = 0;
    for (size_t i = 0; i < c.codePoints.size(); ++i) {
      EXPECT_EQ(text.UniChar(pos), c.codePoints[i]) << c.text << " #" << i;
      EXPECT_EQ(pos, c.ends[i]) << c.text << " #" << i;
    }
    EXPECT_EQ(text.UniChar(pos), 0u);
    EXPECT_EQ(pos, text.Length());
    EXPECT_EQ(text.UniLength(), c.codePoints.size()) << c.text;
  }

  const zuString mixed("a\xC3\xA9\xE2\x82\xAC");
  unsigned int pos = mixed.Length();
  EXPECT_EQ(mixed.UniPrev(pos), 0x20ACu);
  EXPECT_EQ(pos, 3u);
  EXPECT_EQ(mixed.UniPrev(pos), 0xE9u);
  EXPECT_EQ(pos, 1u);
  EXPECT_EQ(mixed.UniPrev(pos), static_cast<unsigned int>('a'));
  EXPECT_EQ(pos, 0u);
  EXPECT_EQ(mixed.UniPrev(pos), 0u);
  pos = 100;
  EXPECT_EQ(mixed.UniPrev(pos), 0x20ACu);
  const zuString onlyContinuations("\x80\x80");
  pos = 2;
  EXPECT_EQ(onlyContinuations.UniPrev(pos), 0u);
  EXPECT_EQ(pos, 0u);
}

TEST(zuStringTest, ReplaceUniCharCountsCodePoints) {
  zuString text("\xC3\xA9t\xC3\xA9");  // "été"
  text.ReplaceUniChar("E", 2, 1);
  EXPECT_EQ(bytes(text), "\xC3\xA9tE");
  text.ReplaceUniChar("!", 10, 4);
  EXPECT_EQ(bytes(text), "\xC3\xA9tE!");
  text.ReplaceUniChar("", 0, 2);
  EXPECT_EQ(bytes(text), "E!");
}

TEST(zuStringTest, Comparisons) {
  struct Case {
    const char* left;
    const char* right;
    int caseResult;
    int noCaseResult;
  };
  const Case cases[] = {
      {"abc", "abc", 0, 0}, {"abc", "abd", -1, -1},
      {"abc", "ab", 1, 1},  {"ABC", "abc", -1, 0},
      {"", "", 0, 0},       {"", "a", -1, -1},
      {"a", "", 1, 1},      {"\xC3\xA9", "z", -1, -1},         // non-ASCII below ASCII
      {"Z", "a", -1, 1},    {"\xC3\x89", "\xC3\xA9", -1, -1},  // only A-Z fold
  };
  for (const Case& c : cases) {
    const zuString left(c.left);
    EXPECT_EQ(left.CompareCase(zuString(c.right)), c.caseResult) << c.left << " " << c.right;
    EXPECT_EQ(left.CompareCase(c.right), c.caseResult) << c.left << " " << c.right;
    EXPECT_EQ(left.CompareNoCase(zuString(c.right)), c.noCaseResult) << c.left << " " << c.right;
    EXPECT_EQ(left.CompareNoCase(c.right), c.noCaseResult) << c.left << " " << c.right;
  }
  const zuString text("abcdef");
  EXPECT_EQ(text.CompareCase("abcxyz", 3), 0);
  EXPECT_EQ(text.CompareCase("abcxyz", 4), -1);
  EXPECT_EQ(text.CompareNoCase("ABCX", 3), 0);
  EXPECT_EQ(text.CompareCase(static_cast<const char*>(nullptr)), 1);
  EXPECT_EQ(text.CompareNoCase(zuString()), 1);
  EXPECT_EQ(zuString().CompareCase(static_cast<const char*>(nullptr)), 0);

  EXPECT_TRUE(zuString("\xC3\xA9") < zuString("z"));
  EXPECT_TRUE("abc" == zuString("abc"));
  EXPECT_TRUE(zuString("abc") != "abd");
  EXPECT_TRUE(zuString("b") > "a");
  EXPECT_TRUE("a" <= zuString("a"));
  EXPECT_TRUE(zuString("b") >= zuString("a"));

  std::setlocale(LC_COLLATE, "C");
  EXPECT_EQ(zuString("apple").CompareCollate(zuString("banana")), -1);
  EXPECT_EQ(zuString("b").CompareCollate(zuString("b")), 0);
  EXPECT_EQ(zuString("").CompareCollate(zuString("a")), -1);
  EXPECT_EQ(zuString("a").CompareCollate(zuString()), 1);
}

TEST(zuStringTest, SearchAndSkip) {
  const zuString text("one Two one two");
  unsigned int at = 0;
  EXPECT_TRUE(text.FindCase("one", at));
  EXPECT_EQ(at, 0u);
  EXPECT_TRUE(text.FindCase(zuString("one"), at, 1));
  EXPECT_EQ(at, 8u);
  EXPECT_FALSE(text.FindCase("one", at, 9));
  EXPECT_EQ(at, text.Length());
  EXPECT_FALSE(text.FindCase("two", at, 100));
  EXPECT_EQ(at, text.Length());
  EXPECT_TRUE(text.FindCase("two", at));
  EXPECT_EQ(at, 12u);
  EXPECT_TRUE(text.FindNoCase("TWO", at));
  EXPECT_EQ(at, 4u);
  EXPECT_TRUE(text.FindNoCase(zuString("tWo"), at, 5));
  EXPECT_EQ(at, 12u);
  EXPECT_FALSE(zuString("ab").FindCase("abc", at));

  EXPECT_TRUE(text.CharInString('T'));
  EXPECT_FALSE(text.CharInString('x'));
  EXPECT_TRUE(text.CharInString('o', at, 1));
  EXPECT_EQ(at, 6u);
  EXPECT_FALSE(text.CharInString('o', at, 15));
  EXPECT_EQ(at, 15u);

  const zuString spaced("\xC2\xA0 \xC2\xA0x y");
  EXPECT_EQ(spaced.SkipOver(zuString::WhiteSpace()), 5u);
  EXPECT_EQ(spaced.SkipUntil(zuString("y"), 1), 6u);
  EXPECT_EQ(spaced.SkipOver(zuString::WhiteSpace(), 50), 0u);
  // Set membership compares whole code points, not bytes.
  EXPECT_EQ(zuString("\xC3\xA9").SkipOver(zuString("\xC3\xA8")), 0u);
}

TEST(zuStringTest, Tokens) {
  const zuString text(",,alpha,;beta;;");
  const zuString delimiters(",;");
  zuString token("old");
  unsigned int pos = 0;
  EXPECT_TRUE(text.GetToken(delimiters, token, pos));
  EXPECT_EQ(bytes(token), "alpha");
  EXPECT_EQ(pos, 7u);
  EXPECT_TRUE(text.GetToken(delimiters, token, pos));
  EXPECT_EQ(bytes(token), "beta");
  EXPECT_FALSE(text.GetToken(delimiters, token, pos));
  EXPECT_TRUE(token.IsEmpty());

  zuString line(" \xE3\x80\x80 first\\ word  second\\\\ ");
  EXPECT_TRUE(line.ParseToken(token));
  EXPECT_EQ(bytes(token), "first word");
  EXPECT_TRUE(line.ParseToken(token));
  EXPECT_EQ(bytes(token), "second\\");
  EXPECT_FALSE(line.ParseToken(token));
  EXPECT_TRUE(token.IsEmpty());
}

TEST(zuStringTest, Editing) {
  struct Case {
    const char* text;
    const char* from;
    const char* to;
    const char* expected;
  };
  const Case cases[] = {
      {"aaaa", "aa", "b", "bb"},           // occurrences do not overlap
      {"aaa", "aa", "xyz", "xyza"},        // growing
      {"abcabc", "bc", "", "aa"},          // shrinking to less
      {"abc", "", "x", "abc"},             // empty pattern changes nothing
      {"abc", "d", "x", "abc"},            // no match
      {"abab", "ab", "abab", "abababab"},  // replacement contains the pattern
      {"xx", "x", "", ""},
  };
  for (const Case& c : cases) {
    zuString text(c.text);
    text.ReplaceAll(c.from, c.to);
    EXPECT_EQ(bytes(text), c.expected) << c.text << " " << c.from << " " << c.to;
  }

  zuString text("hello");
  text.Replace(text, 5, 0);
  EXPECT_EQ(bytes(text), "hellohello");
  text += text;
  EXPECT_EQ(bytes(text), "hellohellohellohello");
  text.Swallow(5, 10);
  EXPECT_EQ(bytes(text), "hellohello");
  text.Empty();
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_FALSE(text.IsNull());

  zuString spaced("  a  ");
  spaced.Trim();
  EXPECT_EQ(bytes(spaced), "  a");
  spaced = "\t\v a b\r\n";
  spaced.TrimStart();
  EXPECT_EQ(bytes(spaced), "a b\r\n");
  spaced = "\xC2\xA0x\xC2\xA0";  // no-break space is not trimmed
  spaced.Trim();
  spaced.TrimStart();
  EXPECT_EQ(bytes(spaced), "\xC2\xA0x\xC2\xA0");

  zuString mixed(
      "stra\xC3\x9F"
      "e Ab");
  mixed.ToUpper();
  EXPECT_EQ(bytes(mixed),
            "STRA\xC3\x9F"
            "E AB");
  mixed.ToLower(0, 3);
  EXPECT_EQ(bytes(mixed),
            "strA\xC3\x9F"
            "E AB");

  zuString appended;
  appended += 'a';
  appended += '\0';
  appended += 0x20ACu;
  appended += u"\u00e9";
  appended += static_cast<const char*>(nullptr);
  EXPECT_EQ(bytes(appended), "a\xE2\x82\xAC\xC3\xA9");
  appended = 0x1F600u;
  EXPECT_EQ(bytes(appended), "\xF0\x9F\x98\x80");
  appended = 'q';
  EXPECT_EQ(bytes(appended), "q");

  EXPECT_EQ(bytes(zuString("ab") + zuString("cd")), "abcd");
  EXPECT_EQ(bytes(zuString("ab") + "cd"), "abcd");
  EXPECT_EQ(bytes("ab" + zuString("cd")), "abcd");
}

TEST(zuStringTest, ByteOrderMarks) {
  const char littleEndian[] =
      "\xFF\xFE"
      "A\0";
  EXPECT_EQ(bytes(zuString(littleEndian, 4)), "A");
  const char bigEndian[] = "\xFE\xFF\0A\0\xE9";
  EXPECT_EQ(bytes(zuString(bigEndian, 6)), "A\xC3\xA9");
  EXPECT_EQ(bytes(zuString("\xEF\xBB\xBFtext")), "text");

  zuString text;
  EXPECT_THROW(text = littleEndian, zuExFull);
  try {
    text = bigEndian;
  } catch (zuExFull& error) {
    EXPECT_TRUE(error.HasResId(16479));
  }
  // A copy stops at the first NUL even when a longer length is given.
  EXPECT_EQ(bytes(zuString("ab\0cd", 5)), "ab");
}

TEST(zuStringTest, Utf16AndCodePoints) {
  const zuString text(u"caf\u00e9 \U0001F600");
  EXPECT_EQ(bytes(text), "caf\xC3\xA9 \xF0\x9F\x98\x80");
  char16_t* units = text.GetAllocdZuChar();
  EXPECT_EQ(std::u16string(units), u"caf\u00e9 \U0001F600");
  delete[] units;

  const unsigned int codePoints[] = {'x', 0xE9, 0x20AC};
  EXPECT_EQ(bytes(zuString(codePoints, 3)), "x\xC3\xA9\xE2\x82\xAC");
  zuThreadSafeString global(u"wide");
  EXPECT_TRUE(global.IsGlobal());
  EXPECT_EQ(bytes(global), "wide");
}

TEST(zuStringTest, CharacterClasses) {
  struct Case {
    const char* text;
    int digit, lower, upper, alnum, alpha, space;
  };
  const Case cases[] = {
      {"0123", 1, 0, 0, 1, 0, 0},
      {"\xD9\xA3", 1, 0, 0, 1, 0, 0},  // Arabic-Indic three
      {"abc", 0, 1, 0, 1, 1, 0},
      {"\xC3\xA9\xC3\xBF", 0, 1, 0, 1, 1, 0},
      {"AB\xC3\x89", 0, 0, 1, 1, 1, 0},
      {"\xCE\xA9\xD0\x96", 0, 0, 0, 1, 1, 0},  // Greek and Cyrillic capitals
      {" \t\r\n\v\f", 0, 0, 0, 0, 0, 1},
      {"\xC2\xA0", 0, 0, 0, 0, 0, 0},
      {"a1", 0, 0, 0, 1, 0, 0},
      {"", 0, 0, 0, 0, 0, 0},
  };
  for (const Case& c : cases) {
    const zuString text(c.text);
    EXPECT_EQ(text.IsDigit(), c.digit) << c.text;
    EXPECT_EQ(text.IsLower(), c.lower) << c.text;
    EXPECT_EQ(text.IsUpper(), c.upper) << c.text;
    EXPECT_EQ(text.IsAlnum(), c.alnum) << c.text;
    EXPECT_EQ(text.IsAlpha(), c.alpha) << c.text;
    EXPECT_EQ(text.IsSpace(), c.space) << c.text;
  }
  EXPECT_EQ(zuString("ab12").IsDigit(2, 10), 1);
  EXPECT_EQ(zuString("ab12").IsDigit(9, 1), 0);
}

TEST(zuStringTest, NumberWriters) {
  struct Case {
    double value;
    unsigned int decimals;
    int trimZeros;
    const char* expected;
  };
  const Case cases[] = {
      {1.25, 0, 0, "1"},   {2.5, 2, 1, "2.5"},       {3.0, 2, 1, "3"},
      {3.0, 2, 0, "3.00"}, {-0.125, 3, 0, "-0.125"}, {1.0, 0, 1, "1"},
      {0.1, 20, 1, "0.1"}, {12.5, 1, 0, "12.5"},     {100.0, 2, 1, "100"},
  };
  zuString text;
  for (const Case& c : cases) {
    EXPECT_EQ(text.Number(c.value, c.decimals, c.trimZeros), 1);
    EXPECT_EQ(bytes(text), c.expected) << c.value << " " << c.decimals << " " << c.trimZeros;
  }
  text.Number(-42);
  EXPECT_EQ(bytes(text), "-42");
  text.Number(4294967295u);
  EXPECT_EQ(bytes(text), "4294967295");
  text.Number(-9000000000L);
  EXPECT_EQ(bytes(text), "-9000000000");
  text.Number(18446744073709551615ull);
  EXPECT_EQ(bytes(text), "18446744073709551615");
}

TEST(zuStringTest, NumberReaders) {
  struct Case {
    const char* text;
    int base;
    int ok;
    long expected;
  };
  const Case cases[] = {
      {"101", 2, 1, 101},  // only 8 and 16 are honoured
      {"17", 8, 1, 15},   {"ff", 16, 1, 255}, {"-12", 10, 1, -12},
      {"12x", 10, 0, 12}, {"", 10, 0, 0},     {"0x1A", 16, 1, 26},
  };
  for (const Case& c : cases) {
    const zuString text(c.text);
    long longValue = 99;
    int intValue = 99;
    EXPECT_EQ(text.Number(&longValue, c.base), c.ok) << c.text;
    EXPECT_EQ(longValue, c.expected) << c.text;
    EXPECT_EQ(text.Number(&intValue, c.base), c.ok) << c.text;
    EXPECT_EQ(intValue, c.expected) << c.text;
  }
  unsigned int unsignedValue = 0;
  EXPECT_EQ(zuString("4000000000").Number(&unsignedValue), 1);
  EXPECT_EQ(unsignedValue, 4000000000u);
  double real = 1;
  EXPECT_EQ(zuString("2.5e3").Number(&real), 1);
  EXPECT_EQ(real, 2500.0);
  EXPECT_EQ(zuString("2.5 ").Number(&real), 0);
  EXPECT_EQ(zuString().Number(&real), 0);
  EXPECT_EQ(real, 0.0);
}

TEST(zuStringTest, ToXMLByContext) {
  struct Case {
    zuToXMLType type;
    const char* text;
    const char* expected;
  };
  const Case cases[] = {
      {zuXMLText, "a<b>&c\"'", "a&lt;b&gt;&amp;c\"'"},
      {zuXMLAttributeDQuote, "a<b>\"'\t\n\r", "a&lt;b>&quot;'&#x9;&#xA;&#xD;"},
      {zuXMLAttributeSQuote, "\"'", "\"&apos;"},
      {zuXMLText, "tab\tline\ncr\r", "tab\tline\ncr&#xD;"},
      {zuXMLText,
       "bad\x01\x1F\xEF\xBF\xBE\xED\xA0\x80"
       "end",
       "badend"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(bytes(zuString(c.text).toXML(c.type)), c.expected) << c.text;
  }
  const zuString plain("nothing to do \xC3\xA9");
  EXPECT_TRUE(plain.toXML().SharesImpl(plain));

  const zuString accents("a\xC3\xA9\xE2\x82\xAC<");
  EXPECT_EQ(bytes(accents.toXML(zuXMLText, zuString::EmptyString(), 0x80, 0)),
            "a&#xe9;&#x20ac;&lt;");
  EXPECT_EQ(bytes(accents.toXML(zuXMLText, zuString::EmptyString(), 0, 0xFF)),
            "&#x61;&#xe9;\xE2\x82\xAC&lt;");
  EXPECT_EQ(bytes(accents.toXML(zuXMLText, zuString::EmptyString(), 0xE0, 0xFF)),
            "a&#xe9;\xE2\x82\xAC&lt;");
  EXPECT_EQ(bytes(accents.toXML(zuXMLText, zuString("a"))), "&#x61;\xC3\xA9\xE2\x82\xAC&lt;");
  EXPECT_EQ(bytes(accents.toXML(zuXMLText, zuString("a"), 0x80, 0, zuString("<\xC3\xA9"))),
            "&#x61;\xC3\xA9&#x20ac;<");
}

TEST(zuStringTest, ToXHTMLKeepsLayout) {
  struct Case {
    const char* text;
    const char* body;
  };
  const Case cases[] = {
      {"a b", "a b"},
      {"a  b", "a<span style=\"kdl-spacerun:yes\">&#160; </span>b"},
      {"a   b", "a<span style=\"kdl-spacerun:yes\">&#160;&#160; </span>b"},
      {"x\ty", "x<span style=\"kdl-tab-count:1\">&#160;</span>y"},
      {"one\ntwo", "one</p><p>two"},
      {"<&>\r\x02", "&lt;&amp;&gt;&#xD;"},
      {"end  ", "end<span style=\"kdl-spacerun:yes\">&#160; </span>"},
  };
  const std::string start = "<body xmlns=\"http://www.w3.org/1999/xhtml\"><p>";
  for (const Case& c : cases) {
    EXPECT_EQ(bytes(zuString(c.text).toXHTML(0)), start + c.body + "</p></body>") << c.text;
  }
  EXPECT_EQ(bytes(zuString("").toXHTML(1)), "<?xml version=\"1.0\"?>" + start + "</p></body>");
}

TEST(zuStringTest, ConstantStrings) {
  EXPECT_EQ(bytes(zuString::EmptyString()), "");
  EXPECT_EQ(bytes(zuString::NegOneString()), "-1");
  EXPECT_EQ(bytes(zuString::DQuoteString()), "\"");
  EXPECT_EQ(bytes(zuString::SemiColonString()), ";");
  EXPECT_TRUE(zuString::SpaceString().IsLiteral());
  const zuString& white = zuString::WhiteSpace();
  EXPECT_EQ(white.UniLength(), 21u);
  unsigned int pos = 0;
  for (unsigned int expected : {0x09u, 0x0Au, 0x0Bu, 0x0Cu, 0x0Du, 0x20u, 0xA0u}) {
    EXPECT_EQ(white.UniChar(pos), expected);
  }
  for (unsigned int expected = 0x2000; expected <= 0x200B; ++expected) {
    EXPECT_EQ(white.UniChar(pos), expected);
  }
  EXPECT_EQ(white.UniChar(pos), 0x3000u);
  EXPECT_EQ(white.UniChar(pos), 0xFEFFu);
  EXPECT_EQ(zuString::StringLength(nullptr), 0u);
  EXPECT_EQ(zuString().Version(), 0);
}

}  // namespace
