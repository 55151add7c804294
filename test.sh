#!/usr/bin/env bash
# Installs what is missing, builds harmony with its tests and runs the whole suite.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/install-deps.sh
build=${HARMONY_BUILD_DIR:-build}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" --parallel "$(nproc)"
ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)"
