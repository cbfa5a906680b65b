#!/bin/sh
# Installs what building, running, testing or checking Tilora needs and what is not there yet, with apt or Homebrew.
# Usage: install-dependencies.sh [build|run|test|desktops|bench|check|package|check-package|macos-checks|all]...    (build when nothing is named)
set -eu

debian_packages() {
  case $1 in
    build)
      echo cmake ninja-build pkg-config qt6-base-dev libicu-dev nlohmann-json3-dev libgtest-dev libgmock-dev libpng-dev
      # Qt Quick, and the modules of it that the program loads when it opens a window.
      echo qt6-declarative-dev qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick
      echo libxcb1-dev libxcb-ewmh-dev libxcb-icccm4-dev libxcb-randr0-dev libxcb-record0-dev libxcb-res0-dev libxcb-xkb-dev libxcb-xtest0-dev
      echo libxcb-keysyms1-dev libxkbcommon-dev libxkbcommon-x11-dev
      command -v c++ >/dev/null 2>&1 || echo g++
      ;;
    # A small desktop: an X server in memory, a window manager, a panel, and programs of three toolkits.
    run)
      echo xvfb x11-xserver-utils x11-xkb-utils openbox tint2 xterm mousepad featherpad
      echo dbus-daemon fonts-dejavu-core adwaita-icon-theme xdg-utils
      ;;
    # The TestCase of the first imports the second, which is none of its dependencies.
    test) debian_packages run; echo qml6-module-qttest qml6-module-qtquick-window xserver-xorg-core xserver-xorg-video-dummy trayer xfce4-panel xfwm4 icewm marco mate-settings-daemon-common mate-desktop-common metacity ;;
    desktops) debian_packages test; echo fluxbox jwm kwin-x11 mutter ;;
    bench) debian_packages desktops; echo libbenchmark-dev valgrind i3-wm bspwm sxhkd herbstluftwm dwm awesome wmctrl xdotool gnuplot-nox ;;
    # The run-time libraries of the sanitizers and of libFuzzer are only recommended by clang.
    check) echo clang libclang-rt-dev clang-format clang-tidy ;;
    package) echo dpkg-dev file gzip ;;
    check-package) echo debootstrap util-linux ;;
    # The macOS desktop is compiled and linked here as well: a compiler, a linker and a C++ library for it, and any C library's headers.
    macos-checks) echo clang-19 lld-19 libc++-19-dev musl-dev ;;
  esac
}

homebrew_packages() {
  case $1 in
    build) echo cmake ninja pkg-config qt icu4c nlohmann-json googletest ;;
    run | test | desktops | package | check-package | macos-checks) ;;
    bench) echo google-benchmark ;;
    check) echo llvm clang-format ;;
  esac
}

# The packages of all the named groups, one a line, each once.
wanted() {
  for group in "$@"; do "$packages_of" "$group" | tr ' ' '\n'; done | sort -u
}

debian_missing() {
  for package in $(wanted "$@"); do
    state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) || state=none
    [ "$state" = installed ] || echo "$package"
  done
}

homebrew_missing() {
  for package in $(wanted "$@"); do
    brew list --versions "$package" >/dev/null 2>&1 || echo "$package"
  done
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

give_up() {
  printf 'install-dependencies.sh: %s\nInstall these packages by hand, then try again:\n%s\n' "$1" "$missing" >&2
  exit 1
}

[ $# -gt 0 ] || set -- build
for group in "$@"; do
  case $group in
    build | run | test | desktops | bench | check | package | check-package | macos-checks | all) ;;
    *) echo "install-dependencies.sh: there is no group \"$group\"" >&2; exit 2 ;;
  esac
done
case " $* " in *" all "*) set -- build run test desktops bench check package check-package macos-checks ;; esac

if command -v apt-get >/dev/null 2>&1; then
  packages_of=debian_packages
  missing=$(debian_missing "$@")
  [ -n "$missing" ] || exit 0
  [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null 2>&1 || give_up "packages are missing, and neither root nor sudo is at hand."
  echo "Installing:" $missing
  as_root apt-get update -q || give_up "the list of packages cannot be brought up to date."
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing || give_up "apt-get failed."
elif command -v brew >/dev/null 2>&1; then
  packages_of=homebrew_packages
  missing=$(homebrew_missing "$@")
  [ -n "$missing" ] || exit 0
  echo "Installing:" $missing
  brew install $missing || give_up "Homebrew failed."
else
  packages_of=debian_packages
  missing=$(wanted "$@")
  give_up "neither apt-get nor Homebrew is here."
fi
