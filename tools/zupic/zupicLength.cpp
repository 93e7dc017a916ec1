// zupic length: lengths read as a user types them, converted and written
// back, one a line.
#include <strings.h>
#include <cstdio>
#include <cstring>

#include "tools/zupic/zupicCommands.h"
#include "zu/measure/zuUnitSpan.h"

namespace zupic {

namespace {

// The unit a name on the command line gives, any case; false when none.
bool unitNamed(const std::string& name, zuUnitSpan::UnitCode& unit) {
  static const struct {
    const char* name;
    zuUnitSpan::UnitCode unit;
  } kUnits[] = {{"in", zuUnitSpan::eInches},      {"cm", zuUnitSpan::eCentimeters},
                {"mm", zuUnitSpan::eMillimeters}, {"pt", zuUnitSpan::ePoints},
                {"mp", zuUnitSpan::eMillipoints}, {"pc", zuUnitSpan::ePicas}};
  for (const auto& known : kUnits) {
    if (strcasecmp(name.c_str(), known.name) == 0) {
      unit = known.unit;
      return true;
    }
  }
  return false;
}

int usage(const char* what, const std::string& value) {
  std::fprintf(stderr, "zupic: %s \"%s\" (units: in, cm, mm, pt, mp, pc; decimals: 0 to 8)\n", what,
               value.c_str());
  return kUsage;
}

class LengthRunner {
 public:
  LengthRunner(bool convert, zuUnitSpan::UnitCode to, zuUnitSpan::UnitCode unit, unsigned decimals)
      : convert_(convert), to_(to), unit_(unit), decimals_(decimals) {}

  // Writes one length; false when the text is none.
  bool run(const char* value, size_t length) {
    const zuString text(value, static_cast<unsigned int>(length));
    zuUnitSpan span;
    // The lenient reading takes a text without digits as 0; here that is
    // an error, not a length.
    if (std::strpbrk(text, "0123456789") == nullptr || !span.SetFromText(text, unit_, 0)) {
      std::fprintf(stderr, "zupic: \"%.*s\" is not a length\n", static_cast<int>(length), value);
      std::puts("");
      return false;
    }
    // Known units: neither the conversion nor the text can fail.
    if (convert_) span.ChangeUnits(to_);
    zuString out;
    span.Text(out, decimals_, 0, 0, 0);
    std::puts(out);
    return true;
  }

 private:
  bool convert_;
  zuUnitSpan::UnitCode to_;
  zuUnitSpan::UnitCode unit_;
  unsigned decimals_;
};

}  // namespace

int runLength(const std::vector<std::string>& texts, const LengthOptions& options) {
  zuUnitSpan::UnitCode to = zuUnitSpan::eInches;
  zuUnitSpan::UnitCode unit = zuUnitSpan::eInches;
  if (!options.to.empty() && !unitNamed(options.to, to)) return usage("unknown unit", options.to);
  if (!options.unit.empty() && !unitNamed(options.unit, unit)) {
    return usage("unknown unit", options.unit);
  }
  unsigned decimals = 8;
  if (!options.decimals.empty()) {
    if (options.decimals.size() != 1 || options.decimals[0] < '0' || options.decimals[0] > '8') {
      return usage("bad number of decimals", options.decimals);
    }
    decimals = static_cast<unsigned>(options.decimals[0] - '0');
  }
  LengthRunner runner(!options.to.empty(), to, unit, decimals);
  const bool allRead = forEachValue(
      texts, [&](const char* text, size_t length) { return runner.run(text, length); });
  std::fflush(stdout);
  return allRead ? kOk : kNoMatch;
}

}  // namespace zupic
