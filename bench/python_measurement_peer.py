#!/usr/bin/env python3
"""Peer measurement: Python's csv module reading a recorded measurement into numbers.

Usage: python_measurement_peer.py FILE [REPEATS]
Skips the sampling-time and title lines like the library, turns every field of the
remaining lines into a float (decimal commas allowed) and prints the best time.
"""
import csv
import io
import sys
import time


def load(path):
    with open(path, "rb") as f:
        raw = f.read()
    try:
        text = raw.decode("utf-8")
    except UnicodeDecodeError:
        text = raw.decode("cp1252", errors="replace")
    rows = csv.reader(io.StringIO(text, newline=""), delimiter=";")
    columns = None
    for row in rows:
        if not row or row[0].lower().startswith("abtastzeit"):
            continue
        if columns is None:  # the title line
            columns = [[] for _ in row]
            continue
        for column, field in zip(columns, row):
            column.append(float(field.replace(",", ".")))
    return len(columns[0]) if columns else 0


def main():
    path = sys.argv[1]
    repeats = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    best = None
    rows = 0
    for _ in range(repeats):
        start = time.perf_counter()
        rows = load(path)
        elapsed = time.perf_counter() - start
        best = elapsed if best is None else min(best, elapsed)
    print(f"python_measurement_peer: {rows} rows in {best * 1000:.1f} ms (best of {repeats})")


if __name__ == "__main__":
    main()
