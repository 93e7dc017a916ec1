// zuThread: a library thread that runs one work function, with start-up and
// exit functions around it, and cleans up its per-thread state as it ends.
//
//   unsigned int Crunch(void* job) { ...; return 0; }
//   zuThread* worker = zuThread::NewThread(0, zuThread::eNormal, Crunch, &job);
//   worker->WaitForThreadToExit(-1);      // until Crunch has returned
//   delete worker;                        // joins the system thread
//
// A thread made without a work function waits, idle (state eAvailable), until
// Start() gives it one. The body, in order: make the performance counters;
// call the start-up function; enter eAvailable; once a work function is set
// enter eRunning, call it, clear it and enter eAvailable; call the exit
// function; release the thread's TLS anchor and thread-local storage; enter
// eExited and post the completion event. Exceptions thrown by the three
// functions are swallowed so that the clean-up still runs.
//
// Priorities: Linux lets an unprivileged process lower a thread's priority
// but not raise it. eIdle, eLowest and eBelowNormal become nice values 19, 10
// and 5 for the thread; eNormal and everything above it leave the nice value
// that the thread inherits.
//
// Every member may be called from any thread. Deleting a thread asks a
// running work function to stop (state eStopRequested, which it should poll),
// wakes an idle thread so that it ends, and waits for the system thread.
#pragma once

#include <atomic>
#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class zuEvent;
class zuMutex;
class zuPerformTimes;

// The result of a thread operation: the library's code and the system's.
class ZU_EXPORT zuThreadRet {
 public:
  enum eRetCode { eOk = 0, eNotAvailable = 3, eNotRunning = 4, eSuspended = 5 };

  zuThreadRet(eRetCode code = eOk, unsigned long osCode = 0) : code_(code), osCode_(osCode) {}

  int Ok() const { return code_ == eOk; }
  eRetCode RetCode() const { return code_; }
  unsigned long OsRetCode() const { return osCode_; }

 private:
  eRetCode code_;
  unsigned long osCode_;
};

// What a thread spent where, in wall-clock milliseconds.
class ZU_EXPORT zuThreadStats {
 public:
  unsigned long StartUpTime() const { return startUpTime_; }  // in the start-up function
  unsigned long WorkTime() const { return workTime_; }        // in the work function
  unsigned long ExitTime() const { return exitTime_; }        // in the exit function
  unsigned long FunctionsRun() const { return functionsRun_; }

 private:
  friend class zuThread;
  unsigned long startUpTime_ = 0;
  unsigned long workTime_ = 0;
  unsigned long exitTime_ = 0;
  unsigned long functionsRun_ = 0;
};

class ZU_EXPORT zuThread {
 public:
  using ThreadFunction = unsigned int (*)(void*);

  enum ePriority { eIdle, eLowest, eBelowNormal, eNormal, eAboveNormal, eHighest, eTimeCritical };

  enum eState {
    eAvailable = 0,      // idle, ready for a function
    eRunning = 1,        // running a function
    eCreated = 2,        // created, body not yet started
    eCreateFailed = 3,   // the system thread could not be made
    eStopRequested = 4,  // the running function was asked to stop
    eExited = 6,         // the body has ended
    eSuspended = 7       // never entered on Linux, which cannot suspend threads
  };

  virtual ~zuThread();

  // A new thread (the Linux form is zuPosixThread), running `work` at once
  // when given. `stackSize` 0 takes the system default. The caller owns it.
  // Throws zuExMemory; check Created() for the system thread.
  static zuThread* NewThread(unsigned long stackSize, ePriority priority, ThreadFunction work,
                             void* arg, ThreadFunction startUp = nullptr,
                             ThreadFunction exit = nullptr);

  // Gives an idle thread (eAvailable, or eCreated before its body starts) a
  // work function; eNotAvailable when it already has one or has ended.
  zuThreadRet Start(ThreadFunction work, void* arg);
  // In eRunning: enters eStopRequested; otherwise eNotRunning.
  zuThreadRet StopFunction();
  // Linux cannot suspend a thread: eSuspended only in state eSuspended (which
  // is never entered), otherwise eOk without effect.
  zuThreadRet Suspend();
  // 1 when the body has ended (at once when it already has), waiting up to
  // `milliseconds` (negative: without limit); 0 on time-out.
  virtual int WaitForThreadToExit(long milliseconds);

  int Available() const { return State() == eAvailable; }
  int Created() const { return State() != eCreateFailed; }
  eState State() const { return state_.load(std::memory_order_acquire); }
  // The counters made when the body starts; null before. Owned by the thread.
  zuPerformTimes* Performance() const { return performance_.load(std::memory_order_acquire); }
  zuThreadStats Stats() const;
  ePriority Priority() const { return priority_; }
  unsigned long StackSize() const { return stackSize_; }

  // The calling thread's id in decimal.
  static void Id(zuString& id);
  // Sleeps the calling thread.
  static void zuSleep(unsigned long milliseconds);

 protected:
  zuThread(unsigned long stackSize, ePriority priority, ThreadFunction work, void* arg,
           ThreadFunction startUp, ThreadFunction exit);
  zuThread(const zuThread&) = delete;
  zuThread& operator=(const zuThread&) = delete;

  // The body, run by the system thread.
  void RunBody();
  // Asks the body to end (stop request, wakes an idle thread); the derived
  // destructor calls it before it waits for the system thread.
  void RequestExit();
  void SetState(eState state) { state_.store(state, std::memory_order_release); }

  // Platform steps of the body.
  virtual void ApplyPriority() = 0;
  // Last step before eExited, in the ending thread.
  virtual void Finishing() = 0;

 private:
  // Waits for a work function or an exit request; takes the function.
  bool takeWork(ThreadFunction& work, void*& workArg);
  void record(unsigned long zuThreadStats::*field, unsigned long milliseconds);

  zuEvent* completion_;  // automatic reset; posted as the body ends
  zuEvent* wakeUp_;      // automatic reset; posted by Start and RequestExit
  zuMutex* lock_;        // guards the work function, its argument and the stats
  std::atomic<zuPerformTimes*> performance_{nullptr};
  unsigned long stackSize_;
  ePriority priority_;
  ThreadFunction work_;
  void* workArg_;
  ThreadFunction startUp_;
  ThreadFunction exit_;
  void* arg_;  // the argument of the start-up and exit functions
  bool exitRequested_ = false;
  std::atomic<eState> state_{eCreated};
  zuThreadStats stats_;
};
