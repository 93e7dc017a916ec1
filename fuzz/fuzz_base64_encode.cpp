// Encodes arbitrary bytes as Base64 whole, in parts through
// Base64EncodePart into windows, and through the stream transformer in
// reads of chosen sizes, scalar and with the AVX2 blocks; every way must
// give the whole encoding.
//
// Input: a control byte (bit 0: AVX2 blocks on, bit 1: line breaks), a
// part length, a window, two read sizes, then the bytes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "zu/stream/internal/zuBase64Simd.h"
#include "zu/stream/zuBase64.h"
#include "zu/stream/zuBase64StreamTransformer.h"
#include "zu/stream/zuFixedMemoryStreamFile.h"

namespace {

std::string wholeEncoding(const std::string& bytes, int lineBreaks) {
  std::string text(Base64EncodeLength(static_cast<unsigned>(bytes.size()), lineBreaks) + 1, '#');
  Base64Encode(text.data(), bytes.data(), static_cast<unsigned>(bytes.size()), lineBreaks);
  if (bytes.empty()) {
    if (text[0] != '\0') __builtin_trap();  // an empty result is a NUL
    return std::string();
  }
  if (text.back() != '#') __builtin_trap();
  text.pop_back();
  return text;
}

std::string encodeInParts(const std::string& bytes, unsigned part, unsigned window,
                          int lineBreaks) {
  std::string text;
  long bits = 0;
  long charCount = 0;
  std::vector<char> out(window + 1);
  std::vector<char> spill(2 * part + 16);
  for (std::size_t start = 0; start < bytes.size(); start += part) {
    const unsigned length =
        static_cast<unsigned>(std::min<std::size_t>(part, bytes.size() - start));
    unsigned spillLen = 0;
    long outEnd = 0;
    out[window] = '#';
    Base64EncodePart(out.data(), bytes.data() + start, spill.data(), spillLen, 0, bits, charCount,
                     outEnd, window, length, start + length == bytes.size(), lineBreaks);
    if (outEnd < 0 || outEnd > long(window) || out[window] != '#') __builtin_trap();
    text.append(out.data(), outEnd);
    text.append(spill.data(), spillLen);
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 5) return 0;
  zu::internal::setBase64Simd((data[0] & 1) != 0);
  const int lineBreaks = (data[0] & 2) != 0;
  const std::string bytes(reinterpret_cast<const char*>(data + 5), size - 5);
  const std::string whole = wholeEncoding(bytes, lineBreaks);
  const zuString asString =
      Base64Encode(bytes.data(), static_cast<unsigned>(bytes.size()), lineBreaks);
  if (std::string(asString, asString.Length()) != whole) __builtin_trap();

  const unsigned part = (data[1] % 64 + 1) * 3;
  if (encodeInParts(bytes, part, data[2] + 1u, lineBreaks) != whole) __builtin_trap();

  // The transformer always breaks lines.
  const std::string broken = lineBreaks ? whole : wholeEncoding(bytes, 1);
  zuFixedMemoryStreamFile file(bytes.data(), static_cast<unsigned>(bytes.size()), 0);
  file.PushTransformer(new zuBase64StreamTransformer);
  std::string read;
  char buffer[256];
  for (int k = 0; !file.AtEof(); ++k) {
    const unsigned request = data[3 + k % 2] + 1u;
    const unsigned got = file.Read(buffer, request);
    if (got > request || (got == 0 && !file.AtEof())) __builtin_trap();
    read.append(buffer, got);
  }
  if (read != broken) __builtin_trap();
  return 0;
}
