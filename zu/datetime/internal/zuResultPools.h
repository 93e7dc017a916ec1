// Keeps the calling thread's string pools for short texts in use, so that
// formatting one value after another does not give a pool back and take
// it again for every text.
//
// The block cache releases a pool the moment its last block is freed. A
// loop that formats a date, uses the text and drops it would so release
// and re-create the pool of that text's size on every turn, which costs
// more than formatting it. One block of each short capacity, held by the
// thread until it ends, keeps those pools alive.
//
//   zu::internal::keepResultPools();
//   return zuString::FromBytes(text, length);   // from a pool kept in use
#pragma once

#include "zu/core/internal/zuThreadMemo.h"
#include "zu/core/zuString.h"

namespace zu::internal {

// One block of each short string capacity (8, 16 and 32 bytes).
struct ResultPools {
  ResultPools();
  zuString blocks[3];
};

// Takes, on the thread's first call, the blocks of ResultPools and keeps
// them until the thread ends; later calls cost a thread-local load and a
// test. Throws zuExMemory.
inline void keepResultPools() {
  zuThreadMemo<ResultPools>::get();
}

}  // namespace zu::internal
