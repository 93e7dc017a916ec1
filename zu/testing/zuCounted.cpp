#include "zu/testing/zuCounted.h"

#include <chrono>

namespace zu::testing {

CountedStorage::~CountedStorage() {
  ++destroyed_;
}

CountedTlsObject::~CountedTlsObject() {
  ++destroyed_;
}

void spin(int milliseconds) {
  const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  volatile unsigned long sink = 0;
  while (std::chrono::steady_clock::now() < until) sink = sink + 1;
}

}  // namespace zu::testing
