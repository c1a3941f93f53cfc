"""The state of a fluid: one phase or two, with what follows from it. Molar SI units; _mass is per kilogram."""

from __future__ import annotations

import ctypes
from typing import TYPE_CHECKING

import numpy as np

from ._native import NOT_COMPUTED, Error, doubles, entry, integer, library, number
from .forms import HeatForms

if TYPE_CHECKING:
    from .fluid import Fluid

# Where the results of tessarel_states stand in a row: the state, the liquid, the vapour, the derived properties, x, y.
STATE, LIQUID, VAPOUR, DERIVED, FRACTIONS = 0, 7, 11, 15, 22
# The density root that tessarel_calc_lnphi takes.
LOWER_GIBBS, LIQUID_ROOT, VAPOUR_ROOT = -1, 1, 2


class Properties(HeatForms):
    """What one phase, or a whole of two, has to tell. T [K], P [Pa], v [m3/mol], u, h [J/mol], s [J/(mol K)]."""

    __slots__ = ("T", "P", "v", "u", "h", "s", "fluid", "_version", "_derived", "_root")

    T: float
    P: float
    v: float
    u: float
    h: float
    s: float
    fluid: Fluid

    @property
    def z(self) -> np.ndarray:
        """Mole fractions of the components."""
        raise NotImplementedError

    def _derived_values(self) -> list[float]:
        """cv, cp, w, Joule-Thomson coefficient, isothermal compressibility, thermal expansion, g."""
        raise NotImplementedError

    def _of_one_phase(self, index: int) -> float:
        return self._derived_values()[index]

    def _check_version(self) -> None:
        if self.fluid._version != self._version:
            raise Error("the parameters of the fluid have changed since this state was calculated; calculate it again")

    @property
    def molar_mass(self) -> float:
        """Molar mass [kg/mol]: the mole-fraction average of the components'."""
        return float(np.dot(self.z, self.fluid._molar_masses))

    @property
    def cv(self) -> float:
        """Isochoric heat capacity [J/(mol K)], du/dT at constant v. Of one phase."""
        return self._of_one_phase(0)

    @property
    def cp(self) -> float:
        """Isobaric heat capacity [J/(mol K)], dh/dT at constant P. Of one phase."""
        return self._of_one_phase(1)

    @property
    def w(self) -> float:
        """Speed of sound [m/s], sqrt(dP/d(density)) at constant s. Of one phase."""
        return self._of_one_phase(2)

    @property
    def joule_thomson(self) -> float:
        """Joule-Thomson coefficient [K/Pa], dT/dP at constant h. Of one phase."""
        return self._of_one_phase(3)

    @property
    def kappa_T(self) -> float:
        """Isothermal compressibility [1/Pa], -(dv/dP)/v at constant T. Of one phase."""
        return self._of_one_phase(4)

    @property
    def alpha_P(self) -> float:
        """Thermal expansion [1/K], (dv/dT)/v at constant P. Of one phase."""
        return self._of_one_phase(5)

    @property
    def lnphi(self) -> np.ndarray:
        """Logarithms of the fugacity coefficients: f_i = z_i phi_i P. Of one phase."""
        self._of_one_phase(0)
        self._check_version()
        n = self.fluid.n
        out = doubles(n)
        with self.fluid._session:
            library.tessarel_calc_lnphi(
                integer(n), doubles(n, self.z), number(self.T), number(self.P), integer(self._root), out
            )
        return np.array(out)


class Phase(Properties):
    """The liquid or the vapour of two phases in equilibrium, with a composition of its own."""

    __slots__ = ("_z", "name")

    def __init__(self, whole: State, name: str, values, z, root: int) -> None:
        self.T, self.P, self.fluid, self._version = whole.T, whole.P, whole.fluid, whole._version
        self.v, self.u, self.h, self.s = values
        self.name, self._z, self._root = name, z, root
        self._derived: list[float] | None = None

    @property
    def z(self) -> np.ndarray:
        """Mole fractions of the components in this phase."""
        return np.array(self._z)

    def _derived_values(self) -> list[float]:
        if self._derived is None:
            self._check_version()
            self._derived = derived(self.fluid, self._z, self.T, self.v)
        return self._derived

    def __repr__(self) -> str:
        return f"<{self.name}: {_line(self)}>"


class State(Properties):
    """A state of a fluid. Of two phases `liquid` and `vapour` have the properties of each, and those properties that
    only one phase has (cv, cp, w, joule_thomson, kappa_T, alpha_P, lnphi) are errors here: a heat capacity of the whole
    would hold the heat of evaporation, the speed of sound depends on how finely the phases are dispersed.
    """

    __slots__ = ("q", "_row", "_forced")

    def __init__(self, fluid: Fluid, row: list[float], forced: str | None, version: int) -> None:
        self.fluid, self._version, self._row, self._forced = fluid, version, row, forced
        self.T, self.P, self.v, self.u, self.h, self.s, self.q = row[:7]
        self._derived = None
        self._root = LOWER_GIBBS if forced is None else LIQUID_ROOT if forced == "liquid" else VAPOUR_ROOT

    q: float

    @property
    def z(self) -> np.ndarray:
        """Mole fractions of the whole."""
        return self.fluid.z

    @property
    def phase(self) -> str:
        """ "liquid", "vapour" or "two phases". Beyond the critical temperature one phase is called vapour."""
        return self._forced or ("two phases" if 0 < self.q < 1 else "liquid" if self.q <= 0 else "vapour")

    @property
    def x(self) -> np.ndarray:
        """Mole fractions of the liquid; nan where there is none."""
        n = self.fluid.n
        return np.array(self._row[FRACTIONS : FRACTIONS + n] if self.phase != "vapour" else [np.nan] * n)

    @property
    def y(self) -> np.ndarray:
        """Mole fractions of the vapour; nan where there is none."""
        n = self.fluid.n
        return np.array(self._row[FRACTIONS + n :] if self.phase != "liquid" else [np.nan] * n)

    @property
    def liquid(self) -> Properties:
        """The liquid: this state itself if it is one liquid phase; an error if there is none."""
        return self._part("liquid", LIQUID, FRACTIONS, LIQUID_ROOT)

    @property
    def vapour(self) -> Properties:
        """The vapour: this state itself if it is one vapour phase; an error if there is none."""
        return self._part("vapour", VAPOUR, FRACTIONS + self.fluid.n, VAPOUR_ROOT)

    def _part(self, name: str, values: int, fractions: int, root: int) -> Properties:
        if self.phase == name:
            return self
        if self.phase != "two phases":
            raise Error(f"no {name} here: {_line(self)} is one {self.phase} phase")
        n = self.fluid.n
        return Phase(
            self,
            name,
            self._row[values : values + 4],
            self._row[fractions : fractions + n],
            root if n == 1 else LOWER_GIBBS,
        )

    def _derived_values(self) -> list[float]:
        if self.phase == "two phases":
            raise Error(f"two phases at {_line(self)}: this property belongs to one phase, ask .liquid or .vapour")
        values = self._row[DERIVED:FRACTIONS]
        if values[0] == NOT_COMPUTED:
            raise Error(f"no finite value at {_line(self)}: the phase is unstable or at its critical point")
        return values

    def __repr__(self) -> str:
        lines = [
            f"<{self.fluid!r}: {self.phase}" + (f", vapour fraction {self.q:.6g}" if 0 < self.q < 1 else ""),
            f"  {_line(self)}",
            f"  h = {self.h:.6g} J/mol, s = {self.s:.6g} J/(mol K), " f"density = {self.density:.6g} kg/m3",
        ]
        if self.phase == "two phases" and self.fluid.n > 1:
            lines += [
                f"  {name:24} liquid {x:.6f}  vapour {y:.6f}" for name, x, y in zip(self.fluid.names, self.x, self.y)
            ]
        return "\n".join(lines) + ">"


def _line(state: Properties) -> str:
    return f"T = {state.T:.6g} K, P = {state.P:.6g} Pa"


def derived(fluid: Fluid, z, t: float, v: float) -> list[float]:
    """cv, cp, w, Joule-Thomson coefficient, compressibility, expansion and g of a stable phase z at t [K], v [m3/mol].

    cv follows from the others: cp - cv = T v alpha_P^2/kappa_T.
    """
    out = [ctypes.c_double() for _ in range(6)]
    with fluid._session:
        entry(
            "derived",
            doubles(fluid.n, z),
            number(t),
            number(v),
            *map(ctypes.byref, out),
            asked=f"derived properties at T = {t:.6g} K, v = {v:.6g} m3/mol",
        )
    cp, w, jt, kappa, alpha, g = (value.value for value in out)
    return [cp - t * v * alpha**2 / kappa, cp, w, jt, kappa, alpha, g]
