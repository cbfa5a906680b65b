#!/bin/sh
# Lets each fuzz target search for SECONDS, from its corpus and from what earlier runs added to it in BUILD_FOLDER/fuzz. The status is not 0
# when one of them finds an input for which something does not hold; the input is kept and named.
# Usage: run.sh BUILD_FOLDER SECONDS [TARGET...]
set -u

build=${1:?usage: run.sh BUILD_FOLDER SECONDS [TARGET...]}
seconds=${2:?usage: run.sh BUILD_FOLDER SECONDS [TARGET...]}
shift 2
folder=$(dirname "$0")
[ $# -gt 0 ] || set -- $(ls "$folder/corpus")

failed=
for target in "$@"; do
  program=$build/tests/fuzz/${target}_fuzzer
  [ -x "$program" ] || { echo "run.sh: there is no $program" >&2; exit 2; }
  kept=$build/fuzz/$target
  findings=$build/fuzz/findings/$target
  mkdir -p "$kept" "$findings"
  log=$build/fuzz/$target.log
  if "$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=4096 -dict="$folder/dictionaries/$target.dict" \
    -artifact_prefix="$findings/" -print_final_stats=1 "$kept" "$folder/corpus/$target" >"$log" 2>&1; then
    echo "$target: nothing found in $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") inputs," \
      "$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -n 1) edges covered"
  else
    failed="$failed $target"
    tail -n 40 "$log"
    echo "$target: a finding, see $log; mend it and add the input to $folder/corpus/$target"
  fi
done
[ -z "$failed" ] || { echo "findings:$failed"; exit 1; }
