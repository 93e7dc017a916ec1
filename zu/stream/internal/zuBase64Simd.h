// AVX2 blocks for the Base64 walks, chosen at run time when the processor
// has AVX2. The scalar walk stays the reference: tests run both.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zu::internal {

// True when the AVX2 blocks are in use: the processor has AVX2 and no test
// switched them off.
bool base64SimdEnabled();
// Test hook: `enabled` false makes the walks scalar; true uses AVX2 when
// the processor has it. Returns the previous setting.
bool setBase64Simd(bool enabled);

// Encodes `blocks` blocks of 24 bytes into 32 characters each; reads 32
// bytes per block, so 8 bytes past the last block must be readable.
void base64EncodeBlocksAvx2(char* out, const uint8_t* in, std::size_t blocks);

// Decodes blocks of 32 alphabet characters into 24 bytes each, at most
// `blocks` of them, stopping before the first block that holds anything
// else. Writes 32 bytes per block (8 past its 24). Returns the blocks done.
std::size_t base64DecodeBlocksAvx2(uint8_t* out, const uint8_t* in, std::size_t blocks);

}  // namespace zu::internal
