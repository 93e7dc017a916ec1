// Locale-name spelling rules, worked in place on a caller's buffer so that
// resolving an already canonical name needs no allocation.
#pragma once

#include <cstddef>

namespace zu::internal {

// Rewrites the `length` bytes of `name` into the canonical spelling (see
// RnLocale::normalize); the length does not change.
void normalizeLocaleName(char* name, size_t length);

// The length of `name` up to its first "." or "@" (`length` when neither).
size_t unqualifiedLength(const char* name, size_t length);

}  // namespace zu::internal
