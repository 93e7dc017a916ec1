// zuCommaLocale: switches LC_NUMERIC to a locale whose decimal point is ","
// for its lifetime, so that a test can show that the library still reads and
// writes ".": an installed German locale, or one generated with localedef
// (part of every glibc system) into a scratch folder.
//
//   const zu::testing::zuCommaLocale comma;
//   ASSERT_TRUE(zu::testing::zuCommaLocale::isComma());
//
// Changes process state (the C locale, LOCPATH): not for use while other
// threads print numbers.
#pragma once

#include <optional>
#include <string>

#include "zu/testing/zuCatalogueTestFiles.h"

namespace zu::testing {

class zuCommaLocale {
 public:
  zuCommaLocale();
  // Restores the "C" numeric locale and LOCPATH.
  ~zuCommaLocale();
  zuCommaLocale(const zuCommaLocale&) = delete;
  zuCommaLocale& operator=(const zuCommaLocale&) = delete;

  // Whether the C library now prints 1.5 as "1,5".
  static bool isComma();

 private:
  bool hadLocPath_ = false;
  std::string oldLocPath_;
  std::optional<zuScratchFolder> folder_;
};

}  // namespace zu::testing
