#!/usr/bin/env python3
"""Makes the fluid data that ship from the tables in data/sources/.

Writes data/fluids/<name>.saf, data/BIPs.mix and docs/fluids.md. With --check nothing is written, and the exit code
tells whether the files are those that the tables give.
"""

import argparse
import csv
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCES = ROOT / "data" / "sources"

# Short forms of the data sources, as fluids.csv uses them, with the texts for the records.
DATA_SOURCES = {
    "ref EOS": "reference equation of state",
    "CRC": "CRC Handbook of Chemistry and Physics",
    "ATcT 1.112": "Active Thermochemical Tables 1.112",
    "TRC gas": "TRC gas tables",
    "JANAF 1998": "NIST-JANAF tables 1998",
    "ref EOS cp0": "reference equation of state",
    "CRC Handbook (from memory)": "CRC Handbook of Chemistry and Physics, not checked against the book",
    "element": "element in its reference state",
}


def read_table(name):
    with open(SOURCES / name, newline="", encoding="utf-8") as file:
        return list(csv.DictReader(file))


def source_of(fluid, key):
    """The source of one quantity from the column data_source, "key: source; key: source"."""
    for part in fluid["data_source"].split("; "):
        name, _, text = part.partition(": ")
        if name == key:
            head, comma, tail = text.partition(", ")
            return DATA_SOURCES.get(head, head) + comma + tail
    raise ValueError(f"{fluid['name']}: no source of {key}")


def value_row(value, meaning, unit, source):
    float(value)
    return f"{value:<16}! {meaning}{f' [{unit}]' if unit else ''}; {source}"


def blocks(fluid):
    """The optional blocks of a record: keyword and rows."""
    source = fluid["param_source"]
    donors, acceptors = int(fluid["n_donor_sites"]), int(fluid["n_acceptor_sites"])
    # Only donor-acceptor bonds form: a molecule without donors, or without acceptors, does not associate.
    if donors and acceptors:
        yield "associating", [
            value_row("2", "number of association site types", "", source),
            value_row(str(donors), "sites of type 1, proton donors", "", source),
            value_row(str(acceptors), "sites of type 2, proton acceptors", "", source),
            value_row(fluid["epsilon_k_ab"], "association energy / k between types 1 and 2", "K", source),
            value_row(fluid["kappa_ab"], "association volume", "", source),
        ]
    if fluid["dipole"]:
        yield "dipolar", [value_row(fluid["dipole"], "dipole moment", "D", source)]
    if fluid["quadrupole"]:
        yield "quadrupolar", [value_row(fluid["quadrupole"], "quadrupole moment", "D A", source)]
    if fluid["polarizability"]:
        yield "polarizable", [
            value_row(fluid["polarizability"], "polarizability, informational", "A3", source_of(fluid, "polarizability"))
        ]


def tmin_source(fluid):
    if fluid["name"] == "hydrogen":
        return "gas densities of the parameter set hold from here on"
    return f"largest of the melting or triple temperature ({source_of(fluid, 'Tm')}), 0.35 Tc and 50 K"


def fluid_record(fluid):
    source = fluid["param_source"]
    cp0 = f"{source_of(fluid, 'cp0')}, largest deviation {100 * float(fluid['cp_fit_maxdev']):.2g} %"
    rows = [
        f"{fluid['name']:<32}  ! component name; {fluid['formula']}, CAS {fluid['cas']}",
        "",
        value_row(fluid["tmin"], "minimum temperature", "K", tmin_source(fluid)),
        value_row(fluid["tmax"], "maximum temperature", "K", "end of the heat capacity fit"),
        "",
        value_row(fluid["molar_mass"], "molar mass", "g/mol", "from the formula"),
        value_row(fluid["omega"], "acentric factor", "", source_of(fluid, "omega")),
        value_row(fluid["m"], "segment number", "", source),
        value_row(fluid["sigma"], "segment diameter", "A", source),
        value_row(fluid["epsilon_k"], "dispersion energy / k", "K", source),
        "",
        value_row(fluid["cp_a"], "ideal-gas heat capacity, a", "J/(mol K)", cp0),
        value_row(fluid["cp_b"], "ideal-gas heat capacity, b", "1e-3 J/(mol K2)", cp0),
        value_row(fluid["cp_c"], "ideal-gas heat capacity, c", "1e-6 J/(mol K3)", cp0),
        value_row(fluid["cp_d"], "ideal-gas heat capacity, d", "1e-9 J/(mol K4)", cp0),
        value_row(fluid["hf298"] or "0", "ideal-gas enthalpy of formation at 298.15 K", "J/mol",
                  source_of(fluid, "Hf") if fluid["hf298"] else "not available, 0 stands in its place"),
        "",
    ]
    for keyword, values in blocks(fluid):
        rows += [keyword, *values, ""]
    return rows + ["eof"]


def pair_row(pair):
    value = f"{float(pair['kij']):.6f}".rstrip("0")
    value += "0" if value.endswith(".") else ""
    assert float(value) == float(pair["kij"]) and len(value) <= 10, pair
    return f"{pair['name1']:<32}{pair['name2']:<32}{value:>10}  ! {pair['source']}"


def table_of(fluids):
    heads = ["Fluid", "Formula", "CAS", "M [g/mol]", "omega", "m", "sigma [A]", "eps/k [K]", "sites d/a", "kappa_AB",
             "eps_AB/k [K]", "mu [D]", "Q [D A]", "T range [K]", "Parameters from"]
    lines = ["| " + " | ".join(heads) + " |", "|" + "---|" * len(heads)]
    for f in fluids:
        sites = "" if f["n_acceptor_sites"] == "0" else f"{f['n_donor_sites']}/{f['n_acceptor_sites']}"
        cells = [f["name"], f["formula"], f["cas"], f["molar_mass"], f["omega"], f["m"], f["sigma"], f["epsilon_k"],
                 sites, f["kappa_ab"], f["epsilon_k_ab"], f["dipole"], f["quadrupole"], f"{f['tmin']}-{f['tmax']}",
                 f["param_source"]]
        lines.append("| " + " | ".join(cells) + " |")
    return lines


def kij_counts(pairs):
    counts = {}
    for pair in pairs:
        counts[pair["source"]] = counts.get(pair["source"], 0) + 1
    return [f"| {source} | {count} |" for source, count in sorted(counts.items(), key=lambda item: -item[1])]


def document(fluids, pairs):
    text = (ROOT / "tools" / "fluids.md.in").read_text(encoding="utf-8")
    substances = len({f["cas"] for f in fluids})
    no_hf = ", ".join(f["name"] for f in fluids if not f["hf298"])
    for key, value in {
            "COUNT": str(len(fluids)), "SUBSTANCES": str(substances), "PAIRS": str(len(pairs)), "NO_HF": no_hf,
            "KIJ_TABLE": "\n".join(kij_counts(pairs)), "FLUID_TABLE": "\n".join(table_of(fluids))}.items():
        text = text.replace(f"@{key}@", value)
    return text


def make_files():
    fluids, pairs = read_table("fluids.csv"), read_table("kij.csv")
    names = {f["name"] for f in fluids}
    assert len(names) == len(fluids) and all(len(name) <= 32 for name in names)
    assert all(pair["name1"] in names and pair["name2"] in names for pair in pairs)
    files = {ROOT / "data" / "fluids" / f"{f['name']}.saf": "\n".join(fluid_record(f)) + "\n" for f in fluids}
    files[ROOT / "data" / "BIPs.mix"] = "\n".join(pair_row(pair) for pair in pairs) + "\n"
    files[ROOT / "docs" / "fluids.md"] = document(fluids, pairs)
    return files


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true", help="write nothing, fail when a file is stale")
    check = parser.parse_args().check

    files = make_files()
    stale = [path for path, text in files.items()
             if not path.exists() or path.read_text(encoding="utf-8") != text]
    unknown = [path for path in (ROOT / "data" / "fluids").glob("*.saf") if path not in files]
    if check:
        for path in stale + unknown:
            print(f"stale: {path.relative_to(ROOT)}", file=sys.stderr)
        return 1 if stale or unknown else 0
    for path in stale:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(files[path], encoding="utf-8")
    for path in unknown:
        path.unlink()
    print(f"{len(stale)} files written, {len(unknown)} removed, {len(files)} in all")
    return 0


if __name__ == "__main__":
    sys.exit(main())
