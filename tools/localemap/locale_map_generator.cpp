// locale_map_generator: writes the static locale map and the named locale
// constants from ICU's locale ids and English display names.
//
//   locale_map_generator <repository>/zu/locale/internal/RnLocaleMap.generated.cpp
//                        <repository>/zu/locale/RnLocaleNames.generated.h
//
// Each of the supported names gets a descriptive name ("German_Germany"), a
// code set and its published platform locale id. ICU supplies the ids and the
// English names; the tables below hold every deliberate departure from ICU,
// so that the output can be reviewed and reproduced.
#include <unicode/locdspnm.h>
#include <unicode/translit.h>
#include <unicode/uloc.h>
#include <unicode/unistr.h>

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

// The supported locales, sorted case-insensitively (the map is searched by
// binary search under that order).
const char* const kNames[] = {
    "ar",       "ar_AE",      "ar_BH",      "ar_DZ", "ar_EG", "ar_IQ",       "ar_JO",
    "ar_KW",    "ar_LB",      "ar_LY",      "ar_MA", "ar_OM", "ar_QA",       "ar_SA",
    "ar_SD",    "ar_SY",      "ar_TN",      "ar_YE", "az",    "az_Cyrl",     "az_Cyrl_AZ",
    "az_Latn",  "az_Latn_AZ", "be",         "be_BY", "bg",    "bg_BG",       "bs",
    "bs_BA",    "c",          "ca",         "ca_ES", "cs",    "cs_CZ",       "da",
    "da_DK",    "de",         "de_AT",      "de_BE", "de_CH", "de_DE",       "de_LI",
    "de_LU",    "el",         "el_GR",      "en",    "en_AU", "en_BE",       "en_CA",
    "en_GB",    "en_GB_EURO", "en_HK",      "en_IE", "en_IN", "en_IN_RUPEE", "en_NZ",
    "en_PH",    "en_SG",      "en_US",      "en_VI", "en_ZA", "es",          "es_AR",
    "es_BO",    "es_CL",      "es_CO",      "es_CR", "es_DO", "es_EC",       "es_ES",
    "es_GT",    "es_HN",      "es_MX",      "es_NI", "es_PA", "es_PE",       "es_PR",
    "es_PY",    "es_SV",      "es_US",      "es_UY", "es_VE", "et",          "et_EE",
    "eu",       "eu_ES",      "fa",         "fa_IR", "fi",    "fi_FI",       "fr",
    "fr_BE",    "fr_CA",      "fr_CH",      "fr_FR", "fr_LU", "he",          "he_IL",
    "hi",       "hi_IN",      "hr",         "hr_HR", "hu",    "hu_HU",       "hy",
    "hy_AM",    "id",         "id_ID",      "is",    "is_IS", "it",          "it_CH",
    "it_IT",    "ja",         "ja_JP",      "kk",    "kk_KZ", "km",          "km_KH",
    "ko",       "ko_KR",      "ko_KR_HANI", "lo",    "lo_LA", "lt",          "lt_LT",
    "lv",       "lv_LV",      "mk",         "mk_MK", "ms",    "ms_MY",       "nb",
    "nb_NO",    "nl",         "nl_BE",      "nl_NL", "nn",    "nn_NO",       "no",
    "no_NO",    "no_NO_NY",   "pl",         "pl_PL", "pt",    "pt_BR",       "pt_PT",
    "ro",       "ro_MD",      "ro_RO",      "ru",    "ru_MD", "ru_RU",       "ru_UA",
    "sh",       "sh_BA",      "sh_CS",      "sh_HR", "sk",    "sk_SK",       "sl",
    "sl_SI",    "sq",         "sq_AL",      "sr",    "sr_CS", "sr_Cyrl",     "sr_Cyrl_CS",
    "sr_Latn",  "sr_Latn_CS", "sv",         "sv_FI", "sv_SE", "th",          "th_TH",
    "th_TH_TH", "tl",         "tl_PH",      "tr",    "tr_TR", "tr_TR_LIRA",  "uk",
    "uk_UA",    "vi",         "vi_VN",      "zh",    "zh_CN", "zh_HK",       "zh_SG",
    "zh_TW",
};
constexpr size_t kNameCount = sizeof kNames / sizeof kNames[0];

// Hand-made rows and fields. A null field, or an id of 0, is computed.
struct Correction {
  const char* name;
  const char* descName;
  const char* codeSet;
  uint32_t lcid;
  const char* constant;
};
const Correction kCorrections[] = {
    // The POSIX locale has a platform id of its own and plain ASCII.
    {"c", "C", "ibm367", 64000, "C"},
    // Norwegian without a country: both spellings carry the neutral id.
    {"nb", nullptr, nullptr, 20, nullptr},
    {"no", nullptr, nullptr, 20, nullptr},
    // The New Norwegian dialect of "no" is Nynorsk.
    {"no_NO_NY", "Norwegian-Nynorsk_Norway", nullptr, 2068, "Norwegian_Norway_Nynorsk"},
    // Serbo-Croatian is Serbian in Latin script (Croatian in Croatia).
    {"sh", nullptr, "iso88592", 28698, nullptr},
    {"sh_BA", nullptr, "iso88592", 6170, nullptr},
    {"sh_CS", nullptr, "iso88592", 2074, nullptr},
    {"sh_HR", nullptr, "iso88592", 1050, nullptr},
    // "sr_CS" without a script is the Cyrillic one.
    {"sr_CS", nullptr, "iso88595", 3098, nullptr},
    {"sr_Latn", nullptr, "iso88592", 0, nullptr},
    {"sr_Latn_CS", nullptr, "iso88592", 0, nullptr},
    // Tagalog carries the ids of Filipino.
    {"tl", nullptr, nullptr, 100, nullptr},
    {"tl_PH", nullptr, nullptr, 1124, nullptr},
    // Currency and calendar variants share their country's id and name.
    {"en_GB_EURO", "English_UK", "iso885915", 2057, "English_UK_Euro"},
    {"en_IN_RUPEE", "English_India", nullptr, 16393, "English_India_Rupee"},
    {"tr_TR_LIRA", "Turkish_Turkey", nullptr, 1055, "Turkish_Turkey_Lira"},
    {"th_TH_TH", "Thai_Thailand", nullptr, 1054, "Thai_Thailand_Traditional"},
    {"ko_KR_HANI", "Korean_Korea", nullptr, 1042, "Korean_Korea_Hani"},
};

// English language names where the platform's names differ from ICU's.
const std::map<std::string, std::string> kLanguageNames = {
    {"az", "Azerbaijani"},
    {"be", "Byelorussian"},
    {"sh", "Serbo-Croatian"},
    {"tl", "Tagalog"},
};

// Country names where the platform's names differ from ICU's short ones.
const std::map<std::string, std::string> kCountryNames = {
    {"AE", "U.A.E."},
    {"BA", "Bosnia and Herzegovina"},
    {"CS", "Serbia and Montenegro"},
    {"CZ", "Czech Republic"},
    {"KR", "Korea"},
};

// Code sets by language; scripts and corrections above override them.
const std::map<std::string, std::string> kCodeSets = {
    {"ar", "iso88596"},  {"az", "iso88599"},  {"be", "ibm1124"},   {"bg", "iso88595"},
    {"bs", "iso88592"},  {"ca", "iso88591"},  {"cs", "iso88592"},  {"da", "iso88591"},
    {"de", "iso88591"},  {"el", "iso88597"},  {"en", "iso88591"},  {"es", "iso88591"},
    {"et", "iso885913"}, {"eu", "iso88591"},  {"fa", "utf8"},      {"fi", "iso88591"},
    {"fr", "iso88591"},  {"he", "iso88598"},  {"hi", "utf8"},      {"hr", "iso88592"},
    {"hu", "iso88592"},  {"hy", "utf8"},      {"id", "iso88591"},  {"is", "iso88591"},
    {"it", "iso88591"},  {"ja", "shift-jis"}, {"kk", "utf8"},      {"km", "utf8"},
    {"ko", "ksc-5601"},  {"lo", "utf8"},      {"lt", "iso885913"}, {"lv", "iso885913"},
    {"mk", "iso88595"},  {"ms", "iso88591"},  {"nb", "iso88591"},  {"nl", "iso88591"},
    {"nn", "iso88591"},  {"no", "iso88591"},  {"pl", "iso88592"},  {"pt", "iso88591"},
    {"ro", "iso88592"},  {"ru", "iso88595"},  {"sh", "iso88592"},  {"sk", "iso88592"},
    {"sl", "iso88592"},  {"sq", "iso88592"},  {"sr", "iso88595"},  {"sv", "iso88591"},
    {"th", "ibm874"},    {"tl", "iso88591"},  {"tr", "iso88599"},  {"uk", "ibm1124"},
    {"vi", "ibm1258"},   {"zh", "gbk"},
};
const std::map<std::string, std::string> kChineseCodeSets = {
    {"zh_TW", "big5"},
    {"zh_HK", "hkscs-big5"},
};
// Cyrillic spellings of languages that are otherwise written in Latin.
const std::map<std::string, std::string> kScriptCodeSets = {
    {"Cyrl", "iso88595"},
};

// The id Windows gives a locale it has no id of its own for.
constexpr uint32_t kUnspecifiedLcid = 0x1000;

struct Row {
  std::string name;
  std::string descName;
  std::string codeSet;
  uint32_t lcid = 0;
  std::string constant;
};

std::string toUtf8(const icu::UnicodeString& text) {
  std::string out;
  text.toUTF8String(out);
  return out;
}

// Letters and digits only, each word capitalised and joined with `joint`;
// "and" and punctuation are dropped, accents removed.
std::string identifierWords(const std::string& text, const std::string& joint) {
  static std::unique_ptr<icu::Transliterator> toAscii = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Transliterator> result(
        icu::Transliterator::createInstance("Latin-ASCII", UTRANS_FORWARD, status));
    if (U_FAILURE(status)) {
      std::cerr << "no Latin-ASCII transliterator: " << u_errorName(status) << "\n";
      std::exit(1);
    }
    return result;
  }();
  icu::UnicodeString unicode = icu::UnicodeString::fromUTF8(text);
  toAscii->transliterate(unicode);
  const std::string ascii = toUtf8(unicode);

  std::vector<std::string> words(1);
  for (char c : ascii) {
    if (std::isalnum(static_cast<unsigned char>(c))) {
      words.back() += c;
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  std::string out;
  for (std::string& word : words) {
    if (word.empty() || word == "and") continue;
    word[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(word[0])));
    if (!out.empty()) out += joint;
    out += word;
  }
  return out;
}

class Namer {
 public:
  Namer() {
    UDisplayContext shortNames[] = {UDISPCTX_LENGTH_SHORT};
    long_.reset(icu::LocaleDisplayNames::createInstance(icu::Locale::getEnglish()));
    short_.reset(icu::LocaleDisplayNames::createInstance(icu::Locale::getEnglish(), shortNames, 1));
  }

  std::string language(const std::string& code) const {
    auto fixed = kLanguageNames.find(code);
    if (fixed != kLanguageNames.end()) return fixed->second;
    icu::UnicodeString text;
    return toUtf8(long_->languageDisplayName(code.c_str(), text));
  }
  std::string script(const std::string& code) const {
    icu::UnicodeString text;
    return toUtf8(long_->scriptDisplayName(code.c_str(), text));
  }
  std::string country(const std::string& code) const {
    auto fixed = kCountryNames.find(code);
    if (fixed != kCountryNames.end()) return fixed->second;
    icu::UnicodeString text;
    return toUtf8(short_->regionDisplayName(code.c_str(), text));
  }

 private:
  std::unique_ptr<icu::LocaleDisplayNames> long_;
  std::unique_ptr<icu::LocaleDisplayNames> short_;
};

std::string replaceAll(std::string text, char from, char to) {
  for (char& c : text) {
    if (c == from) c = to;
  }
  return text;
}

Row computeRow(const Namer& namer, const std::string& name) {
  const icu::Locale locale(name.c_str());
  const std::string language = locale.getLanguage();
  const std::string script = locale.getScript();
  const std::string country = locale.getCountry();

  Row row;
  row.name = name;

  const std::string languageName = namer.language(language);
  row.descName = replaceAll(languageName, ' ', '_');
  row.constant = identifierWords(languageName, "_");
  if (!script.empty()) {
    row.descName += " (" + namer.script(script) + ")";
    row.constant += "_" + identifierWords(namer.script(script), "");
  }
  if (!country.empty()) {
    row.descName += "_" + namer.country(country);
    row.constant += "_" + identifierWords(namer.country(country), "");
  }

  if (auto byLanguage = kCodeSets.find(language); byLanguage != kCodeSets.end()) {
    row.codeSet = byLanguage->second;
  }
  if (auto chinese = kChineseCodeSets.find(language + "_" + country);
      chinese != kChineseCodeSets.end()) {
    row.codeSet = chinese->second;
  }
  if (auto byScript = kScriptCodeSets.find(script); byScript != kScriptCodeSets.end()) {
    row.codeSet = byScript->second;
  }

  row.lcid = uloc_getLCID(name.c_str());
  // A country ICU knows no id for gets its language's id back (no sublanguage
  // bits); the platform gives such locales the unspecified id instead.
  if (!country.empty() && (row.lcid >> 10) == 0) row.lcid = kUnspecifiedLcid;
  return row;
}

void applyCorrection(Row& row) {
  for (const Correction& fix : kCorrections) {
    if (row.name != fix.name) continue;
    if (fix.descName != nullptr) row.descName = fix.descName;
    if (fix.codeSet != nullptr) row.codeSet = fix.codeSet;
    if (fix.lcid != 0) row.lcid = fix.lcid;
    if (fix.constant != nullptr) row.constant = fix.constant;
  }
}

bool lessNoCase(const char* left, const char* right) {
  return strcasecmp(left, right) < 0;
}

std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + "\"";
}

const char kHeaderComment[] =
    "generated by tools/localemap/locale_map_generator; do not edit.\n"
    "// ICU's locale ids and English names, with the corrections listed in the generator.\n"
    "// Regenerate with: cmake --build --preset release --target generate_data\n";

bool writeMap(const std::vector<Row>& rows, const char* path) {
  std::ofstream out(path);
  out << "// Static locale map: " << kHeaderComment
      << "#include \"zu/locale/internal/RnLocaleMap.h\"\n\n"
         "namespace zu::internal {\n\n"
         "// name, descriptive name, code set, platform locale id\n"
         "const RnLocaleMapRow kLocaleMap[kLocaleMapRows] = {\n"
         "    {\"x\", \"XXX\", \"ibm367\", 512},\n";
  for (const Row& row : rows) {
    out << "    {" << quoted(row.name) << ", " << quoted(row.descName) << ", "
        << quoted(row.codeSet) << ", " << row.lcid << "},\n";
  }
  out << "};\n\n}  // namespace zu::internal\n";
  return static_cast<bool>(out);
}

bool writeConstants(const std::vector<Row>& rows, const char* path) {
  std::ofstream out(path);
  out << "// Named locales of RnLocale: " << kHeaderComment
      << "//\n"
         "// Included inside class RnLocale: one constant per row of the locale map,\n"
         "// named after the language and country in English.\n";
  for (const Row& row : rows) {
    out << "static constexpr const char* " << row.constant << " = " << quoted(row.name) << ";\n";
  }
  out << "static constexpr const char* English_US_Posix = \"en_US_POSIX\";\n";
  return static_cast<bool>(out);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: locale_map_generator <map source> <constants header>\n";
    return 2;
  }
  if (kNameCount != 190 || !std::is_sorted(std::begin(kNames), std::end(kNames), lessNoCase)) {
    std::cerr << "the locale list must hold 190 names sorted case-insensitively\n";
    return 1;
  }
  const Namer namer;
  std::vector<Row> rows;
  std::map<std::string, std::string> constants;
  for (const char* name : kNames) {
    Row row = computeRow(namer, name);
    applyCorrection(row);
    if (row.lcid == 0 || row.codeSet.empty()) {
      std::cerr << name << ": no locale id or code set\n";
      return 1;
    }
    if (!constants.emplace(row.constant, row.name).second) {
      std::cerr << name << ": constant " << row.constant << " already names "
                << constants[row.constant] << "\n";
      return 1;
    }
    rows.push_back(row);
  }
  if (!writeMap(rows, argv[1]) || !writeConstants(rows, argv[2])) {
    std::cerr << "cannot write the output files\n";
    return 1;
  }
  return 0;
}
