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

// A child process running `arguments` (a path and its arguments), its
// standard output read through line() and rest(); standard error is
// dropped. Killed at destruction if it still runs.
class Process {
 public:
  explicit Process(const std::vector<std::string>& arguments) {
    int out[2];
    if (pipe(out) != 0) return;
    pid_ = fork();
    if (pid_ == 0) {
      dup2(out[1], STDOUT_FILENO);
      dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
      close(out[0]);
      close(out[1]);
      std::vector<char*> argv;
      for (const std::string& word : arguments) argv.push_back(const_cast<char*>(word.c_str()));
      argv.push_back(nullptr);
      execv(argv[0], argv.data());
      _exit(127);
    }
    close(out[1]);
    output_ = fdopen(out[0], "r");
  }
  ~Process() {
    if (pid_ > 0 && !ended_) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
    if (output_ != nullptr) std::fclose(output_);
  }

  // The next line of standard output ("" at its end), or all the rest.
  std::string line() {
    char buffer[256] = {};
    return output_ != nullptr && std::fgets(buffer, sizeof buffer, output_) ? buffer : "";
  }
  std::string rest() {
    std::string text, more;
    while (!(more = line()).empty()) text += more;
    return text;
  }

  // Sends `signal` (none for 0) and waits up to five seconds for the exit;
  // the exit status, or -1 when the process did not end in time or did not
  // exit normally.
  int wait(int signal = 0) {
    if (signal != 0) kill(pid_, signal);
    for (int i = 0; i < 500; ++i) {
      int raw = 0;
      if (waitpid(pid_, &raw, WNOHANG) == pid_) {
        ended_ = true;
        return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return -1;
  }

 private:
  pid_t pid_ = -1;
  FILE* output_ = nullptr;
  bool ended_ = false;
};

// Runs `arguments` to the end: what it wrote to standard output, with its
// exit status in `status`.
std::string runProcess(const std::vector<std::string>& arguments, int& status) {
  Process process(arguments);
  const std::string text = process.rest();
  status = process.wait();
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

// One `zupic serve --port 0` process and the port its first line names.
struct ServerProcess : Process {
  ServerProcess() : Process({gZupic, "serve", "--port", "0"}), banner(line()) {
    const size_t colon = banner.find(':', banner.find("//"));
    if (colon != std::string::npos) port = std::atoi(banner.c_str() + colon + 1);
  }
  std::string banner;
  int port = 0;
};

class ServeTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { server_ = std::make_unique<ServerProcess>(); }
  static void TearDownTestSuite() { server_.reset(); }

  void SetUp() override { ASSERT_GT(server_->port, 0) << "banner: " << server_->banner; }

  static httplib::Client client() {
    httplib::Client client("127.0.0.1", server_->port);
    client.set_read_timeout(10);
    return client;
  }

  // GETs `path`, checks the status and returns the JSON answer (discarded
  // when it is none).
  static Json getJson(const std::string& path, int status = 200) {
    const auto got = client().Get(path);
    if (!got) ADD_FAILURE() << "no answer to " << path;
    if (!got) return Json(Json::value_t::discarded);
    EXPECT_EQ(got->status, status) << path;
    return Json::parse(got->body, nullptr, false);
  }

  static std::string query(const std::string& picture, const std::string& value,
                           const std::string& locale) {
    return "?picture=" + httplib::detail::encode_query_param(picture) +
           "&value=" + httplib::detail::encode_query_param(value) +
           "&locale=" + httplib::detail::encode_query_param(locale);
  }

  static inline std::unique_ptr<ServerProcess> server_;
};

struct PictureCase {
  const char *operation, *picture, *locale, *value;
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
  Json compound = getJson("/api/format" + query("num{9} text{X}", "5", "en_US"))["results"][0];
  EXPECT_EQ(compound["matched"], false);
  EXPECT_EQ(compound["error"]["id"], 16480);
  EXPECT_NE(compound["error"]["message"].get<std::string>().find("Compound pictures"),
            std::string::npos);
  Json unknown = getJson("/api/format" + query("num{z,zz9.99}", "1234.5", "xx_YY"));
  EXPECT_EQ(unknown["locale"], "en_US");
  EXPECT_EQ(unknown["results"][0]["text"], "1,234.50");
  EXPECT_NE(unknown["notice"].get<std::string>().find("xx_YY"), std::string::npos);
  Json spelled = getJson("/api/format" + query("num{z,zz9.99}", "1234.5", "de-ch"));
  EXPECT_EQ(spelled["locale"], "de_CH");
  EXPECT_FALSE(spelled.contains("notice"));
}

TEST_F(ServeTest, LocalesMatchTheCommandLine) {
  int status = 0;
  const std::string listed = runProcess({gZupic, "locales"}, status);
  const Json list = getJson("/api/locales")["locales"];
  EXPECT_EQ(list.size(), static_cast<size_t>(std::count(listed.begin(), listed.end(), '\n')));
  EXPECT_GT(list.size(), 180u);

  Json view = getJson("/api/locale/fr_FR");
  EXPECT_EQ(view["name"], "fr_FR");
  const std::string shown = runProcess({gZupic, "locale", "fr_FR"}, status);
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
  struct Case {  // sent by GET without a body, else by POST
    std::string path;
    std::string body;
    int status;
  };
  std::string manyValues = R"({"picture":"num{9}","values":[)";
  for (int i = 0; i < 10001; ++i) manyValues += i == 0 ? "\"1\"" : ",\"1\"";
  manyValues += "]}";
  const std::string huge = R"({"picture":"num{9}","values":[")" + std::string(70000, '1') + "\"]}";
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
  httplib::Client http = client();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.path.substr(0, 80));
    httplib::Result got =
        c.body.empty() ? http.Get(c.path) : http.Post(c.path, c.body, "application/json");
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
  getJson("/api/locales");  // the server is still there
}

TEST_F(ServeTest, SixtyFourClientsGetEveryAnswerRight) {
  constexpr int kClients = 64;
  constexpr int kRequests = 200;
  std::vector<std::pair<std::string, std::string>> expected;  // path, text
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
    ServerProcess server;
    ASSERT_GT(server.port, 0) << server.banner;
    EXPECT_NE(server.banner.find("http://127.0.0.1:"), std::string::npos);
    const auto answer = httplib::Client("127.0.0.1", server.port).Get("/api/locales");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(server.wait(signal), 0);
    EXPECT_EQ(server.rest(), "zupic serve: stopped\n");
  }
}

TEST(ServeLifeTest, UsageErrors) {
  const std::vector<std::string> commands[] = {{gZupic, "serve", "--port"},
                                               {gZupic, "serve", "--port", "65536"},
                                               {gZupic, "serve", "--colour"}};
  for (const std::vector<std::string>& command : commands) {
    int status = 0;
    runProcess(command, status);
    EXPECT_EQ(status, 2) << command.back();
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
