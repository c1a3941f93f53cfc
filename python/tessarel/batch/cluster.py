"""Rows and files of a batch on the workers of Dask distributed: on this machine or wherever its scheduler reaches.

A worker that is lost is Dask's business: it gives the work to another. Here is only how much is under way at a time,
and in which order results come back.
"""

from __future__ import annotations

import collections
import contextlib
import logging
from functools import lru_cache
from typing import Callable, Iterable, Iterator, Optional

from .._native import Error
from ..extras import need
from .jobs import Columns, Solver
from .tables import decode, encode

#: Pieces of work under way for each thread of the workers: enough that none waits, few enough for any memory.
PIECES_PER_THREAD = 3


@contextlib.contextmanager
def client(scheduler: Optional[str], workers: Optional[int]):
    """A client of the scheduler at an address, or of a cluster of `workers` processes on this machine; None for neither."""
    if scheduler is None and not workers:
        yield None
        return
    distributed = need("distributed")
    with contextlib.ExitStack() as stack:
        if scheduler is None:
            local = distributed.LocalCluster(
                n_workers=workers,
                threads_per_worker=1,
                processes=True,
                dashboard_address=None,
                silence_logs=logging.ERROR,
            )
            scheduler = stack.enter_context(local)
        yield stack.enter_context(distributed.Client(scheduler))


def in_order(client, function: Callable, pieces: Iterable[tuple]) -> Iterator:
    """function(*piece) of each piece, in their order; a few are under way at a time."""
    lost = need("distributed").KilledWorker
    waiting: collections.deque = collections.deque()
    try:
        for piece in pieces:
            waiting.append(client.submit(function, *piece, pure=False))
            while len(waiting) > PIECES_PER_THREAD * max(1, sum(client.nthreads().values())):
                yield waiting.popleft().result()
        while waiting:
            yield waiting.popleft().result()
    except lost as error:  # Dask has tried it several times
        raise Error(f"the workers end while they calculate: {error}") from None
    finally:
        client.cancel(list(waiting))


@lru_cache(maxsize=4)
def _solver(titles: tuple[str, ...], default: Optional[tuple[tuple[str, float], ...]]) -> Solver:
    return Solver(Columns(list(titles), None if default is None else dict(default)), threads=1)


def solve(titles: tuple[str, ...], default, block: bytes) -> bytes:
    """Encoded rows with their results: what a worker does. Texts travel as one piece, not as so many objects."""
    return encode(_solver(titles, default).solve(decode(block)))
