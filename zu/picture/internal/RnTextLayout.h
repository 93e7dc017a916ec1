// The fixed layout of a text picture, and formatting and parsing through it.
//
// An ASCII picture without the characters that take a varying number of
// text characters ("?", "*", "+"), and not ending inside a quote, has a
// fixed layout: position by position, the classes a value character may
// have (digits for "9", letters for "A", either for "O" and "0", any for
// "X"; none for a character written or matched as it stands) and the
// character written there. A text of exactly
// that many ASCII characters is then parsed, and a value of exactly as many
// ASCII characters as the symbols take is formatted, in one pass over the
// layout. The text engine keeps a layout with each picture it reads; the
// dispatcher keeps one with each text alternative it prepares, so that such
// values go through without a call into the engine.
//
//   const TextLayout layout = textLayoutOf(body);  // body: "999-AA"
//   zuString value;
//   parseThroughLayout(layout, "123-AB", value);   // 1, value "123AB"
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "zu/core/internal/zuShortCopy.h"
#include "zu/core/zuString.h"
#include "zu/picture/internal/RnTextPictureReader.h"

namespace zu::internal {

struct TextLayout {
  std::string classes;      // per position: the class asked for, or 0
  std::string chars;        // per position with class 0: the character there
  unsigned valueChars = 0;  // the positions of value symbols
  bool parses = false;
  // Formatting by layout also needs the picture free of literal letters
  // and tabs, which write nothing once the value is used up.
  bool formats = false;
};

// The layout of a picture read into `pieces`; `ascii` and `endedInQuote`
// say whether the picture is ASCII and ended inside a quote.
TextLayout layOut(const std::vector<PicturePiece>& pieces, bool ascii, bool endedInQuote);

// The layout of the text picture `picture` (its body, without "text{}"),
// read through the text engine's memo of pictures.
TextLayout textLayoutOf(const zuString& picture);

// Formatting by layout, `value` as many characters as the layout's value
// positions: false when a value character has the wrong class.
bool formatByLayout(const TextLayout& layout, const char* value, char* out);
// Parsing by layout, `text` as wide as the layout: the collected
// characters' length, or -1 when the text does not match.
int parseByLayout(const TextLayout& layout, const char* text, char* out);

// What the text engine gives for `value` when the layout applies to it: 1
// with `out` the formatted text, 0 with `out` empty when a character has
// the wrong class; -1, `out` unchanged, when the layout does not apply.
int formatThroughLayout(const TextLayout& layout, const zuString& value, zuString& out);
// The same for parsing: 1 with `out` the collected characters, 0 with `out`
// emptied when the text does not match, -1 when the layout does not apply.
int parseThroughLayout(const TextLayout& layout, const zuString& text, zuString& out);

// True when the text holds no byte above 0x7F.
inline bool isAsciiText(const zuString& text) {
  const char* bytes = text;
  const std::size_t length = text.Length();
  constexpr uint64_t kHighBits = 0x8080808080808080ull;
  uint64_t seen = 0;
  if (length >= 8) {
    // Eight bytes at a time, the last word overlapping the one before.
    for (std::size_t at = 0; at + 8 < length; at += 8) seen |= loadWord<uint64_t>(bytes + at);
    seen |= loadWord<uint64_t>(bytes + length - 8);
  } else if (length >= 4) {
    seen = loadWord<uint32_t>(bytes) | loadWord<uint32_t>(bytes + length - 4);
  } else {
    for (std::size_t at = 0; at < length; ++at) seen |= static_cast<unsigned char>(bytes[at]);
  }
  return (seen & kHighBits) == 0;
}

}  // namespace zu::internal
