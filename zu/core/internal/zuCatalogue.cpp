#include "zu/core/internal/zuCatalogue.h"

#include <cstdio>
#include <memory>

namespace zu::internal {

namespace {

constexpr unsigned int kMaxId = 0xFFFF;

// Reads a decimal message id from [pos, end) up to a tab; false when the
// field is empty, holds anything else, or exceeds 16 bits.
bool readId(const char*& pos, const char* end, uint16_t& id) {
  unsigned int value = 0;
  const char* start = pos;
  while (pos < end && *pos >= '0' && *pos <= '9') {
    value = value * 10 + static_cast<unsigned int>(*pos - '0');
    if (value > kMaxId) return false;
    ++pos;
  }
  if (pos == start || pos == end || *pos != '\t') return false;
  ++pos;
  id = static_cast<uint16_t>(value);
  return true;
}

// Continuation bytes a lead byte announces; 0 for ASCII and stray bytes.
size_t continuationsOf(unsigned char lead) {
  if (lead >= 0xF0 && lead <= 0xF7) return 3;
  if (lead >= 0xE0) return lead <= 0xEF ? 2 : 0;
  return lead >= 0xC0 ? 1 : 0;
}

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

// Cuts `text` to kMaxTextUnits UTF-16 code units, never inside a sequence.
// A four-byte sequence takes two units; malformed bytes one each, as a
// lenient decoder shows them.
void limitUnits(std::string& text) {
  size_t units = 0;
  for (size_t pos = 0; pos < text.size();) {
    const size_t continuations = continuationsOf(static_cast<unsigned char>(text[pos]));
    units += continuations == 3 ? 2 : 1;
    if (units > kMaxTextUnits) {
      text.resize(pos);
      return;
    }
    ++pos;
    for (size_t taken = 0; taken < continuations && pos < text.size() &&
                           isContinuation(static_cast<unsigned char>(text[pos]));
         ++taken) {
      ++pos;
    }
  }
}

std::string unescape(const char* pos, const char* end) {
  std::string text;
  text.reserve(static_cast<size_t>(end - pos));
  for (; pos < end; ++pos) {
    if (*pos != '\\' || pos + 1 == end) {
      text += *pos;
      continue;
    }
    switch (pos[1]) {
      case 't':
        text += '\t';
        ++pos;
        break;
      case 'n':
        text += '\n';
        ++pos;
        break;
      case '\\':
        text += '\\';
        ++pos;
        break;
      default:
        text += '\\';
        break;  // not an escape: kept as written
    }
  }
  return text;
}

void parseLine(const char* pos, const char* end, zuCatalogueTexts& texts) {
  if (end > pos && end[-1] == '\r') --end;
  if (pos == end || *pos == '#') return;
  uint16_t id = 0;
  if (!readId(pos, end, id)) return;
  std::string text = unescape(pos, end);
  limitUnits(text);
  if (!text.empty()) texts.emplace(id, std::move(text));
}

std::string directoryOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

}  // namespace

const std::string* zuCatalogue::find(uint16_t id) const {
  const auto found = texts.find(id);
  return found == texts.end() ? nullptr : &found->second;
}

void parseCatalogue(const char* bytes, size_t size, zuCatalogueTexts& texts) {
  const char* pos = bytes;
  const char* const end = bytes + size;
  if (size >= 3 && static_cast<unsigned char>(bytes[0]) == 0xEF &&
      static_cast<unsigned char>(bytes[1]) == 0xBB &&
      static_cast<unsigned char>(bytes[2]) == 0xBF) {
    pos += 3;
  }
  while (pos < end) {
    const char* lineEnd = pos;
    while (lineEnd < end && *lineEnd != '\n') ++lineEnd;
    parseLine(pos, lineEnd, texts);
    pos = lineEnd + (lineEnd < end ? 1 : 0);
  }
}

bool readCatalogueFile(const std::string& path, zuCatalogue& catalogue) {
  std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
  if (!file) return false;
  std::string bytes;
  char buffer[8192];
  size_t got = 0;
  while ((got = std::fread(buffer, 1, sizeof buffer, file.get())) > 0) bytes.append(buffer, got);
  if (std::ferror(file.get())) return false;
  catalogue.directory = directoryOf(path);
  parseCatalogue(bytes.data(), bytes.size(), catalogue.texts);
  return true;
}

}  // namespace zu::internal
