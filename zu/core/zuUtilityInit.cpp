#include "zu/core/zuUtilityInit.h"

#include "zu/core/internal/zuStartupState.h"
#include "zu/core/zuExResourceFailure.h"
#include "zu/core/zuExVersionMismatch.h"
#include "zu/core/zuPosixResourceLoader.h"
#include "zu/core/zuVersionChecker.h"

int gbUtilityVersionTestMode = 0;

namespace {

// Message 0 is nobody's text: asking for it only makes the loader find its
// catalogue, which is the point.
constexpr unsigned short kProbeId = 0;

void loadCatalogue() {
  zuString ignored;
  zuPosixResourceLoader::Instance().LoadResource(kProbeId, ignored);
}

}  // namespace

zuUtilityInit::zuUtilityInit(const char* version, int checkNow) {
  zuVersionChecker application(version, nullptr);
  zu::internal::markLibraryInitialised();
  if (checkNow == 0) return;
  zuVersionChecker recheck(nullptr, nullptr);
  loadCatalogue();
}

int zuUtilityInit::CheckVersion(const char** version, const char** component) {
  *version = nullptr;
  *component = nullptr;
  try {
    zuVersionChecker recheck(nullptr, nullptr);
  } catch (const zuExVersionMismatch& mismatch) {
    *version = mismatch.GetVersion();
    *component = mismatch.GetComponent();
    return 0;
  }
  return 1;
}

int zuUtilityInit::CheckResources(zuString& missingFile) {
  try {
    loadCatalogue();
  } catch (const zuExResourceFailure& failure) {
    failure.GetMissingFile(missingFile);
    return 0;
  }
  return 1;
}

const char* zuGetUtilityVersion() {
  return gbUtilityVersionTestMode != 0 ? "x.x.x.x" : zu::internal::kUtilityVersion;
}
