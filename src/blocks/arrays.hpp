// Families whose inputs are arrays with derivatives of their own: moments of the diameter, pair diameters, energies and
// dispersion sums, association strengths, polar integrals and sums. Derivatives by rho are plain here, not scaled.
#pragma once

#include <algorithm>
#include <functional>

#include "blocks/moments.hpp"

namespace tessarel::blocks {

/// Evaluates a member, once for each combination of components without regard to order. Returns the status.
template <class Family, char... V>
int evaluate_arrays(const Scope& scope, const double* const* in, double* const* out) {
  using S = Slots<V...>;
  constexpr int order = S::orders.x;
  // A derivative by composition is that of the mixture.
  const bool of_mixture = order > 0 && Family::of_composition;
  Arguments<Family, V...> args({scope.eos, scope.n, of_mixture ? 0 : scope.ipure, scope.power}, in);
  int status = 0;
  for (std::size_t flat = 0; flat < power_of(scope.n, order); ++flat) {
    std::size_t stride = 1, same = 0;
    for (std::size_t slot = at(S::plain), rest = flat; slot < at(S::count); ++slot, rest /= at(scope.n))
      args.p[slot] = static_cast<int>(rest % at(scope.n));
    // The same components in falling order come earlier in the array: there the work has been done.
    std::sort(args.p.begin() + S::plain, args.p.begin() + S::count, std::greater<>());
    for (std::size_t slot = at(S::plain); slot < at(S::count); ++slot, stride *= at(scope.n))
      same += at(args.p[slot]) * stride;
    for (std::size_t output = 0; output < Family::outputs; ++output) {
      const std::size_t size = Family::output(output).size(scope.n);
      double* to = out[output] + flat * size;
      if (same != flat)
        std::copy_n(out[output] + same * size, size, to);
      else if (Family::clears)
        std::fill_n(to, size, 0.0);
    }
    if (same != flat) continue;
    const auto emit = [&](std::size_t output, std::size_t k, const auto& value) {
      out[output][k + flat * Family::output(output).size(scope.n)] = top(value);
    };
    status |= Family::eval(args, emit);
  }
  return status;
}

/// What most blocks share: one output, no status, all entries written.
struct ArrayFamily {
  static constexpr std::size_t outputs = 1;
  static constexpr bool clears = false;          ///< entries that no component has are 0
  static constexpr bool of_composition = false;  ///< the first input is the composition
};

/// x_i, or 1 for a component alone; in a derivative by x the fractions always count.
template <class A>
typename A::Full fraction(const A& a, int i) {
  if (A::S::orders.x == 0 && a.single()) return typename A::Full(1.0);
  return a.variable(a.value(0, at(i)), 'x', i);
}

struct dij : ArrayFamily {
  enum : std::size_t { diameter };
  static constexpr std::array inputs{Input{.rank = 1, .highest = {.t = 3}}};
  static constexpr Input output(std::size_t) { return {2}; }

  static int eval(const auto& a, const auto& emit) {
    using D = typename std::decay_t<decltype(a)>::Full;
    const auto n = at(a.scope.n);
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = 0; j < n; ++j) {
        const D di = a.full(diameter, i), dj = a.full(diameter, j);
        emit(0, i + n * j, i == j ? D(di * 0.5) : D(di * dj / (di + dj)));
      }
    }
    return 0;
  }
};

struct zeta : ArrayFamily {
  static constexpr bool of_composition = true;
  enum : std::size_t { fractions, density, diameter };
  static constexpr std::array inputs{Input{.rank = 1}, Input{}, Input{.rank = 1, .highest = {.t = 3}}};
  static constexpr Input output(std::size_t) { return {}; }

  static int eval(const auto& a, const auto& emit) {
    using D = typename std::decay_t<decltype(a)>::Full;
    D sum(0.0);
    for (int i = a.first(); i < a.last(); ++i) {
      D power(a.parameters().mseg[at(i)]);
      for (int k = 0; k < a.scope.power; ++k) power = power * a.full(diameter, at(i));
      sum = sum + power * fraction(a, i);
    }
    emit(0, 0, D(sum * (fluid::pi_6 * a.value(density))));
    return 0;
  }
};

/// The energies eps and eps_ij; of a component alone only its diagonal entry.
struct sigeps : ArrayFamily {
  static constexpr std::size_t outputs = 2;
  enum : std::size_t { temperature };
  static constexpr std::array inputs{Input{}};
  static constexpr Input output(std::size_t k) { return {k == 0 ? 1 : 2}; }

  static int eval(const auto& a, const auto& emit) {
    using D = typename std::decay_t<decltype(a)>::Full;
    const auto& p = a.parameters();
    const auto t = a.variable(a.value(temperature), 't');
    const auto inverse_t = numerics::inverse(t);
    for (int i = a.first(); i < a.last(); ++i) {
      emit(0, at(i), D(eos::energy_ratio(p, at(i), inverse_t) * p.epsil[at(i)]));
      for (int j = a.first(); j < a.last(); ++j)
        emit(1, at(i + a.scope.n * j),
             eos::pair_energy(p, eos::geometric_energy(p, at(i), at(j)), at(i), at(j), t, inverse_t));
    }
    return 0;
  }
};

/// The dispersion sums m2es3 and m2e2s3.
struct pertterm : ArrayFamily {
  static constexpr bool of_composition = true;
  static constexpr std::size_t outputs = 2;
  enum : std::size_t { fractions, temperature, pair_diameter, pair_energy };
  static constexpr std::array inputs{Input{.rank = 1}, Input{}, Input{.rank = 2},
                                     Input{.rank = 2, .highest = {.t = 3}}};
  static constexpr Input output(std::size_t) { return {}; }

  static int eval(const auto& a, const auto& emit) {
    using D = typename std::decay_t<decltype(a)>::Full;
    const auto& segments = a.parameters().mseg;
    const auto inverse_t = numerics::inverse(a.variable(a.value(temperature), 't'));
    D first(0.0), second(0.0);
    for (int i = a.first(); i < a.last(); ++i) {
      for (int j = a.first(); j < a.last(); ++j) {
        const auto ij = at(i + a.scope.n * j);
        const auto energy = a.full(pair_energy, ij) * inverse_t;
        const auto term = fraction(a, i) * fraction(a, j) * energy *
                          (segments[at(i)] * segments[at(j)] * numerics::cube(a.value(pair_diameter, ij)));
        first = first + term;
        second = second + term * energy;
      }
    }
    emit(0, 0, first);
    emit(1, 0, second);
    return 0;
  }
};

/// Association strengths g sigma^3 kap_hb (exp(eps_hb / t) - 1), [i + n (k + n (a + 5 b))].
struct deltaab : ArrayFamily {
  static constexpr bool clears = true;
  enum : std::size_t { temperature, pair_diameter, contact };
  static constexpr std::array inputs{Input{}, Input{.rank = 2}, Input{.rank = 2, .highest = {3, 4, 3}}};
  static constexpr Input output(std::size_t) { return {2, 25}; }

  static int eval(const auto& a, const auto& emit) {
    using D = typename std::decay_t<decltype(a)>::Full;
    const auto& p = a.parameters();
    const auto inverse_t = numerics::inverse(a.variable(a.value(temperature), 't'));
    const auto n = at(a.scope.n);
    for (auto i = at(a.first()); i < at(a.last()); ++i) {
      for (auto k = at(a.first()); k < at(a.last()); ++k) {
        const auto g = a.full(contact, a.scope.eos.simplified ? 0 : i + n * k);
        const double volume = numerics::cube(a.value(pair_diameter, i + n * k)) * p.kap_hb[i][k];
        for (std::size_t s = 0; s < at(p.nhb_typ[i]); ++s)
          for (std::size_t r = 0; r < at(p.nhb_typ[k]); ++r)
            emit(0, i + n * (k + n * (s + 5 * r)),
                 D((numerics::exp(inverse_t * p.eps_hb[i][k][s][r]) - 1.0) * volume * g));
      }
    }
    return 0;
  }
};

/// Fractions of unbonded sites X = 1 / (1 + rho sum x n X delta), [i + n a]; 1 where there is no site. A derivative
/// solves the differentiated equation with the lower derivatives given, by the damped iteration of the values.
struct xnhb : ArrayFamily {
  static constexpr bool of_composition = true;
  static constexpr bool clears = true;
  enum : std::size_t { fractions, density, strength, lower_orders };
  static constexpr std::array inputs{Input{.rank = 1}, Input{}, Input{.rank = 2, .factor = 25, .highest = {3, 4, 3}},
                                     Input{.rank = 1, .factor = 5, .highest = {3, 4, 3}, .lower = true}};
  static constexpr Input output(std::size_t) { return {1, 5}; }

  static int eval(const auto& a, const auto& emit) {
    using D = typename std::decay_t<decltype(a)>::Full;
    constexpr int l = std::decay_t<decltype(a)>::S::count;
    const auto n = at(a.scope.n);
    const auto& p = a.parameters();
    const Arena::Frame frame(a.arena());
    const auto take = [&a](auto kind, std::size_t size) { return a.arena().template take<decltype(kind)>(size); };
    const std::size_t capacity = n * 5;
    auto* site = take(std::size_t{}, capacity);  // i + n a
    std::size_t count = 0;
    for (auto i = at(a.first()); i < at(a.last()); ++i)
      for (std::size_t s = 0; s < at(p.nhb_typ[i]); ++s) site[count++] = i + n * s;
    auto* types = take(1.0, count);
    auto* bond = take(1.0, count * count);
    auto* x = take(1.0, count);
    auto* driving = take(1.0, count);
    auto* solution = take(1.0, count);
    auto* unbonded = take(D{}, count);
    std::fill_n(types, count, 1.0);
    if constexpr (l > 0)
      for (std::size_t k = 0; k < count; ++k) unbonded[k] = a.full(lower_orders, site[k]);
    const D rho = a.variable(a.value(density), 'r');
    for (std::size_t k = 0; k < count; ++k) {
      D sum(1.0);
      for (std::size_t m = 0; m < count; ++m) {
        const std::size_t from = site[m] % n, to = site[k] % n, s = site[m] / n, r = site[k] / n;
        const D b = rho * fraction(a, static_cast<int>(from)) * a.full(strength, from + n * (to + n * (s + 5 * r))) *
                    static_cast<double>(p.nhb_no[from][s]);
        bond[k * count + m] = numerics::value(b);
        if constexpr (l > 0) sum = sum + b * unbonded[m];
      }
      if constexpr (l > 0) {
        x[k] = numerics::value(unbonded[k]);
        driving[k] = -x[k] * top(D(sum * unbonded[k]));
      }
    }
    const auto sites = static_cast<int>(count);
    const double tolerance = eos::site_tolerance(a.value(density));
    int status = 0;
    if constexpr (l > 0) {
      status = eos::solve_unbonded_order(a.arena(), sites, types, bond, tolerance, x, driving, solution);
    } else {
      for (std::size_t k = 0; k < capacity; ++k) emit(0, k, 1.0);
      status = eos::solve_unbonded(a.arena(), sites, types, bond, tolerance, solution);
    }
    for (std::size_t k = 0; k < count; ++k) emit(0, site[k], solution[k]);
    return status;
  }
};

/// The polar interaction types present among the first n components, from 0: `first` to `last`.
struct PolarTypes {
  int first = 0, last = -1;
};
inline PolarTypes polar_types(const Scope& scope) {
  const fluid::Parameters& p = scope.eos.parameters();
  const eos::Polar::Tables& tables = scope.eos.model.of<eos::Polar>();
  const auto any = [&scope](const fluid::Vector& moment) {
    return std::any_of(moment.begin(), moment.begin() + scope.n, [](double m) { return m != 0; });
  };
  const bool dipoles = any(p.dipole), quadrupoles = any(p.quapole);
  const int first = dipoles ? 0 : 1, last = !quadrupoles ? 0 : dipoles ? 2 : 1;
  return {std::max(tables.first_type, first), std::min(tables.last_type, last)};
}

/// Polar integrals j2 [type + 3 (i + n j)] and j3 [type + 3 (i + n (j + n l))].
struct j2j3 : ArrayFamily {
  static constexpr std::size_t outputs = 2;
  static constexpr bool clears = true;
  enum : std::size_t { temperature, packing, energy };
  static constexpr std::array inputs{Input{}, Input{.highest = {3, 1, 1}}, Input{.rank = 1, .highest = {.t = 3}}};
  static constexpr Input output(std::size_t k) { return {k == 0 ? 2 : 3, 3}; }

  static int eval(const auto& args, const auto& emit) {
    using D = typename std::decay_t<decltype(args)>::Full;
    const auto n = at(args.scope.n);
    const auto& p = args.parameters();
    const D inverse_t = numerics::inverse(args.variable(args.value(temperature), 't'));
    const D eta = args.full(packing, 0);
    const PolarTypes types = polar_types(args.scope);
    for (int type = types.first; type <= types.last; ++type) {
      for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j) {
          const D ei = args.full(energy, i), ej = args.full(energy, j);
          const D h = numerics::sqrt(D(ei * ej)) * inverse_t;
          const auto a = eos::Polar::pair_a(type, p, i, j), b = eos::Polar::pair_b(type, p, i, j);
          std::array<D, 5> powers;
          for (std::size_t k = 0; k < 5; ++k) powers[k] = h * b[k] + a[k];
          emit(0, at(type) + 3 * (i + n * j), eos::polar_polynomial(powers, eta));
          for (std::size_t m = 0; m < n; ++m)
            emit(1, at(type) + 3 * (i + n * (j + n * m)),
                 eos::polar_polynomial(eos::Polar::triplet_c(type, p, i, j, m), eta));
        }
      }
    }
    return 0;
  }
};

/// Second- and third-order polar terms, by interaction type.
struct a2a3 : ArrayFamily {
  static constexpr bool of_composition = true;
  static constexpr std::size_t outputs = 2;
  static constexpr bool clears = true;
  enum : std::size_t { fractions, temperature, density, pair_integral, triplet_integral };
  static constexpr std::array inputs{Input{.rank = 1}, Input{}, Input{},
                                     Input{.rank = 2, .factor = 3, .highest = {3, 4, 3}},
                                     Input{.rank = 3, .factor = 3, .highest = {3, 4, 3}}};
  static constexpr Input output(std::size_t) { return {0, 3}; }

  static int eval(const auto& a, const auto& emit) {
    using D = typename std::decay_t<decltype(a)>::Full;
    const auto n = at(a.scope.n);
    const auto& p = a.parameters();
    const D inverse_t = numerics::inverse(a.variable(a.value(temperature), 't'));
    const D rho = a.variable(a.value(density), 'r');
    const PolarTypes types = polar_types(a.scope);
    for (int type = types.first; type <= types.last; ++type) {
      const auto t = at(type);
      D sum2(0.0), sum3(0.0);
      for (int i = a.first(); i < a.last(); ++i) {
        for (int j = a.first(); j < a.last(); ++j) {
          const D xx = fraction(a, i) * fraction(a, j);
          const auto ui = at(i), uj = at(j);
          if (const double factor = eos::Polar::gamma2(type, p, ui, uj); factor != 0)
            sum2 = sum2 + xx * a.full(pair_integral, t + 3 * (ui + n * uj)) * factor;
          for (int k = a.first(); k < a.last(); ++k)
            if (const double factor = eos::Polar::gamma3(type, p, ui, uj, at(k)); factor != 0)
              sum3 =
                  sum3 + xx * fraction(a, k) * a.full(triplet_integral, t + 3 * (ui + n * (uj + n * at(k)))) * factor;
        }
      }
      emit(0, t, D(sum2 * rho * inverse_t * inverse_t * eos::second_order_factor));
      emit(1, t, D(sum3 * rho * rho * inverse_t * inverse_t * inverse_t * eos::third_order_factor));
    }
    return 0;
  }
};

/// Evaluates a member of any family, with its arguments and outputs in order. Returns the status of its iteration.
template <class Family, char... V>
int evaluate(const Scope& scope, const double* const* in, double* const* out) {
  if constexpr (requires { Family::moments; }) {
    evaluate_moments<Family, V...>(scope, in, out);
    return 0;
  } else {
    return evaluate_arrays<Family, V...>(scope, in, out);
  }
}

/// The size of an output without its x indices.
template <class Family>
constexpr std::size_t output_size(std::size_t output, int n) {
  if constexpr (requires { Family::moments; })
    return Family::size(n);
  else
    return Family::output(output).size(n);
}

/// The diameters of all components by t, from a derivative `given` of order `known` of them: sigma - d varies as
/// exp(-3 epsil / t).
inline void diameter_derivative(const fluid::Parameters& p, int n, double t, const double* given, int known, int order,
                                double* out) {
  using N = Taylor<1, 3>;
  for (int i = 0; i < n; ++i) {
    const double energy = 3.0 * p.epsil[at(i)];
    const double gap = known == 0 ? given[i] - p.sigma[at(i)] : given[i] * t * t / energy;
    const N d = numerics::exp(N((1.0 / t - numerics::inverse(numerics::variable<N>(t))) * energy)) * gap;
    out[i] = numerics::derivative(d, order);
  }
}

}  // namespace tessarel::blocks
