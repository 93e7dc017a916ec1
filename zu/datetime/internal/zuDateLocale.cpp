#include "zu/datetime/internal/zuDateLocale.h"

#include <cstring>
#include <mutex>
#include <new>
#include <set>
#include <string>

#include "zu/core/zuException.h"
#include "zu/locale/RnLocale.h"
#include "zu/locale/internal/RnThreadLocale.h"

namespace zu::internal {

namespace {

constexpr const char* kFallback = "en_US";

// A name of the static locale map is already of process lifetime; a name
// from the thread's registry lives only as long as its entry.
const char* lasting(const RnLocale& locale) {
  return locale.getHandle() > 0 ? locale.getName() : internName(locale.getName());
}

}  // namespace

const char* internName(const char* name) {
  // Never destroyed: dates in static storage may still name their locale
  // while the process exits.
  static std::mutex* const mutex = new std::mutex;
  static std::set<std::string, std::less<>>* const names = new std::set<std::string, std::less<>>;
  std::lock_guard<std::mutex> lock(*mutex);
  try {
    return names->emplace(name).first->c_str();
  } catch (const std::bad_alloc&) {
    throw zuExMemory();
  }
}

const char* defaultDateLocale() {
  bool isMapRow = false;
  const char* name = threadLocaleName(isMapRow);
  // "x" is what getLocale() answers when nothing resolves.
  if (std::strcmp(name, "x") == 0) return kFallback;
  if (isMapRow) return name;
  const RnLocale locale(name);
  return locale.isValid() ? lasting(locale) : kFallback;
}

const char* dateLocale(const zuString& name) {
  const RnLocale locale(name);
  return locale.isValid() ? lasting(locale) : defaultDateLocale();
}

}  // namespace zu::internal
