#!/bin/sh
# Writes the Debian changelog of the releases in CHANGELOG.md to standard output. Usage: changelog.sh CHANGELOG.md "Name <address>"
set -eu

changes=${1:?usage: changelog.sh FILE MAINTAINER}
maintainer=${2:?usage: changelog.sh FILE MAINTAINER}

# A word that does not fit goes to the next line; no line is longer than 80 columns.
awk -v maintainer="$maintainer" '
  function flush(   words, count, i, line) {
    count = split(item, words, " ")
    line = "  *"
    for (i = 1; i <= count; i++) {
      if (length(line) + 1 + length(words[i]) > 80) { print line; line = "   " }
      line = line " " words[i]
    }
    if (count > 0) print line
    item = ""
  }
  function endRelease() {
    flush()
    if (date == "") return
    command = "date --utc --rfc-email --date=" date
    command | getline stamp
    close(command)
    printf "\n -- %s  %s\n\n", maintainer, stamp
    date = ""
  }
  /^## / {
    endRelease()
    released = /^## [0-9]/
    if (!released) next
    date = substr($3, 2, length($3) - 2)
    printf "tilora (%s) stable; urgency=medium\n\n", $2
    next
  }
  !released { next }
  /^$/ { flush(); next }
  /^- / { flush(); sub(/^- /, "") }
  { item = item " " $0 }
  END { endRelease() }
' "$changes"
