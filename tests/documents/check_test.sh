#!/bin/sh
# Proves that the check of links finds those that lead nowhere, and lets the others pass. Usage: check_test.sh FOLDER
set -eu

check=$(cd "$(dirname "$0")" && pwd)/check.sh
tree=${1:?usage: check_test.sh FOLDER}/tree
rm -rf "$tree"
mkdir -p "$tree/docs"
touch "$tree/docs/there.svg"

# expect STATUS TEXT: what the check says of a document of this text.
expect() {
  printf '%s\n' "$2" >"$tree/docs/document.md"
  status=0
  "$check" "$tree" >"$tree.out" 2>&1 || status=$?
  [ "$status" -eq "$1" ] || { echo "$2: status $status, not $1"; exit 1; }
}

expect 0 '![a picture](there.svg) and [itself](document.md#part), [afar](https://example.org/x)'
expect 0 '<img src="there.svg" width="4">'
expect 1 '![a picture](missing.svg)'
expect 1 '[one](there.svg) and [two](../missing.md) on one line'
expect 1 '<img src="../missing.png" width="4">'
rm "$tree/docs/document.md"
status=0
"$check" "$tree" >"$tree.out" 2>&1 || status=$?
[ "$status" -eq 2 ]
