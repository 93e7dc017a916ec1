// zuLiteral: a zuString over the caller's constant bytes, without a copy.
//
// The bytes must outlive the literal and every string that shares it; the
// first edit of any of them makes an owned copy. Assignments behave as for
// zuString.
//
//   static const zuLiteral kSeparator(", ");
//   zuString list = first + kSeparator + second;
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuLiteral : public zuString {
 public:
  // Literal scope over `text` (null: a null string, "": the empty state).
  zuLiteral(const char* text);
  zuLiteral(const zuLiteral& other) = default;

  zuLiteral& operator=(const zuLiteral& other);
  zuLiteral& operator=(unsigned int codePoint);
  zuLiteral& operator=(char byte);
  zuLiteral& operator=(const char* text);
};
