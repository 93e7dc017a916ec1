#!/usr/bin/env bash
# Builds the release preset and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake --preset release
cmake --build --preset release
ctest --preset release
# Each test program once more as a whole, in shuffled order: CTest gives every
# test a process of its own, which hides a test that leaves state behind.
for program in build/release/bin/zu_*_tests; do
  "$program" --gtest_shuffle --gtest_brief=1
done
