// The library-wide list of loaded catalogues: each name is loaded once and
// stays loaded until the library unloads, so a zuModule handed out once
// stays valid for the life of the process.
//
//   const zuCatalogue* fr = findOrLoadCatalogue("Resourcesfr", {"/opt/app/Resourcesfr.msg"});
#pragma once

#include <string>
#include <vector>

#include "zu/core/internal/zuCatalogue.h"

namespace zu::internal {

// The catalogue already loaded under `name`; otherwise the first of `paths`
// that can be read, entered under `name`. Null when none can be read (the
// next call tries again). Safe to call from any thread. Throws zuExMemory.
const zuCatalogue* findOrLoadCatalogue(const std::string& name,
                                       const std::vector<std::string>& paths);

// The folder of the library's own binary (found with dladdr), ending in "/".
const std::string& libraryDirectory();

// The path of the running executable.
std::string executablePath();

}  // namespace zu::internal
