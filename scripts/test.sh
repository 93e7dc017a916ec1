#!/usr/bin/env bash
# Builds the release preset and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake --preset release
cmake --build --preset release
ctest --preset release
