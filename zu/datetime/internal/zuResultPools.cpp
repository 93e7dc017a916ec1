#include "zu/datetime/internal/zuResultPools.h"

namespace zu::internal {

ResultPools::ResultPools() {
  unsigned int capacity = 8;
  for (zuString& block : blocks) {
    block.ReAlloc(capacity, 0);
    capacity *= 2;
  }
}

}  // namespace zu::internal
