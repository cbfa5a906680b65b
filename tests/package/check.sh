#!/bin/sh
# Builds the source archive and, from it, the Debian package of each distribution in a bare root of that distribution; runs lintian over the
# package; installs, starts and removes it in another bare root. Root only; the roots stay in FOLDER for the next time.
# Usage: check.sh FOLDER [bookworm|noble]...    bookworm=FILE.deb checks a package that is there already. PACKAGE_OPTIONS: see make package.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
project=$(cd "$here/../.." && pwd)
folder=${1:?usage: check.sh FOLDER [SUITE]...}
shift
[ $# -gt 0 ] || set -- bookworm noble

[ "$(id -u)" -eq 0 ] || { echo "check.sh: only root can make roots" >&2; exit 2; }
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)

# enter ROOT COMMAND...: runs the command in the root with devices and processes of its own; they end, and what is mounted goes, with it.
enter() {
  unshare --mount --pid --fork --kill-child --propagation private sh -eu "$here/enter.sh" "$@"
}

# bare_archive SUITE: an archive of the smallest installation that can install packages.
bare_archive() {
  bare=$folder/$1.tar
  [ -f "$bare" ] && return
  case $1 in
    bookworm) mirror=http://deb.debian.org/debian components=main script=bookworm ;;
    # Where debootstrap is older than the suite, the script of its ancestor does; universe has Qt.
    noble) mirror=http://archive.ubuntu.com/ubuntu components=main,universe script=gutsy ;;
    *) echo "check.sh: there is no suite $1 here" >&2; exit 2 ;;
  esac
  rm -rf "$folder/$1.new"
  # Debian does not hold Ubuntu's keys. Nothing that is made in these roots leaves them.
  unchecked=
  [ "$1" != noble ] || [ -f /usr/share/keyrings/ubuntu-archive-keyring.gpg ] || unchecked=--no-check-gpg
  # shellcheck disable=SC2086
  debootstrap --variant=minbase --components="$components" $unchecked "$1" "$folder/$1.new" "$mirror" "$script"
  tar -C "$folder/$1.new" --one-file-system -cf "$bare.part" .
  mv "$bare.part" "$bare"
  rm -rf --one-file-system "$folder/$1.new"
}

# unpack SUITE ROOT: a bare root, in place of what was there.
unpack() {
  bare_archive "$1"
  rm -rf --one-file-system "$2"
  mkdir -p "$2"
  tar -C "$2" -xf "$folder/$1.tar"
  cp /etc/resolv.conf "$2/etc/resolv.conf"
  # Nothing in a root has to outlive the machine.
  echo force-unsafe-io >"$2/etc/dpkg/dpkg.cfg.d/unsafe-io"
  cp "$here"/inside-*.sh "$2/root/"
}

build() {
  builder=$folder/$1-builder
  [ -f "$builder/root/ready" ] || unpack "$1" "$builder"
  cp "$here"/inside-*.sh "$2" "$builder/root/"
  enter "$builder" PACKAGE_OPTIONS="${PACKAGE_OPTIONS:-}" sh /root/inside-build.sh "$(basename "$2")"
  cp "$builder"/root/*.deb "$folder/$1.deb"
}

archive=$("$project/tools/source-archive.sh" "$folder/first")
again=$("$project/tools/source-archive.sh" "$folder/second")
cmp "$archive" "$again"
echo "check.sh: $archive comes out the same twice"

for choice in "$@"; do
  suite=${choice%%=*}
  if [ "$suite" != "$choice" ]; then cp "${choice#*=}" "$folder/$suite.deb"; else build "$suite" "$archive"; fi
  unpack "$suite" "$folder/$suite-bare"
  cp "$folder/$suite.deb" "$folder/$suite-bare/root/tilora.deb"
  # The first stage leaves the root as bare as it was.
  for stage in remove start inspect; do
    echo "check.sh: $suite: $stage"
    enter "$folder/$suite-bare" sh "/root/inside-$stage.sh"
  done
  rm -rf --one-file-system "$folder/$suite-bare"
  echo "check.sh: $suite: the package is good"
done
