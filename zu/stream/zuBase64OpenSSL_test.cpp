// Base64 against OpenSSL's EVP codec, where the two follow the same rules,
// and the places where they deliberately differ.
#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <memory>
#include <string>

#include "zu/core/zuException.h"
#include "zu/stream/zuBase64.h"
#include "zu/testing/zuRandomBytes.h"

namespace {

unsigned char* bytesOf(std::string& text) {
  return reinterpret_cast<unsigned char*>(text.data());
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
  return out.substr(0, length);
}

std::string encodeBlock(std::string bytes) {
  std::string out(4 * (bytes.size() / 3 + 1) + 1, '\0');
  out.resize(EVP_EncodeBlock(bytesOf(out), bytesOf(bytes), static_cast<int>(bytes.size())));
  return out;
}

// EVP_DecodeBlock, with the zero bytes that padding stands for removed; "!"
// on failure.
std::string decodeBlock(std::string text) {
  std::string out(text.size(), '\0');
  const int length = EVP_DecodeBlock(bytesOf(out), bytesOf(text), static_cast<int>(text.size()));
  if (length < 0) return "!";
  return out.substr(0, length - (text.size() - text.find_last_not_of('=') - 1));
}

// EVP_DecodeUpdate and EVP_DecodeFinal; "!" on failure.
std::string decodeUpdate(std::string text) {
  std::unique_ptr<EVP_ENCODE_CTX, void (*)(EVP_ENCODE_CTX*)> context(EVP_ENCODE_CTX_new(),
                                                                     EVP_ENCODE_CTX_free);
  EVP_DecodeInit(context.get());
  std::string out(text.size() + 80, '\0');
  int length = 0, last = 0;
  if (EVP_DecodeUpdate(context.get(), bytesOf(out), &length, bytesOf(text),
                       static_cast<int>(text.size())) < 0 ||
      EVP_DecodeFinal(context.get(), bytesOf(out) + length, &last) < 0) {
    return "!";
  }
  return out.substr(0, length + last);
}

TEST(Base64OpenSSLTest, AgreesWhereTheRulesAgree) {
  const std::string all = zu::testing::randomBytes(400, 4648);
  for (unsigned n = 0; n <= 400; ++n) {
    const std::string bytes = all.substr(0, n);
    const std::string canonical = encodeBlock(bytes);
    std::string broken(Base64Encode(bytes.data(), n, 1)), crlf;
    for (std::size_t i = 0; i < canonical.size(); i += 64) crlf += canonical.substr(i, 64) + "\r\n";
    for (const std::string& text : {broken, crlf}) {
      ASSERT_EQ(decodeUpdate(text), bytes) << n;
      ASSERT_EQ(ourDecode(text), bytes) << n;
    }
    ASSERT_EQ(std::string(Base64Encode(bytes.data(), n, 0)), canonical) << n;
    std::erase(broken, '\n');
    ASSERT_EQ(broken, canonical) << n;
    ASSERT_EQ(decodeBlock(canonical), bytes) << n;
    ASSERT_EQ(ourDecode(canonical), bytes) << n;
  }
}

TEST(Base64OpenSSLTest, WhereTheRulesDiffer) {
  const struct {
    const char* text;
    std::string ours, block, update;
  } cases[] = {
      // "=" ends our data; EVP_DecodeBlock reads it as zero bits, and
      // EVP_DecodeUpdate refuses data after it.
      {"TQ=u", "M", std::string("M\0\x2E", 3), "!"},
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
  for (const auto& c : cases) {
    EXPECT_EQ(ourDecode(c.text), c.ours) << c.text;
    EXPECT_EQ(decodeBlock(c.text), c.block) << c.text;
    EXPECT_EQ(decodeUpdate(c.text), c.update) << c.text;
  }
}

}  // namespace
