// The building blocks put together by hand, as a host would, against the evaluations; and the one-pass and fixed-state
// routines against the members that they bundle.
#include <gtest/gtest.h>

#include <cmath>

#include "common/test_fluid.hpp"
#include "eos/mixture_state.hpp"
#include "tessarel/blocks.h"

namespace tessarel {
namespace {

using fluid::at, testing::current, testing::parameters;
using Values = std::vector<double>;
constexpr double pi = 3.14159265359, pi_6 = 0.5235987755983333;

struct State {
  const char* components;
  bool simplified;
  double t, rho;
  std::int32_t ipure = 0;
};
void PrintTo(const State& s, std::ostream* out) {
  *out << s.components << (s.simplified ? " simplified" : "") << " ipure " << s.ipure;
}
constexpr State states[] = {
    {"water:0.3|acetone:0.45|carbon dioxide:0.25", false, 290, 0.012},
    {"methane:0.4|n-butane:0.6", false, 350, 0.004},
    {"methanol:0.6|carbon dioxide:0.4", true, 410, 0.006},
    {"three sites:1", false, 300, 0.01},
    {"water:0.2|three sites:0.8", false, 320, 0.009},
    {"carbon dioxide:1", false, 280, 0.011},
    {"water:0.3|acetone:0.45|carbon dioxide:0.25", false, 310, 0.01, 1},
    {"water:0.3|acetone:0.45|carbon dioxide:0.25", false, 310, 0.01, 3},
};

/// All building blocks of a state that a needs. `x` weighs their sums: 1 for a component alone.
struct Blocks {
  int n = parameters().n, ipure;
  Values x;
  double t, rho;
  std::size_t pairs = at(n * n);
  Values d = Values(at(n)), eps = d, dij = Values(pairs), g = dij, sig_ij = dij, eps_ij = dij;
  Values deltaab = Values(pairs * 25), delta_t0 = deltaab, xnhb = Values(at(n * 5)), j2 = Values(3 * pairs),
         j3 = Values(3 * pairs * at(n));
  double zeta[4]{}, mbar = 0, c1 = 0, i1 = 0, i2 = 0, m2es3 = 0, m2e2s3 = 0, a2[3]{}, a3[3]{};
  std::int32_t status = 0;

  Blocks(const Values& fractions, const State& s) : ipure(s.ipure), x(fractions), t(s.t), rho(s.rho) {
    const double* given = x.data();
    tessarel_set_mmean(&n, given, &ipure);
    tessarel_calc_d(&n, &ipure, &t, d.data());
    tessarel_calc_dij(&n, d.data(), dij.data());
    for (int k = 0; k < 4; ++k) tessarel_calc_zeta(&n, given, &ipure, &rho, d.data(), &k, &zeta[k]);
    if (current().simplified)
      tessarel_calc_g_simp(&zeta[3], g.data());
    else
      tessarel_calc_gij(&n, &ipure, d.data(), &zeta[2], &zeta[3], g.data());
    tessarel_calc_c1(&zeta[3], &c1);
    tessarel_calc_sigeps(&n, &ipure, &t, eps.data(), sig_ij.data(), eps_ij.data());
    tessarel_calc_pertterm(&n, given, &ipure, &t, sig_ij.data(), eps_ij.data(), &m2es3, &m2e2s3);
    tessarel_calc_intgpert(&zeta[3], &i1, &i2);
    const Values ones(pairs, 1.0);
    tessarel_calc_deltaab(&n, &ipure, &t, sig_ij.data(), g.data(), deltaab.data());
    tessarel_calc_deltaab(&n, &ipure, &t, sig_ij.data(), ones.data(), delta_t0.data());
    tessarel_calc_xnhb(&n, given, &ipure, &rho, deltaab.data(), xnhb.data(), &status);
    tessarel_calc_j2j3(&n, &t, &zeta[3], eps.data(), j2.data(), j3.data());
    tessarel_calc_a2a3(&n, given, &ipure, &t, &rho, j2.data(), j3.data(), a2, a3);
    if (ipure > 0) x.assign(at(n), 0.0), x[at(ipure - 1)] = 1;
    for (std::size_t i = 0; i < x.size(); ++i) mbar += x[i] * parameters().mseg[i];
  }

  [[nodiscard]] bool closed() const { return current().simplified || n == 1 || ipure > 0; }
  /// The sum over components, weighed by their fractions.
  template <class Term>
  [[nodiscard]] double sum(Term term) const {
    double total = 0;
    for (int i = 0; i < n; ++i)
      if (x[at(i)] != 0) total += x[at(i)] * term(at(i), current().simplified ? 0 : at(i + n * i));
    return total;
  }
  /// The sum over the site types of a component, weighed by their numbers.
  template <class Term>
  [[nodiscard]] double sites(std::size_t i, Term term) const {
    double total = 0;
    for (std::size_t s = 0; s < at(parameters().nhb_typ[i]); ++s)
      total += parameters().nhb_no[i][s] * term(i + at(n) * s);
    return total;
  }
  [[nodiscard]] double association() const {
    return sum([&](auto i, auto) { return sites(i, [&](auto s) { return std::log(xnhb[s]) + (1 - xnhb[s]) / 2; }); });
  }
  [[nodiscard]] double polar() const {
    double total = 0;
    for (int k = 0; k < 3; ++k) total += a2[k] == 0 ? 0 : a2[k] / (1 - a3[k] / a2[k]);
    return total;
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
    const double chain = sum([&](auto i, auto ii) { return (parameters().mseg[i] - 1) * std::log(g[ii]); });
    return mbar * hs - chain - pi * rho * (2 * i1 * m2es3 + mbar * c1 * i2 * m2e2s3) + association() + polar();
  }
};

class Assembled : public ::testing::TestWithParam<State> {
 protected:
  [[nodiscard]] Blocks select() const {
    const auto mixture = testing::Mixture(GetParam().components);
    testing::select_reference(current(), mixture, mixture.names.size() > 1 ? "1;2:0.03" : "", GetParam().simplified);
    return {mixture.x, GetParam()};
  }
};
INSTANTIATE_TEST_SUITE_P(States, Assembled, ::testing::ValuesIn(states));

TEST_P(Assembled, BlocksGiveTheEvaluations) {
  const Blocks b = select();
  double a = 0;
  EXPECT_EQ(b.status, 0);
  tessarel_calc_a(&b.n, b.x.data(), &b.t, &b.rho, &a);
  EXPECT_NEAR(b.a(), a, 1e-12 * (1 + std::abs(a)));
  if (b.n > 1) return;
  double assoc = 0, pol = 0;
  tessarel_calc_a_ass(&b.rho, &b.zeta[3], b.delta_t0.data(), &assoc);
  tessarel_calc_a_pol(&b.t, &b.rho, &b.zeta[3], b.eps.data(), &pol);
  EXPECT_NEAR(assoc, b.association(), 1e-12);
  EXPECT_NEAR(pol, b.polar(), 1e-13);
}

TEST_P(Assembled, FixedStateGivesPressureAndDensity) {
  const Blocks b = select();
  if (b.ipure > 0) return;
  double moment[4];
  for (int k = 0; k < 4; ++k)
    moment[k] = pi_6 * b.sum([&](auto i, auto) { return parameters().mseg[i] * std::pow(b.d[i], k); });
  const double conv = 1 / moment[3];
  const auto call = [&](auto routine, const double* argument, auto... outputs) {
    routine(&b.n, b.x.data(), &b.t, argument, &moment[0], &moment[1], &moment[2], &conv, b.d.data(), b.dij.data(),
            &b.m2es3, &b.m2e2s3, b.delta_t0.data(), outputs...);
  };
  const auto by_eta = [&](auto routine, double eta) {
    std::array<double, 3> f{};
    call(routine, &eta, &f[0], &f[1], &f[2]);
    return f;
  };
  const double eta = b.zeta[3], h = 1e-4 * eta;
  double p = 0, slope = 0, curvature = 0;
  tessarel_calc_p_rho(&b.n, b.x.data(), &b.t, &b.rho, &p);
  tessarel_calc_dp_drho(&b.n, b.x.data(), &b.t, &b.rho, &slope);
  tessarel_calc_d2p_drho2(&b.n, b.x.data(), &b.t, &b.rho, &curvature);
  const auto f = by_eta(tessarel_calc_p_eta12, eta);
  const double ideal = 13806622.169047227 * b.t * b.rho;
  EXPECT_NEAR(f[0], p, 1e-10 * (std::abs(p) + ideal));
  EXPECT_NEAR(f[1], slope * conv, 1e-9 * std::abs(slope * conv));
  EXPECT_NEAR(f[2], curvature * conv * conv, 1e-8 * std::abs(curvature * conv * conv));
  // The two terms by themselves: absent or not, and derivatives of each other.
  for (const auto routine : {tessarel_calc_z_ass_eta12, tessarel_calc_z_pol_eta12}) {
    const auto value = by_eta(routine, eta), up = by_eta(routine, eta + h), down = by_eta(routine, eta - h);
    EXPECT_EQ(value[0] != 0, routine == tessarel_calc_z_ass_eta12 ? parameters().is_assoc : parameters().is_polar);
    for (std::size_t k = 0; k < 2; ++k)
      EXPECT_NEAR(value[k + 1], (up[k] - down[k]) / (2 * h), 1e-6 * (std::abs(value[k + 1]) + std::abs(value[k])));
  }
  // The iteration from a dense start finds the liquid-like root of calc_rho.
  const double target = 50e5;
  const std::int32_t liquid = 1;
  double root = 0.7, rho = 0;
  std::array<char, 80> err{};
  call(tessarel_densiter, &target, &root, err.data(), err.size());
  tessarel_calc_rho(&b.n, b.x.data(), &b.t, &target, &liquid, &rho);
  EXPECT_EQ(trimmed({err.data(), err.size()}), "No errors");
  EXPECT_NEAR(root * conv, rho, 1e-9 * rho);
}

TEST_P(Assembled, OnePassRoutinesEqualTheMembers) {
  const Blocks b = select();
  if (b.ipure > 0) return;
  const double eta = b.zeta[3];
  const auto same = [](double one_pass, double member) {
    EXPECT_NEAR(one_pass, member, 1e-12 * (1 + std::abs(member)));
  };
  double g[4], c[4], by_eta[3][2], of_member[3][2], i2 = 0, expected[3];
  tessarel_calc_g_rho123_simp(&eta, &g[0], &g[1], &g[2], &g[3]);
  // The closed forms as they stand in the literature.
  same(g[0], (1 - eta / 2) / std::pow(1 - eta, 3));
  same(g[1], (2.5 - eta) * eta / std::pow(1 - eta, 4));
  same(g[2], 3 * eta * eta * (3 - eta) / std::pow(1 - eta, 5));
  same(g[3], std::pow(eta, 3) * (42 - 12 * eta) / std::pow(1 - eta, 6));
  tessarel_calc_c_eta123(&eta, &c[0], &c[1], &c[2], &c[3]);
  same(c[0], b.c1);
  tessarel_calc_dc1_deta(&eta, &c[0], &expected[0]);
  tessarel_calc_d2c1_deta2(&eta, &expected[1]);
  tessarel_calc_d3c1_deta3(&eta, &expected[2]);
  for (int k = 0; k < 3; ++k) same(c[1 + k], expected[k]);
  tessarel_calc_intgpert_eta123(&eta, &i2, &by_eta[0][0], &by_eta[0][1], &by_eta[1][0], &by_eta[1][1], &by_eta[2][0],
                                &by_eta[2][1]);
  same(i2, b.i2);
  tessarel_calc_dintgpert_deta(&eta, &of_member[0][0], &of_member[0][1]);
  tessarel_calc_d2intgpert_deta2(&eta, &of_member[1][0], &of_member[1][1]);
  tessarel_calc_d3intgpert_deta3(&eta, &of_member[2][0], &of_member[2][1]);
  for (int k = 0; k < 6; ++k) same(by_eta[k / 2][k % 2], of_member[k / 2][k % 2]);

  Values f(b.pairs), f1(f), f2(f), f3(f), m(f), like(f), rest(f);
  const auto all_same = [&](const Values& one_pass, auto routine) {
    routine(&b.n, &b.ipure, b.d.data(), &b.zeta[2], &b.zeta[3], m.data());
    for (std::size_t k = 0; k < b.pairs; ++k) same(one_pass[k], m[k]);
  };
  const auto contacts = [&](auto routine, Values& v, Values& v1, Values& v2, Values& v3) {
    routine(&b.n, b.d.data(), &b.zeta[2], &b.zeta[3], v.data(), v1.data(), v2.data(), v3.data());
  };
  contacts(tessarel_calc_gij_rho123, f, f1, f2, f3);
  all_same(f, tessarel_calc_gij);
  all_same(f1, tessarel_calc_dgij_drho);
  all_same(f2, tessarel_calc_d2gij_drho2);
  all_same(f3, tessarel_calc_d3gij_drho3);
  contacts(tessarel_calc_gii_rho123, rest, rest, like, rest);
  for (int i = 0; i < b.n; ++i) same(like[at(i)], f2[at(i + b.n * i)]);
  contacts(tessarel_calc_gij_eta123, f, f1, f2, f3);
  all_same(f1, tessarel_calc_dgij_deta);
  all_same(f2, tessarel_calc_d2gij_deta2);
  all_same(f3, tessarel_calc_d3gij_deta3);
}

// d = sigma - gap with a gap that varies as exp(-k / t), k = 3 epsil: its derivatives follow from any value of the gap.
TEST(Diameters, FollowFromAnyValue) {
  testing::select_reference(current(), testing::Mixture("water:0.3|acetone:0.45|carbon dioxide:0.25"));
  const std::int32_t n = 3, mixture = 0;
  const double t = 310;
  for (const double factor : {1.0, 2.0}) {
    Values d(3), dd(3), d2d(3), d3d(3), one(3), two(3), three(3);
    tessarel_calc_d(&n, &mixture, &t, d.data());
    for (std::size_t i = 0; i < 3; ++i) d[i] = parameters().sigma[i] - factor * (parameters().sigma[i] - d[i]);
    tessarel_calc_d_dt123(&n, &t, d.data(), dd.data(), d2d.data(), d3d.data());
    tessarel_calc_dd_dt(&n, &t, d.data(), one.data());
    tessarel_calc_d2d_dt2(&n, &t, one.data(), two.data());
    tessarel_calc_d3d_dt3(&n, &t, one.data(), two.data(), three.data());
    for (std::size_t i = 0; i < 3; ++i) {
      const double k = 3 * parameters().epsil[i], u = k / (t * t),
                   gap = factor * parameters().sigma[i] * 0.12 * std::exp(-k / t);
      EXPECT_NEAR(d[i], parameters().sigma[i] - gap, 1e-14 * parameters().sigma[i]);
      const double by_t[] = {-gap * u, -gap * (u * u - 2 * u / t),
                             -gap * (u * u * u - 6 * u * u / t + 6 * u / (t * t))};
      const double actual[][2] = {{dd[i], one[i]}, {d2d[i], two[i]}, {d3d[i], three[i]}};
      for (std::size_t order = 0; order < 3; ++order)
        for (const double value : actual[order]) EXPECT_NEAR(value, by_t[order], 1e-11 * std::abs(by_t[order]));
    }
  }
}

TEST(Working, CoefficientsAreDerivativesByTheMeanSegmentNumber) {
  testing::select_reference(current(), testing::Mixture("methane:0.5|n-butane:0.5"));
  const std::int32_t n = 2, mixture = 0;
  const auto coefficients = [&](auto routine, double x2) {
    const double x[2] = {1 - x2, x2};
    std::array<double, 14> c{};
    tessarel_set_mmean(&n, x, &mixture);
    routine(&c[0], &c[7]);
    return c;
  };
  const auto check = [&](auto derivative, auto below) {
    const double h = 1e-4, per_m = 2 * h * (parameters().mseg[1] - parameters().mseg[0]);
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
