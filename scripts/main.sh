#!/usr/bin/env bash
# Builds the release preset and runs the example program on built-in data.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake --preset release
cmake --build --preset release --target zuexample
./build/release/bin/zuexample "$@"
