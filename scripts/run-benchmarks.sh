#!/usr/bin/env bash
# Runs every benchmark executable of a release build and merges their Google Benchmark
# JSON into <out>/results.json.
set -euo pipefail
build=${1:?build folder}
out=${2:?output folder}
mkdir -p "$out"
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
export DRIVEWIZ_BENCH_DATA="$out/data"
mkdir -p "$DRIVEWIZ_BENCH_DATA"

mapfile -t benches < <(find "$build/bench" -maxdepth 1 -type f -name 'bench_*' -perm -u+x | sort)
if [ ${#benches[@]} -eq 0 ]; then
  echo "drivewiz: no benchmarks built" >&2
  exit 1
fi
parts=()
for b in "${benches[@]}"; do
  name=$(basename "$b")
  echo "== $name"
  "$b" --benchmark_out="$out/$name.json" --benchmark_out_format=json
  parts+=("$out/$name.json")
done

python3 - "$out/results.json" "${parts[@]}" <<'PY'
import json, sys
target, parts = sys.argv[1], sys.argv[2:]
merged = None
for p in parts:
    with open(p) as f:
        data = json.load(f)
    if merged is None:
        merged = data
    else:
        merged["benchmarks"].extend(data["benchmarks"])
with open(target, "w") as f:
    json.dump(merged, f, indent=1)
print(f"drivewiz: {len(merged['benchmarks'])} benchmark results in {target}")
PY

# The peer: Python's csv module on the same generated file.
if [ -f "$DRIVEWIZ_BENCH_DATA/desc100k.csv" ]; then
  python3 "$(dirname "$0")/../bench/python_csv_peer.py" "$DRIVEWIZ_BENCH_DATA/desc100k.csv" 5 \
    | tee "$out/python_csv_peer.txt"
fi

# The peer of the measurement load: Python's csv module on the same recording, and the
# ratio of the two times.
if [ -f "$DRIVEWIZ_BENCH_DATA/measurement1Mx8.csv" ]; then
  python3 "$(dirname "$0")/../bench/python_measurement_peer.py" \
    "$DRIVEWIZ_BENCH_DATA/measurement1Mx8.csv" 3 | tee "$out/python_measurement_peer.txt"
  python3 - "$out/results.json" "$out/python_measurement_peer.txt" <<'PY'
import json, re, sys
scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1000.0}
times = {b["name"]: b["real_time"] * scale[b["time_unit"]]
         for b in json.load(open(sys.argv[1]))["benchmarks"]}
peer = float(re.search(r"in ([0-9.]+) ms", open(sys.argv[2]).read()).group(1))
load = times.get("BM_MeasurementLoad")
if load:
    print(f"BM_MeasurementLoad {load:.1f} ms, Python csv {peer:.1f} ms: "
          f"Python takes {peer / load:.1f}x as long")
PY
fi
