// Arbitrary bytes as a message catalogue file: parsing must not crash, and
// every text it keeps must be non-empty and within the length a lookup hands
// out.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "zu/core/internal/zuCatalogue.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  zu::internal::zuCatalogueTexts texts;
  zu::internal::parseCatalogue(reinterpret_cast<const char*>(data), size, texts);
  for (const auto& [id, text] : texts) {
    if (text.empty() || text.size() > 4 * zu::internal::kMaxTextUnits) std::abort();
  }
  return 0;
}
