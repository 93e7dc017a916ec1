#include "zu/core/zuAtomInitializer.h"

#include "zu/core/zuAtomTable.h"

zuAtomInitializer::zuAtomInitializer(zuAtomStore* atom) {
  zuGlobalAtomTable()->initializeAtom(atom);
}

zuAtomInitializer::zuAtomInitializer(zuAtomStore** const* list) {
  zuGlobalAtomTable()->initializeAtoms(list);
}
