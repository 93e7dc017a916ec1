#include "zu/runtime/zuTraceHandlerTLS.h"

#include <new>
#include <utility>

#include "zu/core/zuException.h"
#include "zu/runtime/internal/zuThreadId.h"
#include "zu/runtime/internal/zuThreadTable.h"

zuTraceHandlerTLS* zuTraceHandlerTLS::getTraceHandlerTLS(unsigned int threadId) {
  const unsigned int owner = threadId != 0 ? threadId : zu::internal::currentThreadId();
  auto* holder = static_cast<zuTraceHandlerTLS*>(
      zuThreadLocalStorage::getThreadStorage(zuThreadLocalStorage::eTraceHandler, owner));
  if (holder != nullptr) return holder;
  holder = new (std::nothrow) zuTraceHandlerTLS(owner);
  if (holder == nullptr) throw zuExMemory();
  zuThreadLocalStorage::setThreadStorage(zuThreadLocalStorage::eTraceHandler, holder, owner);
  return holder;
}

zuTraceHandlerTLS* zuTraceHandlerTLS::find(unsigned int threadId) {
  using zu::internal::ThreadTable;
  const unsigned int self = zu::internal::currentThreadId();
  const ThreadTable& table = ThreadTable::instance();
  bool memoized = false;
  const zuThreadLocalStorage* storage =
      threadId == 0 || threadId == self ? table.findCurrent(self, memoized) : table.find(threadId);
  if (storage == nullptr) return nullptr;
  return static_cast<zuTraceHandlerTLS*>(storage->Slot(zuThreadLocalStorage::eTraceHandler));
}

zuTraceHandlerTLS::~zuTraceHandlerTLS() {
  setTraceHandler(nullptr);
}

void zuTraceHandlerTLS::setTraceHandler(zuTraceHandler* handler) {
  if (handler == handler_) return;
  zuTraceHandler* old = std::exchange(handler_, handler);
  // The replaced default handler finds itself no longer current, so its
  // destructor leaves the holder alone.
  if (std::exchange(ownsHandler_, false)) delete old;
}

zuTraceHandler* zuTraceHandlerTLS::getOrMakeTraceHandler() {
  if (handler_ != nullptr) return handler_;
  auto* made = new (std::nothrow) zuTraceHandler(threadId_);
  if (made == nullptr) throw zuExMemory();
  handler_ = made;
  ownsHandler_ = true;
  return made;
}

void zuTraceHandlerTLS::setCurrentAmendMsgCallback(zuTraceHandler::AmendMsgCallback callback,
                                                   void* context) {
  callback_ = callback;
  context_ = context;
}
