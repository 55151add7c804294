#!/usr/bin/env bash
# Shows that an installed harmony finds its data under any prefix. For a static and a shared
# build it installs into a fresh prefix, moves the install elsewhere, and then checks that
#   - the installed tool lists the factory chord grids;
#   - a consumer built with CMake (find_package) and one built with pkg-config link and find
#     the grids: beside a shared library by themselves, beside a static one once installed
#     into the prefix, and from their build folder when they name the package's data folder;
#   - a consumer of the static library outside the prefix finds nothing by itself: no path
#     of the machine that built the library is compiled in.
#
#   scripts/check-install.sh [WORK_DIR]     (default: a new temporary folder)
set -euo pipefail
trap 'echo "check-install: failed at line $LINENO" >&2' ERR
cd "$(dirname "$0")/.."
source=$PWD
work=$(realpath -m "${1:-$(mktemp -d)}")
mkdir -p "$work"
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
jobs=${HARMONY_JOBS:-1}
failures=0

expect_grids() {  # what, output, expected ("some" or "none")
  local count
  count=$(sed -n 's/^factory grids: //p' <<<"$2")
  local found=none
  [ "${count:-0}" -gt 0 ] && found=some
  if [ "$found" = "$3" ]; then
    local folder
    folder=$(sed -n 's/^data folder: //p' <<<"$2")
    echo "ok    $1: $count grids${folder:+ in $folder}"
  else
    echo "FAIL  $1: expected $3 grids, got: $2"
    failures=$((failures + 1))
  fi
}

for kind in static shared; do
  shared=OFF
  [ "$kind" = shared ] && shared=ON
  build=$work/build-$kind
  cmake -S "$source" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=$shared \
    -DHARMONY_BUILD_TESTS=OFF -DHARMONY_BUILD_BENCH=OFF "${launcher[@]}" >/dev/null
  cmake --build "$build" --target harmony harmony_tool --parallel "$jobs" >/dev/null
  rm -rf "$work/staging-$kind" "$work/prefix-$kind"
  cmake --install "$build" --prefix "$work/staging-$kind" >/dev/null
  mv "$work/staging-$kind" "$work/prefix-$kind"
  prefix=$work/prefix-$kind

  listed=$(HARMONY_GUITAR_DB="$work/user-$kind.gchdb" "$prefix/bin/harmony" grids list | tail -1)
  expect_grids "$kind: installed tool" "factory grids: ${listed%% *}" some

  consumer=$work/consumer-cmake-$kind
  cmake -S "$source/scripts/consumer" -B "$consumer" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_INSTALL_PREFIX="$prefix" "${launcher[@]}" >/dev/null
  cmake --build "$consumer" >"$work/consumer-$kind.log" || { cat "$work/consumer-$kind.log"; exit 1; }
  export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
  static=()
  [ "$kind" = static ] && static=(--static)
  read -r -a flags <<<"$(pkg-config --cflags --libs "${static[@]}" harmony)"
  g++ -std=c++20 -o "$work/consumer-pc-$kind" "$source/scripts/consumer/main.cpp" "${flags[@]}" \
    -DHARMONY_PACKAGE_DATA_DIR="\"$(pkg-config --variable=datadir harmony)\"" \
    -Wl,-rpath,"$prefix/lib"

  if [ "$kind" = shared ]; then
    expect_grids "shared: CMake consumer" "$("$consumer/harmony-consumer")" some
    expect_grids "shared: pkg-config consumer" "$("$work/consumer-pc-$kind")" some
  else
    expect_grids "static: CMake consumer outside the prefix, by itself (no path compiled in)" "$("$consumer/harmony-consumer")" none
    expect_grids "static: CMake consumer naming the package data" \
      "$("$consumer/harmony-consumer" --package-data)" some
    expect_grids "static: pkg-config consumer naming the package data" \
      "$("$work/consumer-pc-$kind" --package-data)" some
    cmake --install "$consumer" >/dev/null
    expect_grids "static: CMake consumer installed in the prefix" \
      "$("$prefix/bin/harmony-consumer")" some
  fi
done
[ "$failures" -eq 0 ] && echo "every consumer found the factory grids" || exit 1
