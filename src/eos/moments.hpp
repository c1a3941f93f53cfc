// Derivatives of a by composition, the mole fractions taken as independent variables: the moments of the composition,
// and the calculus that the terms share.
//
// The hard-chain and dispersion terms depend on composition through six moments, the mean segment number, zeta1 to
// zeta3 (linear in x) and the two dispersion sums (quadratic); the association term also through the fractions of the
// associating components, which join as further moments. So a = F(M(x)) + a part with another dependence on x. F is
// differentiated by its moments, over numbers of two variables since no term has more that are not linear, and the
// result is contracted with the derivatives of the moments: a gradient costs about as much as a value, a Hessian about
// n squared.
//
// The composition of a term is an object Composition<K, T, S>(state) for orders up to K, with the parts of
// NoComposition that the term needs.
#pragma once

#include <algorithm>

#include "eos/term.hpp"
#include "numerics/views.hpp"
#include "numerics/weighted_rows.hpp"

namespace tessarel::eos {

/// Places of the moments. Further moments of the terms follow from `further` on.
namespace moment {
inline constexpr int mbar = 0, zeta1 = 1, zeta2 = 2, zeta3 = 3, m2es3 = 4, m2e2s3 = 5, further = 6;
}

/// Where the derivatives go: arrays of n, n x n, n x n x n scalars. An order above K stays untouched and may be null.
template <class S>
struct CompositionDerivatives {
  S a;
  S* first = nullptr;
  numerics::Square<S> second{};
  numerics::Cube<S> third{};
};

/// The gradients of the moments by the fractions, and the Hessians of the two quadratic ones.
template <class S>
struct MomentGradients {
  S* row = nullptr;                     ///< [moment * n + i]
  numerics::Square<S> hessian[2] = {};  ///< of m2es3 and m2e2s3, one array behind the other
  std::size_t n = 0;

  S* operator[](std::size_t m) const { return row + m * n; }
  [[nodiscard]] numerics::Rows<S> rows(std::size_t count) const { return {row, n, count}; }
  /// Row i of both Hessians.
  [[nodiscard]] numerics::Rows<S> hessian_rows(std::size_t i) const { return {&hessian[0](i, 0), n * n, 2}; }
};

/// Derivatives of the outer function by its moments: symmetric arrays, all entries filled.
template <class S>
struct OuterDerivatives {
  std::size_t count = 0;  ///< number of moments
  S value;
  S* f1 = nullptr;
  numerics::Square<S> f2{};
  numerics::Cube<S> f3{};

  S& second(int a, int b) { return f2(at(a), at(b)); }
  S& third(int a, int b, int c) { return f3(at(a), at(b), at(c)); }
};

/// What a term adds to the composition derivatives: nothing. A term hides the members that it needs.
struct NoComposition {
  /// Number of moments besides the six, which the term owns.
  [[nodiscard]] std::size_t further_moments() const { return 0; }
  /// Adds the part that is a function of moments; the first of the term's own ones is `further`.
  void add_outer(const auto& /*rho*/, const auto& /*zeta*/, int /*further*/, auto& /*out*/) {}
  /// The gradients of the moments that the term owns.
  void fill_gradients(const auto& /*gradients*/, int /*further*/) const {}
  /// Adds the part with another dependence on the fractions, of symmetric entries one: (i, j) with i >= j in `second`,
  /// (i, j, k) with i <= j <= k in `third`.
  void add_direct(const auto& /*rho*/, const auto& /*zeta*/, const auto& /*gradients*/, auto& /*out*/) const {}
};

template <int K, class S>
OuterDerivatives<S> take_outer(Arena& arena, std::size_t count) {
  OuterDerivatives<S> f;
  f.count = count;
  f.value = S(0.0);
  f.f1 = arena.zeros<S>(count);
  if constexpr (K >= 2) f.f2 = {arena.zeros<S>(count * count), count};
  if constexpr (K >= 3) f.f3 = {arena.zeros<S>(count * count * count), count};
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

}  // namespace tessarel::eos
