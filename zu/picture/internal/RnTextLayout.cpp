#include "zu/picture/internal/RnTextLayout.h"

#include <array>

namespace zu::internal {

namespace {

// Layouts up to this wide are formatted and parsed into a buffer on the
// stack; wider ones are left to the engine, which has its own.
constexpr std::size_t kStackWidth = 256;

// The classes of a layout position, as bits: a value character fits a
// position when its own bits and the position's meet.
constexpr char kDigit = 1;   // "9"
constexpr char kLetter = 2;  // "A"
constexpr char kAny = 4;     // "X": any character but NUL when parsing

// Per byte, the classes it belongs to: any but NUL, and the ASCII digits
// and letters theirs (bytes above 0x7F never reach a layout).
constexpr std::array<char, 256> kClassesOf = [] {
  std::array<char, 256> classes{};
  for (unsigned c = 1; c < 256; ++c) {
    classes[c] = static_cast<char>(kAny | (c - 0x30u < 10u ? kDigit : 0) |
                                   ((c | 0x20u) - 0x61u < 26u ? kLetter : 0));
  }
  return classes;
}();

char classBits(char symbol) {
  switch (symbol) {
    case '9':
      return kDigit;
    case 'A':
      return kLetter;
    case 'O':
    case '0':
      return kDigit | kLetter;
    default:
      return kAny;
  }
}

}  // namespace

TextLayout layOut(const std::vector<PicturePiece>& pieces, bool ascii, bool endedInQuote) {
  TextLayout layout;
  bool fixed = ascii && !endedInQuote;
  bool letters = false;
  for (const PicturePiece& piece : pieces) {
    const char c = static_cast<char>(piece.c);
    switch (piece.kind) {
      case PicturePiece::Kind::Run:
        if (consumesValue(piece.c)) {
          layout.classes.append(piece.count, classBits(c));
          layout.chars.append(piece.count, '\0');
          layout.valueChars += piece.count;
        } else {
          letters = true;
          layout.classes.append(piece.count, '\0');
          layout.chars.append(piece.count, c == 't' ? '\t' : c);
        }
        break;
      case PicturePiece::Kind::Literal:
        fixed = fixed && !isSpaceLiteral(piece.c);
        [[fallthrough]];
      case PicturePiece::Kind::Quoted:
        layout.classes.push_back('\0');
        layout.chars.push_back(c);
        break;
    }
  }
  layout.parses = fixed;
  layout.formats = fixed && !letters;
  return layout;
}

// The layout's bytes are read through local pointers: the stores of
// characters may alias any object, and would otherwise have the strings'
// data pointers read again for every position.
bool formatByLayout(const TextLayout& layout, const char* value, char* out) {
  const std::size_t width = layout.classes.size();
  const char* const classes = layout.classes.data();
  const char* const chars = layout.chars.data();
  for (std::size_t i = 0; i < width; ++i) {
    const char fits = classes[i];
    if (fits == 0) {
      out[i] = chars[i];
      continue;
    }
    const unsigned char c = static_cast<unsigned char>(*value++);
    // Formatting writes any character through "X", NUL included.
    if ((kClassesOf[c] & fits) == 0 && fits != kAny) return false;
    out[i] = static_cast<char>(c);
  }
  return true;
}

int parseByLayout(const TextLayout& layout, const char* text, char* out) {
  const std::size_t width = layout.classes.size();
  const char* const classes = layout.classes.data();
  const char* const chars = layout.chars.data();
  char* collected = out;
  for (std::size_t i = 0; i < width; ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (classes[i] == 0) {
      if (c != static_cast<unsigned char>(chars[i])) return -1;
      continue;
    }
    if ((kClassesOf[c] & classes[i]) == 0) return -1;
    *collected++ = static_cast<char>(c);
  }
  return static_cast<int>(collected - out);
}

int formatThroughLayout(const TextLayout& layout, const zuString& value, zuString& out) {
  const std::size_t width = layout.classes.size();
  if (!layout.formats || value.Length() != layout.valueChars || width > kStackWidth ||
      !isAsciiText(value)) {
    return -1;
  }
  char buffer[kStackWidth];
  out = formatByLayout(layout, value, buffer)
            ? zuString::FromBytes(buffer, static_cast<unsigned>(width))
            : zuString::EmptyString();
  return !out.IsEmpty();
}

int parseThroughLayout(const TextLayout& layout, const zuString& text, zuString& out) {
  const std::size_t width = layout.classes.size();
  if (!layout.parses || text.Length() != width || width > kStackWidth || !isAsciiText(text)) {
    return -1;
  }
  char buffer[kStackWidth];
  const int collected = parseByLayout(layout, text, buffer);
  if (collected < 0) {
    out.Empty();
    return 0;
  }
  out = zuString::FromBytes(buffer, static_cast<unsigned>(collected));
  return 1;
}

}  // namespace zu::internal
