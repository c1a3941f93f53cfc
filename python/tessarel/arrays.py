"""Many states at once: broadcast arrays, solved in chunks by the library on several threads."""

from __future__ import annotations

import ctypes
import os
import queue
import threading
import warnings
from functools import cached_property
from typing import TYPE_CHECKING

import numpy as np

from ._native import ERROR_FIELD, NOT_COMPUTED, Error, Message, Session, library
from .extras import need
from .forms import HeatForms
from .state import DERIVED, FRACTIONS, LIQUID, STATE, VAPOUR, State

if TYPE_CHECKING:
    from .fluid import Fluid, Pair

CHUNK = 1024
TEXTS = 64


def _column(place: int, meaning: str):
    """A property of the states that stands in a column of the library's results; nan where it has not been computed."""

    def read(self: States) -> np.ndarray:
        return self._values(place)

    read.__doc__ = meaning
    return cached_property(read)


def _of_each(index: int, meaning: str):
    """A property of a phase of the states that each of them is asked for: a call of the library for each."""

    def read(self: PhaseArrays) -> np.ndarray:
        return self._derived[index]

    read.__doc__ = meaning
    return property(read)


class PhaseArrays(HeatForms):
    """One phase of the states: T [K], P [Pa], v [m3/mol], u, h [J/mol], s [J/(mol K)], z (..., n); nan where it is not
    there.

    cv and what follows it here, and lnphi, are calculated when first asked for, one state after the other.
    """

    def __init__(self, states: States, name: str, values: list[np.ndarray], z: np.ndarray) -> None:
        self.T, self.P = states.T, states.P
        self.v, self.u, self.h, self.s = values
        self.z = z
        self.molar_mass = z @ states.fluid.molar_masses
        self._states, self._name = states, name

    cv = _of_each(0, "Isochoric heat capacity [J/(mol K)].")
    cp = _of_each(1, "Isobaric heat capacity [J/(mol K)].")
    w = _of_each(2, "Speed of sound [m/s].")
    joule_thomson = _of_each(3, "Joule-Thomson coefficient [K/Pa].")
    kappa_T = _of_each(4, "Isothermal compressibility [1/Pa].")
    alpha_P = _of_each(5, "Thermal expansion [1/K].")

    @cached_property
    def lnphi(self) -> np.ndarray:
        """Logarithms of the fugacity coefficients, components last."""
        return self._each(lambda phase: phase.lnphi, self.z.shape)

    @cached_property
    def _derived(self) -> np.ndarray:
        return np.moveaxis(self._each(lambda phase: phase._derived_values(), (*self.T.shape, 7)), -1, 0)

    def _each(self, values, shape: tuple[int, ...]) -> np.ndarray:
        """The values of this phase of every state that has it; nan where the library refuses them."""
        self._states._check_version()
        out = np.full(shape, np.nan)
        for place in zip(*np.nonzero(self._states._there(self._name))):
            try:
                out[place] = values(getattr(self._states[place], self._name))
            except Error:
                pass
        return out


class States(HeatForms):
    """States as arrays of one shape, with the names and units of State.

    Where there is no state `ok` is False, all values are nan, and `message` tells why. `states[2]`, or `states[2, 0]`
    with two axes, is one of them as a State.
    """

    def __init__(self, fluid: Fluid, shape: tuple[int, ...], job: _Job) -> None:
        self.shape, self.molar_mass = shape, fluid.molar_mass
        self.fluid, self._version, self._job = fluid, fluid._version, job

    _check_version = State._check_version

    def __getitem__(self, place: int | tuple[int, ...]) -> State:
        """The state at this place, an error if there is none."""
        flat = np.arange(self.ok.size).reshape(self.shape)[place]
        if np.ndim(flat):
            raise Error(f"states of shape {self.shape} need {len(self.shape)} indices to name one of them")
        if not self.ok.flat[flat]:
            raise Error(f"{self._job.failed[int(flat)]} [state {place}]")
        job = self._job
        row = [*job.values[:, flat].tolist(), *job.x[flat].tolist(), *job.y[flat].tolist()]
        return State(self.fluid, row, job.pair.forced, self._version)

    def _values(self, place: int) -> np.ndarray:
        column = self._job.values[place]
        return np.where(column == NOT_COMPUTED, np.nan, column).reshape(self.shape)

    T = _column(STATE, "Temperature [K].")
    P = _column(STATE + 1, "Pressure [Pa].")
    v = _column(STATE + 2, "Molar volume [m3/mol].")
    u = _column(STATE + 3, "Internal energy [J/mol].")
    h = _column(STATE + 4, "Enthalpy [J/mol].")
    s = _column(STATE + 5, "Entropy [J/(mol K)].")
    q = _column(STATE + 6, "Mole fraction of vapour.")
    cv = _column(DERIVED, "Isochoric heat capacity [J/(mol K)], nan of two phases.")
    cp = _column(DERIVED + 1, "Isobaric heat capacity [J/(mol K)], nan of two phases.")
    w = _column(DERIVED + 2, "Speed of sound [m/s], nan of two phases.")
    joule_thomson = _column(DERIVED + 3, "Joule-Thomson coefficient [K/Pa], nan of two phases.")
    kappa_T = _column(DERIVED + 4, "Isothermal compressibility [1/Pa], nan of two phases.")
    alpha_P = _column(DERIVED + 5, "Thermal expansion [1/K], nan of two phases.")

    @cached_property
    def ok(self) -> np.ndarray:
        """True where there is a state."""
        return (self._job.codes == 0).reshape(self.shape)

    @cached_property
    def message(self) -> np.ndarray:
        """Why there is no state; an empty text where there is one."""
        texts = np.full(self._job.codes.size, "", dtype=object)
        for place, text in self._job.failed.items():
            texts[place] = text
        return texts.reshape(self.shape)

    def _there(self, phase: str) -> np.ndarray:
        """Where the states have this phase, alone or beside the other one."""
        forced = self._job.pair.forced
        if forced is not None:
            return self.ok & (forced == phase)
        return self.ok & ((self.q < 1) if phase == "liquid" else (self.q > 0))

    def _phase(self, phase: str, place: int, z: np.ndarray) -> PhaseArrays:
        there, two = self._there(phase), (self.q > 0) & (self.q < 1) & (self._job.pair.forced is None)
        values = [
            np.where(two, self._values(place + k), np.where(there, self._values(2 + k), np.nan)) for k in range(4)
        ]
        return PhaseArrays(self, phase, values, z)

    @cached_property
    def x(self) -> np.ndarray:
        """Mole fractions of the liquid, components last; nan where there is none."""
        return np.where(self._there("liquid")[..., None], self._job.x.reshape(*self.shape, -1), np.nan)

    @cached_property
    def y(self) -> np.ndarray:
        """Mole fractions of the vapour, components last; nan where there is none."""
        return np.where(self._there("vapour")[..., None], self._job.y.reshape(*self.shape, -1), np.nan)

    @cached_property
    def liquid(self) -> PhaseArrays:
        """The liquid of each state, also where it is alone; nan where there is none."""
        return self._phase("liquid", LIQUID, self.x)

    @cached_property
    def vapour(self) -> PhaseArrays:
        """The vapour of each state, also where it is alone; nan where there is none."""
        return self._phase("vapour", VAPOUR, self.y)

    def __repr__(self) -> str:
        return f"<States {self.shape}: {int(np.sum(self.ok))} of {self.ok.size} solved>"


class _Job:
    """What the chunks write into: the flat inputs and results of all states."""

    def __init__(self, n: int, pair: Pair, a: np.ndarray, b: np.ndarray) -> None:
        self.n, self.pair, self.a, self.b = n, pair, a, b
        self.values = np.empty((FRACTIONS, a.size))
        self.x, self.y = np.empty((a.size, n)), np.empty((a.size, n))
        self.codes = np.empty(a.size, np.int32)
        self.failed: dict[int, str] = {}

    def run(self, low: int, high: int, room: np.ndarray, texts: ctypes.Array) -> None:
        """Solves the states from low to high on the session that is current on this thread.

        room, texts: memory of the thread, for the values of each state and for TEXTS messages.
        """
        count = high - low
        out = room[: FRACTIONS * count].reshape(FRACTIONS, count)
        codes = self.codes[low:high]
        used, message = ctypes.c_int32(TEXTS), Message()

        def address(array: np.ndarray) -> ctypes.c_void_p:
            return ctypes.c_void_p(array.ctypes.data)

        library.tessarel_states(
            self.pair.field,
            ctypes.byref(ctypes.c_int64(count)),
            address(self.a[low:high]),
            address(self.b[low:high]),
            address(out),
            address(out[LIQUID:]),
            address(out[VAPOUR:]),
            address(out[DERIVED:]),
            address(self.x[low:high]),
            address(self.y[low:high]),
            address(codes),
            ctypes.byref(used),
            texts,
            message.field,
            self.pair.length,
            ctypes.c_size_t(ERROR_FIELD),
            message.length,
        )
        message.check(f"{count} states by {self.pair.spec}")
        self.values[:, low:high] = out
        for k in np.flatnonzero(codes) if codes.any() else ():
            place = codes[k] - 1
            field = texts.raw[place * ERROR_FIELD : (place + 1) * ERROR_FIELD] if place >= 0 else b"no state found"
            self.failed[int(low + k)] = field.decode("utf-8", "replace").strip()


def _bar(progress: bool, total: int):
    if not progress:
        return None
    return need("tqdm.auto").tqdm(total=total, unit="state")


def solve(fluid: Fluid, pair: Pair, given: dict, threads: int | None, progress: bool) -> States:
    """The states of the broadcast values `given`, in chunks that `threads` clones of the fluid's session share."""
    arrays_ = [np.asarray(given[name], dtype=float) for name in pair.given]
    with np.errstate(divide="ignore"):
        arrays_ = [fluid._molar(name, array) for name, array in zip(pair.given, arrays_)]
    try:
        a, b = np.broadcast_arrays(*arrays_)
    except ValueError:
        raise Error(
            "the shapes of "
            + " and ".join(f"{name} {array.shape}" for name, array in zip(pair.given, arrays_))
            + " do not broadcast"
        ) from None
    job = _Job(fluid.n, pair, np.ascontiguousarray(a).ravel(), np.ascontiguousarray(b).ravel())
    size = job.a.size
    workers = max(1, min(threads if threads is not None else os.cpu_count() or 1, size // 32))
    chunk = CHUNK if workers == 1 else max(32, min(CHUNK, size // (4 * workers)))
    bar = _bar(progress, size)
    chunks: queue.SimpleQueue = queue.SimpleQueue()
    for low in range(0, size, chunk):
        chunks.put((low, min(low + chunk, size)))
    failures: list[BaseException] = []

    def work(session: Session) -> None:
        try:
            room, texts = np.empty(FRACTIONS * min(chunk, size)), ctypes.create_string_buffer(TEXTS * ERROR_FIELD)
            with session:
                while not failures:
                    try:
                        low, high = chunks.get_nowait()
                    except queue.Empty:
                        return
                    job.run(low, high, room, texts)
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
    states = States(fluid, a.shape, job)
    low, high = fluid.T_range
    t = job.values[0]
    outside = int(np.count_nonzero((job.codes == 0) & ((t < low) | (t > high))))
    if outside:
        from .fluid import RangeWarning

        warnings.warn(
            f"{outside} of {size} states lie outside {low:.6g} to {high:.6g} K, for which the data of "
            f"{fluid!r} hold",
            RangeWarning,
            stacklevel=3,
        )
    return states
