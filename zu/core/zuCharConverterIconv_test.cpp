// Differential tests: our converters against the C library's iconv.
//
// For each encoding, the repertoire is every sampled code point that iconv
// encodes and decodes back unchanged. Each character alone, then random and
// edge-case texts, must give the same bytes both ways. Where the tables of
// the two implementations legitimately differ (ICU's tables follow IBM's and
// Microsoft's mappings, glibc's follow the national standards), the
// characters are listed below with the reason and left out of the texts.
#include <gtest/gtest.h>
#include <iconv.h>

#include <cerrno>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "zu/core/zuGxCharConverter.h"

namespace {

struct Encoding {
  const char* ours;
  const char* iconvName;
  // Code points whose mapping differs between the two table versions.
  std::set<unsigned int> tableDifferences;
  // Stateful encoders may pick other (equally valid) escapes or base64
  // runs: then only decoding must agree, and our bytes must decode to the
  // same text.
  bool encoderMayDiffer = false;
};

std::vector<Encoding> encodings() {
  return {
      {"Shift_JIS", "SHIFT_JIS", {}},
      {"KSC_5601", "EUC-KR", {}},
      {"Big5", "BIG5", {}},
      {"GBK", "GBK", {}},
      {"GB18030", "GB18030", {}},
      {"windows-1250", "CP1250", {}},
      {"windows-1251", "CP1251", {}},
      {"windows-1252", "CP1252", {}},
      {"windows-1253", "CP1253", {}},
      {"windows-1254", "CP1254", {}},
      {"windows-1255", "CP1255", {}},
      {"windows-1256", "CP1256", {}},
      {"windows-1257", "CP1257", {}},
      {"windows-1258", "CP1258", {}},
      {"ISO-8859-1", "ISO-8859-1", {}},
      {"ISO-8859-2", "ISO-8859-2", {}},
      {"ISO-8859-3", "ISO-8859-3", {}},
      {"ISO-8859-4", "ISO-8859-4", {}},
      {"ISO-8859-5", "ISO-8859-5", {}},
      {"ISO-8859-6", "ISO-8859-6", {}},
      {"ISO-8859-7", "ISO-8859-7", {}},
      {"ISO-8859-8", "ISO-8859-8", {}},
      {"ISO-8859-9", "ISO-8859-9", {}},
      {"ISO-8859-13", "ISO-8859-13", {}},
      {"ISO-8859-15", "ISO-8859-15", {}},
      {"ISO-2022-JP", "ISO-2022-JP", {}, true},
      {"UTF-7", "UTF-7", {}, true},
  };
}

// One iconv direction; an empty optional-like flag reports failure.
class Iconv {
 public:
  Iconv(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Iconv() {
    if (ok()) iconv_close(handle_);
  }
  Iconv(const Iconv&) = delete;
  Iconv& operator=(const Iconv&) = delete;
  bool ok() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  bool run(const std::string& in, std::string& out) {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    out.assign(in.size() * 8 + 16, '\0');
    char* inPtr = const_cast<char*>(in.data());
    size_t inLeft = in.size();
    char* outPtr = out.data();
    size_t outLeft = out.size();
    if (iconv(handle_, &inPtr, &inLeft, &outPtr, &outLeft) == static_cast<size_t>(-1)) return false;
    if (iconv(handle_, nullptr, nullptr, &outPtr, &outLeft) == static_cast<size_t>(-1)) return false;
    out.resize(out.size() - outLeft);
    return true;
  }

 private:
  iconv_t handle_;
};

std::string utf8Of(const std::vector<unsigned int>& codePoints) {
  std::string text;
  for (unsigned int cp : codePoints) {
    char bytes[4];
    text.append(bytes, static_cast<size_t>(zuUCStoUTF8(bytes, cp)));
  }
  return text;
}

std::string ours(const zuCharConverter& to, const zuCharConverter& from, const std::string& in) {
  std::string out(in.size() * 6 + 8, '\0');
  const unsigned int written = to.Convert(out.data(), static_cast<unsigned int>(out.size()), &from,
                                          in.data(), static_cast<unsigned int>(in.size()));
  out.resize(written);
  return out;
}

std::vector<unsigned int> candidates() {
  std::vector<unsigned int> codePoints;
  for (unsigned int cp = 1; cp < 0x3000; ++cp) codePoints.push_back(cp);
  for (unsigned int cp = 0x3000; cp < 0xD800; cp += 3) codePoints.push_back(cp);
  for (unsigned int cp = 0xE000; cp < 0x10000; cp += 2) codePoints.push_back(cp);
  for (unsigned int cp = 0x10000; cp < 0x30000; cp += 0x35) codePoints.push_back(cp);
  return codePoints;
}

class IconvDifferentialTest : public ::testing::TestWithParam<Encoding> {};

TEST_P(IconvDifferentialTest, SameBytesBothWays) {
  const Encoding& encoding = GetParam();
  Iconv encode(encoding.iconvName, "UTF-8");
  Iconv decode("UTF-8", encoding.iconvName);
  if (!encode.ok() || !decode.ok()) {
    GTEST_SKIP() << "iconv has no " << encoding.iconvName;
  }
  const zuGxCharConverter legacy(encoding.ours);
  const zuCharConverter& utf8 = *zuCharConverter::UTF8();
  ASSERT_NE(legacy.CodePageNum(), 0) << encoding.ours;

  // Each character alone: the repertoire, and every disagreement.
  std::vector<unsigned int> repertoire;
  std::map<unsigned int, std::string> differences;
  std::string theirs;
  std::string back;
  for (unsigned int cp : candidates()) {
    const std::string text = utf8Of({cp});
    if (!encode.run(text, theirs) || !decode.run(theirs, back) || back != text) continue;
    const std::string mine = ours(legacy, utf8, text);
    const std::string mineBack = ours(utf8, legacy, theirs);
    const bool same = encoding.encoderMayDiffer ? mineBack == text : mine == theirs && mineBack == text;
    if (same) {
      repertoire.push_back(cp);
    } else if (!encoding.tableDifferences.contains(cp)) {
      differences[cp] = mine;
    }
  }
  EXPECT_GT(repertoire.size(), 90u);
  EXPECT_LE(differences.size(), 0u) << encoding.ours << ": " << differences.size()
                                    << " differences, first U+" << std::hex
                                    << (differences.empty() ? 0 : differences.begin()->first);

  // Texts: empty, the repertoire's ends, and random mixes.
  std::vector<std::vector<unsigned int>> texts = {{}};
  texts.emplace_back(repertoire.begin(), repertoire.begin() + 40);
  texts.emplace_back(repertoire.end() - 40, repertoire.end());
  std::mt19937 random(20261122);
  std::uniform_int_distribution<size_t> pick(0, repertoire.size() - 1);
  std::uniform_int_distribution<int> length(1, 60);
  for (int i = 0; i < 200; ++i) {
    std::vector<unsigned int> text(static_cast<size_t>(length(random)));
    for (unsigned int& cp : text) cp = repertoire[pick(random)];
    texts.push_back(text);
  }
  for (const auto& codePoints : texts) {
    const std::string text = utf8Of(codePoints);
    ASSERT_TRUE(encode.run(text, theirs));
    const std::string mine = ours(legacy, utf8, text);
    if (!encoding.encoderMayDiffer) {
      EXPECT_EQ(mine, theirs) << encoding.ours << " encoding " << text;
    }
    ASSERT_TRUE(decode.run(mine, back));
    EXPECT_EQ(back, text) << encoding.ours;
    EXPECT_EQ(ours(utf8, legacy, theirs), text) << encoding.ours << " decoding";
  }
}

INSTANTIATE_TEST_SUITE_P(Encodings, IconvDifferentialTest, ::testing::ValuesIn(encodings()),
                         [](const ::testing::TestParamInfo<Encoding>& info) {
                           std::string name;
                           for (const char* c = info.param.ours; *c != '\0'; ++c) {
                             if (std::isalnum(static_cast<unsigned char>(*c))) name += *c;
                           }
                           return name;
                         });

}  // namespace
