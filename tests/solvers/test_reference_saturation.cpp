// Critical points and pure-fluid saturation against values computed in 30-digit arithmetic.
#include <cmath>
#include <fstream>
#include <map>

#include "common/reference_fluids.hpp"
#include "envelope/critical_point.hpp"
#include "eos/caloric.hpp"
#include "eos/fugacity.hpp"
#include "solvers/psat_tsat.hpp"

namespace tessarel::testing {
namespace {

using fluid_module::record;

using Values = std::map<std::string, double>;
struct Point {
  std::string kind, fluid, given;
  Values expected;
};

std::vector<Point> read_points() {
  std::vector<Point> points;
  std::ifstream file(std::string(TEST_DATA_DIR) + "/reference/equilibria.csv");
  std::string line;
  std::getline(file, line);
  while (std::getline(file, line)) {
    const auto f = split(line, ',');
    if (f[0] != "critical" && f[0] != "psat" && f[0] != "tsat") continue;
    if (points.empty() || points.back().kind != f[0] || points.back().fluid != f[1] || points.back().given != f[3])
      points.push_back({f[0], f[1], f[3], {}});
    points.back().expected[f[4]] = std::stod(f[5]);
  }
  return points;
}

Values saturation_at(double t) {
  Values v;
  double psat = 0;
  EXPECT_EQ(calc_psat_tsat::calc_psat(t, psat), no_errors) << t;
  double fl = 0, fv = 0, rho_l = 0, rho_v = 0;
  fugacity::calc_lnphi_rho_pure(t, psat, fl, fv, rho_l, rho_v);
  constexpr double a = fluid_module::avogadro_factor;
  double hl = 0, sl = 0, ul = 0, hv = 0, sv = 0, uv = 0;
  calc_hsu_module::calc_hsu(t, psat, a / rho_l, hl, sl, ul);
  calc_hsu_module::calc_hsu(t, psat, a / rho_v, hv, sv, uv);
  v["psat"] = psat;
  v["rho_l"] = rho_l / a;
  v["rho_v"] = rho_v / a;
  v["h_vap"] = hv - hl;
  v["s_vap"] = sv - sl;
  return v;
}

Values evaluate(const Point& point) {
  select_reference({{point.fluid}, {1.0}});
  calc_psat_tsat::calc_ptrange();
  EXPECT_EQ(critical_point_module::critpoint(), no_errors);
  if (point.kind == "critical") return {{"tc", record.tc}, {"pc", record.pc}, {"rhoc", record.rhoc}};
  if (point.kind == "psat") return saturation_at(std::stod(point.given));
  double tsat = 0;
  EXPECT_EQ(calc_psat_tsat::calc_tsat(std::stod(point.given), tsat), no_errors);
  return {{"tsat", tsat}};
}

TEST(ReferenceSaturation, CriticalPointsAndSaturation) {
  const auto points = read_points();
  ASSERT_GT(points.size(), 20U);
  for (const Point& point : points) {
    const double tolerance = point.kind == "critical" ? 1e-5 : 1e-7;
    const Values values = evaluate(point);
    for (const auto& [quantity, expected] : point.expected)
      EXPECT_NEAR(values.at(quantity), expected, tolerance * std::abs(expected))
          << point.kind << " " << point.fluid << " " << point.given << " " << quantity;
  }
}

}  // namespace
}  // namespace tessarel::testing
