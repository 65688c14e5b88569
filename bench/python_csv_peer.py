#!/usr/bin/env python3
"""Peer measurement: Python's csv module reading a description file into rows.

Usage: python_csv_peer.py FILE [REPEATS]
Decodes like the library (UTF-8 when valid, else Windows-1252) and prints the best time.
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
    return list(csv.reader(io.StringIO(text, newline=""), delimiter=";"))


def main():
    path = sys.argv[1]
    repeats = int(sys.argv[2]) if len(sys.argv) > 2 else 5
    best = None
    rows = 0
    for _ in range(repeats):
        start = time.perf_counter()
        rows = len(load(path))
        elapsed = time.perf_counter() - start
        best = elapsed if best is None else min(best, elapsed)
    print(f"python_csv_peer: {rows} rows in {best * 1000:.1f} ms (best of {repeats})")


if __name__ == "__main__":
    main()
