// Thermodynamic identities of the fugacity coefficients in mixtures of all kinds.
#include <algorithm>
#include <cmath>

#include "common/test_fluid.hpp"
#include "eos/composition.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "eos/helmholtz.hpp"
#include "eos/pressure.hpp"

namespace tessarel::testing {
namespace {

using namespace eos;

const std::vector<std::vector<std::string>> mixtures = {
    {"methane", "n-butane"},
    {"methane", "ethane", "propane", "n-butane"},
    {"water", "methanol"},
    {"ethanol", "n-hexane", "water"},
    {"acetone", "methanol", "propane"},
    {"carbon dioxide", "acetone"},
    {"nitrogen", "argon", "methane"},
    {"dimethyl ether", "water", "carbon dioxide"},
    {"toluene", "cyclohexane", "n-heptane", "benzene"},
    {"acetone", "carbon dioxide", "water", "methanol"},
};
/// Fractions that are all unlike.
Values unlike(std::size_t n) {
  Values x(n);
  for (std::size_t i = 0; i < n; ++i) x[i] = (1.0 + static_cast<double>(i)) * 2.0 / static_cast<double>(n * (n + 1));
  return x;
}

TEST(FugacityIdentities, GibbsDuhemAndPartialVolumes) {
  for (const auto& names : mixtures) {
    const std::size_t n = names.size();
    const int ni = static_cast<int>(n);
    const Values x = unlike(n);
    const TestFluid f(names, x);
    for (const auto& [t, eta] : {std::pair{450.0, 0.01}, {300.0, 0.45}}) {
      SCOPED_TRACE(names[0] + "/" + names[1] + " eta " + std::to_string(eta));
      const double rho = calc_rho_eta(f.eos, ni, x.data(), 0, t, eta), p = calc_p_rho(f.eos, ni, x.data(), t, rho);
      Values dt(n), dp(n), dx(n * n), dn(n * n), p_n(n);
      calc_lnphi_tpxn(f.eos, ni, x.data(), t, p, rho, dt.data(), dp.data(), dx.data(), dn.data());
      // dlnphi/dp = v_i / R t - 1 / p with the partial molar volume v_i = v + v (dp/dn_i) / (rho dp/drho), the amount
      // taken at constant density: where it would raise the pressure, the density falls.
      calc_dp_dn(f.eos, ni, x.data(), t, rho, p_n.data());
      const double p_rho = calc_dp_drho(f.eos, ni, x.data(), t, rho), v = fluid::avogadro_factor / rho;
      const double size = std::abs(*std::max_element(dn.begin(), dn.end()));
      ASSERT_TRUE(p > 0 && p_rho > 0);
      for (std::size_t j = 0; j < n; ++j) {
        double duhem = 0;
        for (std::size_t i = 0; i < n; ++i) duhem += x[i] * dn[i + n * j];
        EXPECT_NEAR(duhem, 0, 1e-8 * std::max(1.0, size));
        const double z = (v + v * p_n[j] / (rho * p_rho)) * p / (fluid::gas_constant * t);
        EXPECT_NEAR(dp[j] * p, z - 1.0, 1e-9 * std::max(1.0, std::abs(z)));
      }
    }
  }
}

/// The forms that solve for the density agree with those at that density.
TEST(FugacityIdentities, GivenPhaseAndGivenDensityAgree) {
  for (const auto& names : mixtures) {
    const std::size_t n = names.size();
    const int ni = static_cast<int>(n);
    const Values x(n, 1.0 / static_cast<double>(n));
    const TestFluid f(names, x);
    for (const int phase : {1, 2, -1}) {
      const double t = 320, p = phase == 1 ? 2e7 : 1e5;
      double rho = 0;
      calc_rho(f.eos, ni, x.data(), t, p, phase, rho);
      Values given_phase(n), given_density(n), dt(n), dp(n), dn(n * n), dt2(n), dp2(n), dx2(n * n), dn2(n * n);
      calc_lnphi_tpn(f.eos, ni, x.data(), t, p, phase, given_phase.data(), dt.data(), dp.data(), dn.data());
      calc_lnphi_rho(f.eos, ni, x.data(), t, rho, given_density.data());
      calc_lnphi_tpxn(f.eos, ni, x.data(), t, p, rho, dt2.data(), dp2.data(), dx2.data(), dn2.data());
      for (std::size_t i = 0; i < n; ++i) {
        EXPECT_NEAR(given_phase[i], given_density[i], 1e-7 * std::max(1.0, std::abs(given_density[i]))) << names[0];
        EXPECT_EQ(dt[i], dt2[i]);
        EXPECT_EQ(dp[i], dp2[i]);
        for (std::size_t j = 0; j < n; ++j) EXPECT_EQ(dn[i + n * j], dn2[i + n * j]);
      }
    }
  }
}

TEST(FugacityIdentities, PureFormsEqualTheGeneralOnes) {
  for (const auto* name : {"propane", "water", "methanol", "acetone", "carbon dioxide"}) {
    const TestFluid f({name}, {1.0});
    const double t = 0.8 * f.limits.tc, x = 1.0;
    for (const double p : {1e4, 0.1 * f.limits.pc, 0.9 * f.limits.pc}) {
      double l = 0, v = 0, rho_l = 0, rho_v = 0, eta_l = 0, eta_v = 0, general_l = 0, general_v = 0;
      calc_lnphi_rho_pure(f.eos, t, p, l, v, rho_l, rho_v);
      calc_lnphi_eta(f.eos, t, p, eta_l, eta_v);
      calc_lnphi(f.eos, 1, &x, t, p, 1, &general_l);
      calc_lnphi(f.eos, 1, &x, t, p, 2, &general_v);
      EXPECT_EQ(l, eta_l);
      EXPECT_EQ(v, eta_v);
      EXPECT_NEAR(l, general_l, 1e-13 * std::max(1.0, std::abs(l))) << name << " " << p;
      EXPECT_NEAR(v, general_v, 1e-13 * std::max(1.0, std::abs(v))) << name << " " << p;
      double dp_l = 0, dp_v = 0, dt_l = 0, dt_v = 0, general_dp = 0, general_dt = 0;
      calc_dlnphi_dp_rho_pure(t, p, rho_l, rho_v, dp_l, dp_v);
      calc_dlnphi_dt_rho_pure(f.eos, t, p, rho_l, rho_v, dt_l, dt_v);
      calc_dlnphi_dp(f.eos, 1, &x, t, p, 2, &general_dp);
      calc_dlnphi_dt(f.eos, 1, &x, t, p, 2, &general_dt);
      EXPECT_NEAR(dp_v, general_dp, 1e-7 * std::abs(general_dp)) << name << " " << p;
      EXPECT_NEAR(dt_v, general_dt, 1e-7 * std::abs(general_dt)) << name << " " << p;
    }
  }
}

/// Second composition derivatives and the fugacity forms against differences of the order below.
TEST(FugacityIdentities, HigherFormsAgainstDifferences) {
  for (const auto& names : {mixtures[0], mixtures[4], mixtures[9]}) {
    const std::size_t n = names.size();
    const int ni = static_cast<int>(n);
    const TestFluid f(names, Values(n, 1.0 / static_cast<double>(n)));
    const Values x = unlike(n);
    const double t = 330, rho = calc_rho_eta(f.eos, ni, x.data(), 0, t, 0.4);
    ASSERT_GT(calc_p_rho(f.eos, ni, x.data(), t, rho), 0);
    // Derivative of `lower` by the amount (or fraction) k against `higher`, entry block k.
    const auto check = [&](auto lower, auto higher, std::size_t block, bool amounts, int lower_order,
                           const char* what) {
      Values high(block * n), up(block), down(block), up2(block), down2(block);
      higher(f.eos, ni, x.data(), t, rho, high.data());
      const auto at_step = [&](std::size_t k, double step, Values& out) {
        Values moved = x;
        moved[k] += step;
        if (amounts)
          for (double& value : moved) value /= 1.0 + step;
        lower(f.eos, ni, moved.data(), t, rho, out.data());
        // Derivatives by amounts scale with N to the power of minus their order where N is no longer one mole.
        if (amounts)
          for (double& value : out) value /= std::pow(1.0 + step, lower_order);
      };
      constexpr double h = 1e-4;
      for (std::size_t k = 0; k < n; ++k) {
        at_step(k, h, up), at_step(k, -h, down), at_step(k, 2 * h, up2), at_step(k, -2 * h, down2);
        for (std::size_t e = 0; e < block; ++e) {
          const double difference = (8.0 * (up[e] - down[e]) - (up2[e] - down2[e])) / (12.0 * h);
          EXPECT_NEAR(high[e + block * k], difference, 1e-6 * std::max(1.0, std::abs(difference)))
              << what << " " << names[0] << " " << e << " " << k;
        }
      }
    };
    check(calc_lnphi_rho, calc_dlnphi_dn_rho, n, true, 0, "dlnphi_dn");
    check(calc_dlnphi_dx_rho, calc_d2lnphi_dxdx_rho, n * n, false, 1, "d2lnphi_dxdx");
    check(calc_dlnphi_dn_rho, calc_d2lnphi_dndn_rho, n * n, true, 1, "d2lnphi_dndn");
    check(calc_lnfug_rho, calc_dlnfug_dn_rho, n, true, 0, "dlnfug_dn");
    check(calc_dlnfug_dn_rho, calc_d2lnfug_dndn_rho, n * n, true, 1, "d2lnfug_dndn");
    check(calc_d2a_dndn, calc_d3a_dndndn, n * n, true, 2, "d3a_dndndn");
    check(calc_da_dn, calc_d2a_dndn, n, true, 1, "d2a_dndn");
  }
}

}  // namespace
}  // namespace tessarel::testing
