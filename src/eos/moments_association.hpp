// The association term as a function of moments: zeta2, zeta3 and the fractions of the associating components.
//
// Its gradient needs the unbonded fractions X alone, by stationarity (association.hpp): the slope by a fraction is
// sum n_ia ln X_ia, that by zeta_m is -rho/2 sum x_i x_k n_ia n_kb X_ia X_kb delta g_zeta. Higher orders are the
// derivatives of this gradient, over numbers seeded in the moments: their count is that of the associating
// components plus two, not that of all.
#pragma once

#include "eos/moments.hpp"

namespace tessarel::eos {

using numerics::lifted;

template <class T>
struct AssociationMoments {
  std::size_t count = 0;        ///< associating components
  std::array<int, nmax> place;  ///< their places in the mixture
  std::array<int, nmax> rank;   ///< and back
};

template <class T>
AssociationMoments<T> association_moments(const MixtureState<T>& s) {
  AssociationMoments<T> m;
  m.rank.fill(-1);
  for (int k = 0; k < s.association.classes; ++k) {
    const int place = s.association.component[k];
    if (m.rank[at(place)] >= 0) continue;
    m.rank[at(place)] = static_cast<int>(m.count);
    m.place[m.count++] = place;
  }
  return m;
}

/// The gradient of a_assoc by zeta2, zeta3 and the fractions, in this order, at numbers N; returns a_assoc.
template <class N, class T>
N association_gradient(const MixtureState<T>& s, const AssociationMoments<T>& m, const N& rho, double density,
                       const N& zeta2, const N& zeta3, const N* fraction, N* gradient) {
  const Arena::Frame frame(arena);
  const auto& a = s.association;
  const auto n = at(a.classes);
  N* bond = arena.take<N>(n * n);
  N* by_zeta2 = arena.take<N>(n * n);
  N* by_zeta3 = arena.take<N>(n * n);
  N* x = arena.take<N>(n);
  const N u = inverse(1.0 - zeta3);
  const N w = zeta2 * u;
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t l = 0; l < n; ++l) {
      const auto i = at(a.component[k]), j = at(a.component[l]);
      const N factor = rho * fraction[m.rank[j]] * lifted<N>(a.strength[k * n + l]);
      if (record.is_simp) {
        bond[k * n + l] = factor * contact(u, 0.5);
        by_zeta2[k * n + l] = N(0.0);
        by_zeta3[k * n + l] = factor * contact_slope(u, 0.5) * u * u;
        continue;
      }
      // g = u (1 + q w)(1 + 2 q w), q = d_i d_j / (d_i + d_j), w = zeta2 u
      const N q = lifted<N>(T(s.d[i] * s.d[j] / (s.d[i] + s.d[j])));
      const N y = q * w;
      const N product = (y + 1.0) * (y * 2.0 + 1.0), slope = u * (y * 4.0 + 3.0) * q;
      bond[k * n + l] = factor * u * product;
      by_zeta2[k * n + l] = factor * slope * u;
      by_zeta3[k * n + l] = factor * u * (u * product + slope * w);
    }
  }
  solve_unbonded(a.classes, a.types, bond, site_tolerance(density), x);
  N value(0.0);
  for (std::size_t c = 0; c < m.count + 2; ++c) gradient[c] = N(0.0);
  for (std::size_t k = 0; k < n; ++k) {
    const auto rank = at(m.rank[at(a.component[k])]);
    const N log_x = log(x[k]);
    gradient[2 + rank] += log_x * a.sites[k];
    value += (log_x + (1.0 - x[k]) * 0.5) * fraction[rank] * a.sites[k];
    N sum2(0.0), sum3(0.0);
    for (std::size_t l = 0; l < n; ++l) {
      sum2 += by_zeta2[k * n + l] * x[l];
      sum3 += by_zeta3[k * n + l] * x[l];
    }
    const N weight = x[k] * fraction[rank] * (-0.5 * a.sites[k]);
    gradient[0] += weight * sum2;
    gradient[1] += weight * sum3;
  }
  return value;
}

/// The number type that carries `seeds` more variables of first order each beside those of S.
template <class S, int Seeds>
struct SeededNumber {
  using type = Taylor<2, 2>;
};
template <class S>
struct SeededNumber<S, 0> {
  using type = S;
};
template <>
struct SeededNumber<double, 1> {
  using type = Taylor<1, 1>;
};

/// Adds the association term to the outer function.
template <int K, class T, class S>
void add_association(const MixtureState<T>& s, const AssociationMoments<T>& m, const S& rho,
                     const std::array<S, 4>& zeta, OuterDerivatives<S>& out) {
  constexpr int seeds = K - 1;
  using N = typename SeededNumber<S, seeds>::type;
  static_assert(K < 3 || std::is_same_v<S, double>);
  const Arena::Frame frame(arena);
  const std::size_t count = m.count + 2;
  N* variables = arena.take<N>(count);
  N* gradient = arena.take<N>(count);
  const auto place = [&](std::size_t c) {
    return c < 2 ? moment::zeta2 + static_cast<int>(c) : moment::associating + static_cast<int>(c) - 2;
  };
  const auto evaluate = [&](auto&& seed) {
    variables[0] = lifted<N>(zeta[2]);
    variables[1] = lifted<N>(zeta[3]);
    for (std::size_t r = 0; r < m.count; ++r) variables[2 + r] = N(s.comp.x[at(m.place[r])]);
    seed();
    return association_gradient(s, m, lifted<N>(rho), numerics::value(rho), variables[0], variables[1], variables + 2,
                                gradient);
  };
  const auto add_value_and_gradient = [&](const N& value) {
    const auto scalar = [](const N& a) {
      if constexpr (std::is_same_v<N, S>) {
        return a;
      } else if constexpr (std::is_same_v<S, double>) {
        return a.c[0];
      } else {
        S r;
        for (int k = 0; k <= S::order; ++k) r.c[at(k)] = a.c[N::Monomials::index({k, 0})];
        return r;
      }
    };
    out.value += scalar(value);
    for (std::size_t c = 0; c < count; ++c) out.f1[at(place(c))] += scalar(gradient[c]);
  };
  if constexpr (K == 1) {
    add_value_and_gradient(evaluate([] {}));
  } else if constexpr (K == 2) {
    for (std::size_t b = 0; b < count; ++b) {
      const N value = evaluate([&] {
        if constexpr (std::is_same_v<S, double>)
          variables[b].c[1] += 1.0;
        else
          variables[b].c[N::Monomials::index({0, 1})] += 1.0;
      });
      if (b == 0) add_value_and_gradient(value);
      for (std::size_t c = 0; c < count; ++c) {
        if constexpr (std::is_same_v<S, double>) {
          out.second(place(c), place(b)) += gradient[c].c[1];
        } else {
          S r;
          r.c[0] = gradient[c].c[N::Monomials::index({0, 1})];
          r.c[1] = gradient[c].c[N::Monomials::index({1, 1})];
          out.second(place(c), place(b)) += r;
        }
      }
    }
  } else {
    for (std::size_t b = 0; b < count; ++b) {
      for (std::size_t d = b; d < count; ++d) {
        const N value = evaluate([&] {
          variables[b].c[N::Monomials::index({1, 0})] += 1.0;
          variables[d].c[N::Monomials::index({0, 1})] += 1.0;
        });
        if (b == 0 && d == 0) add_value_and_gradient(value);
        for (std::size_t c = 0; c < count; ++c) {
          if (d == b) out.second(place(c), place(b)) += gradient[c].c[N::Monomials::index({1, 0})];
          const double mixed = gradient[c].c[N::Monomials::index({1, 1})];
          out.third(place(c), place(b), place(d)) += mixed;
          if (d != b) out.third(place(c), place(d), place(b)) += mixed;
        }
      }
    }
  }
}

}  // namespace tessarel::eos
