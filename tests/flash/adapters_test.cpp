// The flash adapters: the fugacity family by code, in bar, for any sum of amounts; reduced properties by identities.
#include "flash/adapters.hpp"

#include <cmath>

#include "common/test_fluid.hpp"
#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "eos/pressure.hpp"

namespace tessarel::testing {
namespace {

constexpr double r = fluid::gas_constant;

TEST(Adapters, FugacitiesByCodeAndAmounts) {
  const TestFluid f({"methane", "n-butane"}, {0.4, 0.6});
  const Values x = {0.4, 0.6}, amounts = {2.0, 3.0};
  const double t = 300, p = 12;
  const std::pair<int, int> phases[] = {{1, 1}, {-1, 2}, {0, -1}};
  for (const auto& [mt, phase] : phases) {
    Values expected(2), dt(2), dp(2), dn(4);
    eos::calc_lnphi_tpn(f.eos, 2, x.data(), t, p * 1e5, phase, expected.data(), dt.data(), dp.data(), dn.data());
    for (const int icon : {1, 2, 3, 6, 4}) {
      Values lnphi(2, 9), got_dt(2, 9), got_dp(2, 9), got_dn(4, 9);
      std::int32_t ic = 0, ierr = -5;
      flash::fugacoeff(f.eos, icon, mt, 2, amounts.data(), t, p, lnphi.data(), got_dt.data(), got_dp.data(),
                       got_dn.data(), ic, ierr);
      EXPECT_EQ(ierr, 0);
      EXPECT_EQ(ic, mt == 0 ? 2 : 1);
      for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_NEAR(lnphi[i], icon == 4 ? 0.0 : expected[i], 1e-12);
        EXPECT_NEAR(got_dt[i], icon == 2 || icon == 6 ? dt[i] : 9.0, 1e-12);
        EXPECT_NEAR(got_dp[i], icon == 2 || icon == 6 ? dp[i] * 1e5 : 9.0, 1e-12);
      }
      for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(got_dn[i], icon == 3 || icon == 6 ? dn[i] : 9.0, 1e-10);
    }
  }
  double tc = 0, pc = 0, omega = 0;
  flash::fluiddata(f.parameters, f.limits, 2, tc, pc, omega);
  EXPECT_EQ(tc, f.limits.tci[1]);
  EXPECT_EQ(pc, f.limits.pci[1] / 1e5);
  EXPECT_EQ(omega, f.parameters.omega[1]);
}

TEST(Adapters, ReducedProperties) {
  const TestFluid f({"methane", "n-butane"}, {0.4, 0.6});
  const double* x = f.z;
  const double t = 300;
  double p = 12, z = 0;
  flash::Aux aux{};
  aux[0] = aux[1] = 77;
  flash::auxprop(f.eos, 2, x, t, p, -1, z, aux.data());
  EXPECT_EQ(aux[0], 77);
  EXPECT_EQ(aux[1], 77);
  double v = 0, h = 0, s = 0, u = 0, hi = 0, si = 0, ui = 0;
  eos::calc_v(f.eos, 2, x, t, p * 1e5, 2, v);
  EXPECT_NEAR(z, p * 1e5 * v / (r * t), 1e-12);
  eos::calc_hsu(f.eos, 2, x, t, p * 1e5, v, h, s, u);
  // The ideal gas at the same t and p: a state of vanishing density, its entropy referred to p.
  const double v_dilute = r * t / 1e-3;
  eos::calc_hsu(f.eos, 2, x, t, 1e-3, v_dilute, hi, si, ui);
  const double s_ideal = si - r * std::log(p * 1e5 / 1e-3);
  EXPECT_NEAR(aux[2] * r, h - hi, 1e-6 * std::abs(h - hi));
  EXPECT_NEAR(aux[3] * r, s - s_ideal, 1e-6 * std::abs(s - s_ideal));
  const auto at = [&](double temperature, double pressure, double& volume, double& enthalpy) {
    double entropy = 0, energy = 0;
    eos::calc_v(f.eos, 2, x, temperature, pressure * 1e5, 2, volume);
    eos::calc_hsu(f.eos, 2, x, temperature, pressure * 1e5, volume, enthalpy, entropy, energy);
  };
  const double dt = 0.05, dp = 0.01;
  double v1 = 0, v2 = 0, h1 = 0, h2 = 0, hi1 = 0, hi2 = 0, s1 = 0, u1 = 0;
  at(t + dt, p, v1, h1);
  at(t - dt, p, v2, h2);
  eos::calc_hsu(f.eos, 2, x, t + dt, 1e-3, r * (t + dt) / 1e-3, hi1, s1, u1);
  eos::calc_hsu(f.eos, 2, x, t - dt, 1e-3, r * (t - dt) / 1e-3, hi2, s1, u1);
  // Residual heat capacity at constant pressure, expansion, and the slope of the pressure by the reduced volume.
  EXPECT_NEAR(aux[4], (h1 - hi1 - h2 + hi2) / (2 * dt * r), 1e-5 * std::abs(aux[4]));
  const double dvdt = (v1 - v2) / (2 * dt) * 1e5 / r;
  EXPECT_NEAR(aux[8], dvdt, 1e-6 * dvdt);
  EXPECT_NEAR(aux[5], 1 / p - dvdt, 1e-5 * std::abs(aux[5]));
  EXPECT_NEAR(aux[6], v * 1e5 / r - t * dvdt, 1e-4 * std::abs(aux[6]));
  at(t, p + dp, v1, h1);
  at(t, p - dp, v2, h2);
  EXPECT_NEAR(aux[7], 2 * dp / ((v1 - v2) * 1e5 / r), 1e-5 * std::abs(aux[7]));
  EXPECT_EQ(aux[9], aux[7] / t);

  // Given the reduced volume; a pressure of 0 is replaced by that of the equation of state.
  flash::Aux by_volume{};
  double unknown = 0;
  flash::auxprop_v(f.eos, 2, x, t, unknown, v * 1e5 / r, by_volume.data());
  EXPECT_NEAR(unknown, p, 1e-8 * p);
  for (std::size_t i = 2; i < by_volume.size(); ++i) EXPECT_NEAR(by_volume[i], aux[i], 1e-7 * std::abs(aux[i])) << i;
}

}  // namespace
}  // namespace tessarel::testing
