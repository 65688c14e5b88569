# What the end-to-end scripts share; sourced by them after they set `host` and `xdotool`.
# It makes a work folder with the host's log, stops the host on exit (the script starts it
# in the background and keeps its pid in `pid`), and offers fail, waitfor and the starting
# of the host on the X display.

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

# starts the host with its arguments on the X display, logging to "$log"
start_host() {
  [ -n "${DISPLAY:-}" ] || fail "no X display"
  export QT_QPA_PLATFORM=xcb
  "$host" "$@" --log "$log" >"$work/out.txt" 2>&1 &
  pid=$!
}

# waits for the window titled $1 (its id goes to `wid`) and for the host's log to report it
wait_window() {
  local title=$1
  find_window() { wid=$(timeout 5 "$xdotool" search --name "$title" 2>/dev/null | head -n 1); [ -n "$wid" ]; }
  waitfor 300 find_window || fail "the window \"$title\" did not appear"
  waitfor 100 grep -q "opened" "$log" || fail "the host did not report the wizard"
}
