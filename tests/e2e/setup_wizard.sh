#!/usr/bin/env bash
# A user commissions the drive with the real demo host on an X display: the set-up
# wizard opens, the user clicks into the first field (the fieldbus address A80), types a
# new value, leaves the field with Tab and presses OK (Ctrl+Enter). The value must reach
# the simulated drive, as the host's write log shows.
#
#   setup_wizard.sh <wizhost> [xdotool]      (run under xvfb-run or on any X display)
set -uo pipefail

host=$1
xdotool=${2:-xdotool}
value=42
work=$(mktemp -d)
log="$work/wizhost.log"
pid=""

cleanup() {
  if [ -n "$pid" ] && kill -0 "$pid" 2>/dev/null; then
    kill "$pid" 2>/dev/null
    for _ in $(seq 1 50); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
    kill -9 "$pid" 2>/dev/null
  fi
  rm -rf "$work"
}
trap cleanup EXIT

fail() {
  echo "FAIL: $*" >&2
  echo "--- wizhost log" >&2; cat "$log" >&2 2>/dev/null
  echo "--- wizhost output" >&2; tail -n 30 "$work/out.txt" >&2 2>/dev/null
  exit 1
}

# waits up to $1 tenths of a second for the command that follows to succeed
waitfor() {
  local tenths=$1; shift
  for _ in $(seq 1 "$tenths"); do "$@" && return 0; sleep 0.1; done
  return 1
}

[ -n "${DISPLAY:-}" ] || fail "no X display"
export QT_QPA_PLATFORM=xcb
"$host" 2 --open setup --log "$log" >"$work/out.txt" 2>&1 &
pid=$!

find_window() { wid=$(timeout 5 "$xdotool" search --name "Drive set-up wizard" 2>/dev/null | head -n 1); [ -n "$wid" ]; }
waitfor 300 find_window || fail "the set-up wizard's window did not appear"
waitfor 100 grep -q "opened" "$log" || fail "the host did not report the wizard"
sleep 1 # let the wizard settle: the first field takes the focus once it shows

timeout 5 "$xdotool" windowfocus --sync "$wid" 2>/dev/null || true
# The first field lies under the title of the first page (see forms/DriveSetup.ui).
timeout 5 "$xdotool" mousemove --window "$wid" 280 87 click 1 || fail "cannot click"
sleep 0.3
timeout 5 "$xdotool" key --clearmodifiers ctrl+a || fail "cannot select the field's text"
timeout 10 "$xdotool" type --delay 80 "$value" || fail "cannot type"
timeout 5 "$xdotool" key Tab || fail "cannot press Tab"
sleep 0.3
timeout 5 "$xdotool" key --clearmodifiers ctrl+Return || fail "cannot press OK"

waitfor 100 grep -qx "A80 (1) = $value" "$log" || fail "A80 = $value did not reach the drive"
waitfor 50 grep -q "closed with OK" "$log" || fail "the wizard did not close with OK"
echo "PASS: A80 = $value reached the drive"
