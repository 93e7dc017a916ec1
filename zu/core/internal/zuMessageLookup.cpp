#include "zu/core/internal/zuMessageLookup.h"

namespace zu::internal {

int loadMessage(unsigned short /*id*/, zuString& text) {
  text = zuString::EmptyString();
  return 0;
}

}  // namespace zu::internal
