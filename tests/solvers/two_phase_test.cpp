// State solvers that know the phase boundary: the quick routes against the searches behind them, identities of two
// phases, labels, texts.
#include "solvers/two_phase.hpp"

#include <algorithm>
#include <cmath>

#include "common/test_fluid.hpp"
#include "interface/session_boundary.hpp"
#include "solvers/psat_tsat.hpp"
#include "solvers/pure_saturation.hpp"

namespace {

using namespace tessarel;
using namespace tessarel::solvers;

/// A fluid with its boundary, traced at the start so that labels do not change between calls.
struct Case {
  Case(const std::vector<std::string>& names, const std::vector<double>& z) : fluid(names, z), boundary(fluid.session) {
    if (names.size() > 1) boundary.trace();
  }
  /// A search over a search alone takes more than a call allows.
  Context context(bool quick = true) {
    Context context{fluid.fluid(), boundary, quick};
    if (!quick) context.last_pressure += flash::most_pressures_of_a_call;
    return context;
  }
  Message run(TwoPhaseSolver& solver, State& state, bool quick = true) {
    return solver(context(quick), state, x.data(), y.data());
  }
  State at_tp(double t, double p) {
    State s{t, p, 0, 0, 0, 0, 1};
    EXPECT_EQ(run(tp, s), no_errors) << t << " " << p;
    return s;
  }

  tessarel::testing::TestFluid fluid;
  interface::SessionBoundary boundary;
  fluid::Vector x{}, y{};
};

struct Named {
  const char* name;
  TwoPhaseSolver* solver;
  double State::*a;
  double State::*b;
  bool of_pure, of_mixture;
};
constexpr Named solvers_of_pairs[] = {
    {"tv", tv, &State::t, &State::v, true, true},
    {"tv_old", tv_old, &State::t, &State::v, true, true},
    {"vp", vp, &State::v, &State::p, true, true},
    {"ts", ts, &State::t, &State::s, true, true},
    {"vu", vu, &State::v, &State::u, true, true},
    {"vu_new", vu_new, &State::v, &State::u, true, true},
    {"vh", vh, &State::v, &State::h, true, true},
    {"vs", vs, &State::v, &State::s, true, true},
    {"pu", pu, &State::p, &State::u, true, true},
    {"ph", ph, &State::p, &State::h, true, true},
    {"ps", ps, &State::p, &State::s, true, true},
    {"pu_simple", pu_simple, &State::p, &State::u, false, true},
    {"ph_simple", ph_simple, &State::p, &State::h, false, true},
    {"ps_simple", ps_simple, &State::p, &State::s, false, true},
    {"ph_new", ph_new, &State::p, &State::h, false, true},
    {"ps_new", ps_new, &State::p, &State::s, false, true},
    {"hs", hs, &State::h, &State::s, true, true},
    {"hs_simple", hs_simple, &State::h, &State::s, true, true},
    {"pq", pq, &State::p, &State::q, true, true},
    {"tq", tq, &State::t, &State::q, true, true},
    {"vq", vq, &State::v, &State::q, true, true},
};

void expect_same(const State& found, const State& known, double tolerance, const std::string& what) {
  EXPECT_NEAR(found.t, known.t, tolerance * known.t) << what;
  // A liquid's pressure is known no better than its volume.
  const double stiff = known.q == 0 ? 1e4 : 1.0;
  EXPECT_NEAR(found.p, known.p, tolerance * known.p * stiff) << what;
  EXPECT_NEAR(found.v, known.v, tolerance * known.v) << what;
  for (double State::*energy : {&State::u, &State::h})
    EXPECT_NEAR(found.*energy, known.*energy, tolerance * (std::abs(known.*energy) + 8.3 * known.t)) << what;
  EXPECT_NEAR(found.s, known.s, tolerance * (std::abs(known.s) + 8.3)) << what;
  EXPECT_NEAR(found.q, known.q, tolerance) << what;
}

/// Every pair of a known state returns it, by the quick route and by the search behind it.
/// `line`: the bubble line reaches the lowest pressure, which the search for v and q asks for.
void expect_returned(Case& c, const State& known, bool pure, const std::string& title, bool line = true) {
  for (const Named& n : solvers_of_pairs) {
    if (!(pure ? n.of_pure : n.of_mixture)) continue;
    if (n.b == &State::q && !(known.q > 0 && known.q < 1)) continue;
    for (const bool quick : {true, false}) {
      if (!quick && !line && n.solver == vq) continue;
      State s{1, 1, 1, 1, 1, 1, 1};
      s.*n.a = known.*n.a;
      s.*n.b = known.*n.b;
      const std::string what = title + " " + n.name + (quick ? ", quick" : ", search");
      const Message message = c.run(*n.solver, s, quick);
      ASSERT_EQ(message, no_errors) << what;
      expect_same(s, known, quick ? 1e-9 : 1e-8, what);
      EXPECT_EQ(s.*n.a, known.*n.a) << what;
      EXPECT_EQ(s.*n.b, known.*n.b) << what;
    }
  }
}

TEST(TwoPhaseSolvers, PureStatesReturnFromEveryPair) {
  for (const char* name : {"propane", "water", "carbon dioxide"}) {
    Case c({name}, {1.0});
    const double tc = c.fluid.limits.tc, pc = c.fluid.limits.pc;
    for (const double q : {0.2, 0.7}) {
      State s{0.8 * tc, 0, 0, 0, 0, 0, q};
      ASSERT_EQ(c.run(tq, s), no_errors);
      expect_returned(c, s, true, std::string(name) + " two phases");
    }
    expect_returned(c, c.at_tp(0.8 * tc, 1.2 * pc), true, std::string(name) + " liquid");
    expect_returned(c, c.at_tp(0.8 * tc, 0.05 * pc), true, std::string(name) + " vapour");
    expect_returned(c, c.at_tp(1.2 * tc, 1.3 * pc), true, std::string(name) + " supercritical");
  }
}

TEST(TwoPhaseSolvers, MixtureStatesReturnFromEveryPair) {
  Case gas({"methane", "n-butane"}, {0.5, 0.5});
  const struct {
    const char* title;
    double t, p;
  } states[] = {{"two phases", 300, 40e5}, {"liquid", 260, 150e5}, {"vapour", 360, 10e5}};
  for (const auto& s : states) expect_returned(gas, gas.at_tp(s.t, s.p), false, s.title);
  Case polar({"methanol", "acetone", "water"}, {0.3, 0.3, 0.4});
  expect_returned(polar, polar.at_tp(345, 1e5), false, "polar", false);
}

// Two phases of a pure fluid have equal pressures and Gibbs energies, also next to the critical point; the saturation
// routines and the volumes agree, and T and P of the line are each other's inverse.
TEST(TwoPhaseSolvers, SaturationOfPureFluids) {
  for (const char* name : {"methane", "n-decane", "water", "methanol", "ammonia"}) {
    Case c({name}, {1.0});
    const double tc = c.fluid.limits.tc;
    for (const double distance : {0.5, 0.3, 0.1, 1e-2, 1e-3, 1e-4, 1e-5}) {
      const double t = std::max(tc * (1 - distance), c.fluid.limits.tlowest);
      State l{t, 0, 0, 0, 0, 0, 0}, v{t, 0, 0, 0, 0, 0, 1};
      ASSERT_EQ(c.run(tq, l), no_errors) << name << t;
      ASSERT_EQ(c.run(tq, v), no_errors);
      EXPECT_LT(l.v, v.v) << name << t;
      EXPECT_NEAR(l.h - t * l.s, v.h - t * v.s, 1e-9 * (std::abs(l.h - t * l.s) + 8.3 * t)) << name << t;
      double p = 0;
      ASSERT_EQ(calc_psat(c.fluid.fluid(), t, p), no_errors) << name << t;
      EXPECT_NEAR(p, l.p, 1e-8 * p) << name << t;
      State back{0, l.p, 0, 0, 0, 0, 0};
      ASSERT_EQ(c.run(pq, back), no_errors);
      EXPECT_NEAR(back.t, t, 1e-11 * t) << name << t;
    }
  }
}

// Saturated states return exactly, within the window of 1e-6; q outside is refused.
TEST(TwoPhaseSolvers, SaturatedStatesAndTexts) {
  Case c({"propane"}, {1.0});
  for (const double q : {0.0, 1.0}) {
    State s{0, 5e5, 0, 0, 0, 0, q};
    ASSERT_EQ(c.run(pq, s), no_errors);
    State back{0, s.p, 0, 0, s.h + 4e-7, 0, 0.3};
    ASSERT_EQ(c.run(ph, back, false), no_errors);
    EXPECT_EQ(back.t, s.t);
    EXPECT_EQ(back.q, q);
  }
  const double tc = c.fluid.limits.tc;
  State above{tc + 1, 1e5, 0, 0, 0, 0, 0.25};
  ASSERT_EQ(c.run(tp, above), no_errors);
  EXPECT_EQ(above.q, 0.25);  // kept at tc and above
  ASSERT_EQ(c.run(tv, above), no_errors);
  EXPECT_EQ(above.q, 1.0);

  Case gas({"methane", "n-butane"}, {0.5, 0.5});
  const struct {
    Case& fluid;
    TwoPhaseSolver* solver;
    State state;
    const char* text;
  } cases[] = {
      {c, pq, {0, 5e5, 0, 0, 0, 0, -1e-9}, "q < 0 or q > 1, out of range..."},
      {c, tq, {300, 0, 0, 0, 0, 0, 1.1}, "q < 0 or q > 1, out of range..."},
      {c, tq, {tc + 1, 0, 0, 0, 0, 0, 0.5}, "Temperature greater than critical temperature..."},
      {c, pq, {0, 0.05, 0, 0, 0, 0, 0.5}, "Pressure less than minimum pressure..."},
      {c, pu, {0, 5e5, 0, -1e9, 0, 0, 0}, "Input Pu: u < u(Tmin,P)"},
      {c, ps, {0, 5e5, 0, 0, 0, 1e9, 0}, "Input Ps: s > s(Tmax,P)"},
      {c, vu, {0, 0, 1e-3, -1e9, 0, 0, 0}, "Input vu: u < u(Pmin,v)"},
      {c, vs, {0, 0, 1e-3, 0, 0, 1e9, 0}, "Input vs: s > s(Tmax,v)"},
      {c, ts, {300, 0, 0, 0, 0, -1e9, 0}, "Input Ts: s < s(T,Pmax)"},
      {c, ts, {300, 0, 0, 0, 0, 1e9, 0}, "Input Ts: s > s(T,Pmin)"},
      {c, vq, {0, 0, 1e9, 0, 0, 0, 0.5}, "Input vq: v > vmax(Pmin,q)"},
      {c, vq, {0, 0, 1e-6, 0, 0, 0, 0.5}, "Input vq: v < vmin(Pmin,q=0)"},
      {c, pm, {0, 1e5, 0, 0, 0, 0, 0.5}, "Function Pm: metastable state m = 0 (liquid) or m = 1 (vapor)"},
      {c,
       solvers::tm,
       {tc + 1, 0, 0, 0, 0, 0, 1},
       "Function Tm: T > Tcr or T > Tcricondentherm while saturation state requested"},
      {gas, pm, {0, 1e5, 0, 0, 0, 0, 0}, "Function Pm: multicomponent mixtures not allowed yet...."},
      {gas, solvers::tm, {200, 0, 0, 0, 0, 0, 0}, "Function Tm: multicomponent mixtures not allowed yet...."},
      {gas, pu_simple, {0, 5e5, 0, 1e9, 0, 0, 0}, "Input Pu: u > u(Tmax,P)"},
      {gas, ph_simple, {0, 5e5, 0, 0, 1e9, 0, 0}, "Brent_Root: root not bracketed..."},
      {gas, vh, {0, 0, 1e-3, 0, 1e9, 0, 0}, "Input vh: h > h(Tmax,v)"},
      {gas, pq, {0, 45e6, 0, 0, 0, 0, 0.5}, "Bubble point calculation: input pressure out of range."},
  };
  for (const auto& k : cases) {
    State s = k.state;
    EXPECT_EQ(k.fluid.run(*k.solver, s), Message::of(k.text)) << k.text;
  }
}

// The limits of the metastable states are where dp/dv is 0.
TEST(TwoPhaseSolvers, MetastableLimits) {
  Case c({"propane"}, {1.0});
  for (const double m : {0.0, 1.0}) {
    State s{0, 30e5, 0, 0, 0, 0, m};
    ASSERT_EQ(c.run(pm, s), no_errors);
    State there{s.t, 0, 0, 0, 0, 0, m};
    ASSERT_EQ(c.run(solvers::tm, there), no_errors);
    EXPECT_NEAR(there.p, s.p, 1e-6 * s.p);
    State a = there, b = there;
    a.v *= 0.999;
    b.v *= 1.001;
    c.run(tv_1, a);
    c.run(tv_1, b);
    EXPECT_EQ(a.p > there.p, b.p > there.p);  // an extreme of the isotherm
  }
}

// The largest vapour fraction between bubble and dew point of a retrograde isobar, against a fine grid of flashes.
TEST(TwoPhaseSolvers, ExtremeOfTheVapourFraction) {
  Case gas({"methane", "n-butane"}, {0.5, 0.5});
  const double p = 0.5 * (gas.fluid.limits.pc + gas.fluid.limits.pcribar);
  envelope::SaturationPoint bubble, dew;
  ASSERT_EQ(gas.boundary.saturation('P', 'B', p / 1e5, bubble), no_errors);
  ASSERT_EQ(gas.boundary.saturation('P', 'D', p / 1e5, dew), no_errors);
  const double cold = std::min(bubble.result, dew.result), hot = std::max(bubble.result, dew.result);
  double place = 0, best = 0, largest = 0, smallest = 1;
  for (int i = 1; i < 400; ++i) {
    const State s = gas.at_tp(cold + (hot - cold) * i / 400, p);
    if (!(s.q > 0 && s.q < 1)) continue;
    largest = std::max(largest, s.q);
    smallest = std::min(smallest, s.q);
  }
  const bool maximum = gas.fluid.limits.tc > gas.fluid.limits.tcribar;
  ASSERT_EQ(brent_extreme(gas.context(), 1, maximum ? 1 : 0, p, dew.result, bubble.result, place, best), no_errors);
  EXPECT_NEAR(std::abs(best), maximum ? largest : smallest, 2e-3);
}

// tp_ph by phases: the whole is the mean of the phases, which 1 and 2 give alone.
TEST(TwoPhaseSolvers, Phases) {
  Case gas({"methane", "n-butane"}, {0.5, 0.5});
  PhaseValues all{}, liquid{}, vapour{}, whole{};
  double q = 0;
  const auto at = [&](double t, int phase, PhaseValues& values) {
    values.v = values.u = values.h = values.s = {-1, -1, -1};
    return tp_ph(gas.context(), t, 40e5, phase, values, q, gas.x.data(), gas.y.data());
  };
  for (const auto& [phase, values] : {std::pair{3, &all}, {1, &liquid}, {2, &vapour}, {0, &whole}})
    ASSERT_EQ(at(300, phase, *values), no_errors);
  EXPECT_EQ(all.h[0], whole.h[0]);
  EXPECT_EQ(all.h[1], vapour.h[0]);
  EXPECT_EQ(all.s[2], liquid.s[0]);
  EXPECT_NEAR(all.v[0], (1 - q) * all.v[2] + q * all.v[1], 1e-15 * all.v[1]);
  EXPECT_EQ(whole.v[1], -1);
  ASSERT_EQ(at(450, 3, all), no_errors);
  EXPECT_EQ(q, 1.0);
  EXPECT_EQ(all.u[1], -1);  // one phase
}

}  // namespace
