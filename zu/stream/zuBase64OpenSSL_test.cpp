// Base64 against OpenSSL's EVP codec, where the two follow the same rules,
// and the places where they deliberately differ.
#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <memory>
#include <random>
#include <string>

#include "zu/core/zuException.h"
#include "zu/stream/zuBase64.h"

namespace {

const unsigned char* bytesOf(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

std::string ours(const std::string& bytes, int lineBreaks) {
  return std::string(Base64Encode(bytes.data(), static_cast<unsigned>(bytes.size()), lineBreaks));
}

// Our decoding; "!" when it raises.
std::string ourDecode(const std::string& text) {
  std::string out(Base64DecodeLength(static_cast<unsigned>(text.size())), '\0');
  unsigned length = 0;
  try {
    Base64Decode(out.data(), length, text.data(), static_cast<unsigned>(text.size()));
  } catch (const zuExFull&) {
    return "!";
  }
  out.resize(length);
  return out;
}

std::string encodeBlock(const std::string& bytes) {
  std::string out(4 * (bytes.size() / 3 + 1) + 1, '\0');
  const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(out.data()), bytesOf(bytes),
                                     static_cast<int>(bytes.size()));
  out.resize(length);
  return out;
}

// EVP_DecodeBlock, with the zero bytes that padding stands for removed; "!"
// on failure.
std::string decodeBlock(const std::string& text) {
  std::string out(text.size(), '\0');
  const int length = EVP_DecodeBlock(reinterpret_cast<unsigned char*>(out.data()), bytesOf(text),
                                     static_cast<int>(text.size()));
  if (length < 0) return "!";
  const std::size_t padding = text.size() - text.find_last_not_of('=') - 1;
  out.resize(length - padding);
  return out;
}

// EVP_DecodeUpdate and EVP_DecodeFinal; "!" on failure.
std::string decodeUpdate(const std::string& text) {
  std::unique_ptr<EVP_ENCODE_CTX, void (*)(EVP_ENCODE_CTX*)> context(EVP_ENCODE_CTX_new(),
                                                                     EVP_ENCODE_CTX_free);
  EVP_DecodeInit(context.get());
  std::string out(text.size() + 80, '\0');
  int length = 0;
  int last = 0;
  unsigned char* const start = reinterpret_cast<unsigned char*>(out.data());
  if (EVP_DecodeUpdate(context.get(), start, &length, bytesOf(text),
                       static_cast<int>(text.size())) < 0 ||
      EVP_DecodeFinal(context.get(), start + length, &last) < 0) {
    return "!";
  }
  out.resize(length + last);
  return out;
}

std::string withoutLineFeeds(std::string text) {
  std::erase(text, '\n');
  return text;
}

TEST(Base64OpenSSLTest, AgreesWhereTheRulesAgree) {
  std::mt19937 random(4648);
  std::string bytes;
  for (int n = 0; n <= 400; ++n) {
    const std::string canonical = encodeBlock(bytes);
    ASSERT_EQ(ours(bytes, 0), canonical) << n;
    ASSERT_EQ(withoutLineFeeds(ours(bytes, 1)), canonical) << n;
    ASSERT_EQ(decodeBlock(canonical), bytes) << n;
    ASSERT_EQ(ourDecode(canonical), bytes) << n;
    std::string crlf;
    for (std::size_t i = 0; i < canonical.size(); i += 64) crlf += canonical.substr(i, 64) + "\r\n";
    for (const std::string& broken : {ours(bytes, 1), crlf}) {
      ASSERT_EQ(decodeUpdate(broken), bytes) << n;
      ASSERT_EQ(ourDecode(broken), bytes) << n;
    }
    bytes += static_cast<char>(random());
  }
}

TEST(Base64OpenSSLTest, BothRefuseBadBytesInside) {
  const std::string text = "TWFuIGlzIGRpc3Rpbmd1aXNoZWQ=";
  int refused = 0;
  for (const char bad : {'*', '_', '.', '\x01', '\x7F', '\x80', '\xFF'}) {
    for (std::size_t at = 1; at + 1 < text.size(); ++at) {
      std::string broken = text;
      broken[at] = bad;
      EXPECT_EQ(ourDecode(broken), "!") << at;
      EXPECT_EQ(decodeBlock(broken), "!") << at;
      EXPECT_EQ(decodeUpdate(broken), "!") << at;
      ++refused;
    }
  }
  EXPECT_EQ(refused, 7 * 26);
}

TEST(Base64OpenSSLTest, WhereTheRulesDiffer) {
  struct Case {
    const char* text;
    const char* ours;
    const char* block;
    const char* update;
  };
  const Case cases[] = {
      // "=" ends our data; EVP_DecodeBlock reads it as zero bits, and
      // EVP_DecodeUpdate refuses data after it.
      {"TQ=u", "M", nullptr, "!"},
      // White space inside: skipped by us and by EVP_DecodeUpdate.
      {"TW Fu", "Man", "!", "Man"},
      // An unpadded tail: ours reads it; both EVP forms refuse it.
      {"TWE", "Ma", "!", "!"},
      // Non-zero bits left over: we refuse them, OpenSSL drops them.
      {"TWF=", "!", "Ma", "Ma"},
      {"TW==", "!", "M", "M"},
      // "-" between groups: EVP_DecodeUpdate takes it for the end of the data.
      {"TWFu-TWFu", "!", "!", "Man"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ourDecode(c.text), c.ours) << c.text;
    EXPECT_EQ(decodeUpdate(c.text), c.update) << c.text;
    if (c.block != nullptr) {
      EXPECT_EQ(decodeBlock(c.text), c.block) << c.text;
    }
  }
  // The block decoder's view of "TQ=u": three bytes, the middle "=" as zero.
  std::string out(4, '\0');
  EXPECT_EQ(EVP_DecodeBlock(reinterpret_cast<unsigned char*>(out.data()), bytesOf("TQ=u"), 4), 3);
  EXPECT_EQ(out.substr(0, 3), std::string("M\0\x2E", 3));
}

}  // namespace
