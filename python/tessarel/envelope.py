"""Phase envelopes and the sensitivities of a flash."""

from __future__ import annotations

import ctypes
from dataclasses import dataclass
from typing import TYPE_CHECKING, Optional

import numpy as np

from ._native import NOT_COMPUTED, Error, doubles, entry, library, number

if TYPE_CHECKING:
    from .fluid import CriticalPoint, Fluid

_POINTS, _COMPONENTS = 5000, 20


@dataclass(frozen=True)
class Envelope:
    """The line on which a mixture begins to split.

    T [K], P [Pa]: its points in order; x, y (points, n): mole fractions of liquid and vapour there, of which one is the
    mixture itself; bubble: True where that is the liquid. critical: the critical point, None where none was found.
    cricondentherm, cricondenbar: (T, P) of the highest temperature and of the highest pressure, nan where the line has
    none.
    """

    T: np.ndarray
    P: np.ndarray
    x: np.ndarray
    y: np.ndarray
    bubble: np.ndarray
    critical: Optional[CriticalPoint]
    cricondentherm: tuple[float, float]
    cricondenbar: tuple[float, float]

    def __repr__(self) -> str:
        critical = "none" if self.critical is None else f"{self.critical.T:.6g} K, {self.critical.P:.6g} Pa"
        return (
            f"<Envelope: {self.T.size} points, critical point {critical}, cricondentherm "
            f"{self.cricondentherm[0]:.6g} K, cricondenbar {self.cricondenbar[1]:.6g} Pa>"
        )


def trace(fluid: Fluid) -> Envelope:
    """The envelope of a mixture, traced by the library and kept there until the parameters change."""
    if fluid.n == 1:
        raise Error(f"a phase envelope belongs to a mixture; {fluid!r} has a saturation line")
    count = ctypes.c_int32()
    t, p = np.empty(_POINTS), np.empty(_POINTS)
    x, y = np.empty((_POINTS, _COMPONENTS)), np.empty((_POINTS, _COMPONENTS))
    extrema, ends = ([ctypes.c_double(NOT_COMPUTED) for _ in range(4)] for _ in range(2))
    with fluid._session:
        library.tessarel_phaseenvelope(ctypes.byref(count), *(ctypes.c_void_p(a.ctypes.data) for a in (t, p, x, y)))
        library.tessarel_getmaxima(*map(ctypes.byref, extrema))
        library.tessarel_getminima(*map(ctypes.byref, ends))
    points = count.value
    if points <= 0:
        raise Error(f"no phase envelope found for {fluid!r}")
    tmax, p_tmax, pmax, t_pmax = (v.value if v.value > 0 else np.nan for v in extrema)
    try:
        critical = fluid.critical_point()
    except Error:
        critical = None
    t, p = t[:points] + 273.15, p[:points] * 1e5
    # One of the library's columns is the mixture itself, the first where the trace began at a bubble point.
    x, y = x[:points, : fluid.n], y[:points, : fluid.n]
    feed = np.broadcast_to(np.asarray(fluid._z), x.shape)
    from_bubble = np.all(np.abs(x - feed) < 1e-9, axis=1)
    incipient = np.where(from_bubble[:, None], y, x)
    bubble = from_bubble
    if critical is not None:
        bubble = _bubble_side(t, p, critical, [value.value for value in ends])
    side = bubble[:, None]
    return Envelope(
        t,
        p,
        np.where(side, feed, incipient),
        np.where(side, incipient, feed),
        bubble,
        critical,
        (tmax, p_tmax * 1e5),
        (t_pmax, pmax * 1e5),
    )


def _bubble_side(t: np.ndarray, p: np.ndarray, critical, ends: list[float]) -> np.ndarray:
    """Which points of the line lie between its bubble end and the critical point.

    ends: temperature [K] and pressure [bar] of the bubble end, then of the dew end.
    """
    bubble_end = abs(t - ends[0]) + abs(np.log(p / 1e5 / ends[1])) if min(ends[:2]) > 0 else np.full(t.size, np.inf)
    u, w = t / critical.T - 1, np.log(p / critical.P)
    near = int(np.argmin(np.hypot(u, w)))
    before, after = max(near - 1, 0), min(near + 1, t.size - 1)
    beyond = -u[near] * (u[after] - u[before]) - w[near] * (w[after] - w[before]) >= 0
    first_part = np.arange(t.size) < near + beyond
    return first_part if bubble_end[0] <= bubble_end[-1] else ~first_part


@dataclass(frozen=True)
class Sensitivity:
    """The stable state at T [K], P [Pa] and its derivatives along the equilibrium.

    beta: mole fraction of vapour; v [m3/mol], h [J/mol], s [J/(mol K)] of the whole. dbeta, dv, dh, ds (n+2): by T,
    by P and by the amount of each component [per mole of feed]. dx, dy (n, n+2): of the mole fractions of the phases.
    """

    T: float
    P: float
    beta: float
    v: float
    h: float
    s: float
    dbeta: np.ndarray
    dv: np.ndarray
    dh: np.ndarray
    ds: np.ndarray
    dx: np.ndarray
    dy: np.ndarray


def sensitivity(fluid: Fluid, T: float, P: float) -> Sensitivity:
    """See Sensitivity; raises Error where the flash fails."""
    n = fluid.n
    scalars = [ctypes.c_double() for _ in range(4)]
    rows = [doubles(n + 2) for _ in range(4)]
    tables = [doubles(n * (n + 2)) for _ in range(2)]
    with fluid._session:
        entry(
            "flash_sensitivity",
            number(T),
            number(P),
            *map(ctypes.byref, scalars),
            *rows,
            *tables,
            asked=f"sensitivity at T = {T:.6g} K, P = {P:.6g} Pa of {fluid!r}",
        )
    return Sensitivity(
        T,
        P,
        *(value.value for value in scalars),
        *map(np.array, rows),
        *(np.array(table).reshape(n + 2, n).T for table in tables),
    )
