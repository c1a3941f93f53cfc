// The building blocks put together by hand, as a host would, against the evaluations; and the one-pass and fixed-state
// routines against the members that they bundle.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "common/reference_fluids.hpp"
#include "tessarel/routines.h"

namespace tessarel {
namespace {

using fluid_module::record;
using Values = std::vector<double>;
constexpr double pi = 3.14159265359, pi_6 = 0.5235987755983333;

std::size_t z(int i) {
  return static_cast<std::size_t>(i);
}

/// All building blocks of a state that a and z need.
struct Blocks {
  int n, ipure = 0;
  Values x;
  double t, rho;
  Values d, dij, g, dg, eps, sig_ij, eps_ij, deltaab, ddeltaab, delta_t0, xnhb, dxnhb, j2, j3, dj2, dj3;
  double zeta[4]{}, mbar = 0, c1 = 0, dc1 = 0, i1 = 0, i2 = 0, di1 = 0, di2 = 0, m2es3 = 0, m2e2s3 = 0;
  double a2[3]{}, a3[3]{}, da2[3]{}, da3[3]{};
  std::int32_t status = 0;

  Blocks(const Values& fractions, double temperature, double density)
      : n(record.n), x(fractions), t(temperature), rho(density) {
    const auto size = z(n);
    for (Values* v : {&d, &eps}) v->resize(size);
    for (Values* v : {&dij, &g, &dg, &sig_ij, &eps_ij}) v->resize(size * size);
    for (Values* v : {&deltaab, &ddeltaab, &delta_t0}) v->resize(size * size * 25);
    for (Values* v : {&xnhb, &dxnhb}) v->resize(size * 5);
    for (Values* v : {&j2, &dj2}) v->resize(3 * size * size);
    for (Values* v : {&j3, &dj3}) v->resize(3 * size * size * size);
    for (std::size_t i = 0; i < size; ++i) mbar += x[i] * record.mseg[i];
    tessarel_set_mmean(&n, x.data(), &ipure);
    tessarel_calc_d(&n, &ipure, &t, d.data());
    tessarel_calc_dij(&n, d.data(), dij.data());
    for (int k = 0; k < 4; ++k) tessarel_calc_zeta(&n, x.data(), &ipure, &rho, d.data(), &k, &zeta[k]);
    if (record.is_simp) {
      tessarel_calc_g_simp(&zeta[3], g.data());
      tessarel_calc_dg_drho_simp(&zeta[3], dg.data());
    } else {
      tessarel_calc_gij(&n, &ipure, d.data(), &zeta[2], &zeta[3], g.data());
      tessarel_calc_dgij_drho(&n, &ipure, d.data(), &zeta[2], &zeta[3], dg.data());
    }
    tessarel_calc_c1(&zeta[3], &c1);
    tessarel_calc_dc1_deta(&zeta[3], &c1, &dc1);
    tessarel_calc_sigeps(&n, &ipure, &t, eps.data(), sig_ij.data(), eps_ij.data());
    tessarel_calc_pertterm(&n, x.data(), &ipure, &t, sig_ij.data(), eps_ij.data(), &m2es3, &m2e2s3);
    tessarel_calc_intgpert(&zeta[3], &i1, &i2);
    tessarel_calc_dintgpert_deta(&zeta[3], &di1, &di2);
    Values plain_dg = dg;  // the strengths take the plain derivative
    for (double& value : plain_dg) value /= rho;
    const Values ones(size * size, 1.0);
    tessarel_calc_deltaab(&n, &ipure, &t, sig_ij.data(), g.data(), deltaab.data());
    tessarel_calc_deltaab(&n, &ipure, &t, sig_ij.data(), ones.data(), delta_t0.data());
    tessarel_calc_ddeltaab_drho(&n, &ipure, &t, sig_ij.data(), g.data(), plain_dg.data(), ddeltaab.data());
    tessarel_calc_xnhb(&n, x.data(), &ipure, &rho, deltaab.data(), xnhb.data(), &status);
    tessarel_calc_dxnhb_drho(&n, x.data(), &ipure, &rho, deltaab.data(), xnhb.data(), ddeltaab.data(), dxnhb.data(),
                             &status);
    const double eta_rho = zeta[3] / rho;
    tessarel_calc_j2j3(&n, &t, &zeta[3], eps.data(), j2.data(), j3.data());
    tessarel_calc_dj2j3_drho(&n, &t, &zeta[3], eps.data(), &eta_rho, dj2.data(), dj3.data());
    tessarel_calc_a2a3(&n, x.data(), &ipure, &t, &rho, j2.data(), j3.data(), a2, a3);
    tessarel_calc_da2a3_drho(&n, x.data(), &ipure, &t, &rho, j2.data(), j3.data(), dj2.data(), dj3.data(), da2, da3);
  }

  [[nodiscard]] double contact(int i) const { return g[record.is_simp ? 0 : z(i + n * i)]; }
  [[nodiscard]] double contact_slope(int i) const { return dg[record.is_simp ? 0 : z(i + n * i)]; }
  [[nodiscard]] bool closed() const { return record.is_simp || n == 1; }

  [[nodiscard]] double association() const {
    double sum = 0;
    for (int i = 0; i < n; ++i)
      for (int a = 0; a < record.nhb_typ[z(i)]; ++a) {
        const double unbonded = xnhb[z(i + n * a)];
        sum += x[z(i)] * record.nhb_no[z(i)][z(a)] * (std::log(unbonded) + (1 - unbonded) / 2);
      }
    return sum;
  }
  [[nodiscard]] double polar() const {
    double sum = 0;
    for (int k = 0; k < 3; ++k) sum += a2[k] == 0 ? 0 : a2[k] / (1 - a3[k] / a2[k]);
    return sum;
  }
  /// a as the sum of its terms.
  [[nodiscard]] double a() const {
    double hs = 0;
    const double free = 1 - zeta[3];
    if (closed())
      tessarel_calc_a_hs_simp(&zeta[3], &hs);
    else
      hs = (3 * zeta[1] * zeta[2] / free + std::pow(zeta[2], 3) / (zeta[3] * free * free) +
            (std::pow(zeta[2], 3) / (zeta[3] * zeta[3]) - zeta[0]) * std::log(free)) /
           zeta[0];
    double chain = 0;
    for (int i = 0; i < n; ++i) chain += x[z(i)] * (record.mseg[z(i)] - 1) * std::log(contact(i));
    return mbar * hs - chain - pi * rho * (2 * i1 * m2es3 + mbar * c1 * i2 * m2e2s3) + association() + polar();
  }
  /// z as the sum of its terms.
  [[nodiscard]] double compressibility() const {
    double hs = 0;
    const double eta = zeta[3], free = 1 - eta;
    if (closed())
      tessarel_calc_z_hs_simp(&eta, &hs);
    else
      hs = (eta + (3 * zeta[1] + (3 - eta) * zeta[2] * zeta[2] / free) * zeta[2] / (zeta[0] * free)) / free;
    double chain = 0, assoc = 0, pol = 0;
    for (int i = 0; i < n; ++i) {
      chain += x[z(i)] * (record.mseg[z(i)] - 1) * contact_slope(i) / contact(i);
      for (int s = 0; s < record.nhb_typ[z(i)]; ++s)
        assoc += rho * x[z(i)] * record.nhb_no[z(i)][z(s)] * (1 / xnhb[z(i + n * s)] - 0.5) * dxnhb[z(i + n * s)];
    }
    for (int k = 0; k < 3; ++k) {
      if (a2[k] == 0) continue;
      const double r = a3[k] / a2[k];
      pol += rho / (1 - r) * (da2[k] - (r * da2[k] - da3[k]) / (1 - r));
    }
    return 1 + mbar * hs - chain - pi * rho * (2 * di1 * m2es3 + mbar * m2e2s3 * (c1 * di2 + dc1 * i2 * eta)) + assoc +
           pol;
  }
};

struct State {
  const char* components;
  bool simplified;
  double t, rho;
};
constexpr State states[] = {
    {"water:0.3|acetone:0.45|carbon dioxide:0.25", false, 290, 0.012},
    {"methane:0.4|n-butane:0.6", false, 350, 0.004},
    {"methanol:0.6|carbon dioxide:0.4", true, 410, 0.006},
    {"three sites:1", false, 300, 0.01},
    {"acetone:0.2|three sites:0.8", false, 320, 0.009},
    {"carbon dioxide:1", false, 280, 0.011},
};

class Assembled : public ::testing::TestWithParam<State> {
 protected:
  void SetUp() override {
    const auto mixture = testing::parse_components(GetParam().components);
    testing::select_reference(mixture, mixture.names.size() > 1 ? "1;2:0.03" : "", GetParam().simplified);
    x_ = mixture.x;
  }
  Values x_;
};
INSTANTIATE_TEST_SUITE_P(States, Assembled, ::testing::ValuesIn(states));

TEST_P(Assembled, BlocksGiveTheEvaluations) {
  const auto& s = GetParam();
  const Blocks b(x_, s.t, s.rho);
  double a = 0, compressibility = 0;
  tessarel_calc_a(&b.n, b.x.data(), &b.t, &b.rho, &a);
  tessarel_calc_z(&b.n, b.x.data(), &b.ipure, &b.t, &b.rho, &compressibility);
  EXPECT_EQ(b.status, 0);
  EXPECT_NEAR(b.a(), a, 1e-12 * (1 + std::abs(a)));
  EXPECT_NEAR(b.compressibility(), compressibility, 1e-11 * (1 + std::abs(compressibility)));
}

TEST_P(Assembled, MeanDiameterGivesTheSamePackingFraction) {
  const Blocks b(x_, GetParam().t, GetParam().rho);
  double diameter = 0, eta = 0;
  tessarel_calc_d_avg_simp(&b.n, b.x.data(), b.d.data(), &diameter);
  tessarel_calc_eta_simp(&b.n, b.x.data(), &b.rho, &diameter, &eta);
  EXPECT_NEAR(eta, b.zeta[3], 1e-14);
}

TEST_P(Assembled, FixedStateGivesPressureAndDensity) {
  const auto& s = GetParam();
  const Blocks b(x_, s.t, s.rho);
  double moment[3] = {0, 0, 0}, volume = 0;
  for (std::size_t i = 0; i < b.x.size(); ++i) {
    const double xm = pi_6 * b.x[i] * record.mseg[i];
    for (int k = 0; k < 3; ++k) moment[k] += xm * std::pow(b.d[i], k);
    volume += xm * std::pow(b.d[i], 3);
  }
  const double conv = 1 / volume;
  const auto at = [&](auto routine, double eta) {
    std::array<double, 3> f{};
    routine(&b.n, b.x.data(), &b.t, &eta, &moment[0], &moment[1], &moment[2], &conv, b.d.data(), b.dij.data(), &b.m2es3,
            &b.m2e2s3, b.delta_t0.data(), &f[0], &f[1], &f[2]);
    return f;
  };
  const double eta = b.zeta[3], h = 1e-4 * eta;
  double p = 0, slope = 0, curvature = 0;
  tessarel_calc_p_rho(&b.n, b.x.data(), &b.t, &b.rho, &p);
  tessarel_calc_dp_drho(&b.n, b.x.data(), &b.t, &b.rho, &slope);
  tessarel_calc_d2p_drho2(&b.n, b.x.data(), &b.t, &b.rho, &curvature);
  const auto f = at(tessarel_calc_p_eta12, eta);
  const double ideal = 13806622.169047227 * b.t * b.rho;
  EXPECT_NEAR(f[0], p, 1e-10 * (std::abs(p) + ideal));
  EXPECT_NEAR(f[1], slope * conv, 1e-9 * std::abs(slope * conv));
  EXPECT_NEAR(f[2], curvature * conv * conv, 1e-8 * std::abs(curvature * conv * conv));
  // The two terms by themselves: absent or not, and derivatives of each other.
  for (const auto routine : {tessarel_calc_z_ass_eta12, tessarel_calc_z_pol_eta12}) {
    const auto value = at(routine, eta), up = at(routine, eta + h), down = at(routine, eta - h);
    const bool present = routine == tessarel_calc_z_ass_eta12 ? record.is_assoc : record.is_polar;
    EXPECT_EQ(value[0] != 0, present);
    EXPECT_NEAR(value[1], (up[0] - down[0]) / (2 * h), 1e-6 * (std::abs(value[1]) + std::abs(value[0])));
    EXPECT_NEAR(value[2], (up[1] - down[1]) / (2 * h), 1e-6 * (std::abs(value[2]) + std::abs(value[1])));
  }
  // The iteration from a dense start finds the liquid-like root of calc_rho.
  const double target = 50e5;
  const std::int32_t liquid = 1;
  double root = 0.7, rho = 0;
  std::array<char, 80> err{};
  tessarel_densiter(&b.n, b.x.data(), &b.t, &target, &moment[0], &moment[1], &moment[2], &conv, b.d.data(),
                    b.dij.data(), &b.m2es3, &b.m2e2s3, b.delta_t0.data(), &root, err.data(), err.size());
  tessarel_calc_rho(&b.n, b.x.data(), &b.t, &target, &liquid, &rho);
  EXPECT_EQ(trimmed({err.data(), err.size()}), "No errors");
  EXPECT_NEAR(root * conv, rho, 1e-9 * rho);
}

TEST_P(Assembled, OnePassRoutinesEqualTheMembers) {
  const Blocks b(x_, GetParam().t, GetParam().rho);
  const double eta = b.zeta[3];
  const auto same = [](double one_pass, double member) {
    EXPECT_NEAR(one_pass, member, 1e-12 * (1 + std::abs(member)));
  };
  double g[4], expected = 0;
  tessarel_calc_g_rho123_simp(&eta, &g[0], &g[1], &g[2], &g[3]);
  // The closed forms as they stand in the literature.
  same(g[0], (1 - eta / 2) / std::pow(1 - eta, 3));
  same(g[1], (2.5 - eta) * eta / std::pow(1 - eta, 4));
  same(g[2], 3 * eta * eta * (3 - eta) / std::pow(1 - eta, 5));
  same(g[3], std::pow(eta, 3) * (42 - 12 * eta) / std::pow(1 - eta, 6));
  double c[4];
  tessarel_calc_c_eta123(&eta, &c[0], &c[1], &c[2], &c[3]);
  same(c[0], b.c1);
  same(c[1], b.dc1);
  tessarel_calc_d2c1_deta2(&eta, &expected);
  same(c[2], expected);
  tessarel_calc_d3c1_deta3(&eta, &expected);
  same(c[3], expected);
  double i2 = 0, d1[2], d2[2], d3[2], second[2], third[2];
  tessarel_calc_intgpert_eta123(&eta, &i2, &d1[0], &d1[1], &d2[0], &d2[1], &d3[0], &d3[1]);
  tessarel_calc_d2intgpert_deta2(&eta, &second[0], &second[1]);
  tessarel_calc_d3intgpert_deta3(&eta, &third[0], &third[1]);
  same(i2, b.i2);
  same(d1[0], b.di1);
  for (int k = 0; k < 2; ++k) same(d2[k], second[k]), same(d3[k], third[k]);

  const auto size = z(b.n * b.n);
  Values f(size), f1(size), f2(size), f3(size), m(size), like(size), rest(size);
  const auto all_same = [&](const Values& one_pass, auto routine) {
    routine(&b.n, &b.ipure, b.d.data(), &b.zeta[2], &b.zeta[3], m.data());
    for (std::size_t k = 0; k < size; ++k) same(one_pass[k], m[k]);
  };
  tessarel_calc_gij_rho123(&b.n, b.d.data(), &b.zeta[2], &b.zeta[3], f.data(), f1.data(), f2.data(), f3.data());
  all_same(f, tessarel_calc_gij);
  all_same(f1, tessarel_calc_dgij_drho);
  all_same(f2, tessarel_calc_d2gij_drho2);
  all_same(f3, tessarel_calc_d3gij_drho3);
  tessarel_calc_gii_rho123(&b.n, b.d.data(), &b.zeta[2], &b.zeta[3], rest.data(), rest.data(), like.data(),
                           rest.data());
  for (int i = 0; i < b.n; ++i) same(like[z(i)], f2[z(i + b.n * i)]);
  tessarel_calc_gij_eta123(&b.n, b.d.data(), &b.zeta[2], &b.zeta[3], f.data(), f1.data(), f2.data(), f3.data());
  all_same(f1, tessarel_calc_dgij_deta);
  all_same(f2, tessarel_calc_d2gij_deta2);
  all_same(f3, tessarel_calc_d3gij_deta3);
}

TEST_P(Assembled, PureTermsEqualTheSums) {
  if (record.n != 1) return;
  const Blocks b(x_, GetParam().t, GetParam().rho);
  double assoc = 0, pol = 0;
  tessarel_calc_a_ass(&b.rho, &b.zeta[3], b.delta_t0.data(), &assoc);
  tessarel_calc_a_pol(&b.t, &b.rho, &b.zeta[3], b.eps.data(), &pol);
  EXPECT_NEAR(assoc, b.association(), 1e-12);
  EXPECT_NEAR(pol, b.polar(), 1e-13);
}

TEST_P(Assembled, DiametersFollowFromEachOther) {
  const Blocks b(x_, GetParam().t, GetParam().rho);
  const auto size = b.d.size();
  Values dd(size), d2d(size), d3d(size), one(size), two(size), three(size);
  tessarel_calc_d_dt123(&b.n, &b.t, b.d.data(), dd.data(), d2d.data(), d3d.data());
  tessarel_calc_dd_dt(&b.n, &b.t, b.d.data(), one.data());
  tessarel_calc_d2d_dt2(&b.n, &b.t, one.data(), two.data());
  tessarel_calc_d3d_dt3(&b.n, &b.t, one.data(), two.data(), three.data());
  for (std::size_t i = 0; i < size; ++i) {
    EXPECT_NEAR(one[i], dd[i], 1e-14 * std::abs(dd[i]));
    EXPECT_NEAR(two[i], d2d[i], 1e-13 * std::abs(dd[i] / b.t));
    EXPECT_NEAR(three[i], d3d[i], 1e-12 * std::abs(dd[i] / (b.t * b.t)));
  }
}

TEST(Working, CoefficientsAreDerivativesByTheMeanSegmentNumber) {
  testing::select_reference(testing::parse_components("methane:0.5|n-butane:0.5"));
  const std::int32_t n = 2, mixture = 0;
  const auto coefficients = [&](auto routine, double x2) {
    const double x[2] = {1 - x2, x2};
    std::array<double, 14> c{};
    tessarel_set_mmean(&n, x, &mixture);
    routine(&c[0], &c[7]);
    return c;
  };
  const auto check = [&](auto derivative, auto below) {
    const double h = 1e-4, per_m = 2 * h * (record.mseg[1] - record.mseg[0]);
    const auto slope = coefficients(derivative, 0.4), up = coefficients(below, 0.4 + h),
               down = coefficients(below, 0.4 - h);
    for (std::size_t k = 0; k < 14; ++k)
      EXPECT_NEAR(slope[k], (up[k] - down[k]) / per_m, 1e-6 * (std::abs(slope[k]) + 1));
  };
  check(tessarel_calc_dabpar_dx, tessarel_calc_abpar);
  check(tessarel_calc_d2abpar_dxdx, tessarel_calc_dabpar_dx);
  check(tessarel_calc_d3abpar_dxdxdx, tessarel_calc_d2abpar_dxdx);
}

}  // namespace
}  // namespace tessarel
