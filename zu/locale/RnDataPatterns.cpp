// The pattern getters that rewrite the locale's pictures: symbols in the
// locale's own letters, date-time pictures, and numeric pictures built from
// option bits.
#include <string>
#include <string_view>

#include "zu/locale/RnData.h"
#include "zu/locale/internal/RnDataTable.h"

using namespace zu::internal;

namespace {

constexpr int kAlphabetLength = 19;

// Byte offsets of the 19 letters of a symbol alphabet (UTF-8), plus its end.
struct Alphabet {
  std::string_view text;
  size_t offsets[kAlphabetLength + 1] = {};
  bool complete = false;

  explicit Alphabet(std::string_view letters) : text(letters) {
    size_t pos = 0;
    int letter = 0;
    for (; letter < kAlphabetLength && pos < text.size(); ++letter) {
      offsets[letter] = pos;
      do ++pos;
      while (pos < text.size() && (static_cast<unsigned char>(text[pos]) & 0xC0) == 0x80);
    }
    offsets[letter] = pos;
    complete = letter == kAlphabetLength;
  }
  std::string_view letter(int position) const {
    return text.substr(offsets[position], offsets[position + 1] - offsets[position]);
  }
};

// Appends `picture` with each symbol outside quotes written as the letter at
// its mask position in `alphabet`.
void appendLocalSymbols(std::string& out, std::string_view picture, const char* mask,
                        const Alphabet& alphabet) {
  bool quoted = false;
  for (char c : picture) {
    if (c == '\'') quoted = !quoted;  // a doubled quote toggles twice
    const char* hit = (quoted || c == ' ' || c == '\0')
                          ? nullptr
                          : std::char_traits<char>::find(mask, kAlphabetLength, c);
    if (hit != nullptr && alphabet.complete) {
      out += alphabet.letter(static_cast<int>(hit - mask));
    } else {
      out += c;
    }
  }
}

// Calls `body(out, kind, text)` for the body of every "date{...}" and
// "time{...}" of a combining pattern, copying the rest.
template <class Body>
std::string rewriteBodies(std::string_view pattern, Body body) {
  std::string out;
  size_t pos = 0;
  while (pos < pattern.size()) {
    const size_t date = pattern.find("date{", pos);
    const size_t time = pattern.find("time{", pos);
    const size_t word = std::min(date, time);
    const size_t close = word == std::string_view::npos ? word : pattern.find('}', word + 5);
    if (close == std::string_view::npos) break;
    out.append(pattern.substr(pos, word + 5 - pos));
    body(out, word == date ? 'd' : 't', pattern.substr(word + 5, close - word - 5));
    out += '}';
    pos = close + 1;
  }
  out.append(pattern.substr(std::min(pos, pattern.size())));
  return out;
}

zuString toString(const std::string& text) {
  return zuString(text.data(), static_cast<unsigned int>(text.size()));
}

}  // namespace

zuString RnData::localPattern(int firstField, int style, const char* mask) const {
  const zuString picture =
      firstField == kFieldDateFormat ? getDateFormat(style) : getTimeFormat(style);
  const zuString letters = text(kFieldAlphabet);
  std::string out;
  appendLocalSymbols(out, std::string_view(picture, picture.Length()), mask,
                     Alphabet(std::string_view(letters, letters.Length())));
  return toString(out);
}

zuString RnData::getLocalDateFormat(int style) const {
  return localPattern(kFieldDateFormat, style, gpDateMask);
}

zuString RnData::getLocalTimeFormat(int style) const {
  return localPattern(kFieldTimeFormat, style, gpTimeMask);
}

zuString RnData::getLocalDateTimeFormat() const {
  const zuString combining = getDateTimePattern();
  const zuString letters = text(kFieldAlphabet);
  const Alphabet alphabet(std::string_view(letters, letters.Length()));
  return toString(rewriteBodies(std::string_view(combining, combining.Length()),
                                [&](std::string& out, char kind, std::string_view inner) {
                                  appendLocalSymbols(
                                      out, inner, kind == 'd' ? gpDateMask : gpTimeMask, alphabet);
                                }));
}

zuString RnData::getDateTimeFormat(int dateStyle, int timeStyle) const {
  const zuString combining = getDateTimePattern();
  const zuString date = getDateFormat(dateStyle);
  const zuString time = getTimeFormat(timeStyle);
  return toString(rewriteBodies(std::string_view(combining, combining.Length()),
                                [&](std::string& out, char kind, std::string_view) {
                                  out += kind == 'd' ? static_cast<const char*>(date)
                                                     : static_cast<const char*>(time);
                                }));
}
