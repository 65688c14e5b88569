#!/usr/bin/env bash
# Runs every benchmark executable of a release build with repetitions, merges their
# Google Benchmark JSON into <out>/results.json and prints the ratios listed in
# bench/ratios.txt and bench/*.ratios, computed from the medians, with their bounds. A
# benchmark and its baseline must be in the same program.
#
# Environment: DRIVEWIZ_BENCH_REPETITIONS (default 5), DRIVEWIZ_BENCH_FILTER (a regular
# expression for --benchmark_filter), DRIVEWIZ_BENCH_STRICT=1 (exit 1 when a bound is
# missed).
set -euo pipefail
build=${1:?build folder}
out=${2:?output folder}
src=$(cd "$(dirname "$0")/.." && pwd)
reps=${DRIVEWIZ_BENCH_REPETITIONS:-5}
filter=${DRIVEWIZ_BENCH_FILTER:-.}
mkdir -p "$out"
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
export DRIVEWIZ_BENCH_DATA="$out/data"
mkdir -p "$DRIVEWIZ_BENCH_DATA"

mapfile -t benches < <(find "$build/bench" -maxdepth 1 -type f -name 'bench_*' -perm -u+x | sort)
if [ ${#benches[@]} -eq 0 ]; then
  echo "drivewiz: no benchmarks built" >&2
  exit 1
fi
load_before=$(cut -d' ' -f1-3 /proc/loadavg 2>/dev/null || echo "?")
parts=()
for b in "${benches[@]}"; do
  name=$(basename "$b")
  echo "== $name"
  # Repetitions of a program's benchmarks run interleaved in random order, so that a
  # benchmark and its baseline meet the same load on a shared machine.
  "$b" --benchmark_repetitions="$reps" --benchmark_display_aggregates_only=true \
    --benchmark_enable_random_interleaving=true --benchmark_filter="$filter" \
    --benchmark_out="$out/$name.json" --benchmark_out_format=json
  # A program whose benchmarks the filter leaves out writes an empty file.
  if [ -s "$out/$name.json" ]; then parts+=("$out/$name.json"); fi
done
load_after=$(cut -d' ' -f1-3 /proc/loadavg 2>/dev/null || echo "?")

# The peer: Python's csv module on the same generated file.
if [ -f "$DRIVEWIZ_BENCH_DATA/desc100k.csv" ]; then
  python3 "$src/bench/python_csv_peer.py" "$DRIVEWIZ_BENCH_DATA/desc100k.csv" 5 \
    | tee "$out/python_csv_peer.txt"
fi
# And on the recorded measurement that bench_tables loads.
if [ -f "$DRIVEWIZ_BENCH_DATA/measurement1Mx8.csv" ]; then
  python3 "$src/bench/python_measurement_peer.py" "$DRIVEWIZ_BENCH_DATA/measurement1Mx8.csv" 3 \
    | tee "$out/python_measurement_peer.txt"
fi

status=0
python3 - "$out" "$reps" "$load_before" "$load_after" "${parts[@]}" -- "$src"/bench/ratios.txt \
  "$src"/bench/*.ratios <<'PY' || status=$?
import glob, json, os, statistics, sys

args = sys.argv[1:]
out, reps, load_before, load_after = args[:4]
sep = args.index("--")
parts, lists = args[4:sep], [f for f in args[sep + 1:] if os.path.isfile(f)]

merged = None
for p in parts:
    with open(p) as f:
        data = json.load(f)
    if merged is None:
        merged = data
    else:
        merged["benchmarks"].extend(data["benchmarks"])
with open(os.path.join(out, "results.json"), "w") as f:
    json.dump(merged, f, indent=1)
print(f"drivewiz: {len(merged['benchmarks'])} benchmark results in {out}/results.json")

to_ns = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
runs = {}  # run name -> list of repetitions
for b in merged["benchmarks"]:
    if b.get("run_type") == "iteration" and not b.get("error_occurred"):
        runs.setdefault(b["run_name"], []).append(b)

def find(name):
    if name in runs:
        return runs[name]
    hits = [r for n, r in runs.items() if n.split("/")[0] == name]
    return hits[0] if len(hits) == 1 else None

def median(name, field):
    reps_ = find(name)
    if not reps_:
        return None, 0
    if field in ("real_time", "cpu_time"):
        values = [r[field] * to_ns[r["time_unit"]] for r in reps_]
    else:
        values = [r[field] for r in reps_ if field in r]
    return (statistics.median(values), len(values)) if values else (None, 0)

rows = []
for path in lists:
    for line in open(path, encoding="utf-8"):
        line = line.strip()
        if not line or line.startswith("#"):
            continue
        fields = [x.strip() for x in line.split("|")]
        if len(fields) != 5:
            print(f"drivewiz: {path}: not 5 fields: {line}", file=sys.stderr)
            continue
        rows.append(fields)

missed = 0
lines = []
for label, bench, base, measure, bound in rows:
    n = 0
    if measure == "time":
        a, n = median(bench, "real_time")
        b, nb = median(base, "real_time")
        ca, _ = median(bench, "cpu_time")
        cb, _ = median(base, "cpu_time")
        value = a / b if a is not None and b else None
        cpu = f"{ca / cb:.2f}x" if ca is not None and cb else ""
        n = min(n, nb)
        shown = f"{value:.2f}x" if value is not None else "-"
    elif measure.startswith("counter:"):
        value, n = median(bench, measure[len("counter:"):])
        cpu = ""
        shown = (f"{value:,.0f}" if value is not None and value >= 1000 else
                 f"{value:.2f}x" if value is not None else "-")
    else:
        value, cpu, shown = None, "", "?"
    if value is None:
        mark = "not run"
    elif bound == "-":
        mark = ""
    elif value <= float(bound):
        mark = "ok"
    else:
        mark = "MISSED  <<<"
        missed += 1
    limit = f"<= {bound}x" if bound != "-" else "report"
    lines.append((label, shown, cpu, limit, str(n) if n else "", mark))

print()
print(f"drivewiz: ratios from medians of {reps} repetitions "
      f"(load average before {load_before}, after {load_after})")
head = ("ratio", "value", "cpu", "bound", "runs", "")
width = [max(len(r[i]) for r in lines + [head]) for i in range(6)]
fmt = lambda r: "  ".join(c.ljust(width[i]) if i in (0, 3, 5) else c.rjust(width[i])
                          for i, c in enumerate(r)).rstrip()
print(fmt(head))
for r in lines:
    print(fmt(r))
if missed:
    print(f"drivewiz: {missed} bound(s) MISSED")
with open(os.path.join(out, "ratios.txt"), "w") as f:
    f.write("\n".join(fmt(r) for r in [head] + lines) + "\n")
sys.exit(3 if missed else 0)
PY
# Python's csv module against the library on the same measurement (median of the runs).
if [ -f "$out/python_measurement_peer.txt" ]; then
  python3 - "$out/results.json" "$out/python_measurement_peer.txt" <<'PY' || true
import json, re, statistics, sys
to_ms = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}
runs = [b["real_time"] * to_ms[b["time_unit"]] for b in json.load(open(sys.argv[1]))["benchmarks"]
        if b.get("run_name") == "BM_MeasurementLoad" and b.get("run_type") == "iteration"]
peer = re.search(r"in ([0-9.]+) ms", open(sys.argv[2]).read())
if runs and peer:
    load = statistics.median(runs)
    print(f"measurement 1,000,000 x 8: library {load:.0f} ms, Python csv {float(peer.group(1)):.0f} ms "
          f"({float(peer.group(1)) / load:.1f}x as long)")
PY
fi
if [ "$status" -eq 3 ] && [ "${DRIVEWIZ_BENCH_STRICT:-0}" != "1" ]; then
  status=0
fi
exit "$status"
