#!/usr/bin/env bash
# Builds the fuzz preset and runs every fuzz target for the given number of
# seconds (default 60), each with its seed corpus from fuzz/corpus/<target>.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
cmake --preset fuzz
cmake --build --preset fuzz
shopt -s nullglob
work="build/fuzz/corpus"
for target in build/fuzz/bin/fuzz_*; do
  name="$(basename "$target")"
  mkdir -p "$work/$name"
  seeds=()
  [[ -d "fuzz/corpus/$name" ]] && seeds=("fuzz/corpus/$name")
  echo "-- $name for ${seconds}s"
  log="$work/$name.log"
  if ! "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
      "$work/$name" "${seeds[@]}" >"$log" 2>&1; then
    tail -n 60 "$log"
    echo "$name failed"
    exit 1
  fi
  grep -E '^stat::number_of_executed_units' "$log" || true
done
