#include "zu/core/zuStringLookup.h"

#include <cstring>
#include <new>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"

namespace {

const zuString** newNames(uint32_t capacity) {
  auto* names = new (std::nothrow) const zuString*[capacity];
  if (names == nullptr) throw zuExMemory();
  return names;
}

}  // namespace

zuStringLookup::zuStringLookup(unsigned int capacity)
    : names_(newNames(capacity != 0 ? capacity : 1)),
      size_(0),
      capacity_(capacity != 0 ? capacity : 1) {}

zuStringLookup::~zuStringLookup() {
  delete[] names_;
}

unsigned int zuStringLookup::add(const zuString* name) {
  if (name == nullptr) ZuExThrow(zuMessageIds::kInvalidArgument);
  if (size_ == capacity_) grow();
  names_[size_] = name;
  return size_++;
}

void zuStringLookup::grow() {
  if (capacity_ > UINT32_MAX / 2) throw zuExMemory();
  const uint32_t newCapacity = capacity_ * 2;
  const zuString** names = newNames(newCapacity);
  std::memcpy(names, names_, size_ * sizeof(*names));
  delete[] names_;
  names_ = names;
  capacity_ = newCapacity;
}

const zuString* zuStringLookup::operator[](unsigned int index) const {
  return index < size_ ? names_[index] : nullptr;
}

int zuStringLookup::findText(const char* text, uint32_t length, unsigned int& index) const {
  for (index = 0; index < size_; ++index) {
    const zuString& name = *names_[index];
    if (!name.IsNull() && name.Length() == length &&
        std::memcmp(static_cast<const char*>(name), text, length) == 0) {
      return 1;
    }
  }
  return 0;
}

int zuStringLookup::find(const char* text, unsigned int& index) const {
  if (text == nullptr) {
    index = size_;
    return 0;
  }
  return findText(text, zuString::StringLength(text), index);
}

const zuString* zuStringLookup::findByName(const char* text) const {
  unsigned int index = 0;
  return find(text, index) ? names_[index] : nullptr;
}

const zuString* zuStringLookup::findByName(const zuString& text) const {
  unsigned int index = 0;
  if (text.IsNull()) return nullptr;
  return findText(text, text.Length(), index) ? names_[index] : nullptr;
}

int zuStringLookup::findByAddress(const char* chars, unsigned int& index) const {
  for (index = 0; index < size_; ++index) {
    if (!names_[index]->IsNull() && static_cast<const char*>(*names_[index]) == chars) return 1;
  }
  return 0;
}

int zuStringLookup::resolveName(zuString& name) const {
  unsigned int index = 0;
  if (name.IsNull() || !findText(name, name.Length(), index)) return 0;
  name = *names_[index];
  return 1;
}
