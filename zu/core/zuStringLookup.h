// zuStringLookup: a small growable list of names, looked up by text.
//
// It keeps pointers to the caller's strings (it never copies or frees them)
// in the order they were added; lookups walk the list, which suits the
// dozens of names it is meant for.
//
//   static const zuLiteral kLeft("left"), kRight("right");
//   zuStringLookup sides(2);
//   sides.add(&kLeft);                      // index 0
//   sides.add(&kRight);                     // index 1
//   unsigned int index;
//   if (sides.find("right", index)) { ... }  // index == 1
//   zuString side("left");
//   sides.resolveName(side);                // side now shares kLeft's bytes
//   sides.findByAddress(side, index);       // 1, index == 0, no text compare
//
// Not locked: share one between threads only once it is filled.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuStringLookup {
 public:
  // Room for `capacity` names before the first growth. Throws zuExMemory.
  explicit zuStringLookup(unsigned int capacity);
  ~zuStringLookup();
  zuStringLookup(const zuStringLookup&) = delete;
  zuStringLookup& operator=(const zuStringLookup&) = delete;

  // Appends `name`, which must outlive the lookup, and returns its index;
  // the list doubles when full. Throws ZuExThrow(16479) for null and
  // zuExMemory when it cannot grow.
  unsigned int add(const zuString* name);
  // The name at `index`; null at or past size().
  const zuString* operator[](unsigned int index) const;
  unsigned int size() const { return size_; }

  // The first name with this text: 1 and its index, else 0 with `index` =
  // size(). A null `text` finds nothing.
  int find(const char* text, unsigned int& index) const;
  // The first name with this text, or null.
  const zuString* findByName(const char* text) const;
  const zuString* findByName(const zuString& text) const;
  // The name whose characters are at `chars` itself (a name that
  // resolveName handed out, or the very string added): 1 and its index, else
  // 0 with `index` = size(). Compares addresses, not text.
  int findByAddress(const char* chars, unsigned int& index) const;
  // When a name with the text of `name` is in the list, `name` is made to
  // share that name's characters and 1 is returned, so that later lookups
  // can go by address; otherwise `name` is unchanged and 0 is returned.
  int resolveName(zuString& name) const;

 private:
  int findText(const char* text, uint32_t length, unsigned int& index) const;
  void grow();

  const zuString** names_;
  uint32_t size_;
  uint32_t capacity_;
};
