// Character-set conversion against its peers on the same input.
//
// ShiftJisToUtf8: 1 MiB of Japanese text in Shift_JIS converted to UTF-8
// through zuCharConverter, through ICU's ucnv_convertEx with converters
// opened once, and through glibc's iconv.
// ShortAlternating: 32-byte texts converted alternately from Shift_JIS and
// from GBK to UTF-8; the peer opens and closes its ICU converters on every
// call, which is what the per-thread converter cache saves.
#include <benchmark/benchmark.h>
#include <iconv.h>
#include <unicode/ucnv.h>

#include <string>
#include <vector>

#include "zu/core/zuGxCharConverter.h"

namespace {

constexpr size_t kTextBytes = 1 << 20;
constexpr size_t kShortBytes = 32;

std::string encode(const char* icuName, const std::string& utf8) {
  UErrorCode status = U_ZERO_ERROR;
  std::string out(utf8.size() * 2 + 16, '\0');
  const int32_t length =
      ucnv_convert(icuName, "UTF-8", out.data(), static_cast<int32_t>(out.size()), utf8.data(),
                   static_cast<int32_t>(utf8.size()), &status);
  out.resize(U_SUCCESS(status) ? static_cast<size_t>(length) : 0);
  return out;
}

// Japanese prose with ASCII, kana, kanji and full-width forms, in Shift_JIS,
// cut to whole lines.
const std::string& shiftJisText() {
  static const std::string text = [] {
    const std::string line =
        "\xE6\x9D\xB1\xE4\xBA\xAC\xE9\x83\xBD\xE5\x8D\x83\xE4\xBB\xA3\xE7\x94\xB0\xE5\x8C\xBA"
        "\xE3\x81\xAE\xE5\xA4\xA9\xE6\xB0\x97\xE3\x81\xAF\xE6\x99\xB4\xE3\x82\x8C\xE3\x80\x82"
        " Invoice 2024-03-17 \xEF\xBC\xA1\xEF\xBC\xA2\xEF\xBC\xA3 \xE3\x82\xAB\xE3\x82\xBF"
        "\xE3\x82\xAB\xE3\x83\x8A total 1,234\xE5\x86\x86\n";
    const std::string sjisLine = encode("IBM-943_P15A-2003", line);
    std::string result;
    while (result.size() + sjisLine.size() <= kTextBytes) result += sjisLine;
    return result;
  }();
  return text;
}

void ShiftJisToUtf8_ours(benchmark::State& state) {
  const std::string& in = shiftJisText();
  const zuGxCharConverter sjis("Shift_JIS");
  std::vector<char> out(in.size() * 3 + 8);
  for (auto _ : state) {
    const unsigned int bytes =
        zuCharConverter::UTF8()->Convert(out.data(), static_cast<unsigned int>(out.size()), &sjis,
                                         in.data(), static_cast<unsigned int>(in.size()));
    benchmark::DoNotOptimize(bytes);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * in.size()));
}

void ShiftJisToUtf8_icu(benchmark::State& state) {
  const std::string& in = shiftJisText();
  UErrorCode status = U_ZERO_ERROR;
  UConverter* source = ucnv_open("IBM-943_P15A-2003", &status);
  UConverter* target = ucnv_open("UTF-8", &status);
  // The same set-up as the library's cached converters.
  ucnv_setSubstChars(source, "?", 1, &status);
  ucnv_setSubstChars(target, "?", 1, &status);
  std::vector<char> out(in.size() * 3 + 8);
  for (auto _ : state) {
    char* cursor = out.data();
    const char* read = in.data();
    status = U_ZERO_ERROR;
    ucnv_convertEx(target, source, &cursor, out.data() + out.size(), &read, in.data() + in.size(),
                   nullptr, nullptr, nullptr, nullptr, true, true, &status);
    benchmark::DoNotOptimize(cursor);
  }
  ucnv_close(source);
  ucnv_close(target);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * in.size()));
}

void ShiftJisToUtf8_iconv(benchmark::State& state) {
  const std::string& in = shiftJisText();
  iconv_t handle = iconv_open("UTF-8", "SHIFT_JIS");
  std::vector<char> out(in.size() * 3 + 8);
  for (auto _ : state) {
    iconv(handle, nullptr, nullptr, nullptr, nullptr);
    char* read = const_cast<char*>(in.data());
    size_t readLeft = in.size();
    char* cursor = out.data();
    size_t outLeft = out.size();
    iconv(handle, &read, &readLeft, &cursor, &outLeft);
    benchmark::DoNotOptimize(cursor);
  }
  iconv_close(handle);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * in.size()));
}

struct ShortTexts {
  std::string sjis;
  std::string gbk;
};

const ShortTexts& shortTexts() {
  static const ShortTexts texts = [] {
    const std::string line = "abc \xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E 12345 \xE4\xB8\xAD xyz";
    ShortTexts result{encode("IBM-943_P15A-2003", line), encode("IBM-1386", line)};
    result.sjis.resize(kShortBytes, ' ');
    result.gbk.resize(kShortBytes, ' ');
    return result;
  }();
  return texts;
}

void ShortAlternating_ours(benchmark::State& state) {
  const ShortTexts& texts = shortTexts();
  const zuGxCharConverter sjis("SJIS");
  const zuGxCharConverter gbk("GBK");
  char out[kShortBytes * 6];
  bool odd = false;
  for (auto _ : state) {
    const std::string& in = odd ? texts.gbk : texts.sjis;
    const unsigned int bytes = zuCharConverter::UTF8()->Convert(
        out, sizeof out, odd ? &gbk : &sjis, in.data(), static_cast<unsigned int>(in.size()));
    benchmark::DoNotOptimize(bytes);
    odd = !odd;
  }
}

void ShortAlternating_open_per_call(benchmark::State& state) {
  const ShortTexts& texts = shortTexts();
  char out[kShortBytes * 6];
  bool odd = false;
  for (auto _ : state) {
    const std::string& in = odd ? texts.gbk : texts.sjis;
    UErrorCode status = U_ZERO_ERROR;
    UConverter* source = ucnv_open(odd ? "IBM-1386" : "IBM-943_P15A-2003", &status);
    UConverter* target = ucnv_open("UTF-8", &status);
    ucnv_setSubstChars(target, "?", 1, &status);
    char* cursor = out;
    const char* read = in.data();
    ucnv_convertEx(target, source, &cursor, out + sizeof out, &read, in.data() + in.size(), nullptr,
                   nullptr, nullptr, nullptr, true, true, &status);
    benchmark::DoNotOptimize(cursor);
    ucnv_close(source);
    ucnv_close(target);
    odd = !odd;
  }
}

BENCHMARK(ShiftJisToUtf8_ours)->Name("ShiftJisToUtf8/ours");
BENCHMARK(ShiftJisToUtf8_icu)->Name("ShiftJisToUtf8/icu");
BENCHMARK(ShiftJisToUtf8_iconv)->Name("ShiftJisToUtf8/iconv");
BENCHMARK(ShortAlternating_ours)->Name("ShortAlternating/ours");
BENCHMARK(ShortAlternating_open_per_call)->Name("ShortAlternating/open_per_call");

}  // namespace
