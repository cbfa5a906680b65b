#!/bin/sh
# Proves that the layering check fails on each kind of line that it forbids, and passes on those that it allows.
# Usage: check_test.sh FOLDER_FOR_THE_TREES
set -eu

check=$(cd "$(dirname "$0")" && pwd)/check.sh
tree=${1:?usage: check_test.sh FOLDER}/tree
failures=0

# expect STATUS FILE LINE: what the check says of a tree of this one file.
expect() {
  rm -rf "$tree"
  mkdir -p "$tree/$(dirname "$2")"
  printf '%s\n' "$3" >"$tree/$2"
  status=0
  "$check" "$tree" >"$tree.out" 2>&1 || status=$?
  if [ "$status" -ne "$1" ]; then
    echo "$2 with $3: status $status, not $1"
    failures=$((failures + 1))
  fi
}

expect 0 tiling/pass.cpp '#include "windows/screens.h"'
expect 0 tiling/pass.cpp '#include <vector>'
expect 0 controller/controller.h '#include "tiling/pass.h"'
expect 0 platform/x11/desktop.h '#include <xcb/xcb.h>'
expect 0 platform/x11/desktop.h '#include "platform/screens.h"'
expect 0 platform/x11/desktop.cpp '#ifdef __linux__'
expect 0 app/main.cpp '#include <QCoreApplication>'
expect 0 app/main.cpp '#include "platform/x11/x11_desktop.h"'
expect 0 app/macos/program.mm '#include "platform/macos/desktop.h"'
expect 0 app/ui/menu.cpp '#include "controller/controller.h"'
expect 0 app/ui/menu.cpp '#include <QQuickView>'
expect 0 updater/network/http_fetcher.h '#include "updater/surroundings.h"'
expect 0 updater/network/http_fetcher.h '#include <QNetworkReply>'
expect 1 windows/screens.h '#include "tiling/pass.h"'
expect 1 windows/screens.h '#include "shortcuts/binding.h"'
expect 1 windows/screens.h '#include "screen_key.h"'
expect 1 tiling/pass.cpp '#include "controller/controller.h"'
expect 1 shortcuts/binding.h '  #  include "windows/screens.h"'
expect 1 controller/controller.h '#include "app/main_queue.h"'
expect 1 controller/controller.h '#include "platform/x11/connection.h"'
expect 1 controller/controller.h '#include <QObject>'
expect 1 controller/controller.cpp '#include <unistd.h>'
expect 1 app/ui/menu.cpp '#include "platform/x11/connection.h"'
expect 1 app/ui/menu.cpp '#include "updater/releasewatch.h"'
expect 1 app/ui/menu.cpp '#include "app/qt_shell.h"'
expect 1 tiling/pass.mm '#import <CoreFoundation/CoreFoundation.h>'
expect 1 platform/screens.h '#include "windows/screens.h"'
expect 1 platform/screens.h '#include <xcb/xcb.h>'
expect 1 platform/simulated/desktop.h '#include <xcb/xcb.h>'
expect 1 platform/simulated/desktop.h '#include "platform/x11/connection.h"'
expect 1 platform/x11/desktop.h '#include "windows/screens.h"'
expect 1 updater/releasewatch.h '#include "platform/settings_store.h"'
expect 1 updater/releasewatch.h '#include <QString>'
expect 1 updater/releasewatch.h '#include "updater/network/http_fetcher.h"'
expect 1 updater/network/http_fetcher.h '#include "platform/shell.h"'
expect 1 unknown/file.h '#include "platform/screens.h"'
expect 1 controller/controller.cpp '#ifdef __APPLE__'
expect 1 app/main.cpp '#if defined(Q_OS_LINUX)'
[ "$failures" -eq 0 ]
