#!/bin/sh
# Checks which folder of a source tree includes what: app → controller → {tiling, windows, shortcuts} → platform headers; tiling may use
# windows, and app/ui the controller and shortcuts.
# Usage: check.sh SOURCE_FOLDER    Status 1 after one line for each include or condition that breaks the order.
set -eu

cd "${1:?usage: check.sh SOURCE_FOLDER}"
files=$(find . -name '*.h' -o -name '*.cpp' -o -name '*.mm' | sort)
[ -n "$files" ] || { echo "check.sh: there is no source file in $1" >&2; exit 2; }

# shellcheck disable=SC2086
awk '
  function folderOf(path) {
    sub(/^\.\//, "", path)
    if (match(path, /^(app|platform|updater)\/[^\/]+\//)) return substr(path, 1, RLENGTH - 1)
    if (match(path, /^[^\/]+\//) == 0) return ""
    return substr(path, 1, RLENGTH - 1)
  }
  function complain(what) { printf "%s:%d: %s\n", FILENAME, FNR, what; broken = 1 }
  BEGIN {
    mayUse["platform"] = " platform "
    mayUse["windows"] = " platform windows "
    mayUse["shortcuts"] = " platform shortcuts "
    mayUse["tiling"] = " platform windows tiling "
    mayUse["controller"] = " platform windows shortcuts tiling controller "
    mayUse["updater"] = " updater "
    mayUse["app/ui"] = " platform shortcuts controller app/ui "
    foreign = "<(Q[A-Z]|Qt|xcb|xkbcommon|X11/|CoreFoundation|CoreGraphics|CoreServices|ApplicationServices|AppKit|Carbon|Cocoa|Foundation|" \
              "ServiceManagement|objc|unistd\\.h|sys/|windows\\.h)"
  }
  # The programs know everybody: they connect the parts.
  FNR == 1 { folder = folderOf(FILENAME); isProgram = folder ~ /^app(\/macos)?$/; system_ = folder ~ /\/./ && folder != "platform/simulated" }
  /^[ \t]*#[ \t]*(include|import)[ \t]*"/ && !isProgram {
    split($0, parts, "\"")
    used = folderOf(parts[2])
    if (!(folder in mayUse) && folder ~ /\/./) allowed = used == folder || used == substr(folder, 1, index(folder, "/") - 1)
    else allowed = used != "" && index(mayUse[folder], " " used " ") > 0
    if (!allowed) complain(folder " may not include \"" parts[2] "\"")
  }
  /^[ \t]*#[ \t]*(include|import)[ \t]*</ && !isProgram && !system_ && $0 ~ foreign { complain(folder " may not know " $NF) }
  /^[ \t]*#[ \t]*(if|ifdef|ifndef|elif)/ && folder !~ /^platform/ && /__APPLE__|__linux|__unix|_WIN32|Q_OS_|TARGET_OS_|__FreeBSD__/ {
    complain("a condition on the operating system")
  }
  END { exit broken }
' $files
