#include "zu/core/zuUtilityInit.h"

#include <gtest/gtest.h>

#include <string>

#include "zu/core/internal/zuResourceLoaderState.h"
#include "zu/core/internal/zuStartupState.h"
#include "zu/core/zuExErrItem.h"
#include "zu/core/zuExResourceFailure.h"
#include "zu/core/zuExVersionMismatch.h"
#include "zu/core/zuPosixResourceLoader.h"
#include "zu/core/zuVersionChecker.h"
#include "zu/testing/zuCatalogueTestFiles.h"

namespace {

class zuUtilityInitTest : public ::testing::Test {
 protected:
  void SetUp() override { Reset(); }
  void TearDown() override { Reset(); }
  static void Reset() {
    zu::internal::resetStartupForTesting();
    zu::internal::resetResourceLoaderForTesting();
    gbUtilityVersionTestMode = 0;
  }
};

TEST_F(zuUtilityInitTest, VersionsMatchUpToTheLastDot) {
  // Everything before the last dot must match: "3.6.19011" has "3.6" before it.
  struct Case {
    const char* version;
    int correct;
  } const cases[] = {
      {"3.6.19011.7", 1},   {"3.6.19012.0", 0}, {"3.6.1901.1", 0},
      {"3.6.19011.0.1", 0}, {"3.6.19011", 1},   {"3", 0},
  };
  for (const Case& c : cases)
    EXPECT_EQ(zuVersionChecker::IsCorrect(c.version), c.correct) << c.version;
  gbUtilityVersionTestMode = 1;
  EXPECT_STREQ(zuGetUtilityVersion(), "x.x.x.x");
}

TEST_F(zuUtilityInitTest, FirstMismatchIsRecordedThenThrownOnceInitialised) {
  const std::string longName(40, 'n');
  zuVersionChecker first("3.5.18000.0", longName.c_str());
  zuVersionChecker second("2.0.0.0", "second");
  zuVersionChecker fine("3.6.19011.4", "fine");
  zuUtilityInit init("3.6.19011.0", 0);  // records, does not throw

  const char *version = "unset", *component = "unset";
  EXPECT_EQ(init.CheckVersion(&version, &component), 0);
  EXPECT_STREQ(version, "3.5.18000.0");
  EXPECT_EQ(std::string(component), longName.substr(0, 32));
  try {
    zuVersionChecker late(nullptr, nullptr);
    ADD_FAILURE() << "a recorded mismatch must be thrown after initialisation";
  } catch (const zuExVersionMismatch& mismatch) {
    EXPECT_STREQ(mismatch.GetVersion(), "3.5.18000.0");
  }
  EXPECT_THROW(zuUtilityInit("3.6.19011.0", 1), zuExVersionMismatch);

  // Nothing recorded: nothing to report, and a mismatch after
  // initialisation throws at once.
  zu::internal::resetStartupForTesting();
  zuUtilityInit clean("3.6.19011.0", 1);
  EXPECT_EQ(clean.CheckVersion(&version, &component), 1);
  EXPECT_EQ(version, nullptr);
  EXPECT_THROW(zuVersionChecker("3.6.19012.0", "plugin"), zuExVersionMismatch);
  EXPECT_EQ(clean.CheckVersion(&version, &component), 0);
  EXPECT_STREQ(component, "plugin");
  zu::internal::resetStartupForTesting();
  EXPECT_THROW(zuUtilityInit("4.0.0.0", 1), zuExVersionMismatch);
}

TEST_F(zuUtilityInitTest, MissingCatalogueIsQuietBeforeInitialisationAndAnErrorAfter) {
  const zu::testing::zuLocaleEnvironment locale("fr_BE.UTF-8", nullptr);
  zu::internal::resetResourceLoaderForTesting("NoSuchCatalogue");
  zuString text("old");
  EXPECT_EQ(text.LoadResource(16479), 0);
  EXPECT_TRUE(text.IsEmpty());

  zuUtilityInit init("3.6.19011.0", 0);  // checkNow 0: the catalogue is not asked for
  zuString missing;
  EXPECT_EQ(init.CheckResources(missing), 0);
  EXPECT_EQ(std::string(missing), "NoSuchCataloguefr.msg");
  // The failure's text: zuException_test.
  EXPECT_THROW(zuString(static_cast<unsigned short>(16479)), zuExResourceFailure);
  EXPECT_THROW(zuUtilityInit("3.6.19011.0", 1), zuExResourceFailure);

  zu::internal::resetResourceLoaderForTesting();
  EXPECT_EQ(init.CheckResources(missing), 1);
}

}  // namespace
