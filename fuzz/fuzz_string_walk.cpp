// Walks arbitrary bytes as a zuString: forwards with UniChar, backwards with
// UniPrev, and edits at positions derived from the input.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "zu/core/zuString.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 4) return 0;
  const unsigned int first = data[0];
  const unsigned int second = data[1];
  const unsigned int third = data[2];
  const unsigned int fourth = data[3];
  const char* bytes = reinterpret_cast<const char*>(data + 4);
  const unsigned int length = static_cast<unsigned int>(size - 4);

  zuString text(bytes, length);
  unsigned int forwardSteps = 0;
  for (unsigned int pos = 0; pos < text.Length(); ++forwardSteps) {
    const unsigned int before = pos;
    text.UniChar(pos);
    if (pos <= before || pos > text.Length()) abort();
  }
  unsigned int backwardSteps = 0;
  for (unsigned int pos = text.Length(); pos > 0; ++backwardSteps) {
    const unsigned int before = pos;
    text.UniPrev(pos);
    if (pos >= before) abort();
  }
  if (text.UniLength() != forwardSteps) abort();
  if (backwardSteps > text.Length()) abort();

  const unsigned int start = first * text.Length() / 255;
  const unsigned int span = second;
  if (text.UniLength(start, span) > span) abort();
  const zuString part = text.Substring(start, span);
  if (part.Length() > span) abort();
  const zuString piece = text(third, fourth);

  zuString edited(text);
  edited.ReplaceUniChar(part, third, fourth % 8);
  edited.ReplaceUniChar(piece, first, second % 8);
  edited.UTF8Check();
  edited.Swallow(second, third);
  edited.Trim();
  edited.TrimStart();
  edited.ToUpper(first, third);
  unsigned int pos = 0;
  zuString token;
  while (edited.GetToken(zuString::WhiteSpace(), token, pos)) {
  }
  while (edited.ParseToken(token)) {
  }
  text.ReplaceAll(part, piece);
  return 0;
}
