// zuString: the library's one text type, UTF-8 in a shared copy-on-write block.
//
// A string is two words: a 32-bit word holding the length in bytes (bits
// 31..2) and the scope (bits 1..0), and a pointer to NUL-terminated UTF-8.
// Copies share the block and count it; the first edit makes a private copy.
// Every position and length counts bytes; only members whose names contain
// "Uni" count code points. Positions and ranges out of bounds are clamped,
// never rejected, and reads past the end give 0.
//
//   zuString name("caf\xC3\xA9");            // 5 bytes, 4 code points
//   zuString copy = name;                    // shares the block
//   copy += " au lait";                      // now has a block of its own
//   unsigned int pos = 3;
//   unsigned int eAcute = name.UniChar(pos); // 0xE9, pos is now 5
//
// Scopes: an ordinary string (scope 0) belongs to the thread that made it and
// counts its block without a lock; a global string (zuThreadSafeString, scope
// 2) takes the library-wide string mutex on every share and release; a
// literal (zuLiteral, scope 1) points at the caller's constant bytes; scope 3
// is the empty default state. Only global strings may cross threads.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "zu/core/zuExport.h"
#include "zu/core/zuStringData.h"

struct zuAtomStore;
class zuCharConverter;

// The context toXML escapes for.
enum zuToXMLType {
  zuXMLText = 0,             // element content
  zuXMLAttributeDQuote = 1,  // attribute value in double quotes
  zuXMLAttributeSQuote = 2   // attribute value in single quotes
};

static_assert(std::endian::native == std::endian::little,
              "zuString's byte append stores a byte and its NUL as one little-endian word");

class ZU_EXPORT zuString {
 public:
  // The two scope bits of the length-and-scope word.
  enum zuStringScopeType {
    eOrdinary = 0,  // block from the owning thread's cache, counted without a lock
    eLiteral = 1,   // the caller's constant bytes, never freed
    eGlobal = 2,    // heap block, shared and released under the string mutex
    eDefault = 3    // the empty default state; behaves as a literal
  };

  // The largest length a string can hold (the length has 30 bits).
  static constexpr unsigned int kMaxLength = (1u << 30) - 1;

  // --- Construction ---------------------------------------------------------
  // Every constructor starts from the empty default state (scope 3, null).
  // Constructors that copy bytes throw zuExMemory when no block can be had.

  // A null string.
  zuString() : lengthScope_(eDefault), chars_(nullptr) {}
  // Shares `other`'s block (a global source is copied by assignment).
  // Inline: sharing an ordinary block is one count increment.
  zuString(const zuString& other) : lengthScope_(other.lengthScope_), chars_(other.chars_) {
    const uint32_t scope = lengthScope_ & kScopeMask;
    if (scope == eOrdinary) {
      if (chars_ != nullptr) ++BlockCount(chars_);
    } else if (scope == eGlobal) {
      CopyGlobal(other);
    }
  }
  // A private copy of the first `length` bytes of `other` (clamped), in a
  // block of the source's owner thread.
  zuString(const zuString& other, unsigned int length);
  // A copy of the NUL-terminated text; null gives a null string, "" the
  // shared empty text. A leading UTF-8 byte-order mark is dropped; a leading
  // UTF-16 mark (FF FE or FE FF) converts the bytes from UTF-16.
  zuString(const char* text);
  // A copy of at most `length` bytes (stopping at a NUL) for thread
  // `threadId` (0: the calling thread); byte-order marks as above.
  zuString(const char* text, unsigned int length, unsigned int threadId = 0);
  // With `literal` non-zero: points at `text` without copying (the bytes must
  // outlive the string); otherwise a copy.
  zuString(int literal, const char* text);
  // A literal over the atom's text, without a copy; a null atom (or text)
  // gives a null string.
  explicit zuString(const zuAtomStore* atom);
  // The text of message `messageId` from the message catalogue (see
  // LoadResource); a null string when no catalogue has it.
  explicit zuString(unsigned short messageId);
  // The UTF-8 form of `count` code points.
  zuString(const unsigned int* ucs4, unsigned int count);
  // The UTF-8 form of NUL-terminated UTF-16 text in host byte order.
  zuString(const char16_t* utf16);
  // Text in `converter`'s encoding (null: zuCharConverter::Default())
  // converted to UTF-8, in a block of thread `threadId` (0: the calling
  // thread). The first form reads up to the encoding's terminator (a 0 unit
  // of 2 bytes for UTF-16, of 4 for UTF-32, else a NUL byte); the second
  // converts `length` bytes. UTF-8 text is taken as the byte constructors
  // take it. Text the converter cannot read gives the empty text.
  zuString(const char* text, const zuCharConverter* converter, unsigned int threadId = 0);
  zuString(const char* text, unsigned int length, const zuCharConverter* converter,
           unsigned int threadId = 0);
  // Exactly the `length` bytes at `bytes`, NULs and a leading byte-order
  // mark included (the byte constructors act on those), in a block of the
  // calling thread; no bytes give the shared empty text. For text a caller
  // has just written into a buffer of its own. Throws zuExMemory.
  static zuString FromBytes(const char* bytes, unsigned int length);

  // Releases the block.
  ~zuString() {
    const uint32_t scope = lengthScope_ & kScopeMask;
    if (scope == eOrdinary) {
      if (chars_ != nullptr && --BlockCount(chars_) == 0) FreeOrdinaryBlock(chars_);
    } else if (scope == eGlobal) {
      ReleaseData();
    }
  }

  // --- Assignment and appending ---------------------------------------------

  // Shares `other`'s block; a global string receiving an ordinary or literal
  // one copies it instead.
  // Inline when neither string is global and `other` is not null.
  zuString& operator=(const zuString& other) {
    const uint32_t scope = lengthScope_ & kScopeMask;
    const uint32_t otherScope = other.lengthScope_ & kScopeMask;
    if (scope == eGlobal || otherScope == eGlobal || other.chars_ == nullptr) {
      return AssignSlow(other);
    }
    if (chars_ != other.chars_) {
      char* const oldChars = chars_;
      chars_ = other.chars_;
      lengthScope_ = other.lengthScope_;
      if (otherScope == eOrdinary) ++BlockCount(chars_);
      if (scope == eOrdinary && oldChars != nullptr && --BlockCount(oldChars) == 0) {
        FreeOrdinaryBlock(oldChars);
      }
    }
    return *this;
  }
  // Null gives a null string, "" the shared empty text. Throws
  // ZuExThrow(16479) when the text starts with a UTF-16 byte-order mark.
  zuString& operator=(const char* text);
  // One byte; a 0 byte gives the empty text.
  zuString& operator=(char byte);
  // One code point, encoded as UTF-8.
  zuString& operator=(unsigned int codePoint);
  // NUL-terminated UTF-16 in host byte order; null gives a null string.
  zuString& operator=(const char16_t* utf16);

  zuString& operator+=(const zuString& other);
  // Inline for a text of up to 7 bytes while the string owns its ordinary
  // block alone and has room. A literal's length is known where it is
  // appended: it is stored as it stands, without looking for its end.
  zuString& operator+=(const char* text) {
    if (__builtin_constant_p(text != nullptr) && text != nullptr &&
        __builtin_constant_p(__builtin_strlen(text)) && __builtin_strlen(text) < kWordBytes) {
      const std::size_t length = __builtin_strlen(text);
      if (!CopyKnownInPlace(text, length)) Append(text, static_cast<unsigned int>(length));
    } else if (text != nullptr && !CopyShortInPlace(text)) {
      AppendText(text);
    }
    return *this;
  }
  // Appends one byte; a 0 byte is ignored. Inline while the string owns its
  // ordinary block alone and has room: appending runs of bytes is a hot path.
  zuString& operator+=(char byte) {
    // Members are read once into locals and the length is stored before the
    // bytes: a byte store may alias any object, which would otherwise force
    // the members to be read again from memory. The byte and the NUL after
    // it go in one 16-bit store (the block has room for the NUL).
    char* const chars = chars_;
    const uint32_t lengthScope = lengthScope_;
    if (byte != '\0' && (lengthScope & kScopeMask) == eOrdinary && chars != nullptr) {
      const std::size_t length = lengthScope >> kLengthShift;
      if (HasRoomAlone(chars, length + 1)) {
        lengthScope_ = lengthScope + (1u << kLengthShift);
        const uint16_t pair = static_cast<unsigned char>(byte);  // little-endian: byte, NUL
        std::memcpy(chars + length, &pair, 2);
        return *this;
      }
    }
    return AppendByte(byte);
  }
  // Appends one code point, encoded as UTF-8.
  zuString& operator+=(unsigned int codePoint);
  zuString& operator+=(const char16_t* utf16);

  // --- Access ---------------------------------------------------------------

  // The text; never null (a null string gives a static empty text).
  operator const char*() const { return chars_ != nullptr ? chars_ : kEmptyText; }
  // Length in bytes.
  unsigned int Length() const { return lengthScope_ >> kLengthShift; }
  // The byte at `index`; 0 at or past the end.
  char operator[](unsigned int index) const { return Char(index); }
  char Char(unsigned int index) const { return index < Length() ? chars_[index] : '\0'; }
  // The last byte; 0 when empty.
  char LastChar() const;
  // Store `byte` at `index` (ignored past the end). The string gets a
  // private block first.
  void Char(char byte, unsigned int index);
  void Set(unsigned int index, char byte);

  // Capacity of the block in bytes (not counting the NUL); 0 for literals.
  unsigned int AllocSize() const;
  // The thread whose cache the block came from: the calling thread is
  // recorded on first call for an ordinary block; 0 for heap blocks, literals
  // and null strings.
  unsigned int GetThreadId() const;
  // 1 when both strings point at the same characters.
  int SharesImpl(const zuString& other) const { return chars_ == other.chars_; }
  // Interface version of the string; always 0.
  int Version() const { return 0; }
  // The value of the character pointer: it identifies the shared block, it is
  // NOT a hash of the text (equal texts in different blocks differ).
  unsigned long HashCode() const { return reinterpret_cast<unsigned long>(chars_); }

  // --- State ----------------------------------------------------------------

  unsigned int ScopeType() const { return lengthScope_ & kScopeMask; }
  // Scopes 1 and 3.
  int IsLiteral() const { return (lengthScope_ & 1u) != 0; }
  // Scopes 1 and 2.
  int IsThreadSafe() const { return ScopeType() == eLiteral || ScopeType() == eGlobal; }
  // Scope 2 only.
  int IsGlobal() const { return ScopeType() == eGlobal; }
  // No character pointer (also true for a null `this`: callers may hold a
  // null zuString*, so `this` is hidden from the optimiser and the check
  // kept).
  int IsNull() const {
    const zuString* self = this;
    asm("" : "+r"(self));
    return self == nullptr || self->chars_ == nullptr;
  }
  int IsEmpty() const { return Length() == 0; }

  // --- Code points ----------------------------------------------------------

  // Decodes the code point at byte `pos` and moves `pos` past it; 0 at or
  // past the end (pos unchanged). Lenient: never fails on bad UTF-8.
  unsigned int UniChar(unsigned int& pos) const;
  // Moves `pos` back to the start of the previous code point and decodes
  // it; 0 when `pos` is at the start.
  unsigned int UniPrev(unsigned int& pos) const;
  // Number of code points in the byte range.
  unsigned int UniLength(unsigned int start = 0, unsigned int length = kMaxLength) const;
  // Replaces `uniCount` code points from code point `uniStart` by `text`.
  void ReplaceUniChar(const zuString& text, unsigned int uniStart, unsigned int uniCount);
  // Walks the whole text leniently; reports nothing.
  void UTF8Check() const;

  // --- Comparison -----------------------------------------------------------

  // Two null strings are equal; a null and a non-null string are not;
  // otherwise CompareCase == 0.
  int Equals(const zuString& other) const;
  int Equals(const char* text) const;
  // Bytes compared as signed 8-bit values (non-ASCII sorts below ASCII);
  // -1, 0 or 1. `maxBytes` stops after that many equal bytes (0: no limit).
  int CompareCase(const zuString& other) const;
  int CompareCase(const char* text, unsigned int maxBytes = 0) const;
  // As CompareCase with only A-Z folded to a-z.
  int CompareNoCase(const zuString& other) const;
  int CompareNoCase(const char* text, unsigned int maxBytes = 0) const;
  // The C library's collation of the current locale (strcoll); -1, 0 or 1.
  int CompareCollate(const zuString& other) const;

  // --- Search ---------------------------------------------------------------

  // Finds `text` at or after byte `start`: returns 1 with `foundAt` at the
  // match, else 0 with `foundAt` = Length().
  int FindCase(const zuString& text, unsigned int& foundAt, unsigned int start = 0) const;
  int FindCase(const char* text, unsigned int& foundAt, unsigned int start = 0) const;
  // As FindCase with only A-Z folded to a-z.
  int FindNoCase(const zuString& text, unsigned int& foundAt, unsigned int start = 0) const;
  int FindNoCase(const char* text, unsigned int& foundAt, unsigned int start = 0) const;
  // 1 when the byte occurs in the string.
  int CharInString(char byte) const;
  // The first `byte` at or after `start`: 1 with `foundAt` set, else 0 with
  // `foundAt` = Length().
  int CharInString(char byte, unsigned int& foundAt, unsigned int start = 0) const;
  // Bytes from `start` taken by code points that occur in `set`.
  unsigned int SkipOver(const zuString& set, unsigned int start = 0) const;
  // Bytes from `start` before the first code point that occurs in `set`.
  unsigned int SkipUntil(const zuString& set, unsigned int start = 0) const;
  // Skips delimiters from `pos`, then stores the code points up to the next
  // delimiter in `token` (a block of thread `threadId`), leaving `pos` on the
  // delimiter. Returns 0 (token empty) when only delimiters remain.
  int GetToken(const zuString& delimiters, zuString& token, unsigned int& pos,
               unsigned int threadId = 0) const;
  // Removes leading WhiteSpace() and the next token from this string; the
  // token ends at white space and a backslash takes the next character as
  // is. Returns 1 when a token was found.
  int ParseToken(zuString& token);

  // --- Editing (each makes the block private first) -------------------------

  // Replaces the clamped byte range by `text`.
  void Replace(const zuString& text, unsigned int start, unsigned int length);
  // Replaces every non-overlapping occurrence of `from` (searched left to
  // right) by `to`; an empty `from` changes nothing.
  void ReplaceAll(const zuString& from, const zuString& to);
  // Deletes the clamped byte range.
  void Swallow(unsigned int start, unsigned int length);
  // Cuts the text to `length` bytes when it is longer.
  void Truncate(unsigned int length);
  // Removes ASCII white space (tab, LF, VT, FF, CR, space) at the end only.
  void Trim();
  // Removes ASCII white space at the start only.
  void TrimStart();
  // Changes case of the ASCII letters in the range; others stay as they are.
  void ToUpper(unsigned int start = 0, unsigned int length = kMaxLength);
  void ToLower(unsigned int start = 0, unsigned int length = kMaxLength);
  // Makes the text empty (not null), keeping the scope.
  void Empty();
  // Sets the length after the caller wrote into the block (cut to the
  // capacity) and stores the terminating NUL.
  void SetLength(unsigned int length);
  // Makes the block private with room for `size` bytes; with `keep` the text
  // is kept (cut to `size`). `threadId` names the thread whose cache a new
  // ordinary block comes from (0: the calling thread). Size 0 releases the
  // block. Returns the characters. Throws zuExMemory.
  char* ReAlloc(unsigned int size, int keep = 1, unsigned int threadId = 0);
  // With `setNull` non-zero releases the block and leaves a null string;
  // with 0 makes the text empty.
  void SetNull(int setNull = 1);

  // --- Character classes (0 for an empty range) -------------------------------

  int IsDigit(unsigned int start = 0, unsigned int length = kMaxLength) const;
  int IsLower(unsigned int start = 0, unsigned int length = kMaxLength) const;
  int IsUpper(unsigned int start = 0, unsigned int length = kMaxLength) const;
  int IsAlnum(unsigned int start = 0, unsigned int length = kMaxLength) const;
  int IsAlpha(unsigned int start = 0, unsigned int length = kMaxLength) const;
  int IsSpace(unsigned int start = 0, unsigned int length = kMaxLength) const;

  // --- Numbers --------------------------------------------------------------
  // Readers set the result to 0 first and return 1 only when the whole text
  // is a number. `base` is 8 or 16; any other value means 10.

  int Number(double* value) const;
  int Number(int* value, int base = 10) const;
  int Number(unsigned int* value, int base = 10) const;
  int Number(long* value, int base = 10) const;
  int Number(unsigned long* value, int base = 10) const;

  // Writers replace the text with the decimal form.
  void Number(int value);
  void Number(long value);
  void Number(unsigned int value);
  void Number(unsigned long value);
  void Number(unsigned long long value);
  // `decimals` (at most 15) fraction digits with the system decimal point;
  // with `trimZeros` trailing zeros and a bare point are dropped. Returns 1.
  int Number(double value, unsigned int decimals, int trimZeros);

  // --- Messages -------------------------------------------------------------

  // Replaces the text with message `id` from the message catalogue
  // (zuPosixResourceLoader) and returns 1; returns 0 when no catalogue has
  // it, leaving the text as it was. May throw zuExResourceFailure once the
  // library is initialised and no catalogue can be found.
  int LoadResource(unsigned short id);
  // 1 when message `id` exists and equals this text ignoring ASCII case.
  int MatchesResource(unsigned short id) const;

  // --- Sub-strings ----------------------------------------------------------

  // A copy of the clamped range in a block of thread `threadId`; an empty
  // range gives EmptyString().
  zuString Substring(unsigned int start, unsigned int length, unsigned int threadId = 0) const;
  zuString operator()(unsigned int start, unsigned int length) const;

  // --- Out of the string ----------------------------------------------------

  // A new NUL-terminated UTF-16 array in host (little-endian) order; the
  // caller frees it with delete[].
  char16_t* GetAllocdZuChar() const;
  // A new array holding the text in the encoding `encoding` names (any
  // spelling) or in `converter`'s (null: zuCharConverter::Default()),
  // followed by four 0 bytes; `bytes` receives the byte count without them.
  // Characters the encoding lacks become "?". The caller frees the array
  // with delete[]. Throws zuExMemory.
  char* GetAllocdChar(const char* encoding) const;
  char* GetAllocdChar(const char* encoding, unsigned int& bytes) const;
  char* GetAllocdChar(const zuCharConverter* converter) const;
  char* GetAllocdChar(const zuCharConverter* converter, unsigned int& bytes) const;
  // Converts the text into the caller's array `buffer` of `capacity` bytes,
  // as GetAllocdChar does. When the array is null or smaller than the worst
  // case it is freed with delete[] and replaced by a new one, and `capacity`
  // becomes the new size. Returns the byte count. Throws zuExMemory.
  unsigned int CopyToChar(char*& buffer, unsigned int& capacity,
                          const zuCharConverter* converter) const;

  // --- Escaping -------------------------------------------------------------

  // The text escaped for the XML context `type`. Characters XML forbids are
  // dropped; code points in `neverEscape` are copied as they are; code points
  // in [rangeLow, rangeHigh] (either bound 0: open on that side, both 0: no
  // range) or in `alsoEscape` become "&#x..;". Returns this string itself
  // (shared) when nothing changes.
  zuString toXML(zuToXMLType type = zuXMLText, const zuString& alsoEscape = EmptyString(),
                 unsigned int rangeLow = 0, unsigned int rangeHigh = 0,
                 const zuString& neverEscape = EmptyString()) const;
  // The text as an XHTML body fragment: one paragraph per line, tabs and
  // runs of spaces kept visible; with `withDeclaration` an XML declaration
  // comes first.
  zuString toXHTML(int withDeclaration = 0) const;

  // --- Static ---------------------------------------------------------------

  // strlen that accepts null (0).
  static unsigned int StringLength(const char* text);

  // Shared literals that live as long as the library.
  static const zuString& EmptyString();
  static const zuString& SpaceString();
  static const zuString& EqualsString();
  static const zuString& QuoteString();
  static const zuString& DQuoteString();
  static const zuString& OneString();
  static const zuString& TwoString();
  static const zuString& NegOneString();
  static const zuString& ZeroString();
  static const zuString& AmpString();
  static const zuString& SemiColonString();
  // The white-space code points token parsing skips: tab, LF, VT, FF, CR,
  // space, U+00A0, U+2000..U+200B, U+3000, U+FEFF.
  static const zuString& WhiteSpace();

 protected:
  // Changes the scope bits; for derived forms that pick their scope before
  // the first assignment.
  void SetScope(unsigned int scope) {
    lengthScope_ = (lengthScope_ & ~kScopeMask) | (scope & kScopeMask);
  }
  // Stores `length` bytes of `text` (dropping a UTF-8 mark, converting a
  // UTF-16 marked text, stopping at a NUL); with `literal` points at them.
  void Assign(const char* text, unsigned int length, int literal, unsigned int threadId);

 private:
  // The block layout, described once in zu/core/zuStringData.h.
  using Block = zu::internal::zuStringData;
  static constexpr uint32_t kScopeMask = zu::internal::kStringScopeMask;
  static constexpr unsigned int kLengthShift = zu::internal::kStringLengthShift;

  static const char kEmptyText[1];
  // Bytes of a block past its capacity: the NUL and 4 spare.
  static constexpr std::size_t kBlockTailBytes = 5;

  // True when the ordinary block holding `chars` is not shared and has room
  // for `needed` characters (and the NUL). The capacity and the count are
  // adjacent in the header and read as one little-endian word, capacity
  // low: with a count of 1 the word minus (2^32 + needed) is the spare room,
  // which is below 2^31 as capacities are at most 2^30; a larger count, or
  // too little room, leaves it far above.
  static bool HasRoomAlone(const char* chars, std::size_t needed) {
    static_assert(offsetof(Block, refCount) == offsetof(Block, allocSize) + 4,
                  "the capacity and the count are adjacent, capacity first");
    uint64_t sizeAndCount;
    std::memcpy(&sizeAndCount,
                reinterpret_cast<const char*>(Block::fromChars(chars)) + offsetof(Block, allocSize),
                sizeof sizeAndCount);
    return sizeAndCount - ((uint64_t{1} << 32) + needed) < (uint64_t{1} << 31);
  }

  void SetLengthBits(unsigned int length) {
    lengthScope_ = (length << kLengthShift) | (lengthScope_ & kScopeMask);
  }
  // Appends `length` bytes into the string's own block when it is ordinary,
  // not shared, has room and does not hold `text`; false when it did nothing.
  bool AppendInPlace(const char* text, std::size_t length) {
    char* const chars = chars_;
    const uint32_t lengthScope = lengthScope_;
    if ((lengthScope & kScopeMask) != eOrdinary || chars == nullptr) return false;
    const Block* block = Block::fromChars(chars);
    const std::size_t oldLength = lengthScope >> kLengthShift;
    if (block->refCount != 1 || block->allocSize - oldLength < length) return false;
    if (text >= chars && text <= chars + oldLength) return false;
    lengthScope_ = lengthScope + static_cast<uint32_t>(length << kLengthShift);
    std::memcpy(chars + oldLength, text, length);
    chars[oldLength + length] = '\0';
    return true;
  }
  // The reference count of the block holding `chars`.
  static uint32_t& BlockCount(char* chars) { return Block::fromChars(chars)->refCount; }
  static void FreeOrdinaryBlock(char* chars);
  void CopyGlobal(const zuString& other);
  zuString& AssignSlow(const zuString& other);
  // Appends the NUL-terminated `text` when it is at most 7 bytes long, the
  // string ordinary and the block its own with room for 7 more characters;
  // false, the string unchanged, otherwise. The text may lie in the block
  // itself: it is read whole before anything is stored.
  // The text is read as one 8-byte word when that stays inside its memory
  // page, and stored whole when the block has room for 7 more characters
  // (the eighth byte goes where the NUL goes): the bytes loaded past the
  // text's NUL, which the page holds, land past the new NUL. The sanitizers
  // are told to let that reading through.
  __attribute__((no_sanitize("address", "thread"))) bool CopyShortInPlace(const char* text) {
    char* const chars = chars_;
    const uint32_t lengthScope = lengthScope_;
    if ((lengthScope & kScopeMask) != eOrdinary || chars == nullptr) return false;
    const std::size_t oldLength = lengthScope >> kLengthShift;
    if (!HasRoomAlone(chars, oldLength + kWordBytes - 1) || !WordFitsPage(text)) return false;
    // Hidden from the optimiser, which would otherwise see the load pass
    // the end of a literal text.
    asm("" : "+r"(text));
    uint64_t word;
    std::memcpy(&word, text, kWordBytes);
    const unsigned int length = FirstZeroByte(word);
    if (length == kWordBytes) return false;
    std::memcpy(chars + oldLength, &word, kWordBytes);
    lengthScope_ = lengthScope + (length << kLengthShift);
    return true;
  }
  // Appends `length` bytes of `text` and its NUL when the string is ordinary
  // and the block its own with room; false, the string unchanged, otherwise.
  // For a literal the copy compiles to stores of the bytes themselves.
  bool CopyKnownInPlace(const char* text, std::size_t length) {
    char* const chars = chars_;
    const uint32_t lengthScope = lengthScope_;
    if ((lengthScope & kScopeMask) != eOrdinary || chars == nullptr) return false;
    const std::size_t oldLength = lengthScope >> kLengthShift;
    if (!HasRoomAlone(chars, oldLength + length)) return false;
    std::memcpy(chars + oldLength, text, length + 1);
    lengthScope_ = lengthScope + static_cast<uint32_t>(length << kLengthShift);
    return true;
  }
  static constexpr std::size_t kWordBytes = sizeof(uint64_t);
  // True when the 8 bytes from `bytes` lie in one memory page (of 4 KiB,
  // the smallest there is).
  static bool WordFitsPage(const char* bytes) {
    constexpr std::uintptr_t kPage = 4096;
    return (reinterpret_cast<std::uintptr_t>(bytes) & (kPage - 1)) <= kPage - kWordBytes;
  }
  // The index of the first zero byte of `word` in memory order (8: none).
  // The lowest flagged byte is the first zero one: borrows only flag bytes
  // above a zero byte.
  static unsigned int FirstZeroByte(uint64_t word) {
    constexpr uint64_t kOnes = 0x0101010101010101u;
    const uint64_t zeros = (word - kOnes) & ~word & (kOnes << 7);
    return static_cast<unsigned int>(std::countr_zero(zeros)) >> 3;
  }
  // operator+=(const char*) when CopyShortInPlace does not do: a longer
  // text copied in place eight bytes at a time while it fits, else Append.
  zuString& AppendText(const char* text);
  bool CopyInPlace(const char* text);
  zuString& AppendByte(char byte);
  int OwnsBlock() const;
  int IsPrivateBlock() const;
  zu::internal::zuStringData* NewBlock(unsigned int request, unsigned int threadId) const;
  void Adopt(zu::internal::zuStringData* block, unsigned int length);
  void ShareFrom(const zuString& other);
  void ReleaseData();
  void PreEdit();
  char* Reserve(unsigned int size);
  void CopyBytes(const char* text, unsigned int length, unsigned int threadId);
  void SetLiteral(const char* text, unsigned int length);
  void SetEmptyText();
  void AssignMarkedUTF16(const char* bytes, unsigned int units, int bigEndian,
                         unsigned int threadId);
  void AssignUTF16(const char16_t* utf16, unsigned int units, unsigned int threadId);
  void AssignConverted(const char* text, unsigned int length, const zuCharConverter& from,
                       unsigned int blockBytes, unsigned int threadId);
  void AssignFormatted(const char* format, ...);
  void Append(const char* text, unsigned int length);
  unsigned int UniAdvance(unsigned int pos, unsigned int count) const;
  void CaseRange(unsigned int start, unsigned int length, int upper);
  int ClassRange(unsigned int start, unsigned int length, int (*test)(unsigned int)) const;
  int Find(const char* text, unsigned int textLength, unsigned int& foundAt, unsigned int start,
           int foldCase) const;
  unsigned int SkipWhile(const zuString& set, unsigned int start, int inSet) const;
  void ResolveRange(unsigned int& start, unsigned int& length) const;

  uint32_t lengthScope_;
  char* chars_;
};

ZU_EXPORT zuString operator+(const zuString& left, const zuString& right);
ZU_EXPORT zuString operator+(const zuString& left, const char* right);
ZU_EXPORT zuString operator+(const char* left, const zuString& right);

ZU_EXPORT bool operator==(const zuString& left, const zuString& right);
ZU_EXPORT bool operator==(const zuString& left, const char* right);
ZU_EXPORT bool operator==(const char* left, const zuString& right);
ZU_EXPORT bool operator!=(const zuString& left, const zuString& right);
ZU_EXPORT bool operator!=(const zuString& left, const char* right);
ZU_EXPORT bool operator!=(const char* left, const zuString& right);
ZU_EXPORT bool operator<(const zuString& left, const zuString& right);
ZU_EXPORT bool operator<(const zuString& left, const char* right);
ZU_EXPORT bool operator<(const char* left, const zuString& right);
ZU_EXPORT bool operator<=(const zuString& left, const zuString& right);
ZU_EXPORT bool operator<=(const zuString& left, const char* right);
ZU_EXPORT bool operator<=(const char* left, const zuString& right);
ZU_EXPORT bool operator>(const zuString& left, const zuString& right);
ZU_EXPORT bool operator>(const zuString& left, const char* right);
ZU_EXPORT bool operator>(const char* left, const zuString& right);
ZU_EXPORT bool operator>=(const zuString& left, const zuString& right);
ZU_EXPORT bool operator>=(const zuString& left, const char* right);
ZU_EXPORT bool operator>=(const char* left, const zuString& right);
