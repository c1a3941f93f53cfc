"""Tables in HDF5: in the group `table` one dataset a column, named as the column, all of one length.

Columns of properties, mole fractions and results are float64 with NaN for what is not given, others are texts. The
attribute `columns` of the group has their order. A name with "/" in it, such as `h [kJ/kg]`, has "|" there instead.
"""

from __future__ import annotations

import os
import pathlib
from typing import Iterator

from .. import units
from .._native import Error
from ..extras import need
from ..names import fluids
from .jobs import ADDED
from .tables import CsvSource

GROUP = "table"
_CHUNK = 8192


def _dataset(title: str) -> str:
    return title.replace("/", "|") or "-"


def _text(value) -> str:
    """A cell as a CSV table would hold it: numbers such that reading them gives their bits back."""
    if isinstance(value, bytes):
        return value.decode("utf-8")
    if isinstance(value, float):
        return "" if value != value else repr(value)
    return str(value)


class Hdf5Source:
    """A table of jobs in an HDF5 file."""

    def __init__(self, path: pathlib.Path) -> None:
        self.path = path
        with self._open() as file:
            if GROUP not in file:
                raise Error(f'{path} has no group "{GROUP}" with a dataset for each column')
            table = file[GROUP]
            self.titles = [_text(title) for title in table.attrs.get("columns", [])] or [
                name.replace("|", "/") for name in table
            ]
            missing = [title for title in self.titles if _dataset(title) not in table]
            lengths = {table[_dataset(title)].shape for title in self.titles if title not in missing}
            if missing or len(lengths) != 1 or len(next(iter(lengths))) != 1:
                raise Error(f"{path}: the columns of the table are missing or of different lengths")
            self._length = next(iter(lengths))[0]

    def _open(self):
        try:
            return need("h5py").File(self.path, "r")
        except OSError as error:
            raise Error(f"{self.path} cannot be read as HDF5: {error}") from None

    def rows(self) -> Iterator[list[str]]:
        with self._open() as file:
            columns = [file[GROUP][_dataset(title)] for title in self.titles]
            for start in range(0, self._length, _CHUNK):
                parts = [column[start : start + _CHUNK].tolist() for column in columns]
                yield from ([_text(value) for value in row] for row in zip(*parts))

    def count(self) -> int:
        return self._length


def write(rows: pathlib.Path, output: pathlib.Path) -> None:
    """Makes the HDF5 table `output` of the complete CSV table `rows`, at once and whole."""
    h5py = need("h5py")
    source = CsvSource(rows)
    numeric = [_is_numeric(title, k >= len(source.titles) - len(ADDED)) for k, title in enumerate(source.titles)]
    unfinished = output.with_name(output.name + ".unfinished")
    count = source.count()
    with h5py.File(unfinished, "w") as file:
        table = file.create_group(GROUP)
        table.attrs["columns"] = source.titles
        kinds = ["f8" if number else h5py.string_dtype("utf-8") for number in numeric]
        columns = [
            table.create_dataset(_dataset(title), (count,), kind, chunks=(min(_CHUNK, max(count, 1)),))
            for title, kind in zip(source.titles, kinds)
        ]
        start, block = 0, []
        for row in source.rows():
            block.append(row)
            if len(block) == _CHUNK:
                start = _store(columns, numeric, start, block)
                block = []
        _store(columns, numeric, start, block)
    with open(unfinished, "rb") as file:
        os.fsync(file.fileno())
    os.replace(unfinished, output)


def _is_numeric(title: str, result: bool) -> bool:
    if result:
        return title != "message"
    name, _ = units.split_header(title)
    return name in ("T", "P", "v", "rho", "u", "h", "s", "q") or title in fluids()


def _store(columns, numeric, start, block) -> int:
    for k, column in enumerate(columns):
        cells = [row[k] for row in block]
        if numeric[k]:
            column[start : start + len(block)] = [_number(cell) for cell in cells]
        else:
            column[start : start + len(block)] = cells
    return start + len(block)


def _number(cell: str) -> float:
    try:
        return float(cell)
    except ValueError:  # empty, or what the row's message complains of
        return float("nan")
