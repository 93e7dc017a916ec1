#include "zu/core/zuCharConverter.h"

#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <atomic>
#include <cstring>
#include <initializer_list>
#include <new>

#include "zu/core/internal/zuCharClass.h"
#include "zu/core/internal/zuCodePageNames.h"
#include "zu/core/internal/zuConverterCache.h"
#include "zu/core/zuException.h"
#include "zu/core/zuGxCharConverter.h"
#include "zu/core/zuString.h"

namespace {

using zu::internal::zuConverterCache;

std::atomic<const zuCharConverter*> gDefaultOverride{nullptr};

bool isOneOf(int value, std::initializer_list<int> values) {
  for (int candidate : values) {
    if (candidate == value) return true;
  }
  return false;
}

int lineBreak(unsigned int c) {
  return u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_LINE_BREAK);
}

int lineBreakIn(unsigned int c, std::initializer_list<int> classes) {
  return isOneOf(lineBreak(c), classes) ? 1 : 0;
}

int categoryOf(unsigned int c) {
  return u_charType(static_cast<UChar32>(c));
}

}  // namespace

zuCharConverter::zuCharConverter(int codePage) {
  SetCodePage(codePage);
}

zuCharConverter::~zuCharConverter() = default;

void zuCharConverter::SetCodePage(int codePage) {
  codePage_ = codePage;
  // The stored name is the platform name; the full ICU table name is only
  // used when the converter is opened.
  const char* platform = zu::internal::platformNameOf(codePage);
  std::strncpy(codePageName_, platform, sizeof codePageName_ - 1);
  codePageName_[sizeof codePageName_ - 1] = '\0';
  byteOrder_ = eEndianUnknown;
  IsUTF16CodePage(codePage, &byteOrder_);
}

const char* zuCharConverter::PlatformName(int codePage) const {
  return zu::internal::platformNameOf(codePage);
}

void zuCharConverter::CodePageName(const char* name) {
  SetCodePage(ExtractCodePageNum(name));
}

const char* zuCharConverter::ISOCodePage() const {
  return zu::internal::isoNameOf(codePage_, legacyISONames_);
}

zuString zuCharConverter::Canonicalize(const char* name) {
  const unsigned int length = zuString::StringLength(name);
  zuString result;
  // Written into the block directly: the bytes are a name, so a leading
  // FF FE must not be taken for a UTF-16 byte-order mark.
  char* canonical = result.ReAlloc(length + 1, 0);
  result.SetLength(length == 0 ? 0 : zu::internal::canonicalizeName(name, length, canonical));
  return result;
}

int zuCharConverter::ExtractCodePageNum(const char* name) {
  return zu::internal::codePageFromName(name);
}

// --- Class tests ---------------------------------------------------------------

int zuCharConverter::IsUTF32CodePage() const {
  return codePage_ >= 65005 && codePage_ <= 65007;
}

int zuCharConverter::IsDBCSCodePage() const {
  return isOneOf(codePage_,
                 {932, 936, 943, 949, 1363, 1373, 1383, 1386, 2566, 50220, 50222, 50225});
}

int zuCharConverter::IsMBLeadByte(char byte) const {
  const auto value = static_cast<unsigned char>(byte);
  if (IsUTF8CodePage()) return value >= 0xC2 && value <= 0xF4;
  if (!IsDBCSCodePage() && !IsQBCSCodePage()) return 0;
  return zuConverterCache::current().leadBytes(codePage_)[value] ? 1 : 0;
}

int zuCharConverter::IsUTF16CodePage(int codePage, eEndianType* order) {
  if (codePage < 65002 || codePage > 65004) return 0;
  if (order != nullptr) {
    *order = codePage == 65003 ? eEndianBig : codePage == 65004 ? eEndianLittle : eEndianUnknown;
  }
  return 1;
}

int zuCharConverter::IsAnsiCodePage(int codePage) {
  if (codePage >= 1250 && codePage <= 1258) return 1;
  if (codePage >= 5346 && codePage <= 5354) return 1;
  return isOneOf(codePage, {874, 932, 936, 949, 950, 943, 1363, 1373, 1386, 9447});
}

int zuCharConverter::IsOEMCodePage(int codePage) {
  if (codePage >= 860 && codePage <= 866) return 1;
  return isOneOf(codePage, {437, 737, 775, 850, 852, 855, 857, 858, 869});
}

const char* zuCharConverter::IsUTFData(const char* bytes) {
  if (bytes == nullptr) return "";
  if (zuIsUTF8(bytes)) return "UTF-8";
  switch (zuUTF16BOM(bytes)) {
    case eEndianLittle:
      return "UTF-16LE";
    case eEndianBig:
      return "UTF-16BE";
    default:
      return "";
  }
}

// --- Character classes -----------------------------------------------------------

int zuCharConverter::IsSpace(unsigned int c) {
  return zu::internal::isSpaceCodePoint(c);
}
int zuCharConverter::IsUpper(unsigned int c) {
  return zu::internal::isUpperCodePoint(c);
}
int zuCharConverter::IsLower(unsigned int c) {
  return zu::internal::isLowerCodePoint(c);
}
int zuCharConverter::IsDigit(unsigned int c) {
  return zu::internal::isDigitCodePoint(c);
}
int zuCharConverter::IsAlpha(unsigned int c) {
  return zu::internal::isAlphaCodePoint(c);
}
int zuCharConverter::IsAlnum(unsigned int c) {
  return zu::internal::isAlnumCodePoint(c);
}
int zuCharConverter::IsUniSpace(unsigned int c) {
  return zu::internal::isUniSpaceCodePoint(c);
}

int zuCharConverter::IsUniBrkSpace(unsigned int c) {
  return IsUniSpace(c) && lineBreak(c) != U_LB_GLUE;
}

int zuCharConverter::IsXMLLetter(unsigned int c) {
  return isOneOf(categoryOf(c), {U_UPPERCASE_LETTER, U_LOWERCASE_LETTER, U_TITLECASE_LETTER,
                                 U_OTHER_LETTER, U_LETTER_NUMBER});
}

int zuCharConverter::IsIdeo(unsigned int c) {
  return lineBreakIn(c, {U_LB_IDEOGRAPHIC});
}

int zuCharConverter::IsLatin(unsigned int c) {
  if (c < 0x250) return 1;
  UErrorCode status = U_ZERO_ERROR;
  return uscript_getScript(static_cast<UChar32>(c), &status) == USCRIPT_LATIN;
}

int zuCharConverter::IsOkBreakBefore(unsigned int c) {
  return lineBreakIn(c, {U_LB_BREAK_BEFORE, U_LB_BREAK_BOTH, U_LB_IDEOGRAPHIC, U_LB_H2, U_LB_H3,
                         U_LB_CONTINGENT_BREAK});
}

int zuCharConverter::IsOkBreakAfter(unsigned int c) {
  return lineBreakIn(c, {U_LB_BREAK_AFTER, U_LB_BREAK_BOTH, U_LB_HYPHEN, U_LB_SPACE, U_LB_ZWSPACE,
                         U_LB_IDEOGRAPHIC, U_LB_H2, U_LB_H3, U_LB_CONTINGENT_BREAK});
}

int zuCharConverter::IsMandatoryBreak(unsigned int c) {
  return lineBreakIn(c,
                     {U_LB_MANDATORY_BREAK, U_LB_CARRIAGE_RETURN, U_LB_LINE_FEED, U_LB_NEXT_LINE});
}

int zuCharConverter::IsOpenPunct(unsigned int c) {
  return lineBreakIn(c, {U_LB_OPEN_PUNCTUATION});
}

int zuCharConverter::IsClosePunct(unsigned int c) {
  return lineBreakIn(c, {U_LB_CLOSE_PUNCTUATION, U_LB_CLOSE_PARENTHESIS});
}

int zuCharConverter::IsExclamation(unsigned int c) {
  return lineBreakIn(c, {U_LB_EXCLAMATION});
}

int zuCharConverter::IsGlue(unsigned int c) {
  return lineBreakIn(c, {U_LB_GLUE, U_LB_WORD_JOINER});
}

int zuCharConverter::IsNonStarter(unsigned int c) {
  return lineBreakIn(c, {U_LB_NONSTARTER, U_LB_CONDITIONAL_JAPANESE_STARTER});
}

int zuCharConverter::IsNumericInfix(unsigned int c) {
  return lineBreakIn(c, {U_LB_INFIX_NUMERIC});
}

int zuCharConverter::IsAmbiguousQuote(unsigned int c) {
  return lineBreakIn(c, {U_LB_QUOTATION});
}

int zuCharConverter::IsNumericPrefix(unsigned int c) {
  return lineBreakIn(c, {U_LB_PREFIX_NUMERIC});
}

int zuCharConverter::IsNumericPostfix(unsigned int c) {
  return lineBreakIn(c, {U_LB_POSTFIX_NUMERIC});
}

unsigned int zuCharConverter::ToUpper(unsigned int c) {
  const bool lower = (c >= 'a' && c <= 'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7);
  return lower ? c & ~0x20u : c;
}

unsigned int zuCharConverter::ToLower(unsigned int c) {
  const bool upper = (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
  return upper ? c | 0x20u : c;
}

char* zuCharConverter::GetAllocdChar(unsigned int codePoint, unsigned int& bytes) const {
  constexpr unsigned int kTerminator = 4;
  char in[4];
  for (int i = 0; i < 4; ++i) in[i] = static_cast<char>(codePoint >> (8 * i));
  const unsigned int worst = Convert(nullptr, 0, UTF32LE(), in, sizeof in);
  char* out = new (std::nothrow) char[worst + kTerminator];
  if (out == nullptr) throw zuExMemory();
  bytes = Convert(out, worst, UTF32LE(), in, sizeof in);
  std::memset(out + bytes, 0, kTerminator);
  return out;
}

// --- Predefined converters ----------------------------------------------------------

const zuCharConverter* zuCharConverter::UTF8() {
  static const zuGxCharConverter converter(65001);
  return &converter;
}

const zuCharConverter* zuCharConverter::UTF16LE() {
  static const zuGxCharConverter converter(65004);
  return &converter;
}

const zuCharConverter* zuCharConverter::UTF16BE() {
  static const zuGxCharConverter converter(65003);
  return &converter;
}

const zuCharConverter* zuCharConverter::UTF16Host() {
  return UTF16LE();
}

const zuCharConverter* zuCharConverter::UTF32LE() {
  static const zuGxCharConverter converter(65007);
  return &converter;
}

const zuCharConverter* zuCharConverter::UTF32BE() {
  static const zuGxCharConverter converter(65006);
  return &converter;
}

const zuCharConverter* zuCharConverter::UTF32Host() {
  return UTF32LE();
}

const zuCharConverter* zuCharConverter::Default() {
  const zuCharConverter* chosen = gDefaultOverride.load(std::memory_order_acquire);
  if (chosen != nullptr) return chosen;
  static const zuGxCharConverter processDefault;
  return &processDefault;
}

void zuCharConverter::Default(const zuCharConverter* converter) {
  gDefaultOverride.store(converter, std::memory_order_release);
}
