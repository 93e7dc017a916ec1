#include "zu/core/internal/zuMessageLookup.h"

namespace zu::internal {

int loadMessage(unsigned short id, zuString& text) {
  if (text.LoadResource(id)) return 1;
  text = zuString::EmptyString();
  return 0;
}

}  // namespace zu::internal
