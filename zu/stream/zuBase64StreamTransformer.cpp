#include "zu/stream/zuBase64StreamTransformer.h"

#include <cassert>
#include <cstring>

#include "zu/stream/zuBase64.h"

namespace {

// Bytes read beneath per step: a multiple of 3, on the stack.
constexpr unsigned kChunk = 3 * 8192;

// The smallest multiple of 3 whose encoding with line breaks has at least
// `room` characters, at most kChunk. 19 * 3 bytes give 77 characters with
// their line feed, so the first guess is at most two groups short.
unsigned bytesFor(unsigned room) {
  unsigned groups = static_cast<unsigned>(uint64_t{room} * 19 / 77);
  if (groups >= kChunk / 3) return kChunk;
  while (Base64EncodeLength(groups * 3, 1) < room) ++groups;
  return groups < kChunk / 3 ? groups * 3 : kChunk;
}

}  // namespace

zuBase64StreamTransformer::zuBase64StreamTransformer() {
  Restart();
}

zuBase64StreamTransformer::zuBase64StreamTransformer(const zuBase64StreamTransformer& other)
    : zuStreamFileTransformer(other) {
  *this = other;
}

zuBase64StreamTransformer& zuBase64StreamTransformer::operator=(
    const zuBase64StreamTransformer& other) {
  std::memcpy(spill_, other.spill_, sizeof spill_);
  spillStart_ = other.spillStart_;
  spillEnd_ = other.spillEnd_;
  bits_ = other.bits_;
  charCount_ = other.charCount_;
  finished_ = other.finished_;
  return *this;
}

zuBase64StreamTransformer::~zuBase64StreamTransformer() = default;

unsigned zuBase64StreamTransformer::Read(void* buffer, unsigned size) {
  if (buffer == nullptr) return 0;
  char* const out = static_cast<char*>(buffer);
  unsigned written = spillEnd_ - spillStart_ < size ? spillEnd_ - spillStart_ : size;
  std::memcpy(out, spill_ + spillStart_, written);
  spillStart_ += written;
  if (spillStart_ < spillEnd_) return written;
  spillStart_ = spillEnd_ = 0;

  unsigned char input[kChunk];
  zuStreamFileTransformer* const beneath = Next();
  while (written < size && !finished_ && beneath != nullptr) {
    const unsigned room = size - written;
    const unsigned wanted = bytesFor(room);
    unsigned have = 0;
    bool end = false;
    while (have < wanted) {
      const unsigned got = beneath->Read(input + have, wanted - have);
      if (got == 0) {
        end = true;
        break;
      }
      have += got;
    }
    end = end || beneath->AtEof() != 0;
    finished_ = end;
    if (have == 0) break;
    unsigned spilled = 0;
    long outEnd = 0;
    Base64EncodePart(out, input, spill_, spilled, written, bits_, charCount_, outEnd, room, have,
                     end ? 1 : 0, 1);
    assert(spilled <= kSpill && "the request was sized to leave at most a group over");
    written = static_cast<unsigned>(outEnd);
    spillEnd_ = spilled;
  }
  return written;
}

int zuBase64StreamTransformer::AtEof() const {
  return spillStart_ == spillEnd_ && zuStreamFileTransformer::AtEof() ? 1 : 0;
}

void zuBase64StreamTransformer::SetPosition(const zuFilePosition& position) {
  Restart();
  zuStreamFileTransformer::SetPosition(position);
}

void zuBase64StreamTransformer::ChangeSize(const zuFilePosition& size) {
  Restart();
  zuStreamFileTransformer::ChangeSize(size);
}

void zuBase64StreamTransformer::Initialize(zuStreamFileTransformer* next) {
  Restart();
  zuStreamFileTransformer::Initialize(next);
}

zuStreamFileTransformer* zuBase64StreamTransformer::Clone() const {
  return new zuBase64StreamTransformer(*this);
}

void zuBase64StreamTransformer::Restart() {
  spillStart_ = spillEnd_ = 0;
  bits_ = 0;
  charCount_ = 0;
  finished_ = false;
}
