// Dates, times and date-times are plain values: threads format and parse
// them at once, values cross threads, and the process-wide local display
// flag changes under their feet.
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "zu/core/zuPosixResourceLoader.h"
#include "zu/core/zuResourceLoader.h"
#include "zu/datetime/zuDateTime.h"
#include "zu/testing/ScopedTimeZone.h"
#include "zu/testing/zuTestText.h"

namespace {

using zu::testing::str;

TEST(zuDateTimeThreadedTest, FormatAndParseWhileTheLocalFlagToggles) {
  zu::testing::ScopedTimeZone berlin("Europe/Berlin");  // set before any thread starts
  const zuDateTime summer(2024, 7, 1, 10, 0, 0, 0);
  const zuDate made("5 mars 2024", zuDate::FR_D_MMM_YYYY, 0, "fr_FR");  // crosses threads
  std::atomic<bool> stop{false};
  std::atomic<int> wrong{0};
  std::thread toggler([&] {
    for (int i = 0; !stop.load(); ++i) zuDateTime::FormatAsLocal(i & 1);
  });
  std::vector<std::thread> workers;
  for (int worker = 0; worker < 4; ++worker) {
    workers.emplace_back([&, worker] {
      for (int i = 0; i < 1500; ++i) {
        const std::string shown = str(summer.Format(zuDate::ISO_EXTENDED, zuTime::HH_MM, 0));
        wrong += shown != "2024-07-01 10:00" && shown != "2024-07-01 12:00";
        wrong += str(summer.FormatAsLocal(zuDate::MMMM_D_YYYY, zuTime::HH_MM_MARKER, 1)) !=
                 "12:00 AM July 1, 2024";
        zuDate date(2024, 1, 1);
        date.Locale(worker % 2 == 0 ? "de_DE" : "ja");
        wrong += date.Parse(made.Format(zuDate::DD_MM_YYYY_DOT), zuDate::DD_MM_YYYY_DOT) != 1 ||
                 date != made || str(made.Format(zuDate::FR_D_MMMM_YYYY)) != "5 mars 2024";
        zuTime time(0, 0, 0, 0);
        wrong += time.Parse("2:30 pm") != 1 || time.Hour() != 14;
      }
    });
  }
  for (std::thread& worker : workers) worker.join();
  stop = true;
  toggler.join();
  zuDateTime::FormatAsLocal(0);
  EXPECT_EQ(wrong.load(), 0);
}

// Day-half markers a thread keeps follow a loader changed by another
// thread at the thread's very next call.
class EveningMarkers : public zuResourceLoader {
 public:
  int LoadResource(unsigned short id, zuString& text) override {
    if (id != 17245) return 0;
    text = "abends";
    return 1;
  }
};

TEST(zuDateTimeThreadedTest, KeptMarkersFollowALoaderChangedByAnotherThread) {
  const zuTime afternoon(14, 5, 0, 0);
  EveningMarkers evening;
  // Each side waits for the other's step: read, change, read, restore, read.
  std::promise<void> readSteps[2], changeSteps[2];
  std::vector<std::string> shown;
  std::thread reader([&] {
    for (int step = 0; step < 3; ++step) {
      if (step > 0) changeSteps[step - 1].get_future().wait();
      shown.push_back(str(afternoon.Format(zuTime::HH_MM_MARKER)));
      if (step < 2) readSteps[step].set_value();
    }
  });
  readSteps[0].get_future().wait();
  zuPosixResourceLoader::Override(&evening);
  changeSteps[0].set_value();
  readSteps[1].get_future().wait();
  zuPosixResourceLoader::Override(nullptr);
  changeSteps[1].set_value();
  reader.join();
  EXPECT_EQ(shown, (std::vector<std::string>{"02:05 PM", "02:05 abends", "02:05 PM"}));
}

}  // namespace
