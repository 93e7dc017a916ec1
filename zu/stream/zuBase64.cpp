#include "zu/stream/zuBase64.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/stream/internal/zuBase64Simd.h"
#include "zu/stream/internal/zuStreamAllocation.h"

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr unsigned kLineLength = 76;
constexpr uint64_t kMaxUnsigned = 0xFFFFFFFFu;

// ----------------------------------------------------------------------------
// Encoding

// The two characters of every 12-bit value, the first in the low byte.
constexpr std::array<uint16_t, 4096> makePairs() {
  std::array<uint16_t, 4096> pairs{};
  for (unsigned value = 0; value < 4096; ++value) {
    pairs[value] = static_cast<uint16_t>(static_cast<unsigned char>(kAlphabet[value >> 6]) |
                                         static_cast<unsigned char>(kAlphabet[value & 63]) << 8);
  }
  return pairs;
}
constexpr std::array<uint16_t, 4096> kPairs = makePairs();

uint64_t encodedLength(uint64_t n, bool lineBreaks) {
  if (n == 0) return 0;
  const uint64_t length = (n + 2) / 3 * 4;
  return lineBreaks ? length + (length - 1) / kLineLength : length;
}

template <class Unit>
inline void putPair(Unit* out, unsigned value) {
  const uint16_t pair = kPairs[value];
  out[0] = static_cast<Unit>(pair & 0xFF);
  out[1] = static_cast<Unit>(pair >> 8);
}

// Encodes `groups` whole 3-byte groups without line breaks. Byte output
// goes 8 groups at a time through AVX2 where there is, then takes two
// groups from one 8-byte load and stores their 8 characters at once; the
// loads need a few bytes behind the groups they encode, so the last groups
// are left to the next step.
template <class Unit>
Unit* encodeRun(Unit* out, const uint8_t* in, std::size_t groups) {
  if constexpr (sizeof(Unit) == 1) {
    if (groups >= 11 && zu::internal::base64SimdEnabled()) {
      const std::size_t blocks = (groups - 3) / 8;
      zu::internal::base64EncodeBlocksAvx2(out, in, blocks);
      out += 32 * blocks;
      in += 24 * blocks;
      groups -= 8 * blocks;
    }
    for (; groups >= 3; groups -= 2, in += 6, out += 8) {
      uint64_t word;
      std::memcpy(&word, in, 8);
      word = __builtin_bswap64(word);
      const uint64_t chars = uint64_t{kPairs[(word >> 52) & 0xFFF]} |
                             uint64_t{kPairs[(word >> 40) & 0xFFF]} << 16 |
                             uint64_t{kPairs[(word >> 28) & 0xFFF]} << 32 |
                             uint64_t{kPairs[(word >> 16) & 0xFFF]} << 48;
      std::memcpy(out, &chars, 8);
    }
  }
  for (; groups > 0; --groups, in += 3, out += 4) {
    const unsigned value = unsigned{in[0]} << 16 | unsigned{in[1]} << 8 | in[2];
    putPair(out, value >> 12);
    putPair(out + 2, value & 0xFFF);
  }
  return out;
}

// The encoder's carried state: the characters written so far (line feeds
// not counted) and whether lines are broken.
struct EncodeState {
  uint64_t count;
  bool lineBreaks;

  bool breakDue() const { return lineBreaks && count != 0 && count % kLineLength == 0; }
};

// Encodes whole groups from a group boundary (count a multiple of 4), line
// by line.
template <class Unit>
Unit* encodeGroups(Unit* out, const uint8_t* in, std::size_t groups, EncodeState& state) {
  if (!state.lineBreaks) {
    state.count += 4 * uint64_t{groups};
    return encodeRun(out, in, groups);
  }
  while (groups > 0) {
    if (state.breakDue()) *out++ = static_cast<Unit>('\n');
    const std::size_t room = (kLineLength - state.count % kLineLength) / 4;
    const std::size_t run = groups < room ? groups : room;
    out = encodeRun(out, in, run);
    in += 3 * run;
    groups -= run;
    state.count += 4 * uint64_t{run};
  }
  return out;
}

// The byte-by-byte walk: a line feed before a byte when one is due, then
// one character per complete 6 bits. Serves the last one or two bytes, and
// parts that start inside a group.
template <class Unit>
Unit* encodeBytes(Unit* out, const uint8_t* in, std::size_t n, EncodeState& state, unsigned& acc,
                  unsigned& pending) {
  for (std::size_t i = 0; i < n; ++i) {
    if (state.breakDue()) *out++ = static_cast<Unit>('\n');
    acc = (acc << 8 | in[i]) & 0xFFFFFF;
    pending += 8;
    while (pending >= 6) {
      pending -= 6;
      *out++ = static_cast<Unit>(kAlphabet[(acc >> pending) & 63]);
      ++state.count;
    }
  }
  return out;
}

// The character for the 2 or 4 bits left over, then the padding.
template <class Unit>
Unit* encodeEnd(Unit* out, std::size_t n, EncodeState& state, unsigned acc, unsigned pending,
                bool pad) {
  if (pending == 0) return out;
  *out++ = static_cast<Unit>(kAlphabet[(acc << (6 - pending)) & 63]);
  ++state.count;
  if (pad) {
    *out++ = static_cast<Unit>('=');
    ++state.count;
    if (n % 3 == 1) {
      *out++ = static_cast<Unit>('=');
      ++state.count;
    }
  }
  return out;
}

// The one walk behind every encoder: whole groups in runs, the rest byte by
// byte. Returns the end of the output.
template <class Unit>
Unit* encode(Unit* out, const uint8_t* in, std::size_t n, EncodeState& state, bool pad) {
  unsigned acc = 0;
  unsigned pending = 0;
  std::size_t done = 0;
  if (state.count % 4 == 0) {
    const std::size_t groups = n / 3;
    out = encodeGroups(out, in, groups, state);
    done = groups * 3;
  }
  out = encodeBytes(out, in + done, n - done, state, acc, pending);
  return encodeEnd(out, n, state, acc, pending, pad);
}

template <class Unit>
void encodeWhole(Unit* out, const void* in, unsigned n, int lineBreaks) {
  if (in == nullptr || n == 0) {
    *out = Unit{0};
    return;
  }
  EncodeState state{0, lineBreaks != 0};
  encode(out, static_cast<const uint8_t*>(in), n, state, true);
}

// ----------------------------------------------------------------------------
// Decoding

constexpr uint8_t kSpace = 64;  // tab, line feed, carriage return, space
constexpr uint8_t kPad = 65;    // "="
constexpr uint8_t kBad = 255;   // anything else outside the alphabet

constexpr std::array<uint8_t, 256> makeValues() {
  std::array<uint8_t, 256> values{};
  for (auto& value : values) value = kBad;
  for (unsigned i = 0; i < 64; ++i) values[static_cast<unsigned char>(kAlphabet[i])] = i;
  values['\t'] = values['\n'] = values['\r'] = values[' '] = kSpace;
  values['='] = kPad;
  return values;
}
constexpr std::array<uint8_t, 256> kValues = makeValues();

// The fast path's tables: character k of a group, already shifted to its
// place in the group's three bytes (stored little-endian, first byte low);
// characters outside the alphabet set kBadGroup.
constexpr uint32_t kBadGroup = 0x01000000;
constexpr std::array<std::array<uint32_t, 256>, 4> makeGroupTables() {
  std::array<std::array<uint32_t, 256>, 4> tables{};
  for (unsigned c = 0; c < 256; ++c) {
    const uint32_t v = kValues[c];
    if (v > 63) {
      for (auto& table : tables) table[c] = kBadGroup;
      continue;
    }
    tables[0][c] = v << 2;
    tables[1][c] = v >> 4 | (v & 0xF) << 12;
    tables[2][c] = (v >> 2) << 8 | (v & 3) << 22;
    tables[3][c] = v << 16;
  }
  return tables;
}
constexpr std::array<std::array<uint32_t, 256>, 4> kGroup = makeGroupTables();

// The table index of an input unit; a unit above 0xFF gets an index outside
// the alphabet.
template <class Unit>
inline unsigned indexOf(Unit unit) {
  if constexpr (sizeof(Unit) == 1) {
    return static_cast<unsigned char>(unit);
  } else {
    return unit <= 0xFF ? unsigned{unit} : 0x80u;
  }
}

template <class Unit>
inline uint32_t groupBits(const Unit* in) {
  return kGroup[0][indexOf(in[0])] | kGroup[1][indexOf(in[1])] | kGroup[2][indexOf(in[2])] |
         kGroup[3][indexOf(in[3])];
}

// Whether the walk goes on after a group when exactly 4 characters remain:
// an "=" among them before the first white space, or 4 characters without
// white space.
template <class Unit>
bool lastFourContinue(const Unit* rest) {
  for (int k = 0; k < 4; ++k) {
    const uint8_t value = kValues[indexOf(rest[k])];
    if (value == kSpace) return false;
    if (value == kPad) return true;
  }
  return true;
}

// The one walk behind every decoder. Returns the bytes written; with
// `remainder` sets it as the header describes.
template <class Unit>
std::size_t decode(uint8_t* out, const Unit* in, std::size_t n, int* remainder) {
  const bool streamed = remainder != nullptr;
  // The fast paths write past the bytes of their last group (1 byte per
  // group, 8 per AVX2 block); they run only while enough characters remain
  // behind it to keep those bytes inside Base64DecodeLength(n), and, when
  // streamed, more than 4, so that no stop check is due.
  const std::size_t fastMargin = streamed ? 9 : 8;
  const std::size_t blockMargin = streamed ? 45 : 44;
  const bool simd = sizeof(Unit) == 1 && zu::internal::base64SimdEnabled();
  uint8_t* const start = out;
  std::size_t i = 0;
  std::size_t tailStart = 0;  // index after the last complete group
  unsigned acc = 0;
  unsigned chars = 0;  // characters of the current group
  for (;;) {
    if (chars == 0 && i + fastMargin <= n) {
      const std::size_t before = i;
      if constexpr (sizeof(Unit) == 1) {
        if (simd && i + blockMargin <= n) {
          const std::size_t done = zu::internal::base64DecodeBlocksAvx2(
              out, reinterpret_cast<const uint8_t*>(in + i), (n - i - blockMargin) / 32 + 1);
          out += 24 * done;
          i += 32 * done;
        }
      }
      while (i + 4 + fastMargin <= n) {
        const uint32_t first = groupBits(in + i);
        const uint32_t second = groupBits(in + i + 4);
        if ((first | second) & kBadGroup) break;
        std::memcpy(out, &first, 4);
        std::memcpy(out + 3, &second, 4);
        out += 6;
        i += 8;
      }
      while (i + fastMargin <= n) {
        const uint32_t bits = groupBits(in + i);
        if (bits & kBadGroup) break;
        std::memcpy(out, &bits, 4);
        out += 3;
        i += 4;
      }
      if (i != before) tailStart = i;
    }
    if (i >= n) break;
    const uint8_t value = kValues[indexOf(in[i])];
    if (value < 64) {
      acc = acc << 6 | value;
      if (++chars == 4) {
        out[0] = static_cast<uint8_t>(acc >> 16);
        out[1] = static_cast<uint8_t>(acc >> 8);
        out[2] = static_cast<uint8_t>(acc);
        out += 3;
        chars = 0;
        acc = 0;
        tailStart = i + 1;
        const std::size_t rest = n - tailStart;
        if (streamed && (rest < 4 || (rest == 4 && !lastFourContinue(in + tailStart)))) {
          *remainder = static_cast<int>(rest);
          return static_cast<std::size_t>(out - start);
        }
      }
    } else if (value == kPad) {
      break;
    } else if (value != kSpace) {
      ZuExThrow(zuMessageIds::kInvalidBase64);
    }
    ++i;
  }
  if (streamed && i >= n && chars != 0) {
    // The input ended inside a group: it waits for the next call.
    *remainder = static_cast<int>(n - tailStart);
    return static_cast<std::size_t>(out - start);
  }
  // The bytes of an incomplete group ended by "=" or by the end of the text.
  unsigned dangling = 0;
  if (chars == 1) {
    dangling = acc;
  } else if (chars == 2) {
    *out++ = static_cast<uint8_t>(acc >> 4);
    dangling = acc & 0xF;
  } else if (chars == 3) {
    *out++ = static_cast<uint8_t>(acc >> 10);
    *out++ = static_cast<uint8_t>(acc >> 2);
    dangling = acc & 3;
  }
  if (streamed) {
    *remainder = 0;
  } else if (dangling != 0) {
    ZuExThrow(zuMessageIds::kInvalidBase64);
  }
  return static_cast<std::size_t>(out - start);
}

template <class Unit>
void decodeInto(void* out, unsigned& outLen, const Unit* in, unsigned n, int* remainder) {
  outLen = 0;
  if (remainder != nullptr) *remainder = 0;
  if (in == nullptr || n == 0) return;
  outLen = static_cast<unsigned>(decode(static_cast<uint8_t*>(out), in, n, remainder));
}

}  // namespace

unsigned Base64EncodeLength(unsigned n, int lineBreaks) {
  const uint64_t length = encodedLength(n, lineBreaks != 0);
  return static_cast<unsigned>(length < kMaxUnsigned ? length : kMaxUnsigned);
}

unsigned Base64DecodeLength(unsigned n) {
  return static_cast<unsigned>((uint64_t{n} + 3) / 4 * 3);
}

void Base64Encode(char* out, const void* in, unsigned n, int lineBreaks) {
  encodeWhole(out, in, n, lineBreaks);
}

void Base64Encode(signed char* out, const void* in, unsigned n, int lineBreaks) {
  encodeWhole(reinterpret_cast<char*>(out), in, n, lineBreaks);
}

void Base64Encode(char16_t* out, const void* in, unsigned n, int lineBreaks) {
  encodeWhole(out, in, n, lineBreaks);
}

zuString Base64Encode(const void* in, unsigned n, int lineBreaks) {
  if (in == nullptr || n == 0) return zuString::EmptyString();
  const uint64_t length = encodedLength(n, lineBreaks != 0);
  if (length > zuString::kMaxLength) throw zuExMemory();
  constexpr std::size_t kOnStack = 1024;
  char onStack[kOnStack];
  std::unique_ptr<char[]> onHeap;
  char* text = onStack;
  if (length > kOnStack) {
    onHeap.reset(new (std::nothrow) char[length]);
    if (!onHeap) throw zuExMemory();
    text = onHeap.get();
  }
  encodeWhole(text, in, n, lineBreaks);
  return zuString::FromBytes(text, static_cast<unsigned>(length));
}

void Base64Decode(void* out, unsigned& outLen, const char* in, unsigned n, int* remainder) {
  decodeInto(out, outLen, in, n, remainder);
}

void Base64Decode(void* out, unsigned& outLen, const unsigned char* in, unsigned n,
                  int* remainder) {
  decodeInto(out, outLen, in, n, remainder);
}

void Base64Decode(void* out, unsigned& outLen, const signed char* in, unsigned n, int* remainder) {
  decodeInto(out, outLen, in, n, remainder);
}

void Base64Decode(void* out, unsigned& outLen, const char16_t* in, unsigned n, int* remainder) {
  decodeInto(out, outLen, in, n, remainder);
}

void Base64Decode(void* out, unsigned& outLen, const zuString& in) {
  decodeInto(out, outLen, static_cast<const char*>(in), in.Length(), nullptr);
}

char* Base64Decode(unsigned& outLen, const zuString& in, int* remainder) {
  outLen = 0;
  const unsigned capacity = Base64DecodeLength(in.Length());
  char* block = zu::internal::streamNewChars(capacity);
  if (block == nullptr) throw zuExMemory();
  try {
    decodeInto(block, outLen, static_cast<const char*>(in), in.Length(), remainder);
  } catch (...) {
    delete[] block;
    outLen = 0;
    throw;
  }
  if (capacity > 2 * uint64_t{outLen}) {
    // A smaller block is only a saving: when none can be had, keep the first.
    char* exact = zu::internal::streamNewChars(outLen);
    if (exact != nullptr) {
      std::memcpy(exact, block, outLen);
      delete[] block;
      block = exact;
    }
  }
  return block;
}

void Base64EncodePart(char* out, const void* in, char* spill, unsigned& spillLen, unsigned outPos,
                      long& bits, long& charCount, long& outEnd, unsigned outCapacity,
                      unsigned inLen, int final, int lineBreaks) {
  spillLen = 0;
  char* const first = out + outPos;
  if (in == nullptr || inLen == 0) {
    *first = '\0';
    outEnd = static_cast<long>(outPos);
    return;
  }
  const uint8_t* bytes = static_cast<const uint8_t*>(in);
  EncodeState state{charCount > 0 ? static_cast<uint64_t>(charCount) : 0, lineBreaks != 0};

  // Groups whose characters surely fit go straight into `out`: g groups
  // take at most 4g characters and, with line breaks, g / 19 + 1 line feeds.
  std::size_t direct = 0;
  if (state.count % 4 == 0) {
    direct = state.lineBreaks ? (outCapacity == 0 ? 0 : (uint64_t{outCapacity} - 1) * 19 / 77)
                              : outCapacity / 4;
    if (direct > inLen / 3) direct = inLen / 3;
  }
  char* written = encodeGroups(first, bytes, direct, state);

  // The rest, a group at a time through a small buffer that is shared out
  // between `out` and `spill`.
  char* const outLimit = first + outCapacity;
  const auto place = [&](const char* text, const char* end) {
    for (; text < end && written < outLimit; ++text) *written++ = *text;
    for (; text < end; ++text) spill[spillLen++] = *text;
  };
  char piece[8];
  std::size_t done = direct * 3;
  unsigned acc = 0;
  unsigned pending = 0;
  for (; done + 3 <= inLen; done += 3) {
    place(piece, encodeBytes(piece, bytes + done, 3, state, acc, pending));
  }
  char* end = encodeBytes(piece, bytes + done, inLen - done, state, acc, pending);
  place(piece, encodeEnd(end, inLen, state, acc, pending, final != 0));

  unsigned long accumulator = static_cast<unsigned long>(bits);
  for (std::size_t k = inLen > 3 ? inLen - 3 : 0; k < inLen; ++k) {
    accumulator = (accumulator << 8 | bytes[k]) & 0xFFFFFF;
  }
  bits = static_cast<long>(accumulator);
  charCount = static_cast<long>(state.count);
  outEnd = static_cast<long>(outPos + (written - first));
}
