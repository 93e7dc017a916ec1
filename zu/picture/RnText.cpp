#include "zu/picture/RnText.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "zu/core/internal/zuThreadMemo.h"
#include "zu/core/zuCharConverter.h"
#include "zu/core/zuUnicode.h"
#include "zu/locale/RnData.h"
#include "zu/locale/internal/RnRunTimeStore.h"

namespace {

using Text = std::u32string;

// Where a run ended: at a quote, at another character or literal, or at the
// end of the picture. Formatting checks the value's length only at the first
// and the last.
enum class RunEnd { Quote, Other, End };

char32_t foldFullWidth(char32_t c) {
  return c >= 0xFF01 && c <= 0xFF5E ? static_cast<char32_t>((c + 0x20) & 0xFF) : c;
}

bool isAsciiLetter(char32_t c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isSymbol(char32_t c) {
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
bool consumesValue(char32_t c) {
  return c != 't' && isSymbol(c);
}

bool isRunChar(char32_t c, bool fullWidth) {
  if (fullWidth) c = foldFullWidth(c);
  return isSymbol(c) || isAsciiLetter(c);
}

// Walks a picture left to right, grouping equal symbol characters into runs
// and reporting runs, unquoted literals and the characters of quoted
// literals. Any callback returning false stops the walk with false. The
// character after a closing quote starts a run whatever it is. `fullWidth`
// lets full-width forms of symbols and letters make runs as well; a picture
// ending inside a quote gives `allowOpenQuote`.
template <class OnRun, class OnLiteral, class OnQuoted>
bool walkPicture(const Text& picture, bool fullWidth, bool allowOpenQuote, OnRun onRun,
                 OnLiteral onLiteral, OnQuoted onQuoted) {
  char32_t symbol = 0;
  unsigned count = 0;
  auto flush = [&](RunEnd end) {
    if (count == 0) return true;
    const unsigned runLength = count;
    count = 0;
    return onRun(symbol, runLength, end);
  };
  const size_t length = picture.size();
  bool quoted = false;
  size_t i = 0;
  while (i < length) {
    const char32_t c = picture[i];
    if (quoted) {
      if (c != '\'') {
        if (!onQuoted(c)) return false;
        ++i;
      } else if (i + 1 < length && picture[i + 1] == '\'') {
        if (!onQuoted(U'\'')) return false;
        i += 2;
      } else {
        quoted = false;
        if (++i < length) {
          symbol = picture[i++];
          count = 1;
        }
      }
      continue;
    }
    if (c == '\'') {
      if (!flush(RunEnd::Quote)) return false;
      quoted = true;
    } else if (isRunChar(c, fullWidth)) {
      if (count > 0 && c == symbol) {
        ++count;
      } else {
        if (!flush(RunEnd::Other)) return false;
        symbol = c;
        count = 1;
      }
    } else {
      if (!flush(RunEnd::Other) || !onLiteral(c)) return false;
    }
    ++i;
  }
  if (quoted) return allowOpenQuote;
  return flush(RunEnd::End);
}

void toText(const zuString& text, Text& out) {
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
    const unsigned before = pos;
    const unsigned int c = text.UniChar(pos);
    if (pos == before) break;
    *to++ = static_cast<char32_t>(c);
  }
  out.resize(static_cast<size_t>(to - out.data()));
}

// The buffers format and parse work in, kept per thread so that a call
// makes no heap allocation of its own; those grown past a few pages are let
// go after the call.
struct Scratch {
  Text value;
  Text picture;
  std::string out;

  static Scratch& current() { return zu::internal::zuThreadMemo<Scratch>::get(); }
  void trim() {
    constexpr size_t kKept = 4096;
    if (value.capacity() > kKept) Text().swap(value);
    if (picture.capacity() > kKept) Text().swap(picture);
    if (out.capacity() > kKept) std::string().swap(out);
  }
};

[[gnu::noinline]] void appendEncoded(std::string& out, char32_t c) {
  char bytes[4];
  out.append(bytes, static_cast<size_t>(zuUCStoUTF8(bytes, c)));
}

// ASCII inline, the rest encoded out of line.
inline void appendChar(std::string& out, char32_t c) {
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else {
    appendEncoded(out, c);
  }
}

// A string holding exactly these bytes (the byte constructors would drop a
// leading byte-order mark that the value may well contain).
zuString toZuString(const std::string& bytes) {
  if (bytes.empty()) return zuString::EmptyString();
  zuString out;
  std::memcpy(out.ReAlloc(static_cast<unsigned>(bytes.size()), 0), bytes.data(), bytes.size());
  out.SetLength(static_cast<unsigned>(bytes.size()));
  return out;
}

bool isSpaceLiteral(char32_t c) {
  return c == '?' || c == '*' || c == '+';
}

template <class Test>
int matchClass(const Text& text, unsigned from, unsigned to, Test test) {
  unsigned pos = from;
  while (pos < to && pos < text.size() && test(text[pos])) ++pos;
  return pos == from ? -1 : static_cast<int>(pos - from);
}

}  // namespace

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
  Scratch& scratch = Scratch::current();
  try {
    toText(value_, scratch.value);
    toText(picture, scratch.picture);
    scratch.out.clear();
    const Text& value = scratch.value;
    std::string& out = scratch.out;
    unsigned pos = 0;
    auto onRun = [&](char32_t symbol, unsigned count, RunEnd end) {
      const bool fits = !consumesValue(symbol) || count <= value.size() - pos;
      if (!fits && end == RunEnd::Quote) return false;
      if (!fits && end == RunEnd::End) return true;
      return subFormat(value, symbol, count, pos, out);
    };
    auto onLiteral = [&](char32_t c) {
      appendChar(out, isSpaceLiteral(c) ? U' ' : c);
      return true;
    };
    auto onQuoted = [&](char32_t c) {
      appendChar(out, c);
      return true;
    };
    const bool fits = walkPicture(scratch.picture, false, true, onRun, onLiteral, onQuoted) &&
                      (pos == 0 || pos == value.size());
    const zuString result = fits ? toZuString(out) : zuString::EmptyString();
    scratch.trim();
    return result;
  } catch (...) {
    scratch.trim();
    return zuString::EmptyString();
  }
}

bool RnText::subFormat(const Text& value, char32_t symbol, unsigned count, unsigned& pos,
                       std::string& out) const {
  unsigned written = 0;
  for (; written < count && pos < value.size(); ++written) {
    const char32_t c = value[pos];
    switch (symbol) {
      case '0':
      case 'O':
        if (!zuCharConverter::IsAlnum(c)) return false;
        appendChar(out, c);
        ++pos;
        break;
      case '9':
        if (!zuCharConverter::IsDigit(c)) return false;
        appendChar(out, c);
        ++pos;
        break;
      case 'A':
        if (!zuCharConverter::IsAlpha(c)) return false;
        appendChar(out, c);
        ++pos;
        break;
      case 'X':
        appendChar(out, c);
        ++pos;
        break;
      case 't':
        out.push_back('\t');
        break;
      default:
        appendChar(out, symbol);
        break;
    }
  }
  return written > 0;
}

bool RnText::parse(const zuString& text, const zuString& picture) {
  if (text.IsNull()) return false;
  Scratch& scratch = Scratch::current();
  try {
    toText(text, scratch.value);
    toText(picture, scratch.picture);
    scratch.out.clear();
    const Text& input = scratch.value;
    std::string& collected = scratch.out;
    unsigned pos = 0;
    auto skipSpaces = [&] {
      while (pos < input.size() && zuCharConverter::IsUniSpace(input[pos])) ++pos;
    };
    auto onRun = [&](char32_t symbol, unsigned count, RunEnd) {
      return subParse(input, pos, symbol, count, collected);
    };
    auto onQuoted = [&](char32_t c) {
      if (pos >= input.size() || input[pos] != c) return false;
      ++pos;
      return true;
    };
    auto onLiteral = [&](char32_t c) {
      switch (c) {
        case '?':
          if (pos >= input.size()) return false;
          ++pos;
          return true;
        case '*':
          skipSpaces();
          return true;
        case '+':
          if (pos >= input.size() || !zuCharConverter::IsUniSpace(input[pos])) return false;
          skipSpaces();
          return true;
        default:
          return onQuoted(c);
      }
    };
    const bool matched = walkPicture(scratch.picture, false, false, onRun, onLiteral, onQuoted) &&
                         pos == input.size();
    if (matched) {
      value_ = toZuString(collected);
      valid_ = true;
    }
    scratch.trim();
    return matched;
  } catch (...) {
    scratch.trim();
    return false;
  }
}

bool RnText::subParse(const Text& text, unsigned& pos, char32_t symbol, unsigned count,
                      std::string& out) {
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

void RnText::getStr(const Text& text, unsigned from, unsigned to, std::string& out) {
  for (unsigned i = from; i < to && i < text.size(); ++i) appendChar(out, text[i]);
}

int RnText::matchNumeric(const Text& text, unsigned from, unsigned to) {
  return matchClass(text, from, to, [](char32_t c) { return zuCharConverter::IsDigit(c); });
}

int RnText::matchAlphabetic(const Text& text, unsigned from, unsigned to) {
  return matchClass(text, from, to, [](char32_t c) { return zuCharConverter::IsAlpha(c); });
}

int RnText::matchAlphanumeric(const Text& text, unsigned from, unsigned to) {
  return matchClass(text, from, to, [](char32_t c) { return zuCharConverter::IsAlnum(c); });
}

int RnText::matchCharacter(const Text& text, unsigned from, unsigned to) {
  return matchClass(text, from, to, [](char32_t c) { return c != 0; });
}

void RnText::getSymbolCount(const zuString& picture, unsigned& count) {
  count = 0;
  try {
    Text text;
    toText(picture, text);
    count = xlate(text);
  } catch (...) {
    count = 0;
  }
}

unsigned RnText::xlate(const Text& picture) {
  unsigned total = 0;
  auto onRun = [&](char32_t symbol, unsigned runLength, RunEnd) {
    subXlate(symbol, runLength, total);
    return true;
  };
  auto ignore = [](char32_t) { return true; };
  walkPicture(picture, true, true, onRun, ignore, ignore);
  return total;
}

void RnText::subXlate(char32_t symbol, unsigned count, unsigned& total) {
  if (consumesValue(foldFullWidth(symbol))) total += count;
}
