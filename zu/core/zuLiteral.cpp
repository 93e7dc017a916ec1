#include "zu/core/zuLiteral.h"

zuLiteral::zuLiteral(const char* text) {
  if (text != nullptr) Assign(text, StringLength(text), 1, 0);
}

zuLiteral& zuLiteral::operator=(const zuLiteral& other) {
  zuString::operator=(other);
  return *this;
}

zuLiteral& zuLiteral::operator=(unsigned int codePoint) {
  zuString::operator=(codePoint);
  return *this;
}

zuLiteral& zuLiteral::operator=(char byte) {
  zuString::operator=(byte);
  return *this;
}

zuLiteral& zuLiteral::operator=(const char* text) {
  zuString::operator=(text);
  return *this;
}
