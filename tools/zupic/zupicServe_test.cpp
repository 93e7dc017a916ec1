// zupic serve as its users meet it: the built zupic is started as a process
// (`zupic serve --port 0`), every endpoint is called through cpp-httplib's
// client, and the answers are checked against `zupic format` and `zupic
// parse` run as processes on the same input.
//
//   zupic_serve_test /path/to/zupic
#include <fcntl.h>
#include <gtest/gtest.h>
#include <httplib.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using Json = nlohmann::json;

std::string gZupic;  // the zupic under test, from the command line

// `zupic` with `arguments` as a child process, its standard output read
// through line() and rest(); standard error is dropped. Killed at
// destruction if it still runs.
struct Process {
  explicit Process(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), gZupic);
    int out[2];
    EXPECT_EQ(pipe2(out, O_CLOEXEC), 0);  // dup2 below clears the flag on 1 and 2
    if ((pid = fork()) == 0) {
      dup2(out[1], STDOUT_FILENO);
      dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
      std::vector<char*> argv;
      for (std::string& word : arguments) argv.push_back(word.data());
      argv.push_back(nullptr);
      execv(argv[0], argv.data());
      _exit(127);
    }
    close(out[1]);
    output = fdopen(out[0], "r");
  }
  ~Process() {
    if (!ended) wait(SIGKILL);
    std::fclose(output);
  }

  // The next line of standard output ("" at its end), or all the rest.
  std::string line() {
    char buffer[256] = {};
    return std::fgets(buffer, sizeof buffer, output) ? buffer : "";
  }
  std::string rest() {
    std::string text, more;
    while (!(more = line()).empty()) text += more;
    return text;
  }

  // Sends `signal` (0 sends none) and waits up to five seconds for the
  // exit: its status, or -1 when it did not end in time or normally.
  int wait(int signal = 0) {
    kill(pid, signal);
    int raw = 0;
    for (int i = 0; i < 500 && !ended; ++i) {
      ended = waitpid(pid, &raw, WNOHANG) == pid;
      if (!ended) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return ended && WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  }

  // The port a server names in its first line ("... http://127.0.0.1:PORT"),
  // 0 when it names none.
  int port() {
    const std::string banner = line(), prefix = "http://127.0.0.1:";
    const size_t at = banner.find(prefix);
    return at == std::string::npos ? 0 : std::atoi(banner.c_str() + at + prefix.size());
  }

  pid_t pid = -1;
  FILE* output = nullptr;
  bool ended = false;
};

// Runs zupic with `arguments` to the end: its standard output and status.
std::pair<std::string, int> run(std::vector<std::string> arguments) {
  Process process(std::move(arguments));
  std::string text = process.rest();
  return {text, process.wait()};
}

struct PictureCase {
  const char *operation, *picture, *locale, *value;

  std::string path() const {
    using httplib::detail::encode_query_param;
    return std::string("/api/") + operation + "?picture=" + encode_query_param(picture) +
           "&value=" + encode_query_param(value) + "&locale=" + encode_query_param(locale);
  }
  // What the command line prints for the value (without its newline) and
  // its exit status.
  std::pair<std::string, int> cli() const {
    auto result = run({operation, picture, "--locale", locale, "--", value});
    if (!result.first.empty() && result.first.back() == '\n') result.first.pop_back();
    return result;
  }
};

class ServeTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    server_ = std::make_unique<Process>(std::vector<std::string>{"serve", "--port", "0"});
    port_ = server_->port();
  }
  static void TearDownTestSuite() { server_.reset(); }

  // GETs `path`, expects 200 and returns the JSON answer.
  Json getJson(const std::string& path) {
    const auto got = http_.Get(path);
    EXPECT_TRUE(got && got->status == 200) << path;
    return got ? Json::parse(got->body, nullptr, false) : Json();
  }

  static inline std::unique_ptr<Process> server_;
  static inline int port_ = 0;
  httplib::Client http_{"127.0.0.1", port_};
};

// The server hands pictures to the library as they are: one row per kind
// of answer (each way, matched or not), not per category.
const PictureCase kCases[] = {
    {"format", "date{EEEE, D MMMM YYYY}", "fr_FR", "2024-03-05"},
    {"format", "num{999}", "en_US", "12345"},  // does not fit
    {"parse", "num{z,zz9.99}", "de_DE", "1.234,50"},
    {"parse", "num{999}", "en_US", "abc"},  // does not match
};

TEST_F(ServeTest, GetAndPostAnswerAsTheCommandLineDoes) {
  for (const PictureCase& c : kCases) {
    SCOPED_TRACE(c.path());
    const auto [text, status] = c.cli();
    const auto got = http_.Get(c.path());
    ASSERT_TRUE(got);
    EXPECT_EQ(got->status, 200);
    EXPECT_EQ(got->get_header_value("Content-Type"), "application/json; charset=utf-8");
    const Json body = Json::parse(got->body);
    EXPECT_EQ(body["operation"], c.operation);
    EXPECT_EQ(body["locale"], c.locale);
    ASSERT_EQ(body["results"].size(), 1u);
    EXPECT_EQ(body["results"][0]["text"], text);
    EXPECT_EQ(body["results"][0]["matched"], status == 0);
    EXPECT_EQ(body["results"][0]["value"], c.value);

    // The same value twice in one POST, beside one that never matches.
    const Json request = {
        {"picture", c.picture}, {"locale", c.locale}, {"values", {c.value, "\x01", c.value}}};
    const auto posted =
        http_.Post(std::string("/api/") + c.operation, request.dump(), "application/json");
    ASSERT_TRUE(posted);
    EXPECT_EQ(posted->status, 200);
    const Json many = Json::parse(posted->body)["results"];
    ASSERT_EQ(many.size(), 3u);
    EXPECT_EQ(many[0]["text"], text);
    EXPECT_EQ(many[2]["text"], text);
    EXPECT_EQ(many[1]["matched"], false);
  }
}

TEST_F(ServeTest, LibraryErrorsAndUnknownLocalesAreReported) {
  Json compound = getJson(PictureCase{"format", "num{9} text{X}", "en_US", "5"}.path());
  EXPECT_EQ(compound["results"][0]["matched"], false);
  EXPECT_EQ(compound["results"][0]["error"]["id"], 16480);
  EXPECT_NE(compound["results"][0]["error"]["message"].get<std::string>().find("Compound pictures"),
            std::string::npos);
  Json unknown = getJson(PictureCase{"format", "num{z,zz9.99}", "xx_YY", "1234.5"}.path());
  EXPECT_EQ(unknown["locale"], "en_US");
  EXPECT_EQ(unknown["results"][0]["text"], "1,234.50");
  EXPECT_NE(unknown["notice"].get<std::string>().find("xx_YY"), std::string::npos);
  Json spelled = getJson(PictureCase{"format", "num{z,zz9.99}", "de-ch", "1234.5"}.path());
  EXPECT_EQ(spelled["locale"], "de_CH");
  EXPECT_FALSE(spelled.contains("notice"));
}

TEST_F(ServeTest, LocalesMatchTheCommandLine) {
  const std::string listed = run({"locales"}).first;
  const Json list = getJson("/api/locales")["locales"];
  EXPECT_EQ(list.size(), static_cast<size_t>(std::count(listed.begin(), listed.end(), '\n')));
  EXPECT_GT(list.size(), 180u);

  Json view = getJson("/api/locale/fr_FR");
  EXPECT_EQ(view["name"], "fr_FR");
  const std::string shown = run({"locale", "fr_FR"}).first;
  for (const Json& field : view["fields"]) {
    const std::string line = field["label"].get<std::string>();
    EXPECT_NE(shown.find(line), std::string::npos) << line;
    EXPECT_NE(shown.find(field["value"].get<std::string>()), std::string::npos) << line;
  }
  EXPECT_EQ(view["fields"].size(),
            static_cast<size_t>(std::count(shown.begin(), shown.end(), '\n')));

  const Json rows = getJson("/api/all-locales?picture=num%7Bz,zz9.99%7D&value=1234.5")["results"];
  EXPECT_EQ(rows.size(), list.size());
  const auto german = [](const Json& row) {
    return row["locale"] == "de_DE" && row["text"] == "1.234,50";
  };
  EXPECT_EQ(std::count_if(rows.begin(), rows.end(), german), 1);  // right, and only once
}

TEST_F(ServeTest, PageAndGuideAreServed) {
  const auto page = http_.Get("/");
  ASSERT_TRUE(page);
  EXPECT_EQ(page->status, 200);
  EXPECT_NE(page->body.find("<title>zupic playground</title>"), std::string::npos);
  EXPECT_NE(page->get_header_value("Content-Security-Policy").find("connect-src 'self'"),
            std::string::npos);
  const auto guide = http_.Get("/guide.md");
  ASSERT_TRUE(guide);
  EXPECT_EQ(guide->body.rfind("# Picture clauses", 0), 0u);
}

TEST_F(ServeTest, BadRequestsGetJsonErrors) {
  struct Case {  // sent by GET without a body, else by POST
    std::string path;
    std::string body;
    int status;
  };
  const std::string manyValues = Json{{"picture", "num{9}"}, {"values", Json(10001, "1")}}.dump();
  const std::string huge =
      Json{{"picture", "num{9}"}, {"values", {std::string(70000, '1')}}}.dump();
  // One row per rule the server checks; invalid UTF-8 by an overlong form
  // in a query and by a stray byte in a JSON body.
  const Case cases[] = {
      {"/api/format", huge, 413},
      {"/api/format", manyValues, 413},
      {"/api/format?picture=num%7B9%7D&value=" + std::string(9000, '1'), "", 414},
      {"/api/format?picture=num%7B9%7D&value=%C0%AF", "", 400},
      {"/api/format", "{\"picture\":\"num{9}\",\"values\":[\"\xff\"]}", 400},
      {"/api/format?picture=%27open&value=1", "", 400},
      {"/api/format?value=1", "", 400},
      {"/api/parse", R"({"picture":"num{9}","values":[1]})", 400},
      {"/api/parse", std::string(30000, '[') + std::string(30000, ']'), 400},
      {"/api/all-locales?picture=num%7B9%7D&value=1&value=2", "", 400},
      {"/api/all-locales?picture=num%7B9%7D&value=1&operation=drop", "", 400},
      {"/api/locale/xx_YY", "", 404},
      {"/no/such/page", "{}", 404},
      {"/api/locales", "{}", 405},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.path.substr(0, 80));
    httplib::Result got =
        c.body.empty() ? http_.Get(c.path) : http_.Post(c.path, c.body, "application/json");
    ASSERT_TRUE(got) << httplib::to_string(got.error());
    EXPECT_EQ(got->status, c.status);
    const Json body = Json::parse(got->body, nullptr, false);
    ASSERT_TRUE(body.is_object()) << got->body;
    EXPECT_EQ(body["error"]["status"], c.status);
    EXPECT_FALSE(body["error"]["message"].get<std::string>().empty());
    EXPECT_EQ(got->get_header_value("Allow").empty(), c.status != 405);
  }
  getJson("/api/locales");  // the server is still there
}

TEST_F(ServeTest, SixtyFourClientsGetEveryAnswerRight) {
  constexpr int kClients = 64;
  constexpr int kRequests = 200;
  std::vector<std::pair<std::string, std::string>> expected;  // path, text
  for (const PictureCase& c : kCases) expected.push_back({c.path(), c.cli().first});
  std::atomic<int> correct{0};
  std::vector<std::thread> clients;
  for (int k = 0; k < kClients; ++k) {
    clients.emplace_back([&, k] {
      httplib::Client http("127.0.0.1", port_);
      http.set_read_timeout(10);
      for (int i = 0; i < kRequests; ++i) {
        const auto& [path, text] = expected[(k + i) % expected.size()];
        const auto got = http.Get(path);
        if (!got || got->status != 200) continue;
        const Json body = Json::parse(got->body, nullptr, false);
        if (!body.is_discarded() && body["results"][0]["text"] == text) ++correct;
      }
    });
  }
  for (std::thread& thread : clients) thread.join();
  EXPECT_EQ(correct.load(), kClients * kRequests);
}

TEST(ServeLifeTest, StopsCleanlyOnSigintAndSigterm) {
  for (const int signal : {SIGINT, SIGTERM}) {
    Process server({"serve", "--port", "0"});
    const int port = server.port();
    ASSERT_GT(port, 0);
    const auto answer = httplib::Client("127.0.0.1", port).Get("/api/locales");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(server.wait(signal), 0);
    EXPECT_EQ(server.rest(), "zupic serve: stopped\n");
  }
}

TEST(ServeLifeTest, UsageErrors) {
  const std::pair<std::vector<std::string>, int> cases[] = {
      {{"serve", "--port", "65536"}, 2}, {{"serve", "--colour"}, 2}, {{"serve", "--help"}, 0}};
  for (const auto& [command, status] : cases) {
    const auto [text, got] = run(command);
    EXPECT_EQ(got, status) << command.back();
    EXPECT_EQ(text.find("--host 0.0.0.0") != std::string::npos, status == 0) << command.back();
  }
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: zupic_serve_test /path/to/zupic\n");
    return 2;
  }
  gZupic = argv[1];
  signal(SIGPIPE, SIG_IGN);
  return RUN_ALL_TESTS();
}
