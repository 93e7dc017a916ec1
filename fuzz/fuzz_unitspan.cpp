// Reads arbitrary text as a length, strictly and leniently, and writes the
// result back.
//
// Input: a flags byte (bit 0 negatives allowed, bit 1 reciprocal, bit 2
// "%" allowed, bit 3 Text's reciprocal, bit 4 Text without suffix), the
// default unit (any code), a byte giving Text's maximum (0-9) and minimum
// decimals, then the text (every byte, NULs included). The parsers never throw; a failed
// strict reading leaves ParseData as new; when the strict reading with
// SetFromText's flags finds a unit, SetFromText took exactly that; Text
// throws only 17107, and only for a code outside the table; in inches,
// points and millipoints written with 8 decimals reads back exactly.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/measure/zuUnitSpan.h"

namespace {

bool inTable(unsigned code) {
  for (unsigned known : {0u, 1u, 3u, 17u, 19u, 35u, 51u}) {
    if (code == known) return true;
  }
  return false;
}

bool sameData(const zuUnitSpan::ParseData& a, const zuUnitSpan::ParseData& b) {
  return a.integerPart == b.integerPart && a.fractionDigits == b.fractionDigits &&
         a.fractionDivisor == b.fractionDivisor && a.unit == b.unit && a.value == b.value &&
         a.letterCount == b.letterCount && a.reciprocal == b.reciprocal && a.percent == b.percent &&
         std::memcmp(a.unitLetters, b.unitLetters, 6) == 0;
}

// Text, which may throw 17107 for a code outside the table only.
void writeChecked(const zuUnitSpan& span, unsigned maxDecimals, int withoutSuffix,
                  unsigned minDecimals, int reciprocal) {
  zuString out("before");
  try {
    span.Text(out, maxDecimals, withoutSuffix, minDecimals, reciprocal);
    if (!inTable(span.Units()) && span.Units() != zuUnitSpan::eNoUnits) std::abort();
  } catch (const zuExFull& error) {
    if (error.FirstResId() != zuMessageIds::kUnknownUnit || inTable(span.Units()) ||
        span.Units() == zuUnitSpan::eNoUnits || !out.Equals("before")) {
      std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 3) return 0;
  const unsigned flags = data[0];
  const auto defaultUnit = static_cast<zuUnitSpan::UnitCode>(data[1]);
  const unsigned maxDecimals = data[2] % 10;
  const unsigned minDecimals = data[2] / 10 % 10;
  const char* bytes = reinterpret_cast<const char*>(data + 3);
  const zuString text = zuString::FromBytes(bytes, static_cast<unsigned>(size - 3));
  const int reciprocal = (flags >> 1) & 1;

  zuUnitSpan span;
  zuUnitSpan::ParseData strict;
  int read = 0;
  try {
    zuUnitSpan::ParseData data1;
    if (!zuUnitSpan::ValidatingParse(data1, text, defaultUnit, flags & 1, reciprocal,
                                     (flags >> 2) & 1) &&
        !sameData(data1, zuUnitSpan::ParseData{})) {
      std::abort();
    }
    read = span.SetFromText(text, defaultUnit, reciprocal);
    if (zuUnitSpan::ValidatingParse(strict, text, defaultUnit, 1, reciprocal, 0) &&
        strict.unit != zuUnitSpan::eNoUnits &&
        (read != 1 || span.Units() != strict.unit || span.Value() != strict.value)) {
      std::abort();
    }
    const zuUnitSpan constructed(text);
    writeChecked(constructed, 8, 0, 0, 0);
  } catch (...) {
    std::abort();  // the parsers promise not to throw
  }
  writeChecked(span, maxDecimals, (flags >> 4) & 1, minDecimals, (flags >> 3) & 1);

  // Written with every decimal its unit has, a span of the millipoint base
  // reads back exactly (-2147483648 has no text of its own).
  const unsigned unit = span.Units();
  if ((unit == 3 || unit == 19 || unit == 35) && span.Value() != INT32_MIN) {
    const zuUnitSpan back{static_cast<zuString>(span)};
    if (back.Units() != unit || back.Value() != span.Value()) std::abort();
  }
  return 0;
}
