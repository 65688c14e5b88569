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
source "$(dirname "$0")/e2e_common.sh"

start_host 2 --open setup
wait_window "Drive set-up wizard"
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
