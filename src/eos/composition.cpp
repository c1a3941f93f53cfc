#include "eos/composition.hpp"

#include "numerics/weighted_rows.hpp"

namespace tessarel::eos {

using numerics::add_weighted_rows;
using numerics::columns_for;
using numerics::weighted_rows;

namespace {

/// The gradients of the moments: those of the mean segment number and of zeta1 to zeta3; the terms add theirs.
template <int K, class T, class S>
MomentGradients<S> moment_gradients(const MixtureState<T>& s, const S& rho, std::size_t count) {
  MomentGradients<S> g;
  Arena& arena = s.arena();
  const std::size_t n = at(s.comp.count);
  g.n = n;
  g.row = arena.take<S>(count * n);
  if constexpr (K >= 2) {
    S* both = arena.take<S>(2 * n * n);
    g.hessian[0] = {both, n};
    g.hessian[1] = {both + n * n, n};
  }
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
  add_weighted_rows(out.first, g.n, f.f1, 1, g.rows(f.count));
}

template <class S>
void contract_second(Arena& arena, const OuterDerivatives<S>& f, const MomentGradients<S>& g,
                     CompositionDerivatives<S>& out) {
  const std::size_t n = g.n, m = f.count;
  S* half = arena.take<S>(m * n);  // sum over b of F_ab M_b,j
  for (std::size_t a = 0; a < m; ++a) weighted_rows(half + a * n, n, &f.f2(a, 0), 1, g.rows(m));
  for (std::size_t i = 0; i < n; ++i) {
    S* row = &out.second(i, 0);
    const std::size_t columns = columns_for<S>(i + 1, n);  // those beyond the diagonal are overwritten by later rows
    add_weighted_rows(row, columns, g.row + i, n, {half, n, m});
    add_weighted_rows(row, columns, f.f1 + moment::m2es3, 1, g.hessian_rows(i));
    for (std::size_t j = 0; j < i; ++j) out.second(j, i) = row[j];
  }
}

template <class S>
void contract_third(Arena& arena, const OuterDerivatives<S>& f, const MomentGradients<S>& g,
                    CompositionDerivatives<S>& out) {
  const std::size_t n = g.n, m = f.count;
  // By stages: over the last moment, then the middle one, then the first. F is symmetric, so that each stage sums rows.
  S* one = arena.take<S>(m * m);
  S* two = arena.take<S>(m * n);
  S* line = arena.take<S>(n);
  S* mixed[2] = {arena.take<S>(n), arena.take<S>(n)};  // sum over b of F_qb M_b,k for the quadratic moments q
  for (std::size_t q = 0; q < 2; ++q) weighted_rows(mixed[q], n, &f.f2(moment::m2es3 + q, 0), 1, g.rows(m));
  for (std::size_t k = 0; k < n; ++k) {
    weighted_rows(one, m * m, g.row + k, n, {f.f3.data, m * m, m});
    for (std::size_t a = 0; a < m; ++a) weighted_rows(two + a * n, columns_for<S>(k + 1, n), one + a * m, 1, g.rows(m));
    for (std::size_t j = 0; j <= k; ++j) {
      weighted_rows(line, columns_for<S>(j + 1, n), two + j, n, g.rows(m));
      for (std::size_t i = 0; i <= j; ++i) {
        S sum = out.third(i, j, k) + line[i];
        for (std::size_t q = 0; q < 2; ++q) {
          const auto& h = g.hessian[q];
          sum += mixed[q][k] * h(j, i) + mixed[q][j] * h(k, i) + mixed[q][i] * h(k, j);
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
    std::fill_n(out.second.data, n * n, S(0.0));
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
