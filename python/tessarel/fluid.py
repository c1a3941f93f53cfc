"""A fluid: a session of the library with a selection, and the states and properties that it answers."""

from __future__ import annotations

import ctypes
import math
import warnings
from typing import Mapping, NamedTuple, Sequence, Union

import numpy as np

from . import _native, arrays, envelope
from ._native import NAME_FIELD, NOT_COMPUTED, Error, Message, Session, doubles, entry, integer, library, number, text
from .names import hint
from .state import FRACTIONS, State

#: The pairs of properties that define a state, as the library spells them.
PAIRS = ("TP", "Tv", "vP", "Ts", "vu", "vh", "vs", "Pu", "Ph", "Ps", "hs", "Pq", "Tq", "vq")
_SUFFIX = {None: "", "liquid": " Lph", "vapour": " Vph", "vapor": " Vph"}
Array = Union[float, np.ndarray]


class RangeWarning(UserWarning):
    """A temperature outside the range for which the fluid's data hold."""


class Pair(NamedTuple):
    """A pair of properties, ready to be handed to the library."""

    spec: str
    given: tuple[str, str]  # the keywords in the library's order
    forced: str | None
    field: ctypes.Array
    length: ctypes.c_size_t


class CriticalPoint(NamedTuple):
    """T [K], P [Pa], rho [mol/m3]."""

    T: float
    P: float
    rho: float


class BoundaryPoint(NamedTuple):
    """A bubble or dew point: T [K], P [Pa], mole fractions of the liquid x and of the vapour y."""

    T: float
    P: float
    x: np.ndarray
    y: np.ndarray


class Spinodal(NamedTuple):
    """Pressures [Pa], or temperatures [K], at which the liquid and the vapour become unstable."""

    liquid: float
    vapour: float


def _rebuilt(names: list[str], z: list[float], changes: list[tuple[tuple, float]]) -> Fluid:
    fluid = Fluid(names, z)
    for (what, *where), value in changes:
        if what == "kij":
            fluid.set_kij(where[0], where[1], value)
        else:
            fluid.set_parameter(what, where[0], value)
    return fluid


def _encoded(name: str) -> bytes:
    return name.encode("utf-8", "replace")


def _composition(names, z) -> tuple[list[str], list[float]]:
    if isinstance(names, str):
        names, z = [names], [1.0] if z is None else z
    elif isinstance(names, Mapping):
        if z is not None:
            raise Error("the fractions stand in the mapping already: Fluid({name: fraction})")
        names, z = list(names), list(names.values())
    names = [str(name) for name in names]
    if z is None:
        if len(names) != 1:
            raise Error(f"mole fractions of the {len(names)} components are missing: Fluid(names, fractions)")
        z = [1.0]
    fractions = [float(value) for value in np.ravel(z)]
    if len(fractions) != len(names):
        raise Error(f"{len(names)} names and {len(fractions)} mole fractions")
    if len(set(names)) != len(names):
        raise Error(f"a component is named twice: {', '.join(names)}")
    long = [name for name in names if len(_encoded(name)) > NAME_FIELD]
    if long:
        raise Error(f"a name of more than {NAME_FIELD} bytes: {long[0][:40]}...")
    total = math.fsum(fractions) if all(map(math.isfinite, fractions)) else math.nan
    if not abs(total - 1) <= 1e-6:
        percent = "; they seem to be percent, divide them by 100" if abs(total - 100) < 1e-3 else ""
        raise Error(f"mole fractions must sum to 1 within 1e-6; the sum is {total:.10g}{percent}")
    return names, fractions


class Fluid:
    """A pure fluid or a mixture of up to 20 components.

        Fluid("propane")
        Fluid(["methane", "n-butane"], [0.5, 0.5])
        Fluid({"methane": 0.85, "ethane": 0.15})

    Fractions are mole fractions and sum to 1 within 1e-6. The fluid holds a session of the library of its own, so any
    number of them live side by side; one fluid used from several threads works for one of them at a time.
    """

    def __init__(self, names: str | Sequence[str] | Mapping[str, float], z: Sequence[float] | None = None) -> None:
        self.names, fractions = _composition(names, z)
        self._session = Session()
        self._changes: dict[tuple, float] = {}
        self._select(fractions)

    def _select(self, fractions: list[float]) -> None:
        """Selects the composition in the session and makes the buffers of a scalar call."""
        n = self.n = len(self.names)
        field = ctypes.create_string_buffer(b"".join(_encoded(name).ljust(NAME_FIELD) for name in self.names))
        self._z = fractions
        self._version = 0
        message = Message()
        with self._session:
            library.tessarel_setfluid(
                integer(n), field, doubles(n, fractions), message.field, ctypes.c_size_t(NAME_FIELD), message.length
            )
        if not message.good:
            meant = hint(self.names)
            raise Error(f"{message}" + (f" ({meant})" if meant else f" [selection of {', '.join(self.names)}]"))
        self._read_info()
        self._pairs: dict[tuple, Pair] = {}
        row = self._row = doubles(FRACTIONS + 2 * n)
        self._a, self._b, self._code, self._texts = (
            ctypes.c_double(),
            ctypes.c_double(),
            ctypes.c_int32(),
            ctypes.c_int32(1),
        )
        self._text, self._message = ctypes.create_string_buffer(_native.ERROR_FIELD), Message()
        places = (0, 7, 11, 15, FRACTIONS, FRACTIONS + n)
        self._arguments = (
            ctypes.byref(ctypes.c_int64(1)),
            ctypes.byref(self._a),
            ctypes.byref(self._b),
            *(ctypes.byref(row, 8 * place) for place in places),
            ctypes.byref(self._code),
            ctypes.byref(self._texts),
            self._text,
            self._message.field,
        )
        self._text_length = ctypes.c_size_t(_native.ERROR_FIELD)

    def _read_info(self) -> None:
        n = self.n
        scalars = [ctypes.c_double() for _ in range(5)]
        lists = [doubles(n) for _ in range(5)]
        with self._session:
            library.tessarel_fluidinfo(doubles(n, self._z), *map(ctypes.byref, scalars), *lists)
        self._mass, _, _, self._tmin, self._tmax = (value.value for value in scalars)
        self._molar_masses = np.array(lists[0])

    # ------------------------------------------------------------------------------------------------ what it is

    @property
    def z(self) -> np.ndarray:
        """Mole fractions of the components."""
        return np.array(self._z)

    @property
    def molar_mass(self) -> float:
        """Molar mass [kg/mol]."""
        return self._mass

    @property
    def molar_masses(self) -> np.ndarray:
        """Molar masses of the components [kg/mol]."""
        return self._molar_masses.copy()

    @property
    def T_range(self) -> tuple[float, float]:
        """Lowest and highest temperature [K] that the data of all components share."""
        return self._tmin, self._tmax

    def __repr__(self) -> str:
        parts = ", ".join(f"{name} {x:.6g}" for name, x in zip(self.names, self._z))
        return f"Fluid({parts})" if self.n > 1 else f"Fluid({self.names[0]})"

    def copy(self) -> Fluid:
        """The same fluid with the same parameters in a session of its own."""
        return self.with_composition(self._z)

    def with_composition(self, z: Sequence[float]) -> Fluid:
        """The same components with other mole fractions; changed parameters are kept."""
        other = Fluid.__new__(Fluid)
        other.names, fractions = _composition(self.names, z)
        with self._session:
            other._session = Session(clone_of=self._session)
        other._changes = dict(self._changes)
        other._select(fractions)
        return other

    def __deepcopy__(self, memo) -> Fluid:
        return self.copy()

    def __reduce__(self):
        """A fluid travels as its names, fractions and changed parameters, in the order of the changes."""
        return _rebuilt, (self.names, self._z, list(self._changes.items()))

    # ------------------------------------------------------------------------------------------------ states

    def _pair(self, given: tuple[str, ...], phase: str | None) -> Pair:
        """The pair for these keywords, in the library's order."""
        if phase not in _SUFFIX:
            raise Error(f'phase must be "liquid" or "vapour", not {phase!r}')
        if len(given) != 2:
            raise Error(f"a state needs two properties, not {len(given)}: {', '.join(given) or 'none'}")
        bare = {}
        for name in given:
            base = name[:-5] if name.endswith("_mass") else name
            base = "v" if base == "rho" else base
            if base not in "TPvuhsq" or len(base) != 1 or name in ("T_mass", "P_mass", "q_mass"):
                raise Error(
                    f"no property {name!r} to define a state: T, P, v, rho, u, h, s, q, and v_mass, rho_mass, "
                    "u_mass, h_mass, s_mass per kilogram"
                )
            bare[base] = name
        for spec in PAIRS:
            if set(spec) == set(bare):
                forced = "vapour" if phase == "vapor" else phase
                pair = Pair(spec, (bare[spec[0]], bare[spec[1]]), forced, *text(spec + _SUFFIX[phase]))
                self._pairs[(phase, *given)] = pair
                return pair
        raise Error(f"the pair {' and '.join(given)} does not define a state here; the pairs are {', '.join(PAIRS)}")

    def _molar(self, name: str, value):
        """A property in the library's units from a keyword's value."""
        if name == "rho":
            return 1 / value
        if name == "rho_mass":
            return self._mass / value
        return value * self._mass if name.endswith("_mass") else value

    def state(self, *, phase: str | None = None, **given: float) -> State:
        """The state with two given properties: `state(T=300, P=40e5)`, `state(P=1e5, q=0)`, `state(P=1e5, h_mass=2e5)`.

        T [K], P [Pa], v [m3/mol] or rho [mol/m3], u, h [J/mol], s [J/(mol K)], q [mole fraction of vapour]; v_mass
        [m3/kg], rho_mass [kg/m3], u_mass, h_mass [J/kg], s_mass [J/(kg K)]. Pairs: T with P, v, s, q; P with v, u, h,
        s, q; v with u, h, s, q; h with s. With `phase` "liquid" or "vapour" one phase is calculated, stable
        or not. u, h and s count from the elements' ideal gas at 298.15 K and 1e5 Pa. Raises Error where there is no
        such state, with the reason; warns outside the fluid's range of temperature.
        """
        pair = self._pairs.get((phase, *given)) or self._pair(tuple(given), phase)
        first, second = pair.given
        try:
            a, b = float(given[first]), float(given[second])
            if len(first) > 1:
                a = self._molar(first, a)
            if len(second) > 1:
                b = self._molar(second, b)
        except ZeroDivisionError:
            raise Error("a density must not be 0") from None
        except TypeError:
            raise Error("state() takes single numbers; states() takes arrays") from None
        with self._session:
            self._a.value, self._b.value = a, b
            self._texts.value = 1
            library.tessarel_states(pair.field, *self._arguments, pair.length, self._text_length, self._message.length)
            if self._code.value != 0 or not self._message.good:
                message = self._text.raw.decode("utf-8", "replace").strip() if self._code.value else str(self._message)
                raise Error(
                    f"{message} [{self!r}, "
                    + ", ".join(f"{k} = {given[k]!r}" for k in given)
                    + (f", phase = {phase!r}" if phase else "")
                    + "]"
                )
            row = self._row[:]
        if not self._tmin <= row[0] <= self._tmax:
            warnings.warn(
                f"T = {row[0]:.6g} K lies outside {self._tmin:.6g} to {self._tmax:.6g} K, for which the data of "
                f"{self!r} hold",
                RangeWarning,
                stacklevel=2,
            )
        return State(self, row, pair.forced, self._version)

    def states(
        self, *, phase: str | None = None, threads: int | None = None, progress: bool = False, **given
    ) -> arrays.States:
        """States of two arrays of properties, broadcast: `states(T=np.linspace(250, 400, 50)[:, None], P=[1e5, 2e5])`.

        Keywords and units are those of `state`, and the values have the same bits. A state that fails is nan and ends
        nothing: `ok` tells which, `message` why. threads: how many work at once, all cores by default. progress: a bar
        (package tqdm).
        """
        return arrays.solve(self, self._pair(tuple(given), phase), given, threads, progress)

    # ------------------------------------------------------------------------------------------------ phase boundary

    def bubble_P(self, T: Array) -> Array:
        """Bubble pressure [Pa] at T [K]; of a pure fluid the saturation pressure. An array for an array, nan where
        there is none; of one number an Error."""
        return self._boundary("bubble_p", T)

    def dew_P(self, T: Array) -> Array:
        """Dew pressure [Pa] at T [K], as bubble_P. Of two dew pressures that on the way from low pressure."""
        return self._boundary("dew_p", T)

    def bubble_T(self, P: Array) -> Array:
        """Bubble temperature [K] at P [Pa], as bubble_P."""
        return self._boundary("bubble_t", P)

    def dew_T(self, P: Array) -> Array:
        """Dew temperature [K] at P [Pa], as bubble_P. Of two that on the way from low pressure."""
        return self._boundary("dew_t", P)

    def _boundary(self, which: str, value: Array) -> Array:
        if np.ndim(value) > 0:

            def each(one: float) -> float:
                try:
                    return self._boundary(which, one)
                except Error:
                    return math.nan

            value = np.asarray(value, dtype=float)
            return np.array([each(float(one)) for one in value.flat]).reshape(value.shape)
        return self._boundary_point(which, float(value))[0]

    def _boundary_point(self, which: str, value: float) -> tuple[float, np.ndarray]:
        """T or P of a bubble or dew point, and the mole fractions of the phase that appears."""
        result, incipient = ctypes.c_double(), doubles(self.n, self._z)
        asked = f"{which} at {value:.6g} of {self!r}"
        with self._session:
            if self.n == 1:
                name = "calc_psat" if which.endswith("p") else "calc_tsat"
                entry(name, number(value), ctypes.byref(result), asked=asked)
            else:
                entry("calc_" + which, number(value), incipient, ctypes.byref(result), asked=asked)
        if not math.isfinite(result.value) or result.value == NOT_COMPUTED:
            raise Error(f"no result [{asked}]")
        return result.value, np.array(incipient)

    def bubble_point(self, *, T: float | None = None, P: float | None = None) -> BoundaryPoint:
        """The bubble point at given T [K] or P [Pa], with the composition of the first vapour."""
        return self._point("bubble", T, P)

    def dew_point(self, *, T: float | None = None, P: float | None = None) -> BoundaryPoint:
        """The dew point at given T [K] or P [Pa], with the composition of the first liquid."""
        return self._point("dew", T, P)

    def _point(self, kind: str, t: float | None, p: float | None) -> BoundaryPoint:
        if (t is None) == (p is None):
            raise Error(f"a {kind} point needs one of T and P")
        value, incipient = self._boundary_point(f"{kind}_{'p' if p is None else 't'}", float(t if p is None else p))
        x, y = (self.z, incipient) if kind == "bubble" else (incipient, self.z)
        return BoundaryPoint(value if t is None else float(t), value if p is None else float(p), x, y)

    def saturation_line(self, points: int = 100) -> arrays.States:
        """The line of a pure fluid from its lowest temperature to just below the critical one: T, P, and the saturated
        phases in `liquid` and `vapour`. It is made of states of half vapour."""
        if self.n > 1:
            raise Error(f"a saturation line belongs to a pure fluid; {self!r} has a phase envelope")
        tc = self.critical_point().T
        low = max(self._tmin, 0.3 * tc)
        if low >= tc:
            raise Error(f"{self!r} has no saturation line: data from {low:.6g} K, critical at {tc:.6g} K")
        # Denser towards the critical point, where the densities run together like the root of the distance.
        t = tc - (tc - low) * np.linspace(1, 0.01, points) ** 2
        return self.states(T=t, q=0.5)

    def spinodal(self, T: float) -> Spinodal:
        """Pressures [Pa] of the limits of stability at T [K]; the liquid's is negative (tension) where it is cold."""
        liquid, vapour = ctypes.c_double(), ctypes.c_double()
        with self._session:
            entry(
                "calc_pspin",
                number(T),
                ctypes.byref(liquid),
                ctypes.byref(vapour),
                asked=f"spinodal at T = {T:.6g} K of {self!r}",
            )
        return Spinodal(liquid.value, vapour.value)

    def spinodal_T(self, P: float) -> Spinodal:
        """Temperatures [K] of the limits of stability at P [Pa]: the highest of a liquid, the lowest of a vapour."""
        liquid, vapour = ctypes.c_double(), ctypes.c_double()
        with self._session:
            entry(
                "calc_tspin",
                number(P),
                ctypes.byref(liquid),
                ctypes.byref(vapour),
                asked=f"spinodal at P = {P:.6g} Pa of {self!r}",
            )
        return Spinodal(liquid.value, vapour.value)

    def critical_point(self) -> CriticalPoint:
        """The critical point of the model, of a mixture the true one. Error where there is none that is stable."""
        out = [ctypes.c_double() for _ in range(3)]
        with self._session:
            entry("criticalpoint", *map(ctypes.byref, out), asked=f"critical point of {self!r}")
        return CriticalPoint(*(value.value for value in out))

    def phase_envelope(self) -> envelope.Envelope:
        """The phase envelope of the mixture at its composition."""
        return envelope.trace(self)

    def sensitivity(self, T: float, P: float) -> envelope.Sensitivity:
        """The stable state at T [K] and P [Pa], one phase or two, and its derivatives by T, P and the amounts."""
        return envelope.sensitivity(self, T, P)

    # ------------------------------------------------------------------------------------------------ parameters

    def _component(self, which: str | int) -> int:
        """The number from 1 of a component given by name or by index from 0."""
        if isinstance(which, str):
            if which not in self.names:
                raise Error(f'no component "{which}" in {self!r}')
            return self.names.index(which) + 1
        if not 0 <= which < self.n:
            raise Error(f"no component with the index {which}: 0 to {self.n - 1}")
        return which + 1

    def parameter(self, name: str, component: str | int = 0) -> float:
        """A parameter of a component, which is given by its name or its index from 0.

        "omega" acentric factor, "mseg" segment number, "sigma" segment diameter [A], "epsil" dispersion energy over k
        [K], "dipole" [D], "quapole" [D A], "polariz" [A3], "molmas" [g/mol], "tmin", "tmax" [K], "cp0_a" to "cp0_d",
        "delhf0" [J/mol], "eps_hb" association energy [K], "kap_hb" association volume, "parat", "saftpar".
        """
        field, length = text(name)
        value = ctypes.c_double()
        with self._session:
            entry(
                "getparameter",
                field,
                integer(self._component(component)),
                ctypes.byref(value),
                lengths=(length,),
                asked=f"parameter {name} of {component}",
            )
        return value.value

    def set_parameter(self, name: str, component: str | int, value: float) -> None:
        """Changes a parameter of this fluid; critical points and the phase boundary follow. States made before keep
        their values. After an Error nothing has changed."""
        field, length = text(name)
        with self._session:
            entry(
                "setparameter",
                field,
                integer(self._component(component)),
                number(value),
                lengths=(length,),
                asked=f"parameter {name} of {component} = {value!r}",
            )
            self._changes.pop((name, component), None)
            self._changes[name, component] = value
            self._read_info()
            self._version += 1

    def set_kij(self, first: str | int, second: str | int, value: float) -> None:
        """Sets the binary interaction parameter k_ij of two components."""
        with self._session:
            entry(
                "setkij",
                integer(self._component(first)),
                integer(self._component(second)),
                number(value),
                asked=f"k_ij of {first} and {second} = {value!r}",
            )
            self._changes["kij", first, second] = value
            self._version += 1

    def kij(self, first: str | int, second: str | int, T: float = 298.15) -> float:
        """The binary interaction parameter k_ij of two components; of some pairs it depends on T [K]."""
        values = doubles(self.n * self.n)
        i, j = self._component(first), self._component(second)
        with self._session:
            library.tessarel_ps_calc_kij(integer(self.n), number(T), values)
        return values[(i - 1) + (j - 1) * self.n]

    # ------------------------------------------------------------------------------------------------ pictures

    def plot_envelope(self, ax=None, **options):
        """The phase envelope in temperature and pressure; see tessarel.plots.envelope."""
        from . import plots

        return plots.envelope(self, ax, **options)

    def plot_pT(self, ax=None, **options):
        """Pressure over temperature: the phase boundary with lines of constant density; see tessarel.plots.pT."""
        from . import plots

        return plots.pT(self, ax, **options)

    def plot_ph(self, ax=None, **options):
        """Pressure over enthalpy with isotherms and lines of quality; see tessarel.plots.ph."""
        from . import plots

        return plots.ph(self, ax, **options)

    def plot_Ts(self, ax=None, **options):
        """Temperature over entropy with isobars and lines of quality; see tessarel.plots.Ts."""
        from . import plots

        return plots.Ts(self, ax, **options)

    def plot_pxy(self, T: float, ax=None, **options):
        """Bubble and dew pressures of a binary at T [K]; see tessarel.plots.pxy."""
        from . import plots

        return plots.pxy(self, T, ax, **options)

    def plot_Txy(self, P: float, ax=None, **options):
        """Bubble and dew temperatures of a binary at P [Pa]; see tessarel.plots.Txy."""
        from . import plots

        return plots.Txy(self, P, ax, **options)
