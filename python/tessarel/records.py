"""Fluid records of a user's own: written where the library looks for them, and kept if the library takes them."""

from __future__ import annotations

import os
import pathlib
import shutil
from typing import Optional, Sequence

from ._native import FLUID_DIRECTORY, Error
from .fluid import Fluid
from .names import substances


def record(
    name: str,
    *,
    molar_mass: float,
    m: float,
    sigma: float,
    epsilon_k: float,
    omega: float = 0.0,
    T_range: tuple[float, float] = (150.0, 1000.0),
    cp: Sequence[float] = (33.0, 0.0, 0.0, 0.0),
    formation: float = 0.0,
    dipole: float = 0.0,
    quadrupole: float = 0.0,
    association: Optional[tuple[float, float]] = None,
    sites: tuple[int, int] = (1, 1),
    source: str = "",
) -> str:
    """The text of a record. `molar_mass` [g/mol], segment number `m`, segment diameter `sigma` [A], dispersion energy
    over k [K], acentric factor `omega`, validity range [K]; ideal-gas heat capacity a + b T + c T2 + d T3 [J/(mol K)]
    and enthalpy of formation [J/mol]; `dipole` [D], `quadrupole` [D A]; `association` energy over k [K] and volume of
    bonds between `sites[0]` donors and `sites[1]` acceptors. `source` becomes a comment."""
    coefficients = [*cp, 0.0, 0.0, 0.0, 0.0][:4]
    rows: list[object] = [f"{name:<32}! {source}".rstrip("! "), "", *T_range, "", molar_mass, omega, m, sigma]
    rows += [epsilon_k, "", *(value * 10 ** (3 * k) for k, value in enumerate(coefficients)), formation, ""]
    if association is not None:
        rows += ["associating", 2, *sites, *association, ""]
    if dipole:
        rows += ["dipolar", dipole, ""]
    if quadrupole:
        rows += ["quadrupolar", quadrupole, ""]
    return "".join(f"{row if isinstance(row, str) else repr(row)}\n" for row in [*rows, "eof"])


def add(name: str, text: str) -> pathlib.Path:
    """Puts the record `text` where the library finds it under `name`; returns its file.

    Error, and nothing is added, when the name is taken or is no file name, when the library refuses the record or finds
    no critical point for it, and when the fluid directory cannot be written.
    """
    if not name or name != name.strip() or "/" in name or "\0" in name or name.startswith("."):
        raise Error(f"{name!r} cannot be the name of a fluid: it becomes the name of a file")
    if name in substances():
        raise Error(f'"{name}" is a fluid that ships; give the new one another name')
    path = FLUID_DIRECTORY / f"{name}.saf"
    try:
        with open(path, "x", encoding="utf-8") as file:
            file.write(text)
    except FileExistsError:
        raise Error(f"{path} exists; remove it or give the new fluid another name") from None
    except OSError as error:
        raise Error(
            f"{FLUID_DIRECTORY} cannot be written ({error.strerror}). For fluids of your own run `tessarel fluid home "
            "DIRECTORY` once and set TESSAREL_DATA to that directory"
        ) from None
    try:
        Fluid(name).critical_point()
    except Error:
        path.unlink()
        raise
    return path


def make_home(directory: str | os.PathLike) -> pathlib.Path:
    """Copies the library's data, fluids/ and BIPs.mix, to a directory of the user's own, for TESSAREL_DATA."""
    home = pathlib.Path(directory)
    if (home / "fluids").exists():
        raise Error(f"{home / 'fluids'} exists already")
    beside = [FLUID_DIRECTORY.parent / "BIPs.mix", FLUID_DIRECTORY.parent / "lib" / "BIPs.mix"]
    shutil.copytree(FLUID_DIRECTORY, home / "fluids")
    shutil.copy(next(path for path in beside if path.exists()), home / "BIPs.mix")
    return home
