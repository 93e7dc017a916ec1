#include "zu/core/zuPosixResourceLoader.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "zu/core/internal/zuCatalogue.h"
#include "zu/core/internal/zuCatalogueRegistry.h"
#include "zu/core/internal/zuMessageLocale.h"
#include "zu/core/internal/zuMessageLookup.h"
#include "zu/core/internal/zuResourceLoaderState.h"
#include "zu/core/internal/zuResourceTLS.h"
#include "zu/core/internal/zuStartupState.h"
#include "zu/core/zuExResourceFailure.h"
#include "zu/core/zuException.h"

namespace {

using zu::internal::zuCatalogue;

constexpr size_t kMaxNameLength = 255;
constexpr const char* kCatalogueExtension = ".msg";
constexpr const char* kInstalledFolder = "../share/zuutility/";
constexpr const char* kResourceBaseName = "Resources";

// Library-wide settings. They are set at start-up, before other threads ask
// for texts, but atomics keep a late change from tearing.
struct LoaderState {
  std::atomic<zuModule> client{nullptr};
  std::atomic<zuModule> utility{nullptr};
  std::atomic<zuModule> resource{nullptr};
  std::atomic<zuModule> executable{nullptr};
  std::atomic<zuResourceLoader*> override{nullptr};
  std::atomic<int> useResource{1};
  std::atomic<int> toLoad{1};
  std::atomic<int> loadFailed{0};
  std::atomic<int> executableLooked{0};
  // Raised after every change that may change an answer (see
  // zu::internal::messageGeneration).
  std::atomic<uint64_t> generation{1};
  std::string baseName = kResourceBaseName;
  std::mutex loadMutex;
};

LoaderState& state() {
  static LoaderState instance;
  return instance;
}

// Called after a change to the loader's state has been stored.
void raiseGeneration() {
  state().generation.fetch_add(1, std::memory_order_acq_rel);
}

// The files that may hold catalogue `name` next to `nextTo`.
std::vector<std::string> candidatePaths(zuModule nextTo, const std::string& name) {
  const std::string file = name + kCatalogueExtension;
  if (nextTo == nullptr) return {file};
  return {nextTo->directory + file, nextTo->directory + kInstalledFolder + file};
}

bool copyText(const zuCatalogue* catalogue, unsigned short id, zuString& text) {
  if (catalogue == nullptr) return false;
  const std::string* found = catalogue->find(id);
  if (found == nullptr) return false;
  text = zuString(found->data(), static_cast<unsigned int>(found->size()));
  return true;
}

// The catalogue named after the executable, looked for once.
zuModule executableCatalogue() {
  LoaderState& loader = state();
  if (loader.executableLooked.load(std::memory_order_acquire)) return loader.executable.load();
  std::lock_guard<std::mutex> lock(loader.loadMutex);
  if (!loader.executableLooked.load()) {
    const std::string path = zu::internal::executablePath() + kCatalogueExtension;
    loader.executable = zu::internal::findOrLoadCatalogue(path, {path});
    loader.executableLooked.store(1, std::memory_order_release);
    raiseGeneration();
  }
  return loader.executable.load();
}

// The file a user would have to install: named after the user's language.
zuString missingCatalogueName(const std::string& baseName) {
  const std::string language = zu::internal::userDefaultLocale().language;
  const std::string name = baseName + (language.empty() ? "En" : language) + kCatalogueExtension;
  return zuString(name.c_str());
}

// Loads the resource catalogue when it is still to load. Returns false when
// it cannot be found.
bool loadResourceCatalogue() {
  LoaderState& loader = state();
  std::lock_guard<std::mutex> lock(loader.loadMutex);
  if (!loader.toLoad.load()) return true;
  zuModule client = loader.client.load();
  zuModule nextTo = client != nullptr ? client : loader.utility.load();
  if (nextTo == nullptr) {
    // The library's own folder, standing in for its module handle.
    static const zuCatalogue libraryFolder{zu::internal::libraryDirectory(), {}};
    nextTo = &libraryFolder;
  }
  zuModule resource = zuLoadResourceDll(nextTo, loader.baseName.c_str());
  if (resource == nullptr) {
    loader.loadFailed = 1;
    return false;
  }
  loader.resource = resource;
  loader.toLoad = 0;
  raiseGeneration();
  return true;
}

}  // namespace

zuPosixResourceLoader& zuPosixResourceLoader::Instance() {
  static zuPosixResourceLoader instance;
  return instance;
}

int zuPosixResourceLoader::LoadResource(unsigned short id, zuString& text) {
  LoaderState& loader = state();
  if (loader.useResource.load() && loader.toLoad.load() && !loadResourceCatalogue()) {
    if (zu::internal::libraryInitialised()) {
      throw zuExResourceFailure(missingCatalogueName(loader.baseName));
    }
    text = zuString::EmptyString();
    return 0;
  }
  if (zuResourceLoader* first = loader.override.load()) {
    if (first->LoadResource(id, text)) return 1;
  }
  if (copyText(loader.client.load(), id, text)) return 1;
  if (loader.useResource.load() && copyText(loader.resource.load(), id, text)) return 1;
  if (const auto* secondary = zu::internal::zuPosixResourceTLS::current(0)) {
    for (zuModule module : secondary->handles()) {
      if (copyText(module, id, text)) return 1;
    }
  }
  return copyText(executableCatalogue(), id, text) ? 1 : 0;
}

void zuPosixResourceLoader::SetUtilityHandle(zuModule module) {
  state().utility = module;
  raiseGeneration();
}

void zuPosixResourceLoader::UseResourceDLL(int use) {
  state().useResource = use;
  raiseGeneration();
}

void zuPosixResourceLoader::AddSecondaryHandle(zuModule module) {
  zu::internal::zuPosixResourceTLS::current(1)->add(module);
  raiseGeneration();
}

void zuPosixResourceLoader::RemoveSecondaryHandle(zuModule module) {
  if (auto* secondary = zu::internal::zuPosixResourceTLS::current(0)) secondary->remove(module);
  raiseGeneration();
}

void zuPosixResourceLoader::Override(zuResourceLoader* loader) {
  state().override = loader;
  raiseGeneration();
}

zuResourceLoader* zuPosixResourceLoader::Override() {
  return state().override.load();
}

void zuSetDLLHandle(zuModule module) {
  state().client = module;
  raiseGeneration();
}

zuModule zuLoadResourceDll(zuModule nextTo, const char* baseName) {
  if (baseName == nullptr) return nullptr;
  const std::vector<std::string> suffixes = zu::internal::catalogueSuffixes(
      zu::internal::userDefaultLocale(), zu::internal::systemDefaultLocale());
  for (const std::string& suffix : suffixes) {
    const std::string name = baseName + suffix;
    if (name.size() > kMaxNameLength) continue;
    if (zuModule found = zu::internal::findOrLoadCatalogue(name, candidatePaths(nextTo, name))) {
      return found;
    }
  }
  return nullptr;
}

zuModule zuLoadResourceDllW(zuModule nextTo, const char16_t* baseName) {
  if (baseName == nullptr) return nullptr;
  const zuString name(baseName);
  return zuLoadResourceDll(nextTo, name);
}

namespace zu::internal {

void resetResourceLoaderForTesting(const char* baseName) {
  LoaderState& loader = state();
  std::lock_guard<std::mutex> lock(loader.loadMutex);
  loader.client = nullptr;
  loader.utility = nullptr;
  loader.resource = nullptr;
  loader.executable = nullptr;
  loader.override = nullptr;
  loader.useResource = 1;
  loader.toLoad = 1;
  loader.loadFailed = 0;
  loader.executableLooked = 0;
  loader.baseName = baseName != nullptr ? baseName : kResourceBaseName;
  raiseGeneration();
}

uint64_t messageGeneration() {
  LoaderState& loader = state();
  // Read first: a change stored before the raise this load sees is seen by
  // the checks below and by the lookups that follow.
  const uint64_t generation = loader.generation.load(std::memory_order_acquire);
  if (loader.override.load() != nullptr) return 0;
  if (loader.useResource.load() && loader.toLoad.load()) return 0;
  return generation;
}

}  // namespace zu::internal
