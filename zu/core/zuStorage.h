// zuStorage: a small growable array of values, indexed from 0.
//
// The library's own container for lists handed across its interface (font
// names, locale names). Elements are copied in; indexes out of range are
// bugs and are caught by an assert.
//
//   zuStorage<zuString> names;
//   names.Add("root");
//   for (unsigned int i = 0; i < names.GetSize(); ++i) use(names[i]);
//
// A storage is used by one thread at a time, like the strings it holds.
#pragma once

#include <cassert>
#include <utility>
#include <vector>

template <class T>
class zuStorage {
 public:
  zuStorage() = default;

  // Number of elements.
  unsigned int GetSize() const { return static_cast<unsigned int>(items_.size()); }
  bool IsEmpty() const { return items_.empty(); }

  // Appends a copy of `item` and returns its index. Throws std::bad_alloc
  // when the array cannot grow.
  unsigned int Add(const T& item) {
    items_.push_back(item);
    return GetSize() - 1;
  }

  // Element `index` (must be below GetSize()).
  T& operator[](unsigned int index) {
    assert(index < items_.size() && "zuStorage index out of range");
    return items_[index];
  }
  const T& operator[](unsigned int index) const {
    assert(index < items_.size() && "zuStorage index out of range");
    return items_[index];
  }

  // Removes element `index` (later elements move down); an index out of
  // range does nothing.
  void RemoveAt(unsigned int index) {
    if (index < items_.size()) items_.erase(items_.begin() + index);
  }

  // Removes every element.
  void RemoveAll() { items_.clear(); }

  // Makes room for `count` elements without changing the size.
  void Reserve(unsigned int count) { items_.reserve(count); }

 private:
  std::vector<T> items_;
};
