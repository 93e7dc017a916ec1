// zuString's text algorithms: code points, comparison, search, editing,
// character classes and sub-strings. Ownership, assignment and appending
// are in zuString.cpp.
#include "zu/core/zuString.h"

#include <cstring>

#include "zu/core/internal/zuCharClass.h"
#include "zu/core/internal/zuCodePointSet.h"
#include "zu/core/zuCharConverter.h"
#include "zu/core/zuException.h"

namespace {

int foldAscii(unsigned char byte) {
  return byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

// Signed-byte comparison of two texts, optionally with A-Z folded; stops
// after `maxBytes` equal bytes (0: no limit).
int compareBytes(const char* left, unsigned int leftLength, const char* right,
                 unsigned int rightLength, unsigned int maxBytes, int foldCase) {
  const unsigned int common = leftLength < rightLength ? leftLength : rightLength;
  const unsigned int limit = maxBytes != 0 && maxBytes < common ? maxBytes : common;
  for (unsigned int i = 0; i < limit; ++i) {
    int a = static_cast<signed char>(left[i]);
    int b = static_cast<signed char>(right[i]);
    if (foldCase) {
      a = a >= 0 ? foldAscii(static_cast<unsigned char>(a)) : a;
      b = b >= 0 ? foldAscii(static_cast<unsigned char>(b)) : b;
    }
    if (a != b) return a < b ? -1 : 1;
  }
  if ((maxBytes != 0 && limit == maxBytes) || leftLength == rightLength) return 0;
  return leftLength < rightLength ? -1 : 1;
}

}  // namespace

// --- Code points -------------------------------------------------------------------

unsigned int zuString::UniChar(unsigned int& pos) const {
  const unsigned int length = Length();
  if (pos >= length) return 0;
  const unsigned char lead = static_cast<unsigned char>(chars_[pos]);
  if (lead < 0x80) {
    ++pos;
    return lead;
  }
  unsigned int sequence = 0;
  while (sequence < 8 && (lead & (0x80u >> sequence)) != 0) ++sequence;
  if (sequence >= 7) {
    ++pos;
    return 0;
  }
  if (sequence < 2) sequence = 2;
  unsigned int value = lead & (0x7Fu >> sequence);
  for (unsigned int i = 1; i < sequence; ++i) {
    const unsigned int at = pos + i;
    const unsigned int bits = at < length ? static_cast<unsigned char>(chars_[at]) & 0x3Fu : 0;
    value = (value << 6) | bits;
  }
  pos = pos + sequence < length ? pos + sequence : length;
  return value;
}

unsigned int zuString::UniPrev(unsigned int& pos) const {
  if (pos > Length()) pos = Length();
  if (pos == 0) return 0;
  --pos;
  while (pos > 0 && (static_cast<unsigned char>(chars_[pos]) & 0xC0) == 0x80) --pos;
  unsigned int next = pos;
  return UniChar(next);
}

unsigned int zuString::UniLength(unsigned int start, unsigned int length) const {
  ResolveRange(start, length);
  const unsigned int end = start + length;
  unsigned int count = 0;
  for (unsigned int pos = start; pos < end; ++count) UniChar(pos);
  return count;
}

unsigned int zuString::UniAdvance(unsigned int pos, unsigned int count) const {
  for (unsigned int i = 0; i < count; ++i) {
    unsigned int next = pos;
    if (UniChar(next) == 0) break;
    pos = next;
  }
  return pos;
}

void zuString::ReplaceUniChar(const zuString& text, unsigned int uniStart, unsigned int uniCount) {
  const unsigned int start = UniAdvance(0, uniStart);
  const unsigned int end = UniAdvance(start, uniCount);
  Replace(text, start, end - start);
}

void zuString::UTF8Check() const {
  const unsigned int length = Length();
  for (unsigned int pos = 0; pos < length;) UniChar(pos);
}

// --- Comparison --------------------------------------------------------------------

int zuString::Equals(const zuString& other) const {
  if (chars_ == nullptr || other.chars_ == nullptr) return chars_ == other.chars_;
  return CompareCase(other) == 0;
}

int zuString::Equals(const char* text) const {
  if (chars_ == nullptr || text == nullptr) return chars_ == nullptr && text == nullptr;
  return CompareCase(text) == 0;
}

int zuString::CompareCase(const zuString& other) const {
  if (Length() == 0) return other.Length() == 0 ? 0 : -1;
  return compareBytes(chars_, Length(), other.chars_, other.Length(), 0, 0);
}

int zuString::CompareCase(const char* text, unsigned int maxBytes) const {
  const unsigned int textLength = StringLength(text);
  if (Length() == 0) return textLength == 0 ? 0 : -1;
  return compareBytes(chars_, Length(), text, textLength, maxBytes, 0);
}

int zuString::CompareNoCase(const zuString& other) const {
  if (Length() == 0) return other.Length() == 0 ? 0 : -1;
  return compareBytes(chars_, Length(), other.chars_, other.Length(), 0, 1);
}

int zuString::CompareNoCase(const char* text, unsigned int maxBytes) const {
  const unsigned int textLength = StringLength(text);
  if (Length() == 0) return textLength == 0 ? 0 : -1;
  return compareBytes(chars_, Length(), text, textLength, maxBytes, 1);
}

int zuString::CompareCollate(const zuString& other) const {
  if (Length() == 0 || other.Length() == 0) {
    if (Length() == other.Length()) return 0;
    return Length() == 0 ? -1 : 1;
  }
  const int result = std::strcoll(chars_, other.chars_);
  return result < 0 ? -1 : (result > 0 ? 1 : 0);
}

// --- Search ------------------------------------------------------------------------

int zuString::Find(const char* text, unsigned int textLength, unsigned int& foundAt,
                   unsigned int start, int foldCase) const {
  const unsigned int length = Length();
  foundAt = length;
  if (textLength > length || start > length - textLength) return 0;
  if (textLength == 0) {
    foundAt = start;
    return 1;
  }
  const unsigned int last = length - textLength;
  if (!foldCase) {
    const char first = text[0];
    const char* cursor = chars_ + start;
    const char* const end = chars_ + last + 1;
    while (cursor < end) {
      const void* hit = std::memchr(cursor, first, static_cast<size_t>(end - cursor));
      if (hit == nullptr) return 0;
      const char* candidate = static_cast<const char*>(hit);
      if (std::memcmp(candidate + 1, text + 1, textLength - 1) == 0) {
        foundAt = static_cast<unsigned int>(candidate - chars_);
        return 1;
      }
      cursor = candidate + 1;
    }
    return 0;
  }
  for (unsigned int at = start; at <= last; ++at) {
    if (compareBytes(chars_ + at, textLength, text, textLength, 0, 1) == 0) {
      foundAt = at;
      return 1;
    }
  }
  return 0;
}

int zuString::FindCase(const zuString& text, unsigned int& foundAt, unsigned int start) const {
  return Find(text, text.Length(), foundAt, start, 0);
}

int zuString::FindCase(const char* text, unsigned int& foundAt, unsigned int start) const {
  return Find(text != nullptr ? text : kEmptyText, StringLength(text), foundAt, start, 0);
}

int zuString::FindNoCase(const zuString& text, unsigned int& foundAt, unsigned int start) const {
  return Find(text, text.Length(), foundAt, start, 1);
}

int zuString::FindNoCase(const char* text, unsigned int& foundAt, unsigned int start) const {
  return Find(text != nullptr ? text : kEmptyText, StringLength(text), foundAt, start, 1);
}

int zuString::CharInString(char byte) const {
  unsigned int foundAt = 0;
  return CharInString(byte, foundAt, 0);
}

int zuString::CharInString(char byte, unsigned int& foundAt, unsigned int start) const {
  const unsigned int length = Length();
  foundAt = length;
  if (start >= length) return 0;
  const void* hit = std::memchr(chars_ + start, byte, length - start);
  if (hit == nullptr) return 0;
  foundAt = static_cast<unsigned int>(static_cast<const char*>(hit) - chars_);
  return 1;
}

unsigned int zuString::SkipWhile(const zuString& set, unsigned int start, int inSet) const {
  const unsigned int length = Length();
  if (start >= length) return 0;
  unsigned int pos = start;
  while (pos < length) {
    unsigned int next = pos;
    if (zu::internal::codePointSetContains(set, UniChar(next)) != inSet) break;
    pos = next;
  }
  return pos - start;
}

unsigned int zuString::SkipOver(const zuString& set, unsigned int start) const {
  return SkipWhile(set, start, 1);
}

unsigned int zuString::SkipUntil(const zuString& set, unsigned int start) const {
  return SkipWhile(set, start, 0);
}

int zuString::GetToken(const zuString& delimiters, zuString& token, unsigned int& pos,
                       unsigned int threadId) const {
  token.Empty();
  if (pos > Length()) pos = Length();
  pos += SkipOver(delimiters, pos);
  if (pos >= Length()) return 0;
  const unsigned int tokenLength = SkipUntil(delimiters, pos);
  token = Substring(pos, tokenLength, threadId);
  pos += tokenLength;
  return 1;
}

int zuString::ParseToken(zuString& token) {
  token.Empty();
  const zuString& white = WhiteSpace();
  const unsigned int length = Length();
  unsigned int pos = SkipOver(white, 0);
  const unsigned int tokenStart = pos;
  while (pos < length) {
    unsigned int next = pos;
    const unsigned int codePoint = UniChar(next);
    if (codePoint == '\\' && next < length) {
      pos = next;
      UniChar(next);
    } else if (zu::internal::codePointSetContains(white, codePoint)) {
      break;
    }
    token.Append(chars_ + pos, next - pos);
    pos = next;
  }
  Swallow(0, pos);
  return pos > tokenStart;
}

// --- Editing -----------------------------------------------------------------------

void zuString::Replace(const zuString& text, unsigned int start, unsigned int length) {
  ResolveRange(start, length);
  const unsigned int oldLength = Length();
  const unsigned int textLength = text.Length();
  if (length == 0 && textLength == 0) return;
  if (textLength > kMaxLength - (oldLength - length)) throw zuExMemory();
  const unsigned int newLength = oldLength - length + textLength;
  // Replacing with the string's own text: keep the old block for the source.
  // Holding the text keeps its block alive when it is this string's own.
  const zuString source(text);
  if (newLength == 0) {
    Empty();
    return;
  }
  char* chars = Reserve(newLength > oldLength ? newLength : oldLength);
  std::memmove(chars + start + textLength, chars + start + length, oldLength - start - length);
  if (textLength != 0) std::memcpy(chars + start, source.chars_, textLength);
  SetLengthBits(newLength);
  chars[newLength] = '\0';
}

void zuString::ReplaceAll(const zuString& from, const zuString& to) {
  const unsigned int fromLength = from.Length();
  if (fromLength == 0) return;
  const zuString source(*this);
  unsigned int matches = 0;
  for (unsigned int pos = 0, at = 0; source.FindCase(from, at, pos); pos = at + fromLength) {
    ++matches;
  }
  if (matches == 0) return;
  const unsigned long long newLength =
      source.Length() + static_cast<unsigned long long>(matches) * (to.Length() + 0ull) -
      static_cast<unsigned long long>(matches) * fromLength;
  if (newLength > kMaxLength) throw zuExMemory();
  zuString result;
  result.ReAlloc(static_cast<unsigned int>(newLength == 0 ? 1 : newLength), 0, 0);
  unsigned int copied = 0;
  for (unsigned int pos = 0, at = 0; source.FindCase(from, at, pos); pos = at + fromLength) {
    result.Append(source.chars_ + copied, at - copied);
    result.Append(to.chars_, to.Length());
    copied = at + fromLength;
  }
  result.Append(source.chars_ + copied, source.Length() - copied);
  if (IsGlobal()) {
    CopyBytes(result.chars_, result.Length(), 0);
  } else {
    *this = result;
  }
}

void zuString::Swallow(unsigned int start, unsigned int length) {
  if (Length() == 0 || length == 0) return;
  Replace(EmptyString(), start, length);
}

void zuString::Truncate(unsigned int length) {
  if (length >= Length()) return;
  if (length == 0) {
    Empty();
    return;
  }
  Reserve(Length());
  SetLengthBits(length);
  chars_[length] = '\0';
}

void zuString::Trim() {
  unsigned int end = Length();
  while (end > 0 && zu::internal::isSpaceCodePoint(static_cast<unsigned char>(chars_[end - 1]))) {
    --end;
  }
  Truncate(end);
}

void zuString::TrimStart() {
  const unsigned int length = Length();
  unsigned int start = 0;
  while (start < length &&
         zu::internal::isSpaceCodePoint(static_cast<unsigned char>(chars_[start]))) {
    ++start;
  }
  Swallow(0, start);
}

void zuString::CaseRange(unsigned int start, unsigned int length, int upper) {
  ResolveRange(start, length);
  // UTF-8 lead and continuation bytes are all >= 0x80, so a byte below 0x80
  // is always a whole code point.
  for (unsigned int i = start; i < start + length; ++i) {
    const unsigned char byte = static_cast<unsigned char>(chars_[i]);
    const unsigned int mapped =
        upper ? zu::internal::toUpperAscii(byte) : zu::internal::toLowerAscii(byte);
    if (mapped != byte) Reserve(Length())[i] = static_cast<char>(mapped);
  }
}

void zuString::ToUpper(unsigned int start, unsigned int length) {
  CaseRange(start, length, 1);
}

void zuString::ToLower(unsigned int start, unsigned int length) {
  CaseRange(start, length, 0);
}

// --- Character classes -------------------------------------------------------------

int zuString::ClassRange(unsigned int start, unsigned int length, int (*test)(unsigned int)) const {
  ResolveRange(start, length);
  if (length == 0) return 0;
  const unsigned int end = start + length;
  for (unsigned int pos = start; pos < end;) {
    if (!test(UniChar(pos))) return 0;
  }
  return 1;
}

int zuString::IsDigit(unsigned int start, unsigned int length) const {
  return ClassRange(start, length, zu::internal::isDigitCodePoint);
}

int zuString::IsLower(unsigned int start, unsigned int length) const {
  return ClassRange(start, length, zu::internal::isLowerCodePoint);
}

int zuString::IsUpper(unsigned int start, unsigned int length) const {
  return ClassRange(start, length, zu::internal::isUpperCodePoint);
}

int zuString::IsAlnum(unsigned int start, unsigned int length) const {
  return ClassRange(start, length, zu::internal::isAlnumCodePoint);
}

int zuString::IsAlpha(unsigned int start, unsigned int length) const {
  return ClassRange(start, length, zu::internal::isAlphaCodePoint);
}

int zuString::IsSpace(unsigned int start, unsigned int length) const {
  return ClassRange(start, length, zu::internal::isSpaceCodePoint);
}

// --- Sub-strings -------------------------------------------------------------------

zuString zuString::Substring(unsigned int start, unsigned int length, unsigned int threadId) const {
  ResolveRange(start, length);
  if (length == 0) return EmptyString();
  zuString part;
  part.CopyBytes(chars_ + start, length, threadId);
  return part;
}

zuString zuString::operator()(unsigned int start, unsigned int length) const {
  return Substring(start, length, 0);
}

// --- Out of the string -------------------------------------------------------------

char16_t* zuString::GetAllocdZuChar() const {
  const unsigned int length = Length();
  char16_t* units = new char16_t[length + 1];
  const unsigned int count =
      length != 0 ? static_cast<unsigned int>(zuUTF8toUTF16(units, length, chars_, length)) : 0;
  units[count] = 0;
  return units;
}

// --- Comparison operators ----------------------------------------------------------

bool operator==(const zuString& left, const zuString& right) {
  return left.Equals(right);
}
bool operator==(const zuString& left, const char* right) {
  return left.Equals(right);
}
bool operator==(const char* left, const zuString& right) {
  return right.Equals(left);
}
bool operator!=(const zuString& left, const zuString& right) {
  return !left.Equals(right);
}
bool operator!=(const zuString& left, const char* right) {
  return !left.Equals(right);
}
bool operator!=(const char* left, const zuString& right) {
  return !right.Equals(left);
}
bool operator<(const zuString& left, const zuString& right) {
  return left.CompareCase(right) < 0;
}
bool operator<(const zuString& left, const char* right) {
  return left.CompareCase(right) < 0;
}
bool operator<(const char* left, const zuString& right) {
  return right.CompareCase(left) > 0;
}
bool operator<=(const zuString& left, const zuString& right) {
  return left.CompareCase(right) <= 0;
}
bool operator<=(const zuString& left, const char* right) {
  return left.CompareCase(right) <= 0;
}
bool operator<=(const char* left, const zuString& right) {
  return right.CompareCase(left) >= 0;
}
bool operator>(const zuString& left, const zuString& right) {
  return left.CompareCase(right) > 0;
}
bool operator>(const zuString& left, const char* right) {
  return left.CompareCase(right) > 0;
}
bool operator>(const char* left, const zuString& right) {
  return right.CompareCase(left) < 0;
}
bool operator>=(const zuString& left, const zuString& right) {
  return left.CompareCase(right) >= 0;
}
bool operator>=(const zuString& left, const char* right) {
  return left.CompareCase(right) >= 0;
}
bool operator>=(const char* left, const zuString& right) {
  return right.CompareCase(left) <= 0;
}
