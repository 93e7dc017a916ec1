#include "zu/testing/zuTestText.h"

namespace zu::testing {

std::string str(const zuString& text) {
  return std::string(static_cast<const char*>(text), text.Length());
}

}  // namespace zu::testing
