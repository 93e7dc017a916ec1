#include "zu/locale/RnLocale.h"

#include <cstring>
#include <memory>
#include <new>

#include "zu/core/zuException.h"
#include "zu/locale/internal/RnLocaleMap.h"
#include "zu/locale/internal/RnLocaleName.h"
#include "zu/locale/internal/RnLocaleRegistry.h"

using zu::internal::kLocaleMap;
using zu::internal::RnLocaleRegistry;

namespace {

// Names shorter than this are normalised on the stack; every canonical name
// is far shorter.
constexpr size_t kStackNameSize = 64;

// The handle of a normalised, NUL-terminated name: the thread's registry
// first, then the map.
int32_t searchNormalized(const char* name) {
  if (const RnLocaleRegistry* registry = RnLocaleRegistry::current()) {
    if (const unsigned int position = registry->find(name)) return -static_cast<int32_t>(position);
  }
  return zu::internal::findLocaleMapRow(name);
}

int32_t resolve(const char* name) {
  if (name == nullptr || *name == '\0') return 0;
  const size_t length = std::strlen(name);
  char stackCopy[kStackNameSize];
  std::unique_ptr<char[]> heapCopy;
  char* copy = stackCopy;
  if (length >= kStackNameSize) {
    heapCopy.reset(new (std::nothrow) char[length + 1]);
    if (heapCopy == nullptr) return 0;
    copy = heapCopy.get();
  }
  std::memcpy(copy, name, length + 1);
  zu::internal::normalizeLocaleName(copy, length);

  if (const int32_t handle = searchNormalized(copy)) return handle;
  // 'fr_FR.iso88591@euro' is found as "fr_FR".
  const size_t bare = zu::internal::unqualifiedLength(copy, length);
  if (bare == length) return 0;
  copy[bare] = '\0';
  return searchNormalized(copy);
}

bool startsWith(const char* text, const char* prefix) {
  return std::strncmp(text, prefix, std::strlen(prefix)) == 0;
}

// Equal to `language` or beginning with `language` and "_".
bool isLanguage(const char* name, const char* language) {
  const size_t length = std::strlen(language);
  return std::strncmp(name, language, length) == 0 && (name[length] == '\0' || name[length] == '_');
}

const zuString& emptyIfNull(const zuString& text) {
  static const zuLiteral kEmpty("");
  return text.IsNull() ? kEmpty : text;
}

}  // namespace

RnLocale::RnLocale(const char* name) : handle_(resolve(name)) {}

RnLocale::RnLocale(const zuString& name)
    : handle_(resolve(name.IsNull() ? nullptr : static_cast<const char*>(name))) {}

bool RnLocale::operator==(const RnLocale& other) const {
  return std::strcmp(getName(), other.getName()) == 0;
}

// --- Identity ----------------------------------------------------------------

namespace {

// The registry entry of a negative handle; null when the thread no longer
// has it.
const RnRunTimeDesc_s* registryEntry(int32_t handle) {
  const RnLocaleRegistry* registry = RnLocaleRegistry::current();
  return registry != nullptr ? registry->at(static_cast<unsigned int>(-handle)) : nullptr;
}

}  // namespace

const char* RnLocale::getName() const {
  if (handle_ >= 0) return kLocaleMap[handle_].name;
  const RnRunTimeDesc_s* entry = registryEntry(handle_);
  return entry != nullptr ? static_cast<const char*>(entry->name) : kLocaleMap[0].name;
}

const char* RnLocale::getWinName() const {
  if (handle_ >= 0) return kLocaleMap[handle_].descName;
  const RnRunTimeDesc_s* entry = registryEntry(handle_);
  return entry != nullptr ? static_cast<const char*>(entry->descName) : "";
}

const char* RnLocale::getCharSet() const {
  if (handle_ >= 0) return kLocaleMap[handle_].codeSet;
  const RnRunTimeDesc_s* entry = registryEntry(handle_);
  return entry != nullptr ? static_cast<const char*>(entry->codeSet) : "";
}

unsigned long RnLocale::getWinLCID() const {
  return handle_ >= 0 ? kLocaleMap[handle_].lcid : 0;
}

// --- Family tests --------------------------------------------------------------

bool RnLocale::isArabic() const {
  return isValid() && startsWith(getName(), "ar");
}
bool RnLocale::isChinese() const {
  return isValid() && startsWith(getName(), "zh");
}
bool RnLocale::isSimplifiedChinese() const {
  // Hong Kong counts as simplified here on purpose.
  return isValid() &&
         (std::strcmp(getName(), "zh_CN") == 0 || std::strcmp(getName(), "zh_HK") == 0);
}
bool RnLocale::isTraditionalChinese() const {
  return isValid() && std::strcmp(getName(), "zh_TW") == 0;
}
bool RnLocale::isJapanese() const {
  return isValid() && startsWith(getName(), "ja");
}
bool RnLocale::isKorean() const {
  return isValid() && startsWith(getName(), "ko");
}
bool RnLocale::isKoreanHani() const {
  return isValid() && std::strcmp(getName(), "ko_KR_HANI") == 0;
}
bool RnLocale::isThai() const {
  return isValid() && startsWith(getName(), "th");
}
bool RnLocale::isBIDI() const {
  const char* name = getName();
  return isValid() && (isLanguage(name, "ar") || isLanguage(name, "he") || isLanguage(name, "fa"));
}
bool RnLocale::isIdeographic() const {
  const char* name = getName();
  return isValid() && (isLanguage(name, "ja") || isLanguage(name, "ko") || isLanguage(name, "zh"));
}
bool RnLocale::needsDictionaryBreaking() const {
  return isValid() && isLanguage(getName(), "th");
}

// --- Name services --------------------------------------------------------------

zuString RnLocale::normalize(const char* name) {
  try {
    zuString result(name);
    const unsigned int length = result.Length();
    if (length > 0) zu::internal::normalizeLocaleName(result.ReAlloc(length), length);
    return result;
  } catch (const std::bad_alloc&) {
    return zuString("");
  }
}

zuString RnLocale::dequalify(const zuString& name, bool& wasQualified) {
  const char* text = name;
  const size_t length = name.Length();
  const size_t bare = zu::internal::unqualifiedLength(text, length);
  wasQualified = bare < length;
  if (!wasQualified) return zuString("");
  try {
    return zuString(text, static_cast<unsigned int>(bare));
  } catch (const std::bad_alloc&) {
    return zuString("");
  }
}

int RnLocale::searchMap(const zuString& name) {
  return name.IsEmpty() ? 0 : searchNormalized(name);
}

const zuLiteral& RnLocale::getDEFAULT_LOCALE() {
  static const zuLiteral kDefault("en_US");
  return kDefault;
}

// --- Registry ----------------------------------------------------------------------

void RnLocale::update(const zuString& name, const zuString& base) {
  const zuString normalized = normalize(name);
  unsigned int codeSetAt = 0;
  const bool hasCodeSet = normalized.CharInString('.', codeSetAt);

  std::unique_ptr<RnRunTimeDesc_s> entry(new (std::nothrow) RnRunTimeDesc_s);
  if (entry == nullptr) throw zuExMemory();
  entry->name = zuString(normalized, codeSetAt);
  const RnLocale baseLocale(base);
  entry->descName = baseLocale.isValid() ? zuString(baseLocale.getWinName()) : emptyIfNull(base);
  if (hasCodeSet) {
    entry->codeSet = zuString(static_cast<const char*>(normalized) + codeSetAt + 1);
  } else {
    entry->codeSet = baseLocale.isValid() ? baseLocale.getCharSet() : "";
  }
  RnLocaleRegistry::currentOrCreate().insert(entry.release());
}

unsigned int RnLocale::get(const zuString& name) {
  const RnLocaleRegistry* registry = RnLocaleRegistry::current();
  return registry != nullptr ? registry->find(name) : 0;
}

RnRunTimeDesc_s* RnLocale::get(unsigned int position) {
  const RnLocaleRegistry* registry = RnLocaleRegistry::current();
  return registry != nullptr ? registry->at(position) : nullptr;
}

void RnLocale::release(RnRunTimeDesc_s* entry) {
  if (entry == nullptr) return;
  if (RnLocaleRegistry* registry = RnLocaleRegistry::current()) registry->remove(entry);
  delete entry;
}

void RnLocale::reset() {
  if (RnLocaleRegistry* registry = RnLocaleRegistry::current()) registry->clearExceptPlaceholder();
}
