"""What the rows of a table ask for, and their states."""

from __future__ import annotations

import os
from concurrent.futures import ThreadPoolExecutor
from typing import NamedTuple, Optional, Sequence

from .. import units
from .._native import Error
from ..fluid import Fluid
from ..names import fluids

RESULTS = (
    "T [K]",
    "P [Pa]",
    "v [m3/mol]",
    "u [J/mol]",
    "h [J/mol]",
    "s [J/(mol K)]",
    "q",
    "density [kg/m3]",
    "cv [J/(mol K)]",
    "cp [J/(mol K)]",
    "w [m/s]",
)
_ATTRIBUTES = ("T", "P", "v", "u", "h", "s", "q", "density", "cv", "cp", "w")
ADDED = (*(f"state {name}" for name in RESULTS), "message")


class Job(NamedTuple):
    """What one row asks for."""

    composition: tuple[tuple[str, float], ...]
    given: tuple[tuple[str, float], ...]
    phase: Optional[str]


def composition_of(parts: Sequence[str]) -> dict[str, float]:
    """Mole fractions from texts like "methane=0.9" or "ethane=10%"; one bare name is a pure fluid."""
    if len(parts) == 1 and "=" not in parts[0]:
        return {parts[0]: 1.0}
    out: dict[str, float] = {}
    for part in parts:
        name, equals, value = part.rpartition("=")
        try:
            fraction = float(value[:-1]) / 100 if value.endswith("%") else float(value)
        except ValueError:
            equals = ""
        if not equals:
            raise Error(f'"{part}" is not a component with its mole fraction, such as methane=0.9')
        if name in out:
            raise Error(f'component "{name}" is named twice')
        out[name] = fraction
    return out


class Columns:
    """What the columns of a table mean."""

    def __init__(self, header: list[str], default: Optional[dict[str, float]]) -> None:
        known = set(fluids())
        self.header, self.default = header, default
        self.properties: list[tuple[int, str, str]] = []
        self.components: list[tuple[int, str]] = []
        self.fluid = self.phase = None
        for place, title in enumerate(header):
            name, unit = units.split_header(title)
            if name in ("T", "P", "v", "rho", "u", "h", "s", "q"):
                self.properties.append((place, name, unit or ""))
            elif name in known:
                self.components.append((place, name))
            elif name == "fluid":
                self.fluid = place
            elif name == "phase":
                self.phase = place
        if not self.properties:
            raise Error("no column with a property: T, P, v, rho, u, h, s or q, with a unit such as T [C], P [bar]")
        if not self.components and self.fluid is None and default is None:
            raise Error("no column named after a fluid, no column 'fluid', and no components on the command line")

    def job(self, row: list[str]) -> Job:
        """The job of a row; raises Error with what is wrong in it."""
        if len(row) > len(self.header):
            raise Error(f"{len(row)} cells in a row under {len(self.header)} columns")
        cells = [cell.strip() for cell in row] + [""] * (len(self.header) - len(row))
        given = dict(
            units.parse(name, f"{cells[place]} {unit}") for place, name, unit in self.properties if cells[place]
        )
        named = {name: self._fraction(name, cells[place]) for place, name in self.components if cells[place]}
        if self.fluid is not None and cells[self.fluid]:
            text = cells[self.fluid]
            named = composition_of([text] if "=" not in text else split_components(text))
        composition = {name: x for name, x in named.items() if x != 0} or self.default
        if not composition:
            raise Error("no fluid given in this row")
        phase = cells[self.phase] if self.phase is not None else ""
        return Job(tuple(composition.items()), tuple(given.items()), phase or None)

    @staticmethod
    def _fraction(name: str, cell: str) -> float:
        try:
            return float(cell)
        except ValueError:
            raise Error(f"{cell!r} is not a mole fraction of {name}") from None


def split_components(text: str) -> list[str]:
    """ "carbon dioxide=0.5 n-butane=0.5" in its components: a name may hold blanks, so it ends behind its number."""
    parts, start = [], 0
    while start < len(text):
        equals = text.find("=", start)
        end = text.find(" ", equals) if equals >= 0 else -1
        end = len(text) if end < 0 else end
        parts.append(text[start:end].strip(" ,;"))
        start = end + 1
    return [part for part in parts if part]


def padded(row: list[str], width: int) -> list[str]:
    """The row with exactly `width` cells."""
    return (row + [""] * width)[:width]


class Solver:
    """Solves chunks of rows; keeps the fluids of the latest chunk."""

    def __init__(self, columns: Columns, threads: Optional[int]) -> None:
        self.columns, self.threads = columns, threads or os.cpu_count() or 1
        self.fluids: dict[tuple, Fluid] = {}

    def solve(self, rows: list[list[str]]) -> list[list[str]]:
        """The rows with their results."""
        added: list[list[str]] = [[]] * len(rows)
        groups: dict[tuple, list[tuple[int, tuple[float, ...]]]] = {}
        for k, row in enumerate(rows):
            try:
                job = self.columns.job(row)
                key = (job.composition, tuple(name for name, _ in job.given), job.phase)
                groups.setdefault(key, []).append((k, tuple(value for _, value in job.given)))
            except Error as error:
                added[k] = _failed(str(error))
        known, self.fluids = self.fluids, {}
        for composition, *_ in groups:
            if composition in known:
                self.fluids[composition] = known[composition]

        by_fluid: dict[tuple, list] = {}
        for key, items in groups.items():
            by_fluid.setdefault(key[0], []).append((key, items))
        share = 1 if len(by_fluid) > 1 else self.threads

        def work(group) -> None:
            composition, parts = group
            for (_, names, phase), items in parts:
                for k, result in self._group(composition, names, phase, items, share):
                    added[k] = result

        if share == 1:
            with ThreadPoolExecutor(self.threads) as pool:
                list(pool.map(work, by_fluid.items()))
        else:
            for group in by_fluid.items():
                work(group)
        width = len(self.columns.header)
        return [padded(row, width) + result for row, result in zip(rows, added)]

    def _group(self, composition, names, phase, items, share):
        try:
            fluid = self.fluids.get(composition)
            if fluid is None:
                fluid = self.fluids[composition] = Fluid(dict(composition))
            given = {name: [values[j] for _, values in items] for j, name in enumerate(names)}
            states = fluid.states(phase=phase, threads=share, **given)
        except Error as error:
            return [(k, _failed(str(error))) for k, _ in items]
        columns = [getattr(states, name).tolist() for name in _ATTRIBUTES]
        messages = states.message.tolist()
        return [(k, [_number(column[j]) for column in columns] + [messages[j]]) for j, (k, _) in enumerate(items)]


def _number(value: float) -> str:
    return "" if value != value else repr(value)


def _failed(message: str) -> list[str]:
    return [""] * len(RESULTS) + [message]
