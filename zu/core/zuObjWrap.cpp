#include "zu/core/zuObjWrap.h"

zuString zuObjWrap::toString() const {
  return body_ != nullptr ? body_->toString() : zuString::EmptyString();
}
