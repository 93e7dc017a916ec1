// The locale names zuDate holds: pointers to canonical names that live as
// long as the process, so that a date copies as three words and crosses
// threads without a lock.
//
//   const char* name = zu::internal::dateLocale("fr-fr");   // "fr_FR"
//   zu::internal::defaultDateLocale();                       // "en_US" under LANG=C
#pragma once

#include "zu/core/zuString.h"

namespace zu::internal {

// The thread's locale (RnLocale::getLocale()), or "en_US" when that does
// not resolve. Allocates nothing unless the name is a locale the thread
// registered at run time, whose name is then interned (see internName).
const char* defaultDateLocale();

// The canonical name of `name` resolved as an RnLocale; defaultDateLocale()
// when it does not resolve.
const char* dateLocale(const zuString& name);

// A copy of `name` that lives as long as the process; equal names give the
// same pointer. Takes a library-wide mutex; the first call for a name
// allocates. Throws zuExMemory.
const char* internName(const char* name);

}  // namespace zu::internal
