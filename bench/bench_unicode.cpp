// The UTF-8 conversion loops against ICU doing the same job on the same
// 1 MiB of mixed text (ASCII, Latin, CJK and emoji). ICU has no direct
// UTF-8 <-> UTF-32 call, so its side goes through UTF-16 as a caller of ICU
// would: u_strFromUTF8 then u_strToUTF32, and u_strFromUTF32 then u_strToUTF8.
#include <benchmark/benchmark.h>
#include <unicode/ustring.h>

#include <cstdint>
#include <string>
#include <vector>

#include "zu/core/zuUnicode.h"

namespace {

constexpr size_t kTextBytes = 1 << 20;

// Lines of the kinds of text the library handles, repeated to 1 MiB and cut
// at a character boundary.
const std::string& mixedText() {
  static const std::string text = [] {
    const char* const kLines[] = {
        "The quick brown fox jumps over the lazy dog; invoice 2024-03-17, total 1,234.50.\n",
        "Fa\xC3\xA7"
        "ade, cr\xC3\xA8me br\xC3\xBBl\xC3\xA9"
        "e, Stra\xC3\x9F"
        "e, \xC3\xA5r, "
        "\xC5\x81\xC3\xB3"
        "d\xC5\xBA, na\xC3\xAFve caf\xC3\xA9.\n",
        "\xE6\x9D\xB1\xE4\xBA\xAC\xE9\x83\xBD\xE5\x8D\x83\xE4\xBB\xA3\xE7\x94\xB0\xE5\x8C\xBA"
        "\xE3\x81\xAE\xE5\xA4\xA9\xE6\xB0\x97\xE3\x81\xAF\xE6\x99\xB4\xE3\x82\x8C\xE3\x80\x82\n",
        "Status \xF0\x9F\x98\x80 done \xF0\x9F\x8E\x89 rocket \xF0\x9F\x9A\x80 ok \xE2\x9C\x85\n",
    };
    std::string result;
    while (result.size() < kTextBytes) {
      for (const char* line : kLines) result += line;
    }
    size_t cut = kTextBytes;
    while ((static_cast<unsigned char>(result[cut]) & 0xC0) == 0x80) --cut;
    result.resize(cut);
    return result;
  }();
  return text;
}

unsigned int textBytes() {
  return static_cast<unsigned int>(mixedText().size());
}

const std::vector<unsigned int>& mixedCodePoints() {
  static const std::vector<unsigned int> codePoints = [] {
    std::vector<unsigned int> result(textBytes());
    result.resize(ConvertFromUTF8(result.data(), textBytes(), mixedText().data(), textBytes()));
    return result;
  }();
  return codePoints;
}

void setBytes(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * textBytes());
}

void FromUTF8Ours(benchmark::State& state) {
  std::vector<unsigned int> out(textBytes());
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        ConvertFromUTF8(out.data(), textBytes(), mixedText().data(), textBytes()));
    benchmark::ClobberMemory();
  }
  setBytes(state);
}

void FromUTF8Icu(benchmark::State& state) {
  std::vector<UChar> utf16(textBytes());
  std::vector<UChar32> out(textBytes());
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t units = 0;
    int32_t codePoints = 0;
    u_strFromUTF8(utf16.data(), static_cast<int32_t>(utf16.size()), &units, mixedText().data(),
                  static_cast<int32_t>(textBytes()), &status);
    u_strToUTF32(out.data(), static_cast<int32_t>(out.size()), &codePoints, utf16.data(), units,
                 &status);
    benchmark::DoNotOptimize(codePoints);
    benchmark::ClobberMemory();
    if (U_FAILURE(status)) state.SkipWithError("ICU conversion failed");
  }
  setBytes(state);
}

void ToUTF8Ours(benchmark::State& state) {
  const std::vector<unsigned int>& in = mixedCodePoints();
  std::string out(textBytes(), '\0');
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        ConvertToUTF8(out.data(), textBytes(), in.data(), static_cast<unsigned int>(in.size())));
    benchmark::ClobberMemory();
  }
  setBytes(state);
}

void ToUTF8Icu(benchmark::State& state) {
  const std::vector<unsigned int>& in = mixedCodePoints();
  std::vector<UChar> utf16(textBytes());
  std::string out(textBytes(), '\0');
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t units = 0;
    int32_t bytes = 0;
    u_strFromUTF32(utf16.data(), static_cast<int32_t>(utf16.size()), &units,
                   reinterpret_cast<const UChar32*>(in.data()), static_cast<int32_t>(in.size()),
                   &status);
    u_strToUTF8(out.data(), static_cast<int32_t>(out.size()), &bytes, utf16.data(), units, &status);
    benchmark::DoNotOptimize(bytes);
    benchmark::ClobberMemory();
    if (U_FAILURE(status)) state.SkipWithError("ICU conversion failed");
  }
  setBytes(state);
}

void UTF8toUTF16Ours(benchmark::State& state) {
  std::vector<char16_t> out(textBytes());
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        zuUTF8toUTF16(out.data(), textBytes(), mixedText().data(), textBytes()));
    benchmark::ClobberMemory();
  }
  setBytes(state);
}

void UTF8toUTF16Icu(benchmark::State& state) {
  std::vector<UChar> out(textBytes());
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t units = 0;
    u_strFromUTF8(out.data(), static_cast<int32_t>(out.size()), &units, mixedText().data(),
                  static_cast<int32_t>(textBytes()), &status);
    benchmark::DoNotOptimize(units);
    benchmark::ClobberMemory();
    if (U_FAILURE(status)) state.SkipWithError("ICU conversion failed");
  }
  setBytes(state);
}

BENCHMARK(FromUTF8Ours)->Name("ConvertFromUTF8/ours");
BENCHMARK(FromUTF8Icu)->Name("ConvertFromUTF8/icu_u_strToUTF32");
BENCHMARK(ToUTF8Ours)->Name("ConvertToUTF8/ours");
BENCHMARK(ToUTF8Icu)->Name("ConvertToUTF8/icu_u_strFromUTF32");
BENCHMARK(UTF8toUTF16Ours)->Name("UTF8toUTF16/ours");
BENCHMARK(UTF8toUTF16Icu)->Name("UTF8toUTF16/icu_u_strFromUTF8");

}  // namespace
