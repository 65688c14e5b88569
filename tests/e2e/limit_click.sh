#!/usr/bin/env bash
# One click that does two things: in German at scale factor 2, the user types a fieldbus
# address above its limit (500, the limit is 127) and clicks OK with the mouse. Leaving
# the field shows the limit message first; the user confirms it with Enter, and the
# wizard must then close with OK and the corrected value reach the drive, without a
# second click. Pictures of the typed value and of the host after OK go to $E2E_PICTURES
# when it is set.
#
#   limit_click.sh <wizhost> [xdotool]      (run under xvfb-run with a 2560x1600 screen)
set -uo pipefail

host=$1
xdotool=${2:-xdotool}
# shellcheck source=e2e_common.sh
source "$(dirname "$0")/e2e_common.sh"

picture() {
  [ -n "${E2E_PICTURES:-}" ] && command -v xwd >/dev/null && command -v pnmtopng >/dev/null || return 0
  mkdir -p "$E2E_PICTURES"
  xwd -root -silent | xwdtopnm 2>/dev/null | pnmtopng >"$E2E_PICTURES/$1.png" 2>/dev/null
}

export QT_SCALE_FACTOR=2
# The wizard's stored size stays out of the source tree's sample folder.
cp -r "$(dirname "$0")/../../data/sample" "$work/data"
start_host 1 --data "$work/data" --open setup

find_window() { wid=$(timeout 5 "$xdotool" search --name "^Inbetriebnahme-Assistent$" 2>/dev/null | head -n 1); [ -n "$wid" ]; }
waitfor 300 find_window || fail "the set-up wizard's window did not appear"
sleep 1.5 # the first field takes the focus once the wizard shows
eval "$(timeout 5 "$xdotool" getwindowgeometry --shell "$wid")"
timeout 5 "$xdotool" windowfocus --sync "$wid" 2>/dev/null || true

timeout 5 "$xdotool" key --clearmodifiers ctrl+a || fail "cannot select the field's text"
timeout 10 "$xdotool" type --delay 80 500 || fail "cannot type"
picture typed-above-limit
# OK sits 105 x 153 pixels (at 96 dpi) from the wizard's lower right corner.
timeout 5 "$xdotool" mousemove $((X + WIDTH - 2 * 105)) $((Y + HEIGHT - 2 * 153)) click 1 ||
  fail "cannot click OK"

find_message() { timeout 5 "$xdotool" search --name "^Warnung$" >/dev/null 2>&1; }
waitfor 100 find_message || fail "no limit message appeared"
timeout 5 "$xdotool" key Return || fail "cannot confirm the message"

waitfor 100 grep -qx "A80 (1) = 127" "$log" || fail "the corrected A80 = 127 did not reach the drive"
waitfor 50 grep -q "Assistent mit OK geschlossen" "$log" || fail "the wizard did not close with OK"
picture after-ok
echo "PASS: one click on OK corrected A80 to 127 and closed the wizard"
