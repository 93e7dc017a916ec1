// zuTrace: a named topic of diagnostic messages, switched on by name.
//
// Code declares one trace per topic, usually as a static object, and emits
// leveled messages through it. The calling thread's handler (zuTraceHandler)
// decides by the topic's name and the message's level whether to print.
// Until some handler activates the name, an emitting call costs one relaxed
// load and a test, inline, with no call.
//
//   static zuTrace gLayoutTrace("layout", zuMessageIds::kInvalidArgument);
//
//   gLayoutTrace.activate(2);                      // this thread, levels 1-2
//   gLayoutTrace.trace(1, 16479, zuString("page break"));
//   // stdout: "layout trace: mid=16479 tid=4711 msg: page break"
//   if (gLayoutTrace.isEnabled(3)) { ... }         // 0: level 3 is not on
//   zuTrace::trace(zuString("render"), 1, 7, zuString("by name"));
//
// The message id `messageId` is the caller's to choose; the default one
// given at construction names the topic in zuTraceHandler::dumpAvailable.
//
// In every member taking `threadId`, 0 means the calling thread; another id
// reaches that thread's handler, which is not synchronised, so only a thread
// that knows the other is idle may do so. Emitting (trace, isEnabled) never
// creates anything: on a thread without a handler it prints nothing and
// answers 0. activate() on the calling thread without a handler makes a
// default one (see zuTraceHandlerTLS).
//
// Threads: traces may be made, copied and destroyed on any thread; the
// library-wide registry of traces is locked. The enabled flag, once set by
// an activation on any thread, stays set for the trace's life (deactivating
// a name does not clear it: other threads may still want it); each thread's
// handler then decides.
#pragma once

#include <atomic>

#include "zu/core/zuExport.h"
#include "zu/core/zuFormatPos.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuString.h"

namespace zu::internal {
class TraceRegistry;
}

class ZU_EXPORT zuTrace {
 public:
  // A trace named `name` (the bytes must outlive the trace: a string
  // constant) whose topic is described by message `messageId`. Enters the
  // registry, enabled when a handler has activated the name before. Throws
  // zuExMemory.
  zuTrace(const zuLiteral& name, unsigned short messageId);
  // Another registered trace of the same name and message id.
  zuTrace(const zuTrace& other);
  // Takes `other`'s name and message id (and registers under them).
  zuTrace& operator=(const zuTrace& other);
  // Leaves the registry.
  ~zuTrace();

  const zuString& getName() const { return name_; }
  unsigned short getMessageId() const { return messageId_; }
  // 1 once the name has been activated by some handler, else 0.
  int getEnabled() const { return enabled_.load(std::memory_order_relaxed); }

  // 1 when the thread's handler would print a message of `level` from this
  // trace; 0 when disabled or without a handler.
  int isEnabled(unsigned int level, unsigned int threadId = 0) const {
    return getEnabled() != 0 ? isEnabledSlowly(level, threadId) : 0;
  }
  // Hands the message to the thread's handler, which prints it when the
  // name is active at `level`. Nothing when disabled or without a handler.
  void trace(unsigned int level, unsigned int messageId, const zuString& text,
             unsigned int threadId = 0) const {
    if (getEnabled() != 0) traceSlowly(level, messageId, text, threadId);
  }
  // As above; the message id is the formatter's, the text its result.
  void trace(unsigned int level, zuFormatPos& message, unsigned int threadId = 0) const {
    if (getEnabled() != 0) traceSlowly(level, message, threadId);
  }

  // Activates this trace's name at `level` in the thread's handler. The
  // calling thread gets a default handler first when it has none; another
  // thread without one is left alone. Throws zuExMemory.
  void activate(unsigned int level, unsigned int threadId = 0);
  // Deactivates the name in the thread's handler; nothing without one.
  void deactivate(unsigned int threadId = 0);

  // By name, through the thread's handler; as the members above, without
  // the enabled flag's shortcut.
  static int isEnabled(const zuString& name, unsigned int level, unsigned int threadId = 0);
  static void trace(const zuString& name, unsigned int level, unsigned int messageId,
                    const zuString& text, unsigned int threadId = 0);
  static void trace(const zuString& name, unsigned int level, zuFormatPos& message,
                    unsigned int threadId = 0);

 private:
  friend class zu::internal::TraceRegistry;  // sets enabled_

  int isEnabledSlowly(unsigned int level, unsigned int threadId) const;
  void traceSlowly(unsigned int level, unsigned int messageId, const zuString& text,
                   unsigned int threadId) const;
  void traceSlowly(unsigned int level, zuFormatPos& message, unsigned int threadId) const;

  std::atomic<int> enabled_{0};
  zuLiteral name_;
  unsigned short messageId_;
};
