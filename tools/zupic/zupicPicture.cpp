// zupic format / zupic parse: values through a picture clause, one a line.
#include <cstdio>
#include <cstdlib>

#include "tools/zupic/zupicCommands.h"
#include "zu/core/zuExErrItem.h"
#include "zu/core/zuException.h"
#include "zu/picture/zuPicture.h"

namespace zupic {

namespace {

// Output is written in large blocks: piping millions of values through the
// tool must not cost a system call per line.
constexpr size_t kOutputBuffer = 1 << 20;

class PictureRunner {
 public:
  PictureRunner(Direction direction, const std::string& picture, const std::string& locale)
      : applier_(direction, picture, locale) {}

  // Writes the result of one value; false when it did not match.
  bool run(const char* value, size_t length) {
    const Outcome outcome = applier_.apply(value, length);
    if (outcome.matched) {
      writeLine(outcome.text, outcome.text.Length());
      return true;
    }
    if (outcome.errorId != 0) {
      std::fprintf(stderr, "zupic: error %u: %s\n", outcome.errorId, outcome.errorText.c_str());
    } else {
      std::fprintf(stderr, "zupic: \"%.*s\" does not match the picture\n", static_cast<int>(length),
                   value);
    }
    writeLine("", 0);
    return false;
  }

 private:
  static void writeLine(const char* text, size_t length) {
    std::fwrite(text, 1, length, stdout);
    std::fputc('\n', stdout);
  }

  PictureApplier applier_;
};

}  // namespace

PictureApplier::PictureApplier(Direction direction, const std::string& picture,
                               const std::string& locale)
    : direction_(direction),
      picture_(picture.c_str(), static_cast<unsigned int>(picture.size())),
      locale_(locale.c_str()) {}

Outcome PictureApplier::apply(const char* value, size_t length) const {
  const zuString text(value, static_cast<unsigned int>(length));
  Outcome outcome;
  int status = 1;  // stays 1 in the early exits, which return the value itself
  try {
    outcome.text = direction_ == Direction::kFormat
                       ? zuPicture::format(text, picture_, locale_, &status, 0)
                       : zuPicture::parse(text, picture_, locale_, &status);
    outcome.matched = status != 0;
  } catch (zuExFull& error) {
    error.Resolve();
    outcome.errorId = error.FirstResId();
    outcome.errorText = static_cast<const char*>(error[0].Text());
  } catch (zuException& error) {
    const zuExErrItem& item = error[0];
    outcome.errorId = item.ResId();
    outcome.errorText = static_cast<const char*>(item.Text());
  }
  if (!outcome.matched) outcome.text = zuString::EmptyString();
  return outcome;
}

bool forEachValue(const std::vector<std::string>& values,
                  const std::function<bool(const char* value, size_t length)>& run) {
  bool allTrue = true;
  if (!values.empty()) {
    for (const std::string& value : values) allTrue &= run(value.c_str(), value.size());
    return allTrue;
  }
  char* line = nullptr;
  size_t capacity = 0;
  ssize_t length = 0;
  while ((length = getline(&line, &capacity, stdin)) >= 0) {
    while (length > 0 && (line[length - 1] == '\n' || line[length - 1] == '\r')) --length;
    allTrue &= run(line, static_cast<size_t>(length));
  }
  std::free(line);
  return allTrue;
}

int runPicture(Direction direction, const std::string& picture,
               const std::vector<std::string>& values, const std::string& locale) {
  zuStorage<zuString> alternates;
  if (!zuPicture::getAlternates(zuString(picture.c_str()), alternates)) {
    std::fprintf(stderr, "zupic: the picture ends inside a quoted literal\n");
    return kUsage;
  }
  static char buffer[kOutputBuffer];
  std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
  PictureRunner runner(direction, picture, locale);
  const bool allMatched = forEachValue(
      values, [&](const char* value, size_t length) { return runner.run(value, length); });
  std::fflush(stdout);
  return allMatched ? kOk : kNoMatch;
}

}  // namespace zupic
