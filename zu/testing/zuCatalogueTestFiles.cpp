#include "zu/testing/zuCatalogueTestFiles.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace zu::testing {

namespace {

void setVariable(const char* name, const char* value) {
  if (value != nullptr) {
    setenv(name, value, 1);
  } else {
    unsetenv(name);
  }
}

}  // namespace

zuScratchFolder::zuScratchFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "zucatXXXXXX").string();
  path_ = mkdtemp(pattern.data()) != nullptr ? pattern : std::string();
}

zuScratchFolder::~zuScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string zuScratchFolder::write(const std::string& name, const std::string& content) const {
  const std::filesystem::path file = std::filesystem::path(path_) / name;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
  return file.string();
}

std::string zuScratchFolder::read(const std::string& name) const {
  std::ifstream file(std::filesystem::path(path_) / name, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

zuLocaleEnvironment::zuLocaleEnvironment(const char* lcAll, const char* lang,
                                         const char* lcMessages) {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    saved_.emplace_back(name, value ? std::optional<std::string>(value) : std::nullopt);
  }
  setVariable("LC_MESSAGES", lcMessages);
  setVariable("LC_ALL", lcAll);
  setVariable("LANG", lang);
}

zuLocaleEnvironment::~zuLocaleEnvironment() {
  for (const auto& [name, value] : saved_) {
    setVariable(name.c_str(), value ? value->c_str() : nullptr);
  }
}

}  // namespace zu::testing
