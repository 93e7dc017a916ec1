#include "zu/core/internal/zuDecodeTable.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <mutex>
#include <vector>

#include "zu/core/internal/zuCodePageNames.h"

namespace zu::internal {

namespace {

// Outcome of decoding a short byte sequence on its own.
struct Probe {
  UErrorCode status;
  int units;      // UTF-16 units produced
  char16_t unit;  // the first of them
  int consumed;   // bytes read
};

Probe probe(UConverter* converter, const char* bytes, int length) {
  ucnv_reset(converter);
  UChar units[4];
  UChar* target = units;
  const char* source = bytes;
  UErrorCode status = U_ZERO_ERROR;
  ucnv_toUnicode(converter, &target, units + 4, &source, bytes + length, nullptr, true, &status);
  return Probe{status, static_cast<int>(target - units), target > units ? units[0] : u'\0',
               static_cast<int>(source - bytes)};
}

// A clean answer: one BMP character, not a surrogate and not one of the marks.
bool isClean(const Probe& result, int length) {
  return U_SUCCESS(result.status) && result.units == 1 && result.consumed == length &&
         (result.unit < 0xD800 || result.unit > 0xDFFF) && result.unit < 0xFFFE;
}

struct OwnedTable {
  zuDecodeTable table;
  std::vector<uint32_t> pairs;  // 256 entries per lead byte
};

std::unique_ptr<OwnedTable> build(int codePage) {
  char name[kCodePageNameSize];
  icuNameOf(codePage, name);
  if (name[0] == '\0') return nullptr;
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<UConverter, void (*)(UConverter*)> converter(ucnv_open(name, &status),
                                                               ucnv_close);
  if (U_FAILURE(status)) return nullptr;
  const UConverterType type = ucnv_getType(converter.get());
  const bool stateless = type == UCNV_SBCS || type == UCNV_DBCS || type == UCNV_MBCS ||
                         type == UCNV_LATIN_1 || type == UCNV_US_ASCII;
  if (!stateless || ucnv_getMaxCharSize(converter.get()) > 2 ||
      ucnv_getMinCharSize(converter.get()) != 1) {
    return nullptr;
  }
  // Every problem stops the conversion, so that a probe sees it.
  ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  if (U_FAILURE(status)) return nullptr;

  auto owned = std::make_unique<OwnedTable>();
  std::vector<int> leads;
  for (int byte = 0; byte < 256; ++byte) {
    const char one = static_cast<char>(byte);
    const Probe result = probe(converter.get(), &one, 1);
    if (isClean(result, 1)) {
      owned->table.single_[byte] = zuDecodeTable::encode(result.unit);
    } else if (result.status == U_TRUNCATED_CHAR_FOUND) {
      owned->table.single_[byte] = zuDecodeTable::kLead;
      leads.push_back(byte);
    } else {
      owned->table.single_[byte] = zuDecodeTable::kAskIcu;
    }
  }
  owned->pairs.resize(leads.size() * 256);
  for (size_t i = 0; i < leads.size(); ++i) {
    uint32_t* row = owned->pairs.data() + i * 256;
    for (int trail = 0; trail < 256; ++trail) {
      const char pair[2] = {static_cast<char>(leads[i]), static_cast<char>(trail)};
      const Probe result = probe(converter.get(), pair, 2);
      row[trail] = isClean(result, 2) ? zuDecodeTable::encode(result.unit) : zuDecodeTable::kAskIcu;
    }
    owned->table.pairs_[leads[i]] = row;
  }
  return owned;
}

struct Registry {
  std::mutex mutex;
  std::vector<std::pair<int, std::unique_ptr<OwnedTable>>> tables;
};

Registry& registry() {
  static Registry* instance = new Registry;  // used until the process ends
  return *instance;
}

}  // namespace

static_assert(std::endian::native == std::endian::little,
              "toUTF8 stores an entry's UTF-8 bytes as one little-endian word");

uint32_t zuDecodeTable::encode(char16_t unit) {
  if (unit < 0x80) return 1u << 24 | unit;
  if (unit < 0x800) return 2u << 24 | (0x80u | (unit & 0x3Fu)) << 8 | (0xC0u | unit >> 6);
  return 3u << 24 | (0x80u | (unit & 0x3Fu)) << 16 | (0x80u | (unit >> 6 & 0x3Fu)) << 8 |
         (0xE0u | unit >> 12);
}

bool zuDecodeTable::toUTF8(const char* in, unsigned int inBytes, char* out, unsigned int outBytes,
                           unsigned int& written) const {
  // No input byte gives more than three bytes of UTF-8, and each character
  // goes out as a whole word: with this much room no store needs a check.
  const bool roomy = uint64_t{outBytes} >= 3ull * inBytes + 1;
  unsigned char* const end =
      roomy ? decode<false>(in, inBytes, out, outBytes) : decode<true>(in, inBytes, out, outBytes);
  if (end == nullptr) return false;
  written = static_cast<unsigned int>(end - reinterpret_cast<unsigned char*>(out));
  return true;
}

template <bool kCheckRoom>
unsigned char* zuDecodeTable::decode(const char* in, unsigned int inBytes, char* out,
                                     unsigned int outBytes) const {
  const auto* bytes = reinterpret_cast<const unsigned char*>(in);
  const unsigned char* const end = bytes + inBytes;
  auto* cursor = reinterpret_cast<unsigned char*>(out);
  const unsigned char* const limit = cursor + outBytes;
  while (bytes < end) {
    uint32_t entry = single_[*bytes];
    if (entry >= kAskIcu) {
      if (entry != kLead || end - bytes < 2) return nullptr;
      entry = pairs_[bytes[0]][bytes[1]];
      if (entry >= kAskIcu) return nullptr;
      bytes += 2;
    } else {
      ++bytes;
    }
    const unsigned int length = entry >> 24;
    if (!kCheckRoom || limit - cursor >= 4) {
      // The whole entry goes out at once; the bytes past the character's are
      // overwritten by the next one or lie beyond the written text.
      std::memcpy(cursor, &entry, 4);
    } else if (limit - cursor >= length) {
      for (unsigned int i = 0; i < length; ++i) {
        cursor[i] = static_cast<unsigned char>(entry >> 8 * i);
      }
    } else {
      return nullptr;
    }
    cursor += length;
  }
  return cursor;
}

const zuDecodeTable* decodeTableFor(int codePage) {
  Registry& shared = registry();
  std::lock_guard<std::mutex> lock(shared.mutex);
  for (const auto& [page, owned] : shared.tables) {
    if (page == codePage) return owned ? &owned->table : nullptr;
  }
  shared.tables.emplace_back(codePage, build(codePage));
  const auto& owned = shared.tables.back().second;
  return owned ? &owned->table : nullptr;
}

}  // namespace zu::internal
