// What every value command of zupic shares: values from the command line or
// standard input, buffered output, and library errors shown to the user.
#include <cstdio>
#include <cstdlib>

#include "tools/zupic/zupicCommands.h"
#include "zu/core/zuExErrItem.h"
#include "zu/core/zuException.h"

namespace zupic {

namespace {

// Output is written in large blocks: piping millions of values through the
// tool must not cost a system call per line.
constexpr size_t kOutputBuffer = 1 << 20;

}  // namespace

bool forEachValue(const std::vector<std::string>& values,
                  const std::function<bool(const char*, size_t)>& run) {
  static char buffer[kOutputBuffer];
  std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
  bool allMatched = true;
  if (!values.empty()) {
    for (const std::string& value : values) allMatched &= run(value.c_str(), value.size());
  } else {
    char* line = nullptr;
    size_t capacity = 0;
    ssize_t length = 0;
    while ((length = getline(&line, &capacity, stdin)) >= 0) {
      while (length > 0 && (line[length - 1] == '\n' || line[length - 1] == '\r')) --length;
      allMatched &= run(line, static_cast<size_t>(length));
    }
    std::free(line);
  }
  std::fflush(stdout);
  return allMatched;
}

bool captureErrors(const std::function<void()>& run, unsigned& errorId, std::string& errorText) {
  try {
    run();
    return true;
  } catch (zuExFull& error) {
    error.Resolve();
    errorId = error.FirstResId();
    errorText = static_cast<const char*>(error[0].Text());
  } catch (zuException& error) {
    const zuExErrItem& item = error[0];
    errorId = item.ResId();
    errorText = static_cast<const char*>(item.Text());
  }
  return false;
}

bool reportErrors(const std::function<bool()>& run) {
  bool result = false;
  unsigned errorId = 0;
  std::string errorText;
  if (captureErrors([&] { result = run(); }, errorId, errorText)) return result;
  std::fprintf(stderr, "zupic: error %u: %s\n", errorId, errorText.c_str());
  return false;
}

void writeLine(const char* text, size_t length) {
  std::fwrite(text, 1, length, stdout);
  std::fputc('\n', stdout);
}

}  // namespace zupic
