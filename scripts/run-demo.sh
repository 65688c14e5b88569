#!/usr/bin/env bash
# `make demo`: runs the demo host built in <build dir>. With a display (DISPLAY or
# WAYLAND_DISPLAY set) its window opens. Without one, the host runs its scripted tour on
# Qt's offscreen platform: both wizards offline and online, values typed and saved, one
# picture per page in <out dir>, and a printout of what reached the simulated drive.
#
#   scripts/run-demo.sh <build dir> <out dir>
set -euo pipefail

build=${1:-build/release}
out=${2:-build/demo}
host="$build/apps/wizhost/wizhost"

if [ ! -x "$host" ]; then
  echo "run-demo: $host is missing; build it first (make demo)" >&2
  exit 1
fi

mkdir -p "$out"
# Qt wants a private runtime folder; without a desktop session there is none.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  export XDG_RUNTIME_DIR="$out/.runtime"
  mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
fi

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
  exec "$host"
fi

# The pictures need fonts: the offscreen platform finds them through fontconfig.
if ! fc-list 2>/dev/null | grep -qi dejavu; then
  echo "run-demo: no DejaVu fonts found (fonts-dejavu-core); pictures may lack text" >&2
fi
export QT_QPA_PLATFORM=offscreen
export QT_QPA_FONTDIR=${QT_QPA_FONTDIR:-/usr/share/fonts/truetype/dejavu}

rm -f "$out"/*.png
echo "run-demo: no display; touring the demo host, pictures go to $out"
"$host" --tour "$out"
