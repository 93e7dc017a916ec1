// zupic format / zupic parse: values through a picture clause, one a line.
#include <cstdio>

#include "tools/zupic/zupicCommands.h"
#include "zu/picture/zuPicture.h"

namespace zupic {

namespace {

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
  captureErrors(
      [&] {
        outcome.text = direction_ == Direction::kFormat
                           ? zuPicture::format(text, picture_, locale_, &status, 0)
                           : zuPicture::parse(text, picture_, locale_, &status);
        outcome.matched = status != 0;
      },
      outcome.errorId, outcome.errorText);
  if (!outcome.matched) outcome.text = zuString::EmptyString();
  return outcome;
}

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
