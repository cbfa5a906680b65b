#!/bin/sh
# Checks that every relative link and picture of the documents leads to a file. Usage: check.sh [FOLDER]    (the project when nothing is named)
# Status 1 after one line for each link that leads nowhere.
set -eu

cd "${1:-$(dirname "$0")/../..}"
documents=$(find . \( -path ./build -o -path './build-*' -o -path ./out -o -path ./.git \) -prune -o -name '*.md' -print | sort)
[ -n "$documents" ] || { echo "check.sh: there is no document" >&2; exit 2; }

broken=0
for document in $documents; do
  # [text](target), and src="target"; an anchor within a file is not looked at.
  targets=$(awk '{
    while (match($0, /(\]\(|src=")[^)" ]*/)) {
      target = substr($0, RSTART, RLENGTH)
      $0 = substr($0, RSTART + RLENGTH)
      sub(/^(\]\(|src=")/, "", target)
      sub(/#.*/, "", target)
      print target
    }
  }' "$document")
  for target in $targets; do
    case $target in *:*) continue ;; esac
    [ -e "$(dirname "$document")/$target" ] && continue
    echo "$document: $target is not there"
    broken=1
  done
done
exit $broken
