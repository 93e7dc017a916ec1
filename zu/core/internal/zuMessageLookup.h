// loadMessage: the one place where message texts are looked up by id.
//
// Error items and formatters built from a message id ask here for the text
// of that id from the message loader (zuPosixResourceLoader).
//
//   zuString text;
//   if (zu::internal::loadMessage(16479, text)) { ... }
//   uint64_t seen = zu::internal::messageGeneration();   // 0: look up every time
#pragma once

#include <cstdint>

#include "zu/core/zuString.h"

namespace zu::internal {

// Fills `text` with message `id`. Returns non-zero when found; otherwise
// returns 0 and leaves `text` empty. May throw zuExResourceFailure (see
// zuPosixResourceLoader::LoadResource).
int loadMessage(unsigned short id, zuString& text);

// The state of the message loader as a number: while it stays the same,
// loadMessage gives the calling thread the same answer for every id, so a
// caller may keep texts it looked up under it. Every change to the loader
// (override, client, utility or executable catalogue, the use of the
// resource catalogue, its loading, the calling thread's secondary
// catalogues, a reset) raises it before the next call returns. 0 when no
// answer may be kept: an override loader is set (its answers may change at
// any call) or the resource catalogue is still to load. Lock-free; any
// thread.
uint64_t messageGeneration();

}  // namespace zu::internal
