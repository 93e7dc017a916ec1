#include "zu/locale/internal/RnLocaleName.h"

#include <cstring>

namespace zu::internal {
namespace {

constexpr size_t kScriptLength = 4;

char toUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
char toLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

size_t find(const char* name, size_t from, size_t to, char wanted) {
  const void* found = from < to ? std::memchr(name + from, wanted, to - from) : nullptr;
  return found != nullptr ? static_cast<size_t>(static_cast<const char*>(found) - name) : to;
}

// "cyrl" becomes "Cyrl".
void recaseScript(char* script) {
  script[0] = toUpper(script[0]);
  for (size_t i = 1; i < kScriptLength; ++i) script[i] = toLower(script[i]);
}

}  // namespace

size_t unqualifiedLength(const char* name, size_t length) {
  for (size_t i = 0; i < length; ++i) {
    if (name[i] == '.' || name[i] == '@') return i;
  }
  return length;
}

void normalizeLocaleName(char* name, size_t length) {
  // Only the first "-": 'zh-Hant-TW' becomes 'zh_Hant-TW'.
  const size_t dash = find(name, 0, length, '-');
  if (dash < length) name[dash] = '_';

  const size_t firstUnderscore = find(name, 0, length, '_');
  if (firstUnderscore == length) return;

  // The code set and the modifier keep their case, and take no part in
  // recognising a script.
  const size_t afterFirst = firstUnderscore + 1;
  const size_t qualifier = afterFirst + unqualifiedLength(name + afterFirst, length - afterFirst);
  const size_t secondUnderscore = find(name, afterFirst, qualifier, '_');

  size_t countryStart = firstUnderscore;
  if (secondUnderscore == qualifier) {
    // A single part after the language: a script when it is long enough.
    if (qualifier - afterFirst >= kScriptLength) {
      recaseScript(name + afterFirst);
      return;
    }
  } else if (secondUnderscore == afterFirst + kScriptLength) {
    recaseScript(name + afterFirst);
    countryStart = secondUnderscore;
  }
  for (size_t i = countryStart; i < qualifier; ++i) name[i] = toUpper(name[i]);
}

}  // namespace zu::internal
