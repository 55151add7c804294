#!/usr/bin/env bash
# Runs one harmony command over every MusicXML file of a test-data tree and prints, per
# folder, how many files it read, how many it refused with a message (exit status 1) and how
# many crashed (any other status). Exits 1 when anything crashed, or with --clean when any
# file was refused; 77 when none of the folders exists.
#
#   scripts/musicxml-sweep.sh [--clean] TOOL COMMAND FOLDER...
#   scripts/musicxml-sweep.sh build/tools/harmony/harmony chords ../shared/testdata/musicxml/leadsheets
set -uo pipefail

clean=0
if [ "${1:-}" = "--clean" ]; then clean=1; shift; fi
if [ $# -lt 3 ]; then
  echo "usage: $0 [--clean] TOOL COMMAND FOLDER..." >&2
  exit 2
fi
tool=$1
command=$2
shift 2

run_one() {  # prints "ok", "refused PATH: message" or "crashed STATUS PATH"
  local output status
  output=$("$1" "$2" "$3" 2>&1 >/dev/null)
  status=$?
  case $status in
    0) echo "ok" ;;
    1) output=${output//$'\n'/ }; echo "refused $3: ${output:0:200}" ;;
    *) echo "crashed $status $3" ;;
  esac
}
export -f run_one

total_refused=0
total_crashed=0
found=0
printf '%-60s %7s %7s %7s\n' folder files refused crashed
for folder in "$@"; do
  if [ ! -d "$folder" ]; then
    echo "skipped: $folder not found"
    continue
  fi
  found=$((found + 1))
  results=$(find "$folder" -type f \( -name '*.xml' -o -name '*.musicxml' -o -name '*.mxl' \) -print0 |
    xargs -0 -P "$(nproc)" -I{} bash -c 'run_one "$0" "$1" "$2"' "$tool" "$command" {})
  files=$(grep -c . <<<"$results")
  refused=$(grep -c '^refused' <<<"$results")
  crashed=$(grep -c '^crashed' <<<"$results")
  printf '%-60s %7d %7d %7d\n' "$folder" "$files" "$refused" "$crashed"
  grep '^crashed' <<<"$results" || true
  if [ "$clean" -eq 1 ]; then grep '^refused' <<<"$results" || true; fi
  total_refused=$((total_refused + refused))
  total_crashed=$((total_crashed + crashed))
done
if [ "$found" -eq 0 ]; then exit 77; fi  # nothing to sweep: a skip for CTest
if [ "$total_crashed" -gt 0 ]; then exit 1; fi
if [ "$clean" -eq 1 ] && [ "$total_refused" -gt 0 ]; then exit 1; fi
exit 0
