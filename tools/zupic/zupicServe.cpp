// zupic serve: the playground page and its JSON API over HTTP.
//
// The server listens on loopback unless told otherwise, answers on a small
// pool of threads (each keeps the library's per-thread caches for its whole
// life), bounds every request (kMaxRequestBytes, kMaxValues, kTimeLimit and
// the HTTP layer's read and write timeouts) and stops cleanly on SIGINT or
// SIGTERM: a thread of its own waits for those signals, which every other
// thread blocks.
#include <httplib.h>
#include <pthread.h>
#include <sys/socket.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <thread>

#include "tools/zupic/zupicApi.h"
#include "tools/zupic/zupicCommands.h"
#include "tools/zupic/zupicPage.h"

namespace zupic {

namespace {

constexpr const char* kServeHelp =
    "usage: zupic serve [--port N] [--host ADDRESS]\n"
    "\n"
    "Serves the picture-clause playground: open the printed URL in a browser.\n"
    "The page and its JSON API (/api/format, /api/parse, /api/all-locales,\n"
    "/api/locales, /api/locale/L) are described in the guide to picture\n"
    "clauses, which the server shows at /guide.\n"
    "\n"
    "  --port N        the TCP port (default 8080; 0 takes a free port)\n"
    "  --host ADDRESS  the address to listen on (default 127.0.0.1)\n"
    "\n"
    "By default only programs on this machine can reach the server. Giving\n"
    "--host 0.0.0.0 (or another address) lets anyone who can reach that\n"
    "address use it: there is no login and no encryption, every request costs\n"
    "CPU time, and what users type travels in clear text. Expose it only on a\n"
    "network you trust.\n"
    "\n"
    "SIGINT (Ctrl-C) or SIGTERM stops the server.\n";

constexpr int kDefaultPort = 8080;
constexpr size_t kThreads = 8;
// A connection serves this many requests before it is closed, so that
// clients that keep their connections open take turns at the workers.
constexpr size_t kKeepAliveRequests = 20;
constexpr time_t kKeepAliveSeconds = 2;
constexpr time_t kIoTimeoutSeconds = 5;

constexpr const char* kJson = "application/json; charset=utf-8";
// The page fetches nothing but this server's API.
constexpr const char* kPagePolicy =
    "default-src 'none'; script-src 'unsafe-inline'; style-src 'unsafe-inline'; "
    "connect-src 'self'; img-src data:; base-uri 'none'; form-action 'self'";

void send(httplib::Response& response, const Answer& answer) {
  response.status = answer.status;
  response.set_content(answer.body, kJson);
}

// The methods a path answers, for 405's Allow header; empty for a path the
// server does not have.
std::string allowedMethods(const std::string& path) {
  if (path == "/api/format" || path == "/api/parse") return "GET, HEAD, POST";
  if (path == "/" || path == "/guide" || path == "/guide.md" || path == "/api/all-locales" ||
      path == "/api/locales" || path.rfind("/api/locale/", 0) == 0) {
    return "GET, HEAD";
  }
  return {};
}

void refuseMethod(const httplib::Request& request, httplib::Response& response) {
  const std::string allowed = allowedMethods(request.path);
  if (allowed.empty()) {
    send(response, api::error(404, "no such path: " + request.path));
    return;
  }
  response.set_header("Allow", allowed);
  send(response, api::error(405, request.method + " is not allowed here (" + allowed + ")"));
}

// The picture request of a GET: picture, locale and every value= parameter.
api::PictureRequest queryRequest(const httplib::Request& request) {
  api::PictureRequest query{
      request.get_param_value("picture"), request.get_param_value("locale"), {}};
  const size_t count = request.get_param_value_count("value");
  for (size_t i = 0; i < count && i <= api::kMaxValues; ++i) {
    query.values.push_back(request.get_param_value("value", i));
  }
  return query;
}

void pictureGet(Direction direction, const httplib::Request& request, httplib::Response& response) {
  send(response, api::runPicture(direction, queryRequest(request)));
}

void picturePost(Direction direction, const httplib::Request& request,
                 httplib::Response& response) {
  api::PictureRequest body;
  const Answer refused = api::readPictureBody(request.body, body);
  send(response, refused.status != 0 ? refused : api::runPicture(direction, body));
}

void allLocales(const httplib::Request& request, httplib::Response& response) {
  const std::string operation = request.get_param_value("operation");
  if (!operation.empty() && operation != "format" && operation != "parse") {
    send(response, api::error(400, "operation must be format or parse"));
    return;
  }
  const Direction direction = operation == "parse" ? Direction::kParse : Direction::kFormat;
  send(response, api::runAllLocales(direction, queryRequest(request)));
}

void routes(httplib::Server& server) {
  // The page shows the playground at / and renders the guide at /guide.
  server.Get("/|/guide", [](const httplib::Request&, httplib::Response& response) {
    response.set_header("Content-Security-Policy", kPagePolicy);
    response.set_content(page::kHtml, page::kHtmlSize, "text/html; charset=utf-8");
  });
  server.Get("/guide.md", [](const httplib::Request&, httplib::Response& response) {
    response.set_content(page::kGuide, page::kGuideSize, "text/markdown; charset=utf-8");
  });
  server.Get("/api/format", [](const httplib::Request& request, httplib::Response& response) {
    pictureGet(Direction::kFormat, request, response);
  });
  server.Get("/api/parse", [](const httplib::Request& request, httplib::Response& response) {
    pictureGet(Direction::kParse, request, response);
  });
  server.Post("/api/format", [](const httplib::Request& request, httplib::Response& response) {
    picturePost(Direction::kFormat, request, response);
  });
  server.Post("/api/parse", [](const httplib::Request& request, httplib::Response& response) {
    picturePost(Direction::kParse, request, response);
  });
  server.Get("/api/all-locales", allLocales);
  server.Get("/api/locales", [](const httplib::Request&, httplib::Response& response) {
    send(response, api::listLocales());
  });
  server.Get("/api/locale/(.*)", [](const httplib::Request& request, httplib::Response& response) {
    send(response, api::showLocale(request.matches[1]));
  });
  // Every other method and path: 405 where the path exists, else 404.
  server.Post(".*", refuseMethod);
  server.Put(".*", refuseMethod);
  server.Patch(".*", refuseMethod);
  server.Delete(".*", refuseMethod);
  server.Options(".*", refuseMethod);
}

void configure(httplib::Server& server) {
  server.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
  server.set_payload_max_length(api::kMaxRequestBytes);
  // A response goes out as headers and body in two writes; without this
  // the body waits for the client's delayed acknowledgement (40 ms) on a
  // kept-alive connection.
  server.set_tcp_nodelay(true);
  server.set_keep_alive_max_count(kKeepAliveRequests);
  server.set_keep_alive_timeout(kKeepAliveSeconds);
  server.set_read_timeout(kIoTimeoutSeconds);
  server.set_write_timeout(kIoTimeoutSeconds);
  server.set_default_headers(
      {{"Cache-Control", "no-store"}, {"X-Content-Type-Options", "nosniff"}});
  // A GET of an unknown path, and the statuses the HTTP layer sets itself
  // (400 for a malformed request, 413 for a body over the limit, 414 for a
  // URL over its limit), get a JSON body too.
  server.set_error_handler([](const httplib::Request& request, httplib::Response& response) {
    if (!response.body.empty()) return;
    const int status = response.status;
    const std::string message =
        status == 404 ? "no such path: " + request.path
        : status == 413
            ? "the request is larger than " + std::to_string(api::kMaxRequestBytes) + " bytes"
        : status == 414 ? "the URL is too long; send the values by POST"
        : status == 400 ? "the request is not well-formed HTTP"
                        : "HTTP status " + std::to_string(status);
    send(response, api::error(status, message));
  });
  server.set_exception_handler(
      [](const httplib::Request&, httplib::Response& response, std::exception_ptr) {
        send(response, api::error(500, "the server could not answer this request"));
      });
  routes(server);
}

// The HTTP layer listens with a backlog of 5 connections, so that a burst
// of clients (a page's parallel fetches, many scripts at once) sees refused
// handshakes and retries that cost seconds. Linux lets a listening socket
// be given a new backlog by calling listen again.
class PlaygroundServer : public httplib::Server {
 public:
  void widenBacklog() { ::listen(svr_sock_, SOMAXCONN); }
};

bool readPort(const std::string& text, int& port) {
  if (text.empty() || text.size() > 5 ||
      text.find_first_not_of("0123456789") != std::string::npos) {
    return false;
  }
  port = std::stoi(text);
  return port <= 65535;
}

int serveUsage(const char* message) {
  std::fprintf(stderr, "zupic serve: %s\n%s", message, kServeHelp);
  return kUsage;
}

}  // namespace

int serve(const std::vector<std::string>& arguments) {
  std::string host = "127.0.0.1";
  int port = kDefaultPort;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--help" || argument == "-h") {
      std::printf("%s", kServeHelp);
      return kOk;
    }
    const bool hasValue = i + 1 < arguments.size();
    if (argument == "--port") {
      if (!hasValue || !readPort(arguments[++i], port)) {
        return serveUsage("--port needs a number from 0 to 65535");
      }
    } else if (argument == "--host") {
      if (!hasValue || arguments[i + 1].empty()) return serveUsage("--host needs an address");
      host = arguments[++i];
    } else {
      return serveUsage(("unknown argument " + argument).c_str());
    }
  }

  // Blocked before any thread starts, so every thread inherits the mask and
  // only the waiter below receives the signals.
  sigset_t stopSignals;
  sigemptyset(&stopSignals);
  sigaddset(&stopSignals, SIGINT);
  sigaddset(&stopSignals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);

  PlaygroundServer server;
  configure(server);
  const int bound = port == 0 ? server.bind_to_any_port(host) : port;
  if (bound < 0 || (port != 0 && !server.bind_to_port(host, port))) {
    std::fprintf(stderr, "zupic serve: cannot listen on %s port %d\n", host.c_str(), port);
    return kNoMatch;
  }
  server.widenBacklog();
  const bool ipv6 = host.find(':') != std::string::npos;
  std::printf("zupic serve: http://%s%s%s:%d/ (Ctrl-C stops)\n", ipv6 ? "[" : "", host.c_str(),
              ipv6 ? "]" : "", bound);
  std::fflush(stdout);

  std::atomic<bool> listening{true};
  std::thread waiter([&] {
    int signal = 0;
    sigwait(&stopSignals, &signal);
    // stop() does nothing until the listening loop has started; repeat it
    // until the loop has ended.
    while (listening.load()) {
      server.stop();
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  });
  const bool stoppedCleanly = server.listen_after_bind();
  listening.store(false);
  pthread_kill(waiter.native_handle(), SIGTERM);  // wakes the waiter when no signal came
  waiter.join();
  std::printf("zupic serve: stopped\n");
  return stoppedCleanly ? kOk : kNoMatch;
}

}  // namespace zupic
