// Running out of memory inside a picture operation is zuExMemory, never a
// silent "does not match": for every allocation a format or parse makes,
// on a fresh thread (so that caches, pools and memos are all made anew),
// that allocation is made to fail, and the call must either throw
// zuExMemory or still give the right answer. The library's handler is
// installed, as a client does to have every failed operator new raise
// zuExMemory; the test program is linked with --wrap=malloc so that the
// library's own malloc calls can fail too.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>
#include <thread>

#include "zu/core/zuException.h"
#include "zu/core/zuNewHandler.h"
#include "zu/picture/zuPicture.h"
#include "zu/testing/zuTestText.h"

namespace {

// Allocations left before the one that fails, on this thread; negative:
// none fails. `failed` records that the failure happened.
thread_local long tAllocationsLeft = -1;
thread_local bool tFailed = false;

bool failThisAllocation() {
  if (tAllocationsLeft < 0) return false;
  if (tAllocationsLeft-- > 0) return false;
  tFailed = true;
  return true;
}

}  // namespace

extern "C" void* __real_malloc(size_t size);
extern "C" void* __wrap_malloc(size_t size) {
  return failThisAllocation() ? nullptr : __real_malloc(size);
}

// A conforming operator new: a failure calls the new handler until it gives
// up. Its memory comes from malloc, so the matching deletes free it (a
// sanitizer checks that new and delete pair up).
void* operator new(size_t size) {
  for (;;) {
    if (!failThisAllocation()) {
      if (void* memory = __real_malloc(size == 0 ? 1 : size)) return memory;
    }
    const std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) throw std::bad_alloc();
    handler();
  }
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  try {
    return operator new(size);
  } catch (...) {
    return nullptr;
  }
}
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
#pragma GCC diagnostic pop

namespace {

enum class Outcome { kRight, kMemory, kWrong };

// One operation on a thread of its own, with allocation `failAt` failing.
template <class Operation>
Outcome runFailing(long failAt, bool& failed, Operation&& operation) {
  Outcome outcome = Outcome::kWrong;
  std::thread worker([&] {
    tAllocationsLeft = failAt;
    try {
      outcome = operation() ? Outcome::kRight : Outcome::kWrong;
    } catch (const zuExMemory&) {
      outcome = Outcome::kMemory;
    } catch (...) {
      outcome = Outcome::kWrong;
    }
    tAllocationsLeft = -1;
    failed = tFailed;
  });
  worker.join();
  return outcome;
}

TEST(zuPictureAllocationTest, EveryCategoryReportsRunningOutOfMemory) {
  struct Case {
    bool parse;
    const char* picture;
    const char* input;
    const char* expected;
  };
  // Inputs long enough that the engines' working buffers leave their inline
  // room and allocate too.
  const std::string longLiteral(250, 'x');
  const std::string longNumberPicture = "num{'" + longLiteral + "'z,zz9.99}";
  const std::string longNumberText = longLiteral + "1.234,50";
  const Case cases[] = {
      {false, "num{z,zz9.99}", "1234.5", "1.234,50"},
      {false, longNumberPicture.c_str(), "1234.5", longNumberText.c_str()},
      {true, "num{z,zzz,zzz,zz9.99}", "1.234.567.890,50", "1234567890.5"},
      {false, "text{99999999999999999999-AA}", "12345678901234567890AB", "12345678901234567890-AB"},
      {true, "text{99999999999999999999-AA}", "12345678901234567890-AB", "12345678901234567890AB"},
      {true, "num{z,zz9.99}", "1.234,50", "1234.5"},
      {false, "text{999-AA}", "123AB", "123-AB"},
      {true, "text{999-AA}", "123-AB", "123AB"},
      {false, "date{EEEE, D. MMMM YYYY}", "2024-03-05", "Dienstag, 5. M\xC3\xA4rz 2024"},
      {true, "date{D. MMMM YYYY}", "5. M\xC3\xA4rz 2024", "2024-03-05"},
      {false, "time{HH:MM:SS}", "13:45:07", "13:45:07"},
      {true, "time{HH:MM}", "13:45", "13:45:00"},
      {false, "date{YYYY-MM-DD}' 'time{HH:MM}", "2024-03-05T13:45:00", "2024-03-05 13:45"},
      {true, "date{YYYY-MM-DD}' 'time{HH:MM}", "2024-03-05 13:45", "2024-03-05T13:45:00"},
  };
  const zuNewHandler raiseMemory(ZuExMemoryHandler);
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.parse ? "parse " : "format ") + c.picture + " " + c.input);
    auto operation = [&] {
      int status = 0;
      const zuString out = c.parse ? zuPicture::parse(c.input, c.picture, "de_DE", &status)
                                   : zuPicture::format(c.input, c.picture, "de_DE", &status, 0);
      return status == 1 && zu::testing::str(out) == c.expected;
    };
    int memoryFailures = 0;
    long failAt = 0;
    for (;; ++failAt) {
      ASSERT_LT(failAt, 20000) << "the operation never finished without failing";
      bool failed = false;
      const Outcome outcome = runFailing(failAt, failed, operation);
      if (!failed) {
        EXPECT_EQ(outcome, Outcome::kRight) << "no allocation failed";
        break;
      }
      // A failure may be absorbed only where nothing depended on it.
      EXPECT_NE(outcome, Outcome::kWrong) << "allocation " << failAt << " failed silently";
      if (outcome == Outcome::kMemory) ++memoryFailures;
    }
    EXPECT_GT(memoryFailures, 0) << failAt << " allocations, none reported";
  }
}

}  // namespace
