"""The command line: tessarel state, envelope, fluids, fluid add, batch."""

from __future__ import annotations

import argparse
import csv
import importlib.util
import json
import math
import pathlib
import sys
import warnings
from typing import Optional, Sequence

from . import batch, records, units
from ._native import FLUID_DIRECTORY, Error
from .extras import need
from .fluid import Fluid
from .names import fluids, substances
from .state import Properties, State

_QUANTITIES = (
    ("T", "K"),
    ("P", "Pa"),
    ("v", "m3/mol"),
    ("rho", "mol/m3"),
    ("density", "kg/m3"),
    ("u", "J/mol"),
    ("h", "J/mol"),
    ("s", "J/(mol K)"),
    ("g", "J/mol"),
    ("molar_mass", "kg/mol"),
    ("h_mass", "J/kg"),
    ("s_mass", "J/(kg K)"),
    ("z_factor", "-"),
    ("cv", "J/(mol K)"),
    ("cp", "J/(mol K)"),
    ("w", "m/s"),
    ("joule_thomson", "K/Pa"),
    ("kappa_T", "1/Pa"),
    ("alpha_P", "1/K"),
)


# What a record is made of: the kind and number of the values, and what they are.
_RECORD = {
    "molar_mass": (float, None, "g/mol"),
    "m": (float, None, "segment number"),
    "sigma": (float, None, "segment diameter, A"),
    "epsilon_k": (float, None, "dispersion energy over k, K"),
    "omega": (float, None, "acentric factor"),
    "T_range": (float, 2, "lowest and highest temperature, K"),
    "cp": (float, "+", "ideal-gas heat capacity a b c d of a + b T + c T2 + d T3, J/(mol K)"),
    "formation": (float, None, "ideal-gas enthalpy of formation at 298.15 K, J/mol"),
    "dipole": (float, None, "D"),
    "quadrupole": (float, None, "D A"),
    "association": (float, 2, "energy over k, K, and volume"),
    "sites": (int, 2, "numbers of donors and of acceptors, 1 1 by default"),
    "source": (str, None, "where the parameters come from"),
}


def _values(properties: Properties) -> dict[str, Optional[float]]:
    out: dict[str, Optional[float]] = {}
    for name, _ in _QUANTITIES:
        try:
            out[name] = getattr(properties, name)
        except Error:
            out[name] = None
    return out


def _columns(state: State) -> dict[str, Properties]:
    """What is shown side by side: the whole, and of two phases each of them."""
    if state.phase != "two phases":
        return {state.phase: state}
    return {"whole": state, "liquid": state.liquid, "vapour": state.vapour}


def _state(arguments) -> None:
    given = dict(
        units.parse(name, value)
        for name in "T P v rho u h s q".split()
        if (value := getattr(arguments, name)) is not None
    )
    fluid = Fluid(batch.composition_of(arguments.component))
    state = fluid.state(phase=arguments.phase, **given)
    columns = _columns(state)
    if arguments.json:
        report = {"phase": state.phase, "q": state.q, "units": dict(_QUANTITIES)}
        for name, part in columns.items():
            report[name] = {**_values(part), "z": dict(zip(fluid.names, part.z.tolist()))}
        print(json.dumps(report, indent=2))
        return
    print(f"{fluid!r}: {state.phase}" + (f", vapour fraction {state.q:.8g}" if len(columns) > 1 else ""))
    width = max(24, *(len(name) + 2 for name in fluid.names))
    print(f"{'':{width}}" + "".join(f"{name:>16}" for name in columns))
    tables = [_values(part) for part in columns.values()]
    for name, unit in _QUANTITIES:
        print(f"{f'{name} [{unit}]':{width}}" + "".join(_cell(table[name]) for table in tables))
    for k, name in enumerate(fluid.names):
        print(f"{name:{width}}" + "".join(_cell(float(part.z[k])) for part in columns.values()))


def _cell(value: Optional[float]) -> str:
    return f"{'-':>16}" if value is None else f"{value:16.8g}"


def _finite(value: float) -> Optional[float]:
    return float(value) if math.isfinite(value) else None


def _envelope(arguments) -> None:
    fluid = Fluid(batch.composition_of(arguments.component))
    if arguments.plot:
        need("matplotlib").use("Agg")
        fluid.plot_envelope().figure.savefig(arguments.plot)
    line = fluid.phase_envelope()
    if arguments.json:
        print(
            json.dumps(
                {
                    "units": {"T": "K", "P": "Pa"},
                    "T": line.T.tolist(),
                    "P": line.P.tolist(),
                    "bubble": line.bubble.tolist(),
                    "x": line.x.tolist(),
                    "y": line.y.tolist(),
                    "critical": None if line.critical is None else line.critical._asdict(),
                    "cricondentherm": [_finite(value) for value in line.cricondentherm],
                    "cricondenbar": [_finite(value) for value in line.cricondenbar],
                },
                indent=2,
            )
        )
        return
    print(f"{fluid!r}: phase envelope\n{'T [K]':>12}{'P [Pa]':>16}  branch")
    for t, p, bubble in zip(line.T, line.P, line.bubble):
        print(f"{t:12.4f}{p:16.8g}  {'bubble' if bubble else 'dew'}")
    if line.critical is not None:
        print(f"{line.critical.T:12.4f}{line.critical.P:16.8g}  critical point")
    for (t, p), name in ((line.cricondentherm, "cricondentherm"), (line.cricondenbar, "cricondenbar")):
        if math.isfinite(t):
            print(f"{t:12.4f}{p:16.8g}  {name}")


def _fluids(arguments) -> None:
    table = substances()
    found = fluids(arguments.pattern)
    if not found:
        raise Error(f'no fluid of which name, formula or CAS number contains "{arguments.pattern}"')
    for name in found:
        substance = table.get(name)
        if arguments.parameters:
            print(f"\n{_parameters(name)}")
            continue
        further = "" if substance is None else ", ".join([*substance.synonyms, *filter(None, [substance.reason])])
        print(name if substance is None else f"{name:32} {substance.formula:12} {substance.cas:12} {further}".rstrip())


def _parameters(name: str) -> str:
    """The record of a fluid, without its blank lines."""
    lines = (FLUID_DIRECTORY / f"{name}.saf").read_text(encoding="utf-8", errors="replace").splitlines()
    return "\n".join(line for line in lines if line.strip())


def _add(arguments) -> None:
    if arguments.name.endswith(".saf"):
        path = pathlib.Path(arguments.name)
        name, text = path.stem, path.read_text(encoding="utf-8")
    else:
        wanted = {key: getattr(arguments, key) for key in _RECORD if getattr(arguments, key) is not None}
        missing = [f"--{key}" for key in ("molar_mass", "m", "sigma", "epsilon_k") if key not in wanted]
        if missing:
            raise Error(f"a new fluid also needs {', '.join(missing)}; or name a record file, <name>.saf")
        name, text = arguments.name, records.record(arguments.name, **wanted)
    print(f"{records.add(name, text)}: critical at {Fluid(name).critical_point().T:.2f} K")


def _home(arguments) -> None:
    home = records.make_home(arguments.directory)
    print(f"export TESSAREL_DATA={home.resolve()}")


def _batch(arguments) -> None:
    default = batch.composition_of(arguments.component) if arguments.component else None
    progress = not arguments.quiet and importlib.util.find_spec("tqdm") is not None
    if not arguments.quiet and not progress:
        print("tessarel: no bar of progress without tqdm (python3-tqdm)", file=sys.stderr)
    count = batch.run(
        arguments.jobs,
        arguments.output,
        default,
        arguments.threads,
        progress,
        scheduler=arguments.scheduler,
        workers=arguments.workers,
    )
    if not arguments.quiet:
        print(f"{count} rows calculated, {arguments.output} is complete", file=sys.stderr)


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(prog="tessarel", description="Thermodynamic properties of fluids and mixtures.")
    commands = parser.add_subparsers(required=True, metavar="command")
    components = {
        "metavar": "NAME=FRACTION",
        "help": "component and its mole fraction, e.g. methane=0.85 "
        '"carbon dioxide=15%%"; a bare name for a pure fluid',
    }

    state = commands.add_parser("state", help="one state from two of its properties")
    state.add_argument("component", nargs="+", **components)
    for name, example in (
        ("T", "250K, -20C"),
        ("P", "40bar, 4MPa"),
        ("v", "0.024m3/mol, 0.5m3/kg"),
        ("rho", "40mol/m3, 1.2kg/m3"),
        ("u", "-9e4J/mol, -2000kJ/kg"),
        ("h", "as --u"),
        ("s", "'-5J/(mol K)', '-1.2kJ/(kg K)'"),
        ("q", "0.5, 50%%"),
    ):
        state.add_argument("--" + name, metavar="VALUE", help=f"e.g. {example}; bare numbers are SI and molar")
    state.add_argument("--phase", choices=("liquid", "vapour"), help="one phase, whether it is stable or not")
    state.add_argument("--json", action="store_true")
    state.set_defaults(run=_state)

    envelope = commands.add_parser("envelope", help="the phase envelope of a mixture")
    envelope.add_argument("component", nargs="+", **components)
    envelope.add_argument("--plot", metavar="FILE", help="a picture too: .svg, .png, .pdf")
    envelope.add_argument("--json", action="store_true")
    envelope.set_defaults(run=_envelope)

    listing = commands.add_parser("fluids", help="fluids by a part of their name, formula or CAS number")
    listing.add_argument("pattern", nargs="?", default="")
    listing.add_argument("--parameters", action="store_true", help="the record of each: parameters and their sources")
    listing.set_defaults(run=_fluids)

    own = commands.add_parser("fluid", help="fluids of your own").add_subparsers(required=True, metavar="command")
    add = own.add_parser("add", help="add a fluid from a record file or from its parameters")
    add.add_argument("name", help="a record file, <name>.saf, or the name of a fluid given by the options")
    for key, (kind, count, text) in _RECORD.items():
        add.add_argument(f"--{key}", type=kind, nargs=count, help=text)
    add.set_defaults(run=_add)
    home = own.add_parser("home", help="copy the data to a directory of your own, for the variable TESSAREL_DATA")
    home.add_argument("directory")
    home.set_defaults(run=_home)

    table = commands.add_parser(
        "batch",
        help="a table of states; goes on where an interruption left it",
        description=batch.__doc__,
        formatter_class=argparse.RawDescriptionHelpFormatter,
    )
    table.add_argument("jobs", help="table of jobs (.csv, .h5), or a folder of tables")
    table.add_argument("component", nargs="*", metavar="NAME=FRACTION", help="the fluid of rows that name none")
    table.add_argument("-o", "--output", required=True, help="table of results (.csv, .h5), or a folder")
    table.add_argument("--threads", type=int, help="all cores by default")
    table.add_argument("--workers", type=int, help="calculate in this number of processes, with Dask")
    table.add_argument("--scheduler", metavar="ADDRESS", help="calculate on the workers of a Dask scheduler")
    table.add_argument("-q", "--quiet", action="store_true")
    table.set_defaults(run=_batch)
    return parser


def _join_negative(arguments: Sequence[str]) -> list[str]:
    """`--T -20C` as `--T=-20C`: a negative quantity with a unit is no option."""
    out: list[str] = []
    for argument in arguments:
        if out and out[-1] in ("--T", "--P", "--u", "--h", "--s") and argument.startswith("-"):
            out[-1] += "=" + argument
        else:
            out.append(argument)
    return out


def main(arguments: Optional[Sequence[str]] = None) -> int:
    """Runs a command; 0 after success, 1 after an error, which it prints to the standard error."""
    options = _parser().parse_args(_join_negative(sys.argv[1:] if arguments is None else arguments))
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        warnings.simplefilter("ignore", DeprecationWarning)  # of what others built with
        try:
            options.run(options)
        except (Error, OSError, UnicodeError, ImportError, csv.Error) as error:
            print(f"tessarel: {error}", file=sys.stderr)
            return 1
        except KeyboardInterrupt:
            print("tessarel: interrupted; the same command goes on from here", file=sys.stderr)
            return 130
        finally:
            for warning in caught:
                print(f"tessarel: warning: {warning.message}", file=sys.stderr)
    return 0


if __name__ == "__main__":
    sys.exit(main())
