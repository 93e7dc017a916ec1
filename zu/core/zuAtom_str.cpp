#include "zu/core/zuAtom_str.h"

#include "zu/core/zuAtomTable.h"

zuAtom_str::zuAtom_str() : zuAtom_str(zuAtomTable::emptyString()) {}

zuAtom_str::zuAtom_str(zuAtomStore* atom) : zuString(atom), atom_(atom) {}

zuAtom_str::zuAtom_str(const char* text, unsigned int threadId)
    : zuAtom_str(zuAtomTable::getAtom(text, threadId)) {}
