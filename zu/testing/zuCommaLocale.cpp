#include "zu/testing/zuCommaLocale.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>

namespace zu::testing {

zuCommaLocale::zuCommaLocale() {
  const char* old = std::getenv("LOCPATH");
  hadLocPath_ = old != nullptr;
  if (hadLocPath_) oldLocPath_ = old;
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8"}) {
    if (std::setlocale(LC_NUMERIC, name) != nullptr && isComma()) return;
  }
  folder_.emplace();
  const std::string source =
      folder_->write("comma.src",
                     "LC_NUMERIC\ndecimal_point \"<U002C>\"\nthousands_sep \"<U002E>\"\n"
                     "grouping 3;3\nEND LC_NUMERIC\n");
  const std::string command =
      "localedef -c -i '" + source + "' '" + folder_->path() + "/zucomma' >/dev/null 2>&1";
  std::system(command.c_str());
  setenv("LOCPATH", folder_->path().c_str(), 1);
  std::setlocale(LC_NUMERIC, "zucomma");
}

zuCommaLocale::~zuCommaLocale() {
  std::setlocale(LC_NUMERIC, "C");
  if (hadLocPath_) {
    setenv("LOCPATH", oldLocPath_.c_str(), 1);
  } else {
    unsetenv("LOCPATH");
  }
}

bool zuCommaLocale::isComma() {
  char printed[16];
  std::snprintf(printed, sizeof printed, "%.1f", 1.5);
  return std::string(printed) == "1,5";
}

}  // namespace zu::testing
