#!/usr/bin/env bash
# Installs the Debian 12 packages drivewiz needs to build, test, benchmark and run
# its demo. Only missing packages are installed, so running it twice is cheap.
set -euo pipefail

packages=(
  g++ make cmake pkg-config ninja-build
  qt6-base-dev qt6-base-dev-tools libqt6opengl6-dev qt6-tools-dev qt6-tools-dev-tools designer-qt6 qt6-svg-dev
  qt6-translations-l10n
  libqt6svg6 libgl-dev libxkbcommon-dev
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  libsimpleini-dev zlib1g-dev
  fontconfig fonts-dejavu-core
  xvfb xdotool x11-utils x11-apps netpbm
  python3
  clang libclang-rt-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
  echo "drivewiz: missing packages: ${missing[*]}" >&2
  echo "drivewiz: run as root (or install them) and try again" >&2
  exit 1
fi

# The installer's progress goes to a log, shown only when something fails.
log=$(mktemp -t drivewiz-install.XXXXXX)
echo "drivewiz: installing ${#missing[@]} package(s): ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
if ! { apt-get update -qq && apt-get install -y -qq --no-install-recommends "${missing[@]}"; } \
    >"$log" 2>&1; then
  echo "drivewiz: installing failed:" >&2
  tail -n 40 "$log" >&2
  exit 1
fi
rm -f "$log"
