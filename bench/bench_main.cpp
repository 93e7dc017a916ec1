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
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const std::string name = run.benchmark_name();
      const std::size_t slash = name.rfind('/');
      if (slash == std::string::npos) continue;
      const double nanos = run.GetAdjustedRealTime() *
                           benchmark::GetTimeUnitMultiplier(benchmark::kNanosecond) /
                           benchmark::GetTimeUnitMultiplier(run.time_unit);
      times_[name.substr(0, slash)][name.substr(slash + 1)] = nanos;
    }
  }

  void Finalize() override {
    ConsoleReporter::Finalize();
    std::printf("\n");
    for (const auto& [comparison, roles] : times_) {
      const auto ours = roles.find("ours");
      if (ours == roles.end()) continue;
      for (const auto& [peer, peerNanos] : roles) {
        if (peer == "ours") continue;
        std::printf("%s vs %s: ours %.1f ns, peer %.1f ns, ratio %.2f\n", comparison.c_str(),
                    peer.c_str(), ours->second, peerNanos, peerNanos / ours->second);
      }
    }
    std::fflush(stdout);
  }

 private:
  std::map<std::string, std::map<std::string, double>> times_;
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
