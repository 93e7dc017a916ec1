#include "zu/runtime/zuEvent.h"

#include <new>

#include "zu/core/zuException.h"
#include "zu/runtime/zuPosixEvent.h"

zuEvent::~zuEvent() = default;

zuEvent* zuEvent::NewEvent(ResetType resetType) {
  zuEvent* event = new (std::nothrow) zuPosixEvent(resetType);
  if (event == nullptr) throw zuExMemory();
  return event;
}
