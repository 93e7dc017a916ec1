#include "zu/picture/RnText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "zu/core/internal/zuShortCopy.h"
#include "zu/core/internal/zuThreadMemo.h"
#include "zu/core/zuCharConverter.h"
#include "zu/core/zuException.h"
#include "zu/core/zuUnicode.h"
#include "zu/locale/RnData.h"
#include "zu/locale/internal/RnRunTimeStore.h"
#include "zu/picture/internal/RnTextLayout.h"
#include "zu/picture/internal/RnTextPictureReader.h"

namespace {

using namespace zu::internal;
using Text = std::u32string;

// The code points of a UTF-8 text, read as zuString::UniChar reads them.
void toText(const zuString& text, std::u32string& out) {
  // A text has no more characters than bytes: sized once, filled through a
  // pointer, cut to what was read.
  const unsigned length = text.Length();
  out.resize(length);
  char32_t* to = out.data();
  const char* bytes = text;
  unsigned pos = 0;
  while (pos < length) {
    if (static_cast<unsigned char>(bytes[pos]) < 0x80) {
      *to++ = static_cast<char32_t>(bytes[pos++]);
      continue;
    }
    *to++ = static_cast<char32_t>(text.UniChar(pos));
  }
  out.resize(static_cast<size_t>(to - out.data()));
}

bool isAsciiLetter(char32_t c) {
  return ((c | 0x20) - 'a') < 26u;
}

// Writes one character as UTF-8 (at most four bytes): ASCII inline.
inline void appendChar(char*& out, char32_t c) {
  if (c < 0x80) {
    *out++ = static_cast<char>(c);
  } else {
    out += zuUCStoUTF8(out, c);
  }
}

// A text's characters by position, with the character classes and the
// writing that suit them. A text of ASCII bytes only is read straight from
// its bytes, and its characters need no Unicode tables; any other is first
// decoded into code points. The classes are the library's (the only ASCII
// space separator is the space itself).
struct AsciiChars {
  explicit AsciiChars(const zuString& text) : bytes(text), count(text.Length()) {}
  char32_t operator[](unsigned i) const { return static_cast<unsigned char>(bytes[i]); }
  unsigned size() const { return count; }
  // Writes characters [from, to) as UTF-8.
  void copy(unsigned from, unsigned to, char*& out) const {
    copyShort(out, bytes + from, to - from);
    out += to - from;
  }

  static bool isDigit(char32_t c) { return c - '0' < 10u; }
  static bool isAlpha(char32_t c) { return isAsciiLetter(c); }
  static bool isAlnum(char32_t c) { return isAsciiLetter(c) || c - '0' < 10u; }
  static bool isSpace(char32_t c) { return c == ' '; }
  static void append(char*& out, char32_t c) { *out++ = static_cast<char>(c); }

  const char* bytes;
  unsigned count;
};

struct DecodedChars {
  explicit DecodedChars(const std::u32string& text)
      : chars(text.data()), count(static_cast<unsigned>(text.size())) {}
  char32_t operator[](unsigned i) const { return chars[i]; }
  unsigned size() const { return count; }
  void copy(unsigned from, unsigned to, char*& out) const {
    for (unsigned i = from; i < to; ++i) appendChar(out, chars[i]);
  }

  static bool isDigit(char32_t c) {
    return c < 0x80 ? AsciiChars::isDigit(c) : zuCharConverter::IsDigit(c) != 0;
  }
  static bool isAlpha(char32_t c) {
    return c < 0x80 ? AsciiChars::isAlpha(c) : zuCharConverter::IsAlpha(c) != 0;
  }
  static bool isAlnum(char32_t c) {
    return c < 0x80 ? AsciiChars::isAlnum(c) : zuCharConverter::IsAlnum(c) != 0;
  }
  static bool isSpace(char32_t c) {
    return c < 0x80 ? AsciiChars::isSpace(c) : zuCharConverter::IsUniSpace(c) != 0;
  }
  static void append(char*& out, char32_t c) { appendChar(out, c); }

  const char32_t* chars;
  unsigned count;
};

// A text picture read once into its pieces and its layout (see
// RnTextLayout.h): a text or value the layout applies to goes through it in
// one pass; the pieces serve every other case.
struct TextPicture {
  bool used = false;
  std::string text;    // the picture's bytes
  bool ascii = false;  // no byte above 0x7F
  unsigned chars = 0;  // its characters
  std::vector<PicturePiece> pieces;
  bool endedInQuote = false;
  TextLayout layout;
};

// The pictures this thread read last, so that formatting or parsing many
// values through one picture reads the picture once.
struct TextPictures {
  std::array<TextPicture, 8> entries;
  std::size_t lastUsed = 0;
  std::size_t nextToReplace = 0;
};

[[gnu::always_inline]] inline bool holds(const TextPicture& entry, const zuString& picture) {
  const std::size_t length = picture.Length();
  if (!entry.used || entry.text.size() != length) return false;
  const char* a = entry.text.data();
  const char* b = picture;
  if (length >= 8) {
    for (std::size_t i = 0; i + 8 < length; i += 8) {
      if (loadWord<uint64_t>(a + i) != loadWord<uint64_t>(b + i)) return false;
    }
    return loadWord<uint64_t>(a + length - 8) == loadWord<uint64_t>(b + length - 8);
  }
  if (length >= 4) {
    return loadWord<uint32_t>(a) == loadWord<uint32_t>(b) &&
           loadWord<uint32_t>(a + length - 4) == loadWord<uint32_t>(b + length - 4);
  }
  return std::memcmp(a, b, length) == 0;
}

// The buffers format and parse work in, kept per thread so that a call
// makes no heap allocation of its own; those grown past a few pages are let
// go after the call.
struct Scratch {
  Text value;
  Text picture;
  std::string out;
  TextPictures pictures;

  static Scratch& current() { return zu::internal::zuThreadMemo<Scratch>::get(); }
  // Room for at least `bytes` bytes of output.
  char* room(std::size_t bytes) {
    if (out.size() < bytes) out.resize(bytes);
    return out.data();
  }
  void trim() {
    constexpr size_t kKept = 4096;
    if (value.capacity() > kKept) Text().swap(value);
    if (picture.capacity() > kKept) Text().swap(picture);
    if (out.capacity() > kKept) std::string().swap(out);
  }
};

// Runs `work(scratch)` with the thread's scratch buffers and trims them
// afterwards, whatever happens. Running out of memory in the buffers is the
// library's zuExMemory, like running out anywhere else.
template <class Work>
auto withScratch(Work&& work) {
  Scratch& scratch = Scratch::current();
  struct Trim {
    Scratch& scratch;
    ~Trim() { scratch.trim(); }
  } trim{scratch};
  try {
    return work(scratch);
  } catch (const zuExMemory&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw zuExMemory();
  }
}

// The pieces of `picture`, read into the thread's memo when missing there.
// Valid until the thread reads another picture.
const TextPicture& readPicture(const zuString& picture, Scratch& scratch) {
  TextPictures& memo = scratch.pictures;
  for (std::size_t i = 0; i < memo.entries.size(); ++i) {
    if (holds(memo.entries[i], picture)) {
      memo.lastUsed = i;
      return memo.entries[i];
    }
  }
  TextPicture& entry = memo.entries[memo.nextToReplace];
  memo.lastUsed = memo.nextToReplace;
  memo.nextToReplace = (memo.nextToReplace + 1) % memo.entries.size();
  entry.used = false;
  entry.text.assign(static_cast<const char*>(picture), picture.Length());
  entry.ascii = isAsciiText(picture);
  Text& decoded = scratch.picture;
  toText(picture, decoded);
  entry.chars = static_cast<unsigned>(decoded.size());
  entry.pieces.clear();
  const DecodedChars chars(decoded);
  PictureReader<DecodedChars> reader(chars, false);
  PicturePiece piece;
  while (reader.next(piece)) entry.pieces.push_back(piece);
  entry.endedInQuote = reader.endedInQuote();
  entry.layout = layOut(entry.pieces, entry.ascii, entry.endedInQuote);
  entry.used = true;
  return entry;
}

// readPicture, the picture used last found without a call.
inline const TextPicture& textPicture(const zuString& picture, Scratch& scratch) {
  const TextPicture& last = scratch.pictures.entries[scratch.pictures.lastUsed];
  return holds(last, picture) ? last : readPicture(picture, scratch);
}

template <class Chars, class Test>
int matchClass(const Chars& text, unsigned from, unsigned to, Test test) {
  to = std::min(to, text.size());
  unsigned pos = from;
  while (pos < to && test(text[pos])) ++pos;
  return pos == from ? -1 : static_cast<int>(pos - from);
}

}  // namespace

zu::internal::TextLayout zu::internal::textLayoutOf(const zuString& picture) {
  return withScratch([&](Scratch& scratch) { return textPicture(picture, scratch).layout; });
}

RnText::RnText(const zuString& value, const zuString& locale)
    : value_(value), valid_(!value.IsNull()) {
  chooseLocale(locale);
}

RnText::RnText(const zuString& value, const zuString& picture, const zuString& locale) {
  chooseLocale(locale);
  parse(value, picture);
}

namespace {

// The locale a text is made in and its zero symbol, remembered per thread
// for the last locales named (the empty name, the thread's current locale,
// is always looked up). Dropped when run-time locale data changes.
struct ChosenLocale {
  zuString key;
  uint64_t generation = 0;
  bool used = false;
  RnLocale locale;
  unsigned int zeroSymbol = '0';
};

struct ChosenLocales {
  std::array<ChosenLocale, 4> entries;
  std::size_t nextToReplace = 0;
};

}  // namespace

void RnText::chooseLocale(const zuString& locale) {
  ChosenLocales& memo = zu::internal::zuThreadMemo<ChosenLocales>::get();
  auto& remembered = memo.entries;
  std::size_t& nextToReplace = memo.nextToReplace;
  constexpr std::size_t kRemembered = std::tuple_size_v<decltype(memo.entries)>;
  const uint64_t generation = zu::internal::gRunTimeDataGeneration.load(std::memory_order_acquire);
  if (!locale.IsEmpty()) {
    for (const ChosenLocale& entry : remembered) {
      if (entry.used && entry.generation == generation && entry.key.Equals(locale)) {
        locale_ = entry.locale;
        zeroSymbol_ = entry.zeroSymbol;
        return;
      }
    }
  }
  RnLocale chosen(locale.IsEmpty() ? RnLocale::getLocale() : locale);
  if (!chosen.isValid()) chosen = RnLocale(RnLocale::getDEFAULT_LOCALE());
  locale_ = chosen;
  setTextSymbols(locale_.getName());
  if (locale.IsEmpty()) return;
  ChosenLocale& entry = remembered[nextToReplace];
  nextToReplace = (nextToReplace + 1) % kRemembered;
  entry.used = false;
  entry.key = zuString(static_cast<const char*>(locale), locale.Length());
  entry.generation = generation;
  entry.locale = locale_;
  entry.zeroSymbol = zeroSymbol_;
  entry.used = true;
}

void RnText::setTextSymbols(const char* locale) {
  const zuString zero = RnData(locale).getZeroSymbol();
  unsigned pos = 0;
  const unsigned int first = zero.UniChar(pos);
  zeroSymbol_ = first != 0 ? first : '0';
}

const zuLiteral& RnText::getTEXT_PICTURE_SYMBOLS() {
  // Built on first use, so that start-up code elsewhere may ask for it.
  static const zuLiteral symbols("9AO0Xt");
  return symbols;
}

zuString RnText::format(const zuString& picture) {
  if (!valid_) return zuString::EmptyString();
  return formatValue(value_, picture);
}

zuString RnText::formatValue(const zuString& value, const zuString& picture) {
  if (value.IsNull()) return zuString::EmptyString();
  return withScratch([&](Scratch& scratch) {
    const TextPicture& compiled = textPicture(picture, scratch);
    const TextLayout& layout = compiled.layout;
    if (layout.formats && value.Length() == layout.valueChars && isAsciiText(value)) {
      const auto width = static_cast<unsigned>(layout.classes.size());
      char* buffer = scratch.room(width);
      if (!formatByLayout(layout, value, buffer)) return zuString::EmptyString();
      return zuString::FromBytes(buffer, width);
    }
    // Every picture character writes at most one character: one byte when
    // value and picture are ASCII, at most four otherwise.
    if (compiled.ascii && isAsciiText(value)) {
      return formatChars(AsciiChars(value), compiled, scratch.room(compiled.chars));
    }
    toText(value, scratch.value);
    return formatChars(DecodedChars(scratch.value), compiled, scratch.room(4 * compiled.chars));
  });
}

template <class Chars, class Picture>
zuString RnText::formatChars(const Chars& value, const Picture& picture, char* buffer) {
  char* out = buffer;
  unsigned pos = 0;
  for (const PicturePiece& piece : picture.pieces) {
    switch (piece.kind) {
      case PicturePiece::Kind::Run:
        // A run short of value characters empties the result before a quote
        // and is skipped at the end of the picture.
        if (consumesValue(piece.c) && piece.count > value.size() - pos) {
          if (piece.end == RunEnd::Quote) return zuString::EmptyString();
          if (piece.end == RunEnd::End) break;
        }
        if (!subFormat(value, piece.c, piece.count, pos, out)) return zuString::EmptyString();
        break;
      case PicturePiece::Kind::Literal:
        Chars::append(out, isSpaceLiteral(piece.c) ? U' ' : piece.c);
        break;
      case PicturePiece::Kind::Quoted:
        Chars::append(out, piece.c);
        break;
    }
  }
  if (pos != 0 && pos != value.size()) return zuString::EmptyString();
  return zuString::FromBytes(buffer, static_cast<unsigned>(out - buffer));
}

template <class Chars>
bool RnText::subFormat(const Chars& value, char32_t symbol, unsigned count, unsigned& pos,
                       char*& out) {
  // Nothing is written once the value is used up, literal letters and tabs
  // included; a value symbol takes what is left of the value, up to `count`.
  if (pos >= value.size()) return false;
  auto copy = [&](auto test) {
    const unsigned end = pos + std::min(count, value.size() - pos);
    for (; pos < end; ++pos) {
      const char32_t c = value[pos];
      if (!test(c)) return false;
      Chars::append(out, c);
    }
    return true;
  };
  switch (symbol) {
    case '0':
    case 'O':
      return copy(Chars::isAlnum);
    case '9':
      return copy(Chars::isDigit);
    case 'A':
      return copy(Chars::isAlpha);
    case 'X':
      return copy([](char32_t) { return true; });
    case 't':
      out = std::fill_n(out, count, '\t');
      return true;
    default:
      for (unsigned i = 0; i < count; ++i) Chars::append(out, symbol);
      return true;
  }
}

bool RnText::parse(const zuString& text, const zuString& picture) {
  zuString collected;
  if (!parseText(text, picture, collected)) return false;
  value_ = collected;
  valid_ = true;
  return true;
}

bool RnText::parseText(const zuString& text, const zuString& picture, zuString& value) {
  if (text.IsNull()) return false;
  return withScratch([&](Scratch& scratch) {
    const TextPicture& compiled = textPicture(picture, scratch);
    const TextLayout& layout = compiled.layout;
    if (layout.parses && text.Length() == layout.classes.size() && isAsciiText(text)) {
      char* buffer = scratch.room(text.Length());
      const int collected = parseByLayout(layout, text, buffer);
      if (collected < 0) return false;
      value = zuString::FromBytes(buffer, static_cast<unsigned>(collected));
      return true;
    }
    // Each character of the text is collected at most once.
    if (compiled.ascii && isAsciiText(text)) {
      return parseChars(AsciiChars(text), compiled, scratch.room(text.Length()), value);
    }
    toText(text, scratch.value);
    return parseChars(DecodedChars(scratch.value), compiled, scratch.room(4 * scratch.value.size()),
                      value);
  });
}

template <class Chars, class Picture>
bool RnText::parseChars(const Chars& input, const Picture& picture, char* buffer, zuString& value) {
  char* collected = buffer;
  unsigned pos = 0;
  auto skipSpaces = [&] {
    while (pos < input.size() && Chars::isSpace(input[pos])) ++pos;
  };
  for (const PicturePiece& piece : picture.pieces) {
    const char32_t c = piece.c;
    switch (piece.kind) {
      case PicturePiece::Kind::Run:
        if (!subParse(input, pos, c, piece.count, collected)) return false;
        continue;
      case PicturePiece::Kind::Literal:
        if (c == '?') {
          if (pos >= input.size()) return false;
          ++pos;
          continue;
        }
        if (c == '*' || c == '+') {
          if (c == '+' && (pos >= input.size() || !Chars::isSpace(input[pos]))) return false;
          skipSpaces();
          continue;
        }
        break;
      case PicturePiece::Kind::Quoted:
        break;
    }
    // A character that stands for itself.
    if (pos >= input.size() || input[pos] != c) return false;
    ++pos;
  }
  if (picture.endedInQuote || pos != input.size()) return false;
  value = zuString::FromBytes(buffer, static_cast<unsigned>(collected - buffer));
  return true;
}

template <class Chars>
bool RnText::subParse(const Chars& text, unsigned& pos, char32_t symbol, unsigned count,
                      char*& out) {
  if (count > text.size() - pos) return false;
  const unsigned to = pos + count;
  int matched = -1;
  switch (symbol) {
    case '0':
    case 'O':
      matched = matchAlphanumeric(text, pos, to);
      break;
    case '9':
      matched = matchNumeric(text, pos, to);
      break;
    case 'A':
      matched = matchAlphabetic(text, pos, to);
      break;
    case 'X':
      matched = matchCharacter(text, pos, to);
      break;
    default:
      // A tab symbol or a literal letter: each character must be exactly it.
      matched = matchClass(text, pos, to,
                           [symbol](char32_t c) { return c == (symbol == 't' ? U'\t' : symbol); });
      if (matched != static_cast<int>(count)) return false;
      pos = to;
      return true;
  }
  if (matched != static_cast<int>(count)) return false;
  getStr(text, pos, to, out);
  pos = to;
  return true;
}

template <class Chars>
void RnText::getStr(const Chars& text, unsigned from, unsigned to, char*& out) {
  const unsigned end = std::min(to, text.size());
  if (from < end) text.copy(from, end, out);
}

template <class Chars>
int RnText::matchNumeric(const Chars& text, unsigned from, unsigned to) {
  return matchClass(text, from, to, Chars::isDigit);
}

template <class Chars>
int RnText::matchAlphabetic(const Chars& text, unsigned from, unsigned to) {
  return matchClass(text, from, to, Chars::isAlpha);
}

template <class Chars>
int RnText::matchAlphanumeric(const Chars& text, unsigned from, unsigned to) {
  return matchClass(text, from, to, Chars::isAlnum);
}

template <class Chars>
int RnText::matchCharacter(const Chars& text, unsigned from, unsigned to) {
  return matchClass(text, from, to, [](char32_t c) { return c != 0; });
}

void RnText::getSymbolCount(const zuString& picture, unsigned& count) {
  count = 0;
  count = withScratch([&](Scratch& scratch) {
    toText(picture, scratch.picture);
    return xlate(DecodedChars(scratch.picture));
  });
}

template <class Chars>
unsigned RnText::xlate(const Chars& picture) {
  unsigned total = 0;
  PictureReader<Chars> reader(picture, true);
  PicturePiece piece;
  while (reader.next(piece)) {
    if (piece.kind == PicturePiece::Kind::Run) subXlate(piece.c, piece.count, total);
  }
  return total;
}

void RnText::subXlate(char32_t symbol, unsigned count, unsigned& total) {
  if (consumesValue(foldFullWidth(symbol))) total += count;
}
