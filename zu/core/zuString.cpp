#include "zu/core/zuString.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "zu/core/internal/zuCharClass.h"
#include "zu/core/internal/zuCodePointSet.h"
#include "zu/core/internal/zuShortCopy.h"
#include "zu/core/internal/zuStringBlock.h"
#include "zu/core/internal/zuStringMutex.h"
#include "zu/core/zuAtomStore.h"
#include "zu/core/zuCharConverter.h"
#include "zu/core/zuException.h"
#include "zu/core/zuUnicode.h"
#include "zu/runtime/internal/zuThreadId.h"
#include "zu/core/zuMessageIds.h"

using zu::internal::zuStringData;

namespace {

// Room for one code point in the widest (6-byte) UTF-8 form and a NUL.
constexpr unsigned int kCodePointBytes = 7;
// The widest UTF-8 form a UTF-16 unit can need, counted generously.
constexpr unsigned int kUTF8BytesPerUTF16Unit = 6;

zuStringData* blockOf(char* chars) {
  return zuStringData::fromChars(chars);
}

int isUTF8Mark(const char* text, unsigned int length) {
  return length >= 3 && static_cast<unsigned char>(text[0]) == 0xEF &&
         static_cast<unsigned char>(text[1]) == 0xBB && static_cast<unsigned char>(text[2]) == 0xBF;
}

// 1 for a big-endian UTF-16 mark (FE FF), 2 for little-endian (FF FE), else 0.
int utf16Mark(const char* text, unsigned int length) {
  if (length < 2) return 0;
  const unsigned char first = static_cast<unsigned char>(text[0]);
  const unsigned char second = static_cast<unsigned char>(text[1]);
  if (first == 0xFE && second == 0xFF) return 1;
  if (first == 0xFF && second == 0xFE) return 2;
  return 0;
}

unsigned int utf16Length(const char16_t* text) {
  unsigned int units = 0;
  while (text[units] != 0) ++units;
  return units;
}

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

const char zuString::kEmptyText[1] = {'\0'};

// --- Construction --------------------------------------------------------------

void zuString::CopyGlobal(const zuString& other) {
  lengthScope_ = eDefault;
  chars_ = nullptr;
  *this = other;
}

zuString::zuString(const zuString& other, unsigned int length)
    : lengthScope_(eDefault), chars_(nullptr) {
  if (other.chars_ == nullptr) return;
  CopyBytes(other.chars_, length < other.Length() ? length : other.Length(), other.GetThreadId());
}

zuString zuString::FromBytes(const char* bytes, unsigned int length) {
  zuString text;
  if (length == 0) {
    text.SetLiteral(kEmptyText, 0);
    return text;
  }
  if (length > kMaxLength) throw zuExMemory();
  zuStringData* block = zu::internal::allocateStringBlock(length, 0);
  zu::internal::copyShort(block->chars(), bytes, length);
  text.chars_ = block->chars();
  text.chars_[length] = '\0';
  text.lengthScope_ = (length << 2) | eOrdinary;
  return text;
}

zuString::zuString(const char* text) : lengthScope_(eDefault), chars_(nullptr) {
  if (text != nullptr) Assign(text, StringLength(text), 0, 0);
}

zuString::zuString(const char* text, unsigned int length, unsigned int threadId)
    : lengthScope_(eDefault), chars_(nullptr) {
  if (text != nullptr) Assign(text, length, 0, threadId);
}

zuString::zuString(int literal, const char* text) : lengthScope_(eDefault), chars_(nullptr) {
  if (text != nullptr) Assign(text, StringLength(text), literal, 0);
}

zuString::zuString(const zuAtomStore* atom) : lengthScope_(eDefault), chars_(nullptr) {
  if (atom == nullptr || atom->text == nullptr) return;
  const unsigned int length = StringLength(atom->text);
  SetLiteral(atom->text, length < kMaxLength ? length : kMaxLength);
}

zuString::zuString(const unsigned int* ucs4, unsigned int count)
    : lengthScope_(eDefault), chars_(nullptr) {
  if (ucs4 == nullptr) return;
  SetEmptyText();
  for (unsigned int i = 0; i < count; ++i) *this += ucs4[i];
}

zuString::zuString(const char16_t* utf16) : lengthScope_(eDefault), chars_(nullptr) {
  *this = utf16;
}

void zuString::FreeOrdinaryBlock(char* chars) {
  zu::internal::releaseStringBlock(blockOf(chars));
}

// --- Sharing and blocks --------------------------------------------------------

int zuString::OwnsBlock() const {
  return chars_ != nullptr && (ScopeType() == eOrdinary || ScopeType() == eGlobal);
}

void zuString::ShareFrom(const zuString& other) {
  chars_ = other.chars_;
  lengthScope_ = other.lengthScope_;
  if (OwnsBlock()) {
    if (IsGlobal()) {
      std::lock_guard<std::recursive_mutex> lock(zu::internal::stringMutex());
      ++blockOf(chars_)->refCount;
    } else {
      ++blockOf(chars_)->refCount;
    }
  }
}

void zuString::ReleaseData() {
  if (chars_ != nullptr) {
    zuStringData* block = blockOf(chars_);
    switch (ScopeType()) {
      case eOrdinary:
        if (--block->refCount == 0) zu::internal::releaseStringBlock(block);
        break;
      case eGlobal: {
        std::lock_guard<std::recursive_mutex> lock(zu::internal::stringMutex());
        if (--block->refCount == 0) zu::internal::releaseHeapStringBlock(block);
        break;
      }
      default:
        SetScope(eDefault);
        break;
    }
  } else if (IsLiteral()) {
    SetScope(eDefault);
  }
  chars_ = nullptr;
}

int zuString::IsPrivateBlock() const {
  if (!OwnsBlock()) return 0;
  if (IsGlobal()) {
    std::lock_guard<std::recursive_mutex> lock(zu::internal::stringMutex());
    return blockOf(chars_)->refCount == 1;
  }
  return blockOf(chars_)->refCount == 1;
}

zuStringData* zuString::NewBlock(unsigned int request, unsigned int threadId) const {
  if (IsGlobal()) return zu::internal::allocateHeapStringBlock(request);
  return zu::internal::allocateStringBlock(request, threadId);
}

void zuString::Adopt(zuStringData* block, unsigned int length) {
  const unsigned int scope = IsGlobal() ? eGlobal : eOrdinary;
  ReleaseData();
  chars_ = block->chars();
  chars_[length] = '\0';
  lengthScope_ = (length << 2) | scope;
}

void zuString::CopyBytes(const char* text, unsigned int length, unsigned int threadId) {
  if (length > kMaxLength) throw zuExMemory();
  if (IsPrivateBlock() && blockOf(chars_)->allocSize >= length) {
    std::memmove(chars_, text, length);
    SetLengthBits(length);
    chars_[length] = '\0';
    return;
  }
  zuStringData* block = NewBlock(length, threadId);
  std::memcpy(block->chars(), text, length);
  Adopt(block, length);
}

void zuString::SetLiteral(const char* text, unsigned int length) {
  ReleaseData();
  if (length == 0) {
    chars_ = const_cast<char*>(kEmptyText);
    lengthScope_ = eDefault;
  } else {
    chars_ = const_cast<char*>(text);
    lengthScope_ = (length << 2) | eLiteral;
  }
}

void zuString::SetEmptyText() {
  if (IsGlobal()) {
    // A global string stays global: it keeps an empty heap block.
    CopyBytes(kEmptyText, 0, 0);
  } else {
    SetLiteral(kEmptyText, 0);
  }
}

void zuString::PreEdit() {
  if (IsLiteral() && chars_ != nullptr && Length() != 0) {
    SetScope(eOrdinary);
    const char* literal = chars_;
    chars_ = nullptr;
    CopyBytes(literal, Length(), 0);
  }
}

char* zuString::ReAlloc(unsigned int size, int keep, unsigned int threadId) {
  if (size == 0) {
    ReleaseData();
    SetLengthBits(0);
    return nullptr;
  }
  if (size > kMaxLength) throw zuExMemory();
  if (IsPrivateBlock() && blockOf(chars_)->allocSize >= size) return chars_;
  const unsigned int length = chars_ != nullptr ? Length() : 0;
  zuStringData* block = NewBlock(size > length ? size : length, threadId);
  const unsigned int kept = keep ? (length < size ? length : size) : 0;
  if (kept != 0) std::memcpy(block->chars(), chars_, kept);
  Adopt(block, kept);
  return chars_;
}

char* zuString::Reserve(unsigned int size) {
  PreEdit();
  return ReAlloc(size == 0 ? 1 : size, 1, 0);
}

void zuString::SetNull(int setNull) {
  if (setNull) {
    ReleaseData();
    SetLengthBits(0);
  } else {
    Empty();
  }
}

void zuString::Empty() {
  if (IsPrivateBlock()) {
    SetLengthBits(0);
    chars_[0] = '\0';
  } else {
    SetEmptyText();
  }
}

void zuString::SetLength(unsigned int length) {
  if (IsPrivateBlock()) {
    const unsigned int capacity = blockOf(chars_)->allocSize;
    if (length > capacity) length = capacity;
  } else if (length > Length()) {
    length = Length();
  }
  if (length == Length()) return;
  Reserve(Length());
  SetLengthBits(length);
  chars_[length] = '\0';
}

// --- Assignment ------------------------------------------------------------------

void zuString::Assign(const char* text, unsigned int length, int literal, unsigned int threadId) {
  if (isUTF8Mark(text, length)) {
    text += 3;
    length -= 3;
  } else if (const int mark = utf16Mark(text, length)) {
    AssignMarkedUTF16(text + 2, (length - 2) / 2, mark == 1, threadId);
    return;
  }
  if (literal && !IsGlobal()) {
    SetLiteral(text, length);
    return;
  }
  const void* nul = std::memchr(text, 0, length);
  if (nul != nullptr) length = static_cast<unsigned int>(static_cast<const char*>(nul) - text);
  if (length == 0) {
    SetEmptyText();
  } else {
    CopyBytes(text, length, threadId);
  }
}

void zuString::AssignMarkedUTF16(const char* bytes, unsigned int units, int bigEndian,
                                 unsigned int threadId) {
  const zuCharConverter* from = bigEndian ? zuCharConverter::UTF16BE() : zuCharConverter::UTF16LE();
  AssignConverted(bytes, 2 * units, *from, kUTF8BytesPerUTF16Unit * units, threadId);
}

void zuString::AssignUTF16(const char16_t* utf16, unsigned int units, unsigned int threadId) {
  const unsigned long long worst = 6ull * units;
  if (worst > kMaxLength) throw zuExMemory();
  zuStringData* block = NewBlock(static_cast<unsigned int>(worst), threadId);
  const unsigned int length = static_cast<unsigned int>(
      zuUTF16toUTF8(block->chars(), static_cast<unsigned int>(worst), utf16, units));
  Adopt(block, length);
}

zuString& zuString::AssignSlow(const zuString& other) {
  if (other.chars_ == nullptr) {
    const int global = IsGlobal() || other.IsGlobal();
    ReleaseData();
    SetLengthBits(0);
    if (global) SetScope(eGlobal);
    return *this;
  }
  if (this == &other || chars_ == other.chars_) return *this;
  if (!IsGlobal() && !other.IsGlobal()) {
    ReleaseData();
    ShareFrom(other);
    return *this;
  }
  std::lock_guard<std::recursive_mutex> lock(zu::internal::stringMutex());
  if (IsGlobal() && !other.IsGlobal()) {
    CopyBytes(other.chars_, other.Length(), 0);
  } else {
    ReleaseData();
    ShareFrom(other);
  }
  return *this;
}

zuString& zuString::operator=(const char* text) {
  if (text == nullptr) {
    ReleaseData();
    SetLengthBits(0);
    return *this;
  }
  const unsigned int length = StringLength(text);
  if (utf16Mark(text, length) != 0) ZuExThrow(zuMessageIds::kInvalidArgument);
  if (length == 0) {
    SetEmptyText();
  } else {
    Assign(text, length, 0, 0);
  }
  return *this;
}

zuString& zuString::operator=(char byte) {
  if (byte == '\0') {
    SetEmptyText();
  } else {
    CopyBytes(&byte, 1, 0);
  }
  return *this;
}

zuString& zuString::operator=(unsigned int codePoint) {
  if (codePoint == 0) {
    SetEmptyText();
    return *this;
  }
  char bytes[kCodePointBytes];
  CopyBytes(bytes, static_cast<unsigned int>(zuUCStoUTF8(bytes, codePoint)), 0);
  return *this;
}

zuString& zuString::operator=(const char16_t* utf16) {
  if (utf16 == nullptr) {
    ReleaseData();
    SetLengthBits(0);
  } else if (utf16[0] == 0) {
    SetEmptyText();
  } else {
    AssignUTF16(utf16, utf16Length(utf16), 0);
  }
  return *this;
}

// --- Appending -------------------------------------------------------------------

void zuString::Append(const char* text, unsigned int length) {
  if (length == 0 || AppendInPlace(text, length)) return;
  const unsigned int oldLength = Length();
  if (length > kMaxLength - oldLength) throw zuExMemory();
  if (ScopeType() == eOrdinary && chars_ != nullptr && BlockCount(chars_) == 1 &&
      (text < chars_ || text > chars_ + oldLength)) {
    // The string's own block is too small: move into a bigger one.
    const unsigned int newLength = oldLength + length;
    zuStringData* block = zu::internal::allocateStringBlock(newLength, 0);
    char* chars = block->chars();
    std::memcpy(chars, chars_, oldLength);
    std::memcpy(chars + oldLength, text, length);
    chars[newLength] = '\0';
    zu::internal::releaseStringBlock(blockOf(chars_));
    chars_ = chars;
    SetLengthBits(newLength);
    return;
  }
  // Appending the string's own text: keep the old block alive while growing.
  zuString keepAlive;
  if (OwnsBlock() && text >= chars_ && text <= chars_ + oldLength) keepAlive = *this;
  Reserve(oldLength + length);
  std::memcpy(chars_ + oldLength, text, length);
  SetLengthBits(oldLength + length);
  chars_[oldLength + length] = '\0';
}

zuString& zuString::operator+=(const zuString& other) {
  if (chars_ == nullptr && !other.IsNull() && !IsGlobal()) return *this = other;
  Append(other.chars_, other.Length());
  return *this;
}

zuString& zuString::AppendByte(char byte) {
  if (byte != '\0') Append(&byte, 1);
  return *this;
}

zuString& zuString::operator+=(unsigned int codePoint) {
  if (codePoint == 0) return *this;
  char bytes[kCodePointBytes];
  Append(bytes, static_cast<unsigned int>(zuUCStoUTF8(bytes, codePoint)));
  return *this;
}

zuString& zuString::operator+=(const char16_t* utf16) {
  if (utf16 == nullptr) return *this;
  zuString tail;
  tail.AssignUTF16(utf16, utf16Length(utf16), 0);
  Append(tail.chars_, tail.Length());
  return *this;
}

// --- Access ------------------------------------------------------------------------

char zuString::LastChar() const {
  return Length() != 0 ? chars_[Length() - 1] : '\0';
}

void zuString::Char(char byte, unsigned int index) {
  Set(index, byte);
}

void zuString::Set(unsigned int index, char byte) {
  if (index >= Length()) return;
  Reserve(Length())[index] = byte;
}

unsigned int zuString::AllocSize() const {
  return OwnsBlock() ? blockOf(chars_)->allocSize : 0;
}

unsigned int zuString::GetThreadId() const {
  if (!OwnsBlock() || IsGlobal()) return 0;
  zuStringData* block = blockOf(chars_);
  if (block->threadId == 0) block->threadId = zu::internal::currentThreadId();
  return block->threadId;
}

void zuString::ResolveRange(unsigned int& start, unsigned int& length) const {
  const unsigned int total = Length();
  if (start > total) start = total;
  if (length > total - start) length = total - start;
}

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

// --- Static ------------------------------------------------------------------------

unsigned int zuString::StringLength(const char* text) {
  return text != nullptr ? static_cast<unsigned int>(std::strlen(text)) : 0;
}

#define ZU_CONSTANT_STRING(Name, Text)       \
  const zuString& zuString::Name() {         \
    static const zuString constant(1, Text); \
    return constant;                         \
  }

ZU_CONSTANT_STRING(EmptyString, "")
ZU_CONSTANT_STRING(SpaceString, " ")
ZU_CONSTANT_STRING(EqualsString, "=")
ZU_CONSTANT_STRING(QuoteString, "'")
ZU_CONSTANT_STRING(DQuoteString, "\"")
ZU_CONSTANT_STRING(OneString, "1")
ZU_CONSTANT_STRING(TwoString, "2")
ZU_CONSTANT_STRING(NegOneString, "-1")
ZU_CONSTANT_STRING(ZeroString, "0")
ZU_CONSTANT_STRING(AmpString, "&")
ZU_CONSTANT_STRING(SemiColonString, ";")
// Tab, LF, VT, FF, CR, space, U+00A0, U+2000..U+200B, U+3000, U+FEFF.
ZU_CONSTANT_STRING(WhiteSpace,
                   "\t\n\v\f\r \xC2\xA0"
                   "\xE2\x80\x80\xE2\x80\x81\xE2\x80\x82\xE2\x80\x83\xE2\x80\x84\xE2\x80\x85"
                   "\xE2\x80\x86\xE2\x80\x87\xE2\x80\x88\xE2\x80\x89\xE2\x80\x8A\xE2\x80\x8B"
                   "\xE3\x80\x80\xEF\xBB\xBF")

#undef ZU_CONSTANT_STRING

// --- Free operators ----------------------------------------------------------------

zuString operator+(const zuString& left, const zuString& right) {
  zuString result(left);
  result += right;
  return result;
}

zuString operator+(const zuString& left, const char* right) {
  zuString result(left);
  result += right;
  return result;
}

zuString operator+(const char* left, const zuString& right) {
  zuString result(left);
  result += right;
  return result;
}

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
