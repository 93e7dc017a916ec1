// zuString against std::string on the operations strings spend their time in.
#include <benchmark/benchmark.h>

#include <string>

#include "zu/core/zuString.h"

namespace {

const char kText64[] = "The quick brown fox jumps over the lazy dog; pack my box with fi";
static_assert(sizeof kText64 == 65, "64 bytes of text");

void StringCopy64_ours(benchmark::State& state) {
  const zuString source(kText64);
  for (auto _ : state) {
    zuString copy(source);
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(StringCopy64_ours)->Name("StringCopy64/ours");

void StringCopy64_std(benchmark::State& state) {
  const std::string source(kText64);
  for (auto _ : state) {
    std::string copy(source);
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(StringCopy64_std)->Name("StringCopy64/std_string");

void AppendBytes1000_ours(benchmark::State& state) {
  for (auto _ : state) {
    zuString text;
    for (int i = 0; i < 1000; ++i) text += static_cast<char>('a' + i % 26);
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(AppendBytes1000_ours)->Name("AppendBytes1000/ours");

void AppendBytes1000_std(benchmark::State& state) {
  for (auto _ : state) {
    std::string text;
    for (int i = 0; i < 1000; ++i) text += static_cast<char>('a' + i % 26);
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(AppendBytes1000_std)->Name("AppendBytes1000/std_string");

const char* const kWords[] = {"alpha ", "beta ", "gamma ", "delta ", "epsilon "};

void AppendWords100_ours(benchmark::State& state) {
  for (auto _ : state) {
    zuString text;
    for (int i = 0; i < 100; ++i) text += kWords[i % 5];
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(AppendWords100_ours)->Name("AppendWords100/ours");

void AppendWords100_std(benchmark::State& state) {
  for (auto _ : state) {
    std::string text;
    for (int i = 0; i < 100; ++i) text += kWords[i % 5];
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(AppendWords100_std)->Name("AppendWords100/std_string");

// 64 KiB of text with the needle at the very end; its first byte is common.
std::string haystack() {
  std::string text;
  while (text.size() < 64 * 1024 - 16) text += "needless needles ";
  text.resize(64 * 1024 - 16);
  text += "needle in a hay.";
  return text;
}

void FindCase64K_ours(benchmark::State& state) {
  const zuString text(haystack().c_str());
  const zuString needle("needle in a hay");
  for (auto _ : state) {
    unsigned int foundAt = 0;
    benchmark::DoNotOptimize(text.FindCase(needle, foundAt, 0));
    benchmark::DoNotOptimize(foundAt);
  }
}
BENCHMARK(FindCase64K_ours)->Name("FindCase64K/ours");

void FindCase64K_std(benchmark::State& state) {
  const std::string text = haystack();
  const std::string needle("needle in a hay");
  for (auto _ : state) benchmark::DoNotOptimize(text.find(needle));
}
BENCHMARK(FindCase64K_std)->Name("FindCase64K/std_string");

}  // namespace
