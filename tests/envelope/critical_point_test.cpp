// Critical points: averages of a mixture, what a failure leaves, and the two-level search by its own conditions.
#include "envelope/critical_point.hpp"

#include <cmath>

#include "common/test_fluid.hpp"
#include "eos/density.hpp"
#include "eos/helmholtz.hpp"
#include "eos/pressure.hpp"

namespace tessarel::testing {
namespace {

using namespace envelope;

/// At the averages of the components the vapour-like volume is that of the averaged pressure.
TEST(CriticalPoint, AveragesOfAMixture) {
  const TestFluid f({"methane", "propane"}, {0.25, 0.75});
  const fluid::Limits& l = f.limits;
  EXPECT_NEAR(eos::calc_p(f.eos, 2, f.z, l.tc, 1 / l.rhoc), l.pc, 1e-6 * l.pc);
  EXPECT_NEAR(l.rhoc, 8468.80384, 1e-4);
  EXPECT_TRUE(l.tcritherm == l.tc && l.tcribar == l.tc && l.pcritherm == l.pc && l.pcribar == l.pc);
  EXPECT_EQ(TestFluid({"propane"}, {1.0}).limits.tcritherm, 0);
}

/// A failed search leaves its start estimates, and the components behind it unknown.
TEST(CriticalPoint, FailureOfAComponent) {
  TestFluid f({"methane", "chlorine"}, {0.5, 0.5});
  fluid::Limits& l = f.session.limits;
  EXPECT_EQ(critpoint(f.eos, 2, f.z, l), "Critical point: density iteration 1 not converged...");
  EXPECT_EQ(l.tci[1], l.tc);
  EXPECT_DOUBLE_EQ(l.tc, 700 * f.parameters.omega[1] + 150);
  EXPECT_EQ(l.pci[1], 5e6);
  EXPECT_NEAR(l.rhoc, TestFluid({"methane"}, {1.0}).limits.rhoc, 1e-9 * l.rhoc);
  const TestFluid first({"xenon", "methane"}, {0.5, 0.5});
  EXPECT_EQ(first.limits.tci[1], -8888.8);
  EXPECT_EQ(first.limits.rhoc, -8888.8);
}

/// The ends of the two-level search: det Q = 0, and the cubic form 0 along the null vector of Q.
TEST(CriticalPoint, TwoLevelSearch) {
  const TestFluid f({"n-hexane", "toluene"}, {0.5, 0.5});
  for (const double eta : {0.1, 0.2}) {
    double t = 400, rho = eos::calc_rho_eta(f.eos, 2, f.z, 0, t, eta), nn[4], nnn[8], n[2], c = 0;
    EXPECT_EQ(cubic_newton(f.eos, false, 2, f.z, rho, t), 0);
    EXPECT_NEAR(t, 268.06696, 1e-4);
    const double a = eos::calc_a(f.eos, 2, f.z, t, rho);
    eos::calc_da_dn(f.eos, 2, f.z, t, rho, n);
    eos::calc_d2a_dndn(f.eos, 2, f.z, t, rho, nn);
    eos::calc_d3a_dndndn(f.eos, 2, f.z, t, rho, nnn);
    const auto q = [&](std::size_t i, std::size_t j) { return nn[i + 2 * j] + 2 * (a + n[i] + n[j]); };
    EXPECT_NEAR((q(0, 0) * q(1, 1) - q(0, 1) * q(1, 0)) * std::pow(t * t * t / 1e6, 2), 0, 1e-5);
    const double length = std::hypot(q(0, 1), q(0, 0)), d[] = {-q(0, 1) / length, q(0, 0) / length};
    for (std::size_t k = 0; k < 8; ++k) {
      const std::size_t i = k % 2, j = k / 2 % 2, l = k / 4;
      c += (nnn[k] + 3 * (nn[i + 2 * j] + nn[i + 2 * l] + nn[j + 2 * l]) + 6 * (a + n[i] + n[j] + n[l])) * d[i] * d[j] *
           d[l];
    }
    EXPECT_NEAR(c, 0, 1e-9);
  }
  TestFluid far({"methane", "n-decane"}, {0.5, 0.5});
  fluid::Limits& l = far.session.limits;
  EXPECT_EQ(critmixt_newton(far.eos, 2, far.z, l), "Critical point calulation failed...");
  l.tc = 800;
  EXPECT_EQ(critmixt_newton(far.eos, 2, far.z, l), no_errors);
  EXPECT_DOUBLE_EQ(l.pc, eos::calc_p_rho(far.eos, 2, far.z, l.tc, l.rhoc));
  const TestFluid light({"methane", "ethane"}, {0.5, 0.5});
  double t = 300, q[4], rho = eos::calc_rho_eta(light.eos, 2, light.z, 0, t, 0.05);
  EXPECT_EQ(cubic_newton(light.eos, false, 2, light.z, rho, t), 320);
  rho = eos::calc_rho_eta(light.eos, 2, light.z, 0, t = 250, 0.4);
  EXPECT_EQ(det_q_newton(light.eos, false, 2, light.z, rho, t, q), 321);
}

}  // namespace
}  // namespace tessarel::testing
