"""Quantities as people type them: a number with a unit, to SI and molar values."""

from __future__ import annotations

import re
from typing import Optional

from ._native import Error

_PREFIX = {"": 1.0, "k": 1e3, "M": 1e6, "m": 1e-3}
_PRESSURE = {
    "Pa": 1.0,
    "hPa": 100.0,
    "kPa": 1e3,
    "MPa": 1e6,
    "bar": 1e5,
    "mbar": 100.0,
    "atm": 101325.0,
    "psi": 6894.757293168,
}

#: What each keyword of a state is called per kilogram.
_MASS_TWIN = {"v": "v_mass", "rho": "rho_mass", "u": "u_mass", "h": "h_mass", "s": "s_mass"}


def _amounts(numerator: str, power: str = "") -> dict[str, tuple[float, bool]]:
    """Units of an energy per amount: factor to SI, and whether it is per kilogram."""
    out = {}
    for prefix, factor in _PREFIX.items():
        for per, per_factor, mass in (("mol", 1.0, False), ("kmol", 1e-3, False), ("kg", 1.0, True), ("g", 1e3, True)):
            unit = f"{prefix}{numerator}/{f'({per}{power})' if power else per}"
            out[unit] = (factor * per_factor, mass)
            if power:
                out[unit.replace("(", "").replace(")", "").replace(" K", "/K")] = (factor * per_factor, mass)
                out[unit.replace(" ", "*")] = (factor * per_factor, mass)
    return out


_ENERGY = _amounts("J")
_ENTROPY = _amounts("J", " K")
_VOLUME = {
    "m3/mol": (1.0, False),
    "m3/kmol": (1e-3, False),
    "cm3/mol": (1e-6, False),
    "L/mol": (1e-3, False),
    "m3/kg": (1.0, True),
    "cm3/g": (1e-3, True),
}
_DENSITY = {
    "mol/m3": (1.0, False),
    "kmol/m3": (1e3, False),
    "mol/L": (1e3, False),
    "kg/m3": (1.0, True),
    "g/cm3": (1e3, True),
    "g/L": (1.0, True),
}
_TABLES = {"u": _ENERGY, "h": _ENERGY, "s": _ENTROPY, "v": _VOLUME, "rho": _DENSITY}

_QUANTITY = re.compile(r"\s*([-+]?(?:\d+\.?\d*|\.\d+)(?:[eE][-+]?\d+)?)\s*(.*?)\s*$")


def parse(name: str, given: str) -> tuple[str, float]:
    """The keyword and the SI value of e.g. ("P", "40bar") or ("h", "250 kJ/kg"), which becomes h_mass.

    A bare number is in SI units: K, Pa, m3/mol, mol/m3, J/mol, J/(mol K). Raises Error with the units that there are.
    """
    match = _QUANTITY.match(given)
    if not match:
        raise Error(f"{name} = {given!r} is not a number with a unit")
    value, unit = float(match[1]), match[2]
    if name == "T":
        return name, _temperature(value, unit, given)
    if name == "P":
        return name, value * _factor(_PRESSURE, name, unit or "Pa")
    if name == "q":
        return name, value * _factor({"": 1.0, "%": 0.01}, name, unit)
    if not unit:
        return name, value
    factor, mass = _factor(_TABLES[name], name, unit)
    return (_MASS_TWIN[name] if mass else name), value * factor


def _temperature(value: float, unit: str, given: str) -> float:
    if unit in ("", "K"):
        return value
    if unit in ("C", "degC", "°C"):
        return value + 273.15
    if unit in ("F", "degF", "°F"):
        return (value + 459.67) / 1.8
    raise Error(f"unknown unit {unit!r} of T = {given!r}: K, C, F")


def _factor(table: dict, name: str, unit: str):
    if unit not in table:
        units = ", ".join(key for key in table if key and "*" not in key)
        raise Error(f"unknown unit {unit!r} of {name}: {units}")
    return table[unit]


def split_header(header: str) -> tuple[str, Optional[str]]:
    """A column's name and unit: "P [bar]" is ("P", "bar"), "T" is ("T", None)."""
    match = re.fullmatch(r"\s*(.*?)\s*(?:\[(.*)\])?\s*", header)
    return (match[1], match[2]) if match else (header, None)
