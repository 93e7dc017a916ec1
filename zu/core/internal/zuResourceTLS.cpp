#include "zu/core/internal/zuResourceTLS.h"

#include <algorithm>
#include <new>

#include "zu/core/zuException.h"

namespace zu::internal {

zuPosixResourceTLS* zuPosixResourceTLS::current(int create) {
  auto* holder = static_cast<zuPosixResourceTLS*>(
      zuThreadLocalStorage::getThreadStorage(zuThreadLocalStorage::eResourceLoader));
  if (holder != nullptr || create == 0) return holder;
  holder = new (std::nothrow) zuPosixResourceTLS;
  if (holder == nullptr) throw zuExMemory();
  zuThreadLocalStorage::setThreadStorage(zuThreadLocalStorage::eResourceLoader, holder);
  return holder;
}

void zuPosixResourceTLS::add(zuModule module) {
  try {
    handles_.push_back(module);
  } catch (const std::bad_alloc&) {
    throw zuExMemory();
  }
}

void zuPosixResourceTLS::remove(zuModule module) {
  handles_.erase(std::remove(handles_.begin(), handles_.end(), module), handles_.end());
}

}  // namespace zu::internal
