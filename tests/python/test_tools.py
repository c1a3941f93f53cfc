"""Names, units, the command line, tables of jobs and pictures."""

import csv
import json
import os
import pathlib
import re
import shlex
import signal
import subprocess
import sys
import threading
import time

import numpy as np
import pytest

import tessarel
from tessarel import batch, cli, units

ROOT = pathlib.Path(__file__).resolve().parents[2]


def test_names_of_the_fluids_that_ship():
    table = tessarel.substances()
    assert set(table) == set(tessarel.fluids()) and len(table) > 200
    for substance in table.values():
        digits = substance.cas.replace("-", "")
        weights = sum(int(d) * k for k, d in enumerate(reversed(digits[:-1]), 1))
        assert weights % 10 == int(digits[-1]), substance
    # A synonym means one substance, and is no other one's name.
    owners = {}
    for substance in table.values():
        for word in substance.synonyms:
            assert owners.setdefault(word.lower(), substance.cas) == substance.cas
            assert word.lower() not in table
    with open(os.path.join(os.path.dirname(tessarel.__file__), "synonyms.csv"), encoding="utf-8") as file:
        assert {row["name"] for row in csv.DictReader(file)} <= set(table)
    assert tessarel.fluids("106-97-8") == ["n-butane", "n-butane e23"]
    assert tessarel.fluids("7732") == ["water e23", "water", "water 4c"]
    with pytest.raises(tessarel.Error, match='did you mean "water e23" or "water"'):
        tessarel.Fluid("H2O")


@pytest.mark.parametrize(
    "name, text, expected",
    [
        ("T", "-20C", ("T", 253.15)),
        ("T", "77 F", ("T", 298.15)),
        ("T", "300", ("T", 300)),
        ("P", "40bar", ("P", 40e5)),
        ("P", "1 atm", ("P", 101325)),
        ("h", "250 kJ/kg", ("h_mass", 250e3)),
        ("h", "-1e3J/mol", ("h", -1e3)),
        ("s", "1.5 kJ/(kg K)", ("s_mass", 1500)),
        ("s", "2 J/mol/K", ("s", 2)),
        ("rho", "0.5 g/cm3", ("rho_mass", 500)),
        ("v", "24 L/mol", ("v", 0.024)),
        ("q", "30%", ("q", 0.3)),
        ("u", "3MJ/kmol", ("u", 3000)),
    ],
)
def test_units(name, text, expected):
    keyword, value = units.parse(name, text)
    assert keyword == expected[0] and value == pytest.approx(expected[1], rel=1e-12)


@pytest.mark.parametrize(
    "arguments, text",
    [
        (["state", "propane", "--T", "1e2 furlong", "--P", "1"], "unknown unit 'furlong' of T"),
        (["state", "propane", "--T", "x", "--P", "1"], "not a number"),
        (["state", "propane", "--T", "300"], "two properties"),
        (
            ["state", "methane", "ethane=0.1", "--T", "1", "--P", "1"],
            '"methane" is not a component with its mole fraction',
        ),
        (["state", "CO2", "--T", "1", "--P", "1"], "carbon dioxide"),
        (["fluids", "xyzzy"], "no fluid"),
        (["batch", "/nowhere/jobs.csv", "-o", "/tmp/x.csv"], "No such file"),
    ],
)
def test_command_line_refusals(arguments, text, capsys):
    assert cli.main(arguments) == 1
    assert text in capsys.readouterr().err


def test_command_line(tmp_path, capsys):
    assert cli.main(["state", "methane=0.5", "n-butane=50%", "--T", "26.85C", "--P", "40bar", "--json"]) == 0
    report = json.loads(capsys.readouterr().out)
    state = tessarel.Fluid({"methane": 0.5, "n-butane": 0.5}).state(T=300, P=40e5)
    assert report["q"] == state.q and report["liquid"]["cp"] == state.liquid.cp and report["whole"]["cp"] is None
    assert report["vapour"]["z"] == dict(zip(["methane", "n-butane"], state.y))
    assert cli.main(["state", "propane", "--T", "-20C", "--q", "0"]) == 0
    assert f"{tessarel.Fluid('propane').bubble_P(253.15):16.8g}" in capsys.readouterr().out
    picture = tmp_path / "gas.svg"
    assert cli.main(["envelope", "methane=0.5", "n-butane=0.5", "--plot", str(picture), "--json"]) == 0
    report = json.loads(capsys.readouterr().out)
    assert report["critical"]["T"] == state.fluid.critical_point().T and "</svg>" in picture.read_text()
    assert cli.main(["fluids", "BENZ"]) == 0
    assert "71-43-2" in capsys.readouterr().out


PARAMETERS = "--molar_mass 18.015 --m 2.36948 --sigma 2.15072 --epsilon_k 230.71557".split()
BOND = "--association 2195.10176 0.35319 --omega 0.3443".split()


def test_fluids_of_ones_own(tmp_path, monkeypatch):
    """In a directory of the user's own; a process of its own, for the library reads TESSAREL_DATA once."""
    home = tmp_path / "home"
    assert cli.main(["fluid", "home", str(home)]) == 0 and (home / "BIPs.mix").exists()
    monkeypatch.setenv("TESSAREL_DATA", str(home))

    def command(*arguments):
        run = subprocess.run([sys.executable, "-m", "tessarel.cli", *arguments], capture_output=True, text=True)
        return run.returncode, run.stdout + run.stderr

    status, text = command("fluid", "add", "my water", *PARAMETERS, *BOND, "--source", "a test")
    assert status == 0 and "critical at" in text
    mine = json.loads(command("state", "my water", "--T", "300", "--P", "1e5", "--json")[1])
    shipped = tessarel.Fluid("water e23").state(T=300, P=1e5)
    assert mine["liquid"]["v"] == pytest.approx(shipped.v, rel=1e-12)
    assert command("fluids", "my w") == (0, "my water\n")
    assert "a test" in command("fluids", "my w", "--parameters")[1]
    record = tmp_path / "torn.saf"
    record.write_text((home / "fluids" / "my water.saf").read_text()[:100])
    for arguments, expected in (
        (["my water", *PARAMETERS], "exists"),
        (["water", *PARAMETERS], "ships"),
        (["../x", *PARAMETERS], "cannot be the name"),
        (["x", "--m", "1"], "also needs --molar_mass"),
        (["x", *PARAMETERS, "--sigma", "-1"], "row"),
        ([str(record)], "Unexpected data"),
    ):
        status, text = command("fluid", "add", *arguments)
        assert status == 1 and expected in text, text
    assert (home / "fluids" / "my water.saf").exists()
    assert not (home / "fluids" / "x.saf").exists() and not (home / "fluids" / "torn.saf").exists()


PAGES = [ROOT / "README.md", *sorted((ROOT / "docs").rglob("*.md"))]


@pytest.mark.parametrize("page", PAGES, ids=lambda page: page.name)
def test_commands_of_the_documentation(page, tmp_path, monkeypatch, capsys):
    """Each command line `tessarel ...` on the pages runs; those after `tessarel fluid home` in the directory it made."""
    text = page.read_text(encoding="utf-8")
    lines = [line.strip() for line in re.findall(r"^(?:    )?(?:\S*/bin/)?(tessarel .*)$", text, re.M)]
    blocks = re.findall(r"^```sh\n(.*?)^```|^((?:    .*\n)+)", text, re.M | re.S)
    commands = [line for line in lines if any(line in block for pair in blocks for block in pair)]
    write_jobs(tmp_path / "jobs.csv", 10)
    for command in commands:
        if "--scheduler" in command or " parts " in command:
            continue
        run = subprocess.run(
            [sys.executable, "-m", "tessarel.cli", *shlex.split(command)[1:]], cwd=tmp_path, capture_output=True, text=True
        )
        assert run.returncode == 0, (command, run.stderr)
        if run.stdout.startswith("export TESSAREL_DATA="):
            monkeypatch.setenv("TESSAREL_DATA", run.stdout.strip().partition("=")[2])


def write_jobs(path, rows):
    """Rows of several kinds: mixtures by T and P, a pure fluid by P and h, refused and torn ones, blanks and breaks."""
    with open(path, "w", newline="", encoding="utf-8") as file:
        table = csv.writer(file)
        table.writerow(["note", "methane", "n-butane", "fluid", "T [C]", "P [bar]", "h [kJ/kg]"])
        for k in range(rows):
            kind = k % 5
            table.writerow(
                [
                    [f"müller {k}", "0.5", "0.5", "", 20 + k % 50, 10 + k % 40, ""],
                    ['a "quoted"\nnote, ' + str(k), "", "", "propane", "", 5, -2500 + k % 100],
                    [k, "0.5", "0.6", "", 20, 1, ""],
                    [k, "1", "", "", "warm", 1, ""],
                    [k, "0.25", "0.75", "", 20, "", -2000],
                ][kind]
            )


def test_batch_gives_states_and_messages(tmp_path):
    jobs, out = tmp_path / "jobs.csv", tmp_path / "out.csv"
    write_jobs(jobs, 25)
    assert batch.run(jobs, out, rows_at_once=7) == 25
    with open(out, newline="", encoding="utf-8") as file:
        rows = list(csv.DictReader(file))
    assert [row["message"] == "" for row in rows] == [k % 5 < 2 for k in range(25)]
    state = tessarel.Fluid(["methane", "n-butane"], [0.5, 0.5]).state(T=25 + 273.15, P=15e5)
    assert float(rows[5]["state h [J/mol]"]) == state.h and rows[5]["note"] == "müller 5"
    state = tessarel.Fluid("propane").state(P=5e5, h_mass=-2494e3)
    assert float(rows[6]["state T [K]"]) == state.T
    assert "the sum is 1.1" in rows[7]["message"] and "'warm C'" in rows[8]["message"]
    assert "does not define a state" in rows[9]["message"]


def test_batch_resumes_after_any_interruption(tmp_path):
    jobs, whole, torn = tmp_path / "jobs.csv", tmp_path / "whole.csv", tmp_path / "torn.csv"
    write_jobs(jobs, 25)
    batch.run(jobs, whole)
    complete = whole.read_bytes()
    for length in [*range(0, len(complete), 97), len(complete) - 1, len(complete)]:
        torn.write_bytes(complete[:length])
        batch.run(jobs, torn, rows_at_once=6, threads=1)
        assert torn.read_bytes() == complete, length
    assert batch.run(jobs, torn) == 0
    torn.write_bytes(complete.replace("müller 10".encode(), b"other 1"))
    with pytest.raises(tessarel.Error, match="record 12 of the output does not belong"):
        batch.run(jobs, torn)


def test_batch_survives_being_killed(tmp_path):
    jobs, whole, out = tmp_path / "jobs.csv", tmp_path / "whole.csv", tmp_path / "out.csv"
    write_jobs(jobs, 10000)
    batch.run(jobs, whole)
    script = f"from tessarel import batch; batch.run({str(jobs)!r}, {str(out)!r}, rows_at_once=50)"
    kills = 0
    while not out.exists() or out.stat().st_size < whole.stat().st_size:
        run = subprocess.Popen([sys.executable, "-c", script])
        size = out.stat().st_size if out.exists() else 0
        while run.poll() is None and (not out.exists() or out.stat().st_size < size + whole.stat().st_size // 4):
            time.sleep(0.002)
        if run.poll() is None:
            run.send_signal(signal.SIGKILL)
            kills += 1
        run.wait()
        assert kills < 50
    assert kills >= 2 and out.read_bytes() == whole.read_bytes()


def test_batch_in_hdf5(tmp_path):
    """Through HDF5 and back a table has the same numbers; a torn run of rows becomes whole, a foreign file is refused."""
    h5py = pytest.importorskip("h5py")
    jobs, whole = tmp_path / "jobs.csv", tmp_path / "whole.csv"
    write_jobs(jobs, 9000)
    batch.run(jobs, whole)
    first, again = tmp_path / "first.h5", tmp_path / "again.h5"
    (tmp_path / "first.h5.rows.csv").write_bytes(whole.read_bytes()[:100_001])
    assert 0 < batch.run(jobs, first) < 9000 and not (tmp_path / "first.h5.rows.csv").exists()
    assert batch.run(jobs, first) == 0
    with open(whole, newline="", encoding="utf-8") as file:
        rows = list(csv.DictReader(file))
    with h5py.File(first) as file:
        table = file["table"]
        assert list(table.attrs["columns"]) == list(rows[0])
        for title in ("state T [K]", "state h [J/mol]"):
            expected = [float(row[title] or "nan") for row in rows]
            assert np.array_equal(table[title.replace("/", "|")][:], expected, equal_nan=True)
        assert [text.decode() for text in table["message"][:]] == [row["message"] for row in rows]
        assert table["note"][0].decode() == "müller 0"
        with h5py.File(tmp_path / "jobs.h5", "w") as copy:  # the columns of the jobs alone, without their order
            for title in list(rows[0])[:7]:
                file.copy(table[title.replace("/", "|")], copy.require_group("table"))
    assert batch.run(tmp_path / "jobs.h5", again) == 9000
    with h5py.File(first) as one, h5py.File(again) as two:
        for name in ("state P [Pa]", "state s [J|(mol K)]"):
            assert np.array_equal(one["table"][name][:], two["table"][name][:], equal_nan=True)
    write_jobs(jobs, 10)
    with pytest.raises(tessarel.Error, match="does not belong to this job"):
        batch.run(jobs, first)
    with pytest.raises(tessarel.Error, match="cannot be read as HDF5"):
        batch.run(jobs, whole.rename(tmp_path / "false.h5"))


def test_batch_with_a_lost_worker(tmp_path):
    """Two processes under Dask, one of them killed at work: the table is the local one to the byte, also of folders."""
    distributed = pytest.importorskip("distributed")
    (tmp_path / "jobs").mkdir()
    jobs, whole, out = tmp_path / "jobs" / "a.csv", tmp_path / "whole.csv", tmp_path / "out.csv"
    write_jobs(jobs, 12000)
    batch.run(jobs, whole)
    write_jobs(tmp_path / "jobs" / "b.csv", 100)
    with distributed.LocalCluster(
        n_workers=2, threads_per_worker=1, dashboard_address=None, silence_logs=50
    ) as local, distributed.Client(local) as client:
        pids = client.run(os.getpid)

        def kill():
            while not out.exists() or out.stat().st_size < whole.stat().st_size // 10:
                time.sleep(0.002)
            os.kill(next(iter(pids.values())), signal.SIGKILL)

        killer = threading.Thread(target=kill)
        killer.start()
        assert batch.run(jobs, out, rows_at_once=100, scheduler=local.scheduler_address) == 12000
        killer.join()
        client.wait_for_workers(2, timeout=60)
        assert set(client.run(os.getpid).values()) != set(pids.values())
        assert out.read_bytes() == whole.read_bytes()
        out.write_bytes(whole.read_bytes()[: whole.stat().st_size // 2])
        assert 0 < batch.run(jobs, out, rows_at_once=500, scheduler=local.scheduler_address) < 12000
        assert out.read_bytes() == whole.read_bytes()
        assert batch.run(tmp_path / "jobs", tmp_path / "states", scheduler=local.scheduler_address) == 12100
    assert (tmp_path / "states" / "a.csv").read_bytes() == whole.read_bytes()
    assert batch.run(tmp_path / "jobs", tmp_path / "states") == 0


def test_pictures_show_the_states(tmp_path):
    import matplotlib

    matplotlib.use("Agg")
    binary, propane = tessarel.Fluid(["methane", "n-butane"], [0.5, 0.5]), tessarel.Fluid("propane")
    drawn = {
        "envelope": binary.plot_envelope(qualities=[0.5]),
        "pT": propane.plot_pT(),
        "ph": propane.plot_ph(),
        "Ts": binary.plot_Ts(),
        "pxy": binary.plot_pxy(T=300),
        "Txy": binary.plot_Txy(P=20e5, points=11),
    }
    for name, ax in drawn.items():
        file = tmp_path / f"{name}.png"
        ax.figure.savefig(file)
        assert file.stat().st_size > 5000
        assert "[" in ax.get_ylabel() and ax.get_xlabel()
    line = {entry.get_label(): entry.get_data() for entry in drawn["ph"].lines}
    point = propane.critical_point()
    assert line["critical point"][1][0] == pytest.approx(point.P / 1e5)
    h, p = line["saturated vapour"]
    state = propane.state(P=p[40] * 1e5, q=1.0)
    assert h[40] == pytest.approx(state.h_mass / 1e3, rel=1e-6)
    # At 300 K methane is above its critical point: the liquid's line of bubble points ends where the vapour's returns.
    line = {entry.get_label(): entry.get_data() for entry in drawn["pxy"].lines}
    x, p = line["liquid"]
    assert p[12] * 1e5 == pytest.approx(binary.with_composition([x[12], 1 - x[12]]).bubble_P(300), rel=1e-9)
    assert line["vapour"][1][-1] == p[-1] == np.max(p)
