"""Tables of jobs and of states on disk: CSV as it is read, written and taken up again, and what HDF5 has in common."""

from __future__ import annotations

import csv
import io
import os
import pathlib
from typing import IO, Iterator, Protocol

from .._native import Error
from .jobs import ADDED, padded

HDF5_SUFFIXES = (".h5", ".hdf5")


def is_hdf5(path: pathlib.Path) -> bool:
    return path.suffix.lower() in HDF5_SUFFIXES


class Source(Protocol):
    """A table of jobs: its titles, its rows as texts, and how many these are."""

    titles: list[str]

    def rows(self) -> Iterator[list[str]]:
        """The rows, of which memory holds a few at a time."""

    def count(self) -> int:
        """Number of rows."""


class CsvSource:
    """A table of jobs in a CSV file, UTF-8."""

    def __init__(self, path: pathlib.Path) -> None:
        self.path = path
        titles = next(self._records(), None)
        if titles is None:
            raise Error(f"{path} is empty")
        self.titles = titles

    def _records(self) -> Iterator[list[str]]:
        with open(self.path, newline="", encoding="utf-8-sig") as file:
            yield from (row for row in csv.reader(file) if row)

    def rows(self) -> Iterator[list[str]]:
        records = self._records()
        next(records)
        return records

    def count(self) -> int:
        with open(self.path, "rb") as file:
            return max(0, sum(1 for _ in records_of(file)) - 1)


def records_of(file: IO[bytes]) -> Iterator[tuple[bytes, int]]:
    """Whole records of a table with the offset of their ends; a record torn off at the end of the file is left out."""
    record, end = b"", 0
    for line in file:
        end += len(line)
        record += line
        if line.endswith(b"\n") and record.count(b'"') % 2 == 0:
            yield record, end
            record = b""


def cells_of(record: bytes) -> list[str]:
    return next(csv.reader(io.StringIO(record.decode("utf-8"), newline="")), [])


def resume(out: IO[bytes], header: list[str], rows: Iterator[list[str]]) -> int:
    """Takes from `rows` those whose results `out` holds, cuts off what is torn, and returns their number; -1 without a
    header."""
    done, good_end = -1, 0
    width = len(header) - len(ADDED)
    out.seek(0)
    for record, end in records_of(out):
        cells = cells_of(record)
        expected = header if done < 0 else next(rows, None)
        if expected is None or cells[:width] != padded(expected, width) or len(cells) != len(header):
            raise Error(
                f"record {done + 2} of the output does not belong to this job; name another output or remove it"
            )
        done, good_end = done + 1, end
    out.truncate(good_end)
    out.seek(good_end)
    return done


def encode(rows: list[list[str]]) -> bytes:
    """Rows as they stand in a CSV file."""
    text = io.StringIO(newline="")
    csv.writer(text, lineterminator="\n").writerows(rows)
    return text.getvalue().encode("utf-8")


def decode(block: bytes) -> list[list[str]]:
    return list(csv.reader(io.StringIO(block.decode("utf-8"), newline="")))


def append(out: IO[bytes], block: bytes) -> None:
    """Writes encoded rows so that they outlast a crash of the machine."""
    out.write(block)
    out.flush()
    os.fsync(out.fileno())
