// The decimal-point character of the C library's current numeric locale.
//
// Read from the text printf makes of 1.0 ("%2.1f" gives "1.0" in the C
// locale, "1,0" in many others), so it follows setlocale wherever it is
// called. Code that parses or reformats printf output uses it to find the
// point it must replace with ".".
#pragma once

namespace zu::internal {

char systemDecimalPoint();

}  // namespace zu::internal
