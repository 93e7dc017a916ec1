// zuTraceHandler: one thread's switchboard for named traces, and the
// process-wide stage timers with their report.
//
// Traces. Each thread that traces has a current handler, which holds the
// activation level of each trace name and prints the messages of active
// names to standard output. Activation text is a list of name:level tokens
// separated by white space (zuString::WhiteSpace(), so also U+00A0, U+3000):
//
//   zuTraceHandler handler;                       // serves the calling thread
//   zuTraceHandler::registerTraceHandler(&handler);
//   handler.activate(zuString("layout:2 render:0"));
//   // layout prints messages of levels 1 and 2; render is recorded, inactive
//
// A token's name is the text before its first ":" and its level the decimal
// number after it; a level that is missing, not decimal or does not fit in
// 32 bits counts as 0, and a token with an empty name (":3") is ignored. A
// message of level L prints when the name's level is non-zero and at least
// L. Each printed message is one line, one fwrite and one fflush, so lines
// of different threads never interleave:
//
//   "%-*s trace: mid=%-3u tid=%-3u msg: %s\n"
//
// with the name padded to the longest name the handler knows, the message
// id, the handler's thread id and the text. When the thread has an amend
// callback (setAmendMsgCallback) it is then called with the message id
// (which it may change); a non-empty result adds, in the same write,
//
//   "   trace: mid=%-3u tid=%-3u msg: %s\n"
//
// To send messages elsewhere, derive and override the trace overloads;
// those taking a zuTrace call the by-name ones, so two overrides suffice:
//
//   class LogHandler : public zuTraceHandler {
//    public:
//     using zuTraceHandler::trace;
//     void trace(const zuString& name, unsigned int level, zuFormatPos& message) override {
//       if (isActive(name, level)) gLog.write(name, message.ResId(), message.GetString());
//     }
//     void trace(const zuString& name, unsigned int level, unsigned int messageId,
//                const zuString& text) override {
//       if (isActive(name, level)) gLog.write(name, messageId, text);
//     }
//   };
//   LogHandler handler;                           // the calling thread's
//   zuTraceHandler::registerTraceHandler(&handler);
//   handler.activate(zuString("layout:3"));
//
// A handler knows trace names (for padding and dumpAvailable) by copying
// the name and default message id of every registered zuTrace when a name
// is activated that is new to it; it never keeps a zuTrace pointer, so
// traces may die on other threads. Activating a name also enables every
// live zuTrace of that name in the process, and the name is remembered, so
// a trace made later under it starts enabled. Deactivating removes the
// name's level from this handler only.
//
// Ownership: the caller owns the handlers it makes and registers; a
// handler unregisters itself at destruction when it is still current. A
// handler serves one thread and is not synchronised.
//
// Stage timers. 21 process-wide slots (TimingType) accumulate milliseconds
// of the monotonic clock while a Timer is alive:
//
//   {
//     zuTraceHandler::Timer timer(zuTraceHandler::eLayoutTiming);
//     layOut(form);
//   }                                             // the slot's total grows
//   zuTraceHandler::reportTimingResults(1);       // to the timing log; reset
//
// While timing is off a Timer costs one relaxed load and a test in its
// constructor and destructor. Starting a slot stores now + 500 as its mark
// (so a running slot is never 0); stopping a running slot adds now - mark
// + 500 to its total (32 bits, wrapping) and clears the mark; stopping an
// idle slot does nothing. Timers of different threads on the same slot
// interfere: the last start wins. A TimingType outside 0..20 does nothing
// and reads 0.
//
// The trace control file. The environment variable QTV_TRACE_CONTROL names
// it; it is read once, at the first timing call (a Timer included). Unset,
// or set but empty, it does nothing: timing stays off until
// timingTraceEnabled(1) or an activation of "timing". When it is set, that
// first call and every initializeTiming(), reportTimingResults() and
// reportScriptInfo() do, in order: switch timing on, close the logs, clear
// the non-zero-only flag, read the file again (even after
// timingTraceEnabled(0)). Lines of the file, each counting only when it
// starts with its key:
//
//   timinglog=/var/log/forms/timing.log   where reports go
//   nonZeroOnly=1                         reports skip slots whose total is 0
//   scriptlog=/var/log/forms/script.log   where reportScriptInfo() writes
//
// A name skips white space and ends at the next (so CRLF lines work); an
// empty name ignores the line. nonZeroOnly= takes white space, a sign and
// digits, and a number beyond int counts as non-zero; no digits ignores the
// line. Lines longer than 1,023 bytes are skipped whole, as are unknown
// lines; only the first MiB of the file is read. Keys may repeat: for each
// log the first name that opens (appending, close-on-exec) wins, and the last
// nonZeroOnly line decides. A missing, unreadable or malformed file, or a
// log that does not open, throws and prints nothing: timing stays on, and
// what has no log is not written. The file never switches named traces.
//
// The report, byte for byte ("%d" of each slot's total):
//
//   Timing results (ms):
//   KDLPA_MERGE_TIMING:       <slot 0>
//   KDLPA_LAYOUT_TIMING:      <slot 1>
//   KDLPA_RENDER_TIMING:      <slot 2>
//   KDLPA_MERGE_CALC_TIMING:  <slot 3>
//   KDLPA_LAYOUT_CALC_TIMING: <slot 4>
//   KDL_MERGE_ONLY_TIMING:    <slot 12>
//   KDL_LAYOUT_ONLY_TIMING:   <slot 13>
//   KDL_SCRIPTS_ONLY_TIMING:  <slot 14>
//   KDL_OPEN_TIMING:          <slot 17>
//   Timing results complete.
//   <empty line>
//
// Threads: the timing statics may be called from any thread. The switch
// and the slots are relaxed atomics; one mutex guards the control state
// (the non-zero-only flag, both logs, re-reading), so no report writes to a
// log being closed.
#pragma once

#include <atomic>
#include <map>
#include <string>
#include <string_view>

#include "zu/core/zuExport.h"
#include "zu/core/zuFormatPos.h"
#include "zu/core/zuString.h"

class zuTrace;

namespace zu::internal {
void rearmTimingControlForTesting();
}

class ZU_EXPORT zuTraceHandler {
 public:
  // The stage timers' slots. Only the named ones are reported; the others
  // accumulate all the same.
  enum TimingType {
    eMergeTiming = 0,
    eLayoutTiming = 1,
    eRenderTiming = 2,
    eMergeCalcTiming = 3,
    eLayoutCalcTiming = 4,
    eTiming5 = 5,
    eTiming6 = 6,
    eTiming7 = 7,
    eTiming8 = 8,
    eTiming9 = 9,
    eTiming10 = 10,
    eTiming11 = 11,
    eMergeOnlyTiming = 12,
    eLayoutOnlyTiming = 13,
    eScriptsOnlyTiming = 14,
    eTiming15 = 15,
    eTiming16 = 16,
    eOpenTiming = 17,
    eTiming18 = 18,
    eTiming19 = 19,
    eTiming20 = 20
  };
  // The number of slots.
  static constexpr int kTimingSlots = 21;

  // The callback that may add a line to each printed message: called with
  // the message id (which it may change) and the context given with it; an
  // empty result adds nothing.
  using AmendMsgCallback = zuString (*)(unsigned int& messageId, void* context);

  // A stage timer: runs its slot from construction to destruction (or
  // between startTiming() and stopTiming()) while timing is on. Any thread.
  class ZU_EXPORT Timer {
   public:
    explicit Timer(TimingType type) : type_(type) {
      if (timingSwitch_.load(std::memory_order_relaxed) != 0) startSlot(type_);
    }
    ~Timer() {
      if (timingSwitch_.load(std::memory_order_relaxed) != 0) stopSlot(type_);
    }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    // Starts the slot again (a new mark; the last start wins).
    void startTiming() {
      if (timingSwitch_.load(std::memory_order_relaxed) != 0) startSlot(type_);
    }
    // Stops the slot now; the destructor then finds it idle.
    void stopTiming() {
      if (timingSwitch_.load(std::memory_order_relaxed) != 0) stopSlot(type_);
    }

   private:
    TimingType type_;
  };

  // A handler for thread `threadId` (0: the calling thread), with no name
  // active. It is not registered. Throws zuExMemory.
  explicit zuTraceHandler(unsigned int threadId = 0);
  // Unregisters the handler when it is its thread's current one.
  virtual ~zuTraceHandler();
  zuTraceHandler(const zuTraceHandler&) = delete;
  zuTraceHandler& operator=(const zuTraceHandler&) = delete;

  // Prints `message` (its message id and text) when `name` is active at
  // `level`.
  virtual void trace(const zuString& name, unsigned int level, zuFormatPos& message);
  // trace(trace.getName(), level, messageId, text).
  virtual void trace(const zuTrace& trace, unsigned int level, unsigned int messageId,
                     const zuString& text);
  // Prints `text` with `messageId` when `name` is active at `level`.
  virtual void trace(const zuString& name, unsigned int level, unsigned int messageId,
                     const zuString& text);
  // trace(trace.getName(), level, message).
  virtual void trace(const zuTrace& trace, unsigned int level, zuFormatPos& message);

  // Applies an activation text (see above) token by token.
  void activate(const zuString& spec);
  // Sets `name`'s level (replacing any earlier one). The name "timing" also
  // switches timing on (level > 0) or off and resets every timer. When the
  // name is new to the handler it learns every registered trace it does not
  // know yet; every live trace of the name is enabled. Throws zuExMemory.
  void activate(const zuString& name, unsigned int level);
  // activate(trace.getName(), level).
  void activate(zuTrace& trace, unsigned int level);
  // Removes `name`'s level: its messages no longer print here.
  void deactivate(const zuString& name);
  // 1 when `name` has a non-zero level of at least `level`, else 0. The
  // last name asked is cached; activate and deactivate refresh it.
  int isActive(const zuString& name, unsigned int level);
  // The trace names the handler knows, sorted, joined with "\n" (no final
  // one). With `withLevels` each line is "\t" + name + " - " + the catalogue
  // text of the trace's default message id. Throws zuExMemory.
  zuString dumpAvailable(int withLevels) const;
  // The thread the handler serves.
  unsigned int getThreadId() const { return threadId_; }

  // Makes `handler` the current handler of its own thread (the caller keeps
  // ownership); a default handler the library made there is deleted. Call it
  // on that thread. Null is ignored. Throws zuExMemory.
  static void registerTraceHandler(zuTraceHandler* handler);
  // The thread (0: the calling one) has no current handler afterwards; a
  // default handler is deleted, a registered one is left to its owner.
  static void unregisterTraceHandler(unsigned int threadId = 0);
  // Sets the calling thread's amend callback (null: none) and its context;
  // it stays with the thread whichever handler is current. Throws
  // zuExMemory.
  static void setAmendMsgCallback(AmendMsgCallback callback, void* context);

  // --- Timing: all static, any thread --------------------------------------
  // 1 while timing is on, else 0.
  static int timingTraceEnabled();
  // Switches timing on (non-zero) or off; the slots keep their totals.
  static void timingTraceEnabled(int enabled);
  // Re-reads the control file as described above (nothing when the variable
  // is unset).
  static void initializeTiming();
  // Clears every slot's total and mark (the slots are idle afterwards).
  static void resetTiming();
  static void resetTiming(TimingType type);
  // 1 while the slot is running.
  static int isTimerActive(TimingType type);
  // The slot's total in milliseconds (32 bits, as a signed number).
  static int getTimerMilliseconds(TimingType type);
  // Re-reads the control file, then appends the report to the timing log
  // when one is open and flushes; with `reset` non-zero the totals are
  // cleared afterwards (log or not), the marks kept.
  static void reportTimingResults(int reset);
  // Re-reads the control file, then appends `text` and a line feed to the
  // script log when one is open, and flushes. Null text writes nothing.
  static void reportScriptInfo(const char* text);
  // 1 while a script log is open.
  static int scriptLoggingEnabled();

 private:
  friend void zu::internal::rearmTimingControlForTesting();

  // Timer's slow paths: the first call reads the control file.
  static void startSlot(TimingType type);
  static void stopSlot(TimingType type);
  // Reads the control file once; the switch afterwards.
  [[gnu::cold, gnu::noinline]] static int readControlFirst();

  // Prints one message (and its amend line) to standard output.
  void emit(const zuString& name, unsigned int messageId, const zuString& text);
  // Learns the registered traces whose names it does not know yet.
  void learnRegisteredTraces();
  void activateName(std::string_view name, unsigned int level);
  void refreshCache(std::string_view name, unsigned int level);

  // 0 off, 1 on, or not yet read (neither): the Timers' one test.
  static std::atomic<int> timingSwitch_;

  unsigned int threadId_;
  std::map<std::string, unsigned int, std::less<>> levels_;
  // Known trace names and their default message ids, sorted.
  std::map<std::string, unsigned short, std::less<>> known_;
  std::string cachedName_;
  unsigned int cachedLevel_ = 0;
  bool cacheValid_ = false;
  unsigned int width_ = 0;  // of the longest known name
  std::string line_;        // the message being printed
};
