// The decimal-point character of the C runtime's numeric locale
// (LC_NUMERIC), as printf writes it. Core needs it to read back what the
// runtime prints; RnLocale::SystemDecimalPointAsChar() gives it to clients.
#pragma once

namespace zu::internal {

// The character printf puts between the digits of 1.0; asked anew on every
// call, since the locale may change at any time.
char runtimeDecimalPoint();

}  // namespace zu::internal
