// zuObjWrap: a handle holding one reference to a body (a zuObjImpl); zuPeer:
// the same counting without the forwarding members; zuNullObj: the tag that
// spells "no body".
//
//   zuObjWrap first(new Shape);               // count 1
//   {
//     zuObjWrap second = first;               // count 2, the same body
//     second = zuNullObj::getNULL();          // count 1; second is null
//   }
//   first == second;                          // compares body pointers
//   first = zuNullObj::getNULL();             // count 0: the body is destroyed
//
// A null handle answers isNull() 1, Type() 0, IsDerivedFrom() 0 and
// toString() "". Handles count without locks: a handle and its body belong
// to the body's thread.
#pragma once

#include <utility>

#include "zu/core/zuExport.h"
#include "zu/core/zuObj.h"
#include "zu/core/zuString.h"

// A tag type: a `const zuNullObj*` given to a handle makes it null, and a
// handle compared with one tests for null.
class ZU_EXPORT zuNullObj {
 public:
  static constexpr const zuNullObj* getNULL() { return nullptr; }
};

class ZU_EXPORT zuObjWrap {
 public:
  // The null handle.
  zuObjWrap() = default;
  zuObjWrap(const zuNullObj*) {}
  // Holds `body`, adding a reference (null gives the null handle).
  zuObjWrap(zuObjImpl* body) : body_(body) { zuObjImpl::addRef(body_); }
  zuObjWrap(const zuObjWrap& other) : body_(other.body_) { zuObjImpl::addRef(body_); }
  // Takes `other`'s reference; `other` becomes null.
  zuObjWrap(zuObjWrap&& other) noexcept : body_(std::exchange(other.body_, nullptr)) {}
  // Removes the reference, destroying the body when it was the last.
  ~zuObjWrap() { zuObjImpl::removeRef(body_, 1); }

  // The new body gains a reference before the old one loses its own, so a
  // handle may be assigned a handle to its own body.
  zuObjWrap& operator=(const zuObjWrap& other) {
    zuObjImpl::addRef(other.body_);
    zuObjImpl* old = std::exchange(body_, other.body_);
    zuObjImpl::removeRef(old, 1);
    return *this;
  }
  zuObjWrap& operator=(zuObjWrap&& other) noexcept {
    zuObjImpl* old = std::exchange(body_, std::exchange(other.body_, nullptr));
    zuObjImpl::removeRef(old, 1);
    return *this;
  }
  zuObjWrap& operator=(const zuNullObj*) {
    zuObjImpl::removeRef(std::exchange(body_, nullptr), 1);
    return *this;
  }

  // Body identity, not value.
  bool operator==(const zuObjWrap& other) const { return body_ == other.body_; }
  bool operator!=(const zuObjWrap& other) const { return body_ != other.body_; }
  // Null tests.
  bool operator==(const zuNullObj*) const { return body_ == nullptr; }
  bool operator!=(const zuNullObj*) const { return body_ != nullptr; }

  int isNull() const { return body_ == nullptr ? 1 : 0; }
  // The body's Type(); 0 for the null handle.
  unsigned short Type() const { return body_ != nullptr ? body_->Type() : 0; }
  // The body's IsDerivedFrom(typeId); 0 for the null handle.
  int IsDerivedFrom(unsigned short typeId) const {
    return body_ != nullptr ? body_->IsDerivedFrom(typeId) : 0;
  }
  // The body's toString(); "" for the null handle. Throws zuExMemory.
  zuString toString() const;

  // The body, without a reference; null for the null handle. It lives as
  // long as some handle holds it.
  zuObjImpl* getImpl() const { return body_; }

  // Gives up the reference without touching the count: the caller takes it
  // over. The handle becomes null.
  zuObjImpl* release() { return std::exchange(body_, nullptr); }
  // Takes over a reference the caller already holds (no count added).
  static zuObjWrap adopt(zuObjImpl* body) {
    zuObjWrap handle;
    handle.body_ = body;
    return handle;
  }

 private:
  zuObjImpl* body_ = nullptr;
};

// A counted pointer to a body, for code that keeps a body alive without
// wanting zuObjWrap's forwarding members (a peer object held by another).
class ZU_EXPORT zuPeer {
 public:
  zuPeer() = default;
  // Holds `body`, adding a reference.
  explicit zuPeer(zuObjImpl* body) : body_(body) { zuObjImpl::addRef(body_); }
  zuPeer(const zuPeer& other) : body_(other.body_) { zuObjImpl::addRef(body_); }
  // Removes the reference, destroying the body when it was the last.
  ~zuPeer() { zuObjImpl::removeRef(body_, 1); }

  zuPeer& operator=(const zuPeer& other) { return *this = other.body_; }
  // Holds `body` instead; the new body gains its reference first.
  zuPeer& operator=(zuObjImpl* body) {
    zuObjImpl::addRef(body);
    zuObjImpl::removeRef(std::exchange(body_, body), 1);
    return *this;
  }

  bool operator==(const zuPeer& other) const { return body_ == other.body_; }
  int isNull() const { return body_ == nullptr ? 1 : 0; }
  // The body, without a reference; null when none.
  zuObjImpl* get() const { return body_; }
  zuObjImpl* operator->() const { return body_; }

 private:
  zuObjImpl* body_ = nullptr;
};
