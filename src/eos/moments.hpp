// Moments of the composition and the function of moments that the hard-chain and dispersion terms are: the inner
// and the outer function of the composition derivatives.
#pragma once

#include <algorithm>

#include "eos/terms.hpp"

namespace tessarel::eos {

/// Places of the moments. The fractions of associating components follow from `associating` on.
namespace moment {
inline constexpr int mbar = 0, zeta1 = 1, zeta2 = 2, zeta3 = 3, m2es3 = 4, m2e2s3 = 5, associating = 6;
}

/// Derivatives of the outer function by its moments: symmetric arrays, all entries filled.
template <class S>
struct OuterDerivatives {
  std::size_t count = 0;  ///< number of moments
  S value;
  S* f1 = nullptr;
  S* f2 = nullptr;
  S* f3 = nullptr;

  S& second(int a, int b) { return f2[at(a) * count + at(b)]; }
  S& third(int a, int b, int c) { return f3[(at(a) * count + at(b)) * count + at(c)]; }
};

template <int K, class S>
OuterDerivatives<S> take_outer(std::size_t count) {
  OuterDerivatives<S> f;
  f.count = count;
  f.value = S(0.0);
  const auto zeroed = [](std::size_t size) {
    S* array = arena.take<S>(size);
    std::fill_n(array, size, S(0.0));
    return array;
  };
  f.f1 = zeroed(count);
  if constexpr (K >= 2) f.f2 = zeroed(count * count);
  if constexpr (K >= 3) f.f3 = zeroed(count * count * count);
  return f;
}

/// Adds the term f(u, v) w, `f` over its two moments, w linear in a third moment `iw` (-1: w is a constant factor).
template <int K, class S>
void add_term(OuterDerivatives<S>& out, const Taylor<2, K, S>& f, int iu, int iv, const S& w, int iw) {
  using numerics::derivative;
  const int index[2] = {iu, iv};
  const auto d = [&f](auto p, auto q) { return derivative(f, static_cast<int>(p), static_cast<int>(q)); };
  out.value += f.c[0] * w;
  const S d1[2] = {d(1, 0), d(0, 1)};
  for (int p = 0; p < 2; ++p) out.f1[at(index[p])] += d1[p] * w;
  if (iw >= 0) out.f1[at(iw)] += f.c[0];
  if constexpr (K >= 2) {
    const S d2[3] = {d(2, 0), d(1, 1), d(0, 2)};
    for (int p = 0; p < 2; ++p)
      for (int q = 0; q < 2; ++q) out.second(index[p], index[q]) += d2[p + q] * w;
    if (iw >= 0) {
      for (int p = 0; p < 2; ++p) {
        out.second(iw, index[p]) += d1[p];
        out.second(index[p], iw) += d1[p];
      }
    }
    if constexpr (K >= 3) {
      const S d3[4] = {d(3, 0), d(2, 1), d(1, 2), d(0, 3)};
      for (int p = 0; p < 2; ++p)
        for (int q = 0; q < 2; ++q)
          for (int r = 0; r < 2; ++r) out.third(index[p], index[q], index[r]) += d3[p + q + r] * w;
      if (iw >= 0) {
        for (int p = 0; p < 2; ++p) {
          for (int q = 0; q < 2; ++q) {
            out.third(iw, index[p], index[q]) += d2[p + q];
            out.third(index[p], iw, index[q]) += d2[p + q];
            out.third(index[p], index[q], iw) += d2[p + q];
          }
        }
      }
    }
  }
}

/// The logarithms of the contact values, as needed for the explicit dependence of the chain term on the fractions:
/// ln g_ii = -L + l_i(w) with L = ln(1 - zeta3), w = zeta2 / (1 - zeta3). In the simplified model l_i = 0 and L stands
/// for -ln g.
template <int K, class S>
struct ChainLogarithms {
  Taylor<2, K, S> log_free, w;               ///< L and w over (zeta2, zeta3)
  std::array<Taylor<1, K, S>, nmax> rest;    ///< l_i over w
};

/// f(w), given as a univariate number at w's value, over the variables of w.
template <int K, class S>
Taylor<2, K, S> compose(const Taylor<1, K, S>& f, Taylor<2, K, S> w) {
  w.c[0] = S(0.0);
  Taylor<2, K, S> sum(f.c[K]);
  for (std::size_t k = K; k-- > 0;) sum = sum * w + f.c[k];
  return sum;
}

template <class N, class S>
N seeded(const S& value, int v) {
  N x(value);
  x.c[at(v) + 1] = S(1.0);
  return x;
}

/// Hard-sphere and chain terms over the moments.
template <int K, class T, class S>
void add_hard_chain(const MixtureState<T>& s, const S& rho, const std::array<S, 4>& zeta, OuterDerivatives<S>& out,
                    ChainLogarithms<K, S>& chain) {
  using N = Taylor<2, K, S>;
  const N z2 = seeded<N>(zeta[2], 0), z3 = seeded<N>(zeta[3], 1);
  const N u = inverse(1.0 - z3);
  if (record.is_simp) {
    add_term(out, hard_sphere_a_closed(z3, u), moment::zeta2, moment::zeta3, S(s.mbar), moment::mbar);
    chain.log_free = log_1p(-z3) - log_contact_rest(N(z3 * u * 0.5));
    add_term(out, chain.log_free, moment::zeta2, moment::zeta3, S(s.chain_sum), -1);
    return;
  }
  const N log_free = log_1p(-z3);
  const S kappa = inverse(rho * pi_6);  // mbar / zeta0
  add_term(out, N(-log_free), moment::zeta2, moment::zeta3, S(s.mbar), moment::mbar);
  add_term(out, N(z2 * u * (kappa * 3.0)), moment::zeta2, moment::zeta3, zeta[1], moment::zeta1);
  add_term(out, N(z2 * z2 * z2 * hard_sphere_psi(z3, u, log_free) * kappa), moment::zeta2, moment::zeta3, S(1.0), -1);
  chain.log_free = log_free;
  chain.w = z2 * u;
  Taylor<1, K, S> sum(0.0);
  for (int i = 0; i < s.comp.count; ++i) {
    Taylor<1, K, S> y(chain.w.c[0]);
    y.c[1] = S(1.0);
    chain.rest[at(i)] = log_contact_rest(Taylor<1, K, S>(y * S(s.d[at(i)] * 0.5)));
    sum += chain.rest[at(i)] * (s.comp.x[at(i)] * (record.mseg[at(s.comp.index[at(i)])] - 1.0));
  }
  double weights = 0;
  for (int i = 0; i < s.comp.count; ++i)
    weights += s.comp.x[at(i)] * (record.mseg[at(s.comp.index[at(i)])] - 1.0);
  add_term(out, N(log_free * weights - compose(sum, chain.w)), moment::zeta2, moment::zeta3, S(1.0), -1);
}

/// I1 or I2 over (mbar, eta).
template <int K, class S>
Taylor<2, K, S> integral_over_moments(const std::array<std::array<double, 3>, 7>& constants, double mbar, const S& eta) {
  using M = Taylor<1, K>;
  using E = Taylor<1, K, S>;
  const auto c = integral_coefficients(constants, mean_segment_weights(numerics::variable<M>(mbar)));
  E e(eta);
  e.c[1] = S(1.0);
  Taylor<2, K, S> sum(0.0);
  for (int k = 0; k <= K; ++k) {
    Powers powers;
    for (std::size_t j = 0; j < powers.size(); ++j) powers[j] = c[j].c[at(k)];
    const E polynomial = integral(powers, e);
    for (int l = 0; l + k <= K; ++l) sum.c[Taylor<2, K, S>::Monomials::index({k, l})] = polynomial.c[at(l)];
  }
  return sum;
}

/// The dispersion term over the moments.
template <int K, class T, class S>
void add_dispersion(const MixtureState<T>& s, const S& rho, const S& eta, OuterDerivatives<S>& out) {
  using N = Taylor<2, K, S>;
  const N m = seeded<N>(S(s.mbar), 0), e = seeded<N>(eta, 1);
  add_term(out, N(integral_over_moments<K>(ap, s.mbar, eta) * (rho * (-2.0 * pi))), moment::mbar, moment::zeta3,
           S(s.m2es3), moment::m2es3);
  add_term(out, N(m * c1(e, m) * integral_over_moments<K>(bp, s.mbar, eta) * (rho * (-pi))), moment::mbar,
           moment::zeta3, S(s.m2e2s3), moment::m2e2s3);
}

}  // namespace tessarel::eos
