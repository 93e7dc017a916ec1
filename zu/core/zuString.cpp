#include "zu/core/zuString.h"

#include <cstring>

#include "zu/core/internal/zuShortCopy.h"
#include "zu/core/internal/zuStringBlock.h"
#include "zu/core/internal/zuStringMutex.h"
#include "zu/core/zuAtomStore.h"
#include "zu/core/zuCharConverter.h"
#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/runtime/internal/zuThreadId.h"

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
  text.lengthScope_ = (length << kLengthShift) | eOrdinary;
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
  lengthScope_ = (length << kLengthShift) | scope;
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
    lengthScope_ = (length << kLengthShift) | eLiteral;
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

zuString& zuString::AppendText(const char* text) {
  if (!CopyInPlace(text)) Append(text, static_cast<unsigned int>(std::strlen(text)));
  return *this;
}

// Copies the NUL-terminated `text` after the characters, in one pass that
// also finds its end, when AppendInPlace's conditions hold and the block has
// room for all of it; false, the string unchanged, otherwise. Long appends
// so make no call to measure the text first. The text goes eight bytes at a
// time, as in CopyShortInPlace, while a load stays inside its page and a
// store inside the block (kBlockTailBytes past the capacity), then byte by
// byte.
__attribute__((no_sanitize("address", "thread"))) bool zuString::CopyInPlace(const char* text) {
  char* const chars = chars_;
  const uint32_t lengthScope = lengthScope_;
  if ((lengthScope & kScopeMask) != eOrdinary || chars == nullptr) return false;
  const std::size_t oldLength = lengthScope >> kLengthShift;
  if (text >= chars && text <= chars + oldLength) return false;
  const zuStringData* block = blockOf(chars);
  if (block->refCount != 1) return false;
  // The block has room for `room` more characters and the NUL after them.
  const std::size_t room = block->allocSize - oldLength;
  char* const end = chars + oldLength;
  std::size_t i = 0;
  while (i + kWordBytes <= room + kBlockTailBytes && WordFitsPage(text + i)) {
    uint64_t word;
    std::memcpy(&word, text + i, kWordBytes);
    // The text is at least `length` bytes long (exactly, when the word
    // holds its end).
    const std::size_t length = i + FirstZeroByte(word);
    if (length > room) {
      end[0] = '\0';
      return false;
    }
    std::memcpy(end + i, &word, kWordBytes);
    if (length < i + kWordBytes) {
      lengthScope_ = lengthScope + static_cast<uint32_t>(length << kLengthShift);
      return true;
    }
    i += kWordBytes;
  }
  for (; i <= room; ++i) {
    const char byte = text[i];
    end[i] = byte;
    if (byte == '\0') {
      lengthScope_ = lengthScope + static_cast<uint32_t>(i << kLengthShift);
      return true;
    }
  }
  end[0] = '\0';
  return false;
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
