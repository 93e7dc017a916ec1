#include "tools/localedata/picture_conversion.h"

#include <algorithm>
#include <string_view>

namespace zu::tools {
namespace {

constexpr std::string_view kNoBreakSpace = "\u00a0";
constexpr std::string_view kNarrowNoBreakSpace = "\u202f";
constexpr std::string_view kCurrencySign = "\u00a4";

bool isAsciiLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Appends literal text: characters in `plain` stay unquoted, runs of any
// other characters are quoted (a quote inside doubled).
void appendLiteral(std::string& out, std::string_view text, std::string_view plain) {
  std::string spaced;
  for (size_t i = 0; i < text.size(); ++i) {
    const std::string_view rest = text.substr(i);
    if (rest.starts_with(kNoBreakSpace) || rest.starts_with(kNarrowNoBreakSpace)) {
      spaced += ' ';
      i += (rest.starts_with(kNoBreakSpace) ? kNoBreakSpace : kNarrowNoBreakSpace).size() - 1;
    } else {
      spaced += text[i];
    }
  }
  bool quoted = false;
  for (char c : spaced) {
    const bool isPlain = plain.find(c) != std::string_view::npos;
    if (isPlain == quoted) {
      out += '\'';
      quoted = !quoted;
    }
    if (c == '\'') out += '\'';
    out += c;
  }
  if (quoted) out += '\'';
}

// Walks a CLDR pattern: `field(letter, count)` for every run of a pattern
// letter, `literal(text)` for the text between them (quotes resolved).
template <class Field, class Literal>
void walkPattern(std::string_view pattern, Field field, Literal literal) {
  std::string text;
  for (size_t i = 0; i < pattern.size();) {
    const char c = pattern[i];
    if (c == '\'') {
      if (i + 1 < pattern.size() && pattern[i + 1] == '\'') {
        text += '\'';
        i += 2;
        continue;
      }
      size_t end = i + 1;
      for (; end < pattern.size(); ++end) {
        if (pattern[end] != '\'') {
          text += pattern[end];
        } else if (end + 1 < pattern.size() && pattern[end + 1] == '\'') {
          text += '\'';
          ++end;
        } else {
          break;
        }
      }
      i = end + 1;
    } else if (isAsciiLetter(c)) {
      size_t end = i;
      while (end < pattern.size() && pattern[end] == c) ++end;
      if (!text.empty()) literal(text);
      text.clear();
      field(c, static_cast<int>(end - i));
      i = end;
    } else {
      text += c;
      ++i;
    }
  }
  if (!text.empty()) literal(text);
}

// Punctuation that a date or time picture shows as it is.
constexpr std::string_view kDateTimePlain = " ,-./:$()";

std::string repeat(char c, int count) {
  return std::string(static_cast<size_t>(count), c);
}

std::string dateField(char letter, int count) {
  switch (letter) {
    case 'G':
      return "G";
    case 'y':
    case 'Y':
    case 'u':
      return count == 2 ? "YY" : "YYYY";
    case 'M':
    case 'L':
      return repeat('M', std::min(count, 4));
    case 'd':
      return count >= 2 ? "DD" : "D";
    case 'D':
      return count >= 3 ? "JJJ" : "J";
    case 'E':
      return count == 4 ? "EEEE" : "EEE";
    case 'c':
    case 'e':
      return count >= 4 ? "EEEE" : count == 3 ? "EEE" : "e";
    case 'w':
      return "WW";
    case 'W':
      return "w";
    default:
      return "";
  }
}

std::string timeField(char letter, int count) {
  const int two = std::min(count, 2);
  switch (letter) {
    case 'h':
      return repeat('h', two);
    case 'H':
      return repeat('H', two);
    case 'K':
      return repeat('k', two);  // 0-11
    case 'k':
      return repeat('K', two);  // 1-24
    case 'm':
      return repeat('M', two);
    case 's':
      return repeat('S', two);
    case 'S':
      return "FFF";
    case 'a':
    case 'b':
    case 'B':
      return "A";
    case 'z':
    case 'Z':
    case 'v':
    case 'V':
    case 'O':
    case 'X':
    case 'x':
      return "Z";
    default:
      return "";
  }
}

template <class FieldMap>
std::string convert(const std::string& cldr, FieldMap map) {
  std::string out;
  walkPattern(
      cldr, [&](char letter, int count) { out += map(letter, count); },
      [&](const std::string& text) { appendLiteral(out, text, kDateTimePlain); });
  // A dropped field can leave a space at either end.
  while (!out.empty() && out.back() == ' ') out.pop_back();
  out.erase(0, out.find_first_not_of(' '));
  return out;
}

std::string numericSubpattern(std::string_view cldr) {
  std::string out;
  std::string text;
  auto flush = [&] {
    appendLiteral(out, text, " ()");
    text.clear();
  };
  for (size_t i = 0; i < cldr.size(); ++i) {
    const char c = cldr[i];
    if (cldr.substr(i, kCurrencySign.size()) == kCurrencySign) {
      flush();
      size_t count = 0;
      while (cldr.substr(i, kCurrencySign.size()) == kCurrencySign) {
        i += kCurrencySign.size();
        ++count;
      }
      --i;
      out += count == 1 ? "$" : "$$";
      continue;
    }
    const char* symbol = nullptr;
    switch (c) {
      case '#':
        symbol = "z";
        break;
      case '0':
      case '1':
      case '2':
      case '3':
      case '4':
      case '5':
      case '6':
      case '7':
      case '8':
      case '9':
      case '@':
        symbol = "9";
        break;
      case ',':
        symbol = ",";
        break;
      case '.':
        symbol = ".";
        break;
      case '%':
        symbol = "%";
        break;
      case '-':
        symbol = "s";
        break;
      default:
        break;
    }
    if (symbol != nullptr) {
      flush();
      out += symbol;
    } else if (c == '\'') {
      size_t end = cldr.find('\'', i + 1);
      if (end == std::string_view::npos) end = cldr.size();
      text += end == i + 1 ? std::string("'") : std::string(cldr.substr(i + 1, end - i - 1));
      i = end;
    } else {
      text += c;
    }
  }
  flush();
  return out;
}

}  // namespace

std::string datePicture(const std::string& cldr) {
  return convert(cldr, dateField);
}
std::string timePicture(const std::string& cldr) {
  return convert(cldr, timeField);
}

std::string combiningPicture(const std::string& cldr) {
  std::string out;
  std::string text;
  for (size_t i = 0; i < cldr.size(); ++i) {
    if (cldr.compare(i, 3, "{1}") == 0 || cldr.compare(i, 3, "{0}") == 0) {
      appendLiteral(out, text, kDateTimePlain);
      text.clear();
      out += cldr[i + 1] == '1' ? "date{}" : "time{}";
      i += 2;
    } else if (cldr[i] != '\'') {
      text += cldr[i];
    } else if (i + 1 < cldr.size() && cldr[i + 1] == '\'') {
      text += '\'';
      ++i;
    }
  }
  appendLiteral(out, text, kDateTimePlain);
  return out;
}

std::string numericPicture(const std::string& cldr) {
  size_t split = std::string::npos;
  bool quoted = false;
  for (size_t i = 0; i < cldr.size(); ++i) {
    if (cldr[i] == '\'') quoted = !quoted;
    if (!quoted && cldr[i] == ';') {
      split = i;
      break;
    }
  }
  const std::string positive = numericSubpattern(std::string_view(cldr).substr(0, split));
  if (split != std::string::npos) {
    const std::string negative = numericSubpattern(std::string_view(cldr).substr(split + 1));
    return negative.find('s') != std::string::npos ? negative : positive + "|" + negative;
  }
  std::string picture = positive;
  if (picture.find_first_of("z9") != 0 && picture.find('s') == std::string::npos) {
    picture.insert(picture.begin(), 's');
  }
  return picture;
}

}  // namespace zu::tools
