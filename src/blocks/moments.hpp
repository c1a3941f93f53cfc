// Families of functions of one or two moments that are linear in the mole fractions: the packing fraction, the mean
// segment number, zeta2 and zeta3. A function is differentiated by its moments, and its derivatives by composition
// follow by contraction with the gradients of the moments, n^k operations for order k and one evaluation.
//
// In the slots 'r' the density varies at constant t and x, and the result carries a factor rho for each order. In the
// slots 'e' the packing fraction varies with the density, the density being its only cause.
#pragma once

#include "blocks/numbers.hpp"
#include "eos/dispersion.hpp"
#include "eos/hard_chain.hpp"

namespace tessarel::blocks {

/// Evaluates a member. `in` are its array arguments in order, `out` the outputs of the family.
template <class Family, char... V>
void evaluate_moments(const Scope& scope, const double* const* in, double* const* out) {
  using S = Slots<V...>;
  constexpr int order = S::orders.x, count = Family::moments;
  using D = Dual<S::plain>;
  using X = Taylor<count, order, D>;
  const Arguments<Family, V...> args(scope, in);

  std::array<X, count> m;
  const std::array<D, count> base = Family::moments_of(args, -1);
  for (std::size_t a = 0; a < m.size(); ++a) {
    m[a] = X(base[a]);
    if constexpr (order > 0) m[a].c[a + 1] = D(1.0);
  }
  if constexpr (S::has('r') || S::has('e')) {
    X& eta = m[Family::packing_moment];
    const D shift = args.shift(S::has('r') ? 'r' : 'e');
    const X ratio = S::has('r') ? X(D(shift + 1.0)) : X(1.0 + shift / eta);
    for (std::size_t a = 0; a < m.size(); ++a)
      if (a != Family::packing_moment && Family::other_scales) m[a] *= ratio;
    eta = S::has('r') ? X(eta * ratio) : X(eta + shift);
  }
  std::array<std::array<D, count>, nmax> gradient;
  if constexpr (order > 0)
    for (int i = 0; i < scope.n; ++i) gradient[at(i)] = Family::moments_of(args, i);

  // Choice w of a moment for each x slot, its digits in base `count`.
  constexpr std::size_t choices = power_of(count, order);
  const auto emit = [&](std::size_t output, std::size_t k, const X& f) {
    std::array<D, choices> by_moments;
    for (std::size_t w = 0; w < choices; ++w) {
      typename X::Monomials::Exponents e{};
      for (std::size_t slot = 0, rest = w; slot < at(order); ++slot, rest /= at(count)) ++e[rest % at(count)];
      double permutations = 1.0;
      for (const int times : e) permutations *= numerics::factorial[at(times)];
      by_moments[w] = f.c[X::Monomials::index(e)] * permutations;
    }
    for (std::size_t flat = 0; flat < power_of(scope.n, order); ++flat) {
      D sum(0.0);
      for (std::size_t w = 0; w < choices; ++w) {
        D product = by_moments[w];
        for (std::size_t slot = 0, rest = w, q = flat; slot < at(order); ++slot, rest /= at(count), q /= at(scope.n))
          product = product * gradient[q % at(scope.n)][rest % at(count)];
        sum = sum + product;
      }
      out[output][k + flat * Family::size(scope.n)] = top(sum);
    }
  };
  Family::eval(args, m, emit);
}

/// The usual case. `moments_of(args, i)` are the moments (i of -1), or their derivatives by the fraction of i.
struct MomentFamily {
  static constexpr std::size_t outputs = 1;
  static constexpr std::size_t packing_moment = 0;  ///< the moment that is the packing fraction
  static constexpr bool other_scales = false;       ///< the other moment varies with the density as well
  static std::size_t size(int) { return 1; }
};

/// A function of the packing fraction alone.
template <class Derived>
struct EtaFamily : MomentFamily {
  static constexpr int moments = 1;
  enum : std::size_t { packing };
  static constexpr std::array inputs{Input{.highest = {.t = 3, .x = 1}}};

  static auto moments_of(const auto& a, int i) { return std::array{a.plain(packing, 0, i)}; }
  static void eval(const auto&, const auto& m, const auto& emit) { emit(0, 0, Derived::of(m[0])); }
};

// The closed forms of one diameter.
struct chi : EtaFamily<chi> {
  template <class X>
  static X of(const X& eta) {
    return eta / (1.0 - eta);
  }
};
struct a_hs : EtaFamily<a_hs> {
  template <class X>
  static X of(const X& eta) {
    return eos::hard_sphere_a_closed(eta, inverse(1.0 - eta));
  }
};
struct z_hs : EtaFamily<z_hs> {
  template <class X>
  static X of(const X& eta) {
    const X u = inverse(1.0 - eta);
    return eos::hard_sphere_z(X(eta * u), u, 3.0, 1.0);
  }
};
struct g : EtaFamily<g> {
  template <class X>
  static X of(const X& eta) {
    return eos::contact(inverse(1.0 - eta), 0.5);
  }
};

/// A function of the mean segment number that the host has set, and the packing fraction.
struct SegmentFamily : MomentFamily {
  static constexpr int moments = 2;
  static constexpr std::size_t packing_moment = 1;
  enum : std::size_t { packing };
  static constexpr std::array inputs{Input{.highest = {.t = 3, .x = 1}}};

  static auto moments_of(const auto& a, int i) {
    const auto eta = a.plain(packing, 0, i);
    const double segments = i < 0 ? a.means().mmean : a.parameters().mseg[at(i)];
    return std::array{std::decay_t<decltype(eta)>(segments), eta};
  }
};

struct inverse_c1 : SegmentFamily {
  static void eval(const auto&, const auto& m, const auto& emit) {
    emit(0, 0, eos::inverse_c1(inverse(1.0 - m[1]), inverse(2.0 - m[1]), m[0]));
  }
};
struct c1 : SegmentFamily {
  static void eval(const auto&, const auto& m, const auto& emit) { emit(0, 0, eos::c1(m[1], m[0])); }
};
/// I1 and I2; of eta I1 and eta I2 where a derivative by eta is asked for.
struct intgpert : SegmentFamily {
  static constexpr std::size_t outputs = 2;
  static void eval(const auto& a, const auto& m, const auto& emit) {
    using X = typename std::decay_t<decltype(m)>::value_type;
    const auto weights = eos::mean_segment_weights(m[0]);
    std::size_t output = 0;
    for (const auto* constants : {&eos::ap, &eos::bp}) {
      const X i = eos::integral(eos::integral_coefficients(*constants, weights), m[1]);
      emit(output++, 0, std::decay_t<decltype(a)>::S::has('e') ? X(m[1] * i) : i);
    }
  }
};

/// The contact values of a mixture: of the diameters, zeta2 and zeta3.
struct gij : MomentFamily {
  static constexpr int moments = 2;
  static constexpr std::size_t packing_moment = 1;
  static constexpr bool other_scales = true;
  enum : std::size_t { diameter, zeta2, zeta3 };
  static constexpr std::array inputs{Input{.rank = 1, .highest = {.t = 3}}, Input{.highest = {.t = 3, .x = 1}},
                                     Input{.highest = {.t = 3, .x = 1}}};
  static std::size_t size(int n) { return at(n * n); }

  static auto moments_of(const auto& a, int i) { return std::array{a.plain(zeta2, 0, i), a.plain(zeta3, 0, i)}; }
  static void eval(const auto& a, const auto& m, const auto& emit) {
    const auto n = at(a.scope.n);
    const auto& [moment2, eta] = m;
    const auto u = inverse(1.0 - eta);
    if (a.single()) {
      emit(0, at(a.first()) * (n + 1), eos::contact(u, 0.5));
      return;
    }
    const auto w = moment2 * u;
    for (std::size_t i = 0; i < n; ++i) {
      const auto di = a.plain(diameter, i);
      for (std::size_t j = 0; j <= i; ++j) {
        const auto dj = a.plain(diameter, j);
        const auto pair = decltype(a.plain(diameter, 0))(i == j ? di * 0.5 : di * dj / (di + dj));
        const auto value = eos::contact_at(u, w * pair);
        emit(0, i + n * j, value);
        if (i != j) emit(0, j + n * i, value);
      }
    }
  }
};

/// The mean diameter cbrt(sum x m d^3 / sum x m).
struct d_avg : MomentFamily {
  static constexpr int moments = 2;
  enum : std::size_t { fractions, diameter };
  static constexpr std::array inputs{Input{.rank = 1}, Input{.rank = 1, .highest = {.t = 3}}};

  static auto moments_of(const auto& a, int i) {
    using D = typename std::decay_t<decltype(a)>::Plain;
    const auto share = [&a](int k) {
      const double segments = a.parameters().mseg[at(k)];
      return std::array{D(segments), D(numerics::cube(a.plain(diameter, at(k))) * segments)};
    };
    if (i >= 0) return share(i);
    std::array sum{D(0.0), D(0.0)};
    for (int k = 0; k < a.scope.n; ++k)
      for (std::size_t m = 0; m < 2; ++m)
        sum[m] = sum[m] + share(k)[m] * (a.scope.n == 1 ? 1.0 : a.value(fractions, at(k)));
    return sum;
  }
  static void eval(const auto&, const auto& m, const auto& emit) { emit(0, 0, cbrt(m[1] / m[0])); }
};

/// The packing fraction of a mean diameter: pi/6 rho d_avg^3 sum x m.
struct eta_simp : MomentFamily {
  static constexpr int moments = 2;
  enum : std::size_t { fractions, density, mean_diameter };
  static constexpr std::array inputs{Input{.rank = 1}, Input{}, Input{.highest = {.t = 3, .x = 1}}};

  static auto moments_of(const auto& a, int i) {
    const auto& segments = a.parameters().mseg;
    double mbar = i < 0 ? 0.0 : segments[at(i)];
    for (int k = 0; k < (i < 0 ? a.scope.n : 0); ++k) mbar += a.value(fractions, at(k)) * segments[at(k)];
    const auto diameter = a.plain(mean_diameter, 0, i);
    return std::array{std::decay_t<decltype(diameter)>(mbar), diameter};
  }
  static void eval(const auto& a, const auto& m, const auto& emit) {
    emit(0, 0, numerics::cube(m[1]) * m[0] * (a.value(density) * fluid::pi_6));
  }
};

}  // namespace tessarel::blocks
