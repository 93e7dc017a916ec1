// Normalisation of the locale names that select locale data.
#pragma once

#include <cstddef>

namespace zu::internal {

// Writes the normalised form of `name` to `out` (at most `capacity` - 1
// bytes, NUL-terminated; a longer name is cut) and returns its length: the
// name is cut at its first ".", every "-" becomes "_", a four-letter second
// part is re-cased as a script ("latn" -> "Latn"), and everything after the
// language and script is upper-cased ("de_ch" -> "de_CH").
size_t normaliseDataName(const char* name, char* out, size_t capacity);

}  // namespace zu::internal
