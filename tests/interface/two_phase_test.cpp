// The property calls in and at the edge of the two-phase region: reference states, identities along and across it,
// round trips at its entry and exit, of the simplified model and with absent components.
#include <algorithm>
#include <cstdio>

#include "common/reference_flashes.hpp"
#include "interface/host.hpp"
#include "tessarel/routines.h"

namespace {

using host::Call;
using Names = std::vector<std::string>;
using Fractions = std::vector<double>;

/// A selection with its molar mass: results come back in molar SI units.
struct Fluid {
  Names names;
  Fractions z;
  double mass = 0;

  explicit Fluid(Names of, Fractions fractions, bool simplified = false)
      : names(std::move(of)), z(std::move(fractions)) {
    mass = 0;
    Fractions marked = z;
    if (simplified) marked[0] += 111.0;
    EXPECT_EQ(host::select(names, marked), "No errors");
    mass = host::molar_mass(marked);
  }
  /// The state of two values; everything else is spoilt at entry.
  [[nodiscard]] Call at(const std::string& pair, double a, double b) const {
    Call in;
    for (const char letter : std::string("TPvuhsq")) in.*host::field_named(letter) = 1.2345e30;
    in.*host::field_named(pair[0]) = a;
    in.*host::field_named(pair[1]) = b;
    in.run(pair);
    Call out = host::to_inputs(in, mass);
    out.err = in.err;
    return out;
  }
};

constexpr const char* pairs[] = {"TP", "Tv", "vP", "Ts", "vu", "vh", "vs", "Pu", "Ph", "Ps", "hs", "Pq", "Tq", "vq"};

bool two_phases(const Call& state) {
  return state.q > 0 && state.q < 1;
}

/// T, P, v, u, h, s, of two phases also q, x, y. P of one phase from v has at least what rounding of v makes of it.
void expect_same(const Fluid& fluid, const Call& found, const Call& known, bool edge, double tolerance) {
  const auto n = fluid.z.size();
  const double rho = 6.022045e-7 / known.v;
  double slope = 0;
  const auto count = static_cast<std::int32_t>(n);
  tessarel_calc_dp_drho(&count, fluid.z.data(), &known.t, &rho, &slope);
  const double of_rounding = two_phases(known) && !edge ? 0.0 : 1e-14 * std::abs(rho * slope);
  EXPECT_NEAR(found.t, known.t, tolerance * known.t);
  EXPECT_NEAR(found.p, known.p, tolerance * known.p + of_rounding);
  EXPECT_NEAR(found.v, known.v, tolerance * known.v);
  for (double Call::*energy : {&Call::u, &Call::h})
    EXPECT_NEAR(found.*energy, known.*energy, tolerance * std::max(std::abs(known.*energy), 8.3 * 300));
  EXPECT_NEAR(found.s, known.s, tolerance * std::max(std::abs(known.s), 8.3));
  EXPECT_NEAR(found.q, known.q, tolerance);
  if (n == 1 || !two_phases(known) || !two_phases(found)) return;
  for (std::size_t i = 0; i < n; ++i) {
    EXPECT_NEAR(found.x[i], known.x[i], tolerance);
    EXPECT_NEAR(found.y[i], known.y[i], tolerance);
  }
}

/// A state comes back from every pair that describes it.
void expect_returned(const Fluid& fluid, const Call& known, bool edge = false, double tolerance = 1e-8) {
  for (const std::string pair : pairs) {
    const bool alone = std::count(fluid.z.begin(), fluid.z.end(), 1.0) == 1;
    if (pair == "TP" && alone && (edge || two_phases(known))) continue;
    if (pair[1] == 'q' && !edge && !two_phases(known)) continue;
    SCOPED_TRACE(pair);
    const Call found = fluid.at(pair, known.*host::field_named(pair[0]), known.*host::field_named(pair[1]));
    EXPECT_EQ(found.err, "No errors");
    if (found.err == "No errors") expect_same(fluid, found, known, edge, tolerance);
  }
}

std::string title(const Names& names, double t, double p, double q) {
  std::array<char, 200> text{};
  std::snprintf(text.data(), text.size(), "%s and %d more, T %.12g, P %.12g, q %.12g", names[0].c_str(),
                static_cast<int>(names.size()) - 1, t, p, q);
  return text.data();
}

const Names gas_names = {"methane", "ethane", "propane", "n-butane", "nitrogen"};
const Fractions gas_fractions = {0.85, 0.07, 0.04, 0.02, 0.02};

TEST(TwoPhaseCalls, ReferenceFlashes) {
  double mass = 0;
  const auto select = [&](const tessarel::testing::Mixture& mixture, const std::string& kij) {
    ASSERT_EQ(host::select(mixture.names, mixture.x), "No errors");
    mass = host::molar_mass(mixture.x);
    std::array<char, 100> err{};
    const auto n = static_cast<std::int32_t>(mixture.names.size());
    for (std::int32_t i = 1; i <= n; ++i)
      for (std::int32_t j = 1; j < i; ++j) {
        // Of the reference mixtures none has more than one parameter.
        int a = 0, b = 0;
        double value = 0;
        if (std::sscanf(kij.c_str(), "%d;%d:%lf", &a, &b, &value) != 3 || a != j || b != i) value = 0;
        tessarel_setkij(&i, &j, &value, err.data(), err.size());
        ASSERT_EQ(host::text(err.data(), err.size()), "No errors");
      }
  };
  tessarel::testing::for_each_reference_row(select, [&](const tessarel::testing::ReferenceFlash& r) {
    const Call found = host::to_inputs(host::at_tp("TP", r.t, r.p), mass);
    const double tolerance = 1e-9 * std::max(1.0, r.sens);
    EXPECT_NEAR(found.v, r.v, tolerance * r.v);
    EXPECT_NEAR(found.h, r.h, tolerance * std::max(std::abs(r.h), 8.3 * r.t));
    EXPECT_NEAR(found.u, r.u, tolerance * std::max(std::abs(r.u), 8.3 * r.t));
    EXPECT_NEAR(found.s, r.s, tolerance * std::max(std::abs(r.s), 8.3));
    if (r.phases == 2)
      EXPECT_NEAR(found.q, r.beta, tolerance);
    else
      EXPECT_TRUE(found.q == 0 || found.q == 1);
  });
}

// The heat capacity at constant P of two phases: differences of h over T, of T over h, and the derivative of the flash.
TEST(TwoPhaseCalls, HeatCapacityOfTwoPhases) {
  const struct {
    Names names;
    Fractions z;
    double t, p;
  } states[] = {{{"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5},
                {gas_names, gas_fractions, 180, 10e5},
                {{"water", "methanol"}, {0.5, 0.5}, 345, 0.7e5}};
  for (const auto& s : states) {
    SCOPED_TRACE(title(s.names, s.t, s.p, 0));
    const Fluid fluid(s.names, s.z);
    const double dt = 2e-3;
    const Call low = fluid.at("TP", s.t - dt, s.p), high = fluid.at("TP", s.t + dt, s.p);
    ASSERT_TRUE(two_phases(low) && two_phases(high));
    const double by_t = (high.h - low.h) / (2 * dt), middle = 0.5 * (low.h + high.h), dh = 0.25 * (high.h - low.h);
    const double by_h = 2 * dh / (fluid.at("Ph", s.p, middle + dh).t - fluid.at("Ph", s.p, middle - dh).t);
    double beta = 0, v = 0, h = 0, entropy = 0;
    std::array<double, 22> dbeta{}, dv{}, of_h{}, ds{};
    std::array<double, 440> dx{}, dy{};
    std::array<char, 100> err{};
    tessarel_flash_sensitivity(&s.t, &s.p, &beta, &v, &h, &entropy, dbeta.data(), dv.data(), of_h.data(), ds.data(),
                               dx.data(), dy.data(), err.data(), err.size());
    EXPECT_NEAR(by_t, of_h[0], 1e-6 * of_h[0]);
    EXPECT_NEAR(by_h, of_h[0], 1e-6 * of_h[0]);
  }
}

// Clapeyron's equation along the saturation line of pure fluids.
TEST(TwoPhaseCalls, Clapeyron) {
  for (const char* name : {"propane", "water", "methanol"}) {
    const Fluid fluid({name}, {1.0});
    for (const double t : {300.0, 330.0, 360.0}) {
      SCOPED_TRACE(title(fluid.names, t, 0, 0));
      const double dt = 2e-3;
      const Call liquid = fluid.at("Tq", t, 0), vapour = fluid.at("Tq", t, 1);
      const double slope = (fluid.at("Tq", t + dt, 1).p - fluid.at("Tq", t - dt, 0).p) / (2 * dt);
      EXPECT_NEAR(slope, (vapour.h - liquid.h) / (t * (vapour.v - liquid.v)), 1e-7 * slope);
      EXPECT_NEAR(slope, (vapour.s - liquid.s) / (vapour.v - liquid.v), 1e-7 * slope);
    }
  }
}

// On the spinodal dp/dv is 0, in units of an ideal gas; the liquid is the denser one.
TEST(TwoPhaseCalls, Spinodal) {
  for (const char* name : {"propane", "water"}) {
    const Fluid fluid({name}, {1.0});
    const double tc = host::session().limits.tc, pc = host::session().limits.pc;
    for (const char* pair : {"Pm", "Tm"}) {
      double liquid = 0;
      for (const double m : {0.0, 1.0}) {
        SCOPED_TRACE(std::string(name) + " " + pair + (m > 0 ? " vapour" : " liquid"));
        Call state;
        state.t = 0.95 * tc;
        state.p = 0.7 * pc;
        state.q = m;
        ASSERT_EQ(state.run(pair, 1).err, "No errors");
        const double unit = 8.31441 * (state.t + 273.15) / (fluid.mass * state.v * state.v);
        EXPECT_NEAR(state.dpdv, 0, 1e-9 * unit);
        const double p = host::at_tv(state.t + 273.15, state.v * fluid.mass).p;
        EXPECT_NEAR(state.p, p, 1e-9 * p);
        EXPECT_GT(state.v, liquid);
        liquid = state.v;
      }
    }
  }
}

// h = u + p v, of the whole and of the phases, and the whole is the mole-weighted mean of the phases.
TEST(TwoPhaseCalls, PhasesOfTmdpropsat) {
  const struct {
    Names names;
    Fractions z;
    double t, p;
  } states[] = {{{"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5},
                {gas_names, gas_fractions, 180, 10e5},
                {{"water", "n-hexane"}, {0.5, 0.5}, 300, 20e5}};
  for (const auto& s : states) {
    SCOPED_TRACE(title(s.names, s.t, s.p, 0));
    const Fluid fluid(s.names, s.z);
    double t = s.t, p = s.p, v = 0, h = 0, entropy = 0, u = 0, q = 0;
    std::array<double, 20> x{}, y{};
    double of_liquid[4] = {}, of_vapour[4] = {};  // v, h, s, u
    std::array<char, 100> err{};
    tessarel_tmdpropsat("TP", &t, &p, &v, &h, &entropy, &u, &q, x.data(), y.data(), of_liquid, of_vapour, of_liquid + 1,
                        of_vapour + 1, of_liquid + 2, of_vapour + 2, of_liquid + 3, of_vapour + 3, err.data(), 2,
                        err.size());
    ASSERT_TRUE(q > 0 && q < 1);
    const double whole[4] = {v, h, entropy, u};
    const double m_x = host::molar_mass({x.begin(), x.end()}), m_y = host::molar_mass({y.begin(), y.end()});
    for (int k = 0; k < 4; ++k)
      EXPECT_NEAR(fluid.mass * whole[k], (1 - q) * m_x * of_liquid[k] + q * m_y * of_vapour[k],
                  1e-12 * fluid.mass * std::abs(whole[k]));
    for (const double* of : {whole, static_cast<const double*>(of_liquid), static_cast<const double*>(of_vapour)})
      EXPECT_NEAR(of[1], of[3] + p * 100 * of[0], 1e-12 * std::abs(of[1]));  // bar m3 in kJ
  }
}

// States at the edge of the two-phase region and a trace of a phase inside.
TEST(TwoPhaseCalls, EntryAndExit) {
  const struct {
    Names names;
    Fractions z;
    double t, p;
  } fluids[] = {{{"propane"}, {1.0}, 300, 5e5},
                {{"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5},
                {{"water", "methanol"}, {0.5, 0.5}, 345, 1e5},
                {gas_names, gas_fractions, 180, 40e5}};
  for (const auto& f : fluids) {
    const Fluid fluid(f.names, f.z);
    for (const double q : {0.0, 1e-9, 1 - 1e-9, 1.0})
      for (const char* pair : {"Pq", "Tq"}) {
        const double given = pair[0] == 'P' ? f.p : f.t;
        const Call known = fluid.at(pair, given, q);
        SCOPED_TRACE(title(f.names, known.t, known.p, q) + pair);
        ASSERT_EQ(known.err, "No errors");
        expect_returned(fluid, known, true);
      }
  }
}

// Absent components change nothing: every pair returns the states of the mixture without them.
TEST(TwoPhaseCalls, AbsentComponents) {
  const struct {
    Names names;
    Fractions z;
    std::vector<std::size_t> present;
  } mixtures[] = {{{"n-hexane", "methane", "n-butane"}, {0, 0.5, 0.5}, {1, 2}},
                  {{"methane", "n-hexane", "n-butane"}, {0.5, 0, 0.5}, {0, 2}},
                  {{"methane", "n-butane", "n-hexane"}, {0.5, 0.5, 0}, {0, 1}},
                  {{"water", "n-hexane", "methanol", "acetone"}, {0.4, 0, 0.6, 0}, {0, 2}},
                  {{"methane", "propane", "n-butane"}, {0, 1, 0}, {1}}};
  for (const auto& m : mixtures) {
    const bool aqueous = m.names[0] == "water", alone = m.present.size() == 1;
    Names names;
    Fractions z;
    for (const std::size_t i : m.present) {
      names.push_back(m.names[i]);
      z.push_back(m.z[i]);
    }
    const double states[][2] = {{aqueous ? 350.0 : 300.0, aqueous ? 1e5 : 40e5},
                                {aqueous ? 330.0 : 260.0, 150e5},
                                {aqueous ? 400.0 : 360.0, 0.5e5}};
    for (const auto& [t, p] : states) {
      SCOPED_TRACE(title(m.names, t, p, 0));
      const Call without = Fluid(names, z).at("TP", t, p);
      const Fluid fluid(m.names, m.z);
      Call known = fluid.at("TP", t, p);
      ASSERT_EQ(known.err, "No errors");
      expect_returned(fluid, known);
      for (std::size_t i = 0; two_phases(known) && i < m.present.size(); ++i) {
        EXPECT_NEAR(known.x[m.present[i]], without.x[i], 1e-10);
        EXPECT_NEAR(known.y[m.present[i]], without.y[i], 1e-10);
      }
      known.x = without.x, known.y = without.y;
      expect_same(fluid, known, without, false, 1e-10);
    }
    if (!alone) continue;
    const auto critical = [] {
      std::array<double, 3> point{};
      std::array<char, 80> err{};
      tessarel_criticalpoint(point.data(), &point[1], &point[2], err.data(), err.size());
      return point;
    };
    ASSERT_EQ(host::select(names, z), "No errors");
    const auto of_pure = critical();
    ASSERT_EQ(host::select(m.names, m.z), "No errors");
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(critical()[i], of_pure[i], 1e-9 * of_pure[i]);
    const Call without = Fluid(names, z).at("Tq", 260, 0.4);
    const Fluid fluid(m.names, m.z);
    Call known = fluid.at("Tq", 260, 0.4);
    expect_returned(fluid, known);
    known.x = without.x, known.y = without.y;
    expect_same(fluid, known, without, false, 1e-10);
  }
}

// The simplified model, which stays with a session: here one of its own.
TEST(TwoPhaseCalls, SimplifiedModel) {
  std::int64_t number = 0, before = 0;
  std::array<char, 100> err{};
  tessarel_session_current(&before);
  tessarel_session_new(&number, err.data(), err.size());
  tessarel_session_use(&number, err.data(), err.size());
  const struct {
    Names names;
    Fractions z;
    double t, p;
  } states[] = {{{"propane"}, {1}, 300, 20e5},
                {{"propane"}, {1}, 300, 2e5},
                {{"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5},
                {{"methane", "n-butane"}, {0.5, 0.5}, 260, 150e5},
                {{"methane", "n-butane"}, {0.5, 0.5}, 360, 10e5},
                {{"water", "n-hexane", "methanol"}, {0.2, 0.5, 0.3}, 330, 1e5}};
  for (const auto& s : states) {
    SCOPED_TRACE(title(s.names, s.t, s.p, 0));
    const Fluid fluid(s.names, s.z, true);
    const Call known = fluid.at("TP", s.t, s.p);
    ASSERT_EQ(known.err, "No errors");
    expect_returned(fluid, known);
    if (s.names.size() == 1) expect_returned(fluid, fluid.at("Tq", s.t, 0.4));
  }
  tessarel_session_use(&before, err.data(), err.size());
  tessarel_session_free(&number, err.data(), err.size());
}

/// Values that no state has, or none within the limits, end in a text and not in the state at the end of the range.
TEST(TwoPhaseCalls, PairsWithoutAState) {
  const struct {
    Names names;
    Fractions z;
    const char* pair;
    double a, b;
  } cases[] = {{{"propane"}, {1}, "hs", -1.2e5, -200},
               {{"n-decane"}, {1}, "hs", -188313.8, 402.3},
               {{"carbon dioxide"}, {1}, "vu", 0.3847, -399e3},
               {{"water"}, {1}, "vs", 0.01, -130},
               {{"propane"}, {1}, "vs", 0.01, -157.38},
               {{"nitrogen"}, {1}, "vu", 3.34e-5, 8702},
               {{"carbon dioxide"}, {1}, "Ps", 6680.44, -5.8839},
               {{"carbon dioxide", "propane"}, {0.6, 0.4}, "vu_new", 0.07849, -295043.8},
               {{"propane"}, {1}, "TP Lph", 1e7, 1e5}};
  for (const auto& c : cases)
    EXPECT_NE(Fluid(c.names, c.z).at(c.pair, c.a, c.b).err, "No errors") << c.names[0] << " " << c.pair;
}

/// A bubble point of given volume, which is less than that at the cricondenbar: the same when it is asked for again,
/// and that of the bubble pressure at its temperature.
TEST(TwoPhaseCalls, BubblePointsOfAVolume) {
  const Fluid fluid({"nitrogen", "n-octane"}, {0.3, 0.7});
  for (const double v : {1.5e-4, 2.1251e-4, 3e-4}) {
    const Call first = fluid.at("vq", v, 0), again = fluid.at("vq", v, 0);
    ASSERT_EQ(first.err, "No errors") << v;
    EXPECT_EQ(first.t, again.t);
    std::array<double, 20> y{};
    std::array<char, 80> err{};
    double p = 0;
    tessarel_calc_bubble_p(&first.t, y.data(), &p, err.data(), err.size());
    EXPECT_NEAR(p, first.p, 1e-8 * first.p);
  }
}

/// The label of one phase is the same before the envelope has been traced and after, also between the average of the
/// critical temperatures and the true one.
TEST(TwoPhaseCalls, LabelsDoNotDependOnEarlierCalls) {
  const struct {
    Names names;
    Fractions z;
    double t[4], p;
  } mixtures[] = {{{"methane", "n-butane"}, {0.5, 0.5}, {300, 320, 345, 400}, 200e5},
                  {{"carbon dioxide", "n-decane", "methane"}, {0.6, 0.25, 0.15}, {330, 400, 450, 520}, 300e5},
                  {{"methane", "n-decane"}, {0.3, 0.7}, {480, 530, 570, 600}, 100e5},
                  {gas_names, gas_fractions, {200, 210, 230, 300}, 90e5},
                  {gas_names, gas_fractions, {205, 215, 230, 300}, 60e5}};
  for (const auto& m : mixtures)
    for (const double t : m.t) {
      SCOPED_TRACE(title(m.names, t, m.p, 0));
      const Fluid fluid(m.names, m.z);
      const double before = fluid.at("TP", t, m.p).q;
      ASSERT_EQ(fluid.at("Pq", 10e5, 1.0).err, "No errors");
      EXPECT_EQ(fluid.at("TP", t, m.p).q, before);
    }
}

/// The solvers of one phase refuse what the property call refuses.
TEST(TwoPhaseCalls, SinglePhaseSolversCheckTheirInput) {
  ASSERT_EQ(host::select({"propane"}, {1.0}), "No errors");
  const auto run = [](auto* solver, double t, double p, double v, double h) {
    std::array<char, 100> err{};
    double u = 0, s = 0;
    solver(&t, &p, &v, &u, &h, &s, err.data(), err.size());
    return host::text(err.data(), err.size()) == "No errors";
  };
  const double nan = std::nan("");
  EXPECT_TRUE(run(tessarel_tv_1ph, 300, 0, 1e-4, 0));
  for (const double v : {nan, 0.0, -1e-4, 1e-6, HUGE_VAL}) EXPECT_FALSE(run(tessarel_tv_1ph, 300, 0, v, 0)) << v;
  for (const double t : {nan, 0.0, -300.0, HUGE_VAL}) EXPECT_FALSE(run(tessarel_tv_1ph, t, 0, 1e-3, 0)) << t;
  for (const double p : {nan, 0.0, -1e5}) EXPECT_FALSE(run(tessarel_tp_lph, 300, p, 0, 0)) << p;
  EXPECT_FALSE(run(tessarel_ph_lph, 0, 1e5, 0, nan));
}

}  // namespace
