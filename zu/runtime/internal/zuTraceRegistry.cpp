#include "zu/runtime/internal/zuTraceRegistry.h"

#include "zu/runtime/zuTrace.h"

namespace zu::internal {

namespace {

std::string nameOf(const zuTrace& trace) {
  const zuString& name = trace.getName();
  return std::string(static_cast<const char*>(name), name.Length());
}

}  // namespace

TraceRegistry& TraceRegistry::instance() {
  static TraceRegistry* const registry = new TraceRegistry;
  return *registry;
}

void TraceRegistry::add(zuTrace& trace) {
  std::string name = nameOf(trace);
  std::lock_guard<std::mutex> lock(mutex_);
  if (activated_.contains(name)) trace.enabled_.store(1, std::memory_order_relaxed);
  traces_.emplace(std::move(name), &trace);
}

void TraceRegistry::remove(zuTrace& trace) {
  const std::string name = nameOf(trace);
  std::lock_guard<std::mutex> lock(mutex_);
  auto [first, last] = traces_.equal_range(name);
  for (; first != last; ++first) {
    if (first->second == &trace) {
      traces_.erase(first);
      return;
    }
  }
}

void TraceRegistry::activate(std::string_view name) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!activated_.contains(name)) activated_.emplace(name);
  auto [first, last] = traces_.equal_range(name);
  for (; first != last; ++first) first->second->enabled_.store(1, std::memory_order_relaxed);
}

std::vector<TraceRegistry::Entry> TraceRegistry::unknownTo(
    const std::map<std::string, unsigned short, std::less<>>& known) {
  std::vector<Entry> unknown;
  std::lock_guard<std::mutex> lock(mutex_);
  for (auto entry = traces_.begin(); entry != traces_.end();
       entry = traces_.upper_bound(entry->first)) {
    if (!known.contains(entry->first)) unknown.push_back({entry->first, entry->second->messageId_});
  }
  return unknown;
}

void TraceRegistry::forgetActivatedNames() {
  std::lock_guard<std::mutex> lock(mutex_);
  activated_.clear();
}

}  // namespace zu::internal
