// Free functions that move text between UTF-8, UTF-16 and UCS-4 buffers.
//
// Decoders come in two kinds. The strict ones (zuUTF8toUCS, zuUTF16toUCS and
// the Convert... loops built on them) return -1, or stop, at the first
// malformed sequence and never read past the byte count they are given. The
// counting helpers (zuUTF8strlen, zuUTF8ByteLen, zuUTF16strlen, ...) never
// fail: they count sequence starts and step over whatever follows.
//
// UTF-16 held in byte buffers (const char*) carries its byte order as an
// eEndianType; UTF-16 in char16_t buffers is in host order.
//
//   unsigned int codePoints[16];
//   unsigned int count = ConvertFromUTF8(codePoints, 16, "a\xC3\xA9", 3);  // 2
//   char utf8[32];
//   unsigned int bytes = ConvertToUTF8(utf8, sizeof utf8, codePoints, count);  // 3
//
// ConvertFromUTF8, ConvertToUTF8 and zuUTF8toUTF16 take long texts 32 bytes
// (8 code points) at a time through AVX2 where the processor has it, with
// the same results as the plain walk.
//
// Every function is reentrant and may be called from any thread.
#pragma once

#include "zu/core/zuExport.h"

// Byte order of UTF-16 held in bytes. Functions that write or read without
// a byte-order mark treat eEndianUnknown as big-endian.
enum eEndianType {
  eEndianUnknown = 0,
  eEndianBig = 1,
  eEndianLittle = 2,
};

// ---------------------------------------------------------------- UTF-8

// Decodes the sequence at `in` into `out` and returns its byte count, or -1
// when `avail` is 0, a continuation byte is not 10xxxxxx, the sequence needs
// more than `avail` bytes, the lead byte starts no sequence form (a 10xxxxxx,
// 1111111x byte), or the value is over-long. Sequences of 5 and 6 bytes are
// accepted (values up to 0x7FFFFFFF). Reads at most `avail` bytes.
ZU_EXPORT int zuUTF8toUCS(unsigned int& out, const char* in, unsigned int avail);

// Encodes the low 21 bits of `codePoint` as 1 to 4 bytes at `out` and returns
// the count. `out` needs room for 4 bytes. Surrogate values are encoded as
// they stand (3 bytes each).
ZU_EXPORT int zuUCStoUTF8(char* out, unsigned int codePoint);

// Number of code points in the first `bytes` bytes: every byte that is not
// 10xxxxxx starts one. A leading byte-order mark (EF BB BF) is never counted,
// not even when it is the whole text. Never fails.
ZU_EXPORT unsigned int zuUTF8strlen(const char* text, unsigned int bytes);

// Number of bytes taken by the first `codePoints` code points of the
// NUL-terminated `text` (each a lead byte and the 10xxxxxx bytes after it);
// stops early at the NUL.
ZU_EXPORT unsigned int zuUTF8ByteLen(const char* text, unsigned int codePoints);

// Start of the code point before `p`: one byte back, then back over
// 10xxxxxx bytes, never before `start`. Returns `start` when `p` <= `start`.
ZU_EXPORT char* zuUTF8PrevChar(char* start, char* p);
ZU_EXPORT const char* zuUTF8PrevChar(const char* start, const char* p);

// Decodes `inBytes` bytes of UTF-8 into code points, skipping a leading
// byte-order mark when more than 3 bytes are given. Stops at the first
// sequence zuUTF8toUCS rejects, at a NUL, or when `outMax` code points are
// written. With a null `out` it only counts (`outMax` is then ignored).
// Returns the number of code points; writes no terminator. Entries after the
// returned count, up to `outMax`, may have been overwritten.
ZU_EXPORT unsigned int ConvertFromUTF8(unsigned int* out, unsigned int outMax, const char* in,
                                       unsigned int inBytes);

// Encodes `count` code points as UTF-8 with zuUCStoUTF8. Stops at a 0 code
// point or before a sequence that would not fit in `outBytes`. With a null
// `out` it only counts (`outBytes` is then ignored). Returns the number of
// bytes; writes no terminator.
ZU_EXPORT unsigned int ConvertToUTF8(char* out, unsigned int outBytes, const unsigned int* in,
                                     unsigned int count);

// 1 when `text` starts with the UTF-8 byte-order mark EF BB BF, else 0. Only
// the mark is looked at; a shorter NUL-terminated text is read no further
// than its NUL.
ZU_EXPORT int zuIsUTF8(const char* text);

// Number of code points before the first 0 in `text` (0 for a null pointer).
ZU_EXPORT unsigned int zuUniCharLength(const unsigned int* text);

// --------------------------------------------------------------- UTF-16

// eEndianBig for a text starting FE FF, eEndianLittle for FF FE, else
// eEndianUnknown. The second byte is read only when the first is FE or FF.
ZU_EXPORT int zuUTF16BOM(const char* text);

// Writes the byte-order mark for `type` (FF FE for little-endian, else
// FE FF) and returns 2.
ZU_EXPORT int zuUTF16AddBOM(char* out, eEndianType type);

// The 16-bit unit in the two bytes at `in` (little-endian for eEndianLittle,
// else big-endian).
ZU_EXPORT unsigned int zuUTF16Char(const char* in, eEndianType type);

// Decodes the character at `in` and returns its byte count: 2 for a unit
// outside D800..DFFF, 4 for a high surrogate followed by a low one (the
// combined code point). Returns -1 for a lone or reversed surrogate or when
// fewer bytes than needed are available. Reads at most `avail` bytes.
ZU_EXPORT int zuUTF16toUCS(unsigned int& out, const char* in, unsigned int avail, eEndianType type);

// Encodes `codePoint` at `out` and returns the byte count: 4 (a surrogate
// pair) from U+10000, 2 below, -1 above U+10FFFF. Big-endian unless `type`
// is eEndianLittle. `out` needs room for 4 bytes.
ZU_EXPORT int zuUCStoUTF16(char* out, unsigned int codePoint, eEndianType type);

// Number of characters in `bytes` bytes (odd last byte ignored; a negative
// count means up to the first 0 unit). A leading byte-order mark (FE FF or
// FF FE) is never counted, whatever `type` says; only when `type` is
// eEndianUnknown does it decide the order (big-endian without one). A
// surrogate pair counts once, anything else one per unit.
ZU_EXPORT unsigned int zuUTF16strlen(const char* text, eEndianType type, int bytes);

// Start of the character after the one at `p` (2 or 4 bytes on), never past
// `end`. Returns `end` when `p` >= `end`.
ZU_EXPORT const char* zuUTF16NextChar(const char* p, const char* end, eEndianType type);

// Start of the character before `p`: two bytes back, two more when that unit
// is a low surrogate preceded by a high one; never before `start`.
ZU_EXPORT const char* zuUTF16PrevChar(const char* start, const char* p, eEndianType type);

// Number of bytes taken by the first `codePoints` characters of the text at
// `text`, which ends with a 0 unit; stops early at that unit.
ZU_EXPORT unsigned int zuUTF16ByteLen(const char* text, unsigned int codePoints, eEndianType type);

// Decodes `inBytes` bytes of UTF-16 into code points. A leading byte-order
// mark (FE FF or FF FE) is skipped when more than 2 bytes are given, whatever
// `type` says; only when `type` is eEndianUnknown does it decide the order
// (big-endian without one). Stops at the
// first sequence zuUTF16toUCS rejects, at a 0 unit, or when `outMax` code
// points are written. With a null `out` it only counts. Returns the number of
// code points; writes no terminator.
ZU_EXPORT unsigned int ConvertFromUTF16(unsigned int* out, unsigned int outMax, const char* in,
                                        unsigned int inBytes, eEndianType type);

// Encodes `count` code points as UTF-16 bytes with zuUCStoUTF16 (no
// byte-order mark: add one with zuUTF16AddBOM). Stops at a 0 code point, at a
// code point above U+10FFFF, or before a character that would not fit in
// `outBytes`. With a null `out` it only counts. Returns the number of bytes.
ZU_EXPORT unsigned int ConvertToUTF16(char* out, unsigned int outBytes, const unsigned int* in,
                                      unsigned int count, eEndianType type);

// ------------------------------------------------- UTF-8 <-> host UTF-16

// Converts `inBytes` bytes of UTF-8 into host-order UTF-16 units. Stops at a
// NUL, at the first sequence zuUTF8toUCS rejects, at a code point UTF-16
// cannot carry (a surrogate value or above U+10FFFF), or before a character
// that would not fit in `outMax` units (a pair is never split). No byte-order
// mark is skipped. With a null `out` it only counts. Returns the number of
// units written; writes no terminator. Units after the returned count, up to
// `outMax`, may have been overwritten.
ZU_EXPORT unsigned int zuUTF8toUTF16(char16_t* out, unsigned int outMax, const char* in,
                                     unsigned int inBytes);

// Converts `units` host-order UTF-16 units into UTF-8. Stops at a 0 unit, at
// a lone or reversed surrogate, or before a sequence that would not fit in
// `outBytes`. With a null `out` it only counts. Returns the number of bytes
// written; writes no terminator.
ZU_EXPORT unsigned int zuUTF16toUTF8(char* out, unsigned int outBytes, const char16_t* in,
                                     unsigned int units);
