// Helpers for tests that write catalogue files: a scratch folder removed
// with its contents, and the locale variables set for one test and restored.
//
//   const zu::testing::zuLocaleEnvironment locale("fr_FR.UTF-8", nullptr);
//   const zu::testing::zuScratchFolder folder;
//   folder.write("Resourcesfr.msg", "17\tTexte\n");
//
// Both change process state (files, environment): not for use while other
// threads read the environment.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zu::testing {

class zuScratchFolder {
 public:
  // Makes a fresh folder under the system's temporary folder; path() is ""
  // when that fails.
  zuScratchFolder();
  // Removes the folder and everything written under it.
  ~zuScratchFolder();
  zuScratchFolder(const zuScratchFolder&) = delete;
  zuScratchFolder& operator=(const zuScratchFolder&) = delete;

  const std::string& path() const { return path_; }
  // Writes `content` to `name` under the folder, making sub-folders, and
  // returns the file's path.
  std::string write(const std::string& name, const std::string& content) const;
  // The bytes of `name` under the folder; "" when it cannot be read.
  std::string read(const std::string& name) const;

 private:
  std::string path_;
};

// Sets (or, with null, unsets) LC_ALL, LANG and LC_MESSAGES for its
// lifetime; the three are restored afterwards.
class zuLocaleEnvironment {
 public:
  zuLocaleEnvironment(const char* lcAll, const char* lang, const char* lcMessages = nullptr);
  ~zuLocaleEnvironment();
  zuLocaleEnvironment(const zuLocaleEnvironment&) = delete;
  zuLocaleEnvironment& operator=(const zuLocaleEnvironment&) = delete;

 private:
  std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};

}  // namespace zu::testing
