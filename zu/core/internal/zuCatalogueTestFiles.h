// Helpers for tests that write catalogue files: a scratch folder removed
// with its contents, and locale variables set for one test and restored.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zu::internal {

class zuScratchFolder {
 public:
  zuScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "zucatXXXXXX").string();
    path_ = mkdtemp(pattern.data()) != nullptr ? pattern : std::string();
  }
  ~zuScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  zuScratchFolder(const zuScratchFolder&) = delete;
  zuScratchFolder& operator=(const zuScratchFolder&) = delete;

  const std::string& path() const { return path_; }
  // Writes `content` to `name` under the folder, making sub-folders.
  std::string write(const std::string& name, const std::string& content) const {
    const std::filesystem::path file = std::filesystem::path(path_) / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file.string();
  }

 private:
  std::string path_;
};

// Sets (or, with null, unsets) the locale variables for its lifetime.
class zuLocaleEnvironment {
 public:
  zuLocaleEnvironment(const char* lcAll, const char* lang) {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
      const char* value = std::getenv(name);
      saved_.emplace_back(name, value ? std::optional<std::string>(value) : std::nullopt);
    }
    unsetenv("LC_MESSAGES");
    set("LC_ALL", lcAll);
    set("LANG", lang);
  }
  ~zuLocaleEnvironment() {
    for (const auto& [name, value] : saved_) set(name.c_str(), value ? value->c_str() : nullptr);
  }
  zuLocaleEnvironment(const zuLocaleEnvironment&) = delete;
  zuLocaleEnvironment& operator=(const zuLocaleEnvironment&) = delete;

 private:
  static void set(const char* name, const char* value) {
    if (value != nullptr) {
      setenv(name, value, 1);
    } else {
      unsetenv(name);
    }
  }
  std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};

}  // namespace zu::internal
