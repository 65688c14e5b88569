#!/usr/bin/env bash
# Builds examples/c_host.c by hand, as the README tells a host developer to, against the
# build tree's pkg-config file, and runs it: it must find the library without
# LD_LIBRARY_PATH and the language files through dwz_set_config_folder.
#
#   build_like_readme.sh <build dir> <source dir>
set -euo pipefail
build=$1
src=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export PKG_CONFIG_PATH="$build/pkgconfig"
cc "$src/examples/c_host.c" $(pkg-config --cflags --libs drivewiz) -o "$work/c_host"
unset LD_LIBRARY_PATH
"$work/c_host" "$src/apps/wizhost/forms/DriveSetup.ui" "$src/data/sample/Parameter.csv" \
  "$src/data/sample" --auto
