// Locale-name resolution: RnLocale against ICU's canonicalisation plus a
// Locale made from the result, over the same names in the same order.
//
// The names mix the spellings callers pass: canonical ("de_CH"), lower case,
// with "-", with a script, and qualified with a code set and a modifier.
// ICU's side does the equivalent work of turning such a name into a locale
// object it can use; neither side finds locale data here.
#include <benchmark/benchmark.h>
#include <unicode/locid.h>
#include <unicode/uloc.h>

#include "zu/locale/RnLocale.h"

namespace {

const char* const kCanonical[] = {"de_CH", "en_US", "fr_FR", "ja_JP", "zh_TW", "ar_EG",
                                  "pt_BR", "ru_RU", "sv_SE", "nb_NO", "es_MX", "th_TH"};
const char* const kMixed[] = {"de-ch",      "EN_us", "fr_FR.iso88591@euro", "ja-JP",
                              "az_cyrl_az", "zh_TW", "sr_latn_cs",          "pt_br.UTF-8",
                              "ru_RU",      "nb-no", "es_MX@euro",          "th_TH"};

template <size_t N>
void resolveOurs(benchmark::State& state, const char* const (&names)[N]) {
  size_t next = 0;
  for (auto _ : state) {
    const RnLocale locale(names[next]);
    benchmark::DoNotOptimize(locale.getHandle());
    next = next + 1 == N ? 0 : next + 1;
  }
}

template <size_t N>
void resolveIcu(benchmark::State& state, const char* const (&names)[N]) {
  size_t next = 0;
  for (auto _ : state) {
    char canonical[ULOC_FULLNAME_CAPACITY];
    UErrorCode status = U_ZERO_ERROR;
    uloc_canonicalize(names[next], canonical, sizeof canonical, &status);
    const icu::Locale locale(canonical);
    benchmark::DoNotOptimize(locale.getName());
    next = next + 1 == N ? 0 : next + 1;
  }
}

void ResolveCanonicalOurs(benchmark::State& state) {
  resolveOurs(state, kCanonical);
}
void ResolveCanonicalIcu(benchmark::State& state) {
  resolveIcu(state, kCanonical);
}
void ResolveMixedOurs(benchmark::State& state) {
  resolveOurs(state, kMixed);
}
void ResolveMixedIcu(benchmark::State& state) {
  resolveIcu(state, kMixed);
}

BENCHMARK(ResolveCanonicalOurs)->Name("ResolveCanonical/ours");
BENCHMARK(ResolveCanonicalIcu)->Name("ResolveCanonical/icu");
BENCHMARK(ResolveMixedOurs)->Name("ResolveMixed/ours");
BENCHMARK(ResolveMixedIcu)->Name("ResolveMixed/icu");

}  // namespace
