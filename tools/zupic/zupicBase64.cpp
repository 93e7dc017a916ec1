// zupic base64 encode / decode: standard input to standard output in
// bounded memory, through the library's resumable encoder and streamed
// decoder.
#include <cstdio>
#include <cstring>
#include <vector>

#include "tools/zupic/zupicCommands.h"
#include "zu/core/zuExErrItem.h"
#include "zu/core/zuException.h"
#include "zu/stream/zuBase64.h"

namespace zupic {

namespace {

// Bytes read per step when encoding: a multiple of 3, so that the parts
// join up without padding between them.
constexpr unsigned kEncodeChunk = 3 * 65536;
// Characters read per step when decoding.
constexpr unsigned kDecodeChunk = 1 << 16;

// Fills `buffer` from standard input; returns the bytes read, fewer only
// at the end of the input.
unsigned readFull(char* buffer, unsigned size) {
  unsigned have = 0;
  while (have < size) {
    const std::size_t got = std::fread(buffer + have, 1, size - have, stdin);
    if (got == 0) break;
    have += static_cast<unsigned>(got);
  }
  return have;
}

bool atInputEnd() {
  const int next = std::getc(stdin);
  if (next == EOF) return true;
  std::ungetc(next, stdin);
  return false;
}

int encode(bool lineBreaks) {
  std::vector<char> input(kEncodeChunk);
  std::vector<char> output(Base64EncodeLength(kEncodeChunk, 1) + 2);
  char spill[8];
  long bits = 0;
  long charCount = 0;
  for (bool last = false; !last;) {
    const unsigned got = readFull(input.data(), kEncodeChunk);
    last = got < kEncodeChunk || atInputEnd();
    if (got == 0) break;
    unsigned spillLen = 0;
    long outEnd = 0;
    Base64EncodePart(output.data(), input.data(), spill, spillLen, 0, bits, charCount, outEnd,
                     static_cast<unsigned>(output.size()), got, last, lineBreaks);
    std::fwrite(output.data(), 1, static_cast<std::size_t>(outEnd), stdout);
  }
  // As coreutils' base64: a final line feed ends broken lines only.
  if (lineBreaks && charCount > 0) std::fputc('\n', stdout);
  return kOk;
}

// Decodes `count` characters (with `remainder`: streamed) to standard
// output.
void decodePiece(const char* text, unsigned count, int* remainder) {
  static std::vector<char> bytes;
  bytes.resize(Base64DecodeLength(count));
  unsigned length = 0;
  Base64Decode(bytes.data(), length, text, count, remainder);
  std::fwrite(bytes.data(), 1, length, stdout);
}

int decode() {
  // The characters of an incomplete group are kept in front of the next
  // piece. A piece holding "=" ends the data: it is decoded whole, so that
  // the result and its errors are those of decoding the whole input.
  std::vector<char> pending(kDecodeChunk + 8);
  unsigned kept = 0;
  try {
    for (;;) {
      const unsigned got = readFull(pending.data() + kept, kDecodeChunk);
      const unsigned count = kept + got;
      if (got == 0 || std::memchr(pending.data() + kept, '=', got) != nullptr) {
        decodePiece(pending.data(), count, nullptr);
        return kOk;
      }
      int remainder = 0;
      decodePiece(pending.data(), count, &remainder);
      std::memmove(pending.data(), pending.data() + count - remainder, remainder);
      kept = static_cast<unsigned>(remainder);
    }
  } catch (zuExFull& error) {
    std::fflush(stdout);
    error.Resolve();
    std::fprintf(stderr, "zupic: error %u: %s\n", static_cast<unsigned>(error.FirstResId()),
                 static_cast<const char*>(error[0].Text()));
  }
  return kNoMatch;
}

}  // namespace

int runBase64(bool encoding, bool lineBreaks) {
  static char outputBuffer[1 << 20];
  std::setvbuf(stdout, outputBuffer, _IOFBF, sizeof outputBuffer);
  const int status = encoding ? encode(lineBreaks) : decode();
  std::fflush(stdout);
  return status;
}

}  // namespace zupic
