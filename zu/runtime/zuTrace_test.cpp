#include "zu/runtime/zuTrace.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "zu/core/zuFormatPos.h"
#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/runtime/zuTraceHandler.h"
#include "zu/runtime/zuTraceHandlerTLS.h"

namespace {

std::string str(const zuString& text) { return std::string(text, text.Length()); }

// Points file descriptor 1 at a temporary file until text() is called.
class CapturedStdout {
 public:
  CapturedStdout() : file_(std::tmpfile()) {
    std::fflush(stdout);
    saved_ = dup(1);
    dup2(fileno(file_), 1);
  }
  ~CapturedStdout() {
    text();
    std::fclose(file_);
  }
  std::string text() {
    if (saved_ >= 0) {
      std::fflush(stdout);
      dup2(saved_, 1);
      close(saved_);
      saved_ = -1;
    }
    std::string bytes;
    std::rewind(file_);
    for (int byte; (byte = std::fgetc(file_)) != EOF;) bytes.push_back(static_cast<char>(byte));
    return bytes;
  }

 private:
  std::FILE* file_;
  int saved_;
};

// A handler registered for the calling thread for the test's length.
struct CurrentHandler {
  zuTraceHandler handler;
  CurrentHandler() { zuTraceHandler::registerTraceHandler(&handler); }
};

std::string line(const char* format, const std::string& name, unsigned int id,
                 const std::string& text) {
  char buffer[512];
  std::snprintf(buffer, sizeof buffer, format, name.c_str(), id,
                zuThreadLocalStorage::getThreadId(), text.c_str());
  return buffer;
}

TEST(zuTraceHandlerTest, ActivationTextsSetLevels) {
  struct Case {
    const char* spec;
    const char* name;
    unsigned int level;  // the level it should have
  };
  const Case cases[] = {
      {"layout:2 render:0", "layout", 2},
      {"layout:2 render:0", "render", 0},
      {"a", "a", 0},
      {":3", "", 0},
      {"a:3x", "a", 0},
      {"a:99999999999", "a", 0},
      {"a:4294967295", "a", 4294967295u},
      {"a:-1", "a", 0},
      {"a:+1", "a", 0},
      {"a:1:2", "a", 0},
      {"a:007", "a", 7},
      {"\tx:1\ty:5\t", "y", 5},
      {"x:1\xE3\x80\x80y:4", "y", 4},      // U+3000 separates
      {"x:1\xC2\xA0y:6", "y", 6},          // so does U+00A0
      {"x:1\xE3\x80\x80y:4", "x", 1},
      {"a:1 a:3", "a", 3},                 // the last one wins
  };
  for (const Case& c : cases) {
    zuTraceHandler handler;
    handler.activate(zuString(c.spec));
    const zuString name(c.name);
    EXPECT_EQ(handler.isActive(name, 1), c.level >= 1 ? 1 : 0) << c.spec;
    EXPECT_EQ(handler.isActive(name, c.level), c.level != 0 ? 1 : 0) << c.spec;
    if (c.level != 0 && c.level != 4294967295u) {
      EXPECT_EQ(handler.isActive(name, c.level + 1), 0) << c.spec;
    }
  }
}

TEST(zuTraceHandlerTest, ActivateDeactivateAndTheCache) {
  zuTraceHandler handler;
  const zuString layout("layout"), render("render");
  handler.activate(layout, 2);
  struct Step {
    const char* what;
    std::function<void()> action;
    const zuString* name;
    unsigned int level;
    int expected;
  };
  const Step steps[] = {
      {"level 3 above", [] {}, &layout, 3, 0},
      {"level 1", [] {}, &layout, 1, 1},
      {"level 0", [] {}, &layout, 0, 1},
      {"unknown name caches 0", [] {}, &render, 1, 0},
      {"activation refreshes the cached name",
       [&] { handler.activate(render, 1); }, &render, 1, 1},
      {"deactivate refreshes", [&] { handler.deactivate(render); }, &render, 1, 0},
      {"deactivate another name", [&] { handler.deactivate(render); }, &layout, 2, 1},
      {"cached then deactivated", [&] { handler.deactivate(layout); }, &layout, 1, 0},
      {"zero level is inactive", [&] { handler.activate(layout, 0); }, &layout, 0, 0},
      {"reactivated", [&] { handler.activate(zuString("layout:5")); }, &layout, 5, 1},
  };
  for (const Step& step : steps) {
    step.action();
    EXPECT_EQ(handler.isActive(*step.name, step.level), step.expected) << step.what;
  }
}

TEST(zuTraceHandlerTest, PrintsPaddedLinesWithTheAmendLine) {
  static zuTrace shortTrace("tx", 7);
  static zuTrace longTrace("trace-with-the-longest-name", 8);
  CurrentHandler current;
  current.handler.activate(zuString("tx:2"));
  EXPECT_EQ(shortTrace.getEnabled(), 1);
  EXPECT_EQ(longTrace.getEnabled(), 0);
  static const auto amend = [](unsigned int& messageId, void* context) {
    ++*static_cast<int*>(context);
    messageId += 1000;
    return messageId % 2 == 0 ? zuString("amended") : zuString();
  };
  int calls = 0;

  CapturedStdout captured;
  shortTrace.trace(1, 42, zuString("hello"));
  shortTrace.trace(3, 43, zuString("too high: not printed"));
  longTrace.trace(1, 44, zuString("disabled: not printed"));
  zuFormatPos message(zuString("%1 and %2"));
  message << "p" << "q";
  shortTrace.trace(2, message);
  zuTraceHandler::setAmendMsgCallback(+amend, &calls);
  zuTrace::trace(zuString("tx"), 1, 12, zuString("by name"));
  zuTrace::trace(zuString("tx"), 1, 13, zuString("odd: no amend line"));
  zuTraceHandler::setAmendMsgCallback(nullptr, nullptr);
  const std::string out = captured.text();

  const std::string padded = "tx" + std::string(25, ' ');  // to the longest name
  const char* kLine = "%s trace: mid=%-3u tid=%-3u msg: %s\n";
  const std::string expected = line(kLine, padded, 42, "hello") + line(kLine, padded, 0, "p and q") +
                               line(kLine, padded, 12, "by name") +
                               line("%s   trace: mid=%-3u tid=%-3u msg: %s\n", "", 1012, "amended") +
                               line(kLine, padded, 13, "odd: no amend line");
  EXPECT_EQ(out, expected);
  EXPECT_EQ(calls, 2);
}

TEST(zuTraceHandlerTest, DumpAvailableListsKnownNamesSorted) {
  auto late = std::make_unique<zuTrace>("dump-b", 16984);
  auto early = std::make_unique<zuTrace>("dump-a", 16479);
  zuTraceHandler handler;
  EXPECT_EQ(str(handler.dumpAvailable(0)), "");
  handler.activate(zuString("nothing-registered:1"));
  early.reset();  // known names outlive their traces
  late.reset();
  const std::string names = str(handler.dumpAvailable(0));
  EXPECT_NE(names.find("dump-a\ndump-b"), std::string::npos) << names;
  EXPECT_NE(names.back(), '\n');
  const std::string described = str(handler.dumpAvailable(1));
  const std::string expected = "\tdump-a - " + str(zuString(static_cast<unsigned short>(16479))) +
                               "\n\tdump-b - " + str(zuString(static_cast<unsigned short>(16984)));
  EXPECT_NE(described.find(expected), std::string::npos) << described;
  EXPECT_GT(expected.size(), 30u);  // the catalogue texts are there
  // A trace made after the activation is unknown until a new name comes.
  zuTrace later("dump-c", 16479);
  handler.activate(zuString("nothing-registered:2"));
  EXPECT_EQ(str(handler.dumpAvailable(0)).find("dump-c"), std::string::npos);
  handler.activate(zuString("another:1"));
  EXPECT_NE(str(handler.dumpAvailable(0)).find("dump-c"), std::string::npos);
}

TEST(zuTraceTest, ActivationEnablesLiveAndLaterTracesOfTheName) {
  zuTrace first("enable-me", 1);
  zuTrace other("leave-me", 1);
  EXPECT_EQ(first.isEnabled(1), 0);
  zuTraceHandler handler;
  handler.activate(zuString("enable-me"), 0);  // level 0 still enables the flag
  EXPECT_EQ(first.getEnabled(), 1);
  EXPECT_EQ(other.getEnabled(), 0);
  zuTrace later("enable-me", 2);
  const zuTrace copy = other;
  EXPECT_EQ(later.getEnabled(), 1);
  EXPECT_EQ(copy.getEnabled(), 0);
  handler.deactivate(zuString("enable-me"));
  EXPECT_EQ(first.getEnabled(), 1);  // deactivating clears no flag
}

TEST(zuTraceTest, DefaultHandlersAreMadeOnlyByActivation) {
  zuTraceHandler::unregisterTraceHandler(0);
  zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::eTraceHandler);
  static zuTrace trace("default-handler", 1);
  trace.isEnabled(1);
  zuTrace::trace(zuString("default-handler"), 1, 1, zuString("nobody listens"));
  EXPECT_EQ(zuTrace::isEnabled(zuString("default-handler"), 1), 0);
  EXPECT_EQ(zuTraceHandlerTLS::find(0), nullptr);  // emitting made no holder

  trace.activate(3);
  zuTraceHandlerTLS* holder = zuTraceHandlerTLS::find(0);
  ASSERT_NE(holder, nullptr);
  ASSERT_NE(holder->getTraceHandler(), nullptr);
  EXPECT_EQ(trace.isEnabled(3), 1);
  EXPECT_EQ(zuTrace::isEnabled(zuString("default-handler"), 4), 0);
  trace.deactivate();
  EXPECT_EQ(trace.isEnabled(1), 0);

  {
    zuTraceHandler mine;
    zuTraceHandler::registerTraceHandler(&mine);  // the default one is deleted
    EXPECT_EQ(holder->getTraceHandler(), &mine);
    EXPECT_EQ(trace.isEnabled(1), 0);
  }
  EXPECT_EQ(holder->getTraceHandler(), nullptr);  // unregistered at destruction
  trace.activate(1);
  zuTraceHandler::unregisterTraceHandler(0);
  EXPECT_EQ(holder->getTraceHandler(), nullptr);
  zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::eTraceHandler);
}

}  // namespace
