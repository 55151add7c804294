#!/usr/bin/env bash
# Runs one libFuzzer target for a number of seconds under ASan and UBSan:
#   scripts/fuzz.sh fuzz_key_from_text 60
# Without arguments, lists the targets. The corpus starts from fuzz/corpus/<target>/ if present.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
build=build-fuzz
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_COMPILER=clang++-14 -DHARMONY_FUZZ=ON >/dev/null
if [ $# -lt 1 ]; then
  ls fuzz/*.cpp | xargs -n1 basename | sed 's/\.cpp$//'
  exit 0
fi
target=$1
seconds=${2:-60}
cmake --build "$build" --parallel "$(nproc)" --target "$target"
corpus="$build/corpus/$target"
mkdir -p "$corpus"
seeds=()
[ -d "fuzz/corpus/$target" ] && seeds=("fuzz/corpus/$target")
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
"$build/fuzz/$target" -max_total_time="$seconds" -print_final_stats=1 "$corpus" "${seeds[@]}"
