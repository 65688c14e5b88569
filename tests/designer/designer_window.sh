#!/usr/bin/env bash
# The real Qt Designer with the plugin: Designer starts with the plugin found through
# QT_PLUGIN_PATH and opens a wizard form drawn with the library's classes whose table
# names a description file, so its parameter controls show their parameters. The picture
# of the screen is kept for a person to look at (the "drivewiz" group of the widget box
# and the form), not compared.
#
#   designer_window.sh <designer> <plugin dir> <screenshot tool> <picture.png> <form.ui>
#                      <description file> [preload]     (under xvfb-run or on any display)
set -uo pipefail

designer=$1 plugins=$2 shot=$3 picture=$4 formTemplate=$5 parameters=$6 preload=${7:-}
work=$(mktemp -d)
log=$work/designer.log
pid=""

# Designer ends on SIGTERM (a form with changes would ask, this one has none).
cleanup() {
  if [ -n "$pid" ]; then kill "$pid" 2>/dev/null && wait "$pid" 2>/dev/null; fi
  rm -rf "$work"
}
trap cleanup EXIT

fail() {
  echo "FAIL: $*" >&2
  echo "--- designer output" >&2; tail -n 40 "$log" >&2 2>/dev/null
  exit 1
}

[ -n "${DISPLAY:-}" ] || fail "no X display"
command -v xdotool >/dev/null || fail "xdotool is missing"

# A fresh Designer profile: the standard groups of the widget box closed, so that the
# "drivewiz" group shows without scrolling.
export HOME=$work/home
mkdir -p "$HOME/.config/QtProject"
cat >"$HOME/.config/QtProject/Designer.conf" <<'CONF'
[WidgetBox]
Closed%20categories=Layouts, Spacers, Buttons, Item Views (Model-Based), Item Widgets (Item-Based), Containers, Input Widgets, Display Widgets
CONF
form=$work/wizard.ui
sed "s|@PARAMETERS@|$parameters|" "$formTemplate" >"$form"

export QT_PLUGIN_PATH=$plugins QT_QPA_PLATFORM=xcb ASAN_OPTIONS=detect_leaks=0
LD_PRELOAD=$preload "$designer" "$form" >"$log" 2>&1 &
pid=$!

wid=""
for _ in $(seq 1 300); do
  wid=$(timeout 5 xdotool search --onlyvisible --name "Qt Designer" 2>/dev/null | head -n 1)
  [ -n "$wid" ] && break
  sleep 0.1
done
[ -n "$wid" ] || fail "Designer's window did not appear"
grep -q drivewiz_designer "/proc/$pid/maps" || fail "Designer did not load the plugin"
timeout 5 xdotool windowmove "$wid" 0 0 windowsize "$wid" 1400 1000 2>/dev/null
sleep 2 # let Designer lay out its docks and paint the form

"$shot" "$picture" || fail "no picture of the screen"
[ -s "$picture" ] || fail "the picture is empty"

# The form author selects the parameter control A80 and filters the property editor for
# the library's properties; a second picture shows them. The places are those of
# Designer's default layout on a 1400 x 1000 screen.
timeout 5 xdotool mousemove 470 152 click 1 2>/dev/null
sleep 0.5
timeout 5 xdotool mousemove 1090 386 click 1 2>/dev/null
timeout 5 xdotool type --delay 30 "wiz" 2>/dev/null
sleep 1
"$shot" "${picture%.png}-control.png" 0 0 1400 680 || fail "no picture of the selected control"
kill -0 "$pid" 2>/dev/null || fail "Designer quit"
if grep -E "class name mismatch|drivewiz: |AddressSanitizer|runtime error" "$log"; then
  fail "Designer reported trouble with the plugin"
fi
echo "PASS: Designer loaded the plugin; picture in $picture"
