#!/usr/bin/env bash
# A commissioning engineer sets up the drive's inputs with the keyboard only, with the
# real demo host on an X display: in the Inputs wizard the quick stop takes its signal
# from binary input 1 inverted, the fault reset from a fieldbus bit, which the engineer
# ticks in the control word's bit bar (reached from the source field with Ctrl+Right),
# and OK (Ctrl+Enter) saves. The sources and the control word must reach the simulated
# drive, as the host's write log shows.
#
#   inputs_wizard.sh <wizhost> [xdotool]      (run under xvfb-run or on any X display)
set -uo pipefail

host=$1
xdotool=${2:-xdotool}
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

key() { timeout 5 "$xdotool" key --clearmodifiers "$@" || fail "cannot press $*"; sleep 0.3; }

[ -n "${DISPLAY:-}" ] || fail "no X display"
export QT_QPA_PLATFORM=xcb
"$host" 2 --open inputs --log "$log" >"$work/out.txt" 2>&1 &
pid=$!

find_window() { wid=$(timeout 5 "$xdotool" search --name '^Inputs$' 2>/dev/null | head -n 1); [ -n "$wid" ]; }
waitfor 300 find_window || fail "the Inputs wizard's window did not appear"
waitfor 100 grep -q "opened" "$log" || fail "the host did not report the wizard"
sleep 2 # the first source field (quick stop, A60 = 3: BE1) takes the focus once it shows
timeout 5 "$xdotool" windowfocus --sync "$wid" 2>/dev/null || true

# Quick stop: open the list, one entry down is "4: BE1 invers".
key F4
key Down
key Return
# Fault reset, two tab stops on (its check box, then its field): from "5: BE2" three
# entries up is "2: Feldbus-Bit".
key Tab
key Tab
key F4
key Up Up Up
key Return
# To the fault reset's bit in the control word's bar, and tick it.
key ctrl+Right
key space
key ctrl+Return

waitfor 100 grep -qx "A60 (1) = 4: BE1 invers" "$log" || fail "A60 did not reach the drive"
waitfor 50 grep -qx "A61 (1) = 2: Feldbus-Bit" "$log" || fail "A61 did not reach the drive"
waitfor 50 grep -qx "A180 (1) = 0000000000000010bin" "$log" ||
  fail "the ticked bit of A180 did not reach the drive"
waitfor 50 grep -q "closed with OK" "$log" || fail "the wizard did not close with OK"
echo "PASS: A60 = 4: BE1 invers, A61 = 2: Feldbus-Bit and A180 bit 1 reached the drive"
