// Critical points and pure-fluid saturation against values computed in 30-digit arithmetic.
#include <cmath>
#include <map>

#include "common/test_fluid.hpp"
#include "envelope/critical_point.hpp"
#include "eos/caloric.hpp"
#include "eos/fugacity.hpp"
#include "solvers/psat_tsat.hpp"

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

}  // namespace
}  // namespace tessarel::testing
