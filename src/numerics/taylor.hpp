// Truncated Taylor numbers: a value with its derivatives up to a fixed order.
//
// Taylor<V, K, S> holds the Taylor coefficients of a quantity in V variables up to total degree K, over a scalar S
// that is double or again a Taylor number. A formula written as a template over its number type then delivers its
// derivatives, exact to rounding, without allocation:
//
//   using T3 = Taylor<1, 3>;
//   const T3 y = exp(-3.0 * variable<T3>(t));   // derivative(y, 2) is the second derivative by t
//
// Coefficients are f^(k) / k!, so a product is a convolution and every function below is a recurrence over the
// coefficients (Griewank & Walther 2008, ch. 13). All loops run over compile-time indices: the compiler sees
// straight-line code on scalars.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace tessarel::numerics {

namespace detail {

/// Exponents of all monomials in V variables up to degree K, ordered by degree, the first variable leading.
template <int V, int K>
struct Monomials {
  using Exponents = std::array<int, static_cast<std::size_t>(V)>;

  static constexpr std::size_t count = [] {
    std::size_t c = 1;
    for (int i = 1; i <= V; ++i) c = c * static_cast<std::size_t>(K + i) / static_cast<std::size_t>(i);
    return c;
  }();

  static constexpr std::array<Exponents, count> exponents = [] {
    std::array<Exponents, count> all{};
    std::size_t next = 0;
    for (int degree = 0; degree <= K; ++degree) {
      Exponents e{};
      e[0] = degree;
      while (true) {
        all[next++] = e;
        // Next exponent tuple of the same degree, in lexicographically falling order.
        int v = V - 2;
        while (v >= 0 && e[static_cast<std::size_t>(v)] == 0) --v;
        if (v < 0) break;
        const auto at = static_cast<std::size_t>(v);
        --e[at];
        int rest = degree;
        for (std::size_t i = 0; i <= at; ++i) rest -= e[i];
        e[at + 1] = rest;
        for (std::size_t i = at + 2; i < static_cast<std::size_t>(V); ++i) e[i] = 0;
      }
    }
    return all;
  }();

  static constexpr std::size_t index(const Exponents& e) {
    if constexpr (V == 1) return static_cast<std::size_t>(e[0]);
    if constexpr (V == 2) return static_cast<std::size_t>((e[0] + e[1]) * (e[0] + e[1] + 1) / 2 + e[1]);
    std::size_t i = 0;
    while (exponents[i] != e) ++i;
    return i;
  }
};

/// The factorisations of monomial I into a product of two: pairs (j, k) with x^j x^k = x^I, j rising.
template <int V, int K, std::size_t I>
struct Factors {
  using M = Monomials<V, K>;
  struct Pair {
    std::size_t j, k;
  };
  static constexpr bool divides(std::size_t j) {
    for (std::size_t v = 0; v < static_cast<std::size_t>(V); ++v)
      if (M::exponents[j][v] > M::exponents[I][v]) return false;
    return true;
  }
  static constexpr std::size_t count = [] {
    std::size_t c = 0;
    for (std::size_t j = 0; j <= I; ++j) c += divides(j) ? 1U : 0U;
    return c;
  }();
  static constexpr std::array<Pair, count> pairs = [] {
    std::array<Pair, count> all{};
    std::size_t next = 0;
    for (std::size_t j = 0; j <= I; ++j) {
      if (!divides(j)) continue;
      typename M::Exponents rest{};
      for (std::size_t v = 0; v < static_cast<std::size_t>(V); ++v) rest[v] = M::exponents[I][v] - M::exponents[j][v];
      all[next++] = {j, M::index(rest)};
    }
    return all;
  }();
  /// A variable that occurs in monomial I, for the recurrences of exp, log and powers.
  static constexpr std::size_t variable = [] {
    std::size_t v = 0;
    while (v + 1 < static_cast<std::size_t>(V) && M::exponents[I][v] == 0) ++v;
    return v;
  }();
  static constexpr double exponent(std::size_t j) { return static_cast<double>(M::exponents[j][variable]); }
};

}  // namespace detail

template <int V, int K, class S = double>
struct Taylor {
  using Scalar = S;
  using Monomials = detail::Monomials<V, K>;
  static constexpr int variables = V;
  static constexpr int order = K;
  static constexpr std::size_t size = Monomials::count;

  std::array<S, size> c;  ///< coefficients f^(k) / k!; left uninitialised by the default constructor, as a double is

  constexpr Taylor() = default;
  constexpr Taylor(double value) : c{} { c[0] = S(value); }
  template <class U>
  requires(std::is_same_v<U, S> && !std::is_same_v<S, double>) constexpr Taylor(const U& value) : c{} { c[0] = value; }

  constexpr Taylor& operator+=(const Taylor& b) { return *this = *this + b; }
  constexpr Taylor& operator-=(const Taylor& b) { return *this = *this - b; }
  constexpr Taylor& operator*=(const Taylor& b) { return *this = *this * b; }
  constexpr Taylor& operator*=(double b) { return *this = *this * b; }
};

template <class T>
inline constexpr bool is_taylor = false;
template <int V, int K, class S>
inline constexpr bool is_taylor<Taylor<V, K, S>> = true;

namespace detail {

template <class T, class F>
constexpr T make(F&& coefficient) {
  return [&]<std::size_t... I>(std::index_sequence<I...>) {
    T r;
    ((r.c[I] = coefficient(std::integral_constant<std::size_t, I>{})), ...);
    return r;
  }
  (std::make_index_sequence<T::size>{});
}

/// Sum over the factor pairs First..count-1 of monomial I of term(j, k).
template <class F, std::size_t First, class Term>
constexpr auto fold_factors(Term&& term) {
  return [&]<std::size_t... P>(std::index_sequence<P...>) {
    return (... + term(F::pairs[P + First].j, F::pairs[P + First].k));
  }
  (std::make_index_sequence<F::count - First>{});
}

}  // namespace detail

template <int V, int K, class S>
constexpr Taylor<V, K, S> operator+(const Taylor<V, K, S>& a, const Taylor<V, K, S>& b) {
  return detail::make<Taylor<V, K, S>>([&](auto i) { return a.c[i] + b.c[i]; });
}
template <int V, int K, class S>
constexpr Taylor<V, K, S> operator-(const Taylor<V, K, S>& a, const Taylor<V, K, S>& b) {
  return detail::make<Taylor<V, K, S>>([&](auto i) { return a.c[i] - b.c[i]; });
}
template <int V, int K, class S>
constexpr Taylor<V, K, S> operator-(const Taylor<V, K, S>& a) {
  return detail::make<Taylor<V, K, S>>([&](auto i) { return -a.c[i]; });
}
template <int V, int K, class S>
constexpr Taylor<V, K, S> operator*(const Taylor<V, K, S>& a, const Taylor<V, K, S>& b) {
  return detail::make<Taylor<V, K, S>>([&](auto i) {
    return detail::fold_factors<detail::Factors<V, K, i>, 0>([&](auto j, auto k) { return a.c[j] * b.c[k]; });
  });
}
template <int V, int K, class S>
constexpr Taylor<V, K, S> operator/(const Taylor<V, K, S>& a, const Taylor<V, K, S>& b) {
  const S inverse_b0 = 1.0 / b.c[0];
  Taylor<V, K, S> q;
  [&]<std::size_t... I>(std::index_sequence<I...>) {
    q.c[0] = a.c[0] * inverse_b0;
    ((q.c[I + 1] = (a.c[I + 1] - detail::fold_factors<detail::Factors<V, K, I + 1>, 1>(
                                     [&](auto j, auto k) { return b.c[j] * q.c[k]; })) *
                   inverse_b0),
     ...);
  }
  (std::make_index_sequence<Taylor<V, K, S>::size - 1>{});
  return q;
}

// A scalar (double, or the nested scalar type) with a Taylor number.
template <int V, int K, class S>
constexpr Taylor<V, K, S> scaled(const Taylor<V, K, S>& a, const auto& b) {
  return detail::make<Taylor<V, K, S>>([&](auto i) { return a.c[i] * b; });
}
template <int V, int K, class S>
constexpr Taylor<V, K, S> shifted(Taylor<V, K, S> a, const auto& b) {
  a.c[0] = a.c[0] + b;
  return a;
}

template <class U, class T>
inline constexpr bool is_scalar_of = false;
template <class U, int V, int K, class S>
inline constexpr bool is_scalar_of<U, Taylor<V, K, S>> = std::is_same_v<U, double> || std::is_same_v<U, S>;

template <class T, class U>
requires is_scalar_of<U, T>
constexpr T operator*(const T& a, const U& b) {
  return scaled(a, b);
}
template <class T, class U>
requires is_scalar_of<U, T>
constexpr T operator*(const U& b, const T& a) {
  return scaled(a, b);
}
template <class T, class U>
requires is_scalar_of<U, T>
constexpr T operator+(const T& a, const U& b) {
  return shifted(a, b);
}
template <class T, class U>
requires is_scalar_of<U, T>
constexpr T operator+(const U& b, const T& a) {
  return shifted(a, b);
}
template <class T, class U>
requires is_scalar_of<U, T>
constexpr T operator-(const T& a, const U& b) {
  return shifted(a, -b);
}
template <class T, class U>
requires is_scalar_of<U, T>
constexpr T operator-(const U& b, const T& a) {
  return shifted(-a, b);
}
template <class T, class U>
requires is_scalar_of<U, T>
constexpr T operator/(const T& a, const U& b) {
  return scaled(a, 1.0 / b);
}

/// The reciprocal of `a`.
constexpr double inverse(double a) {
  return 1.0 / a;
}
template <int V, int K, class S>
constexpr Taylor<V, K, S> inverse(const Taylor<V, K, S>& a) {
  const S r0 = inverse(a.c[0]);
  Taylor<V, K, S> r;
  [&]<std::size_t... I>(std::index_sequence<I...>) {
    r.c[0] = r0;
    ((r.c[I + 1] = -(
          detail::fold_factors<detail::Factors<V, K, I + 1>, 1>([&](auto j, auto k) { return a.c[j] * r.c[k]; }) * r0)),
     ...);
  }
  (std::make_index_sequence<Taylor<V, K, S>::size - 1>{});
  return r;
}
template <int V, int K, class S, class U>
requires is_scalar_of<U, Taylor<V, K, S>>
constexpr Taylor<V, K, S> operator/(const U& a, const Taylor<V, K, S>& b) {
  return inverse(b) * a;
}

namespace detail {

/// Continues a recurrence whose coefficient 0 is given: c[i] for i = 1 .. size - 1 in rising order.
template <class T, class F>
T recurrence(const typename T::Scalar& c0, F&& next) {
  T r;
  r.c[0] = c0;
  [&]<std::size_t... I>(std::index_sequence<I...>) {
    ((r.c[I + 1] = next(std::integral_constant<std::size_t, I + 1>{}, r)), ...);
  }
  (std::make_index_sequence<T::size - 1>{});
  return r;
}

/// y = x^alpha from y0 = x0^alpha: e x0 y_I = sum over J > 0 of ((alpha + 1) e_J - e) x_J y_(I-J).
template <int V, int K, class S>
Taylor<V, K, S> power_series(const Taylor<V, K, S>& x, double alpha, const S& y0) {
  const S inverse_x0 = inverse(x.c[0]);
  return recurrence<Taylor<V, K, S>>(y0, [&](auto i, const auto& y) {
    using F = Factors<V, K, i>;
    return fold_factors<F, 1>([&](auto j, auto k) {
             return x.c[j] * y.c[k] * ((alpha + 1.0) * F::exponent(j) / F::exponent(i) - 1.0);
           }) *
           inverse_x0;
  });
}

}  // namespace detail

using std::cbrt;
using std::exp;
using std::log;
using std::sqrt;

template <int V, int K, class S>
Taylor<V, K, S> exp(const Taylor<V, K, S>& x) {
  return detail::recurrence<Taylor<V, K, S>>(exp(x.c[0]), [&](auto i, const auto& y) {
    using F = detail::Factors<V, K, i>;
    return detail::fold_factors<F, 1>(
        [&](auto j, auto k) { return x.c[j] * y.c[k] * (F::exponent(j) / F::exponent(i)); });
  });
}

/// The logarithm with its value given, for callers who know it more exactly than log(x.c[0]).
template <int V, int K, class S>
Taylor<V, K, S> log_from(const Taylor<V, K, S>& x, const S& value) {
  const S inverse_x0 = inverse(x.c[0]);
  return detail::recurrence<Taylor<V, K, S>>(value, [&](auto i, const auto& y) {
    using F = detail::Factors<V, K, i>;
    const auto sum =
        detail::fold_factors<F, 1>([&](auto j, auto k) { return x.c[j] * y.c[k] * (F::exponent(k) / F::exponent(i)); });
    return (x.c[i] - sum) * inverse_x0;
  });
}
template <int V, int K, class S>
Taylor<V, K, S> log(const Taylor<V, K, S>& x) {
  return log_from(x, log(x.c[0]));
}

/// ln(1 + x), exact also for a small x. The plain logarithm is the faster one where nothing is lost by it.
inline double log_1p(double x) {
  return std::abs(x) < 0.01 ? std::log1p(x) : std::log(1.0 + x);
}
template <int V, int K, class S>
Taylor<V, K, S> log_1p(const Taylor<V, K, S>& x) {
  return log_from(1.0 + x, log_1p(x.c[0]));
}

template <int V, int K, class S>
Taylor<V, K, S> sqrt(const Taylor<V, K, S>& x) {
  return detail::power_series(x, 0.5, sqrt(x.c[0]));
}
template <int V, int K, class S>
Taylor<V, K, S> cbrt(const Taylor<V, K, S>& x) {
  return detail::power_series(x, 1.0 / 3.0, cbrt(x.c[0]));
}

template <class T>
constexpr T square(const T& a) {
  return a * a;
}
template <class T>
constexpr T cube(const T& a) {
  return a * a * a;
}

// Two functions with constraints and not one with `if constexpr`: g++ 12 makes a number in its place at the caller only
// if it is declared in the outermost block. A copy would read in pairs what has just been written singly, and wait for
// it.

/// Variable number `v` (from 0) at `value`, as a number of type T: its first derivative by itself is 1.
template <class T>
requires is_taylor<T>
constexpr T variable(double value, int v = 0) {
  T x(value);
  typename T::Monomials::Exponents e{};
  e[static_cast<std::size_t>(v)] = 1;
  x.c[T::Monomials::index(e)] = 1.0;
  return x;
}
template <class T>
requires std::is_same_v<T, double>
constexpr double variable(double value, int /*v*/ = 0) {
  return value;
}

inline constexpr std::array<double, 7> factorial = {1, 1, 2, 6, 24, 120, 720};

/// The derivative of order `k...` by the variables, from the coefficients.
template <int V, int K, class S, class... Orders>
constexpr S derivative(const Taylor<V, K, S>& a, Orders... orders) {
  static_assert(sizeof...(Orders) == static_cast<std::size_t>(V));
  const typename Taylor<V, K, S>::Monomials::Exponents e{orders...};
  return a.c[Taylor<V, K, S>::Monomials::index(e)] * (1.0 * ... * factorial[static_cast<std::size_t>(orders)]);
}

/// Order up to which a number carries derivatives, nested numbers included.
template <class T>
inline constexpr int total_order = 0;
template <int V, int K, class S>
inline constexpr int total_order<Taylor<V, K, S>> = K + total_order<S>;

/// The plain value, without derivatives.
constexpr double value(double a) {
  return a;
}
template <int V, int K, class S>
constexpr double value(const Taylor<V, K, S>& a) {
  return value(a.c[0]);
}

/// A scalar S as the number N that carries further variables; S's own variable becomes variable 0.
template <class N, class S>
N lifted(const S& a) {
  if constexpr (std::is_same_v<N, S> || std::is_same_v<S, double>) {
    return N(a);
  } else {
    static_assert(S::variables == 1 && N::variables == 2);
    N r(0.0);
    for (int k = 0; k <= (S::order < N::order ? S::order : N::order); ++k)
      r.c[N::Monomials::index({k, 0})] = a.c[static_cast<std::size_t>(k)];
    return r;
  }
}

/// Functions of one argument x whose scalar type S itself carries derivatives, as numbers of order K in the argument.
/// They are evaluated over plain numbers of the summed order, `plain`, and their series shifted to x by `lift`: much
/// cheaper than arithmetic over nested numbers.
template <int K, class S>
struct ShiftedSeries {
  using Plain = Taylor<1, K + total_order<S>>;
  Plain plain;  ///< the argument
  S shift;      ///< x - value(x)

  explicit ShiftedSeries(const S& x) : plain(variable<Plain>(value(x))), shift(x - value(x)) {}

  [[nodiscard]] Taylor<1, K, S> lift(const Plain& series) const requires(total_order<S> == 0) { return series; }
  [[nodiscard]] Taylor<1, K, S> lift(const Plain& series) const requires(total_order<S> > 0) {
    Taylor<1, K, S> r;
    for (std::size_t l = 0; l <= K; ++l) {
      S sum(0.0);
      for (std::size_t j = total_order<S> + 1; j-- > 0;) {
        double binomial = 1.0;  // l + j over j
        for (std::size_t i = 1; i <= j; ++i) binomial = binomial * static_cast<double>(l + i) / static_cast<double>(i);
        sum = sum * shift + binomial * series.c[l + j];
      }
      r.c[l] = sum;
    }
    return r;
  }
};

}  // namespace tessarel::numerics
