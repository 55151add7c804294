#!/usr/bin/env bash
# Builds with clang and AddressSanitizer + UndefinedBehaviorSanitizer and runs every test.
# With --thread, builds with ThreadSanitizer instead and runs the tests labelled "threads".
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
mode=address,undefined
build=build-asan
filter=()
if [ "${1:-}" = "--thread" ]; then
  mode=thread; build=build-tsan; filter=(-L threads)
fi
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_COMPILER=clang++-14 -DHARMONY_SANITIZE=$mode -DHARMONY_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --parallel "$(nproc)"
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export ASAN_OPTIONS=detect_leaks=1
ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)" "${filter[@]}"
