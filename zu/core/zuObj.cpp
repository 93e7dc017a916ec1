#include "zu/core/zuObj.h"

#include <cstdint>
#include <cstdio>

#include "zu/core/zuExAssert.h"
#include "zu/core/zuException.h"
#include "zu/runtime/zuCacheManager.h"

zuObj::~zuObj() = default;

int zuObj::IsDerivedFrom(unsigned short typeId) const {
  return typeId == kTypeId ? 1 : 0;
}

unsigned short zuObj::Type() const {
  return kTypeId;
}

zuString zuObj::toString() const {
  char text[48];
  const int length = std::snprintf(text, sizeof text, "%u@%p", static_cast<unsigned int>(Type()),
                                   static_cast<const void*>(this));
  return zuString(text, static_cast<unsigned int>(length));
}

void* zuObj::operator new(std::size_t size) {
  if (size > UINT32_MAX) throw zuExMemory();
  return zuCacheManager_alloc(static_cast<unsigned int>(size));
}

void zuObj::operator delete(void* memory) {
  zuCacheManager_free(memory);
}

void zuObjImpl::releaseLast(zuObjImpl* body, int destroy) {
  if (body->refCount_ == 0) {
    zuExAssertFailure("refCount_ > 0", __FILE__, __LINE__, "reference removed from a free body");
  }
  body->refCount_ = 0;
  if (destroy != 0) delete body;
}
