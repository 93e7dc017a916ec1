// Traces and stage timers: a disabled trace against an empty call and
// spdlog's disabled levels; an enabled trace against spdlog's stdout sink and
// fprintf (standard output sent to /dev/null while measured); a running stage
// timer against two reads of std::chrono::steady_clock.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <iostream>

#include "zu/runtime/zuTrace.h"
#include "zu/runtime/zuTraceHandler.h"

#ifdef ZU_BENCH_SPDLOG
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>
#endif

namespace {

zuTrace gOffTrace("bench-off", 1);
zuTrace gOnTrace("bench-on", 1);
const zuString kText("layout of page 3 done");

// Sends file descriptor 1 to /dev/null for a scope, so that the benchmark's
// own report is untouched.
class QuietStdout {
 public:
  QuietStdout() {
    std::cout.flush();
    std::fflush(stdout);
    saved_ = dup(1);
    const int null = open("/dev/null", O_WRONLY);
    dup2(null, 1);
    close(null);
  }
  ~QuietStdout() {
    std::fflush(stdout);
    dup2(saved_, 1);
    close(saved_);
  }

 private:
  int saved_;
};

// Empty, and kept as a call: noipa stops the compiler from seeing that it
// does nothing and dropping the call.
[[gnu::noipa]] void emptyCall(unsigned int, unsigned int, const zuString&) {}

void traceOffOurs(benchmark::State& state) {
  for (auto _ : state) {
    gOffTrace.trace(2, 16479, kText);
    benchmark::ClobberMemory();
  }
}

void traceOffEmptyCall(benchmark::State& state) {
  for (auto _ : state) {
    emptyCall(2, 16479, kText);
    benchmark::ClobberMemory();
  }
}

void traceOnOurs(benchmark::State& state) {
  zuTraceHandler handler;
  zuTraceHandler::registerTraceHandler(&handler);
  handler.activate(zuString("bench-on:2"));
  QuietStdout quiet;
  unsigned int messageId = 0;
  for (auto _ : state) gOnTrace.trace(1, ++messageId, kText);
}

void traceOnFprintf(benchmark::State& state) {
  QuietStdout quiet;
  unsigned int messageId = 0;
  for (auto _ : state) {
    std::fprintf(stdout, "%-8s trace: mid=%-3u tid=%-3u msg: %s\n", "bench-on", ++messageId, 4711u,
                 static_cast<const char*>(kText));
    std::fflush(stdout);
  }
}

void timerOnOurs(benchmark::State& state) {
  zuTraceHandler::timingTraceEnabled(1);
  for (auto _ : state) {
    zuTraceHandler::Timer timer(zuTraceHandler::eLayoutTiming);
    benchmark::ClobberMemory();
  }
  zuTraceHandler::timingTraceEnabled(0);
}

void timerOnSteadyClock(benchmark::State& state) {
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    benchmark::ClobberMemory();
    benchmark::DoNotOptimize(std::chrono::steady_clock::now() - start);
  }
}

#ifdef ZU_BENCH_SPDLOG
void traceOffSpdlogDebug(benchmark::State& state) {
  spdlog::set_level(spdlog::level::info);
  for (auto _ : state) {
    spdlog::debug("{}", static_cast<const char*>(kText));
    benchmark::ClobberMemory();
  }
}

void traceOffSpdlogLogger(benchmark::State& state) {
  auto logger = spdlog::stdout_logger_mt("bench-off-held");
  logger->set_level(spdlog::level::info);
  for (auto _ : state) {
    logger->debug("{}", static_cast<const char*>(kText));
    benchmark::ClobberMemory();
  }
  spdlog::drop("bench-off-held");
}

void traceOnSpdlog(benchmark::State& state) {
  auto logger = spdlog::stdout_logger_mt("bench-on");
  QuietStdout quiet;
  unsigned int messageId = 0;
  for (auto _ : state) logger->info("mid={} msg: {}", ++messageId, static_cast<const char*>(kText));
  spdlog::drop("bench-on");
}
#endif

}  // namespace

BENCHMARK(traceOffOurs)->Name("TraceOff/ours");
BENCHMARK(traceOffEmptyCall)->Name("TraceOff/empty_call");
BENCHMARK(traceOnOurs)->Name("TraceOn/ours");
BENCHMARK(traceOnFprintf)->Name("TraceOn/fprintf_fflush");
BENCHMARK(timerOnOurs)->Name("TimerOn/ours");
BENCHMARK(timerOnSteadyClock)->Name("TimerOn/steady_clock");
#ifdef ZU_BENCH_SPDLOG
BENCHMARK(traceOffSpdlogDebug)->Name("TraceOff/spdlog_debug");
BENCHMARK(traceOffSpdlogLogger)->Name("TraceOff/spdlog_logger_debug");
BENCHMARK(traceOnSpdlog)->Name("TraceOn/spdlog_stdout_sink_mt");
#endif
