#include "zu/stream/zuBase64.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/stream/internal/zuBase64Simd.h"
#include "zu/stream/internal/zuStreamAllocation.h"
#include "zu/testing/zuTestText.h"

namespace {

// zu/testing's str() has not landed on this branch yet.
std::string str(const zuString& text) {
  return std::string(text, text.Length());
}

// An encoder written from RFC 4648 alone, with the library's line rule.
std::string referenceEncode(const std::string& bytes, bool lineBreaks) {
  static const char kAlphabet[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string plain;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    unsigned value = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      value = value << 8 | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      plain += k <= count ? kAlphabet[(value >> (18 - 6 * k)) & 63] : '=';
    }
  }
  if (!lineBreaks) return plain;
  std::string broken;
  for (std::size_t i = 0; i < plain.size(); i += 76) {
    if (i > 0) broken += '\n';
    broken += plain.substr(i, 76);
  }
  return broken;
}

std::string encodeChars(const std::string& bytes, bool lineBreaks) {
  std::string out(Base64EncodeLength(static_cast<unsigned>(bytes.size()), lineBreaks) + 1, '#');
  Base64Encode(out.data(), bytes.data(), static_cast<unsigned>(bytes.size()), lineBreaks);
  out.pop_back();
  return out;
}

// Decodes with the `char` overload; "!" when it raises 16777.
std::string decodeChars(const std::string& text, int* remainder = nullptr) {
  std::string out(Base64DecodeLength(static_cast<unsigned>(text.size())), '\0');
  unsigned length = 99;
  try {
    Base64Decode(out.data(), length, text.data(), static_cast<unsigned>(text.size()), remainder);
  } catch (const zuExFull& error) {
    EXPECT_TRUE(error.HasResId(zuMessageIds::kInvalidBase64));
    EXPECT_EQ(length, 0u);
    return "!";
  }
  out.resize(length);
  return out;
}

// Every decoding overload on one text; each must agree with the `char` one.
std::string decodeEveryWay(const std::string& text) {
  const std::string expected = decodeChars(text);
  const unsigned n = static_cast<unsigned>(text.size());
  std::vector<std::string> results;
  const auto attempt = [&](auto&& decode) {
    std::string out(Base64DecodeLength(n), '\0');
    unsigned length = 0;
    try {
      decode(out.data(), length);
    } catch (const zuExFull& error) {
      EXPECT_TRUE(error.HasResId(zuMessageIds::kInvalidBase64));
      results.push_back("!");
      return;
    }
    out.resize(length);
    results.push_back(out);
  };
  const std::u16string wide(text.begin(), text.end());
  const zuString string = zuString::FromBytes(text.data(), n);
  attempt([&](char* out, unsigned& length) {
    Base64Decode(out, length, reinterpret_cast<const unsigned char*>(text.data()), n);
  });
  attempt([&](char* out, unsigned& length) {
    Base64Decode(out, length, reinterpret_cast<const signed char*>(text.data()), n);
  });
  attempt([&](char* out, unsigned& length) { Base64Decode(out, length, wide.data(), n); });
  attempt([&](char* out, unsigned& length) { Base64Decode(out, length, string); });
  attempt([&](char* out, unsigned& length) {
    char* block = Base64Decode(length, string);
    std::memcpy(out, block, length);
    delete[] block;
  });
  for (const std::string& result : results) EXPECT_EQ(result, expected) << text;
  return expected;
}

TEST(Base64Test, LengthsAreComputedIn64Bits) {
  struct Case {
    unsigned n;
    int lineBreaks;
    unsigned expected;
  };
  const Case encodeCases[] = {
      {0, 1, 0},
      {1, 0, 4},
      {3, 0, 4},
      {4, 0, 8},
      {57, 1, 76},
      {58, 1, 81},
      {114, 1, 153},
      {115, 1, 158},
      {3221225469u, 0, 4294967292u},
      {3221225472u, 0, 4294967295u},
      {4294967295u, 1, 4294967295u},
  };
  for (const Case& c : encodeCases) {
    EXPECT_EQ(Base64EncodeLength(c.n, c.lineBreaks), c.expected) << c.n;
  }
  const Case decodeCases[] = {
      {0, 0, 0}, {1, 0, 3}, {4, 0, 3}, {5, 0, 6}, {4294967295u, 0, 3221225472u}};
  for (const Case& c : decodeCases) EXPECT_EQ(Base64DecodeLength(c.n), c.expected) << c.n;
}

TEST(Base64Test, RfcVectorsThroughEveryEncoder) {
  const char* const vectors[][2] = {{"", ""},
                                    {"f", "Zg=="},
                                    {"fo", "Zm8="},
                                    {"foo", "Zm9v"},
                                    {"foob", "Zm9vYg=="},
                                    {"fooba", "Zm9vYmE="},
                                    {"foobar", "Zm9vYmFy"}};
  for (const auto& [plain, encoded] : vectors) {
    const unsigned n = static_cast<unsigned>(std::strlen(plain));
    const std::string expected = encoded;
    char chars[16];
    signed char signedChars[16];
    char16_t wide[16];
    std::memset(chars, '#', sizeof chars);
    Base64Encode(chars, plain, n, 0);
    Base64Encode(signedChars, plain, n, 1);
    Base64Encode(wide, plain, n, 0);
    const std::size_t length = expected.size();
    EXPECT_EQ(std::string(chars, length), expected);
    EXPECT_EQ(chars[length], n == 0 ? '\0' : '#') << "a NUL only for an empty result";
    EXPECT_EQ(std::string(reinterpret_cast<char*>(signedChars), length), expected);
    EXPECT_EQ(std::u16string(wide, length), std::u16string(expected.begin(), expected.end()));
    EXPECT_EQ(str(Base64Encode(plain, n, 1)), expected);
    EXPECT_EQ(decodeEveryWay(expected), plain);
  }
  char empty = '#';
  Base64Encode(&empty, nullptr, 5, 0);
  EXPECT_EQ(empty, '\0') << "a null input is empty";
  EXPECT_EQ(str(Base64Encode(nullptr, 5, 0)), "");
}

TEST(Base64Test, DecodingEdgeCases) {
  struct Case {
    const char* text;
    const char* expected;
  };  // "!" raises 16777
  const Case cases[] = {
      {"TWFu", "Man"},   {"TWE=", "Ma"},      {"TW\r\nFu", "Man"},
      {"TQ=u", "M"},     {"TWF", "!"},        {"TW==", "!"},
      {"QQ", "A"},       {"TWE", "Ma"},       {"A", ""},
      {"Q", "!"},        {" \t\r\n", ""},     {"TWFu=\x01garbage", "Man"},
      {"TWFu\x01", "!"}, {"TW-u", "!"},       {"TW Fu TWE=", "ManMa"},
      {"=", ""},         {"TWFu====", "Man"}, {"\xC3\xA9", "!"},
  };
  for (const Case& c : cases) EXPECT_EQ(decodeEveryWay(c.text), c.expected) << c.text;
  // Units outside one byte and negative signed chars are outside the alphabet.
  const char16_t wide[] = {u'T', u'W', static_cast<char16_t>(0x0146), u'u'};
  const signed char negative[] = {'T', 'W', -58, 'u'};
  char out[3];
  unsigned length = 7;
  EXPECT_THROW(Base64Decode(out, length, wide, 4), zuExFull);
  EXPECT_EQ(length, 0u);
  EXPECT_THROW(Base64Decode(out, length, negative, 4), zuExFull);
  EXPECT_NO_THROW(Base64Decode(out, length, static_cast<const char*>(nullptr), 4));
  EXPECT_EQ(length, 0u);
}

TEST(Base64Test, StreamedDecodingLeavesTheTailOfAnIncompleteGroup) {
  struct Case {
    const char* text;
    const char* expected;
    int remainder;
  };
  const Case cases[] = {
      {"TWFuTW", "Man", 2},           {"TWFu", "Man", 0},        {"TW", "", 2},
      {"TWFuTWE=", "ManMa", 0},       {"TWFuTWFu", "ManMan", 0}, {"TWFu\r\nTW", "Man", 4},
      {"TWFuTWE\n", "Man", 4},        {"TWFu\r\n", "Man", 2},    {"TWFu\n\n\n\n\n", "Man", 0},
      {"TWFuTW\n=", "Man", 4},        {"TQ=u", "M", 0},          {"TWFu\r\nBBB", "Man", 5},
      {"TWFu\r\nTWFuT", "ManMan", 1}, {"TWFuTW=", "Man", 3},     {"TWFu\r\n\n", "Man", 3},
  };
  for (const Case& c : cases) {
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

TEST_P(Base64WalkTest, EveryLengthRoundTripsInBothLineModes) {
  std::mt19937 random(20);
  std::string bytes;
  for (unsigned n = 0; n <= 1024; ++n) {
    for (const bool lineBreaks : {false, true}) {
      const std::string encoded = encodeChars(bytes, lineBreaks);
      ASSERT_EQ(encoded, referenceEncode(bytes, lineBreaks)) << n;
      ASSERT_EQ(str(Base64Encode(bytes.data(), n, lineBreaks)), encoded) << n;
      ASSERT_EQ(decodeChars(encoded), bytes) << n;
    }
    bytes += static_cast<char>(random());
  }
}

TEST_P(Base64WalkTest, EveryByteValueAtEveryOffset) {
  std::string all;
  for (int value = 0; value < 256; ++value) all += static_cast<char>(value);
  for (unsigned filler = 0; filler <= 80; ++filler) {
    const std::string bytes = std::string(filler, 'x') + all;
    for (const bool lineBreaks : {false, true}) {
      const std::string expected = referenceEncode(bytes, lineBreaks);
      ASSERT_EQ(encodeChars(bytes, lineBreaks), expected) << filler;
      ASSERT_EQ(decodeEveryWay(expected), bytes) << filler;
    }
  }
}

TEST(Base64Test, EncodePartWindowsGiveTheWholeEncoding) {
  std::mt19937 random(7);
  std::string bytes(700, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  for (const int lineBreaks : {0, 1}) {
    const std::string whole = referenceEncode(bytes, lineBreaks != 0);
    for (unsigned window = 1; window <= 254; ++window) {
      // Parts of a multiple of 3 bytes into a window of `window` characters.
      std::string text;
      long bits = 0;
      long charCount = 0;
      const unsigned part = (window / 3 + 1) * 3;
      for (unsigned start = 0; start < bytes.size(); start += part) {
        const unsigned length = std::min<unsigned>(part, bytes.size() - start);
        std::vector<char> out(window + 2, '#');
        std::vector<char> spill(2 * part + 8, '#');
        unsigned spillLen = 99;
        long outEnd = -1;
        Base64EncodePart(out.data(), bytes.data() + start, spill.data(), spillLen, 1, bits,
                         charCount, outEnd, window, length, start + length == bytes.size(),
                         lineBreaks);
        ASSERT_GE(outEnd, 1);
        ASSERT_LE(outEnd, long(window) + 1);
        ASSERT_EQ(out[window + 1], '#') << "written past the window";
        text.append(out.data() + 1, outEnd - 1);
        text.append(spill.data(), spillLen);
      }
      ASSERT_EQ(text, whole) << window;
    }
  }
  char out[2] = {'#', '#'};
  unsigned spillLen = 5;
  long bits = 0, charCount = 0, outEnd = -1;
  Base64EncodePart(out, "", nullptr, spillLen, 1, bits, charCount, outEnd, 1, 0, 1, 1);
  EXPECT_EQ(out[1], '\0');
  EXPECT_EQ(outEnd, 1);
  EXPECT_EQ(spillLen, 0u);
}

// Decodes `text` fed in pieces of `chunk` characters, the remainder put in
// front of the next piece and the last tail decoded whole.
std::string decodeStreamed(const std::string& text, std::size_t chunk) {
  std::string result;
  std::string pending;
  for (std::size_t start = 0; start < text.size(); start += chunk) {
    pending += text.substr(start, chunk);
    std::string out(Base64DecodeLength(static_cast<unsigned>(pending.size())), '\0');
    unsigned length = 0;
    int remainder = -1;
    Base64Decode(out.data(), length, pending.data(), static_cast<unsigned>(pending.size()),
                 &remainder);
    result.append(out.data(), length);
    const bool ended = remainder == 0 && pending.find('=') != std::string::npos;
    pending.erase(0, pending.size() - remainder);
    if (ended) return result;
  }
  return result + decodeChars(pending);
}

TEST_P(Base64WalkTest, StreamedDecodingOfBrokenTextInEveryChunkSize) {
  std::mt19937 random(3);
  std::string bytes(500, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  const std::string plain = referenceEncode(bytes, false);
  std::string crlf, spaced;
  for (std::size_t i = 0; i < plain.size(); i += 64) crlf += plain.substr(i, 64) + "\r\n";
  for (std::size_t i = 0; i < plain.size(); i += 3) spaced += plain.substr(i, 3) + " ";
  const std::string texts[] = {referenceEncode(bytes, true), crlf, spaced};
  for (const std::string& text : texts) {
    for (std::size_t chunk = 1; chunk <= 254; ++chunk) {
      ASSERT_EQ(decodeStreamed(text, chunk), bytes) << chunk;
    }
  }
}

TEST_P(Base64WalkTest, EveryByteOutsideTheAlphabetRaisesAtEveryPosition) {
  // Long enough for the AVX2 blocks, then white space of each kind.
  const std::string bytes =
      "Man is distinguished, not only by his reason, but by this singular "
      "passion from other animals.";
  const std::string valid = referenceEncode(bytes.substr(0, 90), false) + " \r\n\t" +
                            referenceEncode(bytes.substr(90), false);
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
      ASSERT_THROW(decodeStreamed(text, 5), zuExFull) << byte << " at " << at;
      ++raised;
    }
    std::string after = valid;
    after.push_back(static_cast<char>(byte));
    ASSERT_EQ(decodeEveryWay(after), bytes) << "ignored after \"=\"";
  }
  EXPECT_EQ(raised, (256 - 69) * static_cast<int>(end + 1));
}

TEST(Base64Test, DecodersWriteNoFurtherThanTheBound) {
  for (const char* text : {"TWFu", "TWFuTWFuTWFu", "TWFuTWFuTWFuTQ==", "QUJD\nREVG\nR0g="}) {
    const unsigned n = static_cast<unsigned>(std::strlen(text));
    std::vector<char> out(Base64DecodeLength(n) + 8, '#');
    unsigned length = 0;
    Base64Decode(out.data(), length, text, n);
    for (std::size_t i = Base64DecodeLength(n); i < out.size(); ++i) {
      EXPECT_EQ(out[i], '#') << text;
    }
  }
}

TEST(Base64Test, AllocatingDecodeOwnsItsBlock) {
  unsigned length = 9;
  char* bytes = Base64Decode(length, zuString("TWFu\nTWE="));
  EXPECT_EQ(std::string(bytes, length), "ManMa");
  delete[] bytes;
  char* empty = Base64Decode(length, zuString());
  EXPECT_NE(empty, nullptr);
  EXPECT_EQ(length, 0u);
  delete[] empty;
  int remainder = -1;
  char* part = Base64Decode(length, zuString("TWFuTW"), &remainder);
  EXPECT_EQ(std::string(part, length), "Man");
  EXPECT_EQ(remainder, 2);
  delete[] part;
  EXPECT_THROW(Base64Decode(length, zuString("TW-u")), zuExFull);  // ASan: freed
  zu::internal::failStreamAllocationAfter(0);
  EXPECT_THROW(Base64Decode(length, zuString("TWFu")), zuExMemory);
  zu::internal::failStreamAllocationAfter(-1);
}

}  // namespace
