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
#include <unicode/uchar.h>

#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "zu/core/zuGxCharConverter.h"
#include "zu/testing/zuConverted.h"

namespace {

using zu::testing::converted;

struct Encoding {
  std::string ours, iconvName;
  // Code points whose mapping differs between the two table versions.
  std::set<unsigned int> tableDifferences;
  // Stateful encoders may pick other (equally valid) escapes or base64
  // runs: then only decoding must agree, and our bytes must decode to the
  // same text.
  bool encoderMayDiffer = false;
  // glibc writes precomposed letters of these pages as base letter plus
  // combining mark, and composes such pairs when reading; the ICU tables
  // hold only the single-byte characters. Such letters are differences,
  // and combining marks stay out of the texts.
  bool glibcComposes = false;
};

std::vector<Encoding> encodings() {
  // IBM's tables swap the controls 1A, 1C and 7F (the PC's display codes).
  const auto withIbmControls = [](std::set<unsigned int> codePoints) {
    codePoints.insert({0x1A, 0x1C, 0x7F});
    return codePoints;
  };
  // JIS X 0208 rows where Microsoft's mapping (ICU) and the standard's
  // (glibc) differ: cent, pound, not, double vertical line, minus.
  const std::set<unsigned int> jisVendorRows = {0xA2, 0xA3, 0xAC, 0x2016, 0x2212};
  std::set<unsigned int> shiftJis = withIbmControls(jisVendorRows);
  shiftJis.insert({0xA5, 0x203E});  // glibc reads 5C and 7E as yen and overline
  std::set<unsigned int> iso2022jp = jisVendorRows;
  iso2022jp.insert({0x0E, 0x0F});  // ICU refuses the shift controls SO and SI as text
  std::set<unsigned int> korean =
      withIbmControls({0xAD, 0xB7, 0x2015, 0x223C, 0x2299, 0xFF5E});  // KS X 1001 revisions
  for (unsigned int c1 = 0x80; c1 < 0xA0; ++c1) korean.insert(c1);    // glibc passes C1 controls
  std::vector<Encoding> result = {
      {"Shift_JIS", "SHIFT_JIS", shiftJis},
      {"KSC_5601", "EUC-KR", korean},
      {"Big5", "BIG5", withIbmControls({0x80})},  // glibc passes byte 80 through
      {"GBK", "GBK", withIbmControls({0x20AC})},  // the euro at 80 is newer than IBM's table
      // GB18030-2005 mapped these to private use; glibc follows the 2022 edition.
      {"GB18030", "GB18030", {0x9FB4, 0x9FB7, 0x9FBA, 0xFE10, 0xFE12, 0xFE14, 0xFE16, 0xFE18}},
      {"ISO-2022-JP", "ISO-2022-JP", iso2022jp, true},
      {"UTF-7", "UTF-7", {}, true},
  };
  // Arabic letters Microsoft added to 1256 after IBM's table was made;
  // spacing accents and the Latin-1 signs of Microsoft's later 1257.
  std::map<int, std::set<unsigned int>> windowsDifferences = {
      {1256, {0x679, 0x688, 0x691, 0x6A9, 0x6BA, 0x6BE, 0x6C1, 0x6D2}},
      {1257, {0xA8, 0xAF, 0xB4, 0xB8, 0x2C7, 0x2D9, 0x2DB}}};
  for (int page = 1250; page <= 1258; ++page) {
    result.push_back({"windows-" + std::to_string(page), "CP" + std::to_string(page),
                      windowsDifferences[page], false, page == 1255 || page == 1258});
  }
  for (int part : {1, 2, 3, 4, 5, 6, 7, 8, 9, 13, 15}) {
    const std::string name = "ISO-8859-" + std::to_string(part);
    result.push_back({name, name, {}});
  }
  return result;
}

// One iconv direction; null when iconv has no such pair.
using Iconv = std::unique_ptr<void, int (*)(iconv_t)>;

Iconv openIconv(const char* to, const char* from) {
  const iconv_t handle = iconv_open(to, from);
  return {handle == reinterpret_cast<iconv_t>(-1) ? nullptr : handle, &iconv_close};
}

// Converts all of `in` into `out` from the initial state; false on any error.
bool run(const Iconv& iconvPair, const std::string& in, std::string& out) {
  iconv(iconvPair.get(), nullptr, nullptr, nullptr, nullptr);
  out.assign(in.size() * 8 + 16, '\0');
  char* inPtr = const_cast<char*>(in.data());
  size_t inLeft = in.size();
  char* outPtr = out.data();
  size_t outLeft = out.size();
  if (iconv(iconvPair.get(), &inPtr, &inLeft, &outPtr, &outLeft) == static_cast<size_t>(-1) ||
      iconv(iconvPair.get(), nullptr, nullptr, &outPtr, &outLeft) == static_cast<size_t>(-1)) {
    return false;
  }
  out.resize(out.size() - outLeft);
  return true;
}

std::string utf8Of(const std::vector<unsigned int>& codePoints) {
  std::string text;
  for (unsigned int cp : codePoints) {
    char bytes[4];
    text.append(bytes, static_cast<size_t>(zuUCStoUTF8(bytes, cp)));
  }
  return text;
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
  const Iconv encode = openIconv(encoding.iconvName.c_str(), "UTF-8");
  const Iconv decode = openIconv("UTF-8", encoding.iconvName.c_str());
  ASSERT_TRUE(encode && decode) << "iconv has no " << encoding.iconvName;
  const zuGxCharConverter legacy(encoding.ours.c_str());
  const zuCharConverter& utf8 = *zuCharConverter::UTF8();
  ASSERT_NE(legacy.CodePageNum(), 0) << encoding.ours;

  // Each character alone: the repertoire, and every disagreement.
  std::vector<unsigned int> repertoire;
  std::vector<unsigned int> differences;
  std::string theirs;
  std::string back;
  for (unsigned int cp : candidates()) {
    const std::string text = utf8Of({cp});
    if (!run(encode, text, theirs) || !run(decode, theirs, back) || back != text) continue;
    if (encoding.glibcComposes && u_charType(static_cast<UChar32>(cp)) == U_NON_SPACING_MARK) {
      continue;
    }
    const std::string mine = converted(legacy, utf8, text);
    const std::string mineBack = converted(utf8, legacy, theirs);
    const bool same =
        encoding.encoderMayDiffer ? mineBack == text : mine == theirs && mineBack == text;
    if (same) {
      repertoire.push_back(cp);
    } else if (!encoding.tableDifferences.contains(cp) &&
               !(encoding.glibcComposes && theirs.size() > 1)) {
      differences.push_back(cp);
    }
  }
  EXPECT_GT(repertoire.size(), 90u);
  EXPECT_TRUE(differences.empty())
      << encoding.ours << " differs at " << testing::PrintToString(differences);

  // Texts: empty, the repertoire's ends, and random mixes.
  std::vector<std::vector<unsigned int>> texts = {{}};
  texts.emplace_back(repertoire.begin(), repertoire.begin() + 40);
  texts.emplace_back(repertoire.end() - 40, repertoire.end());
  std::mt19937 random(20261122);
  for (int i = 0; i < 200; ++i) {
    for (unsigned int& cp : texts.emplace_back(1 + random() % 60)) {
      cp = repertoire[random() % repertoire.size()];
    }
  }
  for (const auto& codePoints : texts) {
    const std::string text = utf8Of(codePoints);
    ASSERT_TRUE(run(encode, text, theirs));
    const std::string mine = converted(legacy, utf8, text);
    EXPECT_TRUE(encoding.encoderMayDiffer || mine == theirs)
        << encoding.ours << " encoding " << text;
    ASSERT_TRUE(run(decode, mine, back));
    EXPECT_EQ(back, text) << encoding.ours;
    EXPECT_EQ(converted(utf8, legacy, theirs), text) << encoding.ours << " decoding";
  }
}

INSTANTIATE_TEST_SUITE_P(Encodings, IconvDifferentialTest, ::testing::ValuesIn(encodings()),
                         [](const ::testing::TestParamInfo<Encoding>& param) {
                           std::string name = param.param.ours;
                           std::erase_if(name, [](char c) { return std::isalnum(c) == 0; });
                           return name;
                         });

}  // namespace
