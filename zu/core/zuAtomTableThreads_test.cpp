#include <gtest/gtest.h>

#include <latch>
#include <string>
#include <thread>

#include "zu/core/zuAtomTable.h"

namespace {

constexpr const char* kFreshText = "zuAtomTableThreadsTest.fresh";

struct ThreadAtoms {
  zuAtomStore* peekedFirst = nullptr;
  zuAtomStore* fresh = nullptr;
  zuAtomStore* one = nullptr;
};

void lookUp(ThreadAtoms& result) {
  // Enough atoms to make the thread's table grow.
  for (int i = 0; i < 5000; ++i) zuAtomTable::getAtom(("filler" + std::to_string(i)).c_str(), 0);
  result.peekedFirst = zuAtomTable::peekAtom(kFreshText, 0);
  result.fresh = zuAtomTable::getAtom(kFreshText, 0);
  result.one = zuAtomTable::getAtom("1", 0);
}

TEST(zuAtomTableThreadsTest, RunTimeAtomsArePerThreadAndGlobalOnesShared) {
  zuGlobalAtomTable();  // filled at start-up, before any thread runs
  ThreadAtoms first;
  ThreadAtoms second;
  std::latch firstMadeItsAtom(1);
  // Both threads stay alive until both compared, so that the second cannot
  // be handed the memory of the first one's released records.
  std::latch bothDone(2);
  std::thread firstThread([&] {
    lookUp(first);
    firstMadeItsAtom.count_down();
    bothDone.arrive_and_wait();
  });
  std::thread secondThread([&] {
    firstMadeItsAtom.wait();
    lookUp(second);
    bothDone.arrive_and_wait();
  });
  firstThread.join();
  secondThread.join();

  for (const ThreadAtoms* atoms : {&first, &second}) {
    EXPECT_EQ(atoms->peekedFirst, nullptr);
    EXPECT_EQ(atoms->one, aUT_One);
  }
  EXPECT_NE(first.fresh, second.fresh);
  EXPECT_EQ(zuAtomTable::peekAtom(kFreshText, 0), nullptr);
}

}  // namespace
