// zupic format / zupic parse: values through a picture clause, one a line.
#include <cstdio>
#include <memory>
#include <string>

#include "tools/zupic/zupicCommands.h"
#include "zu/picture/zuPicture.h"

namespace zupic {

namespace {

// One value through the applier: its result line into `out` (an empty line
// when it did not match) and the reason into `err`.
bool applyLine(const PictureApplier& applier, const char* value, size_t length, std::string& out,
               std::string& err) {
  const Outcome outcome = applier.apply(value, length);
  if (outcome.matched) {
    out.append(outcome.text, outcome.text.Length());
    out.push_back('\n');
    return true;
  }
  if (outcome.errorId != 0) {
    err += "zupic: error " + std::to_string(outcome.errorId) + ": " + outcome.errorText + "\n";
  } else {
    err += "zupic: \"" + std::string(value, length) + "\" does not match the picture\n";
  }
  out.push_back('\n');
  return false;
}

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
               const std::vector<std::string>& values, const std::string& locale, unsigned jobs) {
  zuStorage<zuString> alternates;
  if (!zuPicture::getAlternates(zuString(picture.c_str()), alternates)) {
    std::fprintf(stderr, "zupic: the picture ends inside a quoted literal\n");
    return kUsage;
  }
  if (values.empty() && jobs > 1) {
    const bool allMatched = forEachLineInParallel(jobs, [&]() -> LineWorker {
      auto applier = std::make_shared<PictureApplier>(direction, picture, locale);
      return [applier](const char* value, size_t length, std::string& out, std::string& err) {
        return applyLine(*applier, value, length, out, err);
      };
    });
    return allMatched ? kOk : kNoMatch;
  }
  const PictureApplier applier(direction, picture, locale);
  std::string out;
  std::string err;
  return forEachValue(values,
                      [&](const char* value, size_t length) {
                        out.clear();
                        err.clear();
                        const bool matched = applyLine(applier, value, length, out, err);
                        if (!err.empty()) std::fputs(err.c_str(), stderr);
                        std::fwrite(out.data(), 1, out.size(), stdout);
                        return matched;
                      })
             ? kOk
             : kNoMatch;
}

}  // namespace zupic
