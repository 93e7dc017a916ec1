// zuGxCharConverter: the concrete character converter.
//
//   zuGxCharConverter latin2("ISO-8859-2");
//   unsigned int codePoints[8];
//   unsigned int count = latin2.ConvertFromMB(codePoints, 8, "\xb1", 1);  // U+0105
//
// UTF-8 to UTF-8 is a byte copy; UTF-8, UTF-16 and font-specific text are
// converted by the library's own Unicode functions; UTF-32 to font-specific
// keeps the low byte of each unit; every other pair goes through the calling
// thread's cached ICU converters.
#pragma once

#include "zu/core/zuCharConverter.h"
#include "zu/core/zuExport.h"

class ZU_EXPORT zuGxCharConverter : public zuCharConverter {
 public:
  // The process's character set (as Default() picks it).
  zuGxCharConverter();
  explicit zuGxCharConverter(int codePage);
  // Any spelling of an encoding name; an unknown name gives code page 0,
  // which converts nothing.
  explicit zuGxCharConverter(const char* name);
  zuGxCharConverter(const zuGxCharConverter& other) = default;
  zuGxCharConverter& operator=(const zuGxCharConverter& other) = default;
  ~zuGxCharConverter() override;

  zuCharConverter* Clone(const char* name) const override;
  // UTF-8 steps over a lead byte and its continuation bytes; UTF-16 over a
  // unit or a surrogate pair; UTF-32 four bytes; double- and four-byte pages
  // over a lead byte and its trail bytes (GB18030's four-byte form when the
  // second byte is a digit); every other page one byte.
  char* NextChar(char* p) const override;
  // UTF-8 and UTF-16 step back by their own structure, UTF-32 four bytes,
  // single-byte pages one byte. In double-byte text a trail byte can look
  // like a lead byte, so the walk restarts at `start` and steps forward.
  char* PrevChar(char* start, char* p) const override;
  unsigned int ConvertFromMB(unsigned int* out, unsigned int outMax, const char* in,
                             unsigned int inBytes) const override;
  unsigned int ConvertToMB(char* out, unsigned int outBytes, const unsigned int* in,
                           unsigned int count) const override;
  unsigned int Convert(char* out, unsigned int outBytes, const zuCharConverter* from,
                       const char* in, unsigned int inBytes) const override;

 private:
  unsigned int ConvertUnicode(char* out, unsigned int outBytes, const zuCharConverter& from,
                              const char* in, unsigned int inBytes) const;
  unsigned int ConvertUTF32ToFont(char* out, unsigned int outBytes, const zuCharConverter& from,
                                  const char* in, unsigned int inBytes) const;
  unsigned int ConvertICU(char* out, unsigned int outBytes, const zuCharConverter& from,
                          const char* in, unsigned int inBytes) const;
  unsigned int Terminate(char* out, unsigned int outBytes, unsigned int written) const;
};
