# A session on a virtual display, as the user: consent is asked for, a window is tiled, the settings open, the end is clean.
set -eu

fail() {
  echo "session.sh: $1" >&2
  xwininfo -root -tree >&2 || true
  cat out err >&2
  exit 1
}

# comes_true WHAT COMMAND...: waits for the command to succeed, half a minute at most.
comes_true() {
  what=$1
  shift
  for _ in $(seq 300); do
    if "$@" >/dev/null 2>&1; then return; fi
    sleep 0.1
  done
  fail "$what"
}

is_named() { [ "$(xdotool getactivewindow getwindowname)" = "$1" ]; }
is_active() { [ "$(xdotool getactivewindow)" = "$1" ]; }
width() { xdotool getwindowgeometry --shell "$1" | sed -n 's/^WIDTH=//p'; }
is_wider() { [ "$(width "$1")" -gt "$2" ]; }
is_narrower() { [ "$(width "$1")" -lt "$2" ]; }
says() { grep -q "$1" out err; }

: >out
: >err
Xvfb -displayfd 3 -noreset -nolisten tcp -screen 0 1280x800x24 3>display >/dev/null 2>&1 &
server=$!
comes_true "the X server does not start" test -s display
DISPLAY=:$(cat display)
export DISPLAY
openbox &
manager=$!
comes_true "the window manager does not start" sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 0x'
xterm -geometry 40x12 -title first &
terminal=$!
comes_true "the terminal does not open" is_named first
window=$(xdotool getactivewindow)

tilora >out 2>err &
tilora=$!
comes_true "consent is not asked for" is_named Tilora
is_narrower "$window" 600 || fail "the terminal was tiled without consent"
xdotool key Return
comes_true "the dialog stays" sh -c "! xdotool search --name '^Tilora\$'"
xdotool windowactivate "$window"
comes_true "the terminal does not fill the screen" is_wider "$window" 1200
is_active "$window" || fail "the terminal is not the active window"
xdotool key alt+shift+bracketleft
comes_true "the terminal does not go to the left half" is_narrower "$window" 660
is_wider "$window" 560 || fail "the terminal is no half of the screen wide"
comes_true "the update check does not say that its host does not exist" says 'Releasewatch: .*not found'

tilora || fail "the second start ends with status $?"
comes_true "the second start does not open the settings" is_named "Tilora Settings"
xprop -id "$(xdotool getactivewindow)" WM_CLASS

kill -TERM "$tilora"
wait "$tilora" || fail "the end is not clean: status $?"
cat out err
if grep -i -e 'qrc:' -e 'module .* not installed' -e 'error' err; then fail "there are complaints"; fi
kill "$terminal" "$manager"
kill "$server"
