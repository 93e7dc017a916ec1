#include "zu/runtime/zuTrace.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "zu/core/zuFormatPos.h"
#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/runtime/zuTraceHandler.h"
#include "zu/runtime/zuTraceHandlerTLS.h"
#include "zu/testing/zuCapturedStdout.h"
#include "zu/testing/zuTestText.h"

namespace {

using zu::testing::capturedStdout;
using zu::testing::str;

std::string line(const char* format, const std::string& name, unsigned int id,
                 const std::string& text) {
  char buffer[512];
  std::snprintf(buffer, sizeof buffer, format, name.c_str(), id,
                zuThreadLocalStorage::getThreadId(), text.c_str());
  return buffer;
}

TEST(zuTraceHandlerTest, ActivationTextsSetLevels) {
  const struct {
    const char* spec;
    const char* name;
    unsigned int level;  // the level the name should have
  } cases[] = {
      {"layout:2 render:0", "layout", 2},
      {"a", "a", 0},
      {":3", "", 0},  // empty name: ignored
      {"a:3x", "a", 0},
      {"a:99999999999", "a", 0},
      {"a:4294967295", "a", 4294967295u},
      {"a:-1", "a", 0},
      {"a:007", "a", 7},
      {"x:1\xE3\x80\x80y:4", "y", 4},  // U+3000
      {"a:1 a:3", "a", 3},             // the last wins
  };
  for (const auto& c : cases) {
    zuTraceHandler handler;
    handler.activate(zuString(c.spec));
    const zuString name(c.name);
    EXPECT_EQ(handler.isActive(name, 1), c.level >= 1 ? 1 : 0) << c.spec;
    EXPECT_EQ(handler.isActive(name, c.level), c.level != 0 ? 1 : 0) << c.spec;
    EXPECT_TRUE(c.level == 4294967295u || !handler.isActive(name, c.level + 1)) << c.spec;
  }
}

TEST(zuTraceHandlerTest, ActivateDeactivateAndTheCache) {
  zuTraceHandler handler;
  handler.activate(zuString("layout"), 2);
  const struct {
    char action;  // 'a' activate, 'd' deactivate, '-' nothing
    const char* name;
    unsigned int level;
    const char* asked;
    unsigned int askedLevel;
    int expected;
  } steps[] = {
      {'-', "", 0, "layout", 0, 1},       {'-', "", 0, "render", 1, 0},  // caches render: 0
      {'a', "render", 1, "render", 1, 1},  // activation refreshes the cache
      {'d', "render", 0, "render", 1, 0},  // so does deactivation
      {'d', "render", 0, "layout", 2, 1}, {'d', "layout", 0, "layout", 1, 0},
      {'a', "layout", 0, "layout", 0, 0},  // level 0 is inactive
      {'a', "layout", 5, "layout", 5, 1},
  };
  for (const auto& step : steps) {
    if (step.action == 'a') handler.activate(zuString(step.name), step.level);
    if (step.action == 'd') handler.deactivate(zuString(step.name));
    EXPECT_EQ(handler.isActive(zuString(step.asked), step.askedLevel), step.expected)
        << step.action << step.name << " " << step.asked << step.askedLevel;
  }
}

TEST(zuTraceHandlerTest, PrintsPaddedLinesWithTheAmendLine) {
  static zuTrace shortTrace("tx", 7);
  static zuTrace longTrace("trace-with-the-longest-name", 8);
  zuTraceHandler handler;
  zuTraceHandler::registerTraceHandler(&handler);
  handler.activate(zuString("tx:2"));
  static const auto amend = [](unsigned int& messageId, void* context) {
    ++*static_cast<int*>(context);
    messageId += 1000;
    return messageId % 2 == 0 ? zuString("amended") : zuString();
  };
  int calls = 0;
  const std::string out = capturedStdout([&calls] {
    shortTrace.trace(1, 42, zuString("hello"));
    shortTrace.trace(3, 43, zuString("too high: not printed"));
    zuFormatPos message(zuString("%1 and %2"), zuString("p"));
    message << "q";
    shortTrace.trace(2, message);
    zuTraceHandler::setAmendMsgCallback(+amend, &calls);
    zuTrace::trace(zuString("tx"), 1, 12, zuString("by name"));
    zuTrace::trace(zuString("tx"), 1, 13, zuString("odd: no amend line"));
    zuTraceHandler::setAmendMsgCallback(nullptr, nullptr);
  });
  const std::string padded = "tx" + std::string(25, ' ');  // to the longest name
  const char* kLine = "%s trace: mid=%-3u tid=%-3u msg: %s\n";
  const char* kAmendLine = "%s   trace: mid=%-3u tid=%-3u msg: %s\n";
  EXPECT_EQ(out, line(kLine, padded, 42, "hello") + line(kLine, padded, 0, "p and q") +
                     line(kLine, padded, 12, "by name") + line(kAmendLine, "", 1012, "amended") +
                     line(kLine, padded, 13, "odd: no amend line"));
  EXPECT_EQ(calls, 2);
}

TEST(zuTraceTest, ActivationEnablesTracesAndTeachesHandlersTheirNames) {
  auto late = std::make_unique<zuTrace>("dump-b", 16984);
  auto early = std::make_unique<zuTrace>("dump-a", 16479);
  const zuTrace other("leave-me", 1);
  zuTraceHandler handler;
  handler.activate(zuString("dump-a"), 0);  // level 0 still enables the flag
  EXPECT_EQ(early->getEnabled(), 1);
  EXPECT_EQ(late->getEnabled() + other.getEnabled(), 0);
  const zuTrace later("dump-a", 2), copy = other;
  EXPECT_EQ(later.getEnabled() * 10 + copy.getEnabled(), 10);
  handler.deactivate(zuString("dump-a"));
  EXPECT_EQ(early->getEnabled(), 1);  // deactivating clears no flag
  early.reset();                      // known names outlive their traces
  late.reset();
  const std::string names = str(handler.dumpAvailable(0));
  EXPECT_NE(names.find("dump-a\ndump-b\nleave-me"), std::string::npos) << names;
  EXPECT_NE(names.back(), '\n');
  const std::string expected = "\tdump-a - " + str(zuString(static_cast<unsigned short>(16479))) +
                               "\n\tdump-b - " + str(zuString(static_cast<unsigned short>(16984)));
  EXPECT_NE(str(handler.dumpAvailable(1)).find(expected), std::string::npos);
  // A trace made later is learnt only when a name new to the handler comes.
  handler.activate(zuString("leave-me:1"));
  const zuTrace newer("dump-c", 16479);
  handler.activate(zuString("leave-me:2"));
  EXPECT_EQ(str(handler.dumpAvailable(0)).find("dump-c"), std::string::npos);
  handler.activate(zuString("another:1"));
  EXPECT_NE(str(handler.dumpAvailable(0)).find("dump-c"), std::string::npos);
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
  EXPECT_EQ(trace.isEnabled(3), 1);

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
