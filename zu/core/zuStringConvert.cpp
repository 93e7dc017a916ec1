// The zuString members that move text in and out of other encodings through
// a zuCharConverter.
#include <cstring>
#include <new>

#include "zu/core/internal/zuStringBlock.h"
#include "zu/core/zuCharConverter.h"
#include "zu/core/zuException.h"
#include "zu/core/zuGxCharConverter.h"
#include "zu/core/zuString.h"

namespace {

// Zero bytes after converted text: a terminator for every encoding.
constexpr unsigned int kTerminatorBytes = 4;

const zuCharConverter& orDefault(const zuCharConverter* converter) {
  return converter != nullptr ? *converter : *zuCharConverter::Default();
}

// Bytes before the encoding's terminator: a 0 unit of the encoding's width.
unsigned int terminatedLength(const char* text, const zuCharConverter& converter) {
  const unsigned int width = converter.IsUTF32CodePage() ? 4 : converter.IsUTF16CodePage() ? 2 : 1;
  static const char kZeros[4] = {};
  unsigned int length = 0;
  while (std::memcmp(text + length, kZeros, width) != 0 && length <= zuString::kMaxLength) {
    length += width;
  }
  return length;
}

char* newBytes(unsigned int count) {
  char* bytes = new (std::nothrow) char[count];
  if (bytes == nullptr) throw zuExMemory();
  return bytes;
}

unsigned int worstSize(const zuCharConverter& converter, unsigned int inBytes) {
  const unsigned int worst = converter.Convert(nullptr, 0, zuCharConverter::UTF8(), "", inBytes);
  if (worst > zuString::kMaxLength) throw zuExMemory();
  return worst;
}

}  // namespace

zuString::zuString(const char* text, const zuCharConverter* converter, unsigned int threadId)
    : zuString() {
  if (text == nullptr) return;
  const zuCharConverter& from = orDefault(converter);
  *this = zuString(text, terminatedLength(text, from), &from, threadId);
}

zuString::zuString(const char* text, unsigned int length, const zuCharConverter* converter,
                   unsigned int threadId)
    : zuString() {
  if (text == nullptr) return;
  const zuCharConverter& from = orDefault(converter);
  if (from.IsUTF8CodePage()) {
    Assign(text, length, 0, threadId);
    return;
  }
  AssignConverted(text, length, from, worstSize(*zuCharConverter::UTF8(), length), threadId);
}

void zuString::AssignConverted(const char* text, unsigned int length, const zuCharConverter& from,
                               unsigned int blockBytes, unsigned int threadId) {
  zu::internal::zuStringData* block = NewBlock(blockBytes, threadId);
  char* chars = block->chars();
  unsigned int written = 0;
  try {
    written = zuCharConverter::UTF8()->Convert(chars, blockBytes, &from, text, length);
  } catch (...) {
    Adopt(block, 0);
    throw;
  }
  // Converted text may hold a NUL; the string ends there as a copy would.
  Adopt(block, static_cast<unsigned int>(strnlen(chars, written)));
}

char* zuString::GetAllocdChar(const char* encoding) const {
  unsigned int bytes = 0;
  return GetAllocdChar(encoding, bytes);
}

char* zuString::GetAllocdChar(const char* encoding, unsigned int& bytes) const {
  const zuGxCharConverter converter(encoding);
  return GetAllocdChar(&converter, bytes);
}

char* zuString::GetAllocdChar(const zuCharConverter* converter) const {
  unsigned int bytes = 0;
  return GetAllocdChar(converter, bytes);
}

char* zuString::GetAllocdChar(const zuCharConverter* converter, unsigned int& bytes) const {
  char* buffer = nullptr;
  unsigned int capacity = 0;
  bytes = CopyToChar(buffer, capacity, converter);
  return buffer;
}

unsigned int zuString::CopyToChar(char*& buffer, unsigned int& capacity,
                                  const zuCharConverter* converter) const {
  const zuCharConverter& to = orDefault(converter);
  const unsigned int needed = worstSize(to, Length()) + kTerminatorBytes;
  if (buffer == nullptr || capacity < needed) {
    char* grown = newBytes(needed);
    delete[] buffer;
    buffer = grown;
    capacity = needed;
  }
  const unsigned int written =
      to.Convert(buffer, capacity - kTerminatorBytes, zuCharConverter::UTF8(), *this, Length());
  std::memset(buffer + written, 0, kTerminatorBytes);
  return written;
}
