// zupic serve against starting zupic once per value: one value formatted
// through GET /api/format on a kept-alive connection, against one `zupic
// format` process per value (the way a script without the server works);
// then the page's "all locales" request, one picture and one value in every
// built-in locale, against one process per locale.
//
// The server is the built zupic, started as a process on a free port.
#include <benchmark/benchmark.h>
#include <httplib.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

const char kPicture[] = "num{z,zz9.99}";
const char kValue[] = "1234.5";
const char kLocale[] = "de_DE";
const char kFormatPath[] = "/api/format?picture=num%7Bz,zz9.99%7D&value=1234.5&locale=de_DE";
const char kAllLocalesPath[] = "/api/all-locales?picture=num%7Bz,zz9.99%7D&value=1234.5";

// The server process, started on first use and stopped at exit.
class Server {
 public:
  static Server& get() {
    static Server server;
    return server;
  }
  int port() const { return port_; }

 private:
  Server() {
    int out[2];
    if (pipe(out) != 0) return;
    pid_ = fork();
    if (pid_ == 0) {
      dup2(out[1], STDOUT_FILENO);
      close(out[0]);
      close(out[1]);
      execl(ZUPIC_PATH, ZUPIC_PATH, "serve", "--port", "0", static_cast<char*>(nullptr));
      _exit(127);
    }
    close(out[1]);
    FILE* output = fdopen(out[0], "r");
    char line[256] = {};
    if (output != nullptr && std::fgets(line, sizeof line, output) != nullptr) {
      const std::string banner = line;
      const size_t colon = banner.find(':', banner.find("//"));
      if (colon != std::string::npos) port_ = std::atoi(banner.c_str() + colon + 1);
    }
  }
  ~Server() {
    if (pid_ > 0) {
      kill(pid_, SIGTERM);
      waitpid(pid_, nullptr, 0);
    }
  }

  pid_t pid_ = -1;
  int port_ = 0;
};

// Runs zupic with `arguments` and returns the length of what it printed.
size_t runZupic(const std::vector<const char*>& arguments) {
  int out[2];
  if (pipe(out) != 0) return 0;
  const pid_t child = fork();
  if (child == 0) {
    dup2(out[1], STDOUT_FILENO);
    close(out[0]);
    close(out[1]);
    std::vector<char*> argv{const_cast<char*>(ZUPIC_PATH)};
    for (const char* argument : arguments) argv.push_back(const_cast<char*>(argument));
    argv.push_back(nullptr);
    execv(ZUPIC_PATH, argv.data());
    _exit(127);
  }
  close(out[1]);
  size_t length = 0;
  char buffer[256];
  ssize_t got = 0;
  while ((got = read(out[0], buffer, sizeof buffer)) > 0) length += static_cast<size_t>(got);
  close(out[0]);
  waitpid(child, nullptr, 0);
  return length;
}

httplib::Client client() {
  httplib::Client http("127.0.0.1", Server::get().port());
  http.set_keep_alive(true);
  return http;
}

void serverFormat(benchmark::State& state) {
  httplib::Client http = client();
  for (auto _ : state) {
    const auto answer = http.Get(kFormatPath);
    if (!answer || answer->status != 200) {
      state.SkipWithError("the server did not answer");
      break;
    }
    benchmark::DoNotOptimize(answer->body.size());
  }
}

void processFormat(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(runZupic({"format", kPicture, kValue, "--locale", kLocale}));
  }
}

void serverAllLocales(benchmark::State& state) {
  httplib::Client http = client();
  for (auto _ : state) {
    const auto answer = http.Get(kAllLocalesPath);
    if (!answer || answer->status != 200) {
      state.SkipWithError("the server did not answer");
      break;
    }
    benchmark::DoNotOptimize(answer->body.size());
  }
}

// What a script does without the server: one process per locale.
void processAllLocales(benchmark::State& state) {
  std::vector<std::string> locales;
  {
    FILE* list = popen(ZUPIC_PATH " locales", "r");
    char line[512];
    while (list != nullptr && std::fgets(line, sizeof line, list) != nullptr) {
      locales.emplace_back(line, std::strcspn(line, " "));
    }
    if (list != nullptr) pclose(list);
  }
  for (auto _ : state) {
    for (const std::string& locale : locales) {
      benchmark::DoNotOptimize(runZupic({"format", kPicture, kValue, "--locale", locale.c_str()}));
    }
  }
}

}  // namespace

BENCHMARK(serverFormat)->Name("FormatOneValue/ours")->UseRealTime();
BENCHMARK(processFormat)->Name("FormatOneValue/process_per_value")->UseRealTime();
BENCHMARK(serverAllLocales)->Name("AllLocales/ours")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(processAllLocales)
    ->Name("AllLocales/process_per_locale")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
