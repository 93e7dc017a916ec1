#include "zu/core/zuPosixResourceLoader.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "zu/core/internal/zuCatalogueRegistry.h"
#include "zu/core/internal/zuMessageLookup.h"
#include "zu/core/internal/zuResourceLoaderState.h"
#include "zu/core/zuExErrItem.h"
#include "zu/core/zuException.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuFormatPos.h"
#include "zu/core/zuThreadSafeString.h"
#include "zu/testing/zuCatalogueTestFiles.h"

namespace {

using zu::testing::zuLocaleEnvironment;
using zu::testing::zuScratchFolder;

constexpr unsigned short kProbe = 60000;

std::string message(unsigned short id) {
  zuString text("(unchanged)");
  zuPosixResourceLoader::Instance().LoadResource(id, text);
  return static_cast<const char*>(text);
}

std::string textIn(zuModule module, unsigned short id) {
  return module != nullptr && module->find(id) != nullptr ? *module->find(id) : "(none)";
}

class zuPosixResourceLoaderTest : public ::testing::Test {
 protected:
  void SetUp() override { zu::internal::resetResourceLoaderForTesting(); }
  void TearDown() override { zu::internal::resetResourceLoaderForTesting(); }
};

TEST_F(zuPosixResourceLoaderTest, CandidatesFollowTheUserLocaleThenEnThenIntl) {
  struct Case {
    const char *lcAll, *lang;
    std::vector<const char*> files;
    const char* expected;
  };
  const std::vector<Case> cases = {
      {"fr_CA.UTF-8", nullptr, {"Intl"}, "Intl"},
      {"", "de_DE.UTF-8@euro", {"de", "En"}, "de"},
      {"C", "de_DE.UTF-8", {"de", "En"}, "En"},
  };
  for (const Case& c : cases) {
    const zuLocaleEnvironment locale(c.lcAll, c.lang);
    const zuScratchFolder folder;
    for (const char* suffix : c.files) {
      folder.write(std::string("Resources") + suffix + ".msg", "60000\t" + std::string(suffix));
    }
    const zuModule loaded = zuLoadResourceDll(nullptr, (folder.path() + "/Resources").c_str());
    EXPECT_EQ(textIn(loaded, kProbe), c.expected) << (c.lcAll ? c.lcAll : "-") << " " << c.lang;
  }
}

TEST_F(zuPosixResourceLoaderTest, NextToAModuleThenTheInstalledFolderEachNameOnce) {
  const zuLocaleEnvironment locale("C", nullptr);
  const zuScratchFolder folder;
  const std::string clientFile = folder.write("lib/ClientEn.msg", "60000\tclient");
  const std::string installed = folder.write("share/zuutility/TextsEn.msg", "60000\tinstalled");
  const zuModule client = zuLoadResourceDll(nullptr, (folder.path() + "/lib/Client").c_str());
  ASSERT_NE(client, nullptr);
  const zuModule texts = zuLoadResourceDll(client, "Texts");
  EXPECT_EQ(textIn(texts, kProbe), "installed");

  // Loaded names are not read again, even once the files are gone.
  std::remove(clientFile.c_str());
  std::remove(installed.c_str());
  EXPECT_EQ(zuLoadResourceDllW(client, u"Texts"), texts);
  EXPECT_EQ(zuLoadResourceDll(client, "Missing"), nullptr);
  EXPECT_EQ(zuLoadResourceDll(client, std::string(300, 'x').c_str()), nullptr);
}

class Override : public zuResourceLoader {
 public:
  int LoadResource(unsigned short id, zuString& text) override {
    if (id != 61001) return 0;
    text = "override";
    return 1;
  }
};

TEST_F(zuPosixResourceLoaderTest, LookupOrderOverrideClientResourceSecondaryExecutable) {
  const zuLocaleEnvironment locale("C", nullptr);
  const zuScratchFolder folder;
  // Each source knows the ids from its rank on, so each id shows which
  // source answers first.
  folder.write("OrderClientEn.msg", "61001\tclient\n61002\tclient\n");
  folder.write("OrderResourcesEn.msg", "61001\tresource\n61002\tresource\n61003\tresource\n");
  folder.write("OrderSecondEn.msg",
               "61001\tsecondary\n61002\tsecondary\n61003\tsecondary\n"
               "61004\tsecondary\n");
  const std::string executable = zu::internal::executablePath() + ".msg";
  {
    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(executable.c_str(), "w"), &std::fclose);
    ASSERT_TRUE(file);
    std::fputs("61001\texecutable\n61004\texecutable\n61005\texecutable\n", file.get());
  }
  zu::internal::resetResourceLoaderForTesting("OrderResources");
  zuSetDLLHandle(zuLoadResourceDll(nullptr, (folder.path() + "/OrderClient").c_str()));
  const zuModule secondary = zuLoadResourceDll(nullptr, (folder.path() + "/OrderSecond").c_str());
  zuPosixResourceLoader::AddSecondaryHandle(secondary);
  Override override;
  zuPosixResourceLoader::Override(&override);

  const char* const answers[] = {"override",  "client",     "resource",
                                 "secondary", "executable", "(unchanged)"};
  for (unsigned short id = 61001; id <= 61006; ++id) EXPECT_EQ(message(id), answers[id - 61001]);
  zuPosixResourceLoader::AddSecondaryHandle(secondary);
  zuPosixResourceLoader::RemoveSecondaryHandle(secondary);  // every entry
  EXPECT_EQ(message(61004), "executable");
  zuPosixResourceLoader::UseResourceDLL(0);
  EXPECT_EQ(message(61003), "(unchanged)");
  std::remove(executable.c_str());
}

// Texts may be kept while the generation stays; every change raises it,
// and it is 0 (nothing may be kept) while an override is set or the
// catalogue is still to load.
TEST_F(zuPosixResourceLoaderTest, EveryChangeRaisesTheGeneration) {
  EXPECT_EQ(zu::internal::messageGeneration(), 0u);  // the catalogue is still to load
  message(kProbe);
  uint64_t seen = 0;
  Override override;
  const zuModule module = zuLoadResourceDll(nullptr, "NoSuchCatalogue");
  const std::function<void()> changes[] = {
      [] {},
      [] { zuSetDLLHandle(nullptr); },
      [] { zuPosixResourceLoader::SetUtilityHandle(nullptr); },
      [] { zuPosixResourceLoader::UseResourceDLL(1); },
      [&] { zuPosixResourceLoader::AddSecondaryHandle(module); },
      [&] { zuPosixResourceLoader::RemoveSecondaryHandle(module); },
      [&] { zuPosixResourceLoader::Override(&override); },  // 0 while set
      [] { zuPosixResourceLoader::Override(nullptr); },
      [] { zu::internal::resetResourceLoaderForTesting(); },  // 0 until loaded
  };
  for (std::size_t index = 0; index < std::size(changes); ++index) {
    changes[index]();
    const uint64_t now = zu::internal::messageGeneration();
    EXPECT_EQ(now == 0, index == 6 || index == 8) << index;
    EXPECT_NE(now, seen) << index;
    if (now != 0) seen = now;
  }
}

// The catalogue follows the user's language; each way of asking for a
// message by id resolves it there.
TEST_F(zuPosixResourceLoaderTest, MessagesResolveToTheUsersLanguage) {
  const std::string english = "An argument is not valid for this operation.";
  {
    const zuLocaleEnvironment locale("fr_FR.UTF-8", nullptr);
    EXPECT_EQ(std::string(zuString(static_cast<unsigned short>(16479))),
              "Un argument n'est pas valide pour cette op\xC3\xA9ration.");
  }
  const zuLocaleEnvironment locale("C", nullptr);
  zu::internal::resetResourceLoaderForTesting();
  EXPECT_EQ(std::string(zuString(static_cast<unsigned short>(16479))), english);
  EXPECT_EQ(std::string(*std::unique_ptr<zuString>(zuExFull(16479, 0).String())), english + "\n");
  EXPECT_TRUE(zuString(english.c_str()).MatchesResource(16479));
  EXPECT_FALSE(zuString("").MatchesResource(kProbe));
  EXPECT_EQ(std::string(zuThreadSafeString(static_cast<unsigned short>(16479))), english);
  EXPECT_EQ(std::string(zuFormat(16480) << "zuPicture::formatCompound"),
            "Compound pictures are not supported (zuPicture::formatCompound).");
  EXPECT_EQ(std::string(zuFormatPos(17107) << 42), "Unknown unit of measurement: 42.");
  EXPECT_FALSE(zuExMemory()[0].Text().IsEmpty());
}

}  // namespace
