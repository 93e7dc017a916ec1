// zuutility: the umbrella header. Includes every public header of the library.
//
//   #include <zu/zuutility.h>
#pragma once

#include "zu/core/zuExport.h"

// Strings
#include "zu/core/zuLiteral.h"
#include "zu/core/zuString.h"
#include "zu/core/zuThreadSafeString.h"


// Unicode encodings
#include "zu/core/zuUCS2.h"
#include "zu/core/zuUCS4.h"
#include "zu/core/zuUnicode.h"


// Exceptions and message formatting
#include "zu/core/zuException.h"


// Threads, synchronisation and thread-local storage


// Block cache and atoms

