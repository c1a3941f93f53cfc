#include "eos/composition.hpp"

namespace tessarel::eos {

namespace {

/// The gradients of the moments: those of the mean segment number and of zeta1 to zeta3; the terms add theirs.
template <int K, class T, class S>
MomentGradients<S> moment_gradients(const MixtureState<T>& s, const S& rho, std::size_t count) {
  MomentGradients<S> g;
  Arena& arena = s.arena();
  const std::size_t n = at(s.comp.count);
  g.n = n;
  g.row = arena.take<S>(count * n);
  if constexpr (K >= 2)
    for (auto& h : g.hessian) h = {arena.take<S>(n * n), n};
  const S packing = rho * pi_6;
  for (std::size_t i = 0; i < n; ++i) {
    const double m = s.parameters().mseg[at(s.comp.index[i])];
    const S zeta1 = packing * (s.d[i] * m);
    g[moment::mbar][i] = S(m);
    g[moment::zeta1][i] = zeta1;
    g[moment::zeta2][i] = zeta1 * s.d[i];
    g[moment::zeta3][i] = zeta1 * s.d[i] * s.d[i];
  }
  return g;
}

template <class S>
void contract_first(const OuterDerivatives<S>& f, const MomentGradients<S>& g, CompositionDerivatives<S>& out) {
  for (std::size_t i = 0; i < g.n; ++i) {
    S sum = out.first[i];
    for (std::size_t m = 0; m < f.count; ++m) sum += f.f1[m] * g[m][i];
    out.first[i] = sum;
  }
}

template <class S>
void contract_second(Arena& arena, const OuterDerivatives<S>& f, const MomentGradients<S>& g,
                     CompositionDerivatives<S>& out) {
  const std::size_t n = g.n, m = f.count;
  S* half = arena.take<S>(m * n);  // sum over b of F_ab M_b,j
  for (std::size_t a = 0; a < m; ++a) {
    for (std::size_t j = 0; j < n; ++j) {
      S sum = f.f2(a, 0) * g[0][j];
      for (std::size_t b = 1; b < m; ++b) sum += f.f2(a, b) * g[b][j];
      half[a * n + j] = sum;
    }
  }
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j <= i; ++j) {
      S sum = out.second(i, j);
      for (std::size_t a = 0; a < m; ++a) sum += g[a][i] * half[a * n + j];
      for (std::size_t q = 0; q < 2; ++q) sum += f.f1[moment::m2es3 + q] * g.hessian[q](i, j);
      out.second(i, j) = out.second(j, i) = sum;
    }
  }
}

template <class S>
void contract_third(Arena& arena, const OuterDerivatives<S>& f, const MomentGradients<S>& g,
                    CompositionDerivatives<S>& out) {
  const std::size_t n = g.n, m = f.count;
  // By stages: over the last moment, then the middle one, then the first.
  const numerics::Square<S> one{arena.take<S>(m * m), m};
  S* two = arena.take<S>(m * n);
  S* mixed[2] = {arena.take<S>(n), arena.take<S>(n)};  // sum over b of F_qb M_b,k for the quadratic moments q
  for (std::size_t q = 0; q < 2; ++q) {
    for (std::size_t k = 0; k < n; ++k) {
      mixed[q][k] = S(0.0);
      for (std::size_t b = 0; b < m; ++b) mixed[q][k] += f.f2(moment::m2es3 + q, b) * g[b][k];
    }
  }
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t a = 0; a < m; ++a) {
      for (std::size_t b = 0; b < m; ++b) {
        S sum(0.0);
        for (std::size_t c = 0; c < m; ++c) sum += f.f3(a, b, c) * g[c][k];
        one(a, b) = sum;
      }
    }
    for (std::size_t a = 0; a < m; ++a) {
      for (std::size_t j = 0; j <= k; ++j) {
        S sum(0.0);
        for (std::size_t b = 0; b < m; ++b) sum += one(a, b) * g[b][j];
        two[a * n + j] = sum;
      }
    }
    for (std::size_t j = 0; j <= k; ++j) {
      for (std::size_t i = 0; i <= j; ++i) {
        S sum = out.third(i, j, k);
        for (std::size_t a = 0; a < m; ++a) sum += two[a * n + j] * g[a][i];
        for (std::size_t q = 0; q < 2; ++q) {
          const auto& h = g.hessian[q];
          sum += mixed[q][k] * h(i, j) + mixed[q][j] * h(i, k) + mixed[q][i] * h(j, k);
        }
        const std::size_t order[6][3] = {{i, j, k}, {i, k, j}, {j, i, k}, {j, k, i}, {k, i, j}, {k, j, i}};
        for (const auto& p : order) out.third(p[0], p[1], p[2]) = sum;
      }
    }
  }
}

}  // namespace

template <int K, class T, class R>
void composition_derivatives(const MixtureState<T>& s, const R& density, CompositionDerivatives<Wider<T, R>>& out) {
  using S = Wider<T, R>;
  Arena& arena = s.arena();
  const Arena::Frame frame(arena);
  const S rho(density);
  std::array<S, 4> zeta;
  for (std::size_t k = 1; k < 4; ++k) zeta[k] = rho * s.zeta_rho[k];

  // The terms' parts; `f(term, place of its own moments)` for each of them in turn.
  auto parts = Terms::compositions<K, T, S>(s);
  std::size_t count = moment::further;
  const auto each_part = [&parts, &count](auto&& f) {
    count = moment::further;
    const auto one = [&](auto& part) {
      f(part, static_cast<int>(count));
      count += part.further_moments();
    };
    std::apply([&one](auto&... part) { (one(part), ...); }, parts);
  };
  each_part([](auto&, int) {});
  auto outer = take_outer<K, S>(arena, count);
  each_part([&](auto& part, int further) { part.add_outer(rho, zeta, further, outer); });
  const auto gradients = moment_gradients<K>(s, rho, count);
  each_part([&](const auto& part, int further) { part.fill_gradients(gradients, further); });

  const std::size_t n = gradients.n;
  out.a = S(0.0);
  std::fill_n(out.first, n, S(0.0));
  if constexpr (K >= 2) {
    out.second.n = n;
    for (std::size_t i = 0; i < n; ++i) std::fill_n(&out.second(i, 0), i + 1, S(0.0));
  }
  if constexpr (K >= 3) {
    out.third.n = n;
    for (std::size_t i = 0; i < n; ++i)
      for (std::size_t j = i; j < n; ++j) std::fill_n(&out.third(i, j, j), n - j, S(0.0));
  }
  each_part([&](const auto& part, int) { part.add_direct(rho, zeta, gradients, out); });
  out.a += outer.value;
  contract_first(outer, gradients, out);
  if constexpr (K >= 2) contract_second(arena, outer, gradients, out);
  if constexpr (K >= 3) contract_third(arena, outer, gradients, out);
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
