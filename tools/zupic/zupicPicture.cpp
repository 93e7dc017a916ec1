// zupic format / zupic parse: values through a picture clause, one a line.
#include <cstdio>

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
      : direction_(direction),
        picture_(picture.c_str(), static_cast<unsigned int>(picture.size())),
        locale_(locale.c_str()) {}

  // Writes the result of one value; false when it did not match.
  bool run(const char* value, size_t length) {
    const zuString text(value, static_cast<unsigned int>(length));
    int status = 1;  // stays 1 in the early exits, which return the value itself
    try {
      const zuString result = direction_ == Direction::kFormat
                                  ? zuPicture::format(text, picture_, locale_, &status, 0)
                                  : zuPicture::parse(text, picture_, locale_, &status);
      if (status != 0) {
        writeLine(result, result.Length());
        return true;
      }
      std::fprintf(stderr, "zupic: \"%.*s\" does not match the picture\n", static_cast<int>(length),
                   value);
    } catch (zuExFull& error) {
      error.Resolve();
      std::fprintf(stderr, "zupic: error %u: %s\n", static_cast<unsigned>(error.FirstResId()),
                   static_cast<const char*>(error[0].Text()));
    } catch (zuException& error) {
      const zuExErrItem& item = error[0];
      std::fprintf(stderr, "zupic: error %u: %s\n", static_cast<unsigned>(item.ResId()),
                   static_cast<const char*>(item.Text()));
    }
    writeLine("", 0);
    return false;
  }

 private:
  static void writeLine(const char* text, size_t length) {
    std::fwrite(text, 1, length, stdout);
    std::fputc('\n', stdout);
  }

  Direction direction_;
  zuString picture_;
  zuString locale_;
};

}  // namespace

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
