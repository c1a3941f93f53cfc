#!/usr/bin/env python3
"""Draws docs/envelopes.svg from the lines that the envelope sweep writes.

    build/lib/tessarel_envelope_sweep --curves curves.csv
    tools/plot_envelopes.py curves.csv docs/envelopes.svg

Needs matplotlib (Debian: python3-matplotlib). Rows of the file: mixture, 1 at the critical point, T [K], P [bar].
"""
import csv
import sys

import matplotlib

matplotlib.use("Agg")
matplotlib.rcParams["svg.hashsalt"] = "envelopes"  # the same file for the same lines
import matplotlib.pyplot as plt


def read(path):
    lines = {}
    with open(path, newline="") as file:
        for name, critical, t, p in csv.reader(file):
            lines.setdefault(name, []).append((critical == "1", float(t), float(p)))
    return lines


def main(source, target):
    lines = read(source)
    figure, axes = plt.subplots(4, 3, figsize=(11, 12), constrained_layout=True)
    for axis, (name, points) in zip(axes.flat, lines.items()):
        shown = [point for point in points if point[2] > 0.01]
        axis.plot([t for _, t, _ in shown], [p for _, _, p in shown], color="C0", linewidth=1.3)
        axis.plot([t for c, t, _ in points if c], [p for c, _, p in points if c], "o", color="C3", markersize=5)
        axis.set_title(name, fontsize=10)
        axis.grid(alpha=0.3)
        axis.set_ylim(bottom=0)
    for axis in axes.flat[len(lines):]:
        axis.set_axis_off()
    for axis in axes[-1]:
        axis.set_xlabel("T [K]")
    for axis in axes[:, 0]:
        axis.set_ylabel("p [bar]")
    figure.savefig(target, metadata={"Date": None})


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2])
