#!/usr/bin/env bash
# A user sets up analog output 1 with the real demo host on an X display, by keyboard
# only: the wizard "Outputs and encoder" opens on analog output 1 with the focus in the
# source field; the user types the source E14 (3000 rpm at full scale), Tab, 1500 for
# 10 V, Tab, -1500 for 0 V, Tab, and presses OK (Ctrl+Enter). The drive's write log must
# show the factor 100 % and the offset 5 V that these values give.
#
#   outputs_wizard.sh <wizhost> [xdotool]      (run under xvfb-run or on any X display)
set -uo pipefail

host=$1
xdotool=${2:-xdotool}
source "$(dirname "$0")/e2e_common.sh"

key() { timeout 5 "$xdotool" key --clearmodifiers "$@" || fail "cannot press $*"; sleep 0.2; }
type_text() { timeout 10 "$xdotool" type --delay 80 -- "$1" || fail "cannot type $1"; sleep 0.2; }

start_host 2 --open outputs
wait_window "Outputs and encoder"
sleep 1 # let the wizard settle: the source field of analog output 1 takes the focus

timeout 5 "$xdotool" windowfocus --sync "$wid" 2>/dev/null || true
key ctrl+a
type_text "E14"
key Tab
type_text "1500"
key Tab
type_text "-1500"
key Tab
key ctrl+Return

waitfor 100 grep -qx "F42 (0) = 100.0" "$log" || fail "the factor 100 % did not reach the drive"
waitfor 50 grep -qx "F41 (0) = 5.00" "$log" || fail "the offset 5 V did not reach the drive"
grep -q "^F40 (0) = E14" "$log" || fail "the source E14 did not reach the drive"
waitfor 50 grep -q "closed with OK" "$log" || fail "the wizard did not close with OK"
echo "PASS: factor 100 % and offset 5 V reached the drive"
