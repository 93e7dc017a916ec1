#include "zu/runtime/zuTlsAnchor.h"

#include <algorithm>
#include <atomic>

#include "zu/core/zuException.h"
#include "zu/runtime/zuMutex.h"
#include "zu/runtime/zuPosixTlsAnchor.h"

namespace {

std::atomic<unsigned int> gSize{0};
// Guarded by the default mutex.
int gNextIndex = 0;

}  // namespace

zuTlsObject::~zuTlsObject() = default;

zuTlsAnchor::zuTlsAnchor() {
  objects_.reserve(Size());
}

zuTlsAnchor::~zuTlsAnchor() {
  while (!objects_.empty()) {
    zuTlsObject* object = objects_.back();
    objects_.pop_back();
    delete object;
  }
}

zuTlsAnchor* zuTlsAnchor::GetTlsAnchor() {
  return zuPosixTlsAnchor::GetTlsAnchor();
}

int zuTlsAnchor::RegisterTlsObject(zuTlsObject* object) {
  if (object == nullptr) return -1;
  try {
    objects_.push_back(object);
  } catch (const std::bad_alloc&) {
    throw zuExMemory();
  }
  zuAcquireDefaultMutex lock;
  object->Index(gNextIndex++);
  return object->Index();
}

zuTlsObject* zuTlsAnchor::Object(int index) const {
  auto found = std::find_if(objects_.begin(), objects_.end(), [index](const zuTlsObject* object) {
    return object->Index() == index;
  });
  return found != objects_.end() ? *found : nullptr;
}

void zuTlsAnchor::SetSize(unsigned int size) {
  gSize.store(size, std::memory_order_relaxed);
}

unsigned int zuTlsAnchor::Size() {
  return gSize.load(std::memory_order_relaxed);
}

void zuTlsAnchor::ThreadExitCleanup() {
  zuPosixTlsAnchor::ThreadExitCleanup();
}

void zuTlsAnchor::ReleaseTlsAnchorSingletons() {
  zuPosixTlsAnchor::ReleaseTlsAnchorSingletons();
}
