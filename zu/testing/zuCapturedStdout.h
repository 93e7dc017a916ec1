// capturedStdout: every byte an action writes to file descriptor 1, from any
// thread, so that tests check printed lines exactly.
//
//   const std::string out = zu::testing::capturedStdout([] { std::puts("hi"); });  // "hi\n"
//
// Descriptor 1 points at a temporary file while the action runs: threads that
// print after the action returns are not captured.
#pragma once

#include <functional>
#include <string>

namespace zu::testing {

// Flushes stdout, runs `action` with descriptor 1 redirected, flushes again,
// restores descriptor 1 and returns what was written.
std::string capturedStdout(const std::function<void()>& action);

}  // namespace zu::testing
