#include "zu/measure/zuUnitSpan.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <type_traits>

#include "zu/core/zuExErrItem.h"
#include "zu/measure/internal/zuMeasureTestSupport.h"
#include "zu/testing/zuCommaLocale.h"
#include "zu/testing/zuTestText.h"
#include "zu/testing/zuThrown.h"

namespace {

using zu::internal::span;
using zu::testing::str;
using zu::testing::thrown;
using Unit = zuUnitSpan::UnitCode;

constexpr long kMax = 2147483647;

// A number or a text becomes a span only when asked: comparing with a bare
// number, or passing one where a span is wanted, does not compile.
template <typename T>
concept ComparesWithInt = requires(T value) {
  value == 5;
};
static_assert(!ComparesWithInt<zuUnitSpan>);
static_assert(!std::is_convertible_v<long, zuUnitSpan>);
static_assert(!std::is_convertible_v<zuString, zuUnitSpan>);

// SetFromText: one strict reading (the strict reader has a table and a
// differential test of its own), then each rule of the lenient one.
const struct {
  const char* text;
  unsigned defaultUnit;
  int reciprocal, result;
  unsigned unit;
  long value;
} kReadCases[] = {
    {"4", 17, 1, 1, 17, 6250},            // strict: 4 per millimetre
    {"1 millipoints", 255, 0, 1, 35, 1},  // sixth letter p
    {"1 millimeters", 255, 0, 1, 17, 25000},
    {"1 /inch", 255, 0, 1, 0, 1000000},       // i with "/": micro-inches
    {"4 x", 17, 1, 1, 17, 62500},             // no letters: 4 per centimetre
    {"1 xyz", 255, 0, 0, 3, 72000},           // unknown letters: default, result 0
    {"1 x", 19, 0, 1, 19, 1000},              // one letter is no unit
    {"1-2 inches", 255, 0, 1, 3, -864000},    // "-" anywhere negates
    {"1.2.3 inches", 255, 0, 1, 3, 88560},    // further "." skipped
    {"- 1 cmx", 255, 0, 1, 3, 0},             // the number is the run "-"
    {"99999999 inches", 255, 0, 0, 3, kMax},  // overflow
    {"1.99999999999 mp", 255, 0, 1, 35, 2},
    {"", 255, 0, 1, 3, 0},
    {"5", 5, 0, 1, 5, 0}  // a default outside the table counts 0 units
};

void expectReadings() {
  for (const auto& c : kReadCases) {
    SCOPED_TRACE(c.text);
    zuUnitSpan value(Unit(200), 7);
    EXPECT_EQ(value.SetFromText(c.text, Unit(c.defaultUnit), c.reciprocal), c.result);
    EXPECT_EQ(value.Value(), c.value);
    EXPECT_EQ(value.Units(), c.unit);
  }
}

TEST(zuUnitSpanTest, ReadsTextStrictlyThenLeniently) {
  expectReadings();
  // The reciprocal of 0 fails and leaves the span as it was.
  zuUnitSpan value(Unit(200), 7);
  EXPECT_EQ(value.SetFromText("0 x", zuUnitSpan::eMillimeters, 1), 0);
  EXPECT_EQ(value, zuUnitSpan(Unit(200), 7));
  EXPECT_EQ(zuUnitSpan(zuString("3 mm"), zuUnitSpan::ePoints, 0), span(17, 75000));
  EXPECT_EQ((zuUnitSpan() = zuString("2pc")).Units(), zuUnitSpan::ePicas);
}

// One row per transition of the strict form, failing then passing.
const struct {
  const char* text;
  int ok;  // with negatives and "%" allowed, default unit 3
  unsigned unit;
  long value;
} kStrictCases[] = {{"", 0, 255, 0},       {" ", 0, 255, 0},
                    {"+", 0, 255, 0},      {"- ", 0, 255, 0},
                    {".", 0, 255, 0},      {"+-1", 0, 255, 0},
                    {"1.2.3", 0, 255, 0},  {"1-", 0, 255, 0},
                    {"1//", 0, 255, 0},    {"1% ", 0, 255, 0},
                    {"1%in", 0, 255, 0},   {"1in x", 0, 255, 0},
                    {"1in/", 0, 255, 0},   {"1\t", 0, 255, 0},
                    {"0/in", 0, 255, 0},   {"1\xC3\xA9", 0, 255, 0},
                    {"- 1", 1, 3, -72000}, {"1.", 1, 3, 72000},
                    {".5", 1, 3, 36000},   {"1 ", 1, 3, 72000},
                    {"1/", 1, 3, 72000},   {"2 /in ", 1, 3, 36000},
                    {"5 %", 1, 255, 0},    {"5/%", 1, 255, 0},
                    {"1pT", 1, 19, 1000},  {"1inches", 1, 255, 0},
                    {"1x", 1, 255, 0},     {"2147483648000.5mp", 1, 35, kMax}};

TEST(zuUnitSpanTest, StrictReadingFollowsEachTransition) {
  for (const auto& c : kStrictCases) {
    zuUnitSpan::ParseData data;
    data.unit = zuUnitSpan::ePoints;  // a failure resets both
    data.value = 99;
    EXPECT_EQ(zuUnitSpan::ValidatingParse(data, c.text, zuUnitSpan::eInches, 1, 0, 1), c.ok)
        << c.text;
    EXPECT_EQ(data.unit, c.unit) << c.text;
    EXPECT_EQ(data.value, c.value) << c.text;
  }
  zuUnitSpan::ParseData data;
  for (const zuString& nul : {zuString::FromBytes("1in\0", 4), zuString::FromBytes("1\0in", 4)}) {
    EXPECT_EQ(zuUnitSpan::ValidatingParse(data, nul, zuUnitSpan::eInches, 1, 0, 0), 0);
  }
  ASSERT_EQ(zuUnitSpan::ValidatingParse(data, " -12.50 percent", zuUnitSpan::eInches, 1, 1, 0), 1);
  EXPECT_EQ(data.fractionDivisor, 100);  // the sign, parts and flags are compared below
  EXPECT_EQ(std::string(data.unitLetters, 6), "percen");
  EXPECT_EQ(data.letterCount, 7u);
}

// An independent reader of the strict form: the text cut into its pieces
// with std::string's searches, 128-bit arithmetic for the value.
struct Reading {
  int ok = 0;
  unsigned unit = 255;
  long value = 0, integerPart = 0, fractionDigits = 0;
  bool reciprocal = false, percent = false;
};

Reading referenceRead(const std::string& text, unsigned defaultUnit, bool negatives,
                      bool reciprocal, bool percents) {
  const auto skip = [&](const char* set, size_t from) {
    return std::min(text.find_first_not_of(set, from), text.size());
  };
  size_t at = skip(" ", 0);
  const bool negative = at < text.size() && text[at] == '-';
  if (at < text.size() && (text[at] == '+' || (negative && negatives))) at = skip(" ", at + 1);
  const size_t integerEnd = skip("0123456789", at);
  const std::string integerDigits = text.substr(at, integerEnd - at);
  std::string fractionDigits;
  at = integerEnd;
  if (at < text.size() && text[at] == '.') {
    at = skip("0123456789", integerEnd + 1);
    fractionDigits = text.substr(integerEnd + 1, at - integerEnd - 1);
  }
  const size_t gapEnd = skip(" /", at);
  const std::string gap = text.substr(at, gapEnd - at), rest = text.substr(gapEnd);
  const size_t lettersEnd = std::min(
      rest.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"), rest.size());
  std::string letters = rest.substr(0, lettersEnd);
  Reading r;
  r.percent = rest == "%";
  const bool wellFormed =
      (negatives || !negative) && (!integerDigits.empty() || !fractionDigits.empty()) &&
      std::count(gap.begin(), gap.end(), '/') <= 1 && (!r.percent || percents) &&
      (r.percent || rest.find_first_not_of(' ', lettersEnd) == std::string::npos) &&
      (rest.empty() || r.percent || !letters.empty());
  if (!wellFormed) return Reading();
  __int128 integer = 0;
  for (char c : integerDigits) integer = std::min<__int128>(integer * 10 + (c - '0'), kMax);
  __int128 divisor = 1;
  for (char c : fractionDigits.substr(0, 8)) {
    r.fractionDigits = r.fractionDigits * 10 + (c - '0'), divisor *= 10;
  }
  r.integerPart = static_cast<long>(integer);
  r.reciprocal = reciprocal || gap.find('/') != std::string::npos;
  const struct {
    const char* name;
    unsigned code;
    __int128 units;
  } units[] = {{"pt", 19, 1000}, {"mm", 17, 25000}, {"in", 3, 72000}, {"cm", 1, 250000},
               {"mp", 35, 1},    {"pc", 51, 12000}, {"", 0, 1000000}};
  for (char& c : letters) c = static_cast<char>(c | 0x20);
  for (const auto& u : units) {
    const bool chosen = !letters.empty() ? *u.name != '\0' && letters == u.name
                                         : u.code == (defaultUnit == 255 ? 3 : defaultUnit);
    if (r.percent || !chosen) continue;
    __int128 value = std::min<__int128>(
        u.units * integer + (2 * u.units * r.fractionDigits + divisor) / (2 * divisor), kMax);
    if (r.reciprocal) {
      if (value == 0) return Reading();
      value = std::min<__int128>((2 * u.units * u.units + value) / (2 * value), kMax);
    }
    r.unit = u.code;
    r.value = static_cast<long>(value);
    break;
  }
  r.ok = 1;
  if (negative) r.value = -r.value, r.integerPart = -r.integerPart, r.fractionDigits *= -1;
  return r;
}

TEST(zuUnitSpanTest, StrictReadingAgreesWithAnIndependentReader) {
  std::mt19937 random(19);
  const auto pick = [&](const char* from) {
    return from[std::uniform_int_distribution<size_t>(0, std::strlen(from) - 1)(random)];
  };
  const auto some = [&](const char* from, int most) {
    std::string out;
    for (int n = std::uniform_int_distribution<int>(0, most)(random); n > 0; --n) out += pick(from);
    return out;
  };
  const unsigned defaults[] = {255, 0, 1, 3, 17, 19, 35, 51, 5};
  int ok = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string text = some(" ", 2) + some("+-", 1) + some(" ", 1) + some("0123456789", 12) +
                       some(".", 1) + some("0123456789", 12) + some(" /", 3) +
                       (i % 5 == 0 ? some("%", 1) : some("pPtTmMiInNcC", 3) + some(" ", 2));
    if (i % 7 == 0) text.insert(text.begin() + random() % (text.size() + 1), pick(" +-./%a1"));
    const unsigned defaultUnit = defaults[random() % 9];
    const int flags = static_cast<int>(random() % 8);
    zuUnitSpan::ParseData data;
    const int result = zuUnitSpan::ValidatingParse(data, text.c_str(), Unit(defaultUnit), flags & 1,
                                                   flags & 2, flags & 4);
    const Reading expected = referenceRead(text, defaultUnit, flags & 1, flags & 2, flags & 4);
    SCOPED_TRACE('"' + text + '"');
    ok += result;
    ASSERT_EQ(result, expected.ok);
    EXPECT_EQ(data.unit, expected.unit);
    EXPECT_EQ(data.value, expected.value);
    EXPECT_EQ(data.integerPart, expected.integerPart);
    EXPECT_EQ(data.fractionDigits, expected.fractionDigits);
    EXPECT_EQ(data.reciprocal != 0, expected.reciprocal);
    EXPECT_EQ(data.percent != 0, expected.percent);
  }
  EXPECT_GT(ok, 2000);  // both outcomes were exercised
  EXPECT_LT(ok, 18000);
}

TEST(zuUnitSpanTest, FindsUnitsByName) {
  const struct {
    const char* text;
    unsigned fallback;
    unsigned expected;
  } cases[] = {{"m", 255, 1},       {"pica", 255, 51}, {"mm", 255, 17}, {"p", 255, 19},
               {"MILLIP", 255, 35}, {"", 17, 17},      {"", 255, 3},    {"furlong", 19, 19}};
  for (const auto& c : cases) {
    EXPECT_EQ(zuUnitSpan::StringToUnit(c.text, Unit(c.fallback)), c.expected) << c.text;
  }
  zuString names;
  zuUnitSpan::UnitToString(zuUnitSpan::eMicroInches, names);  // shown in inches too
  EXPECT_EQ(str(names), "in, inches");
}

TEST(zuUnitSpanTest, ValidatesMeasurementTexts) {
  const struct {
    const char* text;
    int allowNegative;
    const char* expected;
  } cases[] = {{"1.5 inches", 0, "1.5 inches"},  // passing texts come back as given
               {"1..5in", 0, "1..5in"},          // two "." still pass
               {"1...5in", 0, "1.5in"},
               {"-1in", 0, "0"},
               {"-1-in", 1, "-1in"},  // a "-" after the first is rewritten
               {"5 x", 1, "5in"},     // so are fewer than two letters
               {" 5mm", 1, "5mm"},    // and a first character outside the number
               {"99999999 zz", 1, "29826.161764in"}};
  for (const auto& c : cases) {
    zuString text(c.text);
    EXPECT_EQ(str(zuUnitSpan::measurementValidate(text, c.allowNegative)), c.expected) << c.text;
    EXPECT_EQ(str(text), c.text);
  }
}

// What the round trip below leaves out: tiny negatives, extremes, micro-inches
// and no units; rounding at the last decimal; the suffix and minimum-decimals
// arguments; each reciprocal form.
const struct {
  unsigned unit;
  long value;
  unsigned maxDecimals, withoutSuffix, minDecimals, reciprocal;
  const char* expected;
} kTextCases[] = {{3, -1, 4, 0, 0, 0, "0in"},        {3, -kMax - 1, 8, 0, 0, 0, "-29826.161778in"},
                  {0, 1500000, 8, 0, 0, 0, "1.5in"}, {19, 1235, 2, 0, 0, 0, "1.24pt"},
                  {19, -1500, 0, 0, 0, 0, "-2pt"},   {19, 12000, 8, 0, 5, 0, "12.000pt"},
                  {19, 12050, 1, 0, 3, 0, "12.1pt"}, {19, 12000, 8, 1, 0, 0, "12"},
                  {255, -42, 0, 0, 0, 1, "-42"},     {17, 62500, 8, 0, 0, 1, "4/cm"},
                  {19, 12000, 8, 0, 0, 1, "1/pc"},   {3, -216000, 8, 0, 0, 1, "-0.3333/in"},
                  {3, 0, 8, 0, 0, 1, "0/in"},        {35, 7, 8, 0, 0, 1, "1714.3/pc"}};

// Texts are written, and read, the same whatever the locale's decimal point.
TEST(zuUnitSpanTest, WritesTextInAnyLocale) {
  const auto expectTexts = [] {
    for (const auto& c : kTextCases) {
      zuString out("previous text, longer than any result");
      span(c.unit, c.value).Text(out, c.maxDecimals, c.withoutSuffix, c.minDecimals, c.reciprocal);
      EXPECT_EQ(str(out), c.expected) << c.unit << "/" << c.value;
    }
  };
  expectTexts();
  const zu::testing::zuCommaLocale comma;
  ASSERT_TRUE(zu::testing::zuCommaLocale::isComma())
      << "no locale with a decimal comma could be made";
  expectTexts();
  expectReadings();
}

TEST(zuUnitSpanTest, EqualLengthsCompareEqualAcrossUnits) {
  const char* texts[] = {"1in", "2.54cm", "25.4mm", "72pt", "6pc", "72000mp", "1 inch", "6 picas"};
  for (const char* a : texts) {
    for (const char* b : texts) {
      EXPECT_TRUE(span(a) == span(b) && !(span(a) != span(b))) << a << " " << b;
      EXPECT_TRUE(span(a) <= span(b) && span(a) >= span(b) && !(span(a) < span(b))) << a << b;
    }
    const zuUnitSpan more = span(a) + span(35, 1);  // a millipoint more
    EXPECT_TRUE(span(a) < more && more > span(a) && span(a) != more) << a;
  }
  EXPECT_EQ(span("1cm") + span("1in"), span(1, 885000));
  EXPECT_EQ((span("1cm") + span("1in")).Units(), zuUnitSpan::eCentimeters);
  EXPECT_DOUBLE_EQ(span("3in") / span("2in"), 1.5);
  EXPECT_EQ(zuUnitSpan(zuUnitSpan::eCentimeters, zuUnitSpan::eInches, 72000).Value(), 635000);
  EXPECT_EQ(span(3, 100).ValueAsUnit(Unit(67)), 100);  // same base, any high bits
  EXPECT_EQ(span(255, 100).ValueAsUnit(Unit(255)), 100);
}

// value * num / den, rounded half away from zero and saturated.
long referenceConvert(long value, long num, long den) {
  const __int128 twice = static_cast<__int128>(value) * num * 2;
  __int128 result = (twice + (value < 0 ? -den : den)) / (2 * den);
  return static_cast<long>(std::clamp<__int128>(result, -kMax, kMax));
}

TEST(zuUnitSpanTest, ConversionsEqualExactRationalArithmetic) {
  const struct {
    unsigned from, to;
    long num, den;
  } pairs[] = {{0, 1, 127, 200}, {0, 3, 9, 125}, {1, 0, 200, 127},
               {1, 3, 72, 635},  {3, 0, 125, 9}, {3, 1, 635, 72}};
  std::mt19937 random(5);
  std::vector<long> values = {0, 1, -1, 4, -4, 36, -36, 63, -63, kMax, -kMax, -kMax - 1};
  for (int i = 0; i < 1000000; ++i) {
    values.push_back(static_cast<int32_t>(random()) >> (random() % 32));
  }
  for (const auto& p : pairs) {
    for (long value : values) {
      ASSERT_EQ(span(p.from, value).ValueAsUnit(Unit(p.to)), referenceConvert(value, p.num, p.den))
          << value << " from " << p.from << " to " << p.to;
    }
  }
}

// Texts of each unit read and written back exactly; any length written and
// read back within the unit's last decimal.
TEST(zuUnitSpanTest, TextAndSpanRoundTrip) {
  std::mt19937 random(7);
  const struct {
    const char* suffix;
    unsigned code, decimals;
    long mostUnits;  // so that the length fits 32 bits
    long tolerance;
  } units[] = {{"in", 3, 4, 29825, 0},    {"cm", 1, 5, 8588, 1},    {"mm", 17, 4, 85898, 1},
               {"pt", 19, 3, 2147482, 0}, {"pc", 51, 3, 178955, 6}, {"mp", 35, 0, kMax, 0}};
  for (const auto& u : units) {
    for (int i = 0; i < 50000; ++i) {
      std::string text = std::to_string(random() % (u.mostUnits + 1));
      std::string fraction = std::to_string(1000000 + random() % 1000000).substr(1, u.decimals);
      while (!fraction.empty() && fraction.back() == '0') fraction.pop_back();
      if (!fraction.empty()) text += "." + fraction;
      if (random() % 2 != 0 && text != "0") text = "-" + text;
      text += u.suffix;
      zuString out;
      span(text.c_str()).Text(out, u.decimals, 0, 0, 0);
      ASSERT_EQ(str(out), text);
      const long value =
          i < 2 ? (i == 0 ? kMax : -kMax) : static_cast<int32_t>(random()) >> (random() % 32);
      const zuUnitSpan back(static_cast<zuString>(span(u.code, value)));
      ASSERT_EQ(back.Units(), u.code);
      ASSERT_LE(std::abs(back.Value() - value), u.tolerance) << u.code << "/" << value;
    }
  }
}

TEST(zuUnitSpanTest, AppliesFactorsStepByStep) {
  const struct {
    long value, num, den, expected;
  } cases[] = {
      {7, 6, 3, 14},                      // 1: den divides num
      {-kMax - 1, 1, -1, -kMax - 1},      // 1: wraps
      {2000000000, 30, 20, -1294967296},  // 2: den divides the value; wraps
      {2100000003, 70, 30, 605032711},    // 3: 7/3 once a 0 is struck off; wraps
      {7, 1, 2, 4},                       // 4: rounded half away from zero
      {-7, 1, 2, -4},
      {1999999999, 3, 2, -kMax - 1},  // 4: ZuRound out of range
      {5, 0x100000002L, 1, 10}        // long arguments cut to 32 bits
  };
  for (const auto& c : cases) {
    const zuUnitSpan value = span(19, c.value);
    EXPECT_EQ(value.ApplyFactor(c.num, c.den), span(19, c.expected)) << c.value << "*" << c.num;
    EXPECT_EQ(value.ApplyFactor(c.num, c.den).Units(), zuUnitSpan::ePoints);
  }
  EXPECT_EQ(thrown([] { span(3, 1).ApplyFactor(1, 0); }).FirstResId(), 16479);
}

TEST(zuUnitSpanTest, SnapsToGridsAndSteps) {
  const struct {
    unsigned unit;
    long value;
    unsigned stepUnit;
    long step, grid, round;
  } cases[] = {{3, -7, 3, 5, -10, -5},
               {3, 8, 3, 5, 5, 10},
               {3, 7, 3, -5, 10, 5},
               {3, 7, 3, 0, 7, 7},
               {3, 72000, 1, 250000, 56693, 85039},  // 2.54 cm: 2 cm down, 3 cm to the nearest
               {3, kMax, 3, -2, kMax, kMax},         // 2147483648 saturates
               {3, -kMax - 1, 3, -1, -kMax - 1, -kMax - 1},
               {3, 5, 3, -kMax - 1, kMax, 0}};
  for (const auto& c : cases) {
    zuUnitSpan grid = span(c.unit, c.value), round = grid;
    grid.Grid(span(c.stepUnit, c.step));
    round.Round(span(c.stepUnit, c.step));
    EXPECT_EQ(grid, span(c.unit, c.grid)) << c.value << " on " << c.step;
    EXPECT_EQ(round, span(c.unit, c.round)) << c.value << " on " << c.step;
    EXPECT_EQ(round.Units(), c.unit);
  }
}

TEST(zuUnitSpanTest, ArithmeticWrapsAndDivisionChecksItsDivisor) {
  const zuUnitSpan max = span(19, kMax);
  const zuUnitSpan min = span(19, -kMax - 1);
  EXPECT_EQ((max + span(19, 1)).Value(), -kMax - 1);
  EXPECT_EQ((min - span(19, 1)).Value(), kMax);
  EXPECT_EQ((-min).Value(), -kMax - 1);
  EXPECT_EQ(min.Abs().Value(), -kMax - 1);
  EXPECT_EQ((max * 2L).Value(), -2);
  EXPECT_EQ((span(3, 3) * -1.5).Value(), -5);
  EXPECT_EQ(zuUnitSpan(0.5, zuUnitSpan::ePoints).Value(), 500);
  EXPECT_EQ((min / -1L).Value(), -kMax - 1);
  EXPECT_EQ((span(19, -7) / 2L).Value(), -3);
  zuUnitSpan value = span(19, 10);
  EXPECT_EQ(((value *= 3L) -= span(35, 5)) /= 5L, span(19, 5));
  for (auto divide :
       {+[](zuUnitSpan& s) { (void)(s / 0L); }, +[](zuUnitSpan& s) { s /= 0x100000000L; }}) {
    zuUnitSpan kept = span(19, 9);
    EXPECT_EQ(thrown([&] { divide(kept); }).FirstResId(), 16479);
    EXPECT_EQ(kept.Value(), 9);
  }
}

// 2 is no unit; 67 has unit 3 in its low bits, which conversions use; 255
// has no scale but a text.
TEST(zuUnitSpanTest, UnknownUnitsThrowWithTheirCode) {
  for (const unsigned code : {2u, 67u, 255u}) {
    const Unit unit = Unit(code);
    zuUnitSpan value = span(code, 1);
    zuString out("kept");
    for (const zuExFull& failure : {thrown([&] { zuUnitSpan::UnitsPerInch(unit); }),
                                    thrown([&] { zuUnitSpan::UnitToString(unit, out); }),
                                    thrown([&] { zuUnitSpan::ValueToUnit(1, unit); }),
                                    thrown([&] { zuUnitSpan(1.0, unit); })}) {
      EXPECT_EQ(failure.FirstResId(), 17107) << code;
      EXPECT_EQ(str(failure[0].getParm(0)), std::to_string(code));
    }
    if (code != 255) {
      EXPECT_EQ(thrown([&] { value.Text(out, 8, 0, 0, 0); }).FirstResId(), 17107);
    }
    EXPECT_EQ(str(out), "kept");
    const std::function<void()> conversions[] = {
        [&] { value.ChangeUnits(zuUnitSpan::eCentimeters); }, [&] { value += span(1, 1); },
        [&] { (void)(span(1, 1) < value); }, [&] { value.Grid(span(1, 1)); },
        [&] { zuUnitSpan(zuUnitSpan::eCentimeters, unit, 1); }};
    for (const auto& convert : conversions) {
      if (code == 67) {
        convert();
      } else {
        EXPECT_EQ(thrown(convert).FirstResId(), 17107) << code;
      }
    }
    EXPECT_TRUE(code == 67 || value == span(code, 1)) << code;
  }
  zuString out;
  span(255, 1).Text(out, 8, 0, 0, 0);
  EXPECT_EQ(str(out), "1");
}

}  // namespace
