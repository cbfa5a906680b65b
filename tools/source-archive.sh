#!/bin/sh
# Writes the source archive of the last commit into FOLDER and its name to standard output. The same commit always gives the same bytes.
# Usage: source-archive.sh FOLDER
set -eu

folder=${1:?usage: source-archive.sh FOLDER}
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
cd "$(dirname "$0")/.."

version=$(git show HEAD:CMakeLists.txt | sed -n 's/^project(Tilora VERSION \([0-9.]*\) .*/\1/p')
[ -n "$version" ] || { echo "source-archive.sh: CMakeLists.txt tells no version" >&2; exit 1; }
name=tilora-$version
git diff --quiet HEAD -- || echo "source-archive.sh: what is not committed is not in the archive" >&2
# Times are those of the commit; nothing hangs on the settings of the one who runs this.
git -c tar.umask=0022 -c core.autocrlf=false archive --format=tar --prefix="$name/" HEAD >"$folder/$name.tar"
gzip -9 --no-name --force "$folder/$name.tar"
echo "$folder/$name.tar.gz"
