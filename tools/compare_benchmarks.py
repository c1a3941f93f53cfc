#!/usr/bin/env python3
"""Ratios of two builds of the benchmarks: compare_benchmarks.py BEFORE AFTER [FILTER [ROUNDS]]

BEFORE and AFTER are two `tessarel_bench` programs, each beside its library. They run in turn, ROUNDS times each (default
6), and the smallest time of each row counts: other load on the machine can only add. Prints after/before and both times
in ns, the slowest row first, and the geometric mean.
"""
import json
import math
import subprocess
import sys

programs = sys.argv[1:3]
rows = sys.argv[3] if len(sys.argv) > 3 else "."
rounds = int(sys.argv[4]) if len(sys.argv) > 4 else 6
best = {program: {} for program in programs}
for round_number in range(rounds):
    for program in programs if round_number % 2 == 0 else programs[::-1]:
        arguments = [program, "--benchmark_format=json", "--benchmark_min_time=0.02", f"--benchmark_filter={rows}"]
        output = subprocess.run(arguments, capture_output=True, text=True, check=True).stdout
        for row in json.loads(output)["benchmarks"]:
            times = best[program]
            times[row["run_name"]] = min(times.get(row["run_name"], math.inf), row["cpu_time"])
before, after = best[programs[0]], best[programs[1]]
common = [name for name in before if name in after]
for name in sorted(common, key=lambda name: before[name] / after[name]):
    print(f"{after[name] / before[name]:6.3f} {before[name]:10.0f} {after[name]:10.0f} {name}")
print(f"geometric mean {math.exp(sum(math.log(after[name] / before[name]) for name in common) / len(common)):.3f}")
