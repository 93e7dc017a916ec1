// Memory streams and the Base64 transformer on 32 MiB.
//
// - The Base64 transformer read in 64 KiB requests, and streamed decoding
//   in 64 KiB pieces, each against the whole-buffer call ("whole").
// - A zuMemoryStreamFile written in 16-byte and 4 KiB pieces against
//   std::stringstream and std::vector<char>, and read back in the same
//   pieces against std::istringstream.
#include <benchmark/benchmark.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "zu/stream/zuBase64.h"
#include "zu/stream/zuBase64StreamTransformer.h"
#include "zu/stream/zuFixedMemoryStreamFile.h"
#include "zu/stream/zuMemoryStreamFile.h"

namespace {

constexpr std::size_t kSize = 32 << 20;
constexpr unsigned kRequest = 64 << 10;

const std::string& randomBytes() {
  static const std::string bytes = [] {
    std::mt19937_64 random(kSize);
    std::string text(kSize, '\0');
    for (char& byte : text) byte = static_cast<char>(random());
    return text;
  }();
  return bytes;
}

const std::string& encodedLines() {
  static const std::string text = [] {
    const zuString encoded = Base64Encode(randomBytes().data(), kSize, 1);
    return std::string(encoded, encoded.Length());
  }();
  return text;
}

void transformerReads(benchmark::State& state) {
  zuMemoryStreamFile file(0, zuFileMode::eReadWrite, kSize, 0, 0);
  file.Write(randomBytes().data(), kSize);
  file.PushTransformer(new zuBase64StreamTransformer);
  std::vector<char> buffer(kRequest);
  for (auto _ : state) {
    file.SetPosition(zuFilePosition());
    std::size_t total = 0;
    while (unsigned got = file.Read(buffer.data(), kRequest)) total += got;
    benchmark::DoNotOptimize(total);
  }
  state.SetBytesProcessed(state.iterations() * kSize);
}

void wholeEncode(benchmark::State& state) {
  std::vector<char> out(Base64EncodeLength(kSize, 1));
  for (auto _ : state) {
    Base64Encode(out.data(), randomBytes().data(), kSize, 1);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(state.iterations() * kSize);
}

void streamedDecode(benchmark::State& state) {
  const std::string& text = encodedLines();
  std::vector<char> pending(kRequest + 8);
  std::vector<char> out(Base64DecodeLength(kRequest + 8));
  for (auto _ : state) {
    std::size_t total = 0;
    unsigned kept = 0;
    for (std::size_t start = 0; start < text.size(); start += kRequest - kept) {
      const unsigned piece =
          static_cast<unsigned>(std::min<std::size_t>(kRequest - kept, text.size() - start));
      std::copy_n(text.data() + start, piece, pending.data() + kept);
      unsigned length = 0;
      int remainder = 0;
      Base64Decode(out.data(), length, pending.data(), kept + piece, &remainder);
      std::copy_n(pending.data() + kept + piece - remainder, remainder, pending.data());
      kept = static_cast<unsigned>(remainder);
      total += length;
    }
    unsigned length = 0;
    Base64Decode(out.data(), length, pending.data(), kept);
    benchmark::DoNotOptimize(total + length);
  }
  state.SetBytesProcessed(state.iterations() * kSize);
}

void wholeDecode(benchmark::State& state) {
  const std::string& text = encodedLines();
  std::vector<char> out(Base64DecodeLength(static_cast<unsigned>(text.size())));
  for (auto _ : state) {
    unsigned length = 0;
    Base64Decode(out.data(), length, text.data(), static_cast<unsigned>(text.size()));
    benchmark::DoNotOptimize(length);
  }
  state.SetBytesProcessed(state.iterations() * kSize);
}

template <std::size_t kPiece>
void ourWrites(benchmark::State& state) {
  const char* bytes = randomBytes().data();
  for (auto _ : state) {
    zuMemoryStreamFile file(0, zuFileMode::eReadWrite, 0, 0, 0);
    for (std::size_t at = 0; at < kSize; at += kPiece) file.Write(bytes + at, kPiece);
    benchmark::DoNotOptimize(static_cast<const char*>(file));
  }
  state.SetBytesProcessed(state.iterations() * kSize);
}

template <std::size_t kPiece>
void stringstreamWrites(benchmark::State& state) {
  const char* bytes = randomBytes().data();
  for (auto _ : state) {
    std::stringstream stream;
    for (std::size_t at = 0; at < kSize; at += kPiece) stream.write(bytes + at, kPiece);
    benchmark::DoNotOptimize(stream.tellp());
  }
  state.SetBytesProcessed(state.iterations() * kSize);
}

template <std::size_t kPiece>
void vectorWrites(benchmark::State& state) {
  const char* bytes = randomBytes().data();
  for (auto _ : state) {
    std::vector<char> vector;
    for (std::size_t at = 0; at < kSize; at += kPiece) {
      vector.insert(vector.end(), bytes + at, bytes + at + kPiece);
    }
    benchmark::DoNotOptimize(vector.data());
  }
  state.SetBytesProcessed(state.iterations() * kSize);
}

template <std::size_t kPiece>
void ourReads(benchmark::State& state) {
  zuFixedMemoryStreamFile file(randomBytes().data(), kSize, 0);
  char buffer[kPiece];
  for (auto _ : state) {
    file.SetPosition(zuFilePosition());
    while (file.Read(buffer, kPiece) != 0) benchmark::DoNotOptimize(buffer);
  }
  state.SetBytesProcessed(state.iterations() * kSize);
}

template <std::size_t kPiece>
void istringstreamReads(benchmark::State& state) {
  std::istringstream stream(randomBytes());
  char buffer[kPiece];
  for (auto _ : state) {
    stream.clear();
    stream.seekg(0);
    while (stream.read(buffer, kPiece)) benchmark::DoNotOptimize(buffer);
  }
  state.SetBytesProcessed(state.iterations() * kSize);
}

BENCHMARK(transformerReads)->Name("Base64Transformer64K/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(wholeEncode)->Name("Base64Transformer64K/whole")->Unit(benchmark::kMillisecond);
BENCHMARK(streamedDecode)->Name("Base64StreamedDecode64K/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(wholeDecode)->Name("Base64StreamedDecode64K/whole")->Unit(benchmark::kMillisecond);
BENCHMARK(ourWrites<16>)->Name("MemoryWrite16/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(stringstreamWrites<16>)
    ->Name("MemoryWrite16/stringstream")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(vectorWrites<16>)->Name("MemoryWrite16/vector")->Unit(benchmark::kMillisecond);
BENCHMARK(ourReads<16>)->Name("MemoryRead16/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(istringstreamReads<16>)
    ->Name("MemoryRead16/istringstream")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ourWrites<4096>)->Name("MemoryWrite4K/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(stringstreamWrites<4096>)
    ->Name("MemoryWrite4K/stringstream")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(vectorWrites<4096>)->Name("MemoryWrite4K/vector")->Unit(benchmark::kMillisecond);
BENCHMARK(ourReads<4096>)->Name("MemoryRead4K/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(istringstreamReads<4096>)
    ->Name("MemoryRead4K/istringstream")
    ->Unit(benchmark::kMillisecond);

}  // namespace
