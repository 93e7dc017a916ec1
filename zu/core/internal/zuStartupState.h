// Whether the application has initialised the library (zuUtilityInit).
// Before that, start-up problems are only recorded; from then on they are
// thrown, and a missing message catalogue becomes an error.
#pragma once

namespace zu::internal {

bool libraryInitialised();
void markLibraryInitialised();

// Forgets the initialisation and any recorded version mismatch, so that a
// test can start over. Never called by the library itself.
void resetStartupForTesting();

}  // namespace zu::internal

namespace zu::internal {

// The library's interface version.
inline constexpr const char* kUtilityVersion = "3.6.19011.0";

// Size of the buffers that keep the first mismatch, not counting the NUL.
inline constexpr unsigned int kMismatchTextLength = 32;

// True once a mismatch was recorded: its version text is not empty.
bool mismatchRecorded();
// Records the first mismatch only; texts are cut to kMismatchTextLength
// bytes (never inside a UTF-8 sequence), null counts as empty.
void recordMismatch(const char* version, const char* component);
// The recorded texts, empty when nothing is recorded.
const char* recordedVersion();
const char* recordedComponent();

}  // namespace zu::internal
