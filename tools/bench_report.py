#!/usr/bin/env python3
"""Prints the benchmark table in units: bench_report.py results.json

results.json is what `tessarel_bench --benchmark_format=json --benchmark_repetitions=5` wrote. Of the repetitions the
smallest time counts, since other load on the machine can only add. The unit is `yardstick`.
"""
import json
import re
import sys

results = json.load(open(sys.argv[1]))
times = {}
counts = {}
for row in results["benchmarks"]:
    if row.get("run_type") != "aggregate":
        name = row["run_name"].replace("/repeats:5", "")
        times[name] = min(times.get(name, float("inf")), row["cpu_time"])
        if "pressures" in row:
            counts[name] = f"{row['pressures']:.1f}" + (f", {row['site_passes']:.0f}" if row["site_passes"] else "")
            if row.get("fugacities"):
                counts[name] += f" in {row['fugacities']:.0f} phases"
unit = times["yardstick"]
print(f"One unit: {unit:.0f} ns.\n")
print("| call | ns | units | times calc_a at the same n | pressures, site passes |\n|---|---:|---:|---:|---:|")
for name, time in sorted(times.items(), key=lambda row: [int(p) if p.isdigit() else p for p in re.split(r"(\d+)", row[0])]):
    parts = name.split("/")
    own = times.get("calc_a/" + parts[1]) if len(parts) > 1 else None
    ratio = f"{time / own:.2f}" if own else ""
    print(f"| {name} | {time:.0f} | {time / unit:.2f} | {ratio} | {counts.get(name, '')} |")
