// The hook that releases a thread's storage when the thread exits, however it
// was created. Kept apart from the table because it is platform code: the
// Linux form is a pthread key whose destructor runs in the exiting thread.
#pragma once

namespace zu::internal {

// Called in the exiting thread for every thread that is being watched.
using ThreadExitHandler = void (*)();

// Creates the hook; `handler` runs in each watched thread as it exits.
// Returns false when the system refuses (threads are then not watched).
bool createThreadExitHook(ThreadExitHandler handler);
// Removes the hook: no handler runs afterwards (library unload).
void destroyThreadExitHook();

// Makes the calling thread's exit run the handler. Cheap when it already does.
void watchThreadExit();
// The calling thread's exit no longer runs the handler.
void unwatchThreadExit();

}  // namespace zu::internal
