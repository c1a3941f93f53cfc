"""States, arrays of them, the phase boundary: against reference values, each other and the C interface."""

import copy
import csv
import ctypes
import pathlib
import pickle
import threading
import warnings

import numpy as np
import pytest

import tessarel
from tessarel import _native

REFERENCE = pathlib.Path(__file__).resolve().parents[1] / "data" / "reference"
MIXTURES = ["methane:0.5|n-butane:0.5", "propane:0.4|n-pentane:0.3|n-heptane:0.3", "carbon dioxide:0.7|n-butane:0.3"]


def reference_fluid(components, kij):
    """A fluid of the reference tables with the interaction parameters given there and no others."""
    parts = [part.split(":") for part in components.split("|")]
    fluid = tessarel.Fluid({name: float(x) for name, x in parts})
    for i in range(fluid.n):
        for j in range(i):
            fluid.set_kij(i, j, 0.0)
    for entry in filter(None, kij.split("|")):
        pair, value = entry.split(":")
        i, j = (int(k) - 1 for k in pair.split(";"))
        fluid.set_kij(i, j, float(value))
    return fluid


def rows_of(table):
    with open(REFERENCE / table, newline="", encoding="utf-8") as file:
        return [row for row in csv.DictReader(line for line in file if not line.startswith("#"))]


@pytest.mark.parametrize("components", MIXTURES)
def test_flashes_agree_with_reference_values(components):
    rows = [row for row in rows_of("flashes.csv") if row["components"] == components]
    fluid = reference_fluid(components, rows[0]["kij"])
    with warnings.catch_warnings():
        warnings.simplefilter("ignore", tessarel.RangeWarning)
        states = fluid.states(T=[float(row["T"]) for row in rows], P=[float(row["P"]) for row in rows])
    assert states.ok.all() and len(rows) == 40
    np.testing.assert_allclose(states.v, [float(row["v"]) for row in rows], rtol=1e-9)
    split = [k for k, row in enumerate(rows) if row["x"]]
    assert len(split) >= 10
    for k in split:
        beta = float(rows[k]["beta"])
        np.testing.assert_allclose(states.q[k], beta, rtol=1e-7, atol=1e-10)
        for found, column in ((states.x[k], "x"), (states.y[k], "y")):
            np.testing.assert_allclose(found, [float(v) for v in rows[k][column].split("|")], rtol=1e-7)
    # What belongs to one phase is nan of two; the phases have it.
    assert (np.isnan(states.cp) == np.isin(np.arange(40), split)).all()


def test_envelope_agrees_with_reference_values():
    rows = {
        row["quantity"]: float(row["value"]) for row in rows_of("envelopes.csv") if row["components"] == MIXTURES[0]
    }
    fluid = reference_fluid(MIXTURES[0], "")
    line = fluid.phase_envelope()
    found = {
        "tcrit": line.critical.T,
        "pcrit": line.critical.P,
        "tcritherm": line.cricondentherm[0],
        "pcritherm": line.cricondentherm[1],
        "tcribar": line.cricondenbar[0],
        "pcribar": line.cricondenbar[1],
        "bubble_p@242": fluid.bubble_P(242),
        "dew_p@242": fluid.dew_P(242),
        "dew_t@8270000": fluid.dew_T(8270000),
    }
    for name, value in found.items():
        assert value == pytest.approx(rows[name], rel=1e-6), name
    # The two sides of the line meet at the critical point; on each the mixture itself is the phase of that name.
    assert (line.x[line.bubble] == fluid.z).all() and (line.y[~line.bubble] == fluid.z).all()
    assert line.T[line.bubble].max() < line.critical.T and line.bubble.sum() > 5
    # A line without a critical point, which is traced from its dew end: at high pressure the incipient phase is denser.
    gas = tessarel.Fluid(["methane", "water"], [0.7, 0.3])
    line = gas.phase_envelope()
    assert (line.y == gas.z).all() and not line.bubble.any() and (line.x[:, 1] > 0.9).all()


def by_tmdprop(fluid, spec, **given):
    """The state by tessarel_tmdprop, straight through ctypes, in the units in which it comes back."""
    values = {
        key: ctypes.c_double(given.get(key, 0.0))
        for key in "t p v u h s q cv dpdt dpdv d2pdt2 d2pdv2 d2pdtdv dcvdt".split()
    }
    lists = [(ctypes.c_double * fluid.n)(1.0) for _ in range(3)]
    err = ctypes.create_string_buffer(100)
    with fluid._session:
        _native.library.tessarel_tmdprop(
            spec.encode(),
            ctypes.byref(ctypes.c_int32(3)),
            *map(ctypes.byref, values.values()),
            *lists,
            err,
            ctypes.c_size_t(len(spec)),
            ctypes.c_size_t(100),
        )
    assert err.raw.startswith(b"No errors"), err.raw
    return {key: value.value for key, value in values.items()}, *map(list, lists)


@pytest.mark.parametrize(
    "names, z, t, p",
    [
        ("propane", None, 300, 1e5),
        ("water", None, 350, 1e6),
        (["methane", "ethane", "propane"], [0.8, 0.15, 0.05], 250, 20e5),
    ],
)
def test_one_phase_is_what_the_property_call_returns(names, z, t, p):
    fluid = tessarel.Fluid(names, z)
    state = fluid.state(T=t, P=p)
    c, _, _, lnphi = by_tmdprop(fluid, "TP", t=t, p=p)
    mass = fluid.molar_mass
    same = {
        "t": state.T - 273.15,
        "p": state.P / 1e5,
        "v": state.v / mass,
        "u": state.u_mass / 1e3,
        "h": state.h_mass / 1e3,
        "s": state.s_mass / 1e3,
        "cv": state.cv_mass / 1e3,
    }
    for key, value in same.items():
        assert value == pytest.approx(c[key], rel=3e-15), key
    assert list(state.lnphi) == pytest.approx(lnphi, rel=1e-12)
    # Identities between properties that the library computes by separate formulas, the slopes by differences.
    up, down = (fluid.state(T=t + d, P=p) for d in (0.01, -0.01))
    assert state.cp == pytest.approx((up.h - down.h) / 0.02, rel=1e-6)
    assert state.alpha_P == pytest.approx((up.v - down.v) / 0.02 / state.v, rel=1e-6)
    assert state.joule_thomson == pytest.approx((t * state.v * state.alpha_P - state.v) / state.cp, rel=1e-9)
    assert state.w**2 == pytest.approx(state.cp / state.cv / (state.kappa_T * state.density), rel=1e-9)


PAIRS = [
    ("T", "v"),
    ("rho", "P"),
    ("T", "s"),
    ("v", "u"),
    ("v", "h"),
    ("v", "s"),
    ("P", "u"),
    ("h", "P"),
    ("P", "s"),
    ("h_mass", "s_mass"),
    ("P", "q"),
    ("T", "q"),
    ("v", "q"),
    ("rho_mass", "h"),
    ("v_mass", "s_mass"),
    ("P", "u_mass"),
]


@pytest.mark.parametrize("pair", PAIRS, ids="-".join)
def test_every_pair_returns_to_the_state(pair):
    fluid = tessarel.Fluid(["methane", "n-butane"], [0.5, 0.5])
    state = fluid.state(T=300, P=40e5)
    again = fluid.state(**{name: getattr(state, name) for name in pair})
    assert (again.T, again.P, again.q) == pytest.approx((300, 40e5, state.q), rel=1e-8)
    assert 0.4 < state.q < 0.5
    for phase, z in ((state.liquid, state.x), (state.vapour, state.y)):
        alone = fluid.with_composition(z).state(T=300, P=40e5, phase=phase.name)
        assert (phase.v, phase.h, phase.cp, phase.cv) == pytest.approx((alone.v, alone.h, alone.cp, alone.cv), rel=1e-9)
    f = [phase.lnphi + np.log(phase.z) for phase in (state.liquid, state.vapour)]
    np.testing.assert_allclose(f[0], f[1], atol=1e-10)


def test_arrays_have_the_bits_of_single_states_on_any_number_of_threads():
    fluid = tessarel.Fluid(["methane", "n-butane"], [0.5, 0.5])
    t, p = np.linspace(180, 420, 31)[:, None], np.array([-1.0, 1e5, 20e5, 60e5, 90e5])
    one = fluid.states(T=t, P=p, threads=1)
    assert one.shape == (31, 5) and one.ok[:, 1:].all() and not one.ok[:, 0].any()
    assert "positive finite numbers" in one.message[3, 0] and np.isnan(one.h[:, 0]).all() and one.message[3, 1] == ""
    columns = ("T", "P", "v", "u", "h", "s", "q", "cv", "cp", "w", "x", "y", "ok", "message")
    for threads in (2, 5):
        many = fluid.states(T=t, P=p, threads=threads)
        for name in columns:
            assert np.array_equal(
                getattr(one, name), getattr(many, name), equal_nan=name not in ("ok", "message")
            ), name
    for i, j in ((0, 1), (7, 2), (15, 3), (30, 4)):
        state = fluid.state(T=float(t[i, 0]), P=float(p[j]))
        assert [state.v, state.h, state.s, state.q] == [a[i, j] for a in (one.v, one.h, one.s, one.q)]
        assert state.phase == "two phases" or state.cp == one.cp[i, j]
        assert repr(one[i, j]) == repr(state)
        for name in ("liquid", "vapour"):
            found, phases = getattr(one, name), state.phase in ("two phases", name)
            same = [getattr(getattr(state, name), p) for p in ("cv_mass", "w")] if phases else [np.nan] * 2
            np.testing.assert_array_equal([found.cv_mass[i, j], found.w[i, j]], same)
            np.testing.assert_array_equal(found.lnphi[i, j], getattr(state, name).lnphi if phases else np.nan)
    with pytest.raises(tessarel.Error, match="positive finite numbers"):
        one[3, 0]
    forced = fluid.states(T=[250.0, 251.0], P=60e5, phase="liquid")
    assert forced.v[0] == fluid.state(T=250.0, P=60e5, phase="liquid").v and np.isnan(forced.vapour.v).all()


def test_fluids_leave_other_sessions_alone():
    current = lambda: (_native.library.tessarel_session_current(ctypes.byref(out)), out.value)[1]
    out = ctypes.c_int64()
    other = _native.Session()
    propane, water = tessarel.Fluid("propane"), tessarel.Fluid("water")
    with other:
        mine = current()
        first = propane.state(T=300, P=1e5).v, water.state(T=300, P=1e5).v
        assert current() == mine
        propane.states(T=np.linspace(200, 400, 500), P=1e5, threads=3)
        with pytest.raises(tessarel.Error):
            water.state(T=-1, P=1e5)
        assert current() == mine
    assert current() == 0
    found = []
    threads = [
        threading.Thread(target=lambda: found.extend(propane.state(T=300, P=1e5).v for _ in range(50)))
        for _ in range(4)
    ]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert found == [first[0]] * 200 and water.state(T=300, P=1e5).v == first[1]


def test_parameters_and_sensitivities():
    fluid = tessarel.Fluid(["methane", "n-butane"], [0.5, 0.5])
    before = fluid.state(T=300, P=40e5)
    old = before.liquid.v, fluid.parameter("sigma", "methane")
    s = fluid.sensitivity(300, 40e5)
    assert (s.v, s.h, s.beta) == pytest.approx((before.v, before.h, before.q), rel=1e-9)
    for k, (dt, dp) in enumerate(((0.01, 0), (0, 100.0))):
        up, down = fluid.state(T=300 + dt, P=40e5 + dp), fluid.state(T=300 - dt, P=40e5 - dp)
        step = 2 * (dt + dp)
        assert s.dv[k] == pytest.approx((up.v - down.v) / step, rel=1e-5)
        np.testing.assert_allclose(s.dx[:, k], (up.x - down.x) / step, rtol=1e-5)
        np.testing.assert_allclose(s.dy[:, k], (up.y - down.y) / step, rtol=1e-5)
    fluid.set_parameter("sigma", "methane", 3.9)
    assert fluid.parameter("sigma", 0) == 3.9 and fluid.with_composition([0.4, 0.6]).parameter("sigma", 0) == 3.9
    assert tessarel.Fluid(["methane", "n-butane"], [0.5, 0.5]).parameter("sigma") == old[1]
    assert before.liquid.v == old[0] and fluid.state(T=300, P=40e5).liquid.v != old[0]
    with pytest.raises(tessarel.Error, match="have changed"):
        before.liquid.cp
    fluid.set_kij("n-butane", 0, 0.07)
    for twin in (pickle.loads(pickle.dumps(fluid)), copy.deepcopy(fluid.with_composition([0.4, 0.6])).with_composition(fluid.z)):
        assert twin.kij(0, "n-butane") == 0.07 and twin.state(T=300, P=40e5).q == fluid.state(T=300, P=40e5).q


def test_saturation_of_a_pure_fluid_agrees_with_reference_values():
    rows = {
        (row["given"], row["quantity"]): float(row["value"])
        for row in rows_of("equilibria.csv")
        if row["components"] == "propane"
    }
    propane = tessarel.Fluid("propane")
    for t in ("200.0", "300.0", "360.0"):
        assert propane.bubble_P(float(t)) == pytest.approx(rows[t, "psat"], rel=1e-9)
        state = propane.state(T=float(t), q=0.3)
        assert state.liquid.rho == pytest.approx(rows[t, "rho_l"], rel=1e-8)
        assert state.vapour.rho == pytest.approx(rows[t, "rho_v"], rel=1e-8)
        assert state.vapour.h - state.liquid.h == pytest.approx(rows[t, "h_vap"], rel=1e-8)
    point = propane.critical_point()
    assert (point.T, point.P) == pytest.approx((rows["", "tc"], rows["", "pc"]), rel=1e-9)
    line = propane.saturation_line(30)
    assert line.ok.all() and (np.diff(line.liquid.rho) < 0).all() and (np.diff(line.vapour.rho) > 0).all()
    low, high = propane.spinodal(300)
    assert propane.spinodal_T(high).vapour == pytest.approx(300, rel=1e-8)
    assert low < propane.dew_P(300) < high
    assert propane.bubble_point(T=300)[:2] == (300, propane.bubble_P(300))
    assert np.isnan(propane.dew_T([1e5, 1e9])).tolist() == [False, True]


REFUSED = [
    (lambda: tessarel.Fluid("CO2"), 'did you mean "carbon dioxide"'),
    (lambda: tessarel.Fluid("124-38-9"), '"carbon dioxide"'),
    (lambda: tessarel.Fluid("n-buthane"), '"n-butane"'),
    (lambda: tessarel.Fluid(["methane", "ethane"], [90, 10]), "the sum is 100; they seem to be percent"),
    (lambda: tessarel.Fluid(["methane", "ethane"], [0.9, 0.2]), "the sum is 1.1"),
    (lambda: tessarel.Fluid(["methane", "ethane"]), "fractions of the 2 components are missing"),
    (lambda: tessarel.Fluid(["methane", "ethane"], [1.5, -0.5]), "none negative"),
    (lambda: tessarel.Fluid("propane").state(T=300), "needs two properties"),
    (lambda: tessarel.Fluid("propane").state(T=300, h=0), "does not define a state"),
    (lambda: tessarel.Fluid("propane").state(T=300, p=1e5), "no property 'p'"),
    (lambda: tessarel.Fluid("propane").state(T=300, P=float("nan")), "finite.*P = nan"),
    (lambda: tessarel.Fluid("propane").state(T=300, P=1e5, phase="solid"), "liquid"),
    (lambda: tessarel.Fluid("propane").state(T=300, q=0.5).cp, "ask .liquid or .vapour"),
    (lambda: tessarel.Fluid("propane").state(T=300, P=1e5).liquid, "no liquid here"),
    (lambda: tessarel.Fluid("propane").states(T=[1, 2, 3], P=[1, 2]), "do not broadcast"),
    (lambda: tessarel.Fluid("propane").bubble_P(400), "critical temperature"),
    (lambda: tessarel.Fluid("propane").set_parameter("sigma", 0, -1), "positive"),
    (lambda: tessarel.Fluid("propane").parameter("sigma", "ethane"), 'no component "ethane"'),
]


@pytest.mark.parametrize("call, text", REFUSED, ids=[text for _, text in REFUSED])
def test_refusals_say_what_was_wrong(call, text):
    with pytest.raises(tessarel.Error, match=text):
        call()


def test_outside_the_range_of_temperature_a_warning_comes():
    propane = tessarel.Fluid("propane")
    with pytest.warns(tessarel.RangeWarning, match="130 to 1000 K"):
        propane.state(T=1100, P=1e5)
    with pytest.warns(tessarel.RangeWarning, match="2 of 3 states"):
        propane.states(T=[500, 1100, 1200], P=1e5)
