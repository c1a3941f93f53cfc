#!/usr/bin/env python3
"""A million states of a natural gas by `tessarel batch`: time, rows a second, memory; interrupted, resumed, compared.

Usage: million_rows.py DIRECTORY [ROWS]      with the Python that has the package
"""

import csv
import os
import pathlib
import random
import resource
import signal
import subprocess
import sys
import time

GAS = ["methane=0.85", "ethane=0.07", "propane=0.04", "n-butane=0.02", "nitrogen=0.02"]


def run(jobs, out, *options, kill_at=None):
    """Seconds and the largest memory [MB] of a run; ended by a signal that cannot be caught at `kill_at` bytes."""
    started = time.monotonic()
    process = subprocess.Popen([sys.executable, "-m", "tessarel.cli", "batch", jobs, *GAS, "-o", out, "-q", *options])
    while kill_at is not None and process.poll() is None:
        if out.exists() and out.stat().st_size > kill_at:
            process.send_signal(signal.SIGKILL)
        time.sleep(0.01)
    process.wait()
    return time.monotonic() - started, resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss / 1024


def main():
    directory, rows = pathlib.Path(sys.argv[1]), int(sys.argv[2]) if len(sys.argv) > 2 else 1_000_000
    directory.mkdir(parents=True, exist_ok=True)
    jobs, one, two, torn = (directory / name for name in ("jobs.csv", "one.csv", "two.csv", "torn.csv"))
    chance = random.Random(1)
    with open(jobs, "w", newline="") as file:
        table = csv.writer(file)
        table.writerow(["T [K]", "P [bar]"])
        table.writerows([chance.uniform(180, 320), chance.uniform(1, 100)] for _ in range(rows))
    for name, out, options in (("one thread", one, ("--threads", "1")), ("two threads", two, ("--threads", "2"))):
        seconds, memory = run(jobs, out, *options)
        print(f"{name}: {seconds:.1f} s, {rows / seconds:.0f} rows/s, {memory:.0f} MB", flush=True)
    size = one.stat().st_size
    for share in (0.34, 0.67, None):
        seconds, _ = run(jobs, torn, "--threads", "2", kill_at=None if share is None else share * size)
        print(f"torn at {share}: {seconds:.1f} s, {torn.stat().st_size} of {size} bytes", flush=True)
    same = one.read_bytes() == two.read_bytes() == torn.read_bytes()
    print("all three tables are the same" if same else "THE TABLES DIFFER")
    sys.exit(0 if same else 1)


if __name__ == "__main__":
    main()
