#!/bin/sh
# Signs an application of macOS, from the inside out, and checks the signature.
# Usage: sign-macos.sh IDENTITY APPLICATION    "-" as the identity signs for this machine only.
set -eu

identity=${1:?usage: sign-macos.sh IDENTITY APPLICATION}
application=${2:?usage: sign-macos.sh IDENTITY APPLICATION}

# The hardened runtime, which notarisation asks for, loads only libraries of the same team: without a team it would load none.
options=
[ "$identity" = - ] || options="--options runtime --timestamp"

sign() {
  # shellcheck disable=SC2086
  codesign --force --sign "$identity" $options "$1"
}

find "$application/Contents" -type f \( -name '*.dylib' -o -name '*.so' \) | while IFS= read -r library; do sign "$library"; done
find "$application/Contents" -type d -name '*.framework' -prune | while IFS= read -r framework; do sign "$framework"; done
sign "$application/Contents/MacOS/tilora-fetch"
sign "$application"
codesign --verify --deep --strict "$application"
