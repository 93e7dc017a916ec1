// zuTraceHandlerTLS: the per-thread holder of the thread's current trace
// handler and amend callback, kept in thread-local slot 12 (eTraceHandler).
//
//   zuTraceHandlerTLS* holder = zuTraceHandlerTLS::getTraceHandlerTLS(0);
//   zuTraceHandler* current = holder->getTraceHandler();   // may be null
//
// The holder dies with its thread's storage, and with it a default handler
// the library made for the thread (zuTrace::activate on a thread without a
// handler makes one); a handler the client registered stays the client's.
// Emitting a trace only looks for the holder (find) and never makes one.
// A holder belongs to its thread.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/runtime/zuTraceHandler.h"

class ZU_EXPORT zuTraceHandlerTLS : public zuThreadStorage {
 public:
  // The holder of thread `threadId` (0: the calling thread), made and
  // stored in its slot when absent. Throws zuExMemory.
  static zuTraceHandlerTLS* getTraceHandlerTLS(unsigned int threadId);
  // The holder of thread `threadId` (0: the calling thread), or null: never
  // makes a holder, nor the thread's entry in the storage table.
  static zuTraceHandlerTLS* find(unsigned int threadId);

  // Deletes the default handler, if the library made one.
  ~zuTraceHandlerTLS() override;

  // The current handler; null when none.
  zuTraceHandler* getTraceHandler() const { return handler_; }
  // Makes `handler` current (null: none). A default handler made by the
  // library and replaced here is deleted; the caller owns `handler`.
  void setTraceHandler(zuTraceHandler* handler);
  // The current handler, a default one (owned by this holder) made first
  // when there is none. Throws zuExMemory.
  zuTraceHandler* getOrMakeTraceHandler();
  // Sets the thread's amend callback and context (null callback: none).
  void setCurrentAmendMsgCallback(zuTraceHandler::AmendMsgCallback callback, void* context);
  zuTraceHandler::AmendMsgCallback getAmendMsgCallback() const { return callback_; }
  void* getAmendMsgContext() const { return context_; }

 private:
  friend class zuTraceHandler;  // a dying handler leaves the holder

  explicit zuTraceHandlerTLS(unsigned int threadId) : threadId_(threadId) {}

  unsigned int threadId_;
  zuTraceHandler* handler_ = nullptr;
  bool ownsHandler_ = false;
  zuTraceHandler::AmendMsgCallback callback_ = nullptr;
  void* context_ = nullptr;
};
