#!/usr/bin/env bash
# Installs what is missing, builds harmony (Release) and runs the tool's demo on the bundled data.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/install-deps.sh
build=${HARMONY_BUILD_DIR:-build-release}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DHARMONY_BUILD_TESTS=OFF -DHARMONY_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --parallel "$(nproc)" --target harmony_tool
"$build/tools/harmony/harmony" demo "$@"
