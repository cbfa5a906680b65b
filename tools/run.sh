#!/bin/sh
# Starts Tilora on the desktop that this shell belongs to; where there is none, tours it on a virtual one.
# Usage: run.sh PROGRAM_FOLDER
set -eu

programs=${1:?usage: run.sh PROGRAM_FOLDER}
if [ "$(uname -s)" = Darwin ]; then
  echo "Tilora is in the menu bar now. macOS asks for the permission to control windows; make run again after a new build asks again."
  exec open "$programs/Tilora.app"
fi
if "$programs/tilora-tour" --is-there-a-desktop; then
  echo "Starting Tilora on this desktop. It ends with Ctrl+C, and every window it hid comes back then."
  exec "$programs/tilora"
fi
echo "There is no X11 desktop here, so Tilora is shown on a virtual one."
"$(dirname "$0")/install-dependencies.sh" run
exec "$programs/tilora-tour" out/tour
