// Shared main for the benchmarks.
//
// Benchmarks are registered in pairs named "<comparison>/ours" and
// "<comparison>/<peer>", for example "StringCopy64/ours" and
// "StringCopy64/std_string". After Google Benchmark's own table, one line per
// peer gives the comparison:
//
//   StringCopy64 vs std_string: ours 2.1 ns, peer 9.8 ns, ratio 4.67
//
// The ratio is the peer's time divided by ours: above 1 we are faster.
// With --benchmark_repetitions the medians are compared; on a shared machine
// add --benchmark_enable_random_interleaving=true so that a slow spell does
// not fall on one side only.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

// The name without the parts Google Benchmark appends for options
// ("/iterations:3", "/real_time"), which are not roles.
std::string withoutOptions(std::string name) {
  for (;;) {
    const std::size_t slash = name.rfind('/');
    if (slash == std::string::npos) return name;
    const std::string last = name.substr(slash + 1);
    if (last.find(':') == std::string::npos && last != "real_time" && last != "manual_time") {
      return name;
    }
    name.erase(slash);
  }
}

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.error_occurred) continue;
      const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if (run.run_type != Run::RT_Iteration && !median) continue;
      const std::string name = withoutOptions(run.run_name.str());
      const std::size_t slash = name.rfind('/');
      if (slash == std::string::npos) continue;
      const double nanos = run.GetAdjustedRealTime() *
                           benchmark::GetTimeUnitMultiplier(benchmark::kNanosecond) /
                           benchmark::GetTimeUnitMultiplier(run.time_unit);
      Time& time = times_[name.substr(0, slash)][name.substr(slash + 1)];
      // A median, once there, is not replaced by a single repetition.
      if (median || !time.median) time = Time{nanos, median};
    }
  }

  void Finalize() override {
    ConsoleReporter::Finalize();
    std::printf("\n");
    for (const auto& [comparison, roles] : times_) {
      const auto ours = roles.find("ours");
      if (ours == roles.end()) continue;
      for (const auto& [peer, peerTime] : roles) {
        if (peer == "ours") continue;
        std::printf("%s vs %s: ours %.1f ns, peer %.1f ns, ratio %.2f\n", comparison.c_str(),
                    peer.c_str(), ours->second.nanos, peerTime.nanos,
                    peerTime.nanos / ours->second.nanos);
      }
    }
    std::fflush(stdout);
  }

 private:
  struct Time {
    double nanos = 0;
    bool median = false;
  };
  std::map<std::string, std::map<std::string, Time>> times_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
