"""States of the rows of a table: streamed in chunks, resumed where an interruption left them.

A row of jobs.csv names two properties in columns like `T [K]`, `P [bar]`, `h [kJ/kg]` (without a unit SI and molar) and
its fluid in columns named after the components, with mole fractions in them, or in a column `fluid` such as
"methane=0.9 ethane=0.1". An empty cell is not given; so each row may have its own pair and components. A column `phase`
may say "liquid" or "vapour". Other columns are handed through.
"""

from __future__ import annotations

import csv
import fcntl
import io
import itertools
import os
import pathlib
import sys
import warnings
from concurrent.futures import ThreadPoolExecutor
from typing import IO, Iterator, NamedTuple, Optional, Sequence

from . import units
from ._native import Error
from .fluid import Fluid
from .names import fluids

ROWS = 2000
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


class _Columns:
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
            named = composition_of([text] if "=" not in text else _split_components(text))
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


def _split_components(text: str) -> list[str]:
    """ "carbon dioxide=0.5 n-butane=0.5" in its components: a name may hold blanks, so it ends behind its number."""
    parts, start = [], 0
    while start < len(text):
        equals = text.find("=", start)
        end = text.find(" ", equals) if equals >= 0 else -1
        end = len(text) if end < 0 else end
        parts.append(text[start:end].strip(" ,;"))
        start = end + 1
    return [part for part in parts if part]


def _records(file: IO[bytes]) -> Iterator[tuple[bytes, int]]:
    """Whole records of a table with the offset of their ends; a record torn off at the end of the file is left out."""
    record, end = b"", 0
    for line in file:
        end += len(line)
        record += line
        if line.endswith(b"\n") and record.count(b'"') % 2 == 0:
            yield record, end
            record = b""


def _cells(record: bytes) -> list[str]:
    return next(csv.reader(io.StringIO(record.decode("utf-8"), newline="")), [])


def _resume(out: IO[bytes], header: list[str], rows: Iterator[list[str]]) -> int:
    """Takes from `rows` those whose results `out` holds, cuts off what is torn, and returns their number."""
    done, good_end = -1, 0
    width = len(header) - len(ADDED)
    out.seek(0)
    for record, end in _records(out):
        cells = _cells(record)
        expected = header if done < 0 else next(rows, None)
        if expected is None or cells[:width] != _padded(expected, width) or len(cells) != len(header):
            raise Error(
                f"record {done + 2} of the output does not belong to this job; name another output or remove it"
            )
        done, good_end = done + 1, end
    out.truncate(good_end)
    out.seek(good_end)
    return done


def _padded(row: list[str], width: int) -> list[str]:
    return (row + [""] * width)[:width]


class _Solver:
    """Solves chunks of rows; keeps the fluids of the latest chunk."""

    def __init__(self, columns: _Columns, threads: Optional[int]) -> None:
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
        return [_padded(row, width) + result for row, result in zip(rows, added)]

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


def _bar(total: int, done: int, wanted: bool):
    if not wanted:
        return None
    try:
        from tqdm import tqdm
    except ImportError:
        return None
    return tqdm(total=total, initial=done, unit="row", file=sys.stderr)


def run(
    jobs: str | os.PathLike,
    output: str | os.PathLike,
    default: Optional[dict[str, float]] = None,
    threads: Optional[int] = None,
    progress: bool = False,
    rows_at_once: int = ROWS,
) -> int:
    """Writes the table `output`: the rows of `jobs` with their states, and returns how many rows were calculated now.

    Memory holds `rows_at_once` rows. When `output` exists the rows in it are kept, after a look that they are those of
    `jobs`, and the work goes on behind them; the file ends the same to the byte. A row without a state has a message.
    """
    jobs, output = pathlib.Path(jobs), pathlib.Path(output)
    if output.exists() and output.samefile(jobs):
        raise Error("the output is the table of jobs itself")
    with open(jobs, newline="", encoding="utf-8-sig") as source, open(output, "a+b") as out:
        try:
            fcntl.flock(out, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except OSError:
            raise Error(f"another run is writing {output}") from None
        rows = (row for row in csv.reader(source) if row)
        titles = next(rows, None)
        if titles is None:
            raise Error(f"{jobs} is empty")
        columns = _Columns(titles, default)
        header = [*titles, *ADDED]
        done = _resume(out, header, rows)
        if done < 0:
            _write(out, [header])
            done = 0
        bar = _bar(_count(jobs) if progress else 0, done, progress)
        solver, count = _Solver(columns, threads), 0
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            while chunk := list(itertools.islice(rows, rows_at_once)):
                _write(out, solver.solve(chunk))
                count += len(chunk)
                if bar is not None:
                    bar.update(len(chunk))
        if bar is not None:
            bar.close()
    return count


def _write(out: IO[bytes], rows: list[list[str]]) -> None:
    text = io.StringIO(newline="")
    csv.writer(text, lineterminator="\n").writerows(rows)
    out.write(text.getvalue().encode("utf-8"))
    out.flush()
    os.fsync(out.fileno())


def _count(jobs: pathlib.Path) -> int:
    with open(jobs, "rb") as file:
        return max(0, sum(1 for _ in _records(file)) - 1)
