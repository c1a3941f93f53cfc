// Saturation, critical point and spinodal of every shipped fluid: equilibrium, the inverse, the order of the branches,
// without a failure from the lowest temperature to the critical point.
#include <cmath>
#include <filesystem>

#include "common/test_fluid.hpp"
#include "envelope/critical_point.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "eos/pressure.hpp"
#include "solvers/psat_tsat.hpp"
#include "solvers/spinodal.hpp"

namespace tessarel::testing {
namespace {

using namespace solvers;
using eos::Fluid;

constexpr int grid_points = 20;

/// Checks a converged point; `psat` is the pressure found.
void check_point(const Fluid& f, double t, double psat) {
  double lnphi_l = 0, lnphi_v = 0, rho_l = 0, rho_v = 0;
  eos::calc_lnphi_rho_pure(f.eos, t, psat, lnphi_l, lnphi_v, rho_l, rho_v);
  EXPECT_GT(rho_l, rho_v);
  EXPECT_NEAR(lnphi_l, lnphi_v, 1e-6);
  const double one = 1.0;
  // A liquid far from its critical point is stiff: its pressure is known to the rounding of the density.
  const double rounding = eos::calc_dp_drho(f.eos, 1, &one, t, rho_l) * rho_l * 1e-11;
  EXPECT_NEAR(eos::calc_p_rho(f.eos, 1, &one, t, rho_l), psat, 1e-7 * psat + rounding);
  EXPECT_NEAR(eos::calc_p_rho(f.eos, 1, &one, t, rho_v), psat, 1e-7 * psat);
}

TEST(ShippedSaturation, EveryFluid) {
  int fluids = 0;
  for (const auto& file : std::filesystem::directory_iterator(std::string(PROJECT_DIR) + "/data/fluids")) {
    const std::string name = file.path().stem().string();
    SCOPED_TRACE(name);
    const TestFluid selected({name}, {1.0});
    const Fluid f = selected.fluid();
    ++fluids;
    fluid::Limits found;
    ASSERT_EQ(envelope::critpoint(f.eos, f.n, f.z, found), no_errors);
    // The critical point by its definition: both derivatives vanish, against the size they have away from it.
    const double eta = eos::calc_eta_rho(f.eos, 1, f.z, 0, f.limits.tc, f.limits.rhoc * fluid::avogadro_factor);
    const auto slopes = eos::calc_p_deta(f.eos, 1, 1, f.limits.tc, eta);
    EXPECT_NEAR(slopes.dp_deta / f.limits.pc, 0, 1e-5);
    EXPECT_NEAR(slopes.d2p_deta2 / f.limits.pc, 0, 1e-2);
    EXPECT_NEAR(slopes.p, f.limits.pc, 1e-6 * f.limits.pc);

    const double low = f.limits.tlowest, tc = f.limits.tc;
    Values points;
    for (int k = 0; k <= grid_points; ++k) points.push_back(low + (0.999 * tc - low) * k / grid_points);
    for (const double distance : {1e-4, 1e-5, 1e-6, 1e-7, 1e-9}) points.push_back((1.0 - distance) * tc);
    double last = 0;
    for (const double t : points) {
      if (low >= tc) break;
      SCOPED_TRACE(t);
      double psat = 0, tsat = 0;
      ASSERT_EQ(calc_psat(f, t, psat), no_errors);
      EXPECT_GT(psat, last);
      EXPECT_LT(psat, f.limits.pc);
      last = psat;
      if (psat >= 0.1) {
        ASSERT_EQ(calc_tsat(f, psat, tsat), no_errors);
        EXPECT_NEAR(tsat, t, 1e-11 * t);
      }
      if (t > 0.9995 * tc) continue;
      check_point(f, t, psat);
      double pliq = 0, pvap = 0;
      EXPECT_EQ(calc_pspin(f, t, pliq, pvap), no_errors);
      EXPECT_LT(pliq, psat);
      EXPECT_GT(pvap, psat);
    }
    // The liquid's spinodal temperature has its bracket at any pressure.
    for (const double fraction : {1e-6, 1e-3, 0.3}) {
      double tliq = 0, tvap = 0, pliq = 0, pvap = 0;
      const double p = std::max(fraction * f.limits.pc, 0.1);
      calc_tspin(f, p, tliq, tvap);
      ASSERT_GT(tliq, 0.5 * tc);
      EXPECT_EQ(calc_pspin(f, tliq, pliq, pvap), no_errors);
      EXPECT_NEAR(pliq, p, 1e-5 * p);
    }
  }
  EXPECT_EQ(fluids, 247);
}

/// Spinodal temperatures give the pressure back, by Brent's method and by bisection.
TEST(ShippedSaturation, SpinodalTemperatures) {
  for (const auto& [name, fractions] :
       {std::pair{"propane", Values{0.3, 0.6, 0.9}}, {"n-butane", {0.6}}, {"water", {0.6, 0.9}}, {"acetone", {0.6}}}) {
    SCOPED_TRACE(name);
    const TestFluid selected({name}, {1.0});
    const Fluid f = selected.fluid();
    double tliq = 0, tvap = 0, pliq = 0, pvap = 0, vliq = 0, vvap = 0;
    // At low pressure the vapour's limit lies below the range, not the liquid's.
    EXPECT_EQ(calc_tspin(f, 1e-3 * f.limits.pc, tliq, tvap), "Brent method for spinodal: root not bracketed");
    ASSERT_EQ(calc_pspin(f, tliq, pliq, pvap), no_errors);
    EXPECT_NEAR(pliq, 1e-3 * f.limits.pc, 1e-6 * f.limits.pc);
    for (const double fraction : fractions) {
      const double p = fraction * f.limits.pc;
      ASSERT_EQ(calc_tspin(f, p, tliq, tvap), no_errors);
      ASSERT_EQ(calc_pspin(f, tliq, pliq, pvap), no_errors);
      EXPECT_NEAR(pliq, p, 1e-6 * p);
      ASSERT_EQ(calc_pspin(f, tvap, pliq, pvap), no_errors);
      EXPECT_NEAR(pvap, p, 1e-6 * p);
      ASSERT_EQ(calc_vspin(f, tvap, vliq, vvap), no_errors);
      EXPECT_LT(vliq, vvap);
      EXPECT_NEAR(eos::calc_p(f.eos, 1, f.z, tvap, vliq), pliq, 1e-6 * p);
      EXPECT_NEAR(eos::calc_p(f.eos, 1, f.z, tvap, vvap), pvap, 1e-6 * p);
      double tsat = 0, bisected = 0;
      ASSERT_EQ(calc_tsat(f, p, tsat), no_errors);
      EXPECT_GT(tliq, tsat);
      EXPECT_LT(tvap, tsat);
      EXPECT_EQ(bisec_spin(f, 1, p, f.limits.tc, 0.9 * tsat, bisected), no_errors);
      EXPECT_NEAR(bisected, tliq, 1e-7);
    }
  }
}

TEST(ShippedSaturation, LimitsAndMessages) {
  const TestFluid selected({"propane"}, {1.0});
  const Fluid f = selected.fluid();
  double value = 0, other = 0;
  EXPECT_EQ(calc_psat(f, f.limits.tlowest - 1e-6, value), "Temperature less than minimum temperature...");
  EXPECT_EQ(value, -8888.8);
  EXPECT_EQ(calc_psat(f, f.limits.tlowest, value), no_errors);
  EXPECT_EQ(calc_psat(f, f.limits.tc + 5e-9, value), no_errors);
  EXPECT_EQ(value, f.limits.pc);
  EXPECT_EQ(calc_psat(f, f.limits.tc + 1e-3, value), "Temperature greater than critical temperature...");
  EXPECT_EQ(calc_tsat(f, 0.0999, value), "Pressure less than minimum pressure...");
  EXPECT_EQ(calc_tsat(f, 0.1001, value), no_errors);
  EXPECT_LT(value, f.limits.tlowest);
  double liquid = 0, vapour = 1, density[2];
  eos::calc_lnphi_rho_pure(f.eos, value, 0.1001, liquid, vapour, density[0], density[1]);
  EXPECT_NEAR(liquid, vapour, 1e-9);
  EXPECT_EQ(calc_tsat(f, f.limits.pc, value), no_errors);
  EXPECT_EQ(value, f.limits.tc);
  EXPECT_EQ(calc_tsat(f, f.limits.pc * 1.001, value), "Pressure greater than critical pressure...");
  constexpr Message beyond = "T > Tc or T > Tcricondentherm, while saturation state expected...";
  EXPECT_EQ(calc_pspin(f, f.limits.tc + 1, value, other), beyond);
  EXPECT_EQ(calc_pspin(f, f.limits.tc, value, other), no_errors);
  EXPECT_EQ(value, f.limits.pc);
  EXPECT_EQ(other, f.limits.pc);
  EXPECT_EQ(calc_tspin(f, f.limits.pc * 1.1, value, other), beyond);

  // The limits of a mixture: its cricondentherm, and the ranges that the components share.
  TestFluid mixture({"methane", "propane"}, {0.25, 0.75});
  fluid::Limits& limits = mixture.session.limits;
  limits.tcritherm = limits.tc + 10;
  EXPECT_NE(calc_pspin(mixture.fluid(), limits.tc + 5, value, other), beyond);
  EXPECT_EQ(calc_pspin(mixture.fluid(), limits.tc + 11, value, other), beyond);
  mixture.session.model.parameters.tmax[1] = 600;
  EXPECT_EQ(calc_ptrange(mixture.parameters, limits), no_errors);
  EXPECT_EQ(limits.thighest, 600);
}

}  // namespace
}  // namespace tessarel::testing
