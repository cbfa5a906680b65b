#!/bin/sh
# Proves the checks of the macOS desktop: plants one fault after the other in a copy of the sources, and expects a check to fail.
# Usage: run.sh FOLDER [WORDS]    FOLDER holds the copy and its build. With WORDS, only the faults whose names have them.
set -u

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../../.." && pwd)
folder=${1:?usage: run.sh FOLDER [WORDS]}
words=${2-}
mkdir -p "$folder/tree"
folder=$(cd "$folder" && pwd)
tree=$folder/tree
build=$folder/build
log=$folder/log

# The tests of the macOS desktop alone: what the program adds is not what the faults are planted in.
tests="macos_test macos_objective_c_test"

# built_and_passed: compiles what changed and runs the tests; which check failed is in `caught`.
built_and_passed() {
  # shellcheck disable=SC2086
  cmake --build "$build" --target $tests >"$log" 2>&1 || { caught="the compiler or the linker"; return 1; }
  "$build/tests/macos/macos_test" --gtest_brief=1 >"$log" 2>&1 || { caught="the tests of the C half"; return 1; }
  "$build/tests/macos/objective_c/macos_objective_c_test" --gtest_brief=1 >"$log" 2>&1 || { caught="the tests of the Objective-C++ half"; return 1; }
}

passes() {
  built_and_passed || return 1
  case $1 in
    *.cpp | *.mm) "$tree/tests/macos/cross/check.sh" "$folder/objects" "$tree/src/$1" >"$log" 2>&1 ;;
    *) true ;;
  esac || { caught="the compiler for macOS or its analyser"; return 1; }
}

trimmed() { printf '%s' "$1" | sed 's/^ *//; s/ *$//'; }

# Only what changed is copied, and with the time of the copy: a file that gets its old time back would not be compiled anew.
(cd "$root" && git ls-files --cached --others --exclude-standard) | while IFS= read -r file; do
  [ -f "$root/$file" ] || continue
  cmp -s "$root/$file" "$tree/$file" && continue
  mkdir -p "$tree/$(dirname "$file")"
  cp -p "$root/$file" "$tree/$file" && touch "$tree/$file"
done
cmake -S "$tree" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTILORA_SANITIZE=address,undefined >"$log" 2>&1 ||
  { cat "$log"; echo "run.sh: the copy cannot be configured" >&2; exit 2; }
built_and_passed || { tail -40 "$log"; echo "run.sh: without a fault, this fails: $caught" >&2; exit 2; }

planted=0
missed=0
while IFS='|' read -r name file substitution; do
  case $name in '#'* | '') continue ;; *"$words"*) ;; *) continue ;; esac
  # The substitution may have the separator in it: read gave all the rest.
  name=$(trimmed "$name")
  file=$(trimmed "$file")
  original=$folder/original
  cp "$tree/src/$file" "$original"
  sed "$(trimmed "$substitution")" "$original" >"$tree/src/$file"
  planted=$((planted + 1))
  if cmp -s "$original" "$tree/src/$file"; then
    echo "| $name | \`$file\` | NOT PLANTED: the substitution changes nothing |"
    missed=$((missed + 1))
  elif passes "$file" </dev/null; then
    echo "| $name | \`$file\` | MISSED |"
    missed=$((missed + 1))
  else
    echo "| $name | \`$file\` | $caught |"
  fi
  cp "$original" "$tree/src/$file"
done <"$here/faults.txt"

echo "$planted faults planted, $missed not found."
[ "$planted" -gt 0 ] && [ "$missed" -eq 0 ]
