#include "zu/core/zuNewHandler.h"

#include <atomic>

#include "zu/core/zuException.h"

namespace {

// The handler of the innermost live zuNewHandler. std::new_handler takes no
// argument, so the runtime calls callInstalledHandler, which forwards here.
std::atomic<zuNewHandler::Handler> installedHandler{nullptr};

void callInstalledHandler() {
  const zuNewHandler::Handler handler = installedHandler.load();
  if (handler == nullptr || handler(0) == 0) throw zuExMemory();
}

}  // namespace

zuNewHandler::zuNewHandler(Handler handler)
    : previousRuntimeHandler_(std::set_new_handler(callInstalledHandler)),
      previousHandler_(installedHandler.exchange(handler)) {}

zuNewHandler::~zuNewHandler() {
  installedHandler.store(previousHandler_);
  std::set_new_handler(previousRuntimeHandler_);
}

int ZuExMemoryHandler(unsigned int) {
  throw zuExMemory();
}
