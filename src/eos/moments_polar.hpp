// The polar terms by composition: each type is a Pade form of two quantities, a2 quadratic and a3 cubic in the
// fractions, both polynomials in eta, and eta is linear in the fractions.
#pragma once

#include "eos/composition.hpp"
#include "eos/moments.hpp"

namespace tessarel::eos {

/// A function of the fractions with its derivatives, arrays of n, n^2, n^3.
template <int K, class S>
struct FractionFunction {
  Taylor<1, K, S> total;                 ///< over eta, explicit fractions held
  Taylor<1, K, S>* explicit1 = nullptr;  ///< derivative by an explicit fraction, over eta
  Taylor<1, K, S>* explicit2 = nullptr;
  Taylor<1, K, S>* explicit3 = nullptr;
  S* first = nullptr;  ///< full derivatives
  S* second = nullptr;
  S* third = nullptr;
};

template <int K, class S>
FractionFunction<K, S> take_fraction_function(std::size_t n) {
  using E = Taylor<1, K, S>;
  FractionFunction<K, S> f;
  f.total = E(0.0);
  const auto zeroed = [](std::size_t size) {
    E* array = arena.take<E>(size);
    std::fill_n(array, size, E(0.0));
    return array;
  };
  f.explicit1 = zeroed(n);
  f.first = arena.take<S>(n);
  if constexpr (K >= 2) {
    f.explicit2 = zeroed(n * n);
    f.second = arena.take<S>(n * n);
  }
  if constexpr (K >= 3) {
    f.explicit3 = zeroed(n * n * n);
    f.third = arena.take<S>(n * n * n);
  }
  return f;
}

/// The components of a monomial in the fractions.
struct Monomial {
  std::array<int, 3> index{};
  std::size_t size = 0;
};

/// The monomial of `components` without the factors in `common`, all of which it holds.
template <std::size_t Size>
Monomial reduced_monomial(const std::array<int, Size>& components, const std::vector<int>& common) {
  Monomial m;
  std::array<bool, Size> taken{};
  for (const int c : common) {
    std::size_t p = 0;
    while (taken[p] || components[p] != c) ++p;
    taken[p] = true;
  }
  for (std::size_t p = 0; p < Size; ++p)
    if (!taken[p]) m.index[m.size++] = components[p];
  return m;
}

/// Adds the monomial c(eta) x_i x_j ...
template <int K, class S>
void add_monomial(FractionFunction<K, S>& f, std::size_t n, const double* x, const Monomial& m,
                  const Taylor<1, K, S>& c) {
  constexpr std::size_t none = 3;
  const auto rest = [&](std::size_t p, std::size_t q, std::size_t r) {
    double product = 1;
    for (std::size_t i = 0; i < m.size; ++i)
      if (i != p && i != q && i != r) product *= x[m.index[i]];
    return product;
  };
  f.total += c * rest(none, none, none);
  for (std::size_t p = 0; p < m.size; ++p) {
    f.explicit1[m.index[p]] += c * rest(p, none, none);
    if constexpr (K >= 2) {
      for (std::size_t q = 0; q < m.size; ++q) {
        if (q == p) continue;
        f.explicit2[at(m.index[p]) * n + at(m.index[q])] += c * rest(p, q, none);
        if constexpr (K >= 3) {
          for (std::size_t r = 0; r < m.size; ++r) {
            if (r == p || r == q) continue;
            f.explicit3[(at(m.index[p]) * n + at(m.index[q])) * n + at(m.index[r])] += c * rest(p, q, r);
          }
        }
      }
    }
  }
}

/// Full derivatives from the explicit ones and those through eta, whose gradient is `eta_x`.
template <int K, class S>
void complete(FractionFunction<K, S>& f, std::size_t n, const S* eta_x) {
  using numerics::derivative;
  const auto e1 = [&](std::size_t i, int k) { return derivative(f.explicit1[i], k); };
  for (std::size_t i = 0; i < n; ++i) f.first[i] = derivative(f.total, 1) * eta_x[i] + e1(i, 0);
  if constexpr (K >= 2) {
    const auto e2 = [&](std::size_t i, std::size_t j, int k) { return derivative(f.explicit2[i * n + j], k); };
    for (std::size_t i = 0; i < n; ++i)
      for (std::size_t j = 0; j < n; ++j)
        f.second[i * n + j] =
            derivative(f.total, 2) * eta_x[i] * eta_x[j] + e1(i, 1) * eta_x[j] + e1(j, 1) * eta_x[i] + e2(i, j, 0);
    if constexpr (K >= 3) {
      for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j)
          for (std::size_t k = 0; k < n; ++k)
            f.third[(i * n + j) * n + k] =
                derivative(f.total, 3) * eta_x[i] * eta_x[j] * eta_x[k] + e1(i, 2) * eta_x[j] * eta_x[k] +
                e1(j, 2) * eta_x[i] * eta_x[k] + e1(k, 2) * eta_x[i] * eta_x[j] + e2(i, j, 1) * eta_x[k] +
                e2(i, k, 1) * eta_x[j] + e2(j, k, 1) * eta_x[i] + derivative(f.explicit3[(i * n + j) * n + k], 0);
    }
  }
}

/// Adds f(u, v) for two functions of the fractions to the derivatives in `out`.
template <int K, class S>
void add_composed(const Taylor<2, K, S>& f, const FractionFunction<K, S>& u, const FractionFunction<K, S>& v,
                  std::size_t n, CompositionDerivatives<S>& out) {
  using numerics::derivative;
  const FractionFunction<K, S>* inner[2] = {&u, &v};
  const auto d = [&f](int second_variable, int order) {
    return derivative(f, order - second_variable, second_variable);
  };
  out.a += f.c[0];
  for (std::size_t i = 0; i < n; ++i)
    for (int p = 0; p < 2; ++p) out.first[i] += d(p, 1) * inner[p]->first[i];
  if constexpr (K >= 2) {
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = 0; j < n; ++j) {
        S sum(0.0);
        for (int p = 0; p < 2; ++p) {
          sum += d(p, 1) * inner[p]->second[i * n + j];
          for (int q = 0; q < 2; ++q) sum += d(p + q, 2) * inner[p]->first[i] * inner[q]->first[j];
        }
        out.second[i * n + j] += sum;
      }
    }
  }
  if constexpr (K >= 3) {
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = 0; j < n; ++j) {
        for (std::size_t k = 0; k < n; ++k) {
          S sum(0.0);
          for (int p = 0; p < 2; ++p) {
            sum += d(p, 1) * inner[p]->third[(i * n + j) * n + k];
            for (int q = 0; q < 2; ++q) {
              sum += d(p + q, 2) * (inner[p]->second[i * n + j] * inner[q]->first[k] +
                                    inner[p]->second[i * n + k] * inner[q]->first[j] +
                                    inner[p]->second[j * n + k] * inner[q]->first[i]);
              for (int r = 0; r < 2; ++r)
                sum += d(p + q + r, 3) * inner[p]->first[i] * inner[q]->first[j] * inner[r]->first[k];
            }
          }
          out.third[(i * n + j) * n + k] += sum;
        }
      }
    }
  }
}

/// Multiplies a function of the fractions by the fraction x of component c, in place.
template <int K, class S>
void multiply_by_fraction(CompositionDerivatives<S>& f, std::size_t n, std::size_t c, double x) {
  if constexpr (K >= 3) {
    for (std::size_t i = 0; i < n; ++i)
      for (std::size_t j = 0; j < n; ++j)
        for (std::size_t k = 0; k < n; ++k) {
          S& value = f.third[(i * n + j) * n + k];
          value = value * x;
          if (i == c) value += f.second[j * n + k];
          if (j == c) value += f.second[i * n + k];
          if (k == c) value += f.second[i * n + j];
        }
  }
  if constexpr (K >= 2) {
    for (std::size_t i = 0; i < n; ++i)
      for (std::size_t j = 0; j < n; ++j) {
        S& value = f.second[i * n + j];
        value = value * x;
        if (i == c) value += f.first[j];
        if (j == c) value += f.first[i];
      }
  }
  for (std::size_t i = 0; i < n; ++i) f.first[i] = f.first[i] * x;
  f.first[c] += f.a;
  f.a = f.a * x;
}

/// Adds the polar terms. A fraction that every pair and triplet of a type holds is a factor of a2 and a3, and so of
/// their Pade form: it is taken out first, since the quotient loses its digits, and at 0 its value, as the factor
/// vanishes.
template <int K, class T, class S>
void add_polar(const MixtureState<T>& s, const S& rho, const S& eta, const S* eta_x, CompositionDerivatives<S>& out) {
  using E = Taylor<1, K, S>;
  using F = Taylor<2, K, S>;
  const auto n = at(s.comp.count);
  const double* x = s.comp.x.data();
  E e(eta);
  e.c[1] = S(1.0);
  const S scale2 = rho * (s.inverse_t * s.inverse_t * second_order_factor);
  const S scale3 = rho * rho * (s.inverse_t * s.inverse_t * s.inverse_t * third_order_factor);
  const auto zeroed = [](std::size_t size) {
    S* array = arena.take<S>(size);
    std::fill_n(array, size, S(0.0));
    return array;
  };
  for (int type = tables.first_type; type <= tables.last_type; ++type) {
    const Arena::Frame frame(arena);
    const auto& common = tables.common[at(type)];
    auto a2 = take_fraction_function<K, S>(n);
    auto a3 = take_fraction_function<K, S>(n);
    for (const PolarPair& p : tables.pairs[at(type)]) {
      const T softening = energy_ratio(at(p.i), at(p.j), s.inverse_t) * s.inverse_t;
      std::array<S, 5> c;
      for (std::size_t k = 0; k < 5; ++k) c[k] = scale2 * pair_coefficient(p, k, softening);
      add_monomial(a2, n, x, reduced_monomial(std::array{p.i, p.j}, common), polar_polynomial(c, e));
    }
    for (const PolarTriplet& p : tables.triplets[at(type)])
      add_monomial(a3, n, x, reduced_monomial(std::array{p.i, p.j, p.k}, common), E(polar_polynomial(p.c, e) * scale3));
    complete(a2, n, eta_x);
    complete(a3, n, eta_x);
    CompositionDerivatives<S> term{S(0.0), zeroed(n), K >= 2 ? zeroed(n * n) : nullptr,
                                   K >= 3 ? zeroed(n * n * n) : nullptr};
    add_composed(pade(seeded<F>(a2.total.c[0], 0), seeded<F>(a3.total.c[0], 1)), a2, a3, n, term);
    for (const int c : common) multiply_by_fraction<K>(term, n, at(c), x[c]);
    out.a += term.a;
    for (std::size_t i = 0; i < n; ++i) out.first[i] += term.first[i];
    if constexpr (K >= 2)
      for (std::size_t i = 0; i < n * n; ++i) out.second[i] += term.second[i];
    if constexpr (K >= 3)
      for (std::size_t i = 0; i < n * n * n; ++i) out.third[i] += term.third[i];
  }
}

}  // namespace tessarel::eos
