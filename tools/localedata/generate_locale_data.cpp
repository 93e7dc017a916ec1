// Writes the built-in locale table of RnData from the CLDR data of ICU.
//
//   generate_locale_data <path of RnDataTable.generated.cpp>
//
// Each record is first filled completely from ICU (names, patterns converted
// into picture syntax, symbols, currency, typefaces); the records "root",
// "en_US" and "ar" then take the library's fixed values. Every record other
// than "root" finally keeps only the fields that differ from what its parent
// resolves to (parent: the name cut at its last "_", then "root").
#include <unicode/datefmt.h>
#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/locid.h>
#include <unicode/numfmt.h>
#include <unicode/smpdtfmt.h>
#include <unicode/ucurr.h>
#include <unicode/uloc.h>
#include <unicode/unistr.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tools/localedata/picture_conversion.h"

namespace {

constexpr int kFields = 65;
using Record = std::array<std::optional<std::string>, kFields>;

// The records of the table, in byte order.
const char* const kNames[] = {
    "ar",       "ar_AE",      "ar_BH",    "ar_DZ",       "ar_EG", "ar_IQ",       "ar_JO",
    "ar_KW",    "ar_LB",      "ar_LY",    "ar_MA",       "ar_OM", "ar_QA",       "ar_SA",
    "ar_SD",    "ar_SY",      "ar_TN",    "ar_YE",       "az",    "az_Cyrl",     "az_Cyrl_AZ",
    "az_Latn",  "az_Latn_AZ", "be",       "be_BY",       "bg",    "bg_BG",       "bs",
    "bs_BA",    "c",          "ca",       "ca_ES",       "cs",    "cs_CZ",       "da",
    "da_DK",    "de",         "de_AT",    "de_BE",       "de_CH", "de_DE",       "de_LI",
    "de_LU",    "el",         "el_GR",    "en",          "en_AU", "en_BE",       "en_CA",
    "en_GB",    "en_GB_EURO", "en_HK",    "en_IE",       "en_IN", "en_IN_RUPEE", "en_NZ",
    "en_PH",    "en_SG",      "en_US",    "en_US_POSIX", "en_VI", "en_ZA",       "es",
    "es_AR",    "es_BO",      "es_CL",    "es_CO",       "es_CR", "es_DO",       "es_EC",
    "es_ES",    "es_GT",      "es_HN",    "es_MX",       "es_NI", "es_PA",       "es_PE",
    "es_PR",    "es_PY",      "es_SV",    "es_US",       "es_UY", "es_VE",       "et",
    "et_EE",    "eu",         "eu_ES",    "fa",          "fa_IR", "fi",          "fi_FI",
    "fr",       "fr_BE",      "fr_CA",    "fr_CH",       "fr_FR", "fr_LU",       "he",
    "he_IL",    "hi",         "hi_IN",    "hr",          "hr_HR", "hu",          "hu_HU",
    "hy",       "hy_AM",      "id",       "id_ID",       "is",    "is_IS",       "it",
    "it_CH",    "it_IT",      "ja",       "ja_JP",       "kk",    "kk_KZ",       "km",
    "km_KH",    "ko",         "ko_KR",    "ko_KR_HANI",  "lo",    "lo_LA",       "lt",
    "lt_LT",    "lv",         "lv_LV",    "mk",          "mk_MK", "ms",          "ms_MY",
    "nb",       "nb_NO",      "nl",       "nl_BE",       "nl_NL", "nn",          "nn_NO",
    "no",       "no_NO",      "no_NO_NY", "pl",          "pl_PL", "pt",          "pt_BR",
    "pt_PT",    "ro",         "ro_RO",    "root",        "ru",    "ru_RU",       "ru_UA",
    "sh",       "sh_BA",      "sh_CS",    "sh_HR",       "sk",    "sk_SK",       "sl",
    "sl_SI",    "sq",         "sq_AL",    "sr",          "sr_CS", "sr_Cyrl",     "sr_Cyrl_CS",
    "sr_Latn",  "sr_Latn_CS", "sv",       "sv_FI",       "sv_SE", "th",          "th_TH",
    "th_TH_TH", "tl",         "tl_PH",    "tr",          "tr_TR", "tr_TR_LIRA",  "uk",
    "uk_UA",    "vi",         "vi_VN",    "zh",          "zh_CN", "zh_HK",       "zh_SG",
    "zh_TW"};

// Names that CLDR lacks or spells differently: the CLDR locale whose data
// they take, and the currency they use when it is not the country's own.
struct Mapping {
  const char* name;
  const char* cldr;
  const char* currency;
};
const Mapping kMappings[] = {
    {"c", "en_US_POSIX", nullptr},
    {"en_GB_EURO", "en_GB", "EUR"},
    {"en_IN_RUPEE", "en_IN", "INR"},
    {"en_VI", "en_VI", "USD"},
    {"ko_KR_HANI", "ko_KR", nullptr},
    {"no", "nb", nullptr},
    {"no_NO", "nb_NO", nullptr},
    {"no_NO_NY", "nn_NO", nullptr},
    {"sh", "sr_Latn", nullptr},  // Serbo-Croatian in Latin script
    {"sh_BA", "sr_Latn_BA", nullptr},
    {"sh_CS", "sr_Latn_RS", nullptr},  // Serbia and Montenegro
    {"sh_HR", "sr_Latn", "EUR"},
    {"sr_CS", "sr_RS", nullptr},
    {"sr_Cyrl_CS", "sr_Cyrl_RS", nullptr},
    {"sr_Latn_CS", "sr_Latn_RS", nullptr},
    {"th_TH_TH", "th_TH@numbers=thai", nullptr},  // Thai digits
    {"tl", "fil", nullptr},
    {"tl_PH", "fil_PH", nullptr},
    {"tr_TR_LIRA", "tr_TR", "TRY"},
};

std::string utf8(const icu::UnicodeString& text) {
  std::string out;
  text.toUTF8String(out);
  return out;
}

void check(UErrorCode status, const char* what) {
  if (U_FAILURE(status)) {
    std::fprintf(stderr, "generate_locale_data: %s: %s\n", what, u_errorName(status));
    std::exit(1);
  }
}

// The gregorian date (`time` false) or time pattern of a style, as CLDR's
// calendar/gregorian/DateTimePatterns give it through ICU's fallback.
std::string dateTimePattern(const icu::Locale& locale, bool time, icu::DateFormat::EStyle style) {
  std::unique_ptr<icu::DateFormat> format(time
                                              ? icu::DateFormat::createTimeInstance(style, locale)
                                              : icu::DateFormat::createDateInstance(style, locale));
  auto* simple = dynamic_cast<icu::SimpleDateFormat*>(format.get());
  if (simple == nullptr) check(U_UNSUPPORTED_ERROR, "SimpleDateFormat");
  icu::UnicodeString pattern;
  return utf8(simple->toPattern(pattern));
}

// The pattern that combines a date and a time ("{1} {0}").
std::string combiningPattern(const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::DateTimePatternGenerator> generator(
      icu::DateTimePatternGenerator::createInstance(locale, status));
  check(status, "DateTimePatternGenerator");
  return utf8(generator->getDateTimeFormat());
}

std::string numberPattern(const icu::Locale& locale, UNumberFormatStyle style) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::NumberFormat> format(
      icu::NumberFormat::createInstance(locale, style, status));
  check(status, "NumberFormat");
  icu::UnicodeString pattern;
  auto* decimal = dynamic_cast<icu::DecimalFormat*>(format.get());
  if (decimal == nullptr) check(U_UNSUPPORTED_ERROR, "DecimalFormat");
  return utf8(decimal->toPattern(pattern));
}

std::string currencyCode(const char* locale, const char* fixed) {
  if (fixed != nullptr) return fixed;
  // A language alone has no currency; take its most likely country's.
  UErrorCode status = U_ZERO_ERROR;
  char likely[ULOC_FULLNAME_CAPACITY] = {};
  uloc_addLikelySubtags(locale, likely, sizeof likely, &status);
  UChar code[4] = {};
  ucurr_forLocale(U_SUCCESS(status) ? likely : locale, code, 4, &status);
  if (U_FAILURE(status) || code[0] == 0) return "USD";
  return utf8(icu::UnicodeString(code, 3));
}

std::string currencySymbol(const char* locale, const std::string& code) {
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString iso(code.c_str(), -1, US_INV);
  UBool isChoice = false;
  int32_t length = 0;
  const UChar* symbol = ucurr_getName(iso.getTerminatedBuffer(), locale, UCURR_SYMBOL_NAME,
                                      &isChoice, &length, &status);
  check(status, "currency symbol");
  return utf8(icu::UnicodeString(symbol, length));
}

// Family names of open fonts shipped by Linux distributions, by script.
std::string typefaces(const char* locale) {
  UErrorCode status = U_ZERO_ERROR;
  char full[ULOC_FULLNAME_CAPACITY] = {};
  uloc_addLikelySubtags(locale, full, sizeof full, &status);
  char script[ULOC_SCRIPT_CAPACITY] = {};
  uloc_getScript(full, script, sizeof script, &status);
  const std::string s = script;
  const std::map<std::string, std::vector<std::string>> byScript = {
      {"Arab", {"Noto Naskh Arabic", "Noto Sans Arabic", "DejaVu Sans"}},
      {"Hebr", {"Noto Sans Hebrew", "DejaVu Sans", "Liberation Sans"}},
      {"Armn", {"Noto Sans Armenian", "DejaVu Sans"}},
      {"Thai", {"Noto Sans Thai", "DejaVu Sans"}},
      {"Khmr", {"Noto Sans Khmer", "DejaVu Sans"}},
      {"Laoo", {"Noto Sans Lao", "DejaVu Sans"}},
      {"Deva", {"Noto Sans Devanagari", "DejaVu Sans"}},
      {"Jpan", {"Noto Sans CJK JP", "DejaVu Sans"}},
      {"Kore", {"Noto Sans CJK KR", "DejaVu Sans"}},
      {"Hans", {"Noto Sans CJK SC", "DejaVu Sans"}},
      {"Hant", {"Noto Sans CJK TC", "DejaVu Sans"}},
  };
  auto found = byScript.find(s);
  const std::vector<std::string> names =
      found != byScript.end()
          ? found->second
          : std::vector<std::string>{"Noto Sans", "DejaVu Sans", "Liberation Sans"};
  std::string out;
  for (const std::string& name : names) out += name + '\0';
  return out;
}

Record fromIcu(const std::string& name) {
  const char* cldr = name.c_str();
  const char* fixedCurrency = nullptr;
  for (const Mapping& mapping : kMappings) {
    if (name == mapping.name) {
      cldr = mapping.cldr;
      fixedCurrency = mapping.currency;
    }
  }
  icu::Locale locale(cldr);
  UErrorCode keywordStatus = U_ZERO_ERROR;
  locale.setKeywordValue("calendar", "gregorian", keywordStatus);
  check(keywordStatus, "calendar keyword");
  Record record;
  record[0] = name;
  UErrorCode status = U_ZERO_ERROR;
  icu::DateFormatSymbols dates(locale, status);
  check(status, "DateFormatSymbols");
  int32_t count = 0;
  const icu::UnicodeString* ampm = dates.getAmPmStrings(count);
  for (int i = 0; i < 2; ++i) record[1 + i] = utf8(ampm[i]);
  const std::string code = currencyCode(cldr, fixedCurrency);
  record[3] = currencySymbol(cldr, code);
  record[4] = code;
  icu::DecimalFormatSymbols symbols(locale, status);
  check(status, "DecimalFormatSymbols");
  record[5] = utf8(symbols.getSymbol(icu::DecimalFormatSymbols::kMonetarySeparatorSymbol));
  const icu::DateFormat::EStyle styles[] = {icu::DateFormat::kFull, icu::DateFormat::kLong,
                                            icu::DateFormat::kMedium, icu::DateFormat::kShort};
  for (int i = 0; i < 4; ++i) {
    record[6 + i] = zu::tools::timePicture(dateTimePattern(locale, true, styles[i]));
    record[10 + i] = zu::tools::datePicture(dateTimePattern(locale, false, styles[i]));
  }
  record[14] = zu::tools::combiningPicture(combiningPattern(locale));
  const icu::UnicodeString* abbrDays =
      dates.getWeekdays(count, icu::DateFormatSymbols::FORMAT, icu::DateFormatSymbols::ABBREVIATED);
  const icu::UnicodeString* days =
      dates.getWeekdays(count, icu::DateFormatSymbols::FORMAT, icu::DateFormatSymbols::WIDE);
  for (int i = 0; i < 7; ++i) {
    record[15 + i] = utf8(abbrDays[i + 1]);  // index 0 is unused
    record[22 + i] = utf8(days[i + 1]);
  }
  const icu::UnicodeString* eras = dates.getEras(count);
  for (int i = 0; i < 2; ++i) record[29 + i] = utf8(eras[i]);
  const icu::UnicodeString* abbrMonths =
      dates.getMonths(count, icu::DateFormatSymbols::FORMAT, icu::DateFormatSymbols::ABBREVIATED);
  const icu::UnicodeString* months =
      dates.getMonths(count, icu::DateFormatSymbols::FORMAT, icu::DateFormatSymbols::WIDE);
  for (int i = 0; i < 12; ++i) {
    record[32 + i] = utf8(abbrMonths[i]);
    record[44 + i] = utf8(months[i]);
  }
  record[56] = utf8(symbols.getSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol));
  record[57] = utf8(symbols.getSymbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol));
  record[58] = utf8(symbols.getSymbol(icu::DecimalFormatSymbols::kPercentSymbol));
  record[59] = utf8(symbols.getSymbol(icu::DecimalFormatSymbols::kMinusSignSymbol));
  record[60] = utf8(symbols.getSymbol(icu::DecimalFormatSymbols::kZeroDigitSymbol));
  record[61] = zu::tools::numericPicture(numberPattern(locale, UNUM_DECIMAL));
  record[62] = zu::tools::numericPicture(numberPattern(locale, UNUM_CURRENCY));
  record[63] = zu::tools::numericPicture(numberPattern(locale, UNUM_PERCENT));
  record[64] = typefaces(cldr);
  return record;
}

// The library's fixed values of "root", "en_US" and "ar" (the fields of "ar"
// not listed here come from CLDR). They are stored even where they equal the
// parent's; `fixed` receives their (name, field) pairs.
void applyFixedValues(std::map<std::string, Record>& records,
                      std::set<std::pair<std::string, int>>& fixed) {
  const char* const root[kFields - 1] = {"root",
                                         "AM",
                                         "PM",
                                         "$",
                                         "USD",
                                         ".",
                                         "h:MM:SS A Z",
                                         "h:MM:SS A Z",
                                         "h:MM:SS A",
                                         "h:MM A",
                                         "EEEE, MMMM D, YYYY",
                                         "MMMM D, YYYY",
                                         "MMM D, YYYY",
                                         "M/D/YY",
                                         "date{} time{}",
                                         "Sun",
                                         "Mon",
                                         "Tue",
                                         "Wed",
                                         "Thu",
                                         "Fri",
                                         "Sat",
                                         "Sunday",
                                         "Monday",
                                         "Tuesday",
                                         "Wednesday",
                                         "Thursday",
                                         "Friday",
                                         "Saturday",
                                         "BC",
                                         "AD",
                                         "GyMdkHmsSEDFwWahKzZ",
                                         "Jan",
                                         "Feb",
                                         "Mar",
                                         "Apr",
                                         "May",
                                         "Jun",
                                         "Jul",
                                         "Aug",
                                         "Sep",
                                         "Oct",
                                         "Nov",
                                         "Dec",
                                         "January",
                                         "February",
                                         "March",
                                         "April",
                                         "May",
                                         "June",
                                         "July",
                                         "August",
                                         "September",
                                         "October",
                                         "November",
                                         "December",
                                         ".",
                                         ",",
                                         "%",
                                         "-",
                                         "0",
                                         "z,zz9.zzz",
                                         "s$ z,zz9.99",
                                         "z,zz9%"};
  Record& rootRecord = records["root"];
  for (int i = 0; i < kFields - 1; ++i) rootRecord[i] = root[i];
  rootRecord[64] = std::string("Noto Sans\0DejaVu Sans\0Liberation Sans\0", 39);

  Record& us = records["en_US"];
  us.fill(std::nullopt);
  us[0] = "en_US";
  us[3] = "$";
  us[4] = "USD";
  us[5] = ".";
  us[62] = "$z,zz9.99|($z,zz9.99)";
  for (int field : {3, 4, 5, 62}) fixed.insert({"en_US", field});

  Record& ar = records["ar"];
  const std::pair<int, const char*> arabic[] = {{1, "\u0635"},
                                                {2, "\u0645"},
                                                {3, "\u00a4"},
                                                {4, "XXX"},
                                                {6, "Z h:MM:SS A"},
                                                {7, "h:MM:SS A"},
                                                {8, "h:MM:SS A"},
                                                {9, "h:MM A"},
                                                {10, "EEEE, D MMMM, YYYY"},
                                                {11, "D MMMM, YYYY"},
                                                {12, "DD/MM/YYYY"},
                                                {13, "D/M/YYYY"},
                                                {31, "GanjkHmsSEDFwWxhKzZ"},
                                                {56, "\u066b"},
                                                {57, "\u066c"},
                                                {58, "\u066a"},
                                                {60, "\u0660"},
                                                {61, "z,zz9.zzz"},
                                                {62, "$ z,zz9.99s"}};
  for (const auto& [field, value] : arabic) {
    ar[field] = value;
    fixed.insert({"ar", field});
  }
}

std::string parentOf(const std::string& name) {
  const size_t cut = name.rfind('_');
  return cut == std::string::npos ? "root" : name.substr(0, cut);
}

// What a lookup of `name` finds in the stored records, field by field.
Record resolve(const std::map<std::string, Record>& stored, const std::string& name) {
  Record resolved;
  for (std::string current = name;; current = parentOf(current)) {
    auto found = stored.find(current);
    if (found != stored.end()) {
      for (int i = 0; i < kFields; ++i) {
        if (!resolved[i] && found->second[i]) resolved[i] = found->second[i];
      }
    }
    if (current == "root") return resolved;
  }
}

std::string literal(const std::string& text) {
  std::string out = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (c == '\0') {
      out += "\\0\" \"";
    } else {
      out += c;
    }
  }
  return out + "\"";
}

void write(const std::string& path, const std::map<std::string, Record>& stored) {
  std::ofstream out(path);
  out << "// generated by tools/localedata/generate_locale_data.cpp from the CLDR data of ICU "
      << U_ICU_VERSION << ";\n"
      << "// regenerate with: cmake --build --preset release --target generate_data\n"
      << "#include \"zu/locale/internal/RnDataTable.h\"\n\n"
      << "namespace zu::internal {\n\n#define N nullptr\nconst RnDataRecord kRnDataRecords[] = {\n";
  // Field groups, one per line: name to currency, time, date and combining
  // patterns, weekdays, eras and alphabet, months, symbols and numeric
  // patterns, typefaces.
  const int lineStarts[] = {0, 6, 10, 15, 22, 29, 32, 44, 56, 64, kFields};
  for (const auto& [name, record] : stored) {
    out << "    {{";
    for (size_t line = 0; line + 1 < std::size(lineStarts); ++line) {
      if (line > 0) out << ",\n      ";
      for (int i = lineStarts[line]; i < lineStarts[line + 1]; ++i) {
        out << (i > lineStarts[line] ? ", " : "") << (record[i] ? literal(*record[i]) : "N");
      }
    }
    out << "}},\n";
  }
  out << "};\n#undef N\n"
      << "const unsigned int kRnDataRecordCount = sizeof(kRnDataRecords) / "
         "sizeof(kRnDataRecords[0]);\n\n"
      << "}  // namespace zu::internal\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: generate_locale_data <output.cpp>\n");
    return 2;
  }
  std::map<std::string, Record> full;
  for (const char* name : kNames) full[name] = fromIcu(name);
  std::set<std::pair<std::string, int>> fixed;
  applyFixedValues(full, fixed);
  // The symbol alphabet is not CLDR data: only root and ar define one.
  for (auto& [name, record] : full) {
    if (name != "root" && name != "ar") record[31].reset();
  }
  // std::map orders by bytes, so parents ("de") come before children
  // ("de_CH"), except "root", which is stored whole first.
  std::map<std::string, Record> stored;
  stored["root"] = full["root"];
  for (const auto& [name, record] : full) {
    if (name == "root") continue;
    const Record inherited = resolve(stored, parentOf(name));
    Record own;
    own[0] = name;
    for (int i = 1; i < kFields; ++i) {
      if (record[i] && (record[i] != inherited[i] || fixed.count({name, i}) != 0))
        own[i] = record[i];
    }
    stored[name] = own;
  }
  write(argv[1], stored);
  return 0;
}
