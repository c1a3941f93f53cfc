#include "eos/composition.hpp"

#include "eos/moments.hpp"
#include "eos/moments_association.hpp"
#include "eos/moments_polar.hpp"

namespace tessarel::eos {

namespace {

/// The gradients of the moments and the Hessians of the two quadratic ones.
template <class S>
struct MomentGradients {
  S* row = nullptr;                    ///< [moment * n + i]
  S* hessian[2] = {nullptr, nullptr};  ///< of m2es3 and m2e2s3, [i * n + j]
  std::size_t n = 0;

  const S* operator[](std::size_t m) const { return row + m * n; }
};

template <int K, class T, class S>
MomentGradients<S> moment_gradients(const MixtureState<T>& s, const S& rho, std::size_t count) {
  MomentGradients<S> g;
  const std::size_t n = at(s.comp.count);
  g.n = n;
  g.row = arena.take<S>(count * n);
  if constexpr (K >= 2)
    for (auto& h : g.hessian) h = arena.take<S>(n * n);
  const S packing = rho * pi_6;
  for (std::size_t i = 0; i < n; ++i) {
    const double m = record.mseg[at(s.comp.index[i])];
    const S zeta1 = packing * (s.d[i] * m);
    g.row[i] = S(m);
    g.row[moment::zeta1 * n + i] = zeta1;
    g.row[moment::zeta2 * n + i] = zeta1 * s.d[i];
    g.row[moment::zeta3 * n + i] = zeta1 * s.d[i] * s.d[i];
  }
  const T scale1 = s.inverse_t * 2.0, scale2 = s.inverse_t * s.inverse_t * 2.0;
  // Row i of a sum and its Hessian; with constant energies the sums run over plain numbers.
  const auto fill = [&](auto&& terms, auto zero) {
    for (std::size_t i = 0; i < n; ++i) {
      auto sum1 = zero, sum2 = zero;
      for (std::size_t j = 0; j < n; ++j) {
        auto term1 = zero, term2 = zero;
        terms(at(s.comp.index[i]), at(s.comp.index[j]), term1, term2);
        sum1 += term1 * s.comp.x[j];
        sum2 += term2 * s.comp.x[j];
        if constexpr (K >= 2) {
          g.hessian[0][i * n + j] = S(term1 * scale1);
          g.hessian[1][i * n + j] = S(term2 * scale2);
        }
      }
      g.row[moment::m2es3 * n + i] = S(sum1 * scale1);
      g.row[moment::m2e2s3 * n + i] = S(sum2 * scale2);
    }
  };
  if (tables.constant_energies) {
    fill(
        [](std::size_t i, std::size_t j, double& term1, double& term2) {
          term1 = tables.first[i][j];
          term2 = tables.second[i][j];
        },
        0.0);
  } else {
    fill([&s](std::size_t i, std::size_t j, T& term1, T& term2) { pair_terms(i, j, s.t, s.inverse_t, term1, term2); },
         T(0.0));
  }
  return g;
}

/// The explicit dependence of the chain term on the fractions: h_i = (m_i - 1)(L - l_i(w)) with derivatives through
/// zeta2 and zeta3, by components.
template <int K, class T, class S>
struct ExplicitChain {
  std::size_t n;
  const S *log_free1, *w1, *log_free2, *w2;  ///< gradients and Hessians of L and w by the fractions
  const MixtureState<T>* state;
  const ChainLogarithms<K, S>* chain;

  ExplicitChain(const MixtureState<T>& s, const ChainLogarithms<K, S>& c, const MomentGradients<S>& g)
      : n(g.n), state(&s), chain(&c) {
    log_free1 = gradient(c.log_free, g);
    w1 = record.is_simp ? nullptr : gradient(c.w, g);
    log_free2 = K >= 3 ? hessian(c.log_free, g) : nullptr;
    w2 = K >= 3 && !record.is_simp ? hessian(c.w, g) : nullptr;
  }

  [[nodiscard]] double weight(std::size_t i) const { return record.mseg[at(state->comp.index[i])] - 1.0; }
  [[nodiscard]] S rest(std::size_t i, int order) const { return numerics::derivative(chain->rest[i], order); }

  [[nodiscard]] S value(std::size_t i) const {
    return (record.is_simp ? chain->log_free.c[0] : chain->log_free.c[0] - rest(i, 0)) * weight(i);
  }
  [[nodiscard]] S first(std::size_t i, std::size_t j) const {
    return (record.is_simp ? log_free1[j] : log_free1[j] - rest(i, 1) * w1[j]) * weight(i);
  }
  [[nodiscard]] S second(std::size_t i, std::size_t j, std::size_t k) const {
    const S& log_free = log_free2[j * n + k];
    if (record.is_simp) return log_free * weight(i);
    return (log_free - rest(i, 2) * w1[j] * w1[k] - rest(i, 1) * w2[j * n + k]) * weight(i);
  }

 private:
  static const S* gradient(const Taylor<2, K, S>& f, const MomentGradients<S>& g) {
    S* r = arena.take<S>(g.n);
    for (std::size_t i = 0; i < g.n; ++i) r[i] = f.c[1] * g[moment::zeta2][i] + f.c[2] * g[moment::zeta3][i];
    return r;
  }
  static const S* hessian(const Taylor<2, K, S>& f, const MomentGradients<S>& g) {
    using numerics::derivative;
    S* r = arena.take<S>(g.n * g.n);
    const S* z2 = g[moment::zeta2];
    const S* z3 = g[moment::zeta3];
    if constexpr (K >= 2)
      for (std::size_t i = 0; i < g.n; ++i)
        for (std::size_t j = 0; j < g.n; ++j)
          r[i * g.n + j] = derivative(f, 2, 0) * z2[i] * z2[j] + derivative(f, 0, 2) * z3[i] * z3[j] +
                           derivative(f, 1, 1) * (z2[i] * z3[j] + z3[i] * z2[j]);
    return r;
  }
};

/// Contraction of the outer function with the moments, second order.
template <class S, class Chain>
void contract_second(OuterDerivatives<S>& f, const MomentGradients<S>& g, const Chain& chain, S* out) {
  const std::size_t n = g.n, m = f.count;
  S* half = arena.take<S>(m * n);  // sum over b of F_ab M_b,j
  for (std::size_t a = 0; a < m; ++a) {
    for (std::size_t j = 0; j < n; ++j) {
      S sum = f.f2[a * m] * g[0][j];
      for (std::size_t b = 1; b < m; ++b) sum += f.f2[a * m + b] * g[b][j];
      half[a * n + j] = sum;
    }
  }
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j <= i; ++j) {
      S sum = chain.first(i, j) + chain.first(j, i);
      for (std::size_t a = 0; a < m; ++a) sum += g[a][i] * half[a * n + j];
      for (std::size_t q = 0; q < 2; ++q) sum += f.f1[moment::m2es3 + q] * g.hessian[q][i * n + j];
      out[i * n + j] = out[j * n + i] = sum;
    }
  }
}

/// The same, third order.
template <class S, class Chain>
void contract_third(OuterDerivatives<S>& f, const MomentGradients<S>& g, const Chain& chain, S* out) {
  const std::size_t n = g.n, m = f.count;
  // By stages: over the last moment, then the middle one, then the first.
  S* one = arena.take<S>(m * m);
  S* two = arena.take<S>(m * n);
  S* mixed[2] = {arena.take<S>(n), arena.take<S>(n)};  // sum over b of F_qb M_b,k for the quadratic moments q
  for (std::size_t q = 0; q < 2; ++q) {
    for (std::size_t k = 0; k < n; ++k) {
      mixed[q][k] = S(0.0);
      for (std::size_t b = 0; b < m; ++b) mixed[q][k] += f.f2[(moment::m2es3 + q) * m + b] * g[b][k];
    }
  }
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t ab = 0; ab < m * m; ++ab) {
      S sum(0.0);
      for (std::size_t c = 0; c < m; ++c) sum += f.f3[ab * m + c] * g[c][k];
      one[ab] = sum;
    }
    for (std::size_t a = 0; a < m; ++a) {
      for (std::size_t j = 0; j <= k; ++j) {
        S sum(0.0);
        for (std::size_t b = 0; b < m; ++b) sum += one[a * m + b] * g[b][j];
        two[a * n + j] = sum;
      }
    }
    for (std::size_t j = 0; j <= k; ++j) {
      for (std::size_t i = 0; i <= j; ++i) {
        S sum = chain.second(i, j, k) + chain.second(j, i, k) + chain.second(k, i, j);
        for (std::size_t a = 0; a < m; ++a) sum += two[a * n + j] * g[a][i];
        for (std::size_t q = 0; q < 2; ++q) {
          const S* h = g.hessian[q];
          sum += mixed[q][k] * h[i * n + j] + mixed[q][j] * h[i * n + k] + mixed[q][i] * h[j * n + k];
        }
        const std::size_t order[6][3] = {{i, j, k}, {i, k, j}, {j, i, k}, {j, k, i}, {k, i, j}, {k, j, i}};
        for (const auto& p : order) out[(p[0] * n + p[1]) * n + p[2]] = sum;
      }
    }
  }
}

}  // namespace

template <int K, class T, class R>
void composition_derivatives(const MixtureState<T>& s, const R& density, CompositionDerivatives<Wider<T, R>>& out) {
  using S = Wider<T, R>;
  const Arena::Frame frame(arena);
  const S rho(density);
  std::array<S, 4> zeta;
  for (std::size_t k = 0; k < 4; ++k) zeta[k] = rho * s.zeta_rho[k];

  AssociationMoments<T> associating;
  if (s.associates) associating = association_moments(s);
  const std::size_t count = moment::associating + associating.count;
  auto outer = take_outer<K, S>(count);
  ChainLogarithms<K, S> logarithms;
  add_hard_chain<K>(s, rho, zeta, outer, logarithms);
  add_dispersion<K>(s, rho, zeta[3], outer);
  if (s.associates) add_association<K>(s, associating, rho, zeta, outer);

  auto gradients = moment_gradients<K>(s, rho, count);
  const std::size_t n = gradients.n;
  for (std::size_t r = 0; r < associating.count; ++r)
    for (std::size_t i = 0; i < n; ++i)
      gradients.row[(moment::associating + r) * n + i] = S(at(associating.place[r]) == i ? 1.0 : 0.0);

  const ExplicitChain<K, T, S> chain(s, logarithms, gradients);
  out.a = outer.value;
  for (std::size_t i = 0; i < n; ++i) {
    S sum = chain.value(i);
    for (std::size_t m = 0; m < count; ++m) sum += outer.f1[m] * gradients[m][i];
    out.first[i] = sum;
  }
  if constexpr (K >= 2) contract_second(outer, gradients, chain, out.second);
  if constexpr (K >= 3) contract_third(outer, gradients, chain, out.third);
  if (s.is_polar) add_polar<K>(s, rho, zeta[3], gradients[moment::zeta3], out);
}

using T1 = Taylor<1, 1>;
using T2 = Taylor<1, 2>;
using T21 = Taylor<2, 1>;
template void composition_derivatives<1>(const MixtureState<double>&, const double&, CompositionDerivatives<double>&);
template void composition_derivatives<2>(const MixtureState<double>&, const double&, CompositionDerivatives<double>&);
template void composition_derivatives<3>(const MixtureState<double>&, const double&, CompositionDerivatives<double>&);
template void composition_derivatives<1>(const MixtureState<T1>&, const double&, CompositionDerivatives<T1>&);
template void composition_derivatives<1>(const MixtureState<double>&, const T1&, CompositionDerivatives<T1>&);
template void composition_derivatives<1>(const MixtureState<double>&, const T2&, CompositionDerivatives<T2>&);
template void composition_derivatives<1>(const MixtureState<T21>&, const T21&, CompositionDerivatives<T21>&);
template void composition_derivatives<2>(const MixtureState<double>&, const T1&, CompositionDerivatives<T1>&);

}  // namespace tessarel::eos
