// Test support: switches LC_NUMERIC to a locale whose decimal point is ","
// for one scope, so that tests can show that the library's numbers still
// use ".". Restores the "C" locale (and LOCPATH) afterwards.
#pragma once

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace zu::internal {

// An installed German locale, or one generated with localedef into a
// temporary directory.
class CommaLocale {
 public:
  CommaLocale() {
    const char* old = std::getenv("LOCPATH");
    hadLocPath_ = old != nullptr;
    if (hadLocPath_) oldLocPath_ = old;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8"}) {
      if (std::setlocale(LC_NUMERIC, name) != nullptr && isComma()) return;
    }
    generate();
  }
  ~CommaLocale() {
    std::setlocale(LC_NUMERIC, "C");
    if (hadLocPath_) {
      setenv("LOCPATH", oldLocPath_.c_str(), 1);
    } else {
      unsetenv("LOCPATH");
    }
    if (!directory_.empty()) std::system(("rm -rf '" + directory_ + "'").c_str());
  }
  static bool isComma() {
    char printed[16];
    std::snprintf(printed, sizeof printed, "%.1f", 1.5);
    return std::string(printed) == "1,5";
  }

 private:
  void generate() {
    char pattern[] = "/tmp/zu_comma_XXXXXX";
    if (mkdtemp(pattern) == nullptr) return;
    directory_ = pattern;
    std::ofstream(directory_ + "/comma.src")
        << "LC_NUMERIC\ndecimal_point \"<U002C>\"\nthousands_sep \"<U002E>\"\n"
           "grouping 3;3\nEND LC_NUMERIC\n";
    const std::string command = "localedef -c -i '" + directory_ + "/comma.src' '" + directory_ +
                                "/zucomma' >/dev/null 2>&1";
    std::system(command.c_str());
    setenv("LOCPATH", directory_.c_str(), 1);
    std::setlocale(LC_NUMERIC, "zucomma");
  }

  bool hadLocPath_ = false;
  std::string oldLocPath_;
  std::string directory_;
};

}  // namespace zu::internal
