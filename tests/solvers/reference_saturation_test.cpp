// Critical points and pure-fluid saturation against values computed in 30-digit arithmetic.
#include <cmath>
#include <map>

#include "common/test_fluid.hpp"
#include "envelope/critical_point.hpp"
#include "eos/caloric.hpp"
#include "eos/fugacity.hpp"
#include "solvers/equal_areas.hpp"
#include "solvers/psat_tsat.hpp"
#include "solvers/pure_saturation.hpp"

namespace tessarel::testing {
namespace {

using Named = std::map<std::string, double>;
Named saturation_at(const eos::Fluid& f, double t) {
  Named v;
  double psat = 0;
  EXPECT_EQ(solvers::calc_psat(f, t, psat), no_errors) << t;
  double fl = 0, fv = 0, rho_l = 0, rho_v = 0;
  eos::calc_lnphi_rho_pure(f.eos, t, psat, fl, fv, rho_l, rho_v);
  constexpr double a = fluid::avogadro_factor;
  double hl = 0, sl = 0, ul = 0, hv = 0, sv = 0, uv = 0;
  eos::calc_hsu(f.eos, f.n, f.z, t, psat, a / rho_l, hl, sl, ul);
  eos::calc_hsu(f.eos, f.n, f.z, t, psat, a / rho_v, hv, sv, uv);
  v["psat"] = psat;
  v["rho_l"] = rho_l / a;
  v["rho_v"] = rho_v / a;
  v["h_vap"] = hv - hl;
  v["s_vap"] = sv - sl;
  return v;
}

Named evaluate(const std::string& kind, const std::string& fluid, double given) {
  TestFluid f(Mixture(fluid), "", false);
  fluid::Limits& limits = f.session.limits;
  solvers::calc_ptrange(f.parameters, limits);
  EXPECT_EQ(envelope::critpoint(f.eos, f.n, f.z, limits), no_errors);
  if (kind == "critical") return {{"tc", limits.tc}, {"pc", limits.pc}, {"rhoc", limits.rhoc}};
  if (kind == "psat") return saturation_at(f.fluid(), given);
  double tsat = 0;
  EXPECT_EQ(solvers::calc_tsat(f.fluid(), given, tsat), no_errors);
  return {{"tsat", tsat}};
}

TEST(ReferenceSaturation, CriticalPointsAndSaturation) {
  int rows = 0;
  for (const auto& f : read_reference("equilibria.csv")) {
    if (f[0] != "critical" && f[0] != "psat" && f[0] != "tsat") continue;
    const double expected = std::stod(f[5]), tolerance = f[0] == "critical" ? 1e-5 : 1e-7;
    EXPECT_NEAR(evaluate(f[0], f[1], std::strtod(f[3].c_str(), nullptr)).at(f[4]), expected,
                tolerance * std::abs(expected))
        << f[0] << " " << f[1] << " " << f[3] << " " << f[4];
    ++rows;
  }
  EXPECT_GT(rows, 60);
}

/// Shipped fluids at their lowest temperature and at 0.99, 0.999 and 0.9999 of their critical one: by the quick way, by
/// the search between the spinodals behind it, and back to the temperature.
TEST(ReferenceSaturation, EndsOfTheLine) {
  int rows = 0;
  for (const auto& f : read_reference("saturation_critical.csv")) {
    SCOPED_TRACE(f[0] + " " + f[1]);
    const TestFluid selected({f[0]}, {1.0});
    const eos::Fluid fluid = selected.fluid();
    const double t = std::stod(f[1]), p = std::stod(f[2]), rho_l = std::stod(f[3]), rho_v = std::stod(f[4]);
    solvers::PureSaturation found;
    EXPECT_EQ(solvers::saturation_at_t(fluid, t, found), no_errors);
    EXPECT_NEAR(found.p, p, 1e-9 * p);
    const double tolerance = t > 0.9995 * fluid.limits.tc ? 1e-6 : 1e-9;
    EXPECT_NEAR(1.0 / found.v_l, rho_l, tolerance * rho_l);
    EXPECT_NEAR(1.0 / found.v_v, rho_v, tolerance * rho_v);
    const Arena::Frame frame(fluid.eos.arena());
    eos::MixtureState<double> state;
    prepare(fluid.eos, state, 1, fluid.z, 0, t);
    solvers::Packings packings;
    double bounded = 0, back = 0;
    EXPECT_TRUE(solvers::equal_areas_between_spinodals(state, nullptr, packings, bounded));
    EXPECT_NEAR(bounded, p, 1e-9 * p);
    if (p > 0.1) {
      EXPECT_EQ(solvers::calc_tsat(fluid, p, back), no_errors);
      EXPECT_NEAR(back, t, 1e-11 * t);
    }
    ++rows;
  }
  EXPECT_EQ(rows, 56);
}

}  // namespace
}  // namespace tessarel::testing
