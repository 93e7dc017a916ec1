// Test hooks of the stage timers' control state.
#pragma once

namespace zu::internal {

// Forgets that QTV_TRACE_CONTROL was read: the next timing call reads it
// again, as the first one of the process did. Also closes both logs and
// sets timing back to "not yet read". Not to be called while other threads
// use the timers.
void rearmTimingControlForTesting();

}  // namespace zu::internal
