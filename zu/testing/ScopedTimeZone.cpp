#include "zu/testing/ScopedTimeZone.h"

#include <cstdlib>
#include <ctime>

namespace zu::testing {

ScopedTimeZone::ScopedTimeZone(const char* zone) {
  const char* previous = std::getenv("TZ");
  hadZone_ = previous != nullptr;
  if (hadZone_) previous_ = previous;
  setenv("TZ", zone, 1);
  tzset();
}

ScopedTimeZone::~ScopedTimeZone() {
  if (hadZone_) {
    setenv("TZ", previous_.c_str(), 1);
  } else {
    unsetenv("TZ");
  }
  tzset();
}

}  // namespace zu::testing
