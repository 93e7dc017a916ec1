// zupic format / zupic parse: values through a picture clause, one a line.
#include <cstdio>

#include "tools/zupic/zupicCommands.h"
#include "zu/picture/zuPicture.h"

namespace zupic {

namespace {

class PictureRunner {
 public:
  PictureRunner(Direction direction, const std::string& picture, const std::string& locale)
      : direction_(direction),
        picture_(picture.c_str(), static_cast<unsigned int>(picture.size())),
        locale_(locale.c_str()) {}

  // Writes the result of one value; false when it did not match.
  bool run(const char* value, size_t length) {
    const zuString text(value, static_cast<unsigned int>(length));
    const bool matched = reportErrors([&] {
      int status = 1;  // stays 1 in the early exits, which return the value itself
      const zuString result = direction_ == Direction::kFormat
                                  ? zuPicture::format(text, picture_, locale_, &status, 0)
                                  : zuPicture::parse(text, picture_, locale_, &status);
      if (status != 0) {
        writeLine(result, result.Length());
        return true;
      }
      std::fprintf(stderr, "zupic: \"%.*s\" does not match the picture\n", static_cast<int>(length),
                   value);
      return false;
    });
    if (!matched) writeLine("", 0);
    return matched;
  }

 private:
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
  PictureRunner runner(direction, picture, locale);
  return forEachValue(values,
                      [&](const char* value, size_t length) { return runner.run(value, length); })
             ? kOk
             : kNoMatch;
}

}  // namespace zupic
