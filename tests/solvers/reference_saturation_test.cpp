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
struct Point {
  std::string kind, fluid, given;
  Named expected;
};

std::vector<Point> read_points() {
  std::vector<Point> points;
  for (const auto& f : read_reference("equilibria.csv")) {
    if (f[0] != "critical" && f[0] != "psat" && f[0] != "tsat") continue;
    if (points.empty() || points.back().kind != f[0] || points.back().fluid != f[1] || points.back().given != f[3])
      points.push_back({f[0], f[1], f[3], {}});
    points.back().expected[f[4]] = std::stod(f[5]);
  }
  return points;
}

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

Named evaluate(const Point& point) {
  TestFluid f(Mixture(point.fluid), "", false);
  fluid::Limits& limits = f.session.limits;
  solvers::calc_ptrange(f.parameters, limits);
  EXPECT_EQ(envelope::critpoint(f.eos, f.n, f.z, limits), no_errors);
  if (point.kind == "critical") return {{"tc", limits.tc}, {"pc", limits.pc}, {"rhoc", limits.rhoc}};
  if (point.kind == "psat") return saturation_at(f.fluid(), std::stod(point.given));
  double tsat = 0;
  EXPECT_EQ(solvers::calc_tsat(f.fluid(), std::stod(point.given), tsat), no_errors);
  return {{"tsat", tsat}};
}

TEST(ReferenceSaturation, CriticalPointsAndSaturation) {
  const auto points = read_points();
  ASSERT_GT(points.size(), 20U);
  for (const Point& point : points) {
    const double tolerance = point.kind == "critical" ? 1e-5 : 1e-7;
    const Named values = evaluate(point);
    for (const auto& [quantity, expected] : point.expected)
      EXPECT_NEAR(values.at(quantity), expected, tolerance * std::abs(expected))
          << point.kind << " " << point.fluid << " " << point.given << " " << quantity;
  }
}

}  // namespace
}  // namespace tessarel::testing
