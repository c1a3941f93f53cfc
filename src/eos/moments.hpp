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
  Taylor<2, K, S> log_free, w;             ///< L and w over (zeta2, zeta3)
  std::array<Taylor<1, K, S>, nmax> rest;  ///< l_i over w
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

/// first^power f(second) as a number of both, `f` given as a univariate number and `first` by its value.
template <int K, class S>
Taylor<2, K, S> power_times(const S& first, int power, const Taylor<1, K, S>& f) {
  Taylor<2, K, S> r(0.0);
  S factor(1.0);          // first^(power - k), from the highest k down
  double binomial = 1.0;  // power over k
  for (int k = power; k >= 0; --k) {
    for (int l = 0; k + l <= K; ++l) r.c[Taylor<2, K, S>::Monomials::index({k, l})] = f.c[at(l)] * (factor * binomial);
    factor = factor * first;
    binomial = binomial * k / (power - k + 1);
  }
  return r;
}

/// Hard-sphere and chain terms over the moments.
template <int K, class T, class S>
void add_hard_chain(const MixtureState<T>& s, const S& rho, const std::array<S, 4>& zeta, OuterDerivatives<S>& out,
                    ChainLogarithms<K, S>& chain) {
  using N = Taylor<2, K, S>;
  using E = Taylor<1, K, S>;
  const numerics::ShiftedSeries<K, S> series(zeta[3]);
  const auto& eta = series.plain;
  const auto u_plain = inverse(1.0 - eta);
  const auto log_plain = log_1p(-eta);
  const auto of_eta = [&](const auto& f) { return power_times(zeta[2], 0, series.lift(f)); };
  if (record.is_simp) {
    add_term(out, of_eta(hard_sphere_a_closed(eta, u_plain)), moment::zeta2, moment::zeta3, S(s.mbar), moment::mbar);
    using P = typename numerics::ShiftedSeries<K, S>::Plain;
    chain.log_free = of_eta(log_plain - log_contact_rest(P(eta * u_plain * 0.5)));
    add_term(out, chain.log_free, moment::zeta2, moment::zeta3, S(s.chain_sum), -1);
    return;
  }
  const S kappa = inverse(rho * pi_6);  // mbar / zeta0
  const E u = series.lift(u_plain);
  const E psi = series.lift(hard_sphere_psi(eta, u_plain, log_plain));
  chain.log_free = of_eta(log_plain);
  chain.w = power_times(zeta[2], 1, u);
  add_term(out, N(-chain.log_free), moment::zeta2, moment::zeta3, S(s.mbar), moment::mbar);
  add_term(out, N(chain.w * (kappa * 3.0)), moment::zeta2, moment::zeta3, zeta[1], moment::zeta1);
  E sum(0.0);
  double weights = 0;
  for (int i = 0; i < s.comp.count; ++i) {
    const double weight = s.comp.x[at(i)] * (record.mseg[at(s.comp.index[at(i)])] - 1.0);
    const E w = seeded<E>(chain.w.c[0], 0);
    chain.rest[at(i)] = log_contact_rest(E(w * S(s.d[at(i)] * 0.5)));
    sum += chain.rest[at(i)] * weight;
    weights += weight;
  }
  add_term(out, N(power_times(zeta[2], 3, psi) * kappa + chain.log_free * weights - compose(sum, chain.w)),
           moment::zeta2, moment::zeta3, S(1.0), -1);
}

/// I1 or I2 over (mbar, eta).
template <int K, class S>
Taylor<2, K, S> integral_over_moments(const std::array<std::array<double, 3>, 7>& constants, double mbar,
                                      const numerics::ShiftedSeries<K, S>& eta) {
  const auto c = integral_coefficients(constants, mean_segment_weights(numerics::variable<Taylor<1, K>>(mbar)));
  Taylor<2, K, S> sum;
  for (int k = 0; k <= K; ++k) {
    Powers powers;
    for (std::size_t j = 0; j < powers.size(); ++j) powers[j] = c[j].c[at(k)];
    const auto polynomial = eta.lift(integral(powers, eta.plain));
    for (int l = 0; l + k <= K; ++l) sum.c[Taylor<2, K, S>::Monomials::index({k, l})] = polynomial.c[at(l)];
  }
  return sum;
}

/// The dispersion term over the moments.
template <int K, class T, class S>
void add_dispersion(const MixtureState<T>& s, const S& rho, const S& eta, OuterDerivatives<S>& out) {
  using N = Taylor<2, K, S>;
  using E = Taylor<1, K, S>;
  const numerics::ShiftedSeries<K, S> series(eta);
  const auto parts = inverse_c1_parts(inverse(1.0 - series.plain), inverse(2.0 - series.plain));
  const E chain = series.lift(parts.chain), sphere = series.lift(parts.sphere);
  const S mbar(s.mbar);
  const N inverse_c1 = power_times(mbar, 1, E(chain - sphere)) + power_times(mbar, 0, E(sphere + 1.0));
  add_term(out, N(integral_over_moments<K>(ap, s.mbar, series) * (rho * (-2.0 * pi))), moment::mbar, moment::zeta3,
           S(s.m2es3), moment::m2es3);
  add_term(out, N(power_times(mbar, 1, E(rho * (-pi))) * (integral_over_moments<K>(bp, s.mbar, series) / inverse_c1)),
           moment::mbar, moment::zeta3, S(s.m2e2s3), moment::m2e2s3);
}

}  // namespace tessarel::eos
