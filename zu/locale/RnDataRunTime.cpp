// The per-thread run-time data of RnData, and the search for the most
// specific locale that has data.
#include <string_view>

#include "zu/locale/RnData.h"
#include "zu/locale/internal/RnDataName.h"
#include "zu/locale/internal/RnDataTable.h"
#include "zu/locale/internal/RnRunTimeStore.h"
#include "zu/runtime/zuThreadLocalStorage.h"

using namespace zu::internal;

namespace {

constexpr size_t kMaxNameLength = 64;

struct Name {
  char text[kMaxNameLength];
  size_t length;
  explicit Name(const char* name)
      : length(normaliseDataName(name != nullptr ? name : "", text, sizeof text)) {}
  std::string_view view() const { return {text, length}; }
};

// Valid UTF-8 without C0 or C1 control characters.
bool isCleanText(const zuString& text) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(static_cast<const char*>(text));
  const unsigned int length = text.Length();
  constexpr unsigned int kSmallest[] = {0, 0x80, 0x800, 0x10000};
  for (unsigned int i = 0; i < length;) {
    const unsigned char lead = bytes[i];
    const int extra = lead < 0x80                   ? 0
                      : lead >= 0xC2 && lead < 0xE0 ? 1
                      : lead >= 0xE0 && lead < 0xF0 ? 2
                      : lead >= 0xF0 && lead < 0xF5 ? 3
                                                    : -1;
    if (extra < 0 || length - i <= static_cast<unsigned int>(extra)) return false;
    unsigned int codePoint = extra == 0 ? lead : lead & (0x3Fu >> extra);
    for (int k = 1; k <= extra; ++k) {
      if ((bytes[i + k] & 0xC0) != 0x80) return false;
      codePoint = (codePoint << 6) | (bytes[i + k] & 0x3Fu);
    }
    if (codePoint < kSmallest[extra] || codePoint > 0x10FFFF ||
        (codePoint >= 0xD800 && codePoint < 0xE000)) {
      return false;
    }
    if (codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0)) return false;
    i += static_cast<unsigned int>(extra) + 1;
  }
  return true;
}

}  // namespace

RnRunTimeData_s* RnData::get(const char* locale) {
  RnRunTimeStore* store = RnRunTimeStore::current(false);
  return store != nullptr ? store->find(Name(locale).view()) : nullptr;
}

RnRunTimeData_s* RnData::get(const char* locale, RnRunTimeData_s* data) {
  const RnRunTimeData_s* stored = get(locale);
  if (stored == nullptr || data == nullptr) return nullptr;
  *data = *stored;
  return data;
}

int RnData::update(const zuString& locale, RnRunTimeData_s* data) {
  const Name name(locale);
  if (name.length == 0 || !validate(data)) return 0;
  RnRunTimeData_s* stored = RnRunTimeStore::current(true)->findOrAdd(name.view());
  for (int field = 0; field < kFieldCount; ++field) {
    const zuString* entry = runTimeField(*data, field);
    if (entry != nullptr && !entry->IsEmpty()) {
      *const_cast<zuString*>(runTimeField(*stored, field)) = *entry;
    }
  }
  noteRunTimeDataChange();
  return 1;
}

int RnData::release(const char* locale) {
  RnRunTimeStore* store = RnRunTimeStore::current(false);
  if (store == nullptr || !store->remove(Name(locale).view())) return 0;
  noteRunTimeDataChange();
  return 1;
}

void RnData::reset() {
  if (RnRunTimeStore::current(false) != nullptr) {
    zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::eLocaleRuntimeData);
  }
}

int RnData::validate(const RnRunTimeData_s* data) {
  if (data == nullptr) return 0;
  for (int field = 0; field < kFieldCount; ++field) {
    const zuString* entry = runTimeField(*data, field);
    if (entry != nullptr && !isCleanText(*entry)) return 0;
  }
  const zuString& decimal = data->numericSymbols[NUM_DECIMAL];
  const zuString& grouping = data->numericSymbols[NUM_GROUPING];
  if (!decimal.IsEmpty() && !grouping.IsEmpty() && decimal.Equals(grouping)) return 0;
  return 1;
}

zuString RnData::findMatchingLocale(const zuString& language, const zuString& country,
                                    const zuString& variant) {
  zuString joined = language;
  for (const zuString* part : {&country, &variant}) {
    if (part->IsEmpty()) continue;
    joined += "_";
    joined += *part;
  }
  Name name(joined);
  const RnRunTimeStore* store = RnRunTimeStore::current(false);
  while (name.length > 0) {
    if (findRnDataRecord(name.text) != nullptr ||
        (store != nullptr && store->find(name.view()) != nullptr)) {
      return zuString(name.text, static_cast<unsigned int>(name.length));
    }
    const size_t cut = name.view().rfind('_');
    name.length = cut == std::string_view::npos ? 0 : cut;
    name.text[name.length] = '\0';
  }
  return zuString(1, gpRoot);
}
