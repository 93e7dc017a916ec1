#include "zu/core/zuThreadSafeString.h"

zuThreadSafeString::zuThreadSafeString() {
  SetScope(eGlobal);
}

zuThreadSafeString::zuThreadSafeString(const char16_t* utf16) {
  SetScope(eGlobal);
  zuString::operator=(utf16);
}

zuThreadSafeString::zuThreadSafeString(const char* text) {
  SetScope(eGlobal);
  if (text != nullptr) Assign(text, StringLength(text), 0, 0);
}

zuThreadSafeString::zuThreadSafeString(const zuString& other) {
  SetScope(eGlobal);
  zuString::operator=(other);
}

zuThreadSafeString::zuThreadSafeString(const zuThreadSafeString& other) : zuString() {
  SetScope(eGlobal);
  zuString::operator=(other);
}

zuThreadSafeString& zuThreadSafeString::operator=(const zuThreadSafeString& other) {
  zuString::operator=(other);
  return *this;
}
