#!/usr/bin/env bash
# Builds Release and runs every benchmark program, printing one table.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
build=build-bench
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DHARMONY_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --parallel "$(nproc)"
first=1
for b in "$build"/bench/bench_*; do
  [ -x "$b" ] || continue
  if [ $first = 1 ]; then
    "$b" --benchmark_min_time=0.2 "$@"
    first=0
  else
    "$b" --benchmark_min_time=0.2 "$@" 2>/dev/null | sed -n '/^---/,$p' | tail -n +3
  fi
done
