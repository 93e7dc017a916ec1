// zuCatalogue: one loaded message catalogue, the body behind a zuModule.
//
// A catalogue file is UTF-8 text with one message a line, "ID<TAB>TEXT";
// blank lines and lines starting with "#" are skipped, and "\t", "\n" and
// "\\" are escapes in TEXT. Lines that do not have that form are ignored,
// so a damaged file yields the messages it still holds.
//
//   zuCatalogue catalogue;
//   parseCatalogue(bytes, size, catalogue.texts);
//   const std::string* text = catalogue.find(16479);
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>

namespace zu::internal {

using zuCatalogueTexts = std::unordered_map<uint16_t, std::string>;

struct zuCatalogue {
  // The folder the file was read from, ending in "/"; catalogues loaded
  // "next to" this one are looked for there. Empty for a bare file name.
  std::string directory;
  zuCatalogueTexts texts;

  // The text of message `id`, null when the catalogue has none.
  const std::string* find(uint16_t id) const;
};

// Longest text a lookup hands out, in UTF-16 code units: a text longer than
// this is cut at a code point boundary when it is read.
constexpr size_t kMaxTextUnits = 1023;

// Adds the messages of the catalogue text `bytes` to `texts`. The first line
// for an id wins; empty texts count as missing. A leading UTF-8 byte-order
// mark is skipped. Never fails: malformed lines are ignored.
void parseCatalogue(const char* bytes, size_t size, zuCatalogueTexts& texts);

// Reads and parses the file at `path` into `catalogue` (its directory set
// from the path). Returns false when the file cannot be read.
bool readCatalogueFile(const std::string& path, zuCatalogue& catalogue);

}  // namespace zu::internal
