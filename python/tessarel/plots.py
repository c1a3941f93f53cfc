"""Diagrams of a fluid with matplotlib. Temperatures in K, pressures in bar, per kilogram; each returns its axes."""

from __future__ import annotations

import warnings
from typing import TYPE_CHECKING, Optional, Sequence

import numpy as np

from ._native import Error
from .extras import need

if TYPE_CHECKING:
    from .fluid import Fluid

BAR = 1e5
_LIQUID, _VAPOUR, _ISO, _QUALITY = "tab:blue", "tab:red", "0.55", "tab:green"
_QUALITIES = (0.2, 0.4, 0.6, 0.8)


def _axes(ax, x_label: str, y_label: str, title: str):
    if ax is None:
        plt = need("matplotlib.pyplot")
        _, ax = plt.subplots(figsize=(7, 5), layout="constrained")
    ax.set_xlabel(x_label)
    ax.set_ylabel(y_label)
    ax.set_title(title, fontsize="medium")
    ax.grid(True, color="0.9")
    ax.set_axisbelow(True)
    return ax


def _title(fluid: Fluid) -> str:
    if fluid.n == 1:
        return fluid.names[0]
    parts = [f"{name} {x:.4g}" for name, x in zip(fluid.names, fluid._z)]
    lines = [", ".join(parts[k : k + 4]) for k in range(0, len(parts), 4)]
    return "\n".join(lines)


def _legend(ax) -> None:
    ax.legend(fontsize="small", loc="best", framealpha=0.9)


class _Boundary:
    """The phase boundary as two branches that meet at the critical point; T [K], P [Pa], h [J/kg], s [J/(kg K)]."""

    def __init__(self, fluid: Fluid, caloric: bool) -> None:
        self.critical = None
        if fluid.n == 1:
            self._of_pure(fluid)
        else:
            self._of_mixture(fluid, caloric)

    def _of_pure(self, fluid: Fluid) -> None:
        line, critical = fluid.saturation_line(80), fluid.critical_point()
        tip = fluid.state(T=critical.T * (1 + 1e-9), rho=critical.rho, phase="vapour")
        self.critical = (critical.T, critical.P, tip.h_mass, tip.s_mass)
        ends = np.array(self.critical)[:, None]
        self.liquid = np.hstack([[line.T, line.P, line.liquid.h_mass, line.liquid.s_mass], ends])
        self.vapour = np.hstack([[line.T, line.P, line.vapour.h_mass, line.vapour.s_mass], ends])

    def _of_mixture(self, fluid: Fluid, caloric: bool) -> None:
        line = fluid.phase_envelope()
        h = s = np.full(line.T.size, np.nan)
        if caloric:
            points = [
                _single(fluid, t, p, "liquid" if bubble else "vapour")
                for t, p, bubble in zip(line.T, line.P, line.bubble)
            ]
            h, s = np.array(points).T
        rows = np.array([line.T, line.P, h, s])
        self.liquid, self.vapour = rows[:, line.bubble], rows[:, ~line.bubble]
        if line.critical is not None:
            t, p, _ = line.critical
            self.critical = (t, p, *(_single(fluid, t, p, "vapour") if caloric else (np.nan, np.nan)))
            # The branches are traced from the two ends; the critical point closes the gap between them.
            end = np.array(self.critical)[:, None]
            self.liquid, self.vapour = (self._closed(branch, end) for branch in (self.liquid, self.vapour))

    @staticmethod
    def _closed(branch: np.ndarray, end: np.ndarray) -> np.ndarray:
        if branch.shape[1] == 0:
            return branch
        near = [abs(branch[0, k] / end[0, 0] - 1) + abs(branch[1, k] / end[1, 0] - 1) for k in (0, -1)]
        if min(near) > 0.5:
            return branch
        return np.hstack([end, branch] if near[0] < near[1] else [branch, end])

    def draw(self, ax, x: int, y: int, scale=(1.0, 1.0), names=("bubble line", "dew line")) -> None:
        for branch, colour, name in ((self.liquid, _LIQUID, names[0]), (self.vapour, _VAPOUR, names[1])):
            if branch.shape[1]:
                smooth = _smooth(branch)
                ax.plot(smooth[x] / scale[0], smooth[y] / scale[1], color=colour, lw=1.8, label=name, zorder=4)
        if self.critical is not None:
            ax.plot(
                self.critical[x] / scale[0], self.critical[y] / scale[1], "ko", ms=5, label="critical point", zorder=5
            )

    @property
    def all(self) -> np.ndarray:
        return np.hstack([self.liquid, self.vapour])


def _smooth(rows: np.ndarray, between: int = 8) -> np.ndarray:
    """More points on a branch, by the natural cubic spline through those it has, by distance in T and ln P."""
    rows = rows[:, np.isfinite(rows[:2]).all(axis=0)]
    t, p = rows[:2]
    if t.size < 4:
        return rows
    step = np.hypot(np.diff(t) / np.ptp(t), np.diff(np.log(p)) / np.ptp(np.log(p)))
    rows = np.delete(rows, np.flatnonzero(step < 1e-9) + 1, axis=1)
    at = np.concatenate([[0], np.cumsum(step[step >= 1e-9])])
    values = np.vstack([rows[:1], np.log(rows[1:2]), rows[2:]])
    slopes = _spline_slopes(at, values)
    k = np.repeat(np.arange(at.size - 1), between)
    f = np.tile(np.arange(between) / between, at.size - 1)
    width = (at[1:] - at[:-1])[k]
    out = (
        (1 + 2 * f) * (1 - f) ** 2 * values[:, k]
        + f * (1 - f) ** 2 * width * slopes[:, k]
        + f**2 * (3 - 2 * f) * values[:, k + 1]
        + f**2 * (f - 1) * width * slopes[:, k + 1]
    )
    out = np.hstack([out, values[:, -1:]])
    out[1] = np.exp(out[1])
    return out


def _spline_slopes(at: np.ndarray, values: np.ndarray) -> np.ndarray:
    """First derivatives, at the points, of the cubic spline without curvature at its ends; values (rows, points)."""
    inverse = 1 / np.diff(at)
    sides = np.concatenate([[0], inverse]), np.concatenate([inverse, [0]])
    matrix = np.diag(2 * (sides[0] + sides[1])) + np.diag(inverse, -1) + np.diag(inverse, 1)
    pull = 3 * np.diff(values, axis=1) * inverse**2
    edge = np.zeros((values.shape[0], 1))
    return np.linalg.solve(matrix, (np.hstack([edge, pull]) + np.hstack([pull, edge])).T).T


def _single(fluid: Fluid, t: float, p: float, phase: str) -> tuple[float, float]:
    try:
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            state = fluid.state(T=float(t), P=float(p), phase=phase)
            return state.h_mass, state.s_mass
    except Error:
        return np.nan, np.nan


def _solved(fluid: Fluid, **given):
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        return fluid.states(**given)


def _names(fluid: Fluid) -> tuple[str, str]:
    return ("saturated liquid", "saturated vapour") if fluid.n == 1 else ("bubble line", "dew line")


def _round_steps(low: float, high: float, count: int) -> np.ndarray:
    """Round values in a range, about `count` of them."""
    raw = (high - low) / max(count, 1)
    magnitude = 10.0 ** np.floor(np.log10(raw))
    step = magnitude * min((f for f in (1, 2, 2.5, 5, 10) if f * magnitude >= raw), default=10)
    return np.arange(np.ceil(low / step), np.floor(high / step) + 1) * step


def _mark(ax, x, y, text: str, limits) -> None:
    """Writes the value of an isoline at its last point inside the picture."""
    (x0, x1), (y0, y1) = limits
    x0, x1 = x0 + 0.03 * (x1 - x0), x1 - 0.03 * (x1 - x0)
    if ax.get_yscale() == "log":
        y0, y1 = y0 * (y1 / y0) ** 0.03, y1 / (y1 / y0) ** 0.03
    else:
        y0, y1 = y0 + 0.03 * (y1 - y0), y1 - 0.03 * (y1 - y0)
    inside = np.flatnonzero((x > x0) & (x < x1) & (y > y0) & (y < y1))
    if inside.size:
        k = inside[-1]
        ax.annotate(
            text,
            (x[k], y[k]),
            fontsize=7,
            color="0.35",
            ha="center",
            va="center",
            zorder=3,
            bbox={"boxstyle": "square,pad=0.1", "fc": "white", "ec": "none"},
            annotation_clip=True,
        )


def _draw_in_pT(fluid: Fluid, ax, boundary: _Boundary) -> None:
    if fluid.n > 1:
        return boundary.draw(ax, 0, 1, (1, BAR), _names(fluid))
    boundary.vapour = boundary.vapour[:, :0]  # the same line
    boundary.draw(ax, 0, 1, (1, BAR), ("vapour pressure", ""))


def envelope(fluid: Fluid, ax=None, qualities: Sequence[float] = ()):
    """The phase boundary in T and P with critical point and extrema; `qualities` adds lines of vapour fraction."""
    ax = _axes(ax, "temperature [K]", "pressure [bar]", _title(fluid))
    boundary = _Boundary(fluid, caloric=False)
    _draw_in_pT(fluid, ax, boundary)
    if fluid.n > 1:
        line = fluid.phase_envelope()
        for (t, p), marker, name in (
            (line.cricondentherm, ">", "cricondentherm"),
            (line.cricondenbar, "^", "cricondenbar"),
        ):
            ax.plot(t, p / BAR, marker, color="k", mfc="none", ms=7, label=name, zorder=5)
        low, high = np.nanmin(boundary.all[0]), np.nanmax(boundary.all[0])
        for q in qualities:
            states = _solved(fluid, T=np.linspace(low, high, 60), q=q)
            ax.plot(states.T, states.P / BAR, color=_QUALITY, lw=0.8, label=f"q = {q:g}")
    ax.set_ylim(bottom=0)
    _legend(ax)
    return ax


def pT(fluid: Fluid, ax=None, densities: Optional[Sequence[float]] = None):
    """Pressure over temperature: the phase boundary and lines of constant mass density [kg/m3]."""
    ax = _axes(ax, "temperature [K]", "pressure [bar]", _title(fluid))
    boundary = _Boundary(fluid, caloric=True)
    t_all, p_all = boundary.all[0], boundary.all[1]
    top = 1.6 * np.nanmax(p_all)
    low, high = max(np.nanmin(t_all), 0.45 * np.nanmax(t_all)), 1.3 * np.nanmax(t_all)
    _draw_in_pT(fluid, ax, boundary)
    limits = ((low, high), (0, top / BAR))
    if densities is None:
        heavy = float(_solved(fluid, T=low, P=top).density)
        densities = heavy * np.array([0.02, 0.05, 0.1, 0.2, 0.3, 0.45, 0.6, 0.75, 0.85, 0.95])
    for rho in densities:
        rho = float(f"{rho:.2g}")
        states = _solved(fluid, T=np.linspace(low, high, 80), rho_mass=rho)
        p = np.where((states.q > 0) & (states.q < 1), np.nan, states.P / BAR)
        ax.plot(states.T, p, color=_ISO, lw=0.7, zorder=2)
        _mark(ax, states.T, p, f"{rho:g}", limits)
    ax.plot([], [], color=_ISO, lw=0.7, label="density [kg/m³]")
    ax.set_xlim(low, high)
    ax.set_ylim(0, top / BAR)
    _legend(ax)
    return ax


def _quality_lines(fluid: Fluid, ax, boundary: _Boundary, x: str, y: str, scale, qualities) -> None:
    t = boundary.all[0]
    low, high = np.nanmin(t), np.nanmax(t)
    temperatures = high - (high - low) * np.linspace(1, 0.02, 40) ** 2
    for k, q in enumerate(qualities):
        states = _solved(fluid, T=temperatures, q=q)
        ax.plot(
            getattr(states, x) / scale[0],
            getattr(states, y) / scale[1],
            color=_QUALITY,
            lw=0.7,
            zorder=2,
            label=f"quality {', '.join(f'{v:g}' for v in qualities)}" if k == 0 else None,
        )


def ph(fluid: Fluid, ax=None, temperatures: Optional[Sequence[float]] = None, qualities: Sequence[float] = _QUALITIES):
    """Pressure (logarithmic) over specific enthalpy, with isotherms [K], lines of quality and the critical point."""
    ax = _axes(ax, "specific enthalpy [kJ/kg]", "pressure [bar]", _title(fluid))
    ax.set_yscale("log")
    boundary = _Boundary(fluid, caloric=True)
    t, p, h, _ = boundary.all
    kept = p > 1e-3 * np.nanmax(p)
    bottom, top = 1e-3 * np.nanmax(p) * 2, 2.5 * np.nanmax(p)
    left, right = np.nanmin(h[kept]), np.nanmax(h[kept])
    limits = (
        (left / 1e3 - 0.1 * (right - left) / 1e3, right / 1e3 + 0.45 * (right - left) / 1e3),
        (bottom / BAR, top / BAR),
    )
    if temperatures is None:
        temperatures = _round_steps(np.nanmin(t[kept]), 1.4 * np.nanmax(t), 12)
    for value in temperatures:
        pressures = np.geomspace(bottom, top, 120)
        if fluid.n == 1 and value < boundary.critical[0]:  # the jump through the two phases is level
            pressures = np.sort(np.append(pressures, fluid.bubble_P(float(value)) * np.array([1 - 1e-7, 1 + 1e-7])))
        states = _solved(fluid, T=float(value), P=pressures)
        x, y = states.h_mass / 1e3, states.P / BAR
        ax.plot(x, y, color=_ISO, lw=0.7, zorder=2)
        _mark(ax, x[::-1], y[::-1], f"{value:g}", limits)
    _quality_lines(fluid, ax, boundary, "h_mass", "P", (1e3, BAR), qualities)
    boundary.draw(ax, 2, 1, (1e3, BAR), _names(fluid))
    ax.plot([], [], color=_ISO, lw=0.7, label="temperature [K]")
    ax.set_xlim(*limits[0])
    ax.set_ylim(*limits[1])
    _legend(ax)
    return ax


def Ts(fluid: Fluid, ax=None, pressures: Optional[Sequence[float]] = None, qualities: Sequence[float] = _QUALITIES):
    """Temperature over specific entropy, with isobars [bar], lines of vapour fraction and the critical point."""
    ax = _axes(ax, "specific entropy [kJ/(kg K)]", "temperature [K]", _title(fluid))
    boundary = _Boundary(fluid, caloric=True)
    t, p, _, s = boundary.all
    kept = p > 1e-3 * np.nanmax(p)
    low, high = np.nanmin(t[kept]), 1.35 * np.nanmax(t)
    left, right = np.nanmin(s[kept]), np.nanmax(s[kept])
    limits = ((left / 1e3 - 0.05 * (right - left) / 1e3, right / 1e3 + 0.25 * (right - left) / 1e3), (low, high))
    if pressures is None:
        pressures = np.array(
            [
                float(f"{value:.1g}")
                for value in np.nanmax(p) * np.array([0.003, 0.01, 0.03, 0.1, 0.3, 0.6, 1.0, 3.0])
            ]
        )
    for value in pressures:
        temperatures = np.linspace(low, high, 160)
        if fluid.n == 1 and value < boundary.critical[1]:
            tsat = fluid.bubble_T(float(value))
            temperatures = np.sort(np.append(temperatures, tsat * np.array([1 - 1e-7, 1 + 1e-7])))
        states = _solved(fluid, T=temperatures, P=float(value))
        x = states.s_mass / 1e3
        ax.plot(x, states.T, color=_ISO, lw=0.7, zorder=2)
        _mark(ax, x, states.T, f"{value / BAR:g}", limits)
    _quality_lines(fluid, ax, boundary, "s_mass", "T", (1e3, 1), qualities)
    boundary.draw(ax, 3, 0, (1e3, 1), _names(fluid))
    ax.plot([], [], color=_ISO, lw=0.7, label="pressure [bar]")
    ax.set_xlim(*limits[0])
    ax.set_ylim(*limits[1])
    _legend(ax)
    return ax


def _binary(fluid: Fluid, ax, given: str, value: float, points: int, label: str, scale: float):
    """Bubble and dew points over the composition."""
    if fluid.n != 2:
        raise Error(f"this picture belongs to a binary mixture, {fluid!r} has {fluid.n} components")
    name = fluid.names[0]
    ax = _axes(
        ax,
        f"mole fraction of {name}",
        label,
        f"{name} + {fluid.names[1]} at " + (f"{value:g} K" if given == "T" else f"{value / BAR:g} bar"),
    )
    wanted = "P" if given == "T" else "T"
    xs = np.clip(0.5 * (1 - np.cos(np.linspace(0, np.pi, points))), 1e-6, 1 - 1e-6)
    rows = [_boundary_points(fluid, x, wanted, value) for x in xs]
    # Where the boundary leaves the picture between two compositions, its end is closed in on.
    for k in range(points - 1, 0, -1):
        (left, right), found = (xs[k - 1], xs[k]), [np.isfinite(rows[j][2]) for j in (k - 1, k)]
        if found[0] != found[1]:
            for _ in range(10):
                middle = 0.5 * (left + right)
                row = _boundary_points(fluid, middle, wanted, value)
                left, right = (middle, right) if np.isfinite(row[2]) == found[0] else (left, middle)
                rows.append(row)
    x, bubble, dew, critical = np.array(sorted(rows)).T
    upper = np.isfinite(bubble) & ((value if given == "T" else bubble) > critical)
    liquid = np.array([x, bubble])[:, ~upper & np.isfinite(bubble)]
    lower, upper = np.array([x, dew])[:, np.isfinite(dew)], np.array([x, bubble])[:, upper]
    vapour = lower
    if upper.size:
        at_right = liquid.size == 0 or upper[0, 0] > liquid[0, -1]
        vapour = np.hstack(
            [lower, upper[:, ::-1], liquid[:, -1:]] if at_right else [liquid[:, :1], upper[:, ::-1], lower]
        )
    for (x, y), colour, what in ((liquid, _LIQUID, "liquid"), (vapour, _VAPOUR, "vapour")):
        ax.plot(x, y / scale, color=colour, lw=1.8, label=what)
    ax.set_xlim(0, 1)
    _legend(ax)
    return ax


def _boundary_points(fluid: Fluid, x: float, wanted: str, value: float) -> tuple[float, float, float, float]:
    """Bubble point, dew point and critical temperature of a binary at the fraction x; nan where there is none.

    Above the critical temperature of the mixture what is found in place of a bubble point is the upper dew point.
    """
    mixture = fluid.with_composition([x, 1 - x])

    def attempt(call) -> float:
        try:
            return call()
        except Error:
            return np.nan

    return (
        x,
        attempt(lambda: getattr(mixture, "bubble_" + wanted)(value)),
        attempt(lambda: getattr(mixture, "dew_" + wanted)(value)),
        attempt(lambda: mixture.critical_point().T),
    )


def pxy(fluid: Fluid, T: float, ax=None, points: int = 41):
    """Bubble and dew pressures of a binary at T [K] over the mole fraction of its first component."""
    return _binary(fluid, ax, "T", float(T), points, "pressure [bar]", BAR)


def Txy(fluid: Fluid, P: float, ax=None, points: int = 41):
    """Bubble and dew temperatures of a binary at P [Pa] over the mole fraction of its first component."""
    return _binary(fluid, ax, "P", float(P), points, "temperature [K]", 1.0)
