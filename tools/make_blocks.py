#!/usr/bin/env python3
"""Makes the exports of the building-block families from the table below.

Writes include/tessarel/blocks.h (tools/blocks.h.in with the prototypes in it) and src/interface/blocks_<file>.cpp for
each file of the table; clang-format lays them out. With --check nothing is written, and the exit code tells whether the
files are those that the table gives.
"""

import argparse
import itertools
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# A family: its name; that of its routines, * where a derivative names its variables; the arguments of the value
# function in order; the outputs as name, shape and unit. Families are grouped by the file they go to.
#
# An argument with derivatives of its own has the highest orders in brackets, by t, rho and x: the host passes the
# derivatives up to these; "<" leaves out those of the member's own order. (n) is an argument of the derivatives by x
# only.
TABLE = """
hard_sphere: hard spheres of one diameter
chi      | chi*_simp   | (n) eta[301]                                 | chi
a_hs     | a_hs*_simp  | (n) eta[301]                                 | a
z_hs     | z_hs*_simp  | (n) eta[301]                                 | z
contact: contact values
g        | g*_simp     | (n) eta[301]                                 | g
gij      | gij*        | n ipure d[300] zeta2[301] zeta3[301]         | g:n,n
diameters: pair diameters, moments of the diameter, mean diameter
dij      | dij*        | n d[300]                                     | dij:n,n:A
zeta     | zeta*       | n x ipure rho d[300] k                       | zeta::A^(k-3)
d_avg    | d_avg*_simp | n x d[300]                                   | d_avg::A
eta_simp | eta*_simp   | n x rho d_avg[301]                           | eta
dispersion: dispersion term
c1       | c1*         | (n) eta[301]                                 | c1
intgpert | intgpert*   | (n) eta[301]                                 | i1 i2
sigeps   | sigeps*     | n ipure t                                    | eps:n:K eps_ij:n,n:K
pertterm | pertterm*   | n x ipure t sig_ij eps_ij[300]               | m2es3::A3 m2e2s3::A3
association: association term
deltaab  | deltaab*    | n ipure t sig_ij gij[343]                    | deltaab:n,n,5,5:A3
xnhb     | xnhb*       | n x ipure rho deltaab[343] xnhb[343]< status | xnhb:n,5
polar: polar terms
j2j3     | j2j3*       | n t eta[311] eps[300]                        | j2:3,n,n j3:3,n,n,n
a2a3     | a2a3*       | n x ipure t rho j2[343] j3[343]              | a2:3 a3:3
"""
# What a comment calls the outputs of a family.
WORDS = """
chi      | chi = eta / (1 - eta)
a_hs     | the hard-sphere a
z_hs     | the hard-sphere z
g        | the contact value g of one diameter
gij      | the contact values g of the pairs
dij      | the pair diameters
zeta     | the moment zeta_k
d_avg    | the mean diameter
eta_simp | the packing fraction of the mean diameter
c1       | the compressibility expression c1
intgpert | the integrals i1 and i2
sigeps   | the energies eps and eps_ij
pertterm | the dispersion sums m2es3 and m2e2s3
deltaab  | the association strengths
xnhb     | the fractions of unbonded sites
j2j3     | the polar integrals j2 and j3
a2a3     | the second- and third-order polar terms a2 and a3
"""
# The members of a family: what follows the last underscore in the name; "" is the value.
MEMBERS = """
chi      | "" deta deta2 deta3 deta4 dt dt2 dt3 dx dxdx dxdxdx dtdx detadx detadxdx detadt detadt2 detadt3 deta2dt
a_hs     | "" deta deta2 deta3 deta4 drho drho2 drho3 drho4 dt dt2 dt3 dx dxdx dxdxdx dtdx detadx detadt detadt2 detadt3
a_hs     | deta2dt dtdrho dtdrho2 dt2drho dt3drho drhodx drhodxdx detadxdx
z_hs     | "" deta deta2 deta3 drho drho2 drho3 dt dt2 dt3 dx dxdx dtdrho detadt
g        | "" deta deta2 deta3 deta4 drho drho2 drho3 drho4 dt dt2 dt3 dx dxdx dxdxdx dtdx drhodx detadx drhodxdx
g        | detadxdx dtdrho detadt dtdrho2 deta2dt dt2drho detadt2
gij      | "" deta deta2 deta3 deta4 drho drho2 drho3 drho4 dt dt2 dt3 dx dxdx dxdxdx dtdx drhodx detadx drhodxdx
gij      | detadxdx dtdrho detadt dtdrho2 deta2dt dt2drho detadt2
dij      | "" dt dt2 dt3
zeta     | "" dt dt2 dt3 dx dxdt
d_avg    | "" dt dt2 dt3 dx dxdx dxdxdx dtdx
eta_simp | "" dt dt2 dt3 dx dtdx
c1       | "" deta2 deta3 deta4 dt dt2 dt3 dx dxdx dxdxdx detadt detadt2 deta2dt dtdx detadx detadxdx deta2dx
intgpert | "" deta deta2 deta3 deta4 dt dt2 dt3 dx dxdx dxdxdx detadt detadt2 deta2dt detadx dtdx detadxdx
sigeps   | dt dt2 dt3
pertterm | "" dt dt2 dt3 dx dxdx dtdx
deltaab  | "" dt dt2 dt3 drho drho2 drho3 drho4 dx dxdx dxdxdx dtdrho dtdrhodrho dtdtdrho drhodx drhodxdx dtdx
xnhb     | "" dt dt2 dt3 drho drho2 drho3 drho4 dx dxdx dxdxdx drhodt drhodrhodt drhodtdt drhodx drhodxdx dtdx
j2j3     | "" dt dt2 dt3 drho drho2 drho3 drho4 dx dxdx dxdxdx dtdrho dtdrho2 dt2drho drhodx drhodxdx dtdx
a2a3     | "" dt dt2 dt3 drho drho2 drho3 drho4 dx dxdx dxdxdx dtdrho dtdrho2 dt2drho drhodx drhodxdx dtdx
"""
# Prepared and assembled apart: a value or derivative, and how its record is prepared.
PREPARED = """
a          | prepare_scalar<Value::a, double, By::nothing>
da_dt      | prepare_scalar<Value::a, T1, By::t>
d2a_dt2    | prepare_scalar<Value::a, T2, By::t>
d3a_dt3    | prepare_scalar<Value::a, T3, By::t>
da_dx      | prepare_composition<Value::a, double, By::nothing, 1>
d2a_dxdx   | prepare_composition<Value::a, double, By::nothing, 2>
d3a_dxdxdx | prepare_composition<Value::a, double, By::nothing, 3>
d2a_dtdx   | prepare_composition<Value::a, T1, By::t, 1>
z          | prepare_scalar<Value::z, double, By::nothing>
dz_drho    | prepare_scalar<Value::z, T1, By::rho>
d2z_drho2  | prepare_scalar<Value::z, T2, By::rho>
d3z_drho3  | prepare_scalar<Value::z, T3, By::rho>
dz_dt      | prepare_scalar<Value::z, T1, By::t>
d2z_dt2    | prepare_scalar<Value::z, T2, By::t>
d2z_dtdrho | prepare_scalar<Value::z, TaylorTRho, By::t_rho>
dz_dx      | prepare_composition<Value::z, T1, By::rho, 1>
d2z_dxdx   | prepare_composition<Value::z, T1, By::rho, 2>
"""
# Families whose derivatives by rho carry a factor rho for each order.
SCALED = {"a_hs", "z_hs", "g", "gij"}

INTEGERS = {"n", "ipure", "k"}
VARIABLE = r"d(rho|eta|t|x)(\d?)"
TIMES = ["", "", " twice", " three times", " four times"]
ORDINALS = ["", "First", "Second", "Third", "Fourth"]
# Orders by t, rho (or eta) and x, in the order in which the arguments of a member follow.
COMBINATIONS = sorted((c for c in itertools.product(range(5), repeat=3) if sum(c) <= 4),
                      key=lambda c: (sum(c), [-k for k in c]))


def rows(text):
    return [[cell.strip() for cell in line.split("|")] for line in text.strip().splitlines()]


def slots_of(member):
    """The variables of a member, one for each order of differentiation: rho or eta, t, x."""
    found = re.findall(VARIABLE, member)
    return sorted("".join({"rho": "r", "eta": "e"}.get(v, v) * int(power or 1) for v, power in found), key="retx".index)


def variables(c):
    """The variables of orders c by t, rho and x as they stand in a name: dt2drho, dxdx."""
    return "".join(f"d{v}{k if k > 1 else ''}" for v, k in zip(("t", "rho"), c) if k > 0) + "dx" * c[2]


def derivative(name, order, member):
    """d2eta_dtdx of eta, 2 and dtdx."""
    return f"d{order if order > 1 else ''}{name}_{member}" if order > 0 else name


def power(base, exponent):
    """A3 of A and 3; nothing where the exponent is not above 0."""
    return base + (str(exponent) if exponent > 1 else "") if exponent > 0 else ""


def unit_of(base, slots, scaled):
    """The unit of a derivative of a quantity in A, A3, K or a power of A that depends on k."""
    by_t, by_rho = slots.count("t"), 0 if scaled else slots.count("r")
    angstrom = int(base[1:] or 1) if re.fullmatch(r"A\d?", base) else 0
    kelvin = (base == "K") - by_t
    above = base if "^" in base else power("A", angstrom + 3 * by_rho) + power("K", kelvin)
    return (above or "1") + "/" + power("K", -kelvin) if kelvin < 0 else above


class Routine:
    """One member of a family: what its prototype, its comment and its definition are made of."""

    def __init__(self, family, name, arguments, outputs, text, member):
        self.family, self.slots = family, slots_of(member)
        self.orders = tuple(sum(s in kinds for s in self.slots) for kinds in ("t", "re", "x"))
        self._take_arguments(arguments)
        base, ending = name.split("*")
        self.name = "tessarel_calc_" + self._derivative(base, member) + ending
        self.outputs = [self._derivative(o.split(":")[0], member) for o in outputs]
        self.comment = self._make_comment([(o + "::").split(":")[1:3] for o in outputs], text, member)

    def _derivative(self, name, member):
        return derivative(name, len(self.slots), member)

    def _take_arguments(self, text):
        """All parameters in order; of them those of the scope, and the arrays."""
        self.parameters, self.scope, self.arrays, self.status = [], [], [], "status" in text
        for c in COMBINATIONS:
            for word in text.replace("status", "").split():
                optional, name, highest, lower = re.fullmatch(r"(\(?)(\w+)\)?(?:\[(\d+)\])?(<?)", word).groups()
                within = all(k <= o and k <= int(h) for k, o, h in zip(c, self.orders, highest or "000"))
                if not within or (lower and c == self.orders) or (optional and self.orders[2] == 0):
                    continue
                self.parameters.append(derivative(name, sum(c), variables(c)))
                (self.scope if name in INTEGERS else self.arrays).append(self.parameters[-1])

    def _make_comment(self, shapes, text, member):
        what = text.removeprefix("the ")
        if member:
            if self.family == "intgpert" and "e" in self.slots:
                text = "the products eta i1 and eta i2"
            by = [(v, len(list(times))) for v, times in itertools.groupby(
                v for v, power in re.findall(VARIABLE, member) for _ in range(int(power or 1)))]
            what = (f"{ORDINALS[len(self.slots)]} derivative of {text.split(' = ')[0]} by "
                    + " and ".join(v + TIMES[times] for v, times in by))
        sizes = [" x ".join(filter(None, shape.split(",") + ["n"] * self.orders[2])) for shape, _ in shapes]
        size = " and ".join(dict.fromkeys(filter(None, sizes)))
        scaled = self.slots.count("r") if self.family in SCALED else 0
        factor = ", times rho" + (f"^{scaled}" if scaled > 1 else "") if scaled else ""
        unit = unit_of(shapes[0][1], self.slots, scaled)
        return what[0].upper() + what[1:] + (f": {size}" if size else "") + factor + (f" [{unit}]" if unit else "") + "."

    def signature(self):
        def declared(name):
            return f"const {'int32_t' if name in INTEGERS else 'double'}* {name}"
        parameters = [declared(p) for p in self.parameters] + [f"double* {o}" for o in self.outputs]
        return f"void {self.name}({', '.join(parameters + ['int32_t* status'] * self.status)})"

    def prototype(self):
        return f"/* {self.comment} */\nTESSAREL_API {self.signature()};\n"

    def definition(self):
        slots = "".join(f", '{s}'" for s in self.slots)
        lists = ", ".join("{" + ", ".join(names) + "}" for names in (self.arrays, self.outputs))
        status = ", status" if self.status else ""
        return (f"{self.signature()} {{\n"
                f"member<blocks::{self.family}{slots}>(scope({', '.join(self.scope)}), {lists}{status});\n}}\n")


class Prepared:
    """The two routines of a value that is prepared and assembled apart."""

    def __init__(self, name, prepare):
        self.name, self.prepare, self.slots = name, prepare, slots_of(name)
        self.of = re.match(r"(?:d\d?)?([az])", name).group(1)
        # The routines of z and of its derivatives by rho alone take ipure as well.
        self.pure = self.of == "z" and set(self.slots) <= {"r"}
        pure = " const int32_t* ipure," if self.pure else ""
        self.prep = (f"void tessarel_calc_{name}_prep(const int32_t* n, const double* x,{pure} const double* t, "
                     "const double* rho, tessarel_blocks* blocks, int32_t* status)")
        self.base = (f"void tessarel_calc_{name}_base(const int32_t* n, const double* x, const double* rho, "
                     f"const tessarel_blocks* blocks, double* {name})")

    def prototype(self):
        size = " x ".join("n" * self.slots.count("x"))
        unit = unit_of("", self.slots, False)
        shape = (f": {size}" if size else "") + (f" [{unit}]" if unit else "")
        return (f"/* Fills a record for calc_{self.name}_base. */\nTESSAREL_API {self.prep};\n"
                f"/* {self.name} from a record{shape}. */\nTESSAREL_API {self.base};\n")

    def definition(self):
        by_t, by_rho, by_x = (self.slots.count(s) for s in "trx")
        call = (f"assemble_array(n, x, rho, blocks, Value::{self.of}, {by_t}, {by_x}, {self.name})" if by_x else
                f"assemble(n, x, rho, blocks, Value::{self.of}, {by_t}, {by_rho}, {self.name})")
        return (f"{self.prep} {{\nprepare(n, x, {'ipure' if self.pure else '&mixture'}, t, rho, blocks, status, "
                f"{self.prepare});\n}}\n{self.base} {{\n{call};\n}}\n")


# The life of a record.
RECORDS = """tessarel_blocks* tessarel_blocks_new(void) {
  tessarel_blocks* blocks = nullptr;
  run(false, [&blocks] { blocks = new tessarel_blocks; });
  return blocks;
}
void tessarel_blocks_free(tessarel_blocks* blocks) { delete blocks; }

"""


def source(title, header, definitions):
    return (f"// Exports of building blocks: {title}. Made by tools/make_blocks.py from its table.\n"
            f"#include \"interface/{header}\"\n\nusing namespace tessarel;\nusing namespace tessarel::interface;\n\n"
            f"extern \"C\" {{\n\n{''.join(definitions)}\n}}  // extern \"C\"\n")


def clang_format(path, text):
    return subprocess.run(["clang-format", f"--assume-filename={path}"], input=text, capture_output=True, text=True,
                          check=True, cwd=ROOT).stdout


def generated():
    """The files by path, with their contents."""
    words, members, prototypes, texts = dict(rows(WORDS)), {}, {}, {}
    for family, text in rows(MEMBERS):
        members.setdefault(family, []).extend(m.strip('"') for m in text.split())
    for block in re.split(r"\n(?=\w+:)", TABLE.strip()):
        (heading,), *families = rows(block)
        file, title = heading.split(": ")
        routines = []
        for family, name, arguments, outputs in families:
            own = [Routine(family, name, arguments, outputs.split(), words[family], m) for m in members[family]]
            prototypes[family] = [r.prototype() for r in own]
            routines += own
        texts[f"src/interface/blocks_{file}.cpp"] = source(title, "blocks_support.hpp",
                                                           [r.definition() for r in routines])
    prepared = [Prepared(*row) for row in rows(PREPARED)]
    prototypes["prepared"] = [p.prototype() for p in prepared]
    texts["src/interface/blocks_prepared.cpp"] = source("prepared and assembled apart", "prepared.hpp",
                                                        [RECORDS] + [p.definition() for p in prepared])
    template = (ROOT / "tools" / "blocks.h.in").read_text(encoding="utf-8")
    texts["include/tessarel/blocks.h"] = re.sub(r"@(\w+)@\n", lambda m: "".join(prototypes[m.group(1)]), template)
    return {path: clang_format(path, text) for path, text in texts.items()}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true", help="write nothing, tell whether the files are up to date")
    check = parser.parse_args().check
    stale = []
    for path, text in generated().items():
        file = ROOT / path
        if file.exists() and file.read_text(encoding="utf-8") == text:
            continue
        stale.append(path)
        if not check:
            file.write_text(text, encoding="utf-8")
    for path in stale:
        print(path, "differs from the table" if check else "written")
    return 1 if check and stale else 0


if __name__ == "__main__":
    sys.exit(main())
