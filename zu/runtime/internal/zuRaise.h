// How the base layer (the thread id, thread-local storage, the block cache
// and the string block) reports a failure.
//
// The library's exceptions are defined by core, which is built on this
// layer; core defines these functions beside them (zu/core/zuException.cpp),
// so that the lowest layer throws exactly what the rest of the library
// throws without reaching up for its headers.
#pragma once

namespace zu::internal {

// Throws zuExMemory.
[[noreturn]] void raiseOutOfMemory();
// Throws the zuExFull of ZuExThrow(id).
[[noreturn]] void raiseMessage(unsigned short id);

}  // namespace zu::internal
