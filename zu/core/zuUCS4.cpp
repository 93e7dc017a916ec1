#include "zu/core/zuUCS4.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "zu/core/internal/zuCodeUnitArray.h"
#include "zu/core/zuUnicode.h"

namespace {

constexpr uint32_t kFirstCapacity = 8;
// Room reserved per code point for the UTF-8 form, enough for any sequence
// form a code point can take.
constexpr uint32_t kUtf8BytesPerCodePoint = 6;

// Clamps a (start, length) range to `size`, as zuString does with bytes.
void resolveRange(uint32_t size, unsigned int& start, unsigned int& length) {
  start = std::min(start, size);
  length = std::min(length, size - start);
}

zuString toUTF8(const unsigned int* codePoints, uint32_t count) {
  zuString text;
  if (count == 0) {
    text = zuString::EmptyString();
    return text;
  }
  // A worst case beyond the longest string is counted exactly instead.
  unsigned int reserve = count <= zuString::kMaxLength / kUtf8BytesPerCodePoint
                             ? count * kUtf8BytesPerCodePoint
                             : ConvertToUTF8(nullptr, 0, codePoints, count);
  reserve = std::min(reserve, zuString::kMaxLength);
  char* bytes = text.ReAlloc(reserve, 0);
  text.SetLength(ConvertToUTF8(bytes, reserve, codePoints, count));
  return text;
}

}  // namespace

zuUCS4::zuUCS4() : data_(nullptr), length_(0), capacity_(0) {
  Reserve(kFirstCapacity);
}

zuUCS4::zuUCS4(const unsigned int* text) : zuUCS4() {
  *this += text;
}

zuUCS4::zuUCS4(const unsigned int* text, unsigned int count) : zuUCS4() {
  Append(text, count);
}

zuUCS4::zuUCS4(const zuString& text) : zuUCS4() {
  Append(text);
}

zuUCS4::zuUCS4(const zuUCS4& other) : zuUCS4() {
  Append(other.data_, other.length_);
  text_ = other.text_;
}

zuUCS4& zuUCS4::operator=(const zuUCS4& other) {
  if (this != &other) {
    length_ = 0;
    Append(other.data_, other.length_);
    text_ = other.text_;
  }
  return *this;
}

zuUCS4::~zuUCS4() {
  delete[] data_;
}

void zuUCS4::Reserve(uint32_t count) {
  if (count <= capacity_ && data_ != nullptr) return;
  uint32_t capacity = std::max(capacity_, kFirstCapacity);
  while (capacity < count) capacity = capacity > UINT32_MAX / 2 ? count : capacity * 2;
  auto* data =
      zu::internal::newCodeUnitArray<unsigned int>(static_cast<unsigned long>(capacity) + 1);
  if (data_ != nullptr) std::memcpy(data, data_, length_ * sizeof *data_);
  data[length_] = 0;
  delete[] data_;
  data_ = data;
  capacity_ = capacity;
}

void zuUCS4::Append(const unsigned int* text, unsigned int count) {
  if (text == nullptr || count == 0) return;
  if (count > UINT32_MAX - 1 - length_) throw zuExMemory();
  // `text` may lie in this array (`a += a`), which Reserve may move.
  const bool own = std::less_equal<const unsigned int*>()(data_, text) &&
                   std::less<const unsigned int*>()(text, data_ + length_);
  const size_t offset = own ? static_cast<size_t>(text - data_) : 0;
  Reserve(length_ + count);
  std::memmove(data_ + length_, own ? data_ + offset : text, count * sizeof *data_);
  length_ += count;
  data_[length_] = 0;
  Changed();
}

void zuUCS4::Append(const zuString& text) {
  unsigned int pos = 0;
  while (pos < text.Length()) {
    const unsigned int codePoint = text.UniChar(pos);
    if (codePoint != 0) *this += codePoint;
  }
}

zuUCS4& zuUCS4::operator+=(const zuUCS4& other) {
  Append(other.data_, other.length_);
  return *this;
}

zuUCS4& zuUCS4::operator+=(const zuString& text) {
  Append(text);
  return *this;
}

zuUCS4& zuUCS4::operator+=(const unsigned int* text) {
  Append(text, zuUniCharLength(text));
  return *this;
}

zuUCS4& zuUCS4::operator+=(unsigned int codePoint) {
  Append(&codePoint, 1);
  return *this;
}

void zuUCS4::Swallow(unsigned int start, unsigned int length) {
  resolveRange(length_, start, length);
  if (length == 0) return;
  std::memmove(data_ + start, data_ + start + length,
               (length_ - start - length + 1) * sizeof *data_);
  length_ -= length;
  Changed();
}

zuUCS4 zuUCS4::Substring(unsigned int start, unsigned int length) const {
  resolveRange(length_, start, length);
  return zuUCS4(data_ + start, length);
}

zuString zuUCS4::ZUSubstring(unsigned int start, unsigned int length) const {
  resolveRange(length_, start, length);
  return toUTF8(data_ + start, length);
}

void zuUCS4::Empty() {
  length_ = 0;
  data_[0] = 0;
  Changed();
}

zuUCS4::operator const zuString&() const {
  if (text_.IsNull()) text_ = toUTF8(data_, length_);
  return text_;
}

bool zuUCS4::operator==(const zuUCS4& other) const {
  return length_ == other.length_ && std::memcmp(data_, other.data_, length_ * sizeof *data_) == 0;
}

bool zuUCS4::operator==(const zuString& other) const {
  const zuString& text = *this;
  return text.Length() == other.Length() &&
         std::memcmp(static_cast<const char*>(text), static_cast<const char*>(other),
                     text.Length()) == 0;
}

void zuUCS4::ByteSwap(unsigned int* data, unsigned int count) {
  for (unsigned int i = 0; i < count; ++i) data[i] = __builtin_bswap32(data[i]);
}
