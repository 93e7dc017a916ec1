#include "zu/core/internal/zuCodePointSet.h"

#include "zu/core/zuString.h"

namespace zu::internal {

int codePointSetContains(const zuString& set, unsigned int codePoint) {
  const unsigned int length = set.Length();
  for (unsigned int pos = 0; pos < length;) {
    if (set.UniChar(pos) == codePoint) return 1;
  }
  return 0;
}

}  // namespace zu::internal
