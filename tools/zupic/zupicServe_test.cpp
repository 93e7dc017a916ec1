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

#include <atomic>
#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <vector>

namespace {

using Json = nlohmann::json;

std::string gZupic;  // the zupic under test, from the command line

// Runs `arguments` and returns what the process wrote to standard output
// (standard error is dropped), with its exit status in `status`.
std::string runProcess(const std::vector<std::string>& arguments, int& status) {
  int out[2];
  if (pipe(out) != 0) return {};
  const pid_t child = fork();
  if (child == 0) {
    dup2(out[1], STDOUT_FILENO);
    const int null = open("/dev/null", O_WRONLY);
    dup2(null, STDERR_FILENO);
    close(out[0]);
    close(out[1]);
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
      argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    execv(argv[0], argv.data());
    _exit(127);
  }
  close(out[1]);
  std::string text;
  char buffer[4096];
  ssize_t got = 0;
  while ((got = read(out[0], buffer, sizeof buffer)) > 0) text.append(buffer, got);
  close(out[0]);
  int raw = 0;
  waitpid(child, &raw, 0);
  status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  return text;
}

// What the command line gives for one value: its line and whether it matched.
struct CliResult {
  std::string text;
  bool matched;
};

CliResult cli(const char* operation, const std::string& picture, const std::string& value,
              const std::string& locale) {
  int status = 0;
  std::string text =
      runProcess({gZupic, operation, picture, "--locale", locale, "--", value}, status);
  if (!text.empty() && text.back() == '\n') text.pop_back();
  return {text, status == 0};
}

// One `zupic serve --port 0` process.
class ServerProcess {
 public:
  ServerProcess() {
    int out[2];
    if (pipe(out) != 0) return;
    pid_ = fork();
    if (pid_ == 0) {
      dup2(out[1], STDOUT_FILENO);
      close(out[0]);
      close(out[1]);
      execl(gZupic.c_str(), gZupic.c_str(), "serve", "--port", "0", static_cast<char*>(nullptr));
      _exit(127);
    }
    close(out[1]);
    output_ = fdopen(out[0], "r");
    char line[256] = {};
    if (output_ != nullptr && std::fgets(line, sizeof line, output_) != nullptr) {
      banner_ = line;
      const size_t colon = banner_.find(':', banner_.find("//"));
      if (colon != std::string::npos) port_ = std::atoi(banner_.c_str() + colon + 1);
    }
  }
  ~ServerProcess() {
    if (pid_ > 0 && !stopped_) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
    if (output_ != nullptr) std::fclose(output_);
  }

  int port() const { return port_; }
  const std::string& banner() const { return banner_; }

  // Sends `signal` and waits up to five seconds; the exit status, or -1
  // when the process did not end in time or did not exit normally.
  int stop(int signal) {
    kill(pid_, signal);
    for (int i = 0; i < 500; ++i) {
      int raw = 0;
      if (waitpid(pid_, &raw, WNOHANG) == pid_) {
        stopped_ = true;
        return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return -1;
  }
  // The rest of standard output (after stop).
  std::string rest() {
    std::string text;
    char buffer[256];
    while (output_ != nullptr && std::fgets(buffer, sizeof buffer, output_) != nullptr) {
      text += buffer;
    }
    return text;
  }

 private:
  pid_t pid_ = -1;
  FILE* output_ = nullptr;
  std::string banner_;
  int port_ = 0;
  bool stopped_ = false;
};

class ServeTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { server_ = new ServerProcess(); }
  static void TearDownTestSuite() {
    delete server_;
    server_ = nullptr;
  }

  void SetUp() override { ASSERT_GT(server_->port(), 0) << "banner: " << server_->banner(); }

  static httplib::Client client() {
    httplib::Client client("127.0.0.1", server_->port());
    client.set_read_timeout(10);
    return client;
  }

  static std::string query(const std::string& picture, const std::string& value,
                           const std::string& locale) {
    return "?picture=" + httplib::detail::encode_query_param(picture) +
           "&value=" + httplib::detail::encode_query_param(value) +
           "&locale=" + httplib::detail::encode_query_param(locale);
  }

  static ServerProcess* server_;
};

ServerProcess* ServeTest::server_ = nullptr;

struct PictureCase {
  const char* operation;
  const char* picture;
  const char* locale;
  const char* value;
};

const PictureCase kCases[] = {
    {"format", "date{EEEE, D MMMM YYYY}", "fr_FR", "2024-03-05"},
    {"format", "num{z,zz9.99}", "de_DE", "1234.5"},
    {"format", "num{z,zz9.99}|num{9.99E}", "en_US", "98765432"},
    {"format", "num.currency{}", "ja_JP", "1234"},
    {"format", "text{999-AA}", "en_US", "123AB"},
    {"format", "time{h:MM A}", "en_US", "13:45:00"},
    {"format", "date.long{}", "ja_JP", "2024-03-05"},
    {"format", "num{999}", "en_US", "12345"},  // does not fit
    {"parse", "num{z,zz9.99}", "de_DE", "1.234,50"},
    {"parse", "date{EEEE, D MMMM YYYY}", "fr_FR", "mardi, 5 mars 2024"},
    {"parse", "time{h:MM A}", "en_US", "1:45 PM"},
    {"parse", "date{D/M/YY}", "en_GB", "5/3/29"},
    {"parse", "num{999}", "en_US", "abc"},  // does not match
};

TEST_F(ServeTest, GetAndPostAnswerAsTheCommandLineDoes) {
  httplib::Client http = client();
  for (const PictureCase& c : kCases) {
    SCOPED_TRACE(std::string(c.operation) + " " + c.picture + " " + c.value);
    const CliResult expected = cli(c.operation, c.picture, c.value, c.locale);
    const auto got =
        http.Get(std::string("/api/") + c.operation + query(c.picture, c.value, c.locale));
    ASSERT_TRUE(got);
    EXPECT_EQ(got->status, 200);
    EXPECT_EQ(got->get_header_value("Content-Type"), "application/json; charset=utf-8");
    const Json body = Json::parse(got->body);
    EXPECT_EQ(body["operation"], c.operation);
    EXPECT_EQ(body["locale"], c.locale);
    ASSERT_EQ(body["results"].size(), 1u);
    EXPECT_EQ(body["results"][0]["text"], expected.text);
    EXPECT_EQ(body["results"][0]["matched"], expected.matched);
    EXPECT_EQ(body["results"][0]["value"], c.value);

    // The same value twice in one POST, beside one that never matches.
    const Json request = {
        {"picture", c.picture}, {"locale", c.locale}, {"values", {c.value, "\x01", c.value}}};
    const auto posted =
        http.Post(std::string("/api/") + c.operation, request.dump(), "application/json");
    ASSERT_TRUE(posted);
    EXPECT_EQ(posted->status, 200);
    const Json many = Json::parse(posted->body)["results"];
    ASSERT_EQ(many.size(), 3u);
    EXPECT_EQ(many[0]["text"], expected.text);
    EXPECT_EQ(many[2]["text"], expected.text);
    EXPECT_EQ(many[1]["matched"], false);
  }
}

TEST_F(ServeTest, LibraryErrorsAndUnknownLocalesAreReported) {
  httplib::Client http = client();
  const auto compound = http.Get("/api/format" + query("num{9} text{X}", "5", "en_US"));
  ASSERT_TRUE(compound);
  EXPECT_EQ(compound->status, 200);
  const Json result = Json::parse(compound->body)["results"][0];
  EXPECT_EQ(result["matched"], false);
  EXPECT_EQ(result["error"]["id"], 16480);
  EXPECT_NE(result["error"]["message"].get<std::string>().find("Compound pictures"),
            std::string::npos);

  const auto unknown = http.Get("/api/format" + query("num{z,zz9.99}", "1234.5", "xx_YY"));
  ASSERT_TRUE(unknown);
  const Json body = Json::parse(unknown->body);
  EXPECT_EQ(body["locale"], "en_US");
  EXPECT_EQ(body["results"][0]["text"], "1,234.50");
  EXPECT_NE(body["notice"].get<std::string>().find("xx_YY"), std::string::npos);

  const auto spelled = http.Get("/api/format" + query("num{z,zz9.99}", "1234.5", "de-ch"));
  ASSERT_TRUE(spelled);
  EXPECT_EQ(Json::parse(spelled->body)["locale"], "de_CH");
  EXPECT_FALSE(Json::parse(spelled->body).contains("notice"));
}

TEST_F(ServeTest, LocalesMatchTheCommandLine) {
  httplib::Client http = client();
  int status = 0;
  const std::string listed = runProcess({gZupic, "locales"}, status);
  const auto locales = http.Get("/api/locales");
  ASSERT_TRUE(locales);
  const Json list = Json::parse(locales->body)["locales"];
  EXPECT_EQ(list.size(), static_cast<size_t>(std::count(listed.begin(), listed.end(), '\n')));
  EXPECT_GT(list.size(), 180u);

  const auto french = http.Get("/api/locale/fr_FR");
  ASSERT_TRUE(french);
  EXPECT_EQ(french->status, 200);
  const Json view = Json::parse(french->body);
  EXPECT_EQ(view["name"], "fr_FR");
  const std::string shown = runProcess({gZupic, "locale", "fr_FR"}, status);
  for (const Json& field : view["fields"]) {
    const std::string line = field["label"].get<std::string>();
    EXPECT_NE(shown.find(line), std::string::npos) << line;
    EXPECT_NE(shown.find(field["value"].get<std::string>()), std::string::npos) << line;
  }
  EXPECT_EQ(view["fields"].size(),
            static_cast<size_t>(std::count(shown.begin(), shown.end(), '\n')));

  const auto all = http.Get("/api/all-locales?picture=num%7Bz,zz9.99%7D&value=1234.5");
  ASSERT_TRUE(all);
  EXPECT_EQ(all->status, 200);
  const Json rows = Json::parse(all->body)["results"];
  EXPECT_EQ(rows.size(), list.size());
  size_t german = 0;
  for (const Json& row : rows) {
    if (row["locale"] == "de_DE") {
      EXPECT_EQ(row["text"], "1.234,50");
      ++german;
    }
  }
  EXPECT_EQ(german, 1u);
}

TEST_F(ServeTest, PageAndGuideAreServed) {
  httplib::Client http = client();
  const auto page = http.Get("/");
  ASSERT_TRUE(page);
  EXPECT_EQ(page->status, 200);
  EXPECT_NE(page->body.find("<title>zupic playground</title>"), std::string::npos);
  EXPECT_NE(page->get_header_value("Content-Security-Policy").find("connect-src 'self'"),
            std::string::npos);
  const auto guide = http.Get("/guide.md");
  ASSERT_TRUE(guide);
  EXPECT_EQ(guide->body.rfind("# Picture clauses", 0), 0u);
}

TEST_F(ServeTest, BadRequestsGetJsonErrors) {
  struct Case {
    const char* method;
    std::string path;
    std::string body;
    int status;
  };
  std::string manyValues = R"({"picture":"num{9}","values":[)";
  for (int i = 0; i < 10001; ++i) manyValues += i == 0 ? "\"1\"" : ",\"1\"";
  manyValues += "]}";
  const std::string huge = R"({"picture":"num{9}","values":[")" + std::string(70000, '1') + "\"]}";
  const Case cases[] = {
      {"POST", "/api/format", huge, 413},
      {"POST", "/api/format", manyValues, 413},
      {"GET", "/api/format?picture=num%7B9%7D&value=" + std::string(9000, '1'), "", 414},
      {"GET", "/api/format?picture=num%7B9%7D&value=%FF", "", 400},
      {"GET", "/api/format?picture=num%7B9%7D&value=%C0%AF", "", 400},
      {"GET", "/api/format?picture=num%7B9%7D&value=%ED%A0%80", "", 400},
      {"POST", "/api/format", "{\"picture\":\"num{9}\",\"values\":[\"\xff\"]}", 400},
      {"GET", "/api/format?picture=%27open&value=1", "", 400},
      {"GET", "/api/format?value=1", "", 400},
      {"GET", "/api/format?picture=num%7B9%7D", "", 400},
      {"POST", "/api/parse", "{not json", 400},
      {"POST", "/api/parse", R"({"picture":"num{9}","values":"1"})", 400},
      {"POST", "/api/parse", R"({"picture":"num{9}","values":[1]})", 400},
      {"POST", "/api/parse", std::string(30000, '[') + std::string(30000, ']'), 400},
      {"GET", "/api/all-locales?picture=num%7B9%7D&value=1&value=2", "", 400},
      {"GET", "/api/all-locales?picture=num%7B9%7D&value=1&operation=drop", "", 400},
      {"GET", "/api/locale/xx_YY", "", 404},
      {"GET", "/no/such/page", "", 404},
      {"PUT", "/no/such/page", "x", 404},
      {"POST", "/api/locales", "{}", 405},
      {"DELETE", "/api/format", "", 405},
      {"PATCH", "/", "x", 405},
  };
  httplib::Client http = client();
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.method) + " " + c.path.substr(0, 80));
    httplib::Result got =
        c.method == std::string("GET")     ? http.Get(c.path)
        : c.method == std::string("POST")  ? http.Post(c.path, c.body, "application/json")
        : c.method == std::string("PUT")   ? http.Put(c.path, c.body, "text/plain")
        : c.method == std::string("PATCH") ? http.Patch(c.path, c.body, "text/plain")
                                           : http.Delete(c.path);
    ASSERT_TRUE(got) << httplib::to_string(got.error());
    EXPECT_EQ(got->status, c.status);
    const Json body = Json::parse(got->body, nullptr, false);
    ASSERT_TRUE(body.is_object()) << got->body;
    EXPECT_EQ(body["error"]["status"], c.status);
    EXPECT_FALSE(body["error"]["message"].get<std::string>().empty());
    if (c.status == 405) {
      EXPECT_FALSE(got->get_header_value("Allow").empty());
    }
  }
  // The server is still there.
  const auto after = http.Get("/api/locales");
  ASSERT_TRUE(after);
  EXPECT_EQ(after->status, 200);
}

TEST_F(ServeTest, SixtyFourClientsGetEveryAnswerRight) {
  constexpr int kClients = 64;
  constexpr int kRequests = 200;
  struct Expected {
    std::string path;
    std::string text;
  };
  std::vector<Expected> expected;
  for (const PictureCase& c : kCases) {
    expected.push_back({std::string("/api/") + c.operation + query(c.picture, c.value, c.locale),
                        cli(c.operation, c.picture, c.value, c.locale).text});
  }
  std::atomic<int> correct{0};
  std::vector<std::thread> clients;
  for (int k = 0; k < kClients; ++k) {
    clients.emplace_back([&, k] {
      httplib::Client http = client();
      for (int i = 0; i < kRequests; ++i) {
        const Expected& want = expected[(k + i) % expected.size()];
        const auto got = http.Get(want.path);
        if (!got || got->status != 200) continue;
        const Json body = Json::parse(got->body, nullptr, false);
        if (!body.is_discarded() && body["results"][0]["text"] == want.text) ++correct;
      }
    });
  }
  for (std::thread& thread : clients) thread.join();
  EXPECT_EQ(correct.load(), kClients * kRequests);
}

TEST(ServeLifeTest, StopsCleanlyOnSigintAndSigterm) {
  for (const int signal : {SIGINT, SIGTERM}) {
    ServerProcess server;
    ASSERT_GT(server.port(), 0) << server.banner();
    EXPECT_NE(server.banner().find("http://127.0.0.1:"), std::string::npos);
    httplib::Client http("127.0.0.1", server.port());
    const auto answer = http.Get("/api/locales");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(server.stop(signal), 0);
    EXPECT_EQ(server.rest(), "zupic serve: stopped\n");
  }
}

TEST(ServeLifeTest, UsageErrors) {
  const std::vector<std::vector<std::string>> cases = {
      {gZupic, "serve", "--port"},       {gZupic, "serve", "--port", "65536"},
      {gZupic, "serve", "--port", "-1"}, {gZupic, "serve", "--host"},
      {gZupic, "serve", "--colour"},
  };
  for (const auto& arguments : cases) {
    int status = 0;
    runProcess(arguments, status);
    EXPECT_EQ(status, 2) << arguments.back();
  }
  int status = 0;
  const std::string help = runProcess({gZupic, "serve", "--help"}, status);
  EXPECT_EQ(status, 0);
  EXPECT_NE(help.find("--host 0.0.0.0"), std::string::npos);
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
