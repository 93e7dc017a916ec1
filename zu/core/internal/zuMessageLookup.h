// loadMessage: the one place where message texts are looked up by id.
//
// Error items and formatters built from a message id ask here for the text
// of that id from the message loader (zuPosixResourceLoader).
//
//   zuString text;
//   if (zu::internal::loadMessage(16479, text)) { ... }
#pragma once

#include "zu/core/zuString.h"

namespace zu::internal {

// Fills `text` with message `id`. Returns non-zero when found; otherwise
// returns 0 and leaves `text` empty. May throw zuExResourceFailure (see
// zuPosixResourceLoader::LoadResource).
int loadMessage(unsigned short id, zuString& text);

}  // namespace zu::internal
