// The flash adapters: the fugacity family by code, in bar, for any sum of amounts; reduced properties by identities.
#include "flash/adapters.hpp"

#include <cmath>

#include "common/test_fluid.hpp"
#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "eos/pressure.hpp"
#include "fluid/ideal_gas.hpp"

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
  double v = 0, h = 0, s = 0, u = 0, h_ideal = fluid::calc_icp0mix_dt(f.parameters, 2, x, t),
         s_ideal = fluid::calc_icp0mix_t_dt(f.parameters, 2, x, t) - r * std::log(p);
  for (std::size_t i = 0; i < 2; ++i) h_ideal += x[i] * f.parameters.delhf0[i], s_ideal -= r * x[i] * std::log(x[i]);
  eos::calc_v(f.eos, 2, x, t, p * 1e5, 2, v);
  eos::calc_hsu(f.eos, 2, x, t, p * 1e5, v, h, s, u);
  const double rho = fluid::avogadro_factor / v, p_t = eos::calc_dp_dt(f.eos, 2, x, t, rho),
               p_v = -eos::calc_dp_drho(f.eos, 2, x, t, rho) * rho / v, v_t = -p_t / p_v;
  // Volumes as v / R in K/bar.
  const double reduced = 1e5 / r, residual_cp = eos::calc_cv(f.eos, 2, x, t, rho) + t * p_t * v_t -
                                                fluid::calc_cp0mix(f.parameters, 2, x, t);
  const double expected[] = {(h - h_ideal) / r,       (s - s_ideal) / r,   residual_cp / r, 1 / p - v_t * reduced,
                             (v - t * v_t) * reduced, p_v / 1e5 / reduced, v_t * reduced,   p_v / 1e5 / reduced / t};
  EXPECT_NEAR(z, p * 1e5 * v / (r * t), 1e-12);
  for (std::size_t k = 0; k < 8; ++k) EXPECT_NEAR(aux[2 + k], expected[k], 1e-8 * std::abs(expected[k])) << k;

  // Given the reduced volume; a pressure of 0 is replaced by that of the equation of state.
  flash::Aux by_volume{};
  double unknown = 0;
  flash::auxprop_v(f.eos, 2, x, t, unknown, v * 1e5 / r, by_volume.data());
  EXPECT_NEAR(unknown, p, 1e-8 * p);
  for (std::size_t i = 2; i < by_volume.size(); ++i) EXPECT_NEAR(by_volume[i], aux[i], 1e-7 * std::abs(aux[i])) << i;
}

}  // namespace
}  // namespace tessarel::testing
