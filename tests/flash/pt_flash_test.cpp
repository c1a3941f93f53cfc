// The flash at temperature and pressure and its steps against reference equilibria and independent solutions.
#include "flash/pt_flash.hpp"

#include <random>

#include "common/reference_flashes.hpp"
#include "flash/rachford_rice.hpp"
#include "flash/stability.hpp"

namespace tessarel::testing {
namespace {

using flash::at;
using flash::Vector;

double molar_volume(const flash::PtResult& r) {
  if (!r.two_phases()) return fluid::avogadro_factor / r.single.rho;
  return fluid::avogadro_factor * ((1.0 - r.beta) / r.split.liquid.rho + r.beta / r.split.vapour.rho);
}

TEST(PtFlash, ReferenceStates) {
  for_each_reference_flash([](const TestFluid& f, const ReferenceFlash& r) {
    const auto got = flash::flmain(f.fluid(), r.t, r.p, false, nullptr, nullptr);
    ASSERT_EQ(got.code, r.phases == 2 ? 0 : 3);
    const double tolerance = 1e-9 * std::max(1.0, r.sens);
    EXPECT_NEAR(molar_volume(got), r.v, tolerance * r.v);
    if (r.phases != 2) return;
    EXPECT_NEAR(got.beta, r.beta, tolerance);
    for (std::size_t i = 0; i < r.x.size(); ++i) {
      EXPECT_NEAR(got.x[i], r.x[i], tolerance);
      EXPECT_NEAR((1.0 - got.beta) * got.x[i] + got.beta * got.y[i], f.z[i], 1e-14);
    }
    EXPECT_LE(got.split.vapour.rho, got.split.liquid.rho);
    EXPECT_LE(got.split.error, 1e-11);
    // The same from its own solution and from one at another state.
    Vector x = got.x, y = got.y;
    for (const double change : {1.0, 1.001}) {
      x[0] = -std::abs(x[0]);
      double beta = 0;
      const Message message = flash::calc_pt_flash(f.fluid(), r.t, r.p * change, x.data(), y.data(), beta);
      EXPECT_TRUE(ok(message) || change > 1);
      if (!ok(message)) std::copy_n(f.z, f.n, x.begin()), std::copy_n(f.z, f.n, y.begin());
    }
    x[0] = -std::abs(x[0]);
    double beta = 0;
    const Message again = flash::calc_pt_flash(f.fluid(), r.t, r.p, x.data(), y.data(), beta);
    EXPECT_EQ(again, no_errors);
    EXPECT_NEAR(beta, got.beta, 1e-11 * std::max(1.0, r.sens));
  });
}

/// The substitutions, which the quick route forestalls, end in the same split, and the minimiser too.
TEST(PtFlash, StepsLeadToTheSolution) {
  const TestFluid f({"methane", "n-butane", "propane"}, {0.5, 0.3, 0.2});
  const eos::Fluid fluid = f.fluid();
  const auto solution = flash::flmain(fluid, 290, 30e5, false, nullptr, nullptr);
  ASSERT_EQ(solution.code, 0);
  const auto feed = flash::make_feed(fluid, 290, 30e5);
  flash::Substitution s;
  s.lnk = feed.wilson;
  for (int pass = 0; pass < 60; ++pass) {
    flash::dirsub(feed, s);
    s.lnk = s.lnk_new;
  }
  EXPECT_NEAR(s.beta, solution.beta, 1e-7);
  EXPECT_LT(s.errmax, 1e-8);
  EXPECT_NEAR(s.gmix, solution.split.change, 1e-12);
  EXPECT_LT(s.gmix, -1e-3);
  Values x(3), y(3);
  for (std::size_t i = 0; i < 3; ++i) {
    y[i] = 0.5 * solution.beta * solution.y[i];
    x[i] = f.z[i] - y[i];
  }
  EXPECT_TRUE(flash::solmin(feed.c, f.z, feed.gibbs, x.data(), y.data()));
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(y[i], solution.beta * solution.y[i], 1e-11);
    EXPECT_NEAR(x[i] + y[i], f.z[i], 1e-14);
  }
}

/// hebmin from both sides, with and without the early end; the trivial solution is recognised.
TEST(PtFlash, StabilityTest) {
  const TestFluid f({"methane", "n-butane"}, {0.5, 0.5});
  const eos::Fluid fluid = f.fluid();
  for (const double p : {40e5, 250e5}) {
    const auto feed = flash::make_feed(fluid, 300, p);
    const double* known[] = {f.z};
    for (const double sign : {1.0, -1.0})
      for (const bool early : {true, false}) {
        Vector y{};
        for (std::size_t i = 0; i < 2; ++i) y[i] = f.z[i] * std::exp(sign * feed.wilson[i]);
        const auto test = flash::hebmin(feed.c, f.z, feed.d.data(), known, early, y.data());
        EXPECT_EQ(test.split, p < 1e7);
        EXPECT_EQ(test.conv, p < 1e7 && early ? 1 : 2);
        EXPECT_EQ(test.trivial, p > 1e7);
        if (early || p > 1e7) continue;
        // A stationary point: ln Y_i + lnphi_i(Y) = d_i.
        flash::Phase trial;
        const double sum = flash::set_composition(trial, 2, y.data());
        flash::evaluate(feed.c, trial);
        for (std::size_t i = 0; i < 2; ++i) EXPECT_NEAR(std::log(y[i]) + trial.lnphi[i], feed.d[i], 1e-6);
        EXPECT_NEAR(test.tm, 1.0 - sum, 1e-6);
      }
  }
}

/// Rachford-Rice with K over twenty decades, against bisection.
TEST(PtFlash, MaterialBalance) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  int inside = 0;
  for (int trial = 0; trial < 2000; ++trial) {
    const int n = 2 + trial % 19;
    Values z(at(n)), lnk(at(n)), x(at(n)), y(at(n));
    double sum = 0;
    for (double& v : z) sum += v = std::pow(unit(random), 8.0);
    for (double& v : z) v /= sum;
    for (double& v : lnk) v = 46.0 * (unit(random) - 0.5) * unit(random);
    const auto f = [&](double beta) {
      double value = 0;
      for (std::size_t i = 0; i < z.size(); ++i) {
        const double k = std::exp(lnk[i]);
        value += z[i] * (k - 1.0) / (1.0 - beta + beta * k);
      }
      return value;
    };
    double beta = 0.5, exact = 0.3, plain = 0.5;
    flash::solrac(n, z.data(), lnk.data(), x.data(), y.data(), beta);
    if (!(f(0) > 0 && f(1) < 0)) {
      EXPECT_TRUE(beta == 0 || beta == 1);
      continue;
    }
    ++inside;
    double lo = 0, hi = 1;
    for (int k = 0; k < 200; ++k) (f(0.5 * (lo + hi)) > 0 ? lo : hi) = 0.5 * (lo + hi);
    EXPECT_NEAR(beta, lo, 2e-8);
    flash::rr_solve(n, z.data(), lnk.data(), x.data(), y.data(), plain);
    EXPECT_NEAR(plain, lo, 2e-7);
    ASSERT_TRUE(flash::solve_balance(n, z.data(), lnk.data(), x.data(), y.data(), exact));
    EXPECT_NEAR(exact, lo, 1e-15 + 1e-12 * std::min(lo, 1.0 - lo));
  }
  EXPECT_GT(inside, 500);
}

/// Cold densities of the phase search against the density iteration, where that finds them.
TEST(PtFlash, RootsAreThoseOfTheDensityIteration) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  for (const auto& names : {std::vector<std::string>{"methane", "n-butane"}, {"water", "n-hexane"}}) {
    const TestFluid f(names, {0.5, 0.5});
    for (int k = 0; k < 300; ++k) {
      const double t = (0.5 + 0.8 * unit(random)) * f.limits.tc, p = 1e3 * std::pow(3e4, unit(random));
      const double x1 = unit(random), x[2] = {x1, 1.0 - x1};
      double near[2];
      eos::RootMemory roots;
      for (double& value : near) {
        Values lnphi(2), expected(2);
        const double rho =
            eos::calc_lnphi_near(f.eos, 2, x, t, p, eos::Root::lower_gibbs, roots, {.lnphi = lnphi.data()});
        eos::calc_lnphi(f.eos, 2, x, t, p, -1, expected.data());
        for (std::size_t i = 0; i < 2; ++i) EXPECT_NEAR(lnphi[i], expected[i], 1e-9) << names[0] << t << " " << p;
        value = rho;
      }
      EXPECT_NEAR(near[1], near[0], 1e-13 * near[0]);  // from its own memory
    }
  }
}

}  // namespace
}  // namespace tessarel::testing
