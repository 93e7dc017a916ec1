#include "zu/locale/internal/RnRunTimeStore.h"

#include "zu/locale/internal/RnDataTable.h"
#include "zu/locale/internal/RnLocaleRegistry.h"
#include "zu/runtime/internal/zuRememberedSlots.h"

namespace zu::internal {

namespace {

// The calling thread's last answer to threadHasOwnLocales and the slot
// generation it was found under.
[[gnu::tls_model("initial-exec")]] thread_local bool tOwnLocalesKnown = false;
[[gnu::tls_model("initial-exec")]] thread_local bool tHasOwnLocales = false;
[[gnu::tls_model("initial-exec")]] thread_local uint64_t tOwnLocalesGeneration = 0;

}  // namespace

bool threadHasOwnLocales() {
  const uint64_t generation = gRememberedSlotGeneration.load(std::memory_order_acquire);
  if (tOwnLocalesKnown && tOwnLocalesGeneration == generation) return tHasOwnLocales;
  tHasOwnLocales =
      RnRunTimeStore::current(false) != nullptr || RnLocaleRegistry::current() != nullptr;
  // The generation read before the lookups: a change since then is seen at
  // the next call.
  tOwnLocalesGeneration = generation;
  tOwnLocalesKnown = true;
  return tHasOwnLocales;
}

RnRunTimeStore* RnRunTimeStore::current(bool create) {
  auto* store = static_cast<RnRunTimeStore*>(
      zuThreadLocalStorage::getThreadStorage(zuThreadLocalStorage::eLocaleRuntimeData));
  if (store == nullptr && create) {
    store = new RnRunTimeStore;
    zuThreadLocalStorage::setThreadStorage(zuThreadLocalStorage::eLocaleRuntimeData, store);
  }
  return store;
}

RnRunTimeData_s* RnRunTimeStore::find(std::string_view name) const {
  for (const Entry& entry : entries_) {
    if (std::string_view(entry.name, entry.name.Length()) == name) return entry.data.get();
  }
  return nullptr;
}

RnRunTimeData_s* RnRunTimeStore::findOrAdd(std::string_view name) {
  if (RnRunTimeData_s* found = find(name)) return found;
  Entry entry{zuString(name.data(), static_cast<unsigned int>(name.size())),
              std::make_unique<RnRunTimeData_s>()};
  entries_.push_back(std::move(entry));
  return entries_.back().data.get();
}

bool RnRunTimeStore::remove(std::string_view name) {
  for (auto it = entries_.begin(); it != entries_.end(); ++it) {
    if (std::string_view(it->name, it->name.Length()) == name) {
      entries_.erase(it);
      return true;
    }
  }
  return false;
}

const zuString* runTimeField(const RnRunTimeData_s& data, int field) {
  struct Group {
    int first;
    int count;
    const zuString* entries;
  };
  const Group groups[] = {
      {kFieldMeridiem, 2, data.meridiemNames},
      {kFieldCurrency, 3, data.currency},
      {kFieldTimeFormat, 4, data.timeFormats},
      {kFieldDateFormat, 4, data.dateFormats},
      {kFieldAbbrWeekDay, 7, data.abbrWeekDayNames},
      {kFieldWeekDay, 7, data.weekDayNames},
      {kFieldEra, 2, data.eraNames},
      {kFieldAbbrMonth, 12, data.abbrMonthNames},
      {kFieldMonth, 12, data.monthNames},
      {kFieldNumSymbol, 5, data.numericSymbols},
      {kFieldNumFormat, 3, data.numberFormats},
  };
  for (const Group& group : groups) {
    if (field >= group.first && field < group.first + group.count) {
      return &group.entries[field - group.first];
    }
  }
  return nullptr;
}

}  // namespace zu::internal
