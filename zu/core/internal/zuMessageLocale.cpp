#include "zu/core/internal/zuMessageLocale.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace zu::internal {

namespace {

constexpr size_t kLanguageLength = 2;

const char* const kSystemLocaleFiles[] = {"/etc/default/locale", "/etc/locale.conf"};

// The value of a LANG= line in a shell-style settings file, quotes removed;
// empty when the file or the line is missing.
std::string langFromFile(const char* path) {
  std::ifstream file(path);
  std::string line;
  std::string value;
  while (std::getline(file, line)) {
    const size_t start = line.find_first_not_of(" \t");
    if (start == std::string::npos || line.compare(start, 5, "LANG=") != 0) continue;
    value = line.substr(start + 5);
    const size_t last = value.find_last_not_of(" \t\r");
    value.resize(last == std::string::npos ? 0 : last + 1);
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
        value.back() == value.front()) {
      value = value.substr(1, value.size() - 2);
    }
  }
  return value;
}

}  // namespace

zuLocalePair parseLocaleName(const std::string& name) {
  const std::string base = name.substr(0, name.find_first_of(".@"));
  if (base.empty() || base == "C" || base == "POSIX") return {};
  const size_t underscore = base.find('_');
  zuLocalePair pair;
  pair.language = base.substr(0, std::min(underscore, kLanguageLength));
  if (underscore != std::string::npos) pair.country = base.substr(underscore + 1);
  return pair;
}

zuLocalePair userDefaultLocale() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return parseLocaleName(value);
  }
  return {};
}

zuLocalePair systemDefaultLocale() {
  for (const char* path : kSystemLocaleFiles) {
    const std::string lang = langFromFile(path);
    if (!lang.empty()) return parseLocaleName(lang);
  }
  return {};
}

std::vector<std::string> catalogueSuffixes(const zuLocalePair& user, const zuLocalePair& system) {
  std::vector<std::string> suffixes;
  for (const zuLocalePair* locale : {&user, &system}) {
    if (locale->language.empty()) continue;
    if (!locale->country.empty()) suffixes.push_back(locale->language + "_" + locale->country);
    suffixes.push_back(locale->language);
  }
  suffixes.push_back("En");
  suffixes.push_back("Intl");
  return suffixes;
}

}  // namespace zu::internal
