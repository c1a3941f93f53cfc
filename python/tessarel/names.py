"""Names of fluids: what the library has, and what a user may have meant."""

from __future__ import annotations

import csv
import difflib
from functools import lru_cache
from typing import NamedTuple

from ._native import FLUID_DIRECTORY, HERE


class Substance(NamedTuple):
    """A fluid that ships: its name in the library, molecular formula, CAS number and further names; and why it is the
    parameter set of its substance to take first, where the one of the plain name is not."""

    name: str
    formula: str
    cas: str
    synonyms: tuple[str, ...]
    reason: str = ""


@lru_cache(maxsize=1)
def substances() -> dict[str, Substance]:
    """The fluids that ship, by name. Parameter sets of one substance have the same formula and CAS number."""
    with open(HERE / "synonyms.csv", newline="", encoding="utf-8") as file:
        further = {row["name"]: row for row in csv.DictReader(file)}
    none = {"synonyms": "", "named first because": ""}
    with open(HERE / "substances.csv", newline="", encoding="utf-8") as file:
        return {
            row["name"]: Substance(
                row["name"], row["formula"], row["cas"], tuple(filter(None, more["synonyms"].split("; "))),
                more["named first because"],
            )
            for row in csv.DictReader(file)
            for more in [further.get(row["name"], none)]
        }


def fluids(pattern: str = "") -> list[str]:
    """Names of the fluids that can be selected, in alphabetical order but for the sets of a substance to take first.

    With a pattern those whose name, formula, CAS number or one of whose further names contains it, in any case of
    letters: `fluids("benz")`, `fluids("74-98-6")`. Files `<name>.saf` added to the fluid directory are listed too.
    """
    table = substances()
    names = sorted({path.stem for path in FLUID_DIRECTORY.glob("*.saf")} | set(table))
    wanted = pattern.lower()
    found = [
        name
        for name in names
        if wanted in name.lower() or name in table and any(wanted in word.lower() for word in _words(table[name]))
    ]
    return _first_things_first(found)


def _first_things_first(names: list[str]) -> list[str]:
    """The names with the sets of a substance together, and of these first what has a reason for it."""
    table, sets = substances(), {}
    for name in names:
        sets.setdefault(table[name].cas if name in table else name, []).append(name)
    return [
        name
        for group in sets.values()
        for name in sorted(group, key=lambda one: one not in table or not table[one].reason)
    ]


def _words(substance: Substance) -> tuple[str, ...]:
    return (substance.formula, substance.cas, *substance.synonyms)


def suggestions(name: str) -> list[str]:
    """Up to five fluids that an unknown name may mean: of that synonym, formula or CAS number, or spelt alike."""
    wanted = name.strip().lower()
    table = substances()
    exact = [s.name for s in table.values() if wanted in [word.lower() for word in (s.name, *_words(s))]]
    if exact:
        return _first_things_first(exact)[:5]
    spelt = {word.lower(): s.name for s in reversed(list(table.values())) for word in (s.name, *s.synonyms)}
    close = difflib.get_close_matches(wanted, spelt, n=8, cutoff=0.6)
    return list(dict.fromkeys(spelt[word] for word in close))[:5]


def hint(names) -> str:
    """What to say behind a failed selection: for each unknown name those that may have been meant."""
    known = set(fluids())
    lines = []
    for name in names:
        if name not in known:
            meant = suggestions(name)
            close = (
                ": did you mean " + " or ".join(f'"{m}"' for m in meant) + "?" if meant else "; see tessarel.fluids()"
            )
            lines.append(f'unknown fluid "{name}"{close}')
    return "; ".join(lines)
