#include "zu/core/zuStringLookup.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zu/core/zuException.h"
#include "zu/core/zuLiteral.h"

namespace {

TEST(zuStringLookupTest, AddsBeyondCapacityAndFindsByText) {
  std::vector<zuString> names;
  for (int i = 0; i < 40; ++i) names.emplace_back(("name" + std::to_string(i)).c_str());
  zuStringLookup lookup(3);
  for (size_t i = 0; i < names.size(); ++i) EXPECT_EQ(lookup.add(&names[i]), i);
  EXPECT_EQ(lookup[40], nullptr);

  const struct {
    const char* text;
    int found;
    unsigned int index;
  } cases[] = {{"name0", 1, 0}, {"name39", 1, 39}, {"name", 0, 40}, {"", 0, 40}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    unsigned int index = 99;
    EXPECT_EQ(lookup.find(c.text, index), c.found);
    EXPECT_EQ(index, c.index);
    EXPECT_EQ(lookup.findByName(c.text), c.found ? &names[c.index] : nullptr);
  }
  unsigned int index = 99;
  EXPECT_TRUE(lookup.find(nullptr, index) == 0 && lookup.findByName(zuString()) == nullptr);
}

TEST(zuStringLookupTest, ResolvedNamesAreFoundByAddress) {
  static const zuLiteral kLeft("left");
  const zuString right("right");
  zuStringLookup lookup(0);
  lookup.add(&kLeft);
  lookup.add(&right);

  zuString typed(std::string("right").c_str());
  unsigned int index = 99;
  EXPECT_TRUE(lookup.findByAddress(typed, index) == 0 && index == 2);
  EXPECT_EQ(lookup.resolveName(typed), 1);
  EXPECT_TRUE(typed.SharesImpl(right));
  EXPECT_TRUE(lookup.findByAddress(typed, index) == 1 && index == 1);

  zuString literalName("left");
  EXPECT_EQ(lookup.resolveName(literalName), 1);
  EXPECT_EQ(lookup.findByAddress(literalName, index), 1);

  zuString unknown("up");
  const char* before = unknown;
  EXPECT_EQ(lookup.resolveName(unknown), 0);
  EXPECT_EQ(static_cast<const char*>(unknown), before);
  zuString nullName;
  EXPECT_EQ(lookup.resolveName(nullName), 0);

  EXPECT_THROW(lookup.add(nullptr), zuExFull);
  EXPECT_EQ(lookup.size(), 2u);
}

}  // namespace
