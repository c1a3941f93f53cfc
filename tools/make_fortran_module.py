#!/usr/bin/env python3
"""Writes include/tessarel/tessarel.f90, the Fortran module with an interface for each entry of tessarel.h and for the
everyday ones of routines.h, from the prototypes there. Which arguments are arrays stands in ARRAYS.

Usage: make_fortran_module.py [--check]   with --check it only compares, and fails if the module is not up to date.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
MODULE = ROOT / "include" / "tessarel" / "tessarel.f90"
ROUTINES = """calc_v calc_p calc_hsu calc_psat calc_tsat calc_pspin calc_tspin calc_vspin calc_pt_flash calc_ab_flash
    calc_bubble_p calc_bubble_t calc_dew_p calc_dew_t calc_prop_q calc_phaseenv getphaseenv getminima getmaxima""".split()
EVERYWHERE = {"z", "x", "y", "lnphi"}
ARRAYS = {
    "setfluid": "names",
    "fluidinfo": "molmass_i tc_i pc_i tmin_i tmax_i",
    "tmdprop_allphase": "v u h s cv dpdt dpdv d2pdt2 d2pdv2 d2pdtdv dcvdt",
    "capeopenderiv": "dv dh ds dg dlnphi",
    "phaseenvelope": "t p",
    "flash_sensitivity": "dbeta dv dh ds dx dy",
    "states": "a b states liquids vapours derived codes texts",
    "hsxy_mp": "par",
    "getphaseenv": "t p",
}
TYPES = {"char": "character(len=*)", "double": "real(c_double)", "int32_t": "integer(c_int32_t)",
         "int64_t": "integer(c_int64_t)"}
HEAD = """! Interfaces of the library's entries for Fortran hosts: `use tessarel`, then the calls of tessarel.h with its
! argument lists, where texts carry their lengths by themselves; those of routines.h, from tessarel_calc_p on, take the
! lengths as arguments. Units, texts and shapes are told in these headers, which tools/make_fortran_module.py makes it
! from.
module tessarel
  use, intrinsic :: iso_c_binding, only: c_char, c_double, c_int32_t, c_int64_t, c_size_t
  implicit none
  interface
"""


def prototypes(header):
    text = (ROOT / "include" / "tessarel" / header).read_text(encoding="utf-8")
    for result, name, arguments in re.findall(r"^TESSAREL_API (\w+) tessarel_(\w+)\((.*?)\);", text, re.S | re.M):
        yield result, name, [] if arguments == "void" else [" ".join(a.split()) for a in arguments.split(",")]


def wrapped(line, indent):
    """The line, continued behind commas where it is longer than 120 columns."""
    out = ""
    while len(line) > 120:
        cut = line.rfind(",", 0, 116) + 1
        out += line[:cut] + " &\n"
        line = " " * indent + line[cut:].lstrip()
    return out + line + "\n"


def interface(result, name, arguments, by_c):
    arrays = EVERYWHERE | set(ARRAYS.get(name, "").split())
    declared = []
    for argument in arguments:
        kind, argument_name = re.fullmatch(r"(.*?)\s*(\w+)", argument).groups()
        base, intent = kind.replace("const ", "").rstrip("*"), "in" if kind.startswith("const") else "inout"
        if kind == "size_t":
            if by_c:
                declared.append((argument_name, f"integer(c_size_t), value :: {argument_name}"))
            continue
        text = by_c and base == "char"
        shape = "(*)" if text or argument_name in arrays else ""
        what = "character(kind=c_char)" if text else TYPES[base]
        declared.append((argument_name, f"{what}, intent({intent}) :: {argument_name}{shape}"))
    if result != "void":
        declared.append((None, f"{TYPES[result]} :: tessarel_{name}"))
    types = [word for word in ("c_char", "c_double", "c_int32_t", "c_int64_t", "c_size_t")
             if any(f"{word})" in line or f"{word}," in line for _, line in declared)]
    what = "subroutine" if result == "void" else "function"
    head = f"    {what} tessarel_{name}({', '.join(n for n, _ in declared if n)})" + " bind(C)" * by_c
    lines = ([f"import :: {', '.join(types)}"] if types else []) + [line for _, line in declared]
    return wrapped(head, 8) + "".join(f"      {line}\n" for line in lines) + f"    end {what}\n"


def main():
    entries = [(*p, False) for p in prototypes("tessarel.h")]
    entries += [(*p, True) for p in prototypes("routines.h") if p[1] in ROUTINES]
    text = HEAD + "".join(interface(*entry) for entry in entries) + "  end interface\nend module tessarel\n"
    if sys.argv[1:] == ["--check"]:
        if MODULE.read_text(encoding="utf-8") != text:
            sys.exit(f"{MODULE} is not what {pathlib.Path(__file__).name} makes")
    else:
        MODULE.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
