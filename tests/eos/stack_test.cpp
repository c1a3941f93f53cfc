// Identities of the derivative stack, and its members at states that the reference table does not have.
#include <cmath>
#include <limits>
#include <random>

#include "common/test_fluid.hpp"
#include "eos/caloric.hpp"
#include "eos/compressibility.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "eos/helmholtz.hpp"
#include "eos/pressure.hpp"

namespace tessarel::testing {
namespace {

using namespace eos;

struct Case {
  std::vector<std::string> names;
  Values x;
  double t, eta;
  bool simplified = false;
};

const std::vector<Case> cases = {
    {{"propane"}, {1.0}, 300, 0.38},
    {{"methane", "n-butane", "n-decane"}, {0.5, 0.3, 0.2}, 320, 0.3},
    {{"methane", "n-butane", "n-decane"}, {0.5, 0.3, 0.2}, 320, 0.02},
    {{"methane", "n-butane"}, {0.4, 0.6}, 320, 0.3, true},
    {{"methanol"}, {1.0}, 330, 0.4},
    {{"water", "methanol"}, {0.6, 0.4}, 350, 0.4},
    {{"ethanol", "n-hexane", "water"}, {0.3, 0.3, 0.4}, 400, 0.05},
    {{"acetone", "carbon dioxide"}, {0.4, 0.6}, 310, 0.3},
    {{"acetone", "carbon dioxide", "methanol", "methane"}, {0.3, 0.2, 0.2, 0.3}, 330, 0.35},
};

struct CaseFluid : TestFluid {
  explicit CaseFluid(const Case& c) : TestFluid(c.names, c.x) { eos.simplified = c.simplified; }
};

/// All fractions count as 1 where no component is named.
TEST(Stack, PressureByEtaOfAllComponents) {
  const TestFluid f({"methane", "n-butane"}, {0.4, 0.6});
  const double ones[] = {1.0, 1.0}, t = 300, eta = 0.3;
  const double rho = calc_rho_eta(f.eos, 2, ones, 0, t, eta);
  EXPECT_DOUBLE_EQ(calc_p_deta(f.eos, 2, 0, t, eta).p, calc_p_rho(f.eos, 2, ones, t, rho));
}

TEST(Stack, Projections) {
  for (const Case& c : cases) {
    const CaseFluid f(c);
    const int n = f.n;
    const auto size = c.x.size();
    const double rho = calc_rho_eta(f.eos, n, c.x.data(), 0, c.t, c.eta);
    Values a_n(size), z_n(size), a_rx(size), z_x(size), p_x(size);
    calc_da_dn(f.eos, n, c.x.data(), c.t, rho, a_n.data());
    calc_dz_dn(f.eos, n, c.x.data(), c.t, rho, z_n.data());
    calc_d2a_drhodx(f.eos, n, c.x.data(), c.t, rho, a_rx.data());
    calc_dz_dx(f.eos, n, c.x.data(), c.t, rho, z_x.data());
    calc_dp_dx(f.eos, n, c.x.data(), c.t, rho, p_x.data());
    double weighted_a = 0, weighted_z = 0;
    for (std::size_t i = 0; i < size; ++i) {
      weighted_a += c.x[i] * a_n[i];
      weighted_z += c.x[i] * z_n[i];
      EXPECT_NEAR(rho * a_rx[i], z_x[i], 1e-12 * std::abs(z_x[i]));
      EXPECT_NEAR(p_x[i], fluid::pressure_factor * c.t * rho * z_x[i], 1e-12 * std::abs(p_x[i]));
    }
    EXPECT_NEAR(weighted_a, 0, 1e-12 * std::max(1.0, std::abs(a_n[0])));
    // The density follows the amount, so the weighted sum is rho z_rho; the difference has an error of about 1e-9.
    const double expected = rho * calc_dz_drho(f.eos, n, c.x.data(), 0, c.t, rho);
    EXPECT_NEAR(weighted_z, expected, 1e-7 * std::max(1.0, std::abs(expected))) << c.names[0];
  }
}

/// Second derivative of the pressure by amounts at constant volume, from pressures alone.
TEST(Stack, PressureByAmountsAtConstantVolume) {
  for (const Case& c : cases) {
    if (c.x.size() < 2) continue;
    const CaseFluid f(c);
    const int n = f.n;
    const auto size = c.x.size();
    const double rho = calc_rho_eta(f.eos, n, c.x.data(), 0, c.t, c.eta);
    Values p_nn(size * size);
    calc_d2p_dndn(f.eos, n, c.x.data(), c.t, rho, p_nn.data());
    const auto pressure = [&](std::size_t i, double di, std::size_t j, double dj) {
      Values amount = c.x;
      amount[i] += di;
      amount[j] += dj;
      double total = 0;
      for (const double value : amount) total += value;
      for (double& value : amount) value /= total;
      return calc_p_rho(f.eos, n, amount.data(), c.t, rho * total);
    };
    const double h = 1e-3;
    double largest = 0;
    for (const double value : p_nn) largest = std::max(largest, std::abs(value));
    for (std::size_t i = 0; i < size; ++i)
      for (std::size_t j = 0; j < size; ++j)
        EXPECT_NEAR(p_nn[i + size * j],
                    (pressure(i, h, j, h) - pressure(i, h, j, -h) - pressure(i, -h, j, h) + pressure(i, -h, j, -h)) /
                        (4 * h * h),
                    1e-4 * largest)
            << c.names[0] << " " << i << "," << j;
  }
}

/// A mixture of a component with itself is the pure fluid; a component alone does not read the fractions.
TEST(Stack, EqualComponentsAndComponentsAlone) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const auto* name : {"propane", "methanol", "acetone", "carbon dioxide"}) {
    const double t = 320;
    const TestFluid f({name}, {1.0});
    const double one = 1.0;
    const double rho = calc_rho_eta(f.eos, 1, &one, 0, t, 0.46);
    const double a = calc_a(f.eos, 1, &one, t, rho), a_t = calc_da_dt(f.eos, 1, &one, t, rho);
    double lnphi = 0;
    calc_lnphi_rho(f.eos, 1, &one, t, rho, &lnphi);
    const TestFluid twice({name, name}, {0.3, 0.7});
    const double x[2] = {0.3, 0.7}, unread[2] = {nan, nan};
    EXPECT_NEAR(calc_a(twice.eos, 2, x, t, rho), a, 1e-11 * std::abs(a)) << name;
    EXPECT_NEAR(calc_da_dt(twice.eos, 2, x, t, rho), a_t, 1e-11 * std::abs(a_t)) << name;
    double both[2];
    calc_lnphi_rho(twice.eos, 2, x, t, rho, both);
    EXPECT_NEAR(both[0], lnphi, 1e-9 * std::abs(lnphi)) << name;
    const TestFluid unlike({"n-butane", name}, {0.3, 0.7});
    const auto same = [&](auto property, double tolerance) {
      const double alone = property(f.eos, 1, &one, 0), second = property(unlike.eos, 2, unread, 2);
      EXPECT_NEAR(second, alone, tolerance * std::max(1.0, std::abs(alone))) << name;
    };
    same([&](auto&&... of) { return calc_z(of..., t, rho); }, 1e-13);
    same([&](auto&&... of) { return calc_d3z_drho3(of..., t, rho); }, 1e-13);
    same([&](auto&&... of) { return calc_eta_rho(of..., t, rho); }, 1e-15);
    same([&](auto&&... of) { return calc_rho_eta(of..., t, 0.3); }, 1e-15);
    same([&](auto& eos, int n, auto*, int i) { return calc_p_deta(eos, n, i, t, 0.3).d2p_deta2; }, 1e-12);
  }
}

/// The only dipole beside quadrupoles, and the only quadrupole beside dipoles, at fraction 0 and in traces: derivatives
/// continue those at small fractions.
TEST(Stack, PolarTraces) {
  const double t = 300, rho = 0.009;
  for (const auto& names : {std::vector<std::string>{"carbon dioxide", "acetone"},
                            {"acetone", "carbon dioxide"},
                            {"carbon dioxide", "benzene q", "acetone"}}) {
    const std::size_t n = names.size();
    const TestFluid f(names, Values(n, 1.0 / static_cast<double>(n)));
    const auto derivatives = [&](double trace) {
      Values x = n == 3 ? Values{0.5, 0.5, trace} : Values{1.0, trace};
      const int count = static_cast<int>(n);
      Values all(n + n * n + n * n * n);
      calc_da_dx(f.eos, count, x.data(), t, rho, all.data());
      calc_d2a_dxdx(f.eos, count, x.data(), t, rho, all.data() + n);
      calc_d3a_dxdxdx(f.eos, count, x.data(), t, rho, all.data() + n + n * n);
      return all;
    };
    // Extrapolated to 0 from two fractions where nothing is lost; the error is of second order in them.
    const Values one = derivatives(1e-5), two = derivatives(2e-5);
    for (const double trace : {0.0, 1e-300, 1e-30, 1e-12}) {
      const Values at_trace = derivatives(trace);
      for (std::size_t k = 0; k < one.size(); ++k)
        EXPECT_NEAR(at_trace[k], 2.0 * one[k] - two[k], 2e-6 * (1.0 + std::abs(one[k])))
            << names[0] << "/" << names[n - 1] << " " << trace << " entry " << k;
    }
  }
}

/// Of twenty components the first nine alone.
TEST(Stack, FirstComponentsOfMany) {
  const std::vector<std::string> kinds = {"water", "acetone", "carbon dioxide", "methane"};
  std::vector<std::string> names;
  for (std::size_t i = 0; i < 20; ++i) names.push_back(kinds[i % 4]);
  const TestFluid twenty(names, Values(20, 0.05)), nine({names.begin(), names.begin() + 9}, Values(9, 1.0 / 9));
  Values x(9, 0.1), of_twenty(729), of_nine(729);
  x[3] = 0.2;
  calc_d3a_dxdxdx(twenty.eos, 9, x.data(), 320, 0.006, of_twenty.data());
  calc_d3a_dxdxdx(nine.eos, 9, x.data(), 320, 0.006, of_nine.data());
  EXPECT_EQ(of_twenty, of_nine);
}

TEST(Stack, NothingIsLeftOfAnEarlierSelection) {
  TestFluid f(Mixture("acetone:0.2|carbon dioxide:0.3|water:0.5"), "1;2:1111", false);
  select_reference(f.session, Mixture("propane"));
  const auto& sites = f.session.model.of<Association>();
  const auto& polar = f.session.model.of<Polar>();
  EXPECT_TRUE(sites.classes.empty() && sites.bonds.empty() && sites.first_associating == fluid::nmax);
  EXPECT_TRUE(polar.first_polar == fluid::nmax && polar.last_type < polar.first_type);
  for (std::size_t k = 0; k < 3; ++k) EXPECT_TRUE(polar.pairs[k].empty() && polar.triplets[k].empty());
  EXPECT_TRUE(f.session.model.of<Dispersion>().constant_energies);
}

/// The root of lower Gibbs energy, what other codes of the phase give, and the slope of z along the vapour.
TEST(Stack, RootsByPhase) {
  const TestFluid propane({"propane"}, {1.0}), mixture({"methane", "n-butane"}, {0.4, 0.6});
  const auto density = [](const TestFluid& f, double p, int phase) {
    double rho = 0;
    calc_rho(f.eos, f.n, f.z, 300, p, phase, rho);
    return rho;
  };
  for (const TestFluid* f : {&propane, &mixture}) {
    for (const double p : {5e5, 2e6}) {
      EXPECT_GT(density(*f, p, 1), 1.5 * density(*f, p, 2));
      EXPECT_EQ(density(*f, p, -1), density(*f, p, p == 5e5 ? 2 : 1));
    }
    EXPECT_TRUE(std::isnan(density(*f, 1e5, 0)) && std::isnan(density(*f, 1e5, 3)) && std::isnan(density(*f, 1e5, -2)));
    const auto z = [&](double p) { return calc_z(f->eos, f->n, f->z, 0, 300, density(*f, p, 2)); };
    const double slope = calc_dz_dp(f->eos, f->n, f->z, 300, 4e5);
    EXPECT_NEAR(slope, (z(4e5 + 100) - z(4e5 - 100)) / 200, 1e-6 * std::abs(slope));
  }
  for (const int phase : {0, 3, -1}) {
    double v = 1;
    EXPECT_EQ(calc_v(propane.eos, 1, propane.z, 300, 1e5, phase, v), "Phase code of the density must be 1 or 2...");
    EXPECT_EQ(v, -8888.8);
  }
}

/// Bonds that are NaN or infinite are equal to nothing, not even to themselves; the classes of alike sites still end.
TEST(Stack, OddBondsGiveNoNumbersButEnd) {
  for (const double odd : {std::nan(""), HUGE_VAL}) {
    TestFluid f({"methanol", "water"}, {0.5, 0.5});
    f.session.model.parameters.kap_hb[0][1] = f.session.model.parameters.kap_hb[1][0] = odd;
    f.session.model.parameters.eps_hb[0][1][0][1] = odd;
    f.session.update();
    EXPECT_FALSE(std::isfinite(calc_a(f.eos, 2, f.z, 300, 0.01)));
  }
}

/// Strong association, dense and dilute, cold and hot: every call returns, and what it returns is a number.
TEST(Stack, RandomStatesGiveNumbers) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  for (const auto& names : {std::vector<std::string>{"water"}, {"water", "methanol"}}) {
    const TestFluid f(names, Values(names.size(), 1.0 / static_cast<double>(names.size())));
    const int n = f.n;
    const auto size = static_cast<std::size_t>(n);
    for (int k = 0; k < 150; ++k) {
      // The largest association energies are about 2500 K: 42 K is 60 times below.
      const double t = 42.0 * std::pow(30.0, unit(random));
      const double eta = std::pow(10.0, -8.0 * unit(random)) * 0.74;
      Values x(size), a_xxx(size * size * size);
      double sum = 0;
      for (double& value : x) sum += value = 0.01 + unit(random);
      for (double& value : x) value /= sum;
      const double rho = calc_rho_eta(f.eos, n, x.data(), 0, t, eta);
      SCOPED_TRACE(names[0] + " t " + std::to_string(t) + " eta " + std::to_string(eta));
      EXPECT_TRUE(std::isfinite(calc_a(f.eos, n, x.data(), t, rho)));
      EXPECT_TRUE(std::isfinite(calc_d3a_dt3(f.eos, n, x.data(), t, rho)));
      calc_d3a_dxdxdx(f.eos, n, x.data(), t, rho, a_xxx.data());
      for (const double value : a_xxx) EXPECT_TRUE(std::isfinite(value));
      double v = 0;
      const double p = std::pow(10.0, 8.0 * unit(random));
      calc_v(f.eos, n, x.data(), t, p, 1 + k % 2, v);
      EXPECT_TRUE(std::isfinite(v)) << p;
    }
  }
}

}  // namespace
}  // namespace tessarel::testing
