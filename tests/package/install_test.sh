#!/bin/sh
# Installs a build into a folder of its own and looks whether everything is where a desktop looks for it.
# Usage: install_test.sh CMAKE BUILD_FOLDER FOLDER
set -eu

cmake=${1:?usage: install_test.sh CMAKE BUILD_FOLDER FOLDER}
build=${2:?usage: install_test.sh CMAKE BUILD_FOLDER FOLDER}
root=${3:?usage: install_test.sh CMAKE BUILD_FOLDER FOLDER}/root

rm -rf "$root"
"$cmake" --install "$build" --prefix "$root" >/dev/null
(cd "$root" && find . -type f | sort) >"$root.files"
diff - "$root.files" <<'END'
./bin/tilora
./libexec/tilora/tilora-consent
./libexec/tilora/tilora-fetch
./share/applications/org.tilora.Tilora.desktop
./share/icons/hicolor/128x128/apps/org.tilora.Tilora.png
./share/icons/hicolor/16x16/apps/org.tilora.Tilora.png
./share/icons/hicolor/24x24/apps/org.tilora.Tilora.png
./share/icons/hicolor/256x256/apps/org.tilora.Tilora.png
./share/icons/hicolor/32x32/apps/org.tilora.Tilora.png
./share/icons/hicolor/48x48/apps/org.tilora.Tilora.png
./share/icons/hicolor/64x64/apps/org.tilora.Tilora.png
./share/icons/hicolor/scalable/apps/org.tilora.Tilora.svg
./share/man/man1/tilora.1.gz
./share/metainfo/org.tilora.Tilora.metainfo.xml
END

# Nothing that CMake was to fill in is left open, and the name of the icon is that of the files.
if grep -r '@[A-Z_]*@' "$root/share" --include='*.xml' --include='*.desktop'; then exit 1; fi
if gzip -dc "$root/share/man/man1/tilora.1.gz" | grep '@[A-Z_]*@'; then exit 1; fi
grep -qx 'Icon=org.tilora.Tilora' "$root/share/applications/org.tilora.Tilora.desktop"
