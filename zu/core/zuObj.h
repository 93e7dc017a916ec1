// zuObj and zuObjImpl: the root of the library's reference-counted objects.
//
// A body (a zuObjImpl) carries a count of the handles that hold it and a
// 16-bit type id; handles (zuObjWrap, zuPeer, zuObjArrayList) add and
// remove references, and the last one destroys the body. Bodies are made
// with `new`, which takes their memory from the calling thread's block
// cache.
//
//   class Shape : public zuObjImpl {
//    public:
//     static constexpr unsigned short kTypeId = 20001;
//     unsigned short Type() const override { return kTypeId; }
//     int IsDerivedFrom(unsigned short typeId) const override {
//       return typeId == kTypeId || zuObjImpl::IsDerivedFrom(typeId);
//     }
//   };
//   zuObjWrap shape(new Shape);        // count 1; the body dies with `shape`
//   shape.toString();                  // "20001@0x55d2c41a08b0"
//
// Counts are plain integers and the memory comes from one thread's cache: a
// body belongs to one thread, the one that made it, which is also the one
// that must release it.
#pragma once

#include <cstddef>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuObj {
 public:
  // The type id of the root; IsDerivedFrom accepts only this one here.
  static constexpr unsigned short kTypeId = 16445;

  virtual ~zuObj();
  // 1 when the object is of type `typeId` or derives from it: here, 1 only
  // for the root's id 16445.
  virtual int IsDerivedFrom(unsigned short typeId) const;
  // The object's type id: 16445 here.
  virtual unsigned short Type() const;
  // The type id and the address, as "16445@0x55d2c41a08b0". Throws
  // zuExMemory.
  virtual zuString toString() const;

  // Memory from the calling thread's block cache (zuCacheManager_alloc);
  // throws zuExMemory. Release it on the same thread.
  static void* operator new(std::size_t size);
  static void operator delete(void* memory);
  // Construction in memory the caller owns and releases.
  static void* operator new(std::size_t, void* place) noexcept { return place; }
  static void operator delete(void*, void*) noexcept {}

 protected:
  zuObj() = default;
  zuObj(const zuObj&) = default;
  zuObj& operator=(const zuObj&) = default;
};

// A body with a reference count, 0 at construction. The count belongs to
// the body's thread and is never shared between threads.
class ZU_EXPORT zuObjImpl : public zuObj {
 public:
  // Adds one reference; nothing for null.
  static void addRef(zuObjImpl* body) {
    if (body != nullptr) ++body->refCount_;
  }
  // Removes one reference; when the count drops from 1 to 0 and `destroy` is
  // non-zero, destroys the body through its virtual destructor. Nothing for
  // null. A count already at 0 is a bug: throws zuExAssert, count unchanged.
  static void removeRef(zuObjImpl* body, int destroy) {
    if (body == nullptr) return;
    if (body->refCount_ <= 1) {
      releaseLast(body, destroy);
      return;
    }
    --body->refCount_;
  }

  // The number of references held.
  unsigned int getRefCount() const { return refCount_; }

 protected:
  zuObjImpl() = default;
  // A copied body starts without references, as a new one does.
  zuObjImpl(const zuObjImpl&) : zuObj(), refCount_(0) {}
  zuObjImpl& operator=(const zuObjImpl&) { return *this; }

 private:
  friend class zuObjArrayListImpl;  // drops its elements' counts in one walk

  [[gnu::noinline]] static void releaseLast(zuObjImpl* body, int destroy);

  unsigned int refCount_ = 0;
};
