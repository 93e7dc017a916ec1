#include "zu/locale/internal/RnLocaleMap.h"

namespace zu::internal {
namespace {

unsigned char foldCase(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte - 'A' + 'a') : byte;
}

// ASCII letters only, whatever the C library's locale: under a Turkish locale
// strcasecmp would not fold "I" to "i".
int compareNoCase(const char* left, const char* right) {
  while (*left != '\0' && foldCase(*left) == foldCase(*right)) {
    ++left;
    ++right;
  }
  return static_cast<int>(foldCase(*left)) - static_cast<int>(foldCase(*right));
}

}  // namespace

int findLocaleMapRow(const char* name) {
  int low = 1;
  int high = kLocaleMapRows - 1;
  while (low <= high) {
    const int middle = low + (high - low) / 2;
    const int order = compareNoCase(name, kLocaleMap[middle].name);
    if (order == 0) return middle;
    if (order < 0) {
      high = middle - 1;
    } else {
      low = middle + 1;
    }
  }
  return 0;
}

}  // namespace zu::internal
