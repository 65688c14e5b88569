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
# shellcheck source=e2e_common.sh
source "$(dirname "$0")/e2e_common.sh"

key() { timeout 5 "$xdotool" key --clearmodifiers "$@" || fail "cannot press $*"; sleep 0.3; }

start_host 2 --open inputs
wait_window '^Inputs$'
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
