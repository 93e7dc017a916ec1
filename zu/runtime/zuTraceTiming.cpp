// The stage timers and the trace control file: the timing statics of
// zuTraceHandler.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <string>

#include "zu/runtime/internal/zuTimingControl.h"
#include "zu/runtime/internal/zuTraceClock.h"
#include "zu/runtime/internal/zuTraceControl.h"
#include "zu/runtime/zuTraceHandler.h"

namespace {

constexpr int kOff = 0;
constexpr int kOn = 1;
constexpr int kUnread = 2;

// A running slot's mark is its start + 500, never 0.
constexpr int64_t kMarkOffset = 500;
// Only so much of a control file is read.
constexpr std::size_t kControlFileMax = std::size_t{1} << 20;

struct TimingSlot {
  std::atomic<uint32_t> total{0};  // milliseconds, wrapping
  std::atomic<int64_t> mark{0};
};

constinit TimingSlot gSlots[zuTraceHandler::kTimingSlots];

struct ReportLine {
  int slot;
  const char* label;
};
constexpr ReportLine kReport[] = {
    {zuTraceHandler::eMergeTiming, "KDLPA_MERGE_TIMING:       "},
    {zuTraceHandler::eLayoutTiming, "KDLPA_LAYOUT_TIMING:      "},
    {zuTraceHandler::eRenderTiming, "KDLPA_RENDER_TIMING:      "},
    {zuTraceHandler::eMergeCalcTiming, "KDLPA_MERGE_CALC_TIMING:  "},
    {zuTraceHandler::eLayoutCalcTiming, "KDLPA_LAYOUT_CALC_TIMING: "},
    {zuTraceHandler::eMergeOnlyTiming, "KDL_MERGE_ONLY_TIMING:    "},
    {zuTraceHandler::eLayoutOnlyTiming, "KDL_LAYOUT_ONLY_TIMING:   "},
    {zuTraceHandler::eScriptsOnlyTiming, "KDL_SCRIPTS_ONLY_TIMING:  "},
    {zuTraceHandler::eOpenTiming, "KDL_OPEN_TIMING:          "},
};

TimingSlot* slotOf(zuTraceHandler::TimingType type) {
  const auto index = static_cast<unsigned int>(type);
  return index < static_cast<unsigned int>(zuTraceHandler::kTimingSlots) ? &gSlots[index] : nullptr;
}

// What the mutex guards: the non-zero-only flag, the logs, and the reading
// of the control file. Never destroyed, so that timers and reports in
// static destructors still find it.
class Control {
 public:
  static Control& instance() {
    static Control* const control = new Control;
    return *control;
  }

  // Reads QTV_TRACE_CONTROL the first time; true when this call also did
  // the control steps (so the caller need not do them again).
  bool readOnce(std::atomic<int>& timingSwitch);
  // Timing on, logs closed, non-zero-only cleared, the file read again;
  // nothing when the variable is unset. The mutex is held.
  void applyLocked(std::atomic<int>& timingSwitch);
  void rearm(std::atomic<int>& timingSwitch);

  std::mutex mutex;
  bool nonZeroOnly = false;
  std::FILE* timingLog = nullptr;
  std::FILE* scriptLog = nullptr;

 private:
  Control() : once_(std::in_place) {}
  void closeLogsLocked();

  std::optional<std::once_flag> once_;
  std::optional<std::string> path_;  // the variable's value; none when unset
};

bool Control::readOnce(std::atomic<int>& timingSwitch) {
  bool applied = false;
  std::call_once(*once_, [&] {
    const char* value = std::getenv("QTV_TRACE_CONTROL");
    std::lock_guard<std::mutex> lock(mutex);
    if (value != nullptr && *value != '\0') {
      path_ = value;
      applyLocked(timingSwitch);
      applied = true;
    } else {
      int unread = kUnread;
      timingSwitch.compare_exchange_strong(unread, kOff, std::memory_order_relaxed);
    }
  });
  return applied;
}

void Control::closeLogsLocked() {
  for (std::FILE** log : {&timingLog, &scriptLog}) {
    if (*log != nullptr) std::fclose(*log);
    *log = nullptr;
  }
}

std::string readFile(const std::string& path) {
  std::string bytes;
  std::FILE* file = std::fopen(path.c_str(), "re");
  if (file == nullptr) return bytes;
  bytes.resize(kControlFileMax);
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
  std::fclose(file);
  return bytes;
}

std::FILE* openFirst(const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    if (std::FILE* log = std::fopen(name.c_str(), "ae")) return log;
  }
  return nullptr;
}

void Control::applyLocked(std::atomic<int>& timingSwitch) {
  if (!path_) return;
  timingSwitch.store(kOn, std::memory_order_relaxed);
  closeLogsLocked();
  nonZeroOnly = false;
  const zu::internal::TraceControlSettings settings =
      zu::internal::parseTraceControl(readFile(*path_));
  nonZeroOnly = settings.nonZeroOnly;
  timingLog = openFirst(settings.timingLogs);
  scriptLog = openFirst(settings.scriptLogs);
}

void Control::rearm(std::atomic<int>& timingSwitch) {
  std::lock_guard<std::mutex> lock(mutex);
  closeLogsLocked();
  nonZeroOnly = false;
  path_.reset();
  once_.emplace();
  timingSwitch.store(kUnread, std::memory_order_relaxed);
}

void writeAndFlush(std::FILE* log, const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), log);
  std::fflush(log);
}

}  // namespace

std::atomic<int> zuTraceHandler::timingSwitch_{kUnread};

namespace zu::internal {

void rearmTimingControlForTesting() {
  Control::instance().rearm(zuTraceHandler::timingSwitch_);
}

}  // namespace zu::internal

// --- Timers ------------------------------------------------------------------------

int zuTraceHandler::readControlFirst() {
  Control::instance().readOnce(timingSwitch_);
  return timingSwitch_.load(std::memory_order_relaxed);
}

void zuTraceHandler::startSlot(TimingType type) {
  int state = timingSwitch_.load(std::memory_order_relaxed);
  if (state == kUnread) [[unlikely]]
    state = readControlFirst();
  TimingSlot* slot = slotOf(type);
  if (slot == nullptr || state != kOn) return;
  slot->mark.store(zu::internal::timingClockMillis() + kMarkOffset, std::memory_order_relaxed);
}

void zuTraceHandler::stopSlot(TimingType type) {
  int state = timingSwitch_.load(std::memory_order_relaxed);
  if (state == kUnread) [[unlikely]]
    state = readControlFirst();
  TimingSlot* slot = slotOf(type);
  if (slot == nullptr || state != kOn) return;
  // Two threads stopping one slot at once may both count it: timers of
  // different threads on one slot interfere anyway (the last start wins).
  const int64_t mark = slot->mark.load(std::memory_order_relaxed);
  if (mark == 0) return;
  slot->mark.store(0, std::memory_order_relaxed);
  const int64_t elapsed = zu::internal::timingClockMillis() - mark + kMarkOffset;
  slot->total.fetch_add(static_cast<uint32_t>(elapsed), std::memory_order_relaxed);
}

// --- Timing statics ------------------------------------------------------------------

int zuTraceHandler::timingTraceEnabled() {
  Control::instance().readOnce(timingSwitch_);
  return timingSwitch_.load(std::memory_order_relaxed) == kOn ? 1 : 0;
}

void zuTraceHandler::timingTraceEnabled(int enabled) {
  Control& control = Control::instance();
  control.readOnce(timingSwitch_);
  std::lock_guard<std::mutex> lock(control.mutex);
  timingSwitch_.store(enabled != 0 ? kOn : kOff, std::memory_order_relaxed);
}

void zuTraceHandler::initializeTiming() {
  Control& control = Control::instance();
  if (control.readOnce(timingSwitch_)) return;
  std::lock_guard<std::mutex> lock(control.mutex);
  control.applyLocked(timingSwitch_);
}

void zuTraceHandler::resetTiming() {
  Control::instance().readOnce(timingSwitch_);
  for (TimingSlot& slot : gSlots) {
    slot.total.store(0, std::memory_order_relaxed);
    slot.mark.store(0, std::memory_order_relaxed);
  }
}

void zuTraceHandler::resetTiming(TimingType type) {
  Control::instance().readOnce(timingSwitch_);
  if (TimingSlot* slot = slotOf(type)) {
    slot->total.store(0, std::memory_order_relaxed);
    slot->mark.store(0, std::memory_order_relaxed);
  }
}

int zuTraceHandler::isTimerActive(TimingType type) {
  Control::instance().readOnce(timingSwitch_);
  const TimingSlot* slot = slotOf(type);
  return slot != nullptr && slot->mark.load(std::memory_order_relaxed) != 0 ? 1 : 0;
}

int zuTraceHandler::getTimerMilliseconds(TimingType type) {
  Control::instance().readOnce(timingSwitch_);
  const TimingSlot* slot = slotOf(type);
  return slot != nullptr ? static_cast<int>(slot->total.load(std::memory_order_relaxed)) : 0;
}

void zuTraceHandler::reportTimingResults(int reset) {
  Control& control = Control::instance();
  const bool applied = control.readOnce(timingSwitch_);
  std::lock_guard<std::mutex> lock(control.mutex);
  if (!applied) control.applyLocked(timingSwitch_);
  if (control.timingLog != nullptr) {
    std::string report = "Timing results (ms):\n";
    for (const ReportLine& line : kReport) {
      const int total = static_cast<int>(gSlots[line.slot].total.load(std::memory_order_relaxed));
      if (control.nonZeroOnly && total == 0) continue;
      report.append(line.label);
      report.append(std::to_string(total));
      report.push_back('\n');
    }
    report.append("Timing results complete.\n\n");
    writeAndFlush(control.timingLog, report);
  }
  if (reset != 0) {
    for (TimingSlot& slot : gSlots) slot.total.store(0, std::memory_order_relaxed);
  }
}

void zuTraceHandler::reportScriptInfo(const char* text) {
  Control& control = Control::instance();
  const bool applied = control.readOnce(timingSwitch_);
  std::lock_guard<std::mutex> lock(control.mutex);
  if (!applied) control.applyLocked(timingSwitch_);
  if (control.scriptLog != nullptr && text != nullptr) {
    writeAndFlush(control.scriptLog, std::string(text) + '\n');
  }
}

int zuTraceHandler::scriptLoggingEnabled() {
  Control& control = Control::instance();
  control.readOnce(timingSwitch_);
  std::lock_guard<std::mutex> lock(control.mutex);
  return control.scriptLog != nullptr ? 1 : 0;
}
