#!/bin/sh
# Counts the instructions that a pass takes for each window, and those that its reads alone take, with callgrind.
# Usage: instructions.sh BUILD_FOLDER
set -eu

build=${1:?usage: instructions.sh BUILD_FOLDER}
program=$build/bench/pass_instructions
[ -x "$program" ] || { echo "instructions.sh: build it first: cmake --preset bench && cmake --build --preset bench" >&2; exit 2; }
command -v valgrind >/dev/null || { echo "instructions.sh: valgrind is not installed" >&2; exit 2; }
said=$(mktemp)
trap 'rm -f "$said"' EXIT

# per_window pass|reads WINDOWS EACH: instructions a window, over the passes of one run
per_window() {
  passes=$((20000 / $2 + 2))
  valgrind --tool=callgrind --callgrind-out-file=/dev/null --collect-atstart=no --toggle-collect='*measured*' \
    "$program" "$1" "$2" "$3" "$passes" >"$said" 2>&1 || { cat "$said" >&2; exit 1; }
  awk -v count="$(($2 * passes))" '/Collected :/ { printf "%d", $4 / count }' "$said"
}

printf '%10s %10s %12s %12s %8s\n' windows each pass reads ratio
for windows in 100 1000 10000; do
  for each in 1 10 "$windows"; do
    pass=$(per_window pass "$windows" "$each")
    reads=$(per_window reads "$windows" "$each")
    printf '%10d %10d %12d %12d %8s\n' "$windows" "$each" "$pass" "$reads" "$(awk "BEGIN { printf \"%.2f\", $pass / $reads }")"
  done
done
