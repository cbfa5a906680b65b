#!/bin/sh
# Compiles the macOS desktop for both processors of macOS, has the static analyser read it, and links it against text stubs of what the
# frameworks export. Every warning counts, also one of a call that the oldest supported system does not have. The objects check the
# interfaces; they are no product: the C library's headers are those of musl.
# Usage: check.sh FOLDER_FOR_OBJECTS [SOURCE...]    Without sources: all, and the link. Needs clang 19, lld 19, libc++ 19 and musl.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../../.." && pwd)
out=${1:?usage: check.sh FOLDER_FOR_OBJECTS [SOURCE...]}
shift
clang=${TILORA_CLANG:-clang++-19}
linker=${TILORA_LD64:-ld64.lld-19}
libraries=${TILORA_LIBCXX:-/usr/lib/llvm-19}
musl=${TILORA_MUSL:-/usr/include/x86_64-linux-musl}
oldest=13.0

# both_ways SOURCE: compiles it for both processors, and has it analysed once.
both_ways() {
  source=$1
  set -- -std=c++20 -I"$root/src" -isystem "$root/tests/macos/frameworks" -isystem "$here/headers" -nostdlibinc -nostdinc++ \
    -isystem "$libraries/include/c++/v1" -isystem "$musl" -D_GNU_SOURCE -D_LIBCPP_PROVIDES_DEFAULT_RUNE_TABLE \
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wunguarded-availability -Wnullable-to-nonnull-conversion -Wobjc-interface-ivars \
    -Warc-retain-cycles -Wstrict-selector-match -Wundeclared-selector -Werror -fobjc-arc -fblocks
  for architecture in arm64 x86_64; do
    "$clang" -target "$architecture-apple-macos$oldest" "$@" -O1 -c "$source" -o "$out/$(basename "$source").$architecture.o" || return 1
  done
  "$clang" -target "arm64-apple-macos$oldest" "$@" --analyze --analyzer-output text -Xclang -analyzer-werror \
    -Xclang -analyzer-checker=nullability,optin.osx,osx,optin.cplusplus "$source" -o /dev/null
}

# What the C++ library of the system exports is what the same library exports here, each name with the underscore of the format.
cxx_stub() {
  printf -- "--- !tapi-tbd\ntbd-version: 4\ntargets: [ x86_64-macos, arm64-macos ]\ninstall-name: '/usr/lib/libc++.1.dylib'\nexports:\n"
  printf '  - targets: [ x86_64-macos, arm64-macos ]\n    symbols: [ '
  for library in libc++.so.1 libc++abi.so.1; do nm -D --defined-only "$libraries/lib/$library"; done |
    sed -n 's/^[0-9a-f]* [A-Z] \([A-Za-z0-9_]*\)$/_\1/p; s/^[0-9a-f]* [A-Z] \([A-Za-z0-9_]*\)@.*$/_\1/p' | sort -u | paste -sd, | tr -d '\n'
  printf ' ]\n...\n'
}

# link ARCHITECTURE: one program of all objects.
link() {
  stubs=
  for stub in "$here"/stubs/*.tbd; do stubs="$stubs $stub"; done
  # shellcheck disable=SC2086
  "$linker" -arch "$1" -platform_version macos $oldest $oldest -fatal_warnings -o "$out/tilora.$1" "$out"/*."$1.o" $stubs "$out/cxx.tbd"
}

if [ "${1-}" = --only ]; then
  both_ways "$2"
  exit
fi
mkdir -p "$out"
whole=
if [ $# -eq 0 ]; then
  whole=yes
  rm -f "$out"/*.o
  set -- "$root"/src/platform/macos/*.cpp "$root"/src/platform/macos/*.mm "$root/src/platform/accessibility.cpp" "$here/main.mm"
fi
printf '%s\n' "$@" | xargs -P "$(getconf _NPROCESSORS_ONLN)" -I SOURCE "$0" "$out" --only SOURCE
[ -n "$whole" ] || exit 0
cxx_stub >"$out/cxx.tbd"
for architecture in arm64 x86_64; do link "$architecture"; done
echo "$# sources for two processors: compiled, analysed and linked."
