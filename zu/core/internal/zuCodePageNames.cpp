#include "zu/core/internal/zuCodePageNames.h"

#include <langinfo.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace zu::internal {

namespace {

// 0 drops the byte; anything else is the byte it becomes.
constexpr std::array<unsigned char, 256> makeNameMap() {
  std::array<unsigned char, 256> map{};
  for (unsigned int byte = 0; byte < 256; ++byte) {
    const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
    const bool digit = byte >= '0' && byte <= '9';
    const bool asciiOther = byte < 0x80 && !letter && !digit;  // punctuation, space, controls
    if (asciiOther) continue;
    map[byte] = static_cast<unsigned char>(byte >= 'a' && byte <= 'z' ? byte - 'a' + 'A' : byte);
  }
  return map;
}

constexpr std::array<unsigned char, 256> kNameMap = makeNameMap();

struct NamedPage {
  std::string_view name;
  int codePage;
};

// Sorted by name for the binary search.
constexpr NamedPage kNamedPages[] = {
    {"2022JP", 50220},    {"2022JP2", 50222},    {"2022KR", 50225},      {"ARABIC", 1089},
    {"BIG5", 1373},       {"BIGFIVE", 1373},     {"CYRILLIC", 915},      {"FONTSPECIFIC", 101},
    {"GB18030", 1392},    {"GB2312", 1383},      {"GBK", 1386},          {"GREEK", 813},
    {"HEBREW", 916},      {"HKSCSBIG5", 2566},   {"KOREAN", 1363},       {"KSC5601", 1363},
    {"LATIN1", 819},      {"LATIN2", 912},       {"LATIN3", 913},        {"LATIN4", 914},
    {"LATIN5", 920},      {"LATINARABIC", 1089}, {"LATINCYRILLIC", 915}, {"LATINGREEK", 813},
    {"LATINHEBREW", 916}, {"MAC", 10000},        {"PCK", 943},           {"SHIFTJIS", 943},
    {"SJIS", 943},        {"USASCII", 367},      {"UTF16", 65002},       {"UTF16BE", 65003},
    {"UTF16LE", 65004},   {"UTF32", 65005},      {"UTF32BE", 65006},     {"UTF32LE", 65007},
    {"UTF7", 65000},      {"UTF8", 65001},
};
static_assert(std::size(kNamedPages) == 38);

// The one-digit and two-digit numbers older callers used for code pages.
struct LegacyNumber {
  int legacy;
  int codePage;
};
constexpr LegacyNumber kLegacyNumbers[] = {
    {2, 850},   {5, 1252},  {10, 943},  {20, 1363}, {30, 1373}, {35, 1386}, {36, 1383},
    {37, 1373}, {60, 1250}, {61, 1251}, {63, 1253}, {64, 1254}, {65, 1255}, {67, 1257},
};

struct PageName {
  int codePage;
  const char* name;
};

// The ICU converter behind each code page the library knows.
constexpr PageName kPlatformNames[] = {
    {885915, "ISO-8859-15"}, {885913, "ISO-8859-13"}, {88591, "ISO-8859-1"},
    {88592, "ISO-8859-2"},   {88593, "ISO-8859-3"},   {88594, "ISO-8859-4"},
    {88595, "ISO-8859-5"},   {88596, "ISO-8859-6"},   {88597, "ISO-8859-7"},
    {88598, "ISO-8859-8"},   {88599, "ISO-8859-9"},   {65000, "UTF-7"},
    {65001, "UTF-8"},        {65002, "UTF-16"},       {65003, "UTF-16BE"},
    {65004, "UTF-16LE"},     {65005, "UTF-32"},       {65006, "UTF-32BE"},
    {65007, "UTF-32LE"},     {50225, "ISO-2022-KR"},  {50222, "ISO-2022-JP-2"},
    {50220, "ISO-2022-JP"},  {2566, "HKSCS-BIG5"},    {10000, "MAC"},
    {1392, "IBM-1392"},      {1386, "IBM-1386"},      {1383, "IBM-1383"},
    {1373, "IBM-1373"},      {1363, "IBM-1363"},      {949, "IBM-1363"},
    {1250, "IBM-5346"},      {5346, "IBM-5346"},      {1251, "IBM-5347"},
    {5347, "IBM-5347"},      {1252, "IBM-5348"},      {5348, "IBM-5348"},
    {1253, "IBM-5349"},      {5349, "IBM-5349"},      {1254, "IBM-5350"},
    {5350, "IBM-5350"},      {1255, "IBM-9447"},      {9447, "IBM-9447"},
    {5351, "IBM-5351"},      {1256, "IBM-5352"},      {5352, "IBM-5352"},
    {1257, "IBM-5353"},      {5353, "IBM-5353"},      {1258, "IBM-5354"},
    {5354, "IBM-5354"},      {874, "IBM-874"},        {1089, "IBM-1089"},
    {1124, "IBM-1124"},      {950, "IBM-1373"},       {943, "IBM-943"},
    {932, "IBM-943"},        {936, "IBM-1386"},       {920, "IBM-920"},
    {916, "IBM-916"},        {915, "IBM-915"},        {914, "IBM-914"},
    {913, "IBM-913"},        {912, "IBM-912"},        {850, "IBM-850"},
    {819, "IBM-819"},        {813, "IBM-813"},        {367, "IBM-367"},
    {101, "FONT-SPECIFIC"},
};

// ISO/IANA-style names; pages missing here use their platform name.
constexpr PageName kIsoNames[] = {
    {101, "font-specific"}, {1392, "GB18030"},      {1386, "GBK"},
    {936, "GBK"},           {1383, "GB2312"},       {1373, "Big5"},
    {950, "Big5"},          {1363, "KSC_5601"},     {949, "KSC_5601"},
    {874, "windows-874"},   {1258, "windows-1258"}, {5354, "windows-1258"},
    {1257, "windows-1257"}, {5353, "windows-1257"}, {1256, "windows-1256"},
    {5352, "windows-1256"}, {1255, "windows-1255"}, {5351, "windows-1255"},
    {9447, "windows-1255"}, {1254, "windows-1254"}, {5350, "windows-1254"},
    {1253, "windows-1253"}, {5349, "windows-1253"}, {1252, "windows-1252"},
    {5348, "windows-1252"}, {1251, "windows-1251"}, {5347, "windows-1251"},
    {1250, "windows-1250"}, {5346, "windows-1250"}, {1124, "cyrillic ukraine"},
    {1089, "arabic"},       {943, "Shift_JIS"},     {932, "Shift_JIS"},
    {920, "latin5"},        {916, "hebrew"},        {915, "cyrillic"},
    {914, "latin4"},        {913, "latin3"},        {912, "latin2"},
    {850, "IBM-850"},       {819, "latin1"},        {813, "greek"},
    {10000, "mac"},
};

template <std::size_t N>
const char* nameIn(const PageName (&table)[N], int codePage, const char* otherwise) {
  for (const PageName& entry : table) {
    if (entry.codePage == codePage) return entry.name;
  }
  return otherwise;
}

// Reads a decimal number as atoi does, clamped to the int range.
int readDecimal(const char* text) {
  errno = 0;
  const long value = std::strtol(text, nullptr, 10);
  return static_cast<int>(std::clamp<long>(value, INT_MIN, INT_MAX));
}

// Removes the first occurrence of `word` from the `length` bytes at `text`.
unsigned int removeFirst(char* text, unsigned int length, std::string_view word) {
  const std::string_view view(text, length);
  const std::size_t at = view.find(word);
  if (at == std::string_view::npos) return length;
  std::memmove(text + at, text + at + word.size(), length - at - word.size());
  return length - static_cast<unsigned int>(word.size());
}

unsigned int removeLeading(char* text, unsigned int length, std::string_view word) {
  if (!std::string_view(text, length).starts_with(word)) return length;
  return removeFirst(text, length, word);
}

}  // namespace

unsigned int canonicalizeName(const char* name, unsigned int length, char* out) {
  unsigned int kept = 0;
  for (unsigned int i = 0; i < length; ++i) {
    const unsigned char mapped = kNameMap[static_cast<unsigned char>(name[i])];
    if (mapped != 0) out[kept++] = static_cast<char>(mapped);
  }
  kept = removeLeading(out, kept, "CP");
  kept = removeLeading(out, kept, "CS");
  kept = removeFirst(out, kept, "ISO");
  kept = removeFirst(out, kept, "IBM");
  kept = removeFirst(out, kept, "WINDOWS");
  out[kept] = '\0';
  return kept;
}

int codePageFromName(const char* name) {
  if (name == nullptr) return 0;
  const std::size_t length = std::strlen(name);
  if (length >= kLongNameLength) return readDecimal(name);

  char canonical[kLongNameLength];
  const unsigned int canonicalLength =
      canonicalizeName(name, static_cast<unsigned int>(length), canonical);
  const std::string_view key(canonical, canonicalLength);
  const auto* found = std::lower_bound(
      std::begin(kNamedPages), std::end(kNamedPages), key,
      [](const NamedPage& page, std::string_view wanted) { return page.name < wanted; });
  if (found != std::end(kNamedPages) && found->name == key) return found->codePage;

  const int number = readDecimal(canonical);
  for (const LegacyNumber& legacy : kLegacyNumbers) {
    if (legacy.legacy == number) return legacy.codePage;
  }
  return number;
}

const char* platformNameOf(int codePage) {
  return nameIn(kPlatformNames, codePage, "");
}

const char* isoNameOf(int codePage, int legacy) {
  if (legacy != 0) {
    if (codePage == 1363 || codePage == 949) return "KSC5601";
    if (codePage == 943 || codePage == 932) return "Shift-JIS";
  }
  if (codePage == 0) return "";
  return nameIn(kIsoNames, codePage, platformNameOf(codePage));
}

void icuNameOf(int codePage, char* out) {
  const std::string_view platform = platformNameOf(codePage);
  std::string_view icu = platform.substr(0, kCodePageNameSize - 1);
  if (icu == "IBM-943") icu = "IBM-943_P15A-2003";
  if (icu == "IBM-1363") icu = "IBM-1363_P11B-1998";
  std::memcpy(out, icu.data(), icu.size());
  out[icu.size()] = '\0';
}

int processCodePage() {
  const char* codeSet = nl_langinfo(CODESET);
  if (codeSet == nullptr) return 0;
  if (std::strcmp(codeSet, "ANSI_X3.4-1968") == 0) return 367;
  return codePageFromName(codeSet);
}

int defaultTableFor(int codePage) {
  switch (codePage) {
    case 1252:
      return 88591;
    case 950:
      return 1373;
    case 949:
      return 1363;
    case 936:
      return 1386;
    case 932:
      return 943;
    default:
      return codePage;
  }
}

}  // namespace zu::internal
