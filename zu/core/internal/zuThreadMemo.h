// One object of type T per thread, made on first use and reached through
// an initial-exec thread-local pointer.
//
// A thread_local object with a constructor, in a shared library, is reached
// through the dynamic loader on every access; the hot caches of the library
// (prepared pictures, locale symbols) are reached through this pointer
// instead, which costs one load from the thread pointer. The object dies
// with its thread.
//
//   Remembered& memo = zuThreadMemo<Remembered>::get();
#pragma once

#include <memory>

namespace zu::internal {

template <class T>
class zuThreadMemo {
 public:
  static T& get() {
    if (object_ == nullptr) create();
    return *object_;
  }

 private:
  struct Owner {
    std::unique_ptr<T> owned;
    ~Owner() { object_ = nullptr; }
  };

  static void create() {
    thread_local Owner owner;
    owner.owned = std::make_unique<T>();
    object_ = owner.owned.get();
  }

  [[gnu::tls_model("initial-exec")]] static inline thread_local T* object_ = nullptr;
};

}  // namespace zu::internal
