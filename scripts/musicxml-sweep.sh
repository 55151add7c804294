#!/usr/bin/env bash
# Runs one harmony command over every MusicXML file of a test-data tree and prints, per
# folder, how many files it read, how many it refused with a message (exit status 1) and how
# many crashed (any other status). With --count WORD it also adds up the lines of output that
# start with WORD (the notes of `harmony musicxml`, say). Exits 1 when anything crashed, or
# with --clean when any file was refused; 77 when none of the folders exists.
#
#   scripts/musicxml-sweep.sh [--clean] [--count WORD] TOOL COMMAND FOLDER...
#   scripts/musicxml-sweep.sh build/tools/harmony/harmony chords ../shared/testdata/musicxml/leadsheets
#
# COMMAND may carry options ("chords --lenient"); its words are split at blanks.
set -uo pipefail

clean=0
count=""
while [ $# -gt 0 ]; do
  case $1 in
    --clean) clean=1; shift ;;
    --count) count=$2; shift 2 ;;
    *) break ;;
  esac
done
if [ $# -lt 3 ]; then
  echo "usage: $0 [--clean] [--count WORD] TOOL COMMAND FOLDER..." >&2
  exit 2
fi
tool=$1
command=$2
shift 2

run_one() {  # prints "ok COUNT", "refused PATH: message" or "crashed STATUS PATH"
  local output status counted=0 errors printed
  errors=$(mktemp)
  printed=$(mktemp)
  # shellcheck disable=SC2086  # the command's words are meant to split
  "$1" $2 "$3" >"$printed" 2>"$errors"
  status=$?
  if [ -n "$4" ]; then counted=$(grep -c "^$4 " "$printed"); fi
  rm -f "$printed"
  output=$(cat "$errors")
  rm -f "$errors"
  case $status in
    0) echo "ok $counted" ;;
    1) output=${output//$'\n'/ }; echo "refused $3: ${output:0:200}" ;;
    *) echo "crashed $status $3" ;;
  esac
}
export -f run_one

total_refused=0
total_crashed=0
found=0
printf '%-60s %7s %7s %7s %9s\n' folder files refused crashed "${count:-}"
for folder in "$@"; do
  if [ ! -d "$folder" ]; then
    echo "skipped: $folder not found"
    continue
  fi
  found=$((found + 1))
  results=$(find "$folder" -type f \( -name '*.xml' -o -name '*.musicxml' -o -name '*.mxl' \) -print0 |
    xargs -0 -P "$(nproc)" -I{} bash -c 'run_one "$0" "$1" "$2" "$3"' "$tool" "$command" {} "$count")
  files=$(grep -c . <<<"$results")
  refused=$(grep -c '^refused' <<<"$results")
  crashed=$(grep -c '^crashed' <<<"$results")
  counted=$(awk '$1 == "ok" { sum += $2 } END { print sum + 0 }' <<<"$results")
  printf '%-60s %7d %7d %7d %9s\n' "$folder" "$files" "$refused" "$crashed" \
    "$([ -n "$count" ] && echo "$counted")"
  grep '^crashed' <<<"$results" || true
  if [ "$clean" -eq 1 ]; then grep '^refused' <<<"$results" || true; fi
  total_refused=$((total_refused + refused))
  total_crashed=$((total_crashed + crashed))
done
if [ "$found" -eq 0 ]; then exit 77; fi  # nothing to sweep: a skip for CTest
if [ "$total_crashed" -gt 0 ]; then exit 1; fi
if [ "$clean" -eq 1 ] && [ "$total_refused" -gt 0 ]; then exit 1; fi
exit 0
