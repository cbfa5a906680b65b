#!/bin/sh
# Counts with callgrind the instructions that a pass takes for each window, and those that its reads alone take. They do not depend on what else
# the machine does, but on the compiler, the C library and the processor's kind: a record is compared only with counts taken with the same.
# Usage: instructions.sh BUILD_FOLDER            prints the counts
#        instructions.sh BUILD_FOLDER --record   writes them to the record, instructions.txt
#        instructions.sh BUILD_FOLDER --check    compares them with the record; status 1: a count is more than 5 % above its record,
#                                                77: the record is of another compiler, so that nothing was checked
set -eu

build=${1:?usage: instructions.sh BUILD_FOLDER [--record | --check]}
what=${2:-}
program=$build/bench/pass_instructions
record=$(dirname "$0")/instructions.txt
[ -x "$program" ] || { echo "instructions.sh: build it first: cmake --preset bench && cmake --build --preset bench" >&2; exit 2; }
command -v valgrind >/dev/null || { echo "instructions.sh: valgrind is not installed" >&2; exit 2; }
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# What the counts depend on beside the sources, on one line.
toolchain() {
  compiler=$(sed -n 's/^set(CMAKE_CXX_COMPILER_\(ID\|VERSION\) "\(.*\)")$/\2/p' "$build"/CMakeFiles/*/CMakeCXXCompiler.cmake | tr '\n' ' ')
  type=$(sed -n 's/^CMAKE_BUILD_TYPE:[A-Z]*=//p' "$build/CMakeCache.txt")
  echo "${compiler% }, $type, C library $(ldd --version 2>/dev/null | sed -n '1s/.* //p'), $(uname -m)"
}

# Windows, windows an application, screens, stored choices, choices an application.
scenarios() {
  cat <<'END'
10 1 2 50 1
10 10 2 50 1
100 1 2 50 1
100 10 2 50 1
100 100 2 50 1
1000 1 2 50 1
1000 10 2 50 1
1000 1000 2 50 1
10000 1 2 50 1
10000 10 2 50 1
10000 10000 2 50 1
100000 10 2 50 1
1000 10 1 50 1
1000 10 4 50 1
1000 10 16 50 1
1000 10 2 0 1
1000 10 2 10000 1
1000 10 2 10000 100
10 10 2 10000 10000
END
}

# of FUNCTION: the instructions that were counted while it ran
of() {
  callgrind_annotate --inclusive=yes --threshold=100 --auto=no "$folder/out" | sed -n "s/^ *\([0-9,]*\) (.*::$1(.*/\1/p" | head -n 1 | tr -d ,
}

# count WINDOWS EACH SCREENS CHOICES CHOICES_EACH: instructions a window of a pass and of the reads, over the passes of one run
count() {
  times=$((10000 / $1 + 1))
  valgrind --tool=callgrind --callgrind-out-file="$folder/out" --collect-atstart=no --toggle-collect='*measured*' \
    "$program" "$times" "$@" >"$folder/said" 2>&1 || { cat "$folder/said" >&2; exit 1; }
  echo "$*" "$(of measuredPasses)" "$(of measuredReads)" $(($1 * times)) |
    awk '{ printf "%8d %8d %8d %8d %8d %8d %8d %8.2f\n", $1, $2, $3, $4, $5, $6 / $8, $7 / $8, $6 / $7 }'
}

counts() {
  printf '%8s %8s %8s %8s %8s %8s %8s %8s\n' windows each screens choices each pass reads ratio
  scenarios | while read -r line; do count $line; done
}

check() {
  ours=$(toolchain)
  theirs=$(sed -n '1s/^# //p' "$record")
  if [ "$ours" != "$theirs" ]; then
    echo "instructions.sh: SKIPPED, nothing was checked: the record is of"
    echo "  $theirs"
    echo "and this is"
    echo "  $ours"
    exit 77
  fi
  counts >"$folder/counts"
  cat "$folder/counts"
  # The five numbers that tell a scenario, then the count of the pass.
  awk '
    /^#/ || $1 == "windows" { next }
    { name = $1 " " $2 " " $3 " " $4 " " $5 }
    FNR == NR { recorded[name] = $6; next }
    !(name in recorded) { print name ": there is no record of it: make record-instructions"; missing = 1; next }
    $6 > 1.05 * recorded[name] { print name ": " $6 " instructions a window, the record says " recorded[name]; risen = 1 }
    $6 < 0.95 * recorded[name] { print name ": " $6 " instructions a window, the record says " recorded[name] "; lower it: make record-instructions" }
    { seen++ }
    END {
      if (!seen) print "nothing was compared"
      if (risen) { print "A count has risen by more than 5 %. Mend it, or say in the commit why it is worth it: make record-instructions" }
      exit risen || missing || !seen
    }' "$record" "$folder/counts"
}

case $what in
  '') counts ;;
  --record) { echo "# $(toolchain)"; echo "# Instructions a window; written by make record-instructions."; counts; } >"$folder/record"
    mv "$folder/record" "$record"; chmod 644 "$record"; cat "$record" ;;
  --check) check ;;
  *) echo "instructions.sh: there is no \"$what\"" >&2; exit 2 ;;
esac
