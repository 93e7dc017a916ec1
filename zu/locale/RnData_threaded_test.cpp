// Run-time locale data belongs to the thread that registered it.
#include <gtest/gtest.h>

#include <array>
#include <barrier>
#include <string>
#include <thread>

#include "zu/locale/RnData.h"
#include "zu/testing/zuTestText.h"

using zu::testing::str;

namespace {

TEST(RnDataThreadedTest, RunTimeDataIsPerThread) {
  std::barrier bothRegistered(2);
  std::barrier firstReleased(2);
  std::array<std::string, 3> seen[2];  // before, after the release, still registered
  auto worker = [&](int index, const char* january) {
    RnRunTimeData_s data;
    data.monthNames[RnData::JAN] = january;
    RnData::update("de_CH", &data);
    bothRegistered.arrive_and_wait();
    seen[index][0] = str(RnData("de_CH").getMonthName(RnData::JAN));
    if (index == 0) RnData::release("de_CH");
    firstReleased.arrive_and_wait();
    seen[index][1] = str(RnData("de_CH").getMonthName(RnData::JAN));
    seen[index][2] = RnData::get("de_CH") != nullptr ? "registered" : "none";
  };
  std::thread first(worker, 0, "Eins");
  std::thread second(worker, 1, "Zwei");
  first.join();
  second.join();
  EXPECT_EQ(seen[0], (std::array<std::string, 3>{"Eins", "Januar", "none"}));
  EXPECT_EQ(seen[1], (std::array<std::string, 3>{"Zwei", "Zwei", "registered"}));
  EXPECT_EQ(RnData::get("de_CH"), nullptr);
}

}  // namespace
