#!/usr/bin/env bash
# Installs a drivewiz build into a fresh prefix and uses it as a host would:
#   1. cmake --install into <work>/prefix;
#   2. examples/host-cmake configured with find_package(drivewiz), built, and run with
#      --check on the offscreen platform (the wizard must load and build its controls);
#   3. pkg-config: every public header compiles alone, and a C program links.
#
#   install_and_build.sh <build> <source> <work> <generator> <launcher> <c++> <cc>
#                        <cxxflags> <ldflags> <pkg-config>
set -euo pipefail

build=$1 source=$2 work=$3 generator=$4 launcher=$5 cxx=$6 cc=$7 flags=$8 ldflags=$9
pkgconfig=${10}
prefix=$work/prefix
example=$work/host-cmake

fail() { echo "FAIL: $*" >&2; exit 1; }

rm -rf "$prefix"
mkdir -p "$work"
cmake --install "$build" --prefix "$prefix" >"$work/install.log" ||
  { cat "$work/install.log" >&2; fail "cmake --install"; }

[ -f "$prefix/include/drivewiz/host_api.h" ] || fail "host_api.h not installed"
[ -f "$prefix/include/drivewiz/paramctrls/ParamCtrls.h" ] || fail "ParamCtrls.h not installed"
if find "$prefix/include" -name '*_p.h' | grep -q .; then
  fail "private headers installed: $(find "$prefix/include" -name '*_p.h' | tr '\n' ' ')"
fi
config=$(find "$prefix" -name drivewizConfig.cmake | head -n 1)
[ -n "$config" ] || fail "drivewizConfig.cmake not installed"
[ -n "$(find "$prefix" -name drivewizConfigVersion.cmake)" ] || fail "no version file"
pc=$(find "$prefix" -name drivewiz.pc | head -n 1)
[ -n "$pc" ] || fail "drivewiz.pc not installed"

# The Designer plugin lies in Qt's plugin folder under the prefix and finds the
# installed library, not the build's.
plugin=$(find "$prefix" -path '*/plugins/designer/*drivewiz_designer*.so' | head -n 1)
[ -n "$plugin" ] || fail "the Designer plugin is not installed under plugins/designer"
resolved=$(env -u LD_LIBRARY_PATH ldd "$plugin" | awk '/libdrivewiz\.so/ {print $3}')
case "$resolved" in
  "$prefix"/*) ;;
  *) fail "the installed plugin finds libdrivewiz at '$resolved', not in $prefix" ;;
esac

# The example, against the installed package only.
launch=()
[ -n "$launcher" ] && launch=(-DCMAKE_CXX_COMPILER_LAUNCHER="$launcher")
cmake -S "$source/examples/host-cmake" -B "$example" -G "$generator" "${launch[@]}" \
  -DCMAKE_BUILD_TYPE=Debug -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$ldflags" \
  -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF >"$work/configure.log" 2>&1 ||
  { cat "$work/configure.log" >&2; fail "the example does not configure"; }
grep -q "drivewiz_DIR:PATH=$prefix" "$example/CMakeCache.txt" ||
  fail "the example found drivewiz elsewhere: $(grep drivewiz_DIR "$example/CMakeCache.txt")"
cmake --build "$example" >"$work/build.log" 2>&1 ||
  { cat "$work/build.log" >&2; fail "the example does not build"; }
out=$(QT_QPA_PLATFORM=offscreen "$example/host-example" --check 2>&1) ||
  { echo "$out" >&2; fail "the example did not open its wizard"; }
echo "$out"
echo "$out" | grep -q "2 pages, 5 of 5 parameter controls built, 5 parameters described" ||
  fail "the wizard is not what the example draws"

# pkg-config: the headers on their own, and the C interface from C.
export PKG_CONFIG_PATH=$(dirname "$pc")
cflags=$("$pkgconfig" --cflags drivewiz) || fail "pkg-config --cflags drivewiz"
libs=$("$pkgconfig" --libs drivewiz) || fail "pkg-config --libs drivewiz"
headers=$work/all_headers.cpp
(cd "$prefix/include" && find drivewiz -name '*.h' | sort | sed 's/.*/#include <&>/') >"$headers"
# shellcheck disable=SC2086
"$cxx" -std=c++17 -fPIC $flags $cflags -fsyntax-only "$headers" ||
  fail "the installed headers do not compile with pkg-config's flags"
cat >"$work/c_host.c" <<'C'
#include <drivewiz/host_api.h>
#include <stdio.h>
int main(void) { printf("[%s]\n", dwz_last_error()); return 0; }
C
# shellcheck disable=SC2086
"$cc" $flags $cflags "$work/c_host.c" -o "$work/c_host" $ldflags $libs ||
  fail "a C host does not link with pkg-config's flags"
libdir=$("$pkgconfig" --variable=libdir drivewiz)
[ -f "$libdir/libdrivewiz.so" ] || fail "pkg-config's libdir $libdir holds no libdrivewiz.so"
LD_LIBRARY_PATH="$libdir" "$work/c_host" >/dev/null || fail "the C host does not run"
echo "PASS: installed into $prefix; the example and a C host use it"
