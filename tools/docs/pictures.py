#!/usr/bin/env python3
"""Draws the pictures of the documentation's site into a directory, with the installed Python package.

Usage: pictures.py ACCURACY_MD DIRECTORY
"""

import pathlib
import sys

import matplotlib

matplotlib.use("Agg")
matplotlib.rcParams["svg.hashsalt"] = "tessarel"
import matplotlib.pyplot as plt  # noqa: E402
import tessarel  # noqa: E402


def save(axes, directory, name):
    axes.figure.savefig(directory / f"{name}.svg", metadata={"Date": None})
    plt.close(axes.figure)


def accuracy(page):
    """Fluid, and average deviations of vapour pressure and liquid density in percent, from the table of the page."""
    for line in page.read_text(encoding="utf-8").splitlines():
        cells = [cell.strip() for cell in line.strip("|").split("|")]
        if len(cells) == 7 and cells[1].isdigit():
            yield cells[0], *(float(cell) if cell not in ("", "-") else None for cell in (cells[3], cells[5]))


def draw_accuracy(page, directory):
    """How many fluids lie within which deviation, and the worst ones by name."""
    rows = list(accuracy(page))
    if len(rows) < 100:
        sys.exit(f"no table of deviations in {page}")
    figure, panels = plt.subplots(1, 2, figsize=(10, 4.6), layout="constrained")
    for axis, column, title in zip(panels, (1, 2), ("vapour pressure", "saturated liquid density")):
        values = sorted((row[column], row[0]) for row in rows if row[column] is not None)
        numbers = [value for value, _ in values]
        axis.step(numbers, [100 * (k + 1) / len(numbers) for k in range(len(numbers))], where="post")
        axis.set_xscale("log")
        axis.set_xlabel(f"average deviation of the {title} [%]")
        axis.set_ylabel("fluids with less [%]")
        axis.set_title(f"{len(numbers)} fluids; worst: " + ", ".join(name for _, name in values[-3:][::-1]), fontsize=9)
        axis.grid(True, color="0.9", which="both")
    figure.savefig(directory / "accuracy.svg", metadata={"Date": None})
    plt.close(figure)


def main():
    page, directory = map(pathlib.Path, sys.argv[1:])
    directory.mkdir(parents=True, exist_ok=True)
    gas = tessarel.Fluid({"methane": 0.85, "ethane": 0.10, "propane": 0.05})
    save(gas.plot_envelope(qualities=[0.5]), directory, "envelope")
    save(tessarel.Fluid("propane").plot_ph(), directory, "propane_ph")
    save(tessarel.Fluid(["methane", "n-butane"], [0.5, 0.5]).plot_pxy(T=300), directory, "methane_butane_pxy")
    draw_accuracy(page, directory)


if __name__ == "__main__":
    main()
