#include "zu/datetime/internal/zuResultPools.h"

#include "zu/core/internal/zuThreadMemo.h"
#include "zu/core/zuString.h"

namespace zu::internal {

namespace {

struct ResultPools {
  ResultPools() {
    unsigned int capacity = 8;
    for (zuString& block : blocks) {
      block.ReAlloc(capacity, 0);
      capacity *= 2;
    }
  }
  zuString blocks[3];
};

}  // namespace

void keepResultPools() {
  zuThreadMemo<ResultPools>::get();
}

}  // namespace zu::internal
