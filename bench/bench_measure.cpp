// Lengths with units against what a program would write without them:
//  - UnitParseStrict: "1.5in" by ValidatingParse, against strtod or
//    std::from_chars, a suffix table and rounding to millipoints;
//  - UnitParseLenient: "1.5 inches" by SetFromText, the same peers with a
//    table of unit words;
//  - UnitText: 1.5in and 12pt by Text, against snprintf("%.6f") or
//    std::to_chars (fixed, 6 digits), trailing zeros trimmed, suffix added;
//  - UnitConvert: 1,024 spans from millipoints into the centimetre base,
//    against std::lround(v * 635.0 / 72.0).
#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "zu/measure/zuUnitSpan.h"

namespace {

struct Suffix {
  const char* name;
  long perShown;  // millipoints or 250000ths of a centimetre
};

const Suffix kSuffixes[] = {{"pt", 1000},   {"mm", 25000}, {"in", 72000},
                            {"cm", 250000}, {"mp", 1},     {"pc", 12000}};

const Suffix kWords[] = {{"pt", 1000},   {"point", 1000},        {"points", 1000},
                         {"mm", 25000},  {"millimeter", 25000},  {"millimeters", 25000},
                         {"in", 72000},  {"inch", 72000},        {"inches", 72000},
                         {"cm", 250000}, {"centimeter", 250000}, {"centimeters", 250000},
                         {"mp", 1},      {"millipoint", 1},      {"millipoints", 1},
                         {"pc", 12000},  {"pica", 12000},        {"picas", 12000}};

// The units per shown unit of the unit name at `text` (blanks skipped
// first), 0 when the table has none.
long perShown(const char* text, const char* end, const Suffix* table, size_t count) {
  while (text != end && *text == ' ') ++text;
  const size_t length = static_cast<size_t>(end - text);
  for (size_t i = 0; i < count; ++i) {
    if (std::strlen(table[i].name) == length && std::memcmp(table[i].name, text, length) == 0) {
      return table[i].perShown;
    }
  }
  return 0;
}

long peerStrtod(const std::string& text, const Suffix* table, size_t count) {
  char* end = nullptr;
  const double amount = std::strtod(text.c_str(), &end);
  return std::lround(amount * perShown(end, text.c_str() + text.size(), table, count));
}

long peerFromChars(const std::string& text, const Suffix* table, size_t count) {
  double amount = 0;
  const char* stop = text.data() + text.size();
  const char* end = std::from_chars(text.data(), stop, amount).ptr;
  return std::lround(amount * perShown(end, stop, table, count));
}

constexpr size_t kSuffixCount = sizeof kSuffixes / sizeof kSuffixes[0];
constexpr size_t kWordCount = sizeof kWords / sizeof kWords[0];

void ourStrict(benchmark::State& state) {
  const zuString text("1.5in");
  zuUnitSpan::ParseData data;
  for (auto _ : state) {
    zuUnitSpan::ValidatingParse(data, text, zuUnitSpan::eNoUnits, 1, 0, 0);
    benchmark::DoNotOptimize(data);
  }
  if (data.value != 108000) state.SkipWithError("wrong value");
}

void ourLenient(benchmark::State& state) {
  const zuString text("1.5 inches");
  zuUnitSpan span;
  for (auto _ : state) {
    span.SetFromText(text, zuUnitSpan::eNoUnits, 0);
    benchmark::DoNotOptimize(span);
  }
  if (span.Value() != 108000) state.SkipWithError("wrong value");
}

// A peer reading `text` with `table`, which must give 1.5 inches (called
// directly, as a template argument).
template <long (*Peer)(const std::string&, const Suffix*, size_t)>
void peerParse(benchmark::State& state, const char* text, const Suffix* table, size_t count) {
  const std::string copy(text);
  long value = 0;
  for (auto _ : state) {
    value = Peer(copy, table, count);
    benchmark::DoNotOptimize(value);
  }
  if (value != 108000) state.SkipWithError("wrong value");
}

void strtodStrict(benchmark::State& state) {
  peerParse<peerStrtod>(state, "1.5in", kSuffixes, kSuffixCount);
}

void fromCharsStrict(benchmark::State& state) {
  peerParse<peerFromChars>(state, "1.5in", kSuffixes, kSuffixCount);
}

void strtodLenient(benchmark::State& state) {
  peerParse<peerStrtod>(state, "1.5 inches", kWords, kWordCount);
}

void fromCharsLenient(benchmark::State& state) {
  peerParse<peerFromChars>(state, "1.5 inches", kWords, kWordCount);
}

// The two lengths written alternately: 1.5in and 12pt.
const zuUnitSpan kSpans[] = {zuUnitSpan(zuUnitSpan::eInches, 108000),
                             zuUnitSpan(zuUnitSpan::ePoints, 12000)};
const double kAmounts[] = {1.5, 12.0};
const char* const kTextSuffixes[] = {"in", "pt"};

void ourText(benchmark::State& state) {
  zuString text;
  unsigned step = 0;
  for (auto _ : state) {
    kSpans[step++ & 1].Text(text, 8, 0, 0, 0);
    benchmark::DoNotOptimize(text);
  }
}

// Trailing zeros and a bare point removed, then the suffix.
void trimAndSuffix(std::string& text, char* digits, size_t length, const char* suffix) {
  while (length > 0 && digits[length - 1] == '0') --length;
  if (length > 0 && digits[length - 1] == '.') --length;
  text.assign(digits, length);
  text += suffix;
}

void snprintfText(benchmark::State& state) {
  std::string text;
  unsigned step = 0;
  for (auto _ : state) {
    const unsigned which = step++ & 1;
    char digits[64];
    const int length = std::snprintf(digits, sizeof digits, "%.6f", kAmounts[which]);
    trimAndSuffix(text, digits, static_cast<size_t>(length), kTextSuffixes[which]);
    benchmark::DoNotOptimize(text);
  }
}

void toCharsText(benchmark::State& state) {
  std::string text;
  unsigned step = 0;
  for (auto _ : state) {
    const unsigned which = step++ & 1;
    char digits[64];
    const char* end =
        std::to_chars(digits, digits + sizeof digits, kAmounts[which], std::chars_format::fixed, 6)
            .ptr;
    trimAndSuffix(text, digits, static_cast<size_t>(end - digits), kTextSuffixes[which]);
    benchmark::DoNotOptimize(text);
  }
}

constexpr int kConvertCount = 1024;

std::vector<int32_t> millipoints() {
  std::mt19937 random(1024);
  std::vector<int32_t> values(kConvertCount);
  for (int32_t& value : values) value = static_cast<int32_t>(random() % 20000001) - 10000000;
  return values;
}

void ourConvert(benchmark::State& state) {
  std::vector<zuUnitSpan> spans;
  for (int32_t value : millipoints()) spans.emplace_back(zuUnitSpan::eInches, value);
  std::vector<long> out(kConvertCount);
  for (auto _ : state) {
    for (int i = 0; i < kConvertCount; ++i) out[i] = spans[i].ValueAsUnit(zuUnitSpan::eCentimeters);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * kConvertCount);
}

void lroundConvert(benchmark::State& state) {
  const std::vector<int32_t> values = millipoints();
  std::vector<long> out(kConvertCount);
  for (auto _ : state) {
    for (int i = 0; i < kConvertCount; ++i) out[i] = std::lround(values[i] * 635.0 / 72.0);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * kConvertCount);
}

BENCHMARK(ourStrict)->Name("UnitParseStrict/ours");
BENCHMARK(strtodStrict)->Name("UnitParseStrict/strtod");
BENCHMARK(fromCharsStrict)->Name("UnitParseStrict/from_chars");
BENCHMARK(ourLenient)->Name("UnitParseLenient/ours");
BENCHMARK(strtodLenient)->Name("UnitParseLenient/strtod");
BENCHMARK(fromCharsLenient)->Name("UnitParseLenient/from_chars");
BENCHMARK(ourText)->Name("UnitText/ours");
BENCHMARK(snprintfText)->Name("UnitText/snprintf");
BENCHMARK(toCharsText)->Name("UnitText/to_chars");
BENCHMARK(ourConvert)->Name("UnitConvert/ours");
BENCHMARK(lroundConvert)->Name("UnitConvert/lround");

}  // namespace
