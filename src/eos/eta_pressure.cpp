#include "eos/eta_pressure.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessarel::eos {

using numerics::derivative;

namespace {

/// Two numbers side by side, which the processor handles in one instruction.
typedef double Pair __attribute__((vector_size(16)));

/// Converts derivatives by u = 1 / (1 - eta) to derivatives by eta: du/deta = u^2.
EtaDerivatives from_u(double value, double by_u, double by_uu, double u) {
  const double u2 = u * u;
  return {value, by_u * u2, (by_uu * u2 + 2.0 * by_u * u) * u2};
}

/// mbar z_hs - z_chain, as a function of u.
EtaDerivatives z_of(const MixtureState<double>& s, const HardChain::State<double>& chain, double eta, double u) {
  const double excess = eta * u;
  const double a = chain.first, b = chain.second;
  const double hs = hard_sphere_z(excess, u, a, b);
  const double hs_u = 1.0 + a * (2.0 * u - 1.0) + 6.0 * b * u * excess;
  const double hs_uu = 2.0 * a + b * (12.0 * u - 6.0);
  // chain: weight_sum (u - 1) + u T, T = sum weight (y/(1+y) + 2y/(1+2y)), y = k (u - 1)
  // Two components at a time; the arrays are padded to an even number with zero weights.
  Pair sum = {0, 0}, sum_u = {0, 0}, sum_uu = {0, 0};
  for (int i = 0; i < chain.chains; i += 2) {
    const Pair k = {chain.k[at(i)], chain.k[at(i + 1)]}, w = {chain.weight[at(i)], chain.weight[at(i + 1)]};
    const Pair y = k * excess;
    const Pair p = 1.0 + y, q = p + y;
    const Pair r = 1.0 / (p * q);
    const Pair alpha = q * r, beta = p * r;  // 1/(1+y), 1/(1+2y)
    const Pair ka = k * alpha, kb = 2.0 * k * beta;
    const Pair fa = ka * alpha, fb = kb * beta;
    sum += w * y * (alpha + 2.0 * beta);
    sum_u += w * (fa + fb);
    sum_uu += w * (fa * ka + fb * kb);
  }
  const double t = sum[0] + sum[1], t_u = sum_u[0] + sum_u[1], t_uu = -2.0 * (sum_uu[0] + sum_uu[1]);
  const double m = s.mbar;
  return from_u(m * hs - chain.weights * excess - u * t, m * hs_u - chain.weights - t - u * t_u,
                m * hs_uu - 2.0 * t_u - u * t_uu, u);
}

/// Sums of c_j eta^(j+1) of both integrals, I1 in the first place and I2 in the second, with three derivatives by eta.
struct IntegralDerivatives {
  Pair value, first, second, third;
};
inline IntegralDerivatives integral_eta123(const Powers& a, const Powers& b, double eta) {
  const auto c = [&](std::size_t j) { return Pair{a[j], b[j]}; };
  const Pair e = {eta, eta};
  Pair v = c(6), p = 7.0 * v, q = 6.0 * p, r = 5.0 * q;
  const auto step = [&](Pair& sum, Pair term) { sum = sum * e + term; };
  Pair k = c(5);
  step(v, k), step(p, 6.0 * k), step(q, 30.0 * k), step(r, 120.0 * k);
  k = c(4);
  step(v, k), step(p, 5.0 * k), step(q, 20.0 * k), step(r, 60.0 * k);
  k = c(3);
  step(v, k), step(p, 4.0 * k), step(q, 12.0 * k), step(r, 24.0 * k);
  k = c(2);
  step(v, k), step(p, 3.0 * k), step(q, 6.0 * k), step(r, 6.0 * k);
  k = c(1);
  step(v, k), step(p, 2.0 * k), step(q, 2.0 * k);
  k = c(0);
  step(v, k), step(p, k);
  return {v * e, p, q, r};
}

/// -pi rho D with D = 2 m2es3 (eta I1)' + m m2e2s3 (C1 eta I2)' and rho = eta / zeta_rho.
EtaDerivatives z_of(const MixtureState<double>& s, const Dispersion::State<double>& dispersion, double eta, double u) {
  const double m = s.mbar;
  const double v = 1.0 / (2.0 - eta);
  const double u2 = u * u, v2 = v * v, u3 = u2 * u, v3 = v2 * v;
  // 1 / C1 and its derivatives by eta; d u^k = k u^(k+1), d v^k = k v^(k+1).
  const double chain0 = u2 * (6.0 * u2 - 4.0 * u - 2.0), sphere0 = 3.0 * u2 - 4.0 * v2 - 2.0;
  const double chain1 = u3 * (24.0 * u2 - 12.0 * u - 4.0), sphere1 = 6.0 * u3 - 8.0 * v3;
  const double chain2 = u2 * u2 * (120.0 * u2 - 48.0 * u - 12.0), sphere2 = 18.0 * u2 * u2 - 24.0 * v2 * v2;
  const double chain3 = u3 * u2 * (720.0 * u2 - 240.0 * u - 48.0), sphere3 = 72.0 * u3 * u2 - 96.0 * v3 * v2;
  const double d0 = 1.0 + sphere0 + m * (chain0 - sphere0), d1 = sphere1 + m * (chain1 - sphere1);
  const double d2 = sphere2 + m * (chain2 - sphere2), d3 = sphere3 + m * (chain3 - sphere3);
  const double c = 1.0 / d0;
  const double e1 = d1 * c, e2 = d2 * c, e3 = d3 * c;  // C1 = c: derivatives of a reciprocal
  const double c_1 = -c * e1;
  const double c_2 = c * (2.0 * e1 * e1 - e2);
  const double c_3 = c * (6.0 * e1 * (e2 - e1 * e1) - e3);
  const auto j = integral_eta123(dispersion.apar, dispersion.bpar, eta);
  const double f1 = 2.0 * dispersion.m2es3, f2 = m * dispersion.m2e2s3;
  const double g0 = f1 * j.first[0] + f2 * (c * j.first[1] + c_1 * j.value[1]);
  const double g1 = f1 * j.second[0] + f2 * (c * j.second[1] + 2.0 * c_1 * j.first[1] + c_2 * j.value[1]);
  const double g2 =
      f1 * j.third[0] + f2 * (c * j.third[1] + 3.0 * (c_1 * j.second[1] + c_2 * j.first[1]) + c_3 * j.value[1]);
  const double factor = -pi * s.rho_eta;
  return {factor * eta * g0, factor * (g0 + eta * g1), factor * (2.0 * g1 + eta * g2)};
}

/// Sum over l of c_kl X_l with two eta derivatives; rows of three numbers for each l.
inline EtaDerivatives row_sum(std::size_t n, const double* c, const double* x) {
  EtaDerivatives s{0, 0, 0};
  for (std::size_t l = 0; l < 3 * n; l += 3) {
    s.value += c[l] * x[l];
    s.first += c[l] * x[l + 1] + c[l + 1] * x[l];
    s.second += c[l] * x[l + 2] + 2.0 * c[l + 1] * x[l + 1] + c[l + 2] * x[l];
  }
  return s;
}

/// The site fractions are iterated together with their derivatives.
EtaDerivatives z_of(const MixtureState<double>& s, const Association::State<double>& a, double eta, double u) {
  Arena& arena = s.arena();
  const Arena::Frame frame(arena);
  const auto n = at(a.classes);
  const double per_rho = s.rho_eta;
  double* bond = arena.take<double>(3 * n * n);    // rho x strength g with two eta derivatives
  double* moment = arena.take<double>(3 * n * n);  // the same times d ln(eta g)/d ln eta, for the value of z
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t l = 0; l < n; ++l) {
      const double kc = s.contact_k(a.component[k], a.component[l]);
      const double w = a.strength[k * n + l] * s.comp.x[at(a.component[l])] * per_rho;
      const double y = kc * (u - 1.0);
      const double g = u * (1.0 + y) * (1.0 + 2.0 * y);
      const double g_u = (1.0 + y) * (1.0 + 2.0 * y) + u * kc * (3.0 + 4.0 * y);
      const double g_uu = 2.0 * kc * (3.0 + 4.0 * y) + 4.0 * u * kc * kc;
      const double g_uuu = 12.0 * kc * kc;
      const double u2 = u * u;
      const double g1 = g_u * u2, g2 = (g_uu * u + 2.0 * g_u) * u2 * u;
      const double g3 = ((g_uuu * u + 6.0 * g_uu) * u + 6.0 * g_u) * u2 * u2;
      double* b = bond + 3 * (k * n + l);
      b[0] = w * eta * g;
      b[1] = w * (g + eta * g1);
      b[2] = w * (2.0 * g1 + eta * g2);
      double* m = moment + 3 * (k * n + l);
      m[0] = eta * b[1];
      m[1] = b[1] + eta * b[2];
      m[2] = 2.0 * b[2] + eta * w * (3.0 * g2 + eta * g3);
    }
  }
  // The fractions, and their derivatives from X (1 + sum bond X) = 1 differentiated.
  double* x = arena.take<double>(3 * n);
  double* bond0 = arena.take<double>(n * n);
  double* x0 = arena.take<double>(n);
  double* x1 = arena.take<double>(n);
  double* x2 = arena.take<double>(n);
  for (std::size_t i = 0; i < n * n; ++i) bond0[i] = bond[3 * i];
  const double tolerance = site_tolerance(eta);
  solve_unbonded(arena, a.classes, a.types, bond0, tolerance, x0, &s.eos->work.statistics.site_passes);
  const SiteMatrix matrix(arena, a.classes, bond0, x0);
  for (std::size_t k = 0; k < n; ++k) x[3 * k] = x0[k], x[3 * k + 1] = x[3 * k + 2] = 0.0;
  double* driving = arena.take<double>(n);
  for (std::size_t k = 0; k < n; ++k) driving[k] = -x0[k] * x0[k] * row_sum(n, bond + 3 * k * n, x).first;
  solve_unbonded_order(arena, matrix, a.classes, a.types, bond0, tolerance, x0, driving, x1);
  for (std::size_t k = 0; k < n; ++k) x[3 * k + 1] = x1[k];
  for (std::size_t k = 0; k < n; ++k)
    driving[k] = 2.0 * x1[k] * x1[k] / x0[k] - x0[k] * x0[k] * row_sum(n, bond + 3 * k * n, x).second;
  solve_unbonded_order(arena, matrix, a.classes, a.types, bond0, tolerance, x0, driving, x2);
  for (std::size_t k = 0; k < n; ++k) x[3 * k + 2] = x2[k];
  // z_assoc = -1/2 sum x_k n_k X_k sum over l of moment_kl X_l.
  EtaDerivatives z{0, 0, 0};
  for (std::size_t k = 0; k < n; ++k) {
    const auto [s0, s1, s2] = row_sum(n, moment + 3 * k * n, x);
    const double w = -0.5 * a.sites[k] * s.comp.x[at(a.component[k])];
    const double* xk = x + 3 * k;
    z.value += w * xk[0] * s0;
    z.first += w * (xk[0] * s1 + xk[1] * s0);
    z.second += w * (xk[0] * s2 + 2.0 * xk[1] * s1 + xk[2] * s0);
  }
  return z;
}

/// Any other term, by its z over numbers that carry the derivatives.
template <class TermState>
EtaDerivatives z_of(const MixtureState<double>& s, const TermState& term, double eta, double) {
  using N = Taylor<1, 2>;
  const N e = numerics::variable<N>(eta);
  Point<N> q{e * s.rho_eta, e, inverse(1.0 - e), site_tolerance(eta)};
  const N z = term.z(s, q);
  return {derivative(z, 0), derivative(z, 1), derivative(z, 2)};
}

}  // namespace

template <class Term>
EtaDerivatives z_term_eta12(const MixtureState<double>& s, double eta) {
  const auto& term = s.term<Term>();
  return term.present ? z_of(s, term, eta, 1.0 / (1.0 - eta)) : EtaDerivatives{0, 0, 0};
}
template EtaDerivatives z_term_eta12<Association>(const MixtureState<double>&, double);
template EtaDerivatives z_term_eta12<Polar>(const MixtureState<double>&, double);

EtaDerivatives z_eta12(const MixtureState<double>& s, double eta) {
  const double u = 1.0 / (1.0 - eta);
  EtaDerivatives z{1.0, 0, 0};
  each_term(s, [&](const auto& term) {
    const EtaDerivatives part = z_of(s, term, eta, u);
    z.value += part.value;
    z.first += part.first;
    z.second += part.second;
  });
  return z;
}

EtaDerivatives p_eta12(const MixtureState<double>& s, double eta) {
  ++s.eos->work.statistics.pressures;
  const auto z = z_eta12(s, eta);
  const double factor = pressure_factor * s.t * s.rho_eta;  // p = factor eta z
  return {factor * eta * z.value, factor * (z.value + eta * z.first), factor * (2.0 * z.first + eta * z.second)};
}

}  // namespace tessarel::eos
