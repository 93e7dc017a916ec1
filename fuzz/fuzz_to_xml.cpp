// Escapes arbitrary bytes for XML and XHTML with the context, numeric range
// and character sets taken from the input.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "zu/core/zuString.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 8) return 0;
  const zuToXMLType type = static_cast<zuToXMLType>(data[0] % 3);
  unsigned int rangeLow = 0;
  unsigned int rangeHigh = 0;
  std::memcpy(&rangeLow, data + 1, 2);
  std::memcpy(&rangeHigh, data + 3, 2);
  const unsigned int alsoLength = data[5] % 8;
  const unsigned int neverLength = data[6] % 8;
  const int withDeclaration = data[7] & 1;
  const char* rest = reinterpret_cast<const char*>(data + 8);
  unsigned int restLength = static_cast<unsigned int>(size - 8);

  const unsigned int alsoTaken = alsoLength < restLength ? alsoLength : restLength;
  const zuString alsoEscape(rest, alsoTaken);
  rest += alsoTaken;
  restLength -= alsoTaken;
  const unsigned int neverTaken = neverLength < restLength ? neverLength : restLength;
  const zuString neverEscape(rest, neverTaken);
  rest += neverTaken;
  restLength -= neverTaken;

  const zuString text(rest, restLength);
  const zuString xml = text.toXML(type, alsoEscape, rangeLow, rangeHigh, neverEscape);
  if (xml.Length() != std::strlen(xml) && text.Length() == std::strlen(text)) abort();
  const zuString xhtml = text.toXHTML(withDeclaration);
  if (xhtml.Length() < 50) abort();
  return 0;
}
