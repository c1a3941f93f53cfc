// Functions of the mole fractions that are polynomials in the fractions, with coefficients that depend on the packing
// fraction: their derivatives by the fractions, through which the packing fraction changes too, and those of a function
// of two of them.
#pragma once

#include <algorithm>

#include "eos/moments.hpp"

namespace tessarel::eos {

/// A function of the fractions with its derivatives, arrays of n, n^2, n^3.
template <int K, class S>
struct FractionFunction {
  Taylor<1, K, S> total;                 ///< over eta, explicit fractions held
  Taylor<1, K, S>* explicit1 = nullptr;  ///< derivative by an explicit fraction, over eta
  numerics::Square<Taylor<1, K, S>> explicit2{};
  numerics::Cube<Taylor<1, K, S>> explicit3{};
  S* first = nullptr;  ///< full derivatives
  numerics::Square<S> second{};
  numerics::Cube<S> third{};
};

template <int K, class S>
FractionFunction<K, S> take_fraction_function(Arena& arena, std::size_t n) {
  using E = Taylor<1, K, S>;
  FractionFunction<K, S> f;
  f.total = E(0.0);
  f.explicit1 = arena.zeros<E>(n);
  f.first = arena.take<S>(n);
  if constexpr (K >= 2) {
    f.explicit2 = {arena.zeros<E>(n * n), n};
    f.second = {arena.take<S>(n * n), n};
  }
  if constexpr (K >= 3) {
    f.explicit3 = {arena.zeros<E>(n * n * n), n};
    f.third = {arena.take<S>(n * n * n), n};
  }
  return f;
}

/// The components of a monomial in the fractions, of at most three factors.
struct Monomial {
  std::array<int, 3> index{};
  std::size_t size = 0;

  /// The monomial without the factors of `common`, all of which it contains.
  [[nodiscard]] Monomial without(const Monomial& common) const {
    std::array<bool, 3> taken{};
    for (std::size_t factor = 0; factor < common.size; ++factor) {
      std::size_t p = 0;
      while (taken[p] || index[p] != common.index[factor]) ++p;
      taken[p] = true;
    }
    Monomial rest;
    for (std::size_t p = 0; p < size; ++p)
      if (!taken[p]) rest.index[rest.size++] = index[p];
    return rest;
  }
  [[nodiscard]] int times(int component) const {
    int count = 0;
    for (std::size_t p = 0; p < size; ++p) count += index[p] == component ? 1 : 0;
    return count;
  }
};

/// Adds the monomial c(eta) x_i x_j ...
template <int K, class S>
void add_monomial(FractionFunction<K, S>& f, const double* x, const Monomial& m, const Taylor<1, K, S>& c) {
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
        f.explicit2(at(m.index[p]), at(m.index[q])) += c * rest(p, q, none);
        if constexpr (K >= 3) {
          for (std::size_t r = 0; r < m.size; ++r) {
            if (r == p || r == q) continue;
            f.explicit3(at(m.index[p]), at(m.index[q]), at(m.index[r])) += c * rest(p, q, r);
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
    const auto e2 = [&](std::size_t i, std::size_t j, int k) { return derivative(f.explicit2(i, j), k); };
    for (std::size_t i = 0; i < n; ++i)
      for (std::size_t j = 0; j < n; ++j)
        f.second(i, j) =
            derivative(f.total, 2) * eta_x[i] * eta_x[j] + e1(i, 1) * eta_x[j] + e1(j, 1) * eta_x[i] + e2(i, j, 0);
    if constexpr (K >= 3) {
      for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j)
          for (std::size_t k = 0; k < n; ++k)
            f.third(i, j, k) = derivative(f.total, 3) * eta_x[i] * eta_x[j] * eta_x[k] +
                               e1(i, 2) * eta_x[j] * eta_x[k] + e1(j, 2) * eta_x[i] * eta_x[k] +
                               e1(k, 2) * eta_x[i] * eta_x[j] + e2(i, j, 1) * eta_x[k] + e2(i, k, 1) * eta_x[j] +
                               e2(j, k, 1) * eta_x[i] + derivative(f.explicit3(i, j, k), 0);
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
          sum += d(p, 1) * inner[p]->second(i, j);
          for (int q = 0; q < 2; ++q) sum += d(p + q, 2) * inner[p]->first[i] * inner[q]->first[j];
        }
        out.second(i, j) += sum;
      }
    }
  }
  if constexpr (K >= 3) {
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = 0; j < n; ++j) {
        for (std::size_t k = 0; k < n; ++k) {
          S sum(0.0);
          for (int p = 0; p < 2; ++p) {
            sum += d(p, 1) * inner[p]->third(i, j, k);
            for (int q = 0; q < 2; ++q) {
              sum += d(p + q, 2) *
                     (inner[p]->second(i, j) * inner[q]->first[k] + inner[p]->second(i, k) * inner[q]->first[j] +
                      inner[p]->second(j, k) * inner[q]->first[i]);
              for (int r = 0; r < 2; ++r)
                sum += d(p + q + r, 3) * inner[p]->first[i] * inner[q]->first[j] * inner[r]->first[k];
            }
          }
          out.third(i, j, k) += sum;
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
          S& value = f.third(i, j, k);
          value = value * x;
          if (i == c) value += f.second(j, k);
          if (j == c) value += f.second(i, k);
          if (k == c) value += f.second(i, j);
        }
  }
  if constexpr (K >= 2) {
    for (std::size_t i = 0; i < n; ++i)
      for (std::size_t j = 0; j < n; ++j) {
        S& value = f.second(i, j);
        value = value * x;
        if (i == c) value += f.first[j];
        if (j == c) value += f.first[i];
      }
  }
  for (std::size_t i = 0; i < n; ++i) f.first[i] = f.first[i] * x;
  f.first[c] += f.a;
  f.a = f.a * x;
}

}  // namespace tessarel::eos
