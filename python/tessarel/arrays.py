"""Many states at once: broadcast arrays, solved in chunks by the library on several threads."""

from __future__ import annotations

import ctypes
import os
import queue
import threading
import warnings
from typing import TYPE_CHECKING

import numpy as np

from ._native import ERROR_FIELD, GAS_CONSTANT, NOT_COMPUTED, Error, Message, Session, library

if TYPE_CHECKING:
    from .fluid import Fluid, Pair

CHUNK = 256
TEXTS = 64

_STATE = ("T", "P", "v", "u", "h", "s", "q")
_PHASE = ("v", "u", "h", "s")
_DERIVED = ("cv", "cp", "w", "joule_thomson", "kappa_T", "alpha_P")


class PhaseArrays:
    """One phase of the states: v [m3/mol], u, h [J/mol], s [J/(mol K)], z (..., n), nan where the phase is not there."""

    def __init__(self, values: np.ndarray, z: np.ndarray, molar_masses: np.ndarray) -> None:
        self.v, self.u, self.h, self.s = values
        self.z = z
        self.molar_mass = z @ molar_masses

    @property
    def rho(self) -> np.ndarray:
        """Molar density [mol/m3]."""
        return 1 / self.v

    @property
    def density(self) -> np.ndarray:
        """Mass density [kg/m3]."""
        return self.molar_mass / self.v

    @property
    def h_mass(self) -> np.ndarray:
        """Specific enthalpy [J/kg]."""
        return self.h / self.molar_mass

    @property
    def s_mass(self) -> np.ndarray:
        """Specific entropy [J/(kg K)]."""
        return self.s / self.molar_mass


class States:
    """States as arrays of one shape, with the names and units of State; x, y have an axis of components behind.

    T, P, v, u, h, s, q; cv, cp, w, joule_thomson, kappa_T, alpha_P of one phase, nan of two. `ok` is False and all
    values are nan where there is no state; `message` then tells why.
    """

    T: np.ndarray
    P: np.ndarray
    v: np.ndarray
    u: np.ndarray
    h: np.ndarray
    s: np.ndarray
    q: np.ndarray
    cv: np.ndarray
    cp: np.ndarray
    w: np.ndarray
    joule_thomson: np.ndarray
    kappa_T: np.ndarray
    alpha_P: np.ndarray

    def __init__(self, fluid: Fluid, shape: tuple[int, ...], values: np.ndarray, x: np.ndarray, y: np.ndarray,
                 message: np.ndarray, forced: str | None) -> None:
        self.shape, self.molar_mass = shape, fluid.molar_mass
        self._molar_masses = fluid.molar_masses
        values = np.where(values == NOT_COMPUTED, np.nan, values).reshape(22, *shape)
        for name, column in zip(_STATE, values[:7]):
            setattr(self, name, column)
        for name, column in zip(_DERIVED, values[15:]):
            setattr(self, name, column)
        self.message = message.reshape(shape)
        self.ok = self.message == ""
        n = fluid.n
        two = (self.q > 0) & (self.q < 1)
        liquid = self.ok & ((self.q < 1) if forced is None else forced == "liquid")
        vapour = self.ok & ((self.q > 0) if forced is None else forced == "vapour")
        self.x = np.where(liquid[..., None], x.reshape(*shape, n), np.nan)
        self.y = np.where(vapour[..., None], y.reshape(*shape, n), np.nan)
        whole = values[2:6]
        self._liquid = np.where(two, values[7:11], np.where(liquid, whole, np.nan))
        self._vapour = np.where(two, values[11:15], np.where(vapour, whole, np.nan))

    @property
    def liquid(self) -> PhaseArrays:
        """The liquid of each state, also where it is alone; nan where there is none."""
        return PhaseArrays(self._liquid, self.x, self._molar_masses)

    @property
    def vapour(self) -> PhaseArrays:
        """The vapour of each state, also where it is alone; nan where there is none."""
        return PhaseArrays(self._vapour, self.y, self._molar_masses)

    @property
    def rho(self) -> np.ndarray:
        """Molar density [mol/m3]."""
        return 1 / self.v

    @property
    def density(self) -> np.ndarray:
        """Mass density [kg/m3]."""
        return self.molar_mass / self.v

    @property
    def g(self) -> np.ndarray:
        """Gibbs energy [J/mol], h - T s."""
        return self.h - self.T * self.s

    @property
    def z_factor(self) -> np.ndarray:
        """Compressibility factor P v/(R T), R = 8.31441 J/(mol K)."""
        return self.P * self.v / (GAS_CONSTANT * self.T)

    @property
    def u_mass(self) -> np.ndarray:
        """Specific internal energy [J/kg]."""
        return self.u / self.molar_mass

    @property
    def h_mass(self) -> np.ndarray:
        """Specific enthalpy [J/kg]."""
        return self.h / self.molar_mass

    @property
    def s_mass(self) -> np.ndarray:
        """Specific entropy [J/(kg K)]."""
        return self.s / self.molar_mass

    @property
    def cp_mass(self) -> np.ndarray:
        """Isobaric heat capacity [J/(kg K)]."""
        return self.cp / self.molar_mass

    def __repr__(self) -> str:
        return f"<States {self.shape}: {int(np.sum(self.ok))} of {self.ok.size} solved>"


class _Job:
    """What the chunks write into: the flat inputs and results of all states."""

    def __init__(self, n: int, pair: Pair, a: np.ndarray, b: np.ndarray) -> None:
        self.n, self.pair, self.a, self.b = n, pair, a, b
        self.values = np.empty((22, a.size))
        self.x, self.y = np.empty((a.size, n)), np.empty((a.size, n))
        self.message = np.full(a.size, "", dtype=object)

    def run(self, low: int, high: int) -> None:
        """Solves the states from low to high on the session that is current on this thread."""
        count = high - low
        out = np.empty((22, count))
        codes = np.empty(count, np.int32)
        texts = ctypes.create_string_buffer(TEXTS * ERROR_FIELD)
        used, message = ctypes.c_int32(TEXTS), Message()

        def address(array: np.ndarray) -> ctypes.c_void_p:
            return ctypes.c_void_p(array.ctypes.data)

        library.tessarel_states(
            self.pair.field, ctypes.byref(ctypes.c_int64(count)), address(self.a[low:high]), address(self.b[low:high]),
            address(out), address(out[7:]), address(out[11:]), address(out[15:]), address(self.x[low:high]),
            address(self.y[low:high]), address(codes), ctypes.byref(used), texts, message.field, self.pair.length,
            ctypes.c_size_t(ERROR_FIELD), message.length)
        message.check(f"{count} states by {self.pair.spec}")
        self.values[:, low:high] = out
        for k in np.flatnonzero(codes):
            place = codes[k] - 1
            field = texts.raw[place * ERROR_FIELD:(place + 1) * ERROR_FIELD] if place >= 0 else b"no state found"
            self.message[low + k] = field.decode("utf-8", "replace").strip()


def _bar(progress: bool, total: int):
    if not progress:
        return None
    try:
        from tqdm.auto import tqdm
    except ImportError:
        raise Error('progress=True needs tqdm: the extra "tessarel[progress]" or the package python3-tqdm') from None
    return tqdm(total=total, unit="state")


def solve(fluid: Fluid, pair: Pair, given: dict, threads: int | None, progress: bool) -> States:
    """The states of the broadcast values `given`, in chunks that `threads` clones of the fluid's session share."""
    arrays_ = [np.asarray(given[name], dtype=float) for name in pair.given]
    with np.errstate(divide="ignore"):
        arrays_ = [fluid._molar(name, array) for name, array in zip(pair.given, arrays_)]
    try:
        a, b = np.broadcast_arrays(*arrays_)
    except ValueError:
        raise Error("the shapes of " + " and ".join(f"{name} {array.shape}" for name, array in
                                                     zip(pair.given, arrays_)) + " do not broadcast") from None
    job = _Job(fluid.n, pair, np.ascontiguousarray(a).ravel(), np.ascontiguousarray(b).ravel())
    size = job.a.size
    workers = max(1, min(threads if threads is not None else os.cpu_count() or 1, size // 32))
    chunk = max(1, min(CHUNK, -(-size // workers)))
    bar = _bar(progress, size)
    chunks: queue.SimpleQueue = queue.SimpleQueue()
    for low in range(0, size, chunk):
        chunks.put((low, min(low + chunk, size)))
    failures: list[BaseException] = []

    def work(session: Session) -> None:
        try:
            with session:
                while not failures:
                    try:
                        low, high = chunks.get_nowait()
                    except queue.Empty:
                        return
                    job.run(low, high)
                    if bar is not None:
                        bar.update(high - low)
        except BaseException as failure:  # handed to the caller's thread
            failures.append(failure)

    with fluid._session:
        if workers > 1:
            clones = [Session(clone_of=fluid._session) for _ in range(workers - 1)]
            helpers = [threading.Thread(target=work, args=(clone,), daemon=True) for clone in clones]
            for helper in helpers:
                helper.start()
        work(fluid._session)
        if workers > 1:
            for helper in helpers:
                helper.join()
            for clone in clones:
                clone.close()
        if bar is not None:
            bar.close()
    if failures:
        raise failures[0]
    states = States(fluid, a.shape, job.values, job.x, job.y, job.message, pair.forced)
    low, high = fluid.T_range
    outside = int(np.sum((states.T < low) | (states.T > high)))
    if outside:
        from .fluid import RangeWarning
        warnings.warn(f"{outside} of {size} states lie outside {low:.6g} to {high:.6g} K, for which the data of "
                      f"{fluid!r} hold", RangeWarning, stacklevel=3)
    return states
