"""States of the rows of a table: streamed, resumed where an interruption left them, on this machine or on many.

A row of jobs.csv names two properties in columns like `T [K]`, `P [bar]`, `h [kJ/kg]` (without a unit SI and molar) and
its fluid in columns named after the components, with mole fractions in them, or in a column `fluid` such as
"methane=0.9 ethane=0.1". An empty cell is not given; so each row may have its own pair and components. A column `phase`
may say "liquid" or "vapour". Other columns are handed through. Tables whose names end in .h5 or .hdf5 are HDF5. A folder
of tables gives a folder of tables.
"""

from __future__ import annotations

import collections
import fcntl
import itertools
import os
import pathlib
import sys
import warnings
from typing import Iterator, Optional

from .._native import Error
from ..extras import need
from . import cluster, hdf5, tables
from .jobs import ADDED, RESULTS, Columns, Solver, composition_of, split_components

__all__ = ["ADDED", "RESULTS", "composition_of", "run", "split_components"]

ROWS = 2000


def run(
    jobs: str | os.PathLike,
    output: str | os.PathLike,
    default: Optional[dict[str, float]] = None,
    threads: Optional[int] = None,
    progress: bool = False,
    rows_at_once: int = ROWS,
    scheduler: Optional[str] = None,
    workers: Optional[int] = None,
) -> int:
    """Writes the table `output`: the rows of `jobs` with their states, and returns how many rows were calculated now.

    Memory holds `rows_at_once` rows, with workers a few times as many. When `output` exists the rows in it are kept,
    after a look that they are those of `jobs`, and the work goes on behind them; the file ends the same to the byte. A
    row without a state has a message. An HDF5 table is made at the end of `<output>.rows.csv`, which holds what there
    is until then.

    `scheduler` is the address of a Dask scheduler whose workers calculate, `workers` a number of processes on this
    machine. With a folder for `jobs` each of its tables goes to one table of the same name in the folder `output`; the
    workers then read and write them by themselves and so must see both folders.
    """
    jobs, output = pathlib.Path(jobs), pathlib.Path(output)
    with cluster.client(scheduler, workers) as client:
        if jobs.is_dir():
            return _folder(jobs, output, default, threads, progress, rows_at_once, client)
        return _table(jobs, output, default, threads, progress, rows_at_once, client)


def _folder(jobs, output, default, threads, progress, rows_at_once, client) -> int:
    files = sorted(path for path in jobs.iterdir() if path.suffix.lower() in (".csv", *tables.HDF5_SUFFIXES))
    if not files:
        raise Error(f"no tables (.csv, .h5) in the folder {jobs}")
    output.mkdir(parents=True, exist_ok=True)
    pieces = [
        (file, output / file.name, default, 1 if client else threads, rows_at_once) for file in files
    ]
    bar = _bar(len(files), 0, progress, "table")
    count, troubles = 0, []
    for done, trouble in cluster.in_order(client, _file, pieces) if client else itertools.starmap(_file, pieces):
        count += done
        troubles += [trouble] if trouble else []
        bar.update(1)
    bar.close()
    if troubles:
        raise Error("; ".join(troubles))
    return count


def _file(jobs, output, default, threads, rows_at_once) -> tuple[int, str]:
    """One table of a folder: the number of rows calculated, and what was wrong with it."""
    try:
        return _table(jobs, output, default, threads, False, rows_at_once, None), ""
    except (Error, OSError, UnicodeError) as error:
        return 0, f"{jobs.name}: {error}"


def _table(jobs, output, default, threads, progress, rows_at_once, client) -> int:
    if output.exists() and output.samefile(jobs):
        raise Error("the output is the table of jobs itself")
    source = hdf5.Hdf5Source(jobs) if tables.is_hdf5(jobs) else tables.CsvSource(jobs)
    if not tables.is_hdf5(output):
        return _stream(source, output, default, threads, progress, rows_at_once, client)
    need("h5py")
    if output.exists():
        if hdf5.Hdf5Source(output).count() != source.count():
            raise Error(f"{output} does not belong to this job; name another output or remove it")
        return 0
    rows = output.with_name(output.name + ".rows.csv")
    count = _stream(source, rows, default, threads, progress, rows_at_once, client)
    hdf5.write(rows, output)
    rows.unlink()
    return count


def _stream(source: tables.Source, output, default, threads, progress, rows_at_once, client) -> int:
    columns = Columns(source.titles, default)
    header = [*source.titles, *ADDED]
    with open(output, "a+b") as out:
        try:
            fcntl.flock(out, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except OSError:
            raise Error(f"another run is writing {output}") from None
        rows = source.rows()
        done = tables.resume(out, header, rows)
        if done < 0:
            tables.append(out, tables.encode([header]))
            done = 0
        bar = _bar(source.count() if progress else 0, done, progress, "row")
        count = 0
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            sizes: collections.deque[int] = collections.deque()
            chunks = _chunks(rows, rows_at_once, sizes)
            for block in _solved(columns, default, threads, chunks, client):
                tables.append(out, block)
                count += sizes[0]
                bar.update(sizes.popleft())
        bar.close()
    return count


def _chunks(rows: Iterator[list[str]], size: int, sizes: collections.deque[int]) -> Iterator[list[list[str]]]:
    while chunk := list(itertools.islice(rows, size)):
        sizes.append(len(chunk))
        yield chunk


def _solved(columns, default, threads, chunks, client) -> Iterator[bytes]:
    if client is None:
        solver = Solver(columns, threads)
        return (tables.encode(solver.solve(chunk)) for chunk in chunks)
    titles, fluid = tuple(columns.header), None if default is None else tuple(default.items())
    return cluster.in_order(client, cluster.solve, ((titles, fluid, tables.encode(chunk)) for chunk in chunks))


class _NoBar:
    def update(self, count: int) -> None:
        pass

    def close(self) -> None:
        pass


def _bar(total: int, done: int, wanted: bool, unit: str):
    return need("tqdm").tqdm(total=total, initial=done, unit=unit, file=sys.stderr) if wanted else _NoBar()
