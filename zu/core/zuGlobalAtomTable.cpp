// The library-wide atom table, its predefined atoms, and the way to the
// per-thread tables.
#include "zu/core/internal/zuAtomIndex.h"
#include "zu/core/internal/zuAtomTableHolder.h"
#include "zu/core/zuAtomTable.h"

namespace {

zuAtomStore gEmptyStringRecord = {""};
zuAtomStore gZeroRecord = {"0"};
zuAtomStore gOneRecord = {"1"};
zuAtomStore gAsteriskRecord = {"*"};

struct GlobalAtomTable {
  GlobalAtomTable() {
    zuAtomStore** const predefined[] = {&aUT_EmptyString, &aUT_Zero, &aUT_One, &aUT_Asterisk,
                                        nullptr};
    zu::internal::zuAtomIndex::setGlobalTable(&table);
    table.initializeAtoms(predefined);
  }
  zuAtomTable table;
};

}  // namespace

zuAtomStore* aUT_EmptyString = &gEmptyStringRecord;
zuAtomStore* aUT_Zero = &gZeroRecord;
zuAtomStore* aUT_One = &gOneRecord;
zuAtomStore* aUT_Asterisk = &gAsteriskRecord;

zuAtomTable* zuGlobalAtomTable() {
  static GlobalAtomTable global;
  return &global.table;
}

zuAtomTable* zuThreadLocalAtomTable(unsigned int threadId, int create) {
  zu::internal::zuAtomTableHolder* holder = zu::internal::zuAtomTableHolder::of(threadId, create);
  return holder != nullptr ? &holder->table() : nullptr;
}
