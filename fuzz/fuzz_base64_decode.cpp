// Decodes arbitrary text as Base64, whole and cut into pieces, from char
// and char16_t units, scalar and with the AVX2 blocks.
//
// Input: a control byte (bit 0: AVX2 blocks on), three cut lengths, then
// the text. Checks: the char16_t and char decoders agree; where the whole
// text decodes, every cutting gives the same bytes (feeding stops once a
// piece reached "=", the last tail is decoded whole) and never raises, and
// the bytes re-encode to a text that decodes back to them.
#include <cstddef>
#include <cstdint>
#include <string>

#include "zu/core/zuException.h"
#include "zu/stream/internal/zuBase64Simd.h"
#include "zu/stream/zuBase64.h"

namespace {

// The decoding of `text`, or false when it raises.
template <class Unit>
bool decodeWhole(const std::basic_string<Unit>& text, std::string& bytes) {
  bytes.assign(Base64DecodeLength(static_cast<unsigned>(text.size())), '\0');
  unsigned length = 0;
  try {
    Base64Decode(bytes.data(), length, text.data(), static_cast<unsigned>(text.size()));
  } catch (const zuExFull&) {
    if (length != 0) __builtin_trap();
    return false;
  }
  bytes.resize(length);
  return true;
}

// The decoding of `text` fed in pieces of the given lengths (cycled).
template <class Unit>
bool decodeCut(const std::basic_string<Unit>& text, const uint8_t* cuts, std::string& bytes) {
  bytes.clear();
  std::basic_string<Unit> pending;
  std::size_t start = 0;
  try {
    for (int k = 0; start < text.size(); ++k) {
      const std::size_t piece = cuts[k % 3] + 1;
      pending.append(text, start, piece);
      start += piece;
      std::string out(Base64DecodeLength(static_cast<unsigned>(pending.size())), '\0');
      unsigned length = 0;
      int remainder = -1;
      Base64Decode(out.data(), length, pending.data(), static_cast<unsigned>(pending.size()),
                   &remainder);
      if (remainder < 0 || static_cast<std::size_t>(remainder) > pending.size()) {
        __builtin_trap();
      }
      bytes.append(out.data(), length);
      const bool ended = remainder == 0 && pending.find(Unit('=')) != pending.npos;
      pending.erase(0, pending.size() - remainder);
      if (ended) return true;
    }
    std::string tail;
    if (!decodeWhole(pending, tail)) return false;
    bytes += tail;
  } catch (const zuExFull&) {
    return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 4) return 0;
  zu::internal::setBase64Simd((data[0] & 1) != 0);
  const uint8_t* cuts = data + 1;
  const std::string text(reinterpret_cast<const char*>(data + 4), size - 4);
  const std::u16string wide(text.begin(), text.end());

  std::string whole;
  const bool decoded = decodeWhole(text, whole);
  std::string wideWhole;
  if (decodeWhole(wide, wideWhole) != decoded || (decoded && wideWhole != whole)) {
    __builtin_trap();
  }
  if (!decoded) return 0;

  std::string cut;
  if (!decodeCut(text, cuts, cut) || cut != whole) __builtin_trap();
  if (!decodeCut(wide, cuts, cut) || cut != whole) __builtin_trap();

  const zuString again =
      Base64Encode(whole.data(), static_cast<unsigned>(whole.size()), data[0] & 2);
  std::string back;
  if (!decodeWhole(std::string(again, again.Length()), back) || back != whole) {
    __builtin_trap();
  }
  return 0;
}
