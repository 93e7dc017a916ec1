#include "zu/datetime/internal/ISOText.h"

namespace zu::internal {

namespace {

zuString trimmed(zuString text) {
  text.Trim();
  text.TrimStart();
  return text;
}

}  // namespace

zuString isoPartBeforeT(const zuString& text) {
  unsigned int at = 0;
  if (text.CharInString('T', at) == 0) return trimmed(text);
  return trimmed(text.Substring(0, at));
}

zuString isoPartAfterT(const zuString& text) {
  unsigned int at = 0;
  if (text.CharInString('T', at) == 0) return trimmed(text);
  return trimmed(text.Substring(at + 1, text.Length()));
}

}  // namespace zu::internal
