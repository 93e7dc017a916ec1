// ZU_EXPORT marks the library's public classes and free functions.
//
// The library is built with hidden visibility: only what carries this macro
// is reachable from libzuutility.so. Put it on every public class and on
// every public free function:
//
//   class ZU_EXPORT zuString { ... };
//   ZU_EXPORT int zuUTF8toUCS(unsigned int& out, const char* in, unsigned int avail);
#pragma once

#define ZU_EXPORT __attribute__((visibility("default")))
