// The library-wide registry of live traces, and the names that some handler
// has activated.
//
// Every zuTrace enters at construction and leaves at destruction; a trace
// whose name has been activated (by any thread's handler, ever) starts
// enabled, and activating a name enables every live trace of that name.
// All under one mutex: traces are made and destroyed on any thread.
#pragma once

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

class zuTrace;

namespace zu::internal {

class TraceRegistry {
 public:
  // A trace's name and default message id, as handlers copy them.
  struct Entry {
    std::string name;
    unsigned short messageId;
  };

  // The registry, made on first use and never destroyed, so that static
  // traces may leave it in any order at exit.
  static TraceRegistry& instance();

  // Enters `trace` (enabling it when its name was activated) and leaves.
  void add(zuTrace& trace);
  void remove(zuTrace& trace);
  // Remembers `name` as activated and enables every live trace of it.
  void activate(std::string_view name);
  // Every live trace's name and message id whose name `known` does not yet
  // hold (the first trace of each name).
  std::vector<Entry> unknownTo(const std::map<std::string, unsigned short, std::less<>>& known);
  // Forgets every activated name (traces keep their flags). For fuzzing,
  // which activates millions of names in one process.
  void forgetActivatedNames();

 private:
  TraceRegistry() = default;

  std::mutex mutex_;
  std::multimap<std::string, zuTrace*, std::less<>> traces_;
  std::set<std::string, std::less<>> activated_;
};

}  // namespace zu::internal
