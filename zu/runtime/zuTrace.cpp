#include "zu/runtime/zuTrace.h"

#include "zu/runtime/internal/zuThreadId.h"
#include "zu/runtime/internal/zuTraceRegistry.h"
#include "zu/runtime/zuTraceHandler.h"
#include "zu/runtime/zuTraceHandlerTLS.h"

namespace {

using zu::internal::TraceRegistry;

// The thread's current handler, or null; never makes one.
zuTraceHandler* handlerOf(unsigned int threadId) {
  const zuTraceHandlerTLS* holder = zuTraceHandlerTLS::find(threadId);
  return holder != nullptr ? holder->getTraceHandler() : nullptr;
}

}  // namespace

zuTrace::zuTrace(const zuLiteral& name, unsigned short messageId)
    : name_(name), messageId_(messageId) {
  TraceRegistry::instance().add(*this);
}

zuTrace::zuTrace(const zuTrace& other) : name_(other.name_), messageId_(other.messageId_) {
  TraceRegistry::instance().add(*this);
}

zuTrace& zuTrace::operator=(const zuTrace& other) {
  if (this == &other) return *this;
  TraceRegistry& registry = TraceRegistry::instance();
  registry.remove(*this);
  name_ = other.name_;
  messageId_ = other.messageId_;
  // A new name starts from its own state: enabled only if activated.
  enabled_.store(0, std::memory_order_relaxed);
  registry.add(*this);
  return *this;
}

zuTrace::~zuTrace() {
  TraceRegistry::instance().remove(*this);
}

int zuTrace::isEnabledSlowly(unsigned int level, unsigned int threadId) const {
  zuTraceHandler* handler = handlerOf(threadId);
  return handler != nullptr ? handler->isActive(name_, level) : 0;
}

void zuTrace::traceSlowly(unsigned int level, unsigned int messageId, const zuString& text,
                          unsigned int threadId) const {
  if (zuTraceHandler* handler = handlerOf(threadId)) handler->trace(*this, level, messageId, text);
}

void zuTrace::traceSlowly(unsigned int level, zuFormatPos& message, unsigned int threadId) const {
  if (zuTraceHandler* handler = handlerOf(threadId)) handler->trace(*this, level, message);
}

void zuTrace::activate(unsigned int level, unsigned int threadId) {
  // A default handler is made only for the calling thread: another thread's
  // slot is not this thread's to fill.
  const bool caller = threadId == 0 || threadId == zu::internal::currentThreadId();
  zuTraceHandler* handler = caller
                                ? zuTraceHandlerTLS::getTraceHandlerTLS(0)->getOrMakeTraceHandler()
                                : handlerOf(threadId);
  if (handler != nullptr) handler->activate(*this, level);
}

void zuTrace::deactivate(unsigned int threadId) {
  if (zuTraceHandler* handler = handlerOf(threadId)) handler->deactivate(name_);
}

int zuTrace::isEnabled(const zuString& name, unsigned int level, unsigned int threadId) {
  zuTraceHandler* handler = handlerOf(threadId);
  return handler != nullptr ? handler->isActive(name, level) : 0;
}

void zuTrace::trace(const zuString& name, unsigned int level, unsigned int messageId,
                    const zuString& text, unsigned int threadId) {
  if (zuTraceHandler* handler = handlerOf(threadId)) handler->trace(name, level, messageId, text);
}

void zuTrace::trace(const zuString& name, unsigned int level, zuFormatPos& message,
                    unsigned int threadId) {
  if (zuTraceHandler* handler = handlerOf(threadId)) handler->trace(name, level, message);
}
