// Reading a text picture: its pieces left to right, as the text-picture
// engine formats and parses through them.
//
// Runs of equal run characters (the symbols "9AO0Xt" and the other ASCII
// letters) are reported where they end; other characters outside quotes
// are literals; text between single quotes is read character by character.
//
//   PictureReader<Chars> reader(picture, false);  // Chars: size() and [i]
//   PicturePiece piece;
//   while (reader.next(piece)) ...
//   if (reader.endedInQuote()) ...
#pragma once

#include <array>
#include <cstdint>

namespace zu::internal {

// Where a run ended: at a quote, at another character or literal, or at the
// end of the picture. Formatting treats a run short of value characters
// differently at the first and the last.
enum class RunEnd { Quote, Other, End };

inline char32_t foldFullWidth(char32_t c) {
  return c >= 0xFF01 && c <= 0xFF5E ? static_cast<char32_t>((c + 0x20) & 0xFF) : c;
}

// The characters that make runs: the symbols "9AO0Xt" and the other ASCII
// letters, as bits of four words.
constexpr std::array<uint32_t, 4> kRunChars = [] {
  std::array<uint32_t, 4> bits{};
  auto mark = [&bits](char c) { bits[static_cast<unsigned char>(c) >> 5] |= 1u << (c & 31); };
  for (const char symbol : {'9', '0'}) mark(symbol);
  for (char letter = 'A'; letter <= 'Z'; ++letter) mark(letter);
  for (char letter = 'a'; letter <= 'z'; ++letter) mark(letter);
  return bits;
}();

inline bool isSymbol(char32_t c) {
  switch (c) {
    case '9':
    case 'A':
    case 'O':
    case '0':
    case 'X':
    case 't':
      return true;
    default:
      return false;
  }
}

// The symbols that stand for one value character ("t" does not).
inline bool consumesValue(char32_t c) {
  return c != 't' && isSymbol(c);
}

// The literals that take a varying number of text characters: "?" one of
// any, "*" and "+" a run of spaces (at least one for "+").
inline bool isSpaceLiteral(char32_t c) {
  return c == '?' || c == '*' || c == '+';
}

inline bool isRunChar(char32_t c, bool fullWidth) {
  if (fullWidth) c = foldFullWidth(c);
  return c < 0x80 && (kRunChars[c >> 5] >> (c & 31) & 1u) != 0;
}

// One piece of a picture: a run of equal run characters, reported where
// it ends; a character outside quotes that makes no run; or a character of
// a quoted literal ("''" inside quotes is one quote).
struct PicturePiece {
  enum class Kind { Run, Literal, Quoted };
  Kind kind = Kind::Literal;
  char32_t c = 0;
  unsigned count = 0;        // the run's length
  RunEnd end = RunEnd::End;  // what ended the run
};

// Reads a picture, a view of its characters by position (size() and
// operator[] giving code points), left to right, one piece at a time. The character after a closing
// quote starts a run whatever it is. `fullWidth` lets full-width forms of symbols and letters make
// runs as well.
template <class Chars>
class PictureReader {
 public:
  PictureReader(const Chars& picture, bool fullWidth) : picture_(picture), fullWidth_(fullWidth) {}

  // The next piece; false at the end of the picture.
  bool next(PicturePiece& piece) {
    const unsigned length = picture_.size();
    while (at_ < length) {
      const char32_t c = picture_[at_];
      if (quoted_) {
        if (c != '\'') {
          ++at_;
          return quotedChar(piece, c);
        }
        if (at_ + 1 < length && picture_[at_ + 1] == '\'') {
          at_ += 2;
          return quotedChar(piece, U'\'');
        }
        quoted_ = false;
        if (++at_ < length) {
          symbol_ = picture_[at_++];
          count_ = 1;
        }
        continue;
      }
      // A character that ends a run is read again once the run is out.
      if (c == '\'') {
        if (count_ > 0) return run(piece, RunEnd::Quote);
        quoted_ = true;
        ++at_;
      } else if (isRunChar(c, fullWidth_)) {
        if (count_ > 0 && c != symbol_) return run(piece, RunEnd::Other);
        // The rest of the run at once.
        unsigned end = at_ + 1;
        while (end < length && picture_[end] == c) ++end;
        symbol_ = c;
        count_ += end - at_;
        at_ = end;
      } else {
        if (count_ > 0) return run(piece, RunEnd::Other);
        ++at_;
        piece.kind = PicturePiece::Kind::Literal;
        piece.c = c;
        return true;
      }
    }
    return !quoted_ && count_ > 0 && run(piece, RunEnd::End);
  }

  // True when the picture ended inside a quoted literal.
  bool endedInQuote() const { return quoted_; }

 private:
  static bool quotedChar(PicturePiece& piece, char32_t c) {
    piece.kind = PicturePiece::Kind::Quoted;
    piece.c = c;
    return true;
  }
  bool run(PicturePiece& piece, RunEnd end) {
    piece.kind = PicturePiece::Kind::Run;
    piece.c = symbol_;
    piece.count = count_;
    piece.end = end;
    count_ = 0;
    return true;
  }

  const Chars& picture_;
  const bool fullWidth_;
  unsigned at_ = 0;
  bool quoted_ = false;
  char32_t symbol_ = 0;
  unsigned count_ = 0;
};

}  // namespace zu::internal
