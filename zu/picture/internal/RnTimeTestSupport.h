// Test support: sets the process time zone for one scope and restores the
// previous TZ (or its absence) afterwards, so that tests never depend on
// the machine's zone.
#pragma once

#include <cstdlib>
#include <ctime>
#include <string>

namespace zu::internal {

class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(const char* zone) {
    const char* previous = std::getenv("TZ");
    hadZone_ = previous != nullptr;
    if (hadZone_) previous_ = previous;
    setenv("TZ", zone, 1);
    tzset();
  }
  ~ScopedTimeZone() {
    if (hadZone_) {
      setenv("TZ", previous_.c_str(), 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }
  ScopedTimeZone(const ScopedTimeZone&) = delete;
  ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

 private:
  bool hadZone_ = false;
  std::string previous_;
};

}  // namespace zu::internal
