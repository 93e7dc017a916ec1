#include "zu/stream/zuBase64.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/stream/internal/zuBase64Simd.h"
#include "zu/stream/internal/zuStreamAllocation.h"
#include "zu/testing/zuRandomBytes.h"
#include "zu/testing/zuTestText.h"

namespace {

using zu::testing::randomBytes;
using zu::testing::str;
using Decoder = std::function<void(char* out, unsigned& length)>;

// The reference: OpenSSL's EVP_EncodeBlock, broken into lines by the
// library's rule (a line feed after each 76 characters but the last).
std::string referenceEncode(std::string bytes, int lineBreaks) {
  std::string plain(4 * (bytes.size() / 3 + 1) + 1, '\0');
  plain.resize(EVP_EncodeBlock(reinterpret_cast<unsigned char*>(plain.data()),
                               reinterpret_cast<unsigned char*>(bytes.data()),
                               static_cast<int>(bytes.size())));
  if (!lineBreaks) return plain;
  std::string broken;
  for (std::size_t i = 0; i < plain.size(); i += 76) {
    broken += (i > 0 ? "\n" : "") + plain.substr(i, 76);
  }
  return broken;
}

// Every encoder on `bytes`, each into a block of exactly Base64EncodeLength
// units and two guard units (a NUL is written only for an empty result);
// each must agree with the `char` one, whose text is returned.
std::string encodeEveryWay(const std::string& bytes, int lineBreaks) {
  const unsigned n = static_cast<unsigned>(bytes.size());
  const unsigned length = Base64EncodeLength(n, lineBreaks);
  std::string chars(length + 2, '#');
  std::vector<signed char> signedChars(length + 2, '#');
  std::u16string wide(length + 2, u'#');
  Base64Encode(chars.data(), bytes.data(), n, lineBreaks);
  Base64Encode(signedChars.data(), bytes.data(), n, lineBreaks);
  Base64Encode(wide.data(), bytes.data(), n, lineBreaks);
  EXPECT_EQ(chars.substr(length), n == 0 ? std::string("\0#", 2) : "##") << "past the length";
  EXPECT_EQ(std::string(signedChars.begin(), signedChars.end()), chars);
  EXPECT_EQ(wide, std::u16string(chars.begin(), chars.end()));
  chars.resize(length);
  EXPECT_EQ(str(Base64Encode(bytes.data(), n, lineBreaks)), chars);
  return chars;
}

// Runs one decoder on a text of `n` characters into Base64DecodeLength(n)
// bytes followed by guard bytes; "!" when it raises 16777.
std::string decodeWith(const Decoder& decode, unsigned n) {
  std::string out(Base64DecodeLength(n) + 8, '#');
  unsigned length = 99;
  try {
    decode(out.data(), length);
  } catch (const zuExFull& error) {
    EXPECT_TRUE(error.HasResId(zuMessageIds::kInvalidBase64));
    EXPECT_EQ(length, 0u);
    return "!";
  }
  EXPECT_EQ(out.substr(Base64DecodeLength(n)), "########") << "written past the bound";
  out.resize(length);
  return out;
}

std::string decodeChars(const std::string& text, int* remainder = nullptr) {
  const unsigned n = static_cast<unsigned>(text.size());
  return decodeWith(
      [&](char* out, unsigned& length) { Base64Decode(out, length, text.data(), n, remainder); },
      n);
}

// Every decoding overload on one text; each must agree with the `char` one.
std::string decodeEveryWay(const std::string& text) {
  const unsigned n = static_cast<unsigned>(text.size());
  const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
  const std::u16string wide(text.begin(), text.end());
  const zuString string = zuString::FromBytes(text.data(), n);
  const Decoder others[] = {
      [&](char* out, unsigned& length) { Base64Decode(out, length, bytes, n); },
      [&](char* out, unsigned& length) {
        Base64Decode(out, length, reinterpret_cast<const signed char*>(bytes), n);
      },
      [&](char* out, unsigned& length) { Base64Decode(out, length, wide.data(), n); },
      [&](char* out, unsigned& length) { Base64Decode(out, length, string); },
      [&](char* out, unsigned& length) {
        const std::unique_ptr<char[]> block(Base64Decode(length, string));
        std::memcpy(out, block.get(), length);
      }};
  const std::string expected = decodeChars(text);
  for (const Decoder& decode : others) EXPECT_EQ(decodeWith(decode, n), expected) << text;
  return expected;
}

TEST(Base64Test, LengthsAreComputedIn64Bits) {
  // Small lengths are checked exactly by every encoding and decoding here,
  // each made into a block of the size they give.
  EXPECT_EQ(Base64EncodeLength(3221225469u, 0), 4294967292u);
  EXPECT_EQ(Base64EncodeLength(3221225472u, 0), 4294967295u);  // saturated
  EXPECT_EQ(Base64DecodeLength(4294967295u), 3221225472u);
}

TEST(Base64Test, RfcVectorsThroughEveryOverload) {
  // The walks below compare every length with a reference; these document.
  const char* const vectors[][2] = {{"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}};
  for (const auto& [plain, encoded] : vectors) {
    EXPECT_EQ(encodeEveryWay(plain, 1), encoded);
    EXPECT_EQ(decodeEveryWay(encoded), plain);
  }
  char empty = '#';
  Base64Encode(&empty, nullptr, 5, 0);
  EXPECT_EQ(empty, '\0') << "a null input is empty";
  EXPECT_EQ(str(Base64Encode(nullptr, 5, 0)), "");
}

TEST(Base64Test, DecodingEdgeCases) {
  // "!" raises 16777; bytes outside the alphabet have a test of their own.
  // White space inside and bytes after "=" are walked below.
  const char* const cases[][2] = {{"TWF=", "!"},   {"TQ=u", "M"},      {"TWF", "!"},
                                  {"TW==", "!"},   {"TWE", "Ma"},      {"A", ""},
                                  {" \t\r\n", ""}, {"TWFu====", "Man"}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(decodeEveryWay(text), expected) << text;
  // A unit outside one byte is outside the alphabet, whatever its low byte
  // (negative signed chars come in the walk over every byte below).
  const char16_t wide[] = {u'T', u'W', static_cast<char16_t>(0x0146), u'u'};
  const char* const null = nullptr;  // a null input is empty
  EXPECT_EQ(decodeWith([&](char* out, unsigned& n) { Base64Decode(out, n, wide, 4); }, 4), "!");
  EXPECT_EQ(decodeWith([&](char* out, unsigned& n) { Base64Decode(out, n, null, 4); }, 4), "");
}

TEST(Base64Test, StreamedDecodingLeavesTheTailOfAnIncompleteGroup) {
  const struct {
    const char* text;
    const char* expected;
    int remainder;
  } cases[] = {
      // every chunking of broken texts is walked below
      {"TWFuTW", "Man", 2},     {"TWFu\r\nTW", "Man", 4},     {"TWFuTW=", "Man", 3},
      {"TWFuTWE=", "ManMa", 0}, {"TWFu\n\n\n\n\n", "Man", 0},
  };
  for (const auto& c : cases) {
    int remainder = -1;
    EXPECT_EQ(decodeChars(c.text, &remainder), c.expected) << c.text;
    EXPECT_EQ(remainder, c.remainder) << c.text;
  }
}

// The walks run once scalar and once with the AVX2 blocks (where the
// processor has them).
class Base64WalkTest : public ::testing::TestWithParam<bool> {
 protected:
  void SetUp() override { previous_ = zu::internal::setBase64Simd(GetParam()); }
  void TearDown() override { zu::internal::setBase64Simd(previous_); }

 private:
  bool previous_ = true;
};

INSTANTIATE_TEST_SUITE_P(Walks, Base64WalkTest, ::testing::Values(false, true),
                         [](const auto& walk) { return walk.param ? "Simd" : "Scalar"; });

// Every length to 1,024; from 512 bytes on, the 256 byte values in a run
// that starts at n % 256, so that each value comes at every offset.
TEST_P(Base64WalkTest, EveryLengthAndEveryByteAtEveryOffsetRoundTrip) {
  const std::string all = randomBytes(1024, 20);
  for (unsigned n = 0; n <= 1024; ++n) {
    std::string bytes = all.substr(0, n);
    for (unsigned v = 0; n >= 512 && v < 256; ++v) bytes[n % 256 + v] = static_cast<char>(v);
    for (const int lineBreaks : {0, 1}) {
      const std::string encoded = encodeEveryWay(bytes, lineBreaks);
      ASSERT_EQ(encoded, referenceEncode(bytes, lineBreaks)) << n;
      ASSERT_EQ(decodeEveryWay(encoded), bytes) << n;
    }
  }
}

TEST(Base64Test, EncodePartWindowsGiveTheWholeEncoding) {
  const std::string bytes = randomBytes(700, 7);
  for (const int lineBreaks : {0, 1}) {
    const std::string whole = referenceEncode(bytes, lineBreaks);
    for (unsigned window = 1; window <= 254; ++window) {
      // Parts of a multiple of 3 bytes into a window of `window` characters.
      std::string text;
      long bits = 0, charCount = 0;
      const unsigned part = (window / 3 + 1) * 3;
      for (unsigned start = 0; start < bytes.size(); start += part) {
        const unsigned length = std::min<unsigned>(part, bytes.size() - start);
        std::vector<char> out(window + 2, '#'), spill(2 * part + 8, '#');
        unsigned spillLen = 99;
        long outEnd = -1;
        Base64EncodePart(out.data(), bytes.data() + start, spill.data(), spillLen, 1, bits,
                         charCount, outEnd, window, length, start + length == bytes.size(),
                         lineBreaks);
        ASSERT_GE(outEnd, 1);
        ASSERT_LE(outEnd, long(window) + 1);
        ASSERT_EQ(out[window + 1], '#') << "written past the window";
        text.append(out.data() + 1, outEnd - 1).append(spill.data(), spillLen);
      }
      ASSERT_EQ(text, whole) << window;
    }
  }
  char out[2] = {'#', '#'};  // no input: a NUL at outPos, not counted
  unsigned spillLen = 5;
  long bits = 0, charCount = 0, outEnd = -1;
  Base64EncodePart(out, "", nullptr, spillLen, 1, bits, charCount, outEnd, 1, 0, 1, 1);
  EXPECT_TRUE(out[1] == '\0' && outEnd == 1 && spillLen == 0u);
}

// Decodes `text` fed in pieces of `chunk` characters, the remainder put in
// front of the next piece and the last tail decoded whole.
std::string decodeStreamed(const std::string& text, std::size_t chunk) {
  std::string result, pending;
  for (std::size_t start = 0; start < text.size(); start += chunk) {
    pending += text.substr(start, chunk);
    int remainder = -1;
    result += decodeChars(pending, &remainder);
    const bool ended = remainder == 0 && pending.find('=') != std::string::npos;
    pending.erase(0, pending.size() - remainder);
    if (ended) return result;
  }
  return result + decodeChars(pending);
}

TEST_P(Base64WalkTest, StreamedDecodingOfBrokenTextInEveryChunkSize) {
  const std::string bytes = randomBytes(500, 3);
  const std::string plain = referenceEncode(bytes, 0);
  std::string crlf, spaced;
  for (std::size_t i = 0; i < plain.size(); i += 64) crlf += plain.substr(i, 64) + "\r\n";
  for (std::size_t i = 0; i < plain.size(); i += 3) spaced += plain.substr(i, 3) + " ";
  for (const std::string& text : {referenceEncode(bytes, 1), crlf, spaced}) {
    for (std::size_t chunk = 1; chunk <= 254; ++chunk) {
      ASSERT_EQ(decodeStreamed(text, chunk), bytes) << chunk;
    }
  }
}

TEST_P(Base64WalkTest, EveryByteOutsideTheAlphabetRaisesAtEveryPosition) {
  // Long enough for the AVX2 blocks, then white space of each kind.
  const std::string bytes = randomBytes(95, 95);
  const std::string valid =
      referenceEncode(bytes.substr(0, 90), 0) + " \r\n\t" + referenceEncode(bytes.substr(90), 0);
  const std::string allowed =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/= \t\r\n";
  const std::size_t end = valid.find('=');
  int raised = 0;
  for (int byte = 0; byte < 256; ++byte) {
    if (allowed.find(static_cast<char>(byte)) != std::string::npos) continue;
    for (std::size_t at = 0; at <= end; ++at) {
      std::string text = valid;
      text.insert(at, 1, static_cast<char>(byte));
      ASSERT_EQ(decodeEveryWay(text), "!") << byte << " at " << at;
      ++raised;
    }
    ASSERT_EQ(decodeEveryWay(valid + static_cast<char>(byte)), bytes) << "ignored after \"=\"";
  }
  EXPECT_EQ(raised, (256 - 69) * static_cast<int>(end + 1));
}

// The allocating overload's results and failures are compared in
// decodeEveryWay; here its remainder and an allocation that fails.
TEST(Base64Test, AllocatingDecodeOwnsItsBlock) {
  unsigned length = 9;
  int remainder = -1;
  const std::unique_ptr<char[]> part(Base64Decode(length, zuString("TWFuTW"), &remainder));
  EXPECT_EQ(std::string(part.get(), length), "Man");
  EXPECT_EQ(remainder, 2);
  zu::internal::failStreamAllocationAfter(0);
  EXPECT_THROW(Base64Decode(length, zuString("TWFu")), zuExMemory);
  zu::internal::failStreamAllocationAfter(-1);
}

}  // namespace
