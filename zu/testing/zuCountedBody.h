// CountedBody: an object body with a type of its own and a letter, which
// counts the live bodies of its kind, so that object and list tests see
// contents, type queries and leaks.
//
//   zu::testing::CountedBody::live = 0;
//   { zuObjWrap a(new zu::testing::CountedBody('a')); }   // live is 0 again
//
// The count is a plain integer: bodies belong to one thread, as all bodies do.
#pragma once

#include "zu/core/zuObj.h"

namespace zu::testing {

class CountedBody : public zuObjImpl {
 public:
  static constexpr unsigned short kTypeId = 30001;
  // Bodies alive now.
  inline static int live = 0;

  explicit CountedBody(char name = '?') : name_(name) { ++live; }
  ~CountedBody() override { --live; }
  char name() const { return name_; }
  unsigned short Type() const override { return kTypeId; }
  int IsDerivedFrom(unsigned short typeId) const override {
    return typeId == kTypeId || zuObjImpl::IsDerivedFrom(typeId);
  }

 private:
  char name_;
};

}  // namespace zu::testing
