// The locales that choose a message catalogue, and the catalogue names they
// give, in the order they are tried.
//
//   zuLocalePair user = userDefaultLocale();          // LANG=fr_CA.UTF-8
//   for (const std::string& suffix : catalogueSuffixes(user, systemDefaultLocale()))
//     ...                                             // "fr_CA", "fr", ..., "En", "Intl"
#pragma once

#include <string>
#include <vector>

namespace zu::internal {

// A locale as its two-letter language code and its country code; both
// empty when no locale is set.
struct zuLocalePair {
  std::string language;
  std::string country;
};

// Reads a POSIX locale name such as "fr_CA.UTF-8@euro": the code set and
// modifier are dropped, the language is cut to two letters. "C", "POSIX"
// and an empty name give an empty pair.
zuLocalePair parseLocaleName(const std::string& name);

// The first non-empty of LC_ALL, LC_MESSAGES and LANG.
zuLocalePair userDefaultLocale();

// LANG from /etc/default/locale or /etc/locale.conf; empty when neither
// sets it.
zuLocalePair systemDefaultLocale();

// The suffixes to try after "Resources": the user locale's language_COUNTRY
// and language, the system locale's two, then "En" and "Intl". Parts a
// locale lacks are left out.
std::vector<std::string> catalogueSuffixes(const zuLocalePair& user, const zuLocalePair& system);

}  // namespace zu::internal
