#include "zu/core/zuExDeleterFunctionHolder.h"

zuExDeleterFunctionHolder::Releasable::~Releasable() = default;

void zuExDeleterFunctionHolder::Delete() {
  Releasable* memory = memory_;
  memory_ = nullptr;
  if (memory == nullptr) return;
  try {
    memory->Release();
  } catch (...) {
    // Deliberately swallowed: the caller is already unwinding from an error.
  }
}
