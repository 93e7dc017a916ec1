// zuutility: the umbrella header. Includes every public header of the library.
//
//   #include <zu/zuutility.h>
#pragma once

#include "zu/core/zuExport.h"

// Strings


// Unicode encodings
#include "zu/core/zuUnicode.h"


// Exceptions and message formatting


// Threads, synchronisation and thread-local storage


// Block cache and atoms

