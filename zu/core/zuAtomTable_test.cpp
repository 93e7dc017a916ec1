#include "zu/core/zuAtomTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <deque>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

#include "zu/core/internal/zuAtomHash.h"
#include "zu/core/zuAtomInitializer.h"
#include "zu/core/zuException.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace {

// The hash computed a second way: in 64-bit signed arithmetic reduced
// modulo 2^32 at every step.
uint32_t referenceHash(const std::string& text) {
  int64_t hash = 0;
  for (const char byte : text) {
    const int64_t signedByte = static_cast<unsigned char>(byte) > 127
                                   ? static_cast<int64_t>(static_cast<unsigned char>(byte)) - 256
                                   : static_cast<int64_t>(byte);
    hash = ((hash * 127 + signedByte) % 4294967296LL + 4294967296LL) % 4294967296LL;
  }
  return hash == 0 ? 1u : static_cast<uint32_t>(hash);
}

std::string uniqueText(const char* prefix) {
  static int counter = 0;
  return std::string(prefix) + "#" + std::to_string(++counter);
}

// Equal texts giving one atom and peeking making none: RandomLookupsAgreeWithTheTables.
TEST(zuAtomTableTest, AtomKeepsItsOwnCopyOfTheText) {
  std::string text = uniqueText("fontSize");
  const std::string original = text;
  zuAtomStore* atom = zuAtomTable::getAtom(text.c_str(), 0);
  EXPECT_EQ(zuAtomTable::getAtom(original.c_str(), zuThreadLocalStorage::getThreadId()), atom);
  text[0] = 'X';
  EXPECT_STREQ(atom->text, original.c_str());
  EXPECT_EQ(atom->length, original.size());
}

TEST(zuAtomTableTest, PredefinedAtomsAreInTheGlobalTable) {
  const struct {
    const char* text;
    zuAtomStore** atom;
  } cases[] = {{"", &aUT_EmptyString}, {"0", &aUT_Zero}, {"1", &aUT_One}, {"*", &aUT_Asterisk}};
  for (const auto& c : cases) EXPECT_EQ(zuAtomTable::getAtom(c.text, 0), *c.atom) << c.text;
  EXPECT_EQ(zuAtomTable::emptyString(), aUT_EmptyString);
}

// The boundaries of the hash; RandomLookupsAgreeWithTheTables compares it
// with referenceHash over thousands of texts.
TEST(zuAtomTableTest, HashTakesBytesAsSigned) {
  const struct {
    std::string text;
    uint32_t expected;
  } cases[] = {
      {"ab", 97 * 127 + 98},
      {"\xFF", 0xFFFFFFFFu},  // -1
      {"\x01\x81", 1},        // 127 - 127 = 0, which becomes 1
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    uint32_t length = 0;
    EXPECT_EQ(zu::internal::atomHash(c.text.c_str(), length), c.expected);
    EXPECT_EQ(length, c.text.size());
    EXPECT_EQ(zuAtomTable::getAtom(c.text.c_str(), 0)->hash, c.expected);
  }
}

TEST(zuAtomTableTest, EqualStaticAtomsAreRemappedToTheFirst) {
  zuAtomTable table;
  zuAtomStore firstRecord = {"shared"}, secondRecord = {"shared"}, otherRecord = {"other"};
  zuAtomStore *first = &firstRecord, *second = &secondRecord, *other = &otherRecord;
  zuAtomStore** const moduleA[] = {&first, nullptr};
  zuAtomStore** const moduleB[] = {&other, &second, nullptr};
  table.initializeAtoms(moduleA);
  table.initializeAtoms(moduleB);

  EXPECT_EQ(second, &firstRecord);
  EXPECT_EQ(other, &otherRecord);
  EXPECT_STREQ(secondRecord.text, zuAtomTable::kRemappedText);
  EXPECT_EQ(secondRecord.length, 0xFFFFFFFFu);
  EXPECT_EQ(secondRecord.hash, 0xFFFFFFFFu);

  // Entering an atom that is already there changes nothing.
  table.initializeAtom(first);
  EXPECT_EQ(first, &firstRecord);
  EXPECT_STREQ(firstRecord.text, "shared");
  EXPECT_EQ(table.atomCount(), 2u);
}

TEST(zuAtomTableTest, InitializerEntersModuleAtomsGlobally) {
  static zuAtomStore gRecord = {"zuAtomTableTest.moduleAtom"};
  static zuAtomStore* aModuleAtom = &gRecord;
  static zuAtomStore** const gAtoms[] = {&aModuleAtom, nullptr};
  zuAtomInitializer enter(gAtoms);

  EXPECT_EQ(zuAtomTable::getAtom("zuAtomTableTest.moduleAtom", 0), &gRecord);
}

// The atoms stay found across growth: RandomLookupsAgreeWithTheTables.
TEST(zuAtomTableTest, TableGrowsWhenTheThresholdIsReached) {
  zuAtomTable table;
  std::deque<std::string> texts;
  std::deque<zuAtomStore> records;
  for (unsigned int count = 1; count <= 3071; ++count) {
    texts.push_back("atom" + std::to_string(count));
    records.push_back(zuAtomStore{texts.back().c_str()});
    zuAtomStore* atom = &records.back();
    table.initializeAtom(atom);
    if (count >= 3070) {
      EXPECT_EQ(table.bucketCount(), count == 3070 ? 4096u : 8192u);
    }
  }
}

TEST(zuAtomTableTest, BadInputThrowsOrFindsNothing) {
  zuAtomTable table;
  zuAtomStore noText = {nullptr};
  zuAtomStore* withoutText = &noText;
  EXPECT_THROW(zuAtomTable::getAtom(nullptr, 0), zuExFull);
  EXPECT_THROW(table.initializeAtom(withoutText), zuExFull);
  EXPECT_EQ(zuAtomTable::peekAtom(nullptr, 0), nullptr);
  table.initializeAtoms(nullptr);
  EXPECT_EQ(table.atomCount(), 0u);
  EXPECT_EQ(table.dumpAtomTable(nullptr), 0);
  EXPECT_EQ(table.dumpAtomTable("/nonexistent-directory/atoms.txt"), 0);
}

// A header, then per atom its bucket, hash, length and escaped text.
TEST(zuAtomTableTest, DumpListsEveryAtomWithEscapes) {
  zuAtomTable table;
  zuAtomStore records[] = {{"a"}, {"tab\there\nfeed\\\x01"}};
  for (zuAtomStore& record : records) {
    zuAtomStore* atom = &record;
    table.initializeAtom(atom);
  }
  const std::string path = ::testing::TempDir() + "zuAtomTable_dump.txt";
  ASSERT_EQ(table.dumpAtomTable(path.c_str()), 1);
  std::stringstream contents;
  contents << std::ifstream(path, std::ios::binary).rdbuf();
  std::remove(path.c_str());
  const std::string dump = contents.str();
  EXPECT_EQ(dump.rfind("zuAtomTable\tbuckets=4096\tatoms=2\tthreshold=3071\n", 0), 0u) << dump;
  EXPECT_NE(dump.find("\t1\ta\n"), std::string::npos) << dump;
  EXPECT_NE(dump.find("\t15\ttab\\there\\nfeed\\\\\\x01\n"), std::string::npos) << dump;
  EXPECT_EQ(std::count(dump.begin(), dump.end(), '\n'), 3);
}

// The answer of the two tables themselves: the global one, then the
// calling thread's.
zuAtomStore* inTables(const std::string& text) {
  uint32_t length = 0;
  const uint32_t hash = zu::internal::atomHash(text.c_str(), length);
  if (zuAtomStore* global = zuGlobalAtomTable()->findInTable(text.c_str(), hash, length)) {
    return global;
  }
  const zuAtomTable* local = zuThreadLocalAtomTable(0, 0);
  return local != nullptr ? local->findInTable(text.c_str(), hash, length) : nullptr;
}

// A million random lookups agree with the tables and with a plain map of
// what this thread was given, each atom's hash with referenceHash, while global atoms come to
// shadow run-time ones and the thread's table is dropped now and then.
TEST(zuAtomTableTest, RandomLookupsAgreeWithTheTables) {
  std::mt19937 random(7);
  std::vector<std::string> texts;
  for (int i = 0; i < 4000; ++i) {  // past the first growth of the thread's table
    std::string text = uniqueText("r");
    for (size_t n = random() % 40; n > 0; --n) text += static_cast<char>(1 + random() % 255);
    texts.push_back(text);
  }
  static std::deque<zuAtomStore> globalRecords;  // the global table keeps them
  static std::deque<std::string> globalTexts;
  std::unordered_map<std::string, zuAtomStore*> given;
  int disagreements = 0, lookups = 0, shadowed = 0;
  for (int step = 0; step < 1000000; ++step) {
    const std::string& text = texts[random() % texts.size()];
    if (step % 50000 == 49999) {
      zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::eAtomTable);
      given.clear();
    } else if (step % 20000 == 19999 && given.count(text) != 0) {
      // A global atom with the text of one of this thread's.
      globalTexts.push_back(text);
      globalRecords.push_back(zuAtomStore{globalTexts.back().c_str()});
      zuAtomStore* record = &globalRecords.back();
      zuGlobalAtomTable()->initializeAtom(record);
      given[text] = record;
      ++shadowed;
    }
    const bool peek = random() % 4 == 0;
    zuAtomStore* before = inTables(text);
    zuAtomStore* atom =
        peek ? zuAtomTable::peekAtom(text.c_str(), 0) : zuAtomTable::getAtom(text.c_str(), 0);
    const auto known = given.find(text);
    const bool agrees = peek ? atom == before
                             : atom != nullptr && atom == inTables(text) &&
                                   (before == nullptr || atom == before) && text == atom->text &&
                                   atom->hash == referenceHash(text);
    if (!agrees || (known != given.end() && atom != known->second)) ++disagreements;
    if (atom != nullptr) given[text] = atom;
    ++lookups;
  }
  EXPECT_EQ(disagreements, 0);
  EXPECT_EQ(lookups, 1000000);
  EXPECT_GT(shadowed, 10);
}

}  // namespace
