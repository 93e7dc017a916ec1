// Base64 against OpenSSL's EVP codec on 32 KiB and 32 MiB of random bytes:
// plain encoding (EVP_EncodeBlock), encoding in lines (EVP_EncodeUpdate's
// 64-column lines, ours 76), decoding canonical text (EVP_DecodeBlock) and
// decoding text in 76-column lines (EVP_DecodeUpdate). Throughput is the
// input's bytes per second.
#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "zu/stream/zuBase64.h"

namespace {

std::vector<unsigned char> randomBytes(std::size_t size) {
  std::mt19937_64 random(size);
  std::vector<unsigned char> bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random());
  return bytes;
}

std::string encoded(const std::vector<unsigned char>& bytes, int lineBreaks) {
  const unsigned n = static_cast<unsigned>(bytes.size());
  std::string text(Base64EncodeLength(n, lineBreaks), '\0');
  Base64Encode(text.data(), bytes.data(), n, lineBreaks);
  return text;
}

using Context = std::unique_ptr<EVP_ENCODE_CTX, void (*)(EVP_ENCODE_CTX*)>;
Context newContext() {
  return Context(EVP_ENCODE_CTX_new(), EVP_ENCODE_CTX_free);
}

void ourEncode(benchmark::State& state, std::size_t size, int lineBreaks) {
  const auto bytes = randomBytes(size);
  std::vector<char> out(Base64EncodeLength(static_cast<unsigned>(size), lineBreaks) + 1);
  for (auto _ : state) {
    Base64Encode(out.data(), bytes.data(), static_cast<unsigned>(size), lineBreaks);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(state.iterations() * size);
}

void sslEncodeBlock(benchmark::State& state, std::size_t size) {
  const auto bytes = randomBytes(size);
  std::vector<unsigned char> out(size / 3 * 4 + 8);
  for (auto _ : state) {
    benchmark::DoNotOptimize(EVP_EncodeBlock(out.data(), bytes.data(), static_cast<int>(size)));
  }
  state.SetBytesProcessed(state.iterations() * size);
}

void sslEncodeUpdate(benchmark::State& state, std::size_t size) {
  const auto bytes = randomBytes(size);
  std::vector<unsigned char> out(size / 3 * 4 + size / 48 + 80);
  Context context = newContext();
  for (auto _ : state) {
    EVP_EncodeInit(context.get());
    int length = 0;
    int last = 0;
    EVP_EncodeUpdate(context.get(), out.data(), &length, bytes.data(), static_cast<int>(size));
    EVP_EncodeFinal(context.get(), out.data() + length, &last);
    benchmark::DoNotOptimize(length + last);
  }
  state.SetBytesProcessed(state.iterations() * size);
}

void ourDecode(benchmark::State& state, std::size_t size, int lineBreaks) {
  const std::string text = encoded(randomBytes(size), lineBreaks);
  std::vector<char> out(Base64DecodeLength(static_cast<unsigned>(text.size())));
  for (auto _ : state) {
    unsigned length = 0;
    Base64Decode(out.data(), length, text.data(), static_cast<unsigned>(text.size()));
    benchmark::DoNotOptimize(length);
  }
  state.SetBytesProcessed(state.iterations() * size);
}

void sslDecodeBlock(benchmark::State& state, std::size_t size) {
  const std::string text = encoded(randomBytes(size), 0);
  std::vector<unsigned char> out(text.size());
  for (auto _ : state) {
    benchmark::DoNotOptimize(EVP_DecodeBlock(out.data(),
                                             reinterpret_cast<const unsigned char*>(text.data()),
                                             static_cast<int>(text.size())));
  }
  state.SetBytesProcessed(state.iterations() * size);
}

void sslDecodeUpdate(benchmark::State& state, std::size_t size) {
  const std::string text = encoded(randomBytes(size), 1);
  std::vector<unsigned char> out(text.size());
  Context context = newContext();
  for (auto _ : state) {
    EVP_DecodeInit(context.get());
    int length = 0;
    int last = 0;
    EVP_DecodeUpdate(context.get(), out.data(), &length,
                     reinterpret_cast<const unsigned char*>(text.data()),
                     static_cast<int>(text.size()));
    EVP_DecodeFinal(context.get(), out.data() + length, &last);
    benchmark::DoNotOptimize(length + last);
  }
  state.SetBytesProcessed(state.iterations() * size);
}

void registerAll() {
  const std::pair<const char*, std::size_t> sizes[] = {{"32K", 32 << 10}, {"32M", 32 << 20}};
  for (const auto& [label, size] : sizes) {
    const std::string suffix = label;
    benchmark::RegisterBenchmark(("Base64Encode" + suffix + "/ours").c_str(), ourEncode, size, 0);
    benchmark::RegisterBenchmark(("Base64Encode" + suffix + "/openssl").c_str(), sslEncodeBlock,
                                 size);
    benchmark::RegisterBenchmark(("Base64EncodeLines" + suffix + "/ours").c_str(), ourEncode, size,
                                 1);
    benchmark::RegisterBenchmark(("Base64EncodeLines" + suffix + "/openssl").c_str(),
                                 sslEncodeUpdate, size);
    benchmark::RegisterBenchmark(("Base64Decode" + suffix + "/ours").c_str(), ourDecode, size, 0);
    benchmark::RegisterBenchmark(("Base64Decode" + suffix + "/openssl").c_str(), sslDecodeBlock,
                                 size);
    benchmark::RegisterBenchmark(("Base64DecodeLines" + suffix + "/ours").c_str(), ourDecode, size,
                                 1);
    benchmark::RegisterBenchmark(("Base64DecodeLines" + suffix + "/openssl").c_str(),
                                 sslDecodeUpdate, size);
  }
}

[[maybe_unused]] const int kRegistered = (registerAll(), 0);

}  // namespace
