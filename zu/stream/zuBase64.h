// Base64 (RFC 4648: "A"-"Z", "a"-"z", "0"-"9", "+", "/", "=" padding), whole
// buffers and in parts.
//
//   zuString text = Base64Encode("Man", 3, 0);            // "TWFu"
//   char bytes[3];
//   unsigned length = 0;
//   Base64Decode(bytes, length, "TWFu", 4, nullptr);      // "Man", length 3
//
// Encoding with `lineBreaks` non-zero puts a line feed (byte 10, no carriage
// return) before the input byte that follows each 76th encoded character,
// so that a text never ends with a line feed. Encoding never fails.
//
// Decoding skips tab, line feed, carriage return and space, and stops at the
// first "=": whatever follows it, even bytes outside the alphabet, is
// ignored. Any other byte outside the alphabet before that point raises
// zuExFull with message 16777 (zuMessageIds::kInvalidBase64); so do, when no
// `remainder` is asked for, bits left over at the end that are not all zero
// ("TWF" and "TW==" raise, "QQ" gives "A"). On 16777 `outLen` is 0; the
// bytes already written stay in `out`. A decoder never writes more than
// Base64DecodeLength(n) bytes. A UTF-16 unit above 0xFF and a negative
// `signed char` are outside the alphabet.
//
// Streamed decoding passes `remainder`: the call decodes the complete
// 4-character groups and sets `*remainder` to the number of characters
// after the last complete group, which the caller puts in front of the next
// data (decoding "TWFuTW" gives "Man" and 2). It stops early after a group
// when fewer than 4 characters remain, or when exactly 4 remain and they
// neither hold an "=" before their first white space nor are 4 characters
// without white space; input that ends inside a group leaves that group for
// the next call. `*remainder` is 0 at a group boundary and when an "=" ended
// the data; feed nothing after that. Decode the last tail without
// `remainder`, so that a truncated or non-canonical end is refused.
//
// A null data pointer counts as length 0. Lengths are computed in 64 bits.
// Every function is reentrant and may run on any thread.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

// The number of characters that encoding `n` bytes gives: 0 for n = 0, else
// L = 4 * ceil(n / 3), plus (L - 1) / 76 line feeds when `lineBreaks` is
// non-zero; the NUL that an empty result gets is not counted. Saturates at
// 4294967295.
ZU_EXPORT unsigned Base64EncodeLength(unsigned n, int lineBreaks);
// An upper bound for the bytes that decoding `n` characters gives:
// ((n + 3) / 4) * 3, computed in 64 bits (4294967295 gives 3221225472).
ZU_EXPORT unsigned Base64DecodeLength(unsigned n);

// Writes the encoding of the `n` bytes at `in` into `out`, which has room
// for Base64EncodeLength(n, lineBreaks) units (one unit per character).
// An empty input writes a single NUL; a non-empty result is not terminated.
ZU_EXPORT void Base64Encode(char* out, const void* in, unsigned n, int lineBreaks);
ZU_EXPORT void Base64Encode(signed char* out, const void* in, unsigned n, int lineBreaks);
ZU_EXPORT void Base64Encode(char16_t* out, const void* in, unsigned n, int lineBreaks);
// The encoding as a string; empty for no input. Throws zuExMemory when the
// result is longer than a zuString holds (zuString::kMaxLength).
ZU_EXPORT zuString Base64Encode(const void* in, unsigned n, int lineBreaks);

// Decodes the `n` characters at `in` into `out` (room for
// Base64DecodeLength(n) bytes) and sets `outLen` to the bytes written.
// `remainder` null: the whole text, strictly; non-null: streamed (see
// above). Throws zuExFull(16777).
ZU_EXPORT void Base64Decode(void* out, unsigned& outLen, const char* in, unsigned n,
                            int* remainder = nullptr);
ZU_EXPORT void Base64Decode(void* out, unsigned& outLen, const unsigned char* in, unsigned n,
                            int* remainder = nullptr);
ZU_EXPORT void Base64Decode(void* out, unsigned& outLen, const signed char* in, unsigned n,
                            int* remainder = nullptr);
ZU_EXPORT void Base64Decode(void* out, unsigned& outLen, const char16_t* in, unsigned n,
                            int* remainder = nullptr);
// The string's bytes, strictly (no remainder). Throws zuExFull(16777).
ZU_EXPORT void Base64Decode(void* out, unsigned& outLen, const zuString& in);
// Decodes the string's bytes into a new block that the caller frees with
// delete[]; never null (a block of at least 1 byte). When the block first
// taken is more than twice the result, the result is moved into one of
// exactly its size. Throws zuExFull(16777), having freed the block, and
// zuExMemory when no block can be had.
ZU_EXPORT char* Base64Decode(unsigned& outLen, const zuString& in, int* remainder = nullptr);

// Resumable encoding of one part of a longer input. Characters go to
// out[outPos], out[outPos + 1], ... while fewer than `outCapacity` have been
// written there; every further character (line feeds too) goes to `spill`,
// whose length `spillLen` is counted from 0 on each call, so `spill` needs
// room for everything beyond `outCapacity`. `charCount` (encoded characters
// so far, line feeds not counted) carries the line position from part to
// part; `bits` receives the encoder's accumulator (the last three input
// bytes) and does not change the output. Pending bits do not carry over:
// every part but the last must be a multiple of 3 bytes long (a shorter
// part's last character is written without padding). "=" padding is written
// only when `final` is non-zero. `outEnd` receives outPos plus the
// characters written into `out`. A null `in` or `inLen` 0 writes a NUL at
// out[outPos] (not counted) and sets outEnd = outPos and spillLen = 0.
ZU_EXPORT void Base64EncodePart(char* out, const void* in, char* spill, unsigned& spillLen,
                                unsigned outPos, long& bits, long& charCount, long& outEnd,
                                unsigned outCapacity, unsigned inLen, int final, int lineBreaks);
