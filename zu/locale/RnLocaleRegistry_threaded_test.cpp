#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "zu/locale/RnLocale.h"

namespace {

// What one thread sees of the name "my_LOC" after registering it (or not).
struct Seen {
  int handle = 0;
  std::string winName, codeSet;
};

Seen registerAndLook(const char* base, const char* name) {
  if (base != nullptr) {
    RnLocale::update(name, base);
  }
  const RnLocale locale("my_LOC");
  return {locale.getHandle(), locale.getWinName(), locale.getCharSet()};
}

TEST(RnLocaleRegistryThreadedTest, EachThreadSeesOnlyItsOwnRegistrations) {
  Seen first;
  Seen second;
  Seen bystander;
  std::thread one([&] { first = registerAndLook("de_DE", "my_LOC"); });
  std::thread two([&] { second = registerAndLook("ja_JP", "my_loc.sjis"); });
  std::thread three([&] { bystander = registerAndLook(nullptr, nullptr); });
  one.join();
  two.join();
  three.join();

  EXPECT_LT(first.handle, 0);
  EXPECT_EQ(first.winName, "German_Germany");
  EXPECT_EQ(first.codeSet, "iso88591");
  EXPECT_LT(second.handle, 0);
  EXPECT_EQ(second.winName, "Japanese_Japan");
  EXPECT_EQ(second.codeSet, "sjis");
  EXPECT_EQ(bystander.handle, 0);
  EXPECT_EQ(RnLocale::get("my_LOC"), 0u);
  EXPECT_FALSE(RnLocale("my_LOC").isValid());
}

}  // namespace
