// ScopedTimeZone: sets the process time zone for one scope and restores the
// previous TZ (or its absence) afterwards, so that tests never depend on the
// machine's zone.
//
//   {
//     zu::testing::ScopedTimeZone zone("Asia/Kolkata");
//     ...                              // local time is UTC+05:30 here
//   }                                  // the previous TZ is back
//
// Changes the environment: not for use while other threads read the zone.
#pragma once

#include <string>

namespace zu::testing {

class ScopedTimeZone {
 public:
  // Sets TZ to `zone` (an Olson name or a POSIX TZ string) and applies it.
  explicit ScopedTimeZone(const char* zone);
  // Restores the TZ seen at construction, or unsets it.
  ~ScopedTimeZone();
  ScopedTimeZone(const ScopedTimeZone&) = delete;
  ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

 private:
  bool hadZone_ = false;
  std::string previous_;
};

}  // namespace zu::testing
