// zuFormat: builds a message by streaming arguments into a printf-like
// template, one conversion per argument, strictly in order.
//
//   zuFormat message("a%%b%dc");
//   message << 5;                          // "a%b5c"
//   zuFormat price("x=%5.2f", 3.14159);    // "x= 3.14"
//   zuString firstArgument = price.GetParm(0);   // " 3.14"
//
// A conversion is "%", then any digits and "." (width and precision), then
// an optional "l", then the conversion letter. Flags are not understood: in
// "%-5d" the letter is "-", so the argument is printed plainly and "5d"
// follows as text. "%%" writes one "%".
//
// How an argument prints depends on its kind and the letter: integers in
// decimal, or in upper-case hexadecimal for the letter "x" (only that one:
// "X" prints decimal); "c" prints the
// low byte of an integer as a character; char and unsigned char print as
// themselves unless the letter is "d" or "x"; floating point always prints as
// fixed point with "." as the decimal point; texts are copied as they are
// (width and precision ignored); a text pointer with "d" or "x" prints the
// pointer's value. A leading "0" in the width pads with zeros.
//
// Width and precision are each clamped to kMaxWidth (1,024), so a template
// asking for "%999999999d" or "%.99999f" produces a bounded text.
//
// Nothing is checked against the template: an argument streamed after the
// last conversion is printed plainly and appended; a conversion that gets no
// argument cuts the result there. Formatting never throws except zuExMemory.
//
// Every formatted argument except those printed as a single character is
// kept as a parameter text, so that an error item can hand it back.
// A zuFormat belongs to one thread.
#pragma once

#include <cstdint>
#include <vector>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

struct zuAtomStore;

class ZU_EXPORT zuFormat {
 public:
  // Largest width and largest precision a conversion may ask for.
  static constexpr unsigned int kMaxWidth = 1024;

  // The template of message `id` from the calling thread's catalogue (empty
  // when not found: the result then holds the arguments one after another).
  explicit zuFormat(unsigned short id);
  // The template as given.
  explicit zuFormat(const zuString& templateText);
  // Construct, then stream one argument.
  template <typename T>
  zuFormat(unsigned short id, const T& argument) : zuFormat(id) {
    *this << argument;
  }
  template <typename T>
  zuFormat(const zuString& templateText, const T& argument) : zuFormat(templateText) {
    *this << argument;
  }
  zuFormat(const zuFormat& other);
  zuFormat& operator=(const zuFormat& other);
  ~zuFormat();

  // Each formats one argument into the next conversion (see above).
  zuFormat& operator<<(char value);
  zuFormat& operator<<(unsigned char value);
  zuFormat& operator<<(const unsigned char* text);
  zuFormat& operator<<(const char* text);
  zuFormat& operator<<(short value);
  zuFormat& operator<<(unsigned short value);
  zuFormat& operator<<(int value);
  zuFormat& operator<<(unsigned int value);
  zuFormat& operator<<(long value);
  zuFormat& operator<<(unsigned long value);
  zuFormat& operator<<(const float& value);
  zuFormat& operator<<(const double& value);
  zuFormat& operator<<(const zuString& text);
  // The atom's text; a null atom streams an empty text.
  zuFormat& operator<<(zuAtomStore* atom);

  // The result produced so far.
  const zuString& GetString() const { return result_; }
  operator const zuString&() const { return result_; }
  operator const char*() const { return result_; }
  // A new NUL-terminated copy of the result; the caller frees it with delete[].
  char* GetAllocdChar() const;
  // The template.
  const zuString& SourceString() const { return template_; }
  // The message id, 0 when the template was given as text.
  unsigned short ResId() const { return id_; }
  // The text of parameter `index`; zuString::EmptyString() at or past the count.
  const zuString& GetParm(unsigned int index) const;
  // Number of parameters: arguments not printed as a single character.
  unsigned int GetParmCount() const;

 private:
  struct Conversion;

  void CopyLiteralText();
  void AppendTemplateRun(uint32_t start, uint32_t end);
  Conversion ReadConversion();
  void AppendParameter(const zuString& text);
  void AppendCharacter(char character);
  void AppendSigned(long value, const Conversion& conversion);
  void AppendUnsigned(unsigned long value, const Conversion& conversion);

  uint16_t id_;
  zuString template_;
  zuString result_;
  std::vector<zuString> parameters_;
  uint32_t scanPos_;
};
