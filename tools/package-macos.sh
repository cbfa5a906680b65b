#!/bin/sh
# Makes the disk image of Tilora. Usage: package-macos.sh BUILD_FOLDER
set -eu

cd "${1:?usage: package-macos.sh BUILD_FOLDER}"
# The system's indexer may have the new volume open just then ("Resource busy"): that passes.
for attempt in 1 2 3 4; do
  if cpack; then exit 0; fi
  echo "package-macos.sh: attempt $attempt failed" >&2
  sleep 5
done
exit 1
