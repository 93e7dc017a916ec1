// What the processor the library runs on can do, asked once per process, so
// that vector paths are chosen at run time and the scalar ones kept for the
// rest.
//
//   if (zu::internal::hasAvx2()) encodeBlocksAvx2(...);
#pragma once

namespace zu::internal {

// Whether the processor has AVX2. Any thread.
inline bool hasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
}

}  // namespace zu::internal
