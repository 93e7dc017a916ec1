// zuAtom_str: a zuString over an atom's text that also carries the atom, so
// that equality is a pointer comparison.
//
//   zuAtom_str name(zuAtomTable::getAtom("margin", 0));
//   zuString text = name;                       // "margin", not copied
//   if (name == zuAtomTable::getAtom("margin", 0)) { ... }   // pointers only
//
// The text is a literal over the atom's bytes, which live as long as the
// atom. Editing it as a zuString gives it a private copy and leaves the atom
// unchanged, so == then still compares the atom.
#pragma once

#include "zu/core/zuAtomStore.h"
#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuAtom_str : public zuString {
 public:
  // The empty atom (aUT_EmptyString).
  zuAtom_str();
  // Over `atom`; a null atom gives a null string and a null atom.
  zuAtom_str(zuAtomStore* atom);
  // The atom of `text` in thread `threadId` (0: the calling thread), made
  // when new. Throws as zuAtomTable::getAtom.
  explicit zuAtom_str(const char* text, unsigned int threadId = 0);

  zuAtomStore* Atom() const { return atom_; }
  operator zuAtomStore*() const { return atom_; }

  // Atom identity only: the texts are not compared.
  bool operator==(const zuAtom_str& other) const { return atom_ == other.atom_; }
  bool operator==(zuAtomStore* atom) const { return atom_ == atom; }
  bool operator!=(const zuAtom_str& other) const { return atom_ != other.atom_; }
  bool operator!=(zuAtomStore* atom) const { return atom_ != atom; }

 private:
  zuAtomStore* atom_;
};
