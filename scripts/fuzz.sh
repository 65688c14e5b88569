#!/usr/bin/env bash
# Builds the fuzz targets of tests/fuzz with clang (libFuzzer, ASan, UBSan) and runs them.
#
#   scripts/fuzz.sh smoke <build-dir>           every target over its seeds and 20 s of
#                                               fuzzing, two at a time (part of make test)
#   scripts/fuzz.sh run <build-dir> [seconds]   every target for a while (default 300 s),
#                                               two at a time; the grown corpus stays in
#                                               <build-dir>/corpus, inputs that fail in
#                                               <build-dir>/findings (make fuzz)
#
# Seeds: the sample files in data/sample and the small inputs in tests/fuzz/seeds. Without
# clang the targets are skipped with a note. Exit status 1 when a target fails.
set -euo pipefail

mode=${1:?smoke or run}
build=${2:?build directory}
seconds=${3:-300}
[ "$mode" = smoke ] && seconds=${FUZZ_SMOKE_SECONDS:-20}
root=$(cd "$(dirname "$0")/.." && pwd)
jobs=${JOBS:-2}

if ! command -v clang++ >/dev/null 2>&1 || ! command -v clang >/dev/null 2>&1; then
  echo "drivewiz: clang is not installed: the fuzz targets are skipped"
  exit 0
fi

generator=()
command -v ninja >/dev/null 2>&1 && generator=(-G Ninja)
launcher=()
command -v ccache >/dev/null 2>&1 &&
  launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
mkdir -p "$build"
if ! { cmake -S "$root/tests/fuzz" -B "$build" "${generator[@]}" "${launcher[@]}" \
         -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug &&
       cmake --build "$build" -j"$jobs"; } >"$build/build.log" 2>&1; then
  echo "drivewiz: the fuzz targets do not build:"
  grep -E "error|undefined reference" "$build/build.log" | head -20
  exit 1
fi

# The sample files each target starts from, besides tests/fuzz/seeds/<target>.
samples() {
  local s="$root/data/sample"
  case $1 in
    csv_import|csv_fields|words) echo "$s/Parameter.csv $s/Auswahlen.csv" ;;
    coordinates|convert) echo "$s/Parameter.csv" ;;
    textcodec) echo "$s/Parameter.csv $s/Auswahlen.csv $s/wizling.1 $s/wizling.2" ;;
    inifile) echo "$s/wizling.1 $s/wizling.2" ;;
    *) echo "" ;;
  esac
}

# Longest input worth trying: lines and words are short, files and documents are not.
max_len() {
  case $1 in
    csv_import|inifile|rtf|textcodec) echo 8192 ;;
    csv_fields|words) echo 1024 ;;
    *) echo 256 ;;
  esac
}

run_one() {
  local target=$1 corpus seeds log
  seeds="$build/seeds/$target"
  rm -rf "$seeds" && mkdir -p "$seeds" "$build/findings/$target" "$build/logs"
  cp "$root/tests/fuzz/seeds/$target/"* "$seeds/" 2>/dev/null || true
  for f in $(samples "$target"); do cp "$f" "$seeds/"; done
  if [ "$mode" = smoke ]; then
    corpus=$(mktemp -d)
  else
    corpus="$build/corpus/$target"
    mkdir -p "$corpus"
  fi
  log="$build/logs/$target.log"
  local status=0 seed=()
  [ "$mode" = smoke ] && seed=(-seed=1) # the same walk each time, as far as time allows
  ASAN_OPTIONS=detect_leaks=0:allocator_may_return_null=1 \
  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    "$build/fuzz_$target" "$corpus" "$seeds" -max_total_time="$seconds" -max_len="$(max_len "$target")" \
      -timeout=20 -rss_limit_mb=3072 -print_final_stats=1 "${seed[@]}" \
      -artifact_prefix="$build/findings/$target/" >"$log" 2>&1 || status=$?
  local runs
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  [ "$mode" = smoke ] && rm -rf "$corpus"
  if [ "$status" -ne 0 ]; then
    echo "fuzz_$target: FAILED after ${runs:-?} executions; input kept in $build/findings/$target"
    grep -E "oracle failed|\*\*\*|ERROR|SUMMARY|runtime error" "$log" | head -20
    return 1
  fi
  echo "fuzz_$target: ${runs:-?} executions in ${seconds} s, no finding"
}
export -f run_one samples max_len
export mode build seconds root

targets=$(find "$build" -maxdepth 1 -type f -name 'fuzz_*' -perm -u+x -printf '%f\n' |
  sed 's/^fuzz_//' | sort)
echo "$targets" | xargs -P "$jobs" -I{} bash -c 'run_one {}'
