// The calling thread's locale (RnLocale::getLocale) without a string
// object: for values that are made by the million and must not allocate.
//
//   bool isMapRow = false;
//   const char* name = zu::internal::threadLocaleName(isMapRow);   // "de_DE"
#pragma once

namespace zu::internal {

// The canonical name RnLocale::getLocale() returns: the locale recorded for
// the thread by setLocale, else the user default from the environment
// resolved, else "x". `isMapRow` is set when the text is a row of the static
// map (it lives as long as the process); otherwise it is the thread's
// registry entry (valid while that entry is) or the invalid handle's "x".
// Allocates nothing for names shorter than 64 bytes.
const char* threadLocaleName(bool& isMapRow);

}  // namespace zu::internal
