// zuThreadSafeString: a zuString that may be shared between threads.
//
// Its block comes from the process heap, and every share and release takes
// the library-wide string mutex. Assigning an ordinary string copies the text
// (a global string never shares a block with a thread's cache); assigning
// another global string shares it.
//
//   static zuThreadSafeString gLastError;    // read and written by any thread
//   gLastError = zuString("disk full");
//   zuString seen = gLastError;              // shares the heap block
//
// One object must still not be written by two threads at once; what is
// protected is the sharing of the block between objects.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuThreadSafeString : public zuString {
 public:
  // A null global string.
  zuThreadSafeString();
  // The text of message `messageId` from the message catalogue; null when
  // no catalogue has it.
  explicit zuThreadSafeString(unsigned short messageId);
  // A copy of UTF-16 text in host byte order.
  zuThreadSafeString(const char16_t* utf16);
  // A copy of the UTF-8 text.
  zuThreadSafeString(const char* text);
  // Copies an ordinary or literal string; shares a global one.
  zuThreadSafeString(const zuString& other);
  zuThreadSafeString(const zuThreadSafeString& other);

  zuThreadSafeString& operator=(const zuThreadSafeString& other);
  using zuString::operator=;
};
