#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "zu/locale/RnLocale.h"

namespace {

// What one thread sees of the name "my_LOC" after registering it (or not),
// as "registered|name|code set"; "none" when it does not resolve.
std::string registerAndLook(const char* base, const char* name) {
  if (base != nullptr) RnLocale::update(name, base);
  const RnLocale locale("my_LOC");
  if (locale.getHandle() == 0) return "none";
  return std::string(locale.getHandle() < 0 ? "registered|" : "map|") + locale.getWinName() + "|" +
         locale.getCharSet();
}

TEST(RnLocaleRegistryThreadedTest, EachThreadSeesOnlyItsOwnRegistrations) {
  std::string first, second, bystander;
  std::thread one([&] { first = registerAndLook("de_DE", "my_LOC"); });
  std::thread two([&] { second = registerAndLook("ja_JP", "my_loc.sjis"); });
  std::thread three([&] { bystander = registerAndLook(nullptr, nullptr); });
  one.join();
  two.join();
  three.join();
  EXPECT_EQ(first, "registered|German_Germany|iso88591");
  EXPECT_EQ(second, "registered|Japanese_Japan|sjis");
  EXPECT_EQ(bystander, "none");
  EXPECT_EQ(RnLocale::get("my_LOC"), 0u);
  EXPECT_FALSE(RnLocale("my_LOC").isValid());
}

}  // namespace
