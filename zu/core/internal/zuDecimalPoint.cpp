#include "zu/core/internal/zuDecimalPoint.h"

#include <cstdio>

namespace zu::internal {

char runtimeDecimalPoint() {
  char text[16];
  std::snprintf(text, sizeof text, "%2.1f", 1.0);
  return text[1];
}

}  // namespace zu::internal
