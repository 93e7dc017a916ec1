// zuFormatPos: builds a message from a template with numbered placeholders,
// so that a translation may put the arguments in another order.
//
//   zuFormatPos message("%2 before %1");
//   message << "P" << "Q";
//   zuString text = message;               // "Q before P"
//
// "%0" to "%9" are numbered placeholders; "%d", "%f", "%u", "%s", "%x", "%X"
// (optionally after an "l") take the next number in sequence, which is the
// count of placeholders seen before them. Numbering starts at the smallest
// number used, so "%1 %2" and "%0 %1" mean the same. Any other "%" sequence
// ("%%" among them) is left to the zuFormat underneath.
//
// Arguments are only stored, as text; they are placed on the first request
// for a result or a parameter. A placeholder without an argument shows
// nothing; surplus arguments are ignored; arguments streamed after that
// first request are stored but never placed. Integers are stored as the
// signed value of their low 32 bits; floating point with eight decimals and
// the system decimal point.
//
// The results are const: placing the arguments does not change what the
// object means. A zuFormatPos belongs to one thread.
#pragma once

#include <cstdint>
#include <vector>

#include "zu/core/zuExport.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuString.h"

struct zuAtomStore;

class ZU_EXPORT zuFormatPos {
 public:
  // The template of message `id` from the calling thread's catalogue.
  explicit zuFormatPos(unsigned short id);
  // The template as given.
  explicit zuFormatPos(const zuString& templateText);
  // Construct, then stream one argument.
  zuFormatPos(unsigned short id, const zuString& argument);
  zuFormatPos(const zuString& templateText, const zuString& argument);
  zuFormatPos(unsigned short id, zuAtomStore* atom);
  zuFormatPos(const zuString& templateText, zuAtomStore* atom);
  zuFormatPos(const zuFormatPos& other);
  zuFormatPos& operator=(const zuFormatPos& other);
  ~zuFormatPos();

  // Each stores one argument as text and clears the resolved flag.
  zuFormatPos& operator<<(const zuString& text);
  // The atom's text; a null atom stores an empty text.
  zuFormatPos& operator<<(zuAtomStore* atom);
  zuFormatPos& operator<<(const char* text);
  zuFormatPos& operator<<(long value);
  zuFormatPos& operator<<(long long value);
  zuFormatPos& operator<<(int value);
  zuFormatPos& operator<<(short value);
  zuFormatPos& operator<<(unsigned short value);
  zuFormatPos& operator<<(const double& value);
  zuFormatPos& operator<<(const float& value);

  // Each of these places the stored arguments first.
  const zuString& GetString() const;
  operator const zuString&() const { return GetString(); }
  operator const char*() const { return GetString(); }
  // A new NUL-terminated copy of the result; the caller frees it with delete[].
  char* GetAllocdChar() const;
  // The text placed for placeholder `index`; zuString::EmptyString() at or
  // past the count.
  const zuString& GetParm(unsigned int index) const;
  unsigned int GetParmCount() const;
  // The message id, 0 when the template was given as text.
  unsigned short ResId() const { return id_; }

 private:
  static zuString RewriteTemplate(const zuString& templateText,
                                  std::vector<uint32_t>& placeholders);
  void StoreArgument(const zuString& text);
  void Resolve() const;

  // Placing the arguments is deferred to the first const request, hence the
  // mutable state.
  mutable std::vector<uint32_t> placeholders_;
  mutable zuFormat format_;
  mutable int resolved_;
  mutable std::vector<zuString> arguments_;
  uint16_t id_;
};
