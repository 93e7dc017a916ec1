// Reading numeric pictures item by item, the picture read once as RnNum's
// per-thread memo keeps it, and the small UTF-8 helpers that formatting and
// parsing share.
//
//   NumPictureReader reader(picture, length, false);
//   NumPictureItem item;
//   while (reader.next(item)) { ... }     // "z,zz9" gives z x1, ",", z x2, 9 x1
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "zu/picture/RnNum.h"

namespace zu::internal {

// Numbers this many characters wide or wider (digits and point) are not
// written: a picture or DblToStr asking for one fails.
inline constexpr int kMaxWidth = 326;

struct NumPictureItem {
  enum Kind { kSymbol, kLiteral, kQuoted };
  Kind kind = kSymbol;
  // The ASCII symbol; the pairs CR, cr, DB, db are 'C', 'c', 'D', 'd'.
  char symbol = 0;
  // Repetitions of the symbol (a pair counts once).
  unsigned count = 0;
  // kLiteral: the bytes as they stand; kQuoted: the text between the quotes,
  // in which two quotes stand for one.
  const char* text = nullptr;
  size_t length = 0;
};

// Splits a picture into runs of one symbol and literals. With `reversed`
// the picture has been reversed code point by code point, so a pair reads
// "RC". Full-width symbols count as their ASCII forms.
class NumPictureReader {
 public:
  NumPictureReader(const char* picture, size_t length, bool reversed)
      : picture_(picture), length_(length), reversed_(reversed) {}
  // The next item; false at the end, and false with faulty() set at an
  // unterminated quoted literal or a pair letter without its partner (the
  // picture is not a numeric picture).
  bool next(NumPictureItem& item);
  bool faulty() const { return faulty_; }

 private:
  // Marks the picture faulty and ends the reading; returns false.
  bool fault();
  // The symbol at `pos` (0 when none) and the bytes it takes.
  char symbolAt(size_t pos, size_t& bytes) const;

  const char* picture_;
  size_t length_;
  bool reversed_;
  size_t pos_ = 0;
  bool faulty_ = false;
};

// The ASCII numeric symbol that the code point stands for, or 0.
char numericSymbol(uint32_t codePoint);
// Decodes the UTF-8 sequence at text[pos] (length > pos); a stray byte is
// one character of its own value. `bytes` receives its length.
uint32_t decodeUtf8(const char* text, size_t length, size_t pos, size_t& bytes);
// Appends the UTF-8 form of `codePoint`; returns the bytes written (<= 4).
size_t encodeUtf8(uint32_t codePoint, char* out);
// `text` reversed code point by code point, into `out`.
void reverseUtf8(const char* text, size_t length, std::string& out);
// Number of code points in the bytes.
size_t countCodePoints(const char* text, size_t length);

// A text built by appending, kept on the stack while it is short.
class TextSink {
 public:
  void put(char c) {
    if (size_ < sizeof inline_) {
      inline_[size_++] = c;
    } else {
      put(&c, 1);
    }
  }
  // Inline for the short pieces a number is made of, into the inline buffer.
  void put(const char* text, size_t length) {
    if (length <= 4 && heap_.empty() && size_ <= sizeof inline_ - 4) {
      char* to = inline_ + size_;
      switch (length) {
        case 4:
          to[3] = text[3];
          [[fallthrough]];
        case 3:
          to[2] = text[2];
          [[fallthrough]];
        case 2:
          to[1] = text[1];
          [[fallthrough]];
        case 1:
          to[0] = text[0];
          break;
        default:
          break;
      }
      size_ += length;
      return;
    }
    putLong(text, length);
  }
  const char* data() const { return heap_.empty() ? inline_ : heap_.data(); }
  size_t size() const { return size_; }

 private:
  void putLong(const char* text, size_t length);

  char inline_[240];
  std::string heap_;
  size_t size_ = 0;
};

}  // namespace zu::internal

// A numeric picture read once, as the thread's memo of pictures keeps it:
// its items forward for formatting, reversed for parsing, and its analysis.
struct RnNum::CompiledPicture {
  bool used = false;
  // False when the picture is not a valid numeric picture; the analysis is
  // then as far as it got, as analysing it anew would leave it.
  bool valid = false;
  Analysis analysis;
  std::string text;  // the picture's bytes; `items` point into them
  std::vector<zu::internal::NumPictureItem> items;
  // The picture reversed code point by code point, and its items up to the
  // first fault, if any.
  std::string reversed;
  std::vector<zu::internal::NumPictureItem> reversedItems;
  bool reversedFaulty = false;
  // The "9" symbols after the radix, which parsing meets first.
  unsigned fractionNines = 0;
};
