#include "zu/core/zuVersionChecker.h"

#include <cstring>

#include "zu/core/internal/zuStartupState.h"
#include "zu/core/zuExVersionMismatch.h"

using zu::internal::kUtilityVersion;
using zu::internal::libraryInitialised;
using zu::internal::mismatchRecorded;
using zu::internal::recordedComponent;
using zu::internal::recordedVersion;

namespace {

[[noreturn]] void throwRecordedMismatch() {
  throw zuExVersionMismatchImpl(recordedVersion(), recordedComponent());
}

// The library's own declaration, made when the library is loaded.
const zuVersionChecker kLibraryChecker(kUtilityVersion, "utility");

}  // namespace

zuVersionChecker::zuVersionChecker(const char* version, const char* component) {
  if (libraryInitialised() && mismatchRecorded()) throwRecordedMismatch();
  if (version == nullptr || IsCorrect(version)) return;
  zu::internal::recordMismatch(version, component);
  if (libraryInitialised()) throwRecordedMismatch();
}

int zuVersionChecker::IsCorrect(const char* version) {
  if (version == nullptr) return 0;
  const char* lastDot = std::strrchr(version, '.');
  if (lastDot == nullptr) return std::strcmp(version, kUtilityVersion) == 0;
  const size_t compared = static_cast<size_t>(lastDot - version);
  // The compared part must end where a component of the library's version
  // ends, so that "3.6.1901.x" is not taken for a build of 19011.
  return std::strlen(kUtilityVersion) > compared && kUtilityVersion[compared] == '.' &&
         std::strncmp(version, kUtilityVersion, compared) == 0;
}
