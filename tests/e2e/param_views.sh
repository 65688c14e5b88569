#!/usr/bin/env bash
# A user compares the wizard's values with the drive and undoes, keyboard only, with the
# real demo host on an X display: the set-up wizard opens, A80 gets a new value (typed,
# Tab), the host's menu "Parameter set" (Alt+P) opens "Compare with the drive" (D); in
# the list the one differing row is unticked and ticked again with Space, Enter applies
# the drive's value, Escape closes the view; back in the wizard Ctrl+Z undoes the Apply
# and OK (Ctrl+Enter) saves. The drive must get the typed value, and the host's log the
# Apply.
#
#   param_views.sh <wizhost> [xdotool]      (run under xvfb-run or on any X display)
set -uo pipefail

host=$1
xdotool=${2:-xdotool}
value=42
# shellcheck source=e2e_common.sh
source "$(dirname "$0")/e2e_common.sh"

key() { timeout 5 "$xdotool" key --clearmodifiers "$@" || fail "cannot press $*"; sleep 0.3; }
focus() { timeout 5 "$xdotool" windowfocus --sync "$1" 2>/dev/null || true; sleep 0.3; }

start_host 2 --open setup
find_host() { hid=$(timeout 5 "$xdotool" search --name "^drivewiz demo" 2>/dev/null | head -n 1); [ -n "$hid" ]; }
find_compare() { cid=$(timeout 5 "$xdotool" search --name "^Compare parameters$" 2>/dev/null | head -n 1); [ -n "$cid" ]; }
wait_window "Drive set-up wizard"
waitfor 50 find_host || fail "the host's window was not found"
sleep 1 # the first field (A80) takes the focus once the wizard shows
focus "$wid"

key ctrl+a
timeout 10 "$xdotool" type --delay 80 "$value" || fail "cannot type"
key Tab

focus "$hid"
key alt+p
key d
waitfor 100 find_compare || fail "the compare view did not open"
focus "$cid"
key space
key space
key Return
waitfor 50 grep -q "# Values applied: 1" "$log" || fail "the Apply was not reported"
key Escape

focus "$wid"
key ctrl+z
key ctrl+Return

waitfor 100 grep -qx "A80 (1) = $value" "$log" || fail "A80 = $value did not reach the drive"
grep -qx "A80 (1) = 1" "$log" && fail "the undone Apply reached the drive"
waitfor 50 grep -q "closed with OK" "$log" || fail "the wizard did not close with OK"
echo "PASS: compared, applied, undone and saved with the keyboard"
