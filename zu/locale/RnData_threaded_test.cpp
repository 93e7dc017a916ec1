// Run-time locale data belongs to the thread that registered it.
#include <gtest/gtest.h>

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
  std::string seen[2][3];
  auto worker = [&](int index, const char* january) {
    RnRunTimeData_s data;
    data.monthNames[RnData::JAN] = january;
    RnData::update("de_CH", &data);
    bothRegistered.arrive_and_wait();
    const zuString before = RnData("de_CH").getMonthName(RnData::JAN);
    seen[index][0] = str(before);
    if (index == 0) RnData::release("de_CH");
    firstReleased.arrive_and_wait();
    const zuString after = RnData("de_CH").getMonthName(RnData::JAN);
    seen[index][1] = str(after);
    seen[index][2] = RnData::get("de_CH") != nullptr ? "registered" : "none";
  };
  std::thread first(worker, 0, "Eins");
  std::thread second(worker, 1, "Zwei");
  first.join();
  second.join();
  EXPECT_EQ(seen[0][0], "Eins");
  EXPECT_EQ(seen[1][0], "Zwei");
  EXPECT_EQ(seen[0][1], "Januar");
  EXPECT_EQ(seen[1][1], "Zwei");
  EXPECT_EQ(seen[0][2], "none");
  EXPECT_EQ(seen[1][2], "registered");
  EXPECT_EQ(RnData::get("de_CH"), nullptr);
}

}  // namespace
