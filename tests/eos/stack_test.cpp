// The derivative stack: every member against a fourth-order difference of the one below, and its identities.
#include <cmath>
#include <functional>
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

/// A member as an array function of the state; scalars are arrays of one.
using Member = std::function<Values(const Eos& eos, const Values& x, double t, double rho)>;

template <class F>
Member scalar(F f) {
  return [f](const Eos& eos, const Values& x, double t, double rho) {
    return Values{f(eos, static_cast<int>(x.size()), x.data(), t, rho)};
  };
}
template <class F>
Member mixture_z(F f) {
  return scalar([f](const Eos& eos, int n, const double* x, double t, double rho) { return f(eos, n, x, 0, t, rho); });
}
template <class F>
Member array(F f, int rank) {
  return [f, rank](const Eos& eos, const Values& x, double t, double rho) {
    Values out(static_cast<std::size_t>(std::pow(x.size(), rank) + 0.5));
    f(eos, static_cast<int>(x.size()), x.data(), t, rho, out.data());
    return out;
  };
}

enum class By { t, rho, x };
struct Step {
  const char* name;
  Member lower;
  By by;
  Member higher;
};

const std::vector<Step>& steps() {
  static const std::vector<Step> table = {
      {"da_dt", scalar(calc_a), By::t, scalar(calc_da_dt)},
      {"d2a_dt2", scalar(calc_da_dt), By::t, scalar(calc_d2a_dt2)},
      {"d3a_dt3", scalar(calc_d2a_dt2), By::t, scalar(calc_d3a_dt3)},
      {"da_drho", scalar(calc_a), By::rho, scalar(calc_da_drho)},
      {"d2a_drho2", scalar(calc_da_drho), By::rho, scalar(calc_d2a_drho2)},
      {"d3a_drho3", scalar(calc_d2a_drho2), By::rho, scalar(calc_d3a_drho3)},
      {"d4a_drho4", scalar(calc_d3a_drho3), By::rho, scalar(calc_d4a_drho4)},
      {"da_dx", scalar(calc_a), By::x, array(calc_da_dx, 1)},
      {"d2a_dxdx", array(calc_da_dx, 1), By::x, array(calc_d2a_dxdx, 2)},
      {"d3a_dxdxdx", array(calc_d2a_dxdx, 2), By::x, array(calc_d3a_dxdxdx, 3)},
      {"d2a_dtdx", array(calc_da_dx, 1), By::t, array(calc_d2a_dtdx, 1)},
      {"d2a_drhodx", array(calc_da_dx, 1), By::rho, array(calc_d2a_drhodx, 1)},
      {"dz_dt", mixture_z(calc_z), By::t, scalar(calc_dz_dt)},
      {"d2z_dt2", scalar(calc_dz_dt), By::t, scalar(calc_d2z_dt2)},
      {"dz_drho", mixture_z(calc_z), By::rho, mixture_z(calc_dz_drho)},
      {"d2z_drho2", mixture_z(calc_dz_drho), By::rho, mixture_z(calc_d2z_drho2)},
      {"d3z_drho3", mixture_z(calc_d2z_drho2), By::rho, mixture_z(calc_d3z_drho3)},
      {"d2z_dtdrho", scalar(calc_dz_dt), By::rho, scalar(calc_d2z_dtdrho)},
      {"dz_dx", mixture_z(calc_z), By::x, array(calc_dz_dx, 1)},
      {"d2z_dxdx", array(calc_dz_dx, 1), By::x, array(calc_d2z_dxdx, 2)},
      {"dp_dt", scalar(calc_p_rho), By::t, scalar(calc_dp_dt)},
      {"d2p_dt2", scalar(calc_dp_dt), By::t, scalar(calc_d2p_dt2)},
      {"dp_drho", scalar(calc_p_rho), By::rho, scalar(calc_dp_drho)},
      {"d2p_drho2", scalar(calc_dp_drho), By::rho, scalar(calc_d2p_drho2)},
      {"d3p_drho3", scalar(calc_d2p_drho2), By::rho, scalar(calc_d3p_drho3)},
      {"d2p_dtdrho", scalar(calc_dp_drho), By::t, scalar(calc_d2p_dtdrho)},
      {"dp_dx", scalar(calc_p_rho), By::x, array(calc_dp_dx, 1)},
      {"dcv_dt", scalar(calc_cv), By::t, scalar(calc_dcv_dt)},
  };
  return table;
}

/// The derivative of `f` by component or variable: (8 (f(+h) - f(-h)) - (f(+2h) - f(-2h))) / 12 h, error of order h^4.
Values difference(const Eos& eos, const Step& step, const Values& x, double t, double rho, std::size_t component) {
  const double h = step.by == By::t ? 1e-3 * t : step.by == By::rho ? 1e-3 * rho : 1e-3;
  const auto at = [&](double factor) {
    Values moved = x;
    if (step.by == By::x) moved[component] += factor * h;
    return step.lower(eos, moved, step.by == By::t ? t + factor * h : t, step.by == By::rho ? rho + factor * h : rho);
  };
  const Values a = at(1), b = at(-1), c = at(2), d = at(-2);
  Values out(a.size());
  for (std::size_t i = 0; i < out.size(); ++i) out[i] = (8.0 * (a[i] - b[i]) - (c[i] - d[i])) / (12.0 * h);
  return out;
}

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

TEST(Stack, EveryMemberAgainstDifferences) {
  for (const Case& c : cases) {
    const CaseFluid f(c);
    const int n = f.n;
    const double rho = calc_rho_eta(f.eos, n, c.x.data(), 0, c.t, c.eta);
    for (const Step& step : steps()) {
      // Fractions of a pure fluid are not read by most members.
      if (step.by == By::x && n == 1) continue;
      const Values high = step.higher(f.eos, c.x, c.t, rho);
      double largest = 0;
      for (const double value : high) largest = std::max(largest, std::abs(value));
      const std::size_t directions = step.by == By::x ? c.x.size() : 1;
      for (std::size_t k = 0; k < directions; ++k) {
        const Values expected = difference(f.eos, step, c.x, c.t, rho, k);
        for (std::size_t i = 0; i < expected.size(); ++i)
          EXPECT_NEAR(high[i + expected.size() * k], expected[i], 2e-7 * largest)
              << step.name << " " << c.names[0] << " eta " << c.eta << " entry " << i << "," << k;
      }
    }
  }
}

/// All fractions count as 1 where no component is named.
TEST(Stack, PressureByEtaOfAllComponents) {
  const TestFluid f({"methane", "n-butane"}, {0.4, 0.6});
  const double ones[] = {1.0, 1.0}, t = 300, eta = 0.3;
  const double rho = calc_rho_eta(f.eos, 2, ones, 0, t, eta);
  EXPECT_DOUBLE_EQ(calc_p_deta(f.eos, 2, 0, t, eta).p, calc_p_rho(f.eos, 2, ones, t, rho));
}

TEST(Stack, SymmetryAndProjections) {
  for (const Case& c : cases) {
    const CaseFluid f(c);
    const int n = f.n;
    const auto size = c.x.size();
    const double rho = calc_rho_eta(f.eos, n, c.x.data(), 0, c.t, c.eta);
    Values a_n(size), z_n(size), a_xx(size * size), a_xxx(size * size * size);
    calc_da_dn(f.eos, n, c.x.data(), c.t, rho, a_n.data());
    calc_dz_dn(f.eos, n, c.x.data(), c.t, rho, z_n.data());
    calc_d2a_dxdx(f.eos, n, c.x.data(), c.t, rho, a_xx.data());
    calc_d3a_dxdxdx(f.eos, n, c.x.data(), c.t, rho, a_xxx.data());
    double weighted_a = 0, weighted_z = 0;
    for (std::size_t i = 0; i < size; ++i) {
      weighted_a += c.x[i] * a_n[i];
      weighted_z += c.x[i] * z_n[i];
      for (std::size_t j = 0; j < size; ++j) {
        EXPECT_NEAR(a_xx[i * size + j], a_xx[j * size + i], 1e-9 * std::abs(a_xx[i * size + j]));
        for (std::size_t k = 0; k < size; ++k)
          EXPECT_NEAR(a_xxx[(i * size + j) * size + k], a_xxx[(k * size + i) * size + j],
                      1e-8 * std::abs(a_xxx[(i * size + j) * size + k]) + 1e-9);
      }
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
    const double a = calc_a(f.eos, 1, &one, t, rho), z = calc_z(f.eos, 1, &one, 0, t, rho),
                 a_t = calc_da_dt(f.eos, 1, &one, t, rho);
    const double z3 = calc_d3z_drho3(f.eos, 1, &one, 0, t, rho);
    double lnphi = 0;
    calc_lnphi_rho(f.eos, 1, &one, t, rho, &lnphi);
    const TestFluid twice({name, name}, {0.3, 0.7});
    const double x[2] = {0.3, 0.7}, unread[2] = {nan, nan};
    EXPECT_NEAR(calc_a(twice.eos, 2, x, t, rho), a, 1e-11 * std::abs(a)) << name;
    EXPECT_NEAR(calc_da_dt(twice.eos, 2, x, t, rho), a_t, 1e-11 * std::abs(a_t)) << name;
    double both[2];
    calc_lnphi_rho(twice.eos, 2, x, t, rho, both);
    EXPECT_NEAR(both[0], lnphi, 1e-9 * std::abs(lnphi)) << name;
    for (const int ipure : {0, 1, 2}) {
      const double* fractions = ipure == 0 ? x : unread;
      EXPECT_NEAR(calc_z(twice.eos, 2, fractions, ipure, t, rho), z, 1e-10 * std::max(1.0, std::abs(z)))
          << name << ipure;
      EXPECT_NEAR(calc_d3z_drho3(twice.eos, 2, fractions, ipure, t, rho), z3, 1e-9 * std::abs(z3)) << name << ipure;
    }
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

/// Strong association, dense and dilute, cold and hot: every call returns, and what it returns is a number.
TEST(Stack, RandomStatesGiveNumbers) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  const std::vector<std::vector<std::string>> mixtures = {
      {"water"}, {"water", "methanol"}, {"ethanol", "water", "acetone"}, {"carbon dioxide", "acetone", "methanol"}};
  for (const auto& names : mixtures) {
    const TestFluid f(names, Values(names.size(), 1.0 / static_cast<double>(names.size())));
    const int n = f.n;
    const auto size = static_cast<std::size_t>(n);
    for (int k = 0; k < 150; ++k) {
      // The largest association energies are about 2500 K: 42 K is 60 times below.
      const double t = 42.0 * std::pow(30.0, unit(random));
      const double eta = std::pow(10.0, -8.0 * unit(random)) * 0.74;
      Values x(size), lnphi(size), dt(size), dp(size), dx(size * size), dn(size * size), a_xxx(size * size * size);
      double sum = 0;
      for (double& value : x) sum += value = 0.01 + unit(random);
      for (double& value : x) value /= sum;
      const double rho = calc_rho_eta(f.eos, n, x.data(), 0, t, eta);
      SCOPED_TRACE(names[0] + " t " + std::to_string(t) + " eta " + std::to_string(eta));
      EXPECT_TRUE(std::isfinite(calc_a(f.eos, n, x.data(), t, rho)));
      EXPECT_TRUE(std::isfinite(calc_d3a_dt3(f.eos, n, x.data(), t, rho)));
      EXPECT_TRUE(std::isfinite(calc_d4a_drho4(f.eos, n, x.data(), t, rho)));
      EXPECT_TRUE(std::isfinite(calc_z(f.eos, n, x.data(), 0, t, rho)));
      calc_d3a_dxdxdx(f.eos, n, x.data(), t, rho, a_xxx.data());
      for (const double value : a_xxx) EXPECT_TRUE(std::isfinite(value));
      double v = 0;
      const double p = std::pow(10.0, 8.0 * unit(random));
      calc_v(f.eos, n, x.data(), t, p, 1 + k % 2, v);
      EXPECT_TRUE(std::isfinite(v)) << p;
      calc_lnphi_tpxn(f.eos, n, x.data(), t, p, rho, dt.data(), dp.data(), dx.data(), dn.data());
      for (const double value : dn) EXPECT_TRUE(std::isfinite(value));
    }
  }
}

}  // namespace
}  // namespace tessarel::testing
