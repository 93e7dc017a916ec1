#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "zu/core/zuPosixResourceLoader.h"
#include "zu/testing/zuCatalogueTestFiles.h"

namespace {

// Each thread registers its own secondary catalogue; while all of them are
// registered at once, every thread must still see only its own text, and the
// starting thread none.
TEST(zuResourceLoaderThreadsTest, SecondaryCataloguesBelongToTheirThread) {
  constexpr int kThreads = 4;
  constexpr unsigned short kId = 62000;
  const zu::testing::zuLocaleEnvironment locale("C", nullptr);
  const zu::testing::zuScratchFolder folder;
  for (int t = 0; t < kThreads; ++t) {
    folder.write("Thread" + std::to_string(t) + "En.msg", "62000\tthread " + std::to_string(t));
  }
  zuString probe;
  probe.LoadResource(kId);  // the resource catalogue loads before threads ask

  std::atomic<int> registered{0};
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      const std::string base = folder.path() + "/Thread" + std::to_string(t);
      zuPosixResourceLoader::AddSecondaryHandle(zuLoadResourceDll(nullptr, base.c_str()));
      ++registered;
      while (registered.load() < kThreads) std::this_thread::yield();
      for (int round = 0; round < 100; ++round) {
        zuString text;
        if (!text.LoadResource(kId) || std::string(text) != "thread " + std::to_string(t)) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong.load(), 0);
  zuString text("none");
  EXPECT_EQ(text.LoadResource(kId), 0);
}

}  // namespace
