// Test access to the message loader's library-wide state.
#pragma once

namespace zu::internal {

// Puts the loader back as it was at start-up: no client, override or
// resource catalogue, the resource catalogue still to load under the base
// name `baseName` (null: "Resources"), the executable's catalogue not yet
// looked for. Catalogues already loaded stay loaded. Never called by the
// library itself.
void resetResourceLoaderForTesting(const char* baseName = nullptr);

}  // namespace zu::internal
