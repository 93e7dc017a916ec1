#include "zu/core/internal/zuCatalogueRegistry.h"

#include <dlfcn.h>
#include <errno.h>
#include <limits.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

#include "zu/core/zuException.h"

namespace zu::internal {

namespace {

struct Registry {
  std::mutex mutex;
  std::vector<std::pair<std::string, std::unique_ptr<zuCatalogue>>> loaded;
};

// Lives until the library unloads; its destructor frees every catalogue.
Registry& registry() {
  static Registry instance;
  return instance;
}

std::string directoryOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string("./") : path.substr(0, slash + 1);
}

// The file that holds this function: the shared library, or the executable
// when the library's objects are linked into it statically.
std::string libraryPath() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&libraryPath), &info) == 0 || info.dli_fname == nullptr ||
      *info.dli_fname == '\0' || std::strcmp(info.dli_fname, program_invocation_name) == 0) {
    // The main program is reported by the name it was started with, which
    // need not be a path; the kernel knows the real one.
    return executablePath();
  }
  char resolved[PATH_MAX];
  return realpath(info.dli_fname, resolved) != nullptr ? std::string(resolved)
                                                       : std::string(info.dli_fname);
}

}  // namespace

const zuCatalogue* findOrLoadCatalogue(const std::string& name,
                                       const std::vector<std::string>& paths) {
  try {
    Registry& list = registry();
    std::lock_guard<std::mutex> lock(list.mutex);
    for (const auto& [loadedName, catalogue] : list.loaded) {
      if (loadedName == name) return catalogue.get();
    }
    for (const std::string& path : paths) {
      auto catalogue = std::make_unique<zuCatalogue>();
      if (!readCatalogueFile(path, *catalogue)) continue;
      list.loaded.emplace_back(name, std::move(catalogue));
      return list.loaded.back().second.get();
    }
    return nullptr;
  } catch (const std::bad_alloc&) {
    throw zuExMemory();
  }
}

const std::string& libraryDirectory() {
  static const std::string directory = directoryOf(libraryPath());
  return directory;
}

std::string executablePath() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
  return length > 0 ? std::string(path, static_cast<size_t>(length)) : std::string();
}

}  // namespace zu::internal
