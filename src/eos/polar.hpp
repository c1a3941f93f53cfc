// Polar terms of third-order perturbation theory (Gross 2005, doi:10.1002/aic.10502, quadrupoles; Gross & Vrabec 2006,
// doi:10.1002/aic.10683, dipoles; Vrabec & Gross 2008, doi:10.1021/jp072619u, their cross term), for each interaction
// type in the Pade form a2 / (1 - a3 / a2), with
//
//   a2 = -164806748.95831627 (rho / t^2) sum x_i x_j gamma2_ij sum_k (a_ijk + b_ijk eps_ij / t) eta^k
//   a3 = 3750053166155.6084 (rho^2 / t^3) sum x_i x_j x_l gamma3_ijl sum_k c_ijlk eta^k.
//
// At one temperature and composition both are polynomials in eta. By composition a2 is quadratic and a3 cubic in the
// fractions, and eta is linear in them.
#pragma once

#include <cmath>
#include <vector>

#include "eos/energies.hpp"
#include "eos/fraction_functions.hpp"

namespace tessarel::eos {

inline constexpr double second_order_factor = -164806748.95831627;
inline constexpr double third_order_factor = 3750053166155.6084;

template <class N>
N polar_polynomial(const auto& c, const N& eta) {
  N sum = eta * c[4] + c[3];
  for (std::size_t k = 3; k-- > 0;) sum = sum * eta + c[k];
  return sum;
}

/// d(eta^power * polynomial)/d eta * eta^(1 - power): the density slope of a2 (power 1) and a3 (power 2).
template <class N>
N polar_slope(const auto& c, const N& eta, double power) {
  N sum = eta * ((4.0 + power) * c[4]) + (3.0 + power) * c[3];
  for (std::size_t k = 3; k-- > 0;) sum = sum * eta + (static_cast<double>(k) + power) * c[k];
  return sum;
}

/// Below this a2 counts as 0: a type without a pair at this composition, or with its components in traces of 1e-20.
inline constexpr double negligible_a2 = 1e-40;

/// a2 / (1 - a3 / a2). Below `negligible_a2` returns a2 + a3: avoids 0/0; the value is 0 to rounding.
template <class N>
N pade(const N& a2, const N& a3) {
  if (std::abs(numerics::value(a2)) < negligible_a2) return a2 + a3;
  return a2 * numerics::inverse(1.0 - a3 / a2);
}

/// Slope of the Pade form by a variable in which a2 and a3 have the slopes da2 and da3.
template <class N>
N pade_slope(const N& a2, const N& a3, const N& da2, const N& da3) {
  if (std::abs(numerics::value(a2)) < negligible_a2) return da2 + da3;
  const N r = a3 / a2;
  const N d = numerics::inverse(1.0 - r);
  return d * (da2 - (r * da2 - da3) * d);
}

struct Polar {
  static constexpr int types = 3;        ///< 0 dipole-dipole, 1 quadrupole-quadrupole, 2 dipole-quadrupole
  using Powers = std::array<double, 5>;  ///< coefficients of eta^0 to eta^4

  /// Coefficients of the pair integral of components i and j, j2 = sum of (a + b eps_ij / t) eta^k.
  static Powers pair_a(int type, const fluid::Parameters& p, std::size_t i, std::size_t j);
  static Powers pair_b(int type, const fluid::Parameters& p, std::size_t i, std::size_t j);
  /// Coefficients of the triplet integral, j3 = sum of c eta^k.
  static Powers triplet_c(int type, const fluid::Parameters& p, std::size_t i, std::size_t j, std::size_t k);
  /// Products of the moments: the factors of j2 in a2, of j3 in a3.
  static double gamma2(int type, const fluid::Parameters& p, std::size_t i, std::size_t j);
  static double gamma3(int type, const fluid::Parameters& p, std::size_t i, std::size_t j, std::size_t k);

  /// The coefficients of an unordered pair or triplet of components: the sum over all its permutations, with the
  /// factors of the moments.
  struct Pair {
    Monomial components;
    Powers a, b;  ///< a + b eps_ij / (sqrt(epsil_i epsil_j) t)
  };
  struct Triplet {
    Monomial components;
    Powers c;
  };

  struct Tables {
    int first_polar = nmax;              ///< the first component with a moment; nmax where there is none
    int first_type = 0, last_type = -1;  ///< the interaction types present
    std::array<std::vector<Pair>, types> pairs;
    std::array<std::vector<Triplet>, types> triplets;
    /// [type][n] Components that every pair and triplet among the first n contains, with multiplicity: the only dipole
    /// beside quadrupoles once in the mixed type, twice in the dipole-dipole type.
    std::array<std::array<Monomial, nmax + 1>, types> common;

    void update(const fluid::Parameters& p);
  };

  template <class T>
  struct State {
    State() {}  // NOLINT(modernize-use-equals-default): a tuple would fill a defaulted one with zeros

    bool present = false;
    int first_type = 0, last_type = -1;
    std::array<std::array<T, 5>, types> second, third;  ///< coefficients of a2 / rho and a3 / rho^2 in powers of eta

    void prepare(const MixtureState<T>& s) {
      const Tables& tables = s.template tables<Polar>();
      present = s.ipure > 0 ? s.parameters().is_polar_cmp[at(s.ipure - 1)] : tables.first_polar < s.n;
      if (present) fill(s, tables);
    }

    void fill(const MixtureState<T>& s, const Tables& tables) {
      first_type = tables.first_type, last_type = tables.last_type;
      const T factor2 = second_factor(s), factor3 = third_factor(s);
      const auto weight = [&s](const Monomial& m) {
        double product = 1.0;
        for (std::size_t p = 0; p < m.size; ++p) product *= s.comp.x[at(m.index[p])];
        return product;
      };
      for (int type = first_type; type <= last_type; ++type) {
        std::array<T, 5> sum2, sum3;
        sum2.fill(T(0.0));
        sum3.fill(T(0.0));
        each_pair(s, type, [&](const Monomial& places, const std::array<T, 5>& c) {
          const double w = weight(places);
          for (std::size_t k = 0; k < 5; ++k) sum2[k] += c[k] * w;
        });
        each_triplet(s, type, [&](const Monomial& places, const Powers& c) {
          const double w = weight(places);
          for (std::size_t k = 0; k < 5; ++k) sum3[k] += T(c[k] * w);
        });
        for (std::size_t k = 0; k < 5; ++k) {
          second[at(type)][k] = sum2[k] * factor2;
          third[at(type)][k] = sum3[k] * factor3;
        }
      }
    }

    template <class U>
    void lift(const State<U>& from, Arena&) {
      present = from.present, first_type = from.first_type, last_type = from.last_type;
      if (!present) return;
      for (int type = first_type; type <= last_type; ++type) {
        for (std::size_t power = 0; power < 5; ++power) {
          second[at(type)][power] = numerics::lifted<T>(from.second[at(type)][power]);
          third[at(type)][power] = numerics::lifted<T>(from.third[at(type)][power]);
        }
      }
    }

    template <class N>
    N a(const MixtureState<T>&, Point<N>& q) const {
      N sum(0.0);
      for (int type = first_type; type <= last_type; ++type)
        sum += pade(N(q.rho * polar_polynomial(second[at(type)], q.eta)),
                    N(q.rho * q.rho * polar_polynomial(third[at(type)], q.eta)));
      return sum;
    }

    template <class N>
    N z(const MixtureState<T>&, Point<N>& q) const {
      N sum(0.0);
      const N rho2 = q.rho * q.rho;
      for (int type = first_type; type <= last_type; ++type) {
        const auto &c2 = second[at(type)], &c3 = third[at(type)];
        sum += pade_slope(N(q.rho * polar_polynomial(c2, q.eta)), N(rho2 * polar_polynomial(c3, q.eta)),
                          N(q.rho * polar_slope(c2, q.eta, 1.0)), N(rho2 * polar_slope(c3, q.eta, 2.0)));
      }
      return sum;
    }
  };

  template <int K, class T, class S>
  class Composition : public NoComposition {
   public:
    explicit Composition(const MixtureState<T>& s) : s_(s) {}

    /// A fraction that every pair and triplet of a type contains is a factor of a2 and a3, and so of their Pade form.
    /// It is taken out first: the quotient loses its digits with it, and at fraction 0 has no value.
    void add_direct(const S& rho, const std::array<S, 4>& zeta, const MomentGradients<S>& g,
                    CompositionDerivatives<S>& out) const {
      using E = Taylor<1, K, S>;
      using F = Taylor<2, K, S>;
      const auto& state = s_.template term<Polar>();
      if (!state.present) return;
      Arena& arena = s_.arena();
      const std::size_t n = g.n;
      const double* x = s_.comp.x.data();
      const S* eta_x = g[moment::zeta3];
      E e(zeta[3]);
      e.c[1] = S(1.0);
      const S scale2 = rho * second_factor(s_), scale3 = rho * rho * third_factor(s_);
      for (int type = state.first_type; type <= state.last_type; ++type) {
        const Arena::Frame frame(arena);
        const Monomial& common = s_.template tables<Polar>().common[at(type)][n];
        auto a2 = take_fraction_function<K, S>(arena, n);
        auto a3 = take_fraction_function<K, S>(arena, n);
        each_pair(s_, type, [&](const Monomial& places, const std::array<T, 5>& c) {
          std::array<S, 5> scaled;
          for (std::size_t k = 0; k < 5; ++k) scaled[k] = scale2 * c[k];
          add_monomial(a2, x, places.without(common), polar_polynomial(scaled, e));
        });
        each_triplet(s_, type, [&](const Monomial& places, const Powers& c) {
          add_monomial(a3, x, places.without(common), E(polar_polynomial(c, e) * scale3));
        });
        complete(a2, n, eta_x);
        complete(a3, n, eta_x);
        CompositionDerivatives<S> term;
        term.a = S(0.0);
        term.first = arena.zeros<S>(n);
        if constexpr (K >= 2) term.second = {arena.zeros<S>(n * n), n};
        if constexpr (K >= 3) term.third = {arena.zeros<S>(n * n * n), n};
        add_composed(pade(seeded<F>(a2.total.c[0], 0), seeded<F>(a3.total.c[0], 1)), a2, a3, n, term);
        for (std::size_t factor = 0; factor < common.size; ++factor) {
          const auto c = at(common.index[factor]);
          multiply_by_fraction<K>(term, n, c, x[c]);
        }
        out.a += term.a;
        for (std::size_t i = 0; i < n; ++i) out.first[i] += term.first[i];
        if constexpr (K >= 2)
          for (std::size_t i = 0; i < n; ++i)
            for (std::size_t j = 0; j <= i; ++j) out.second(i, j) += term.second(i, j);
        if constexpr (K >= 3)
          for (std::size_t i = 0; i < n; ++i)
            for (std::size_t j = i; j < n; ++j)
              for (std::size_t k = j; k < n; ++k) out.third(i, j, k) += term.third(i, j, k);
      }
    }

   private:
    const MixtureState<T>& s_;
  };

 private:
  template <class T>
  static T second_factor(const MixtureState<T>& s) {
    return s.inverse_t * s.inverse_t * second_order_factor;
  }
  template <class T>
  static T third_factor(const MixtureState<T>& s) {
    return s.inverse_t * s.inverse_t * s.inverse_t * third_order_factor;
  }

  /// The components of a pair or triplet by their places in the mixture; false when one of them is not in it.
  template <class T>
  static bool places_of(const MixtureState<T>& s, const Monomial& components, Monomial& places) {
    places.size = components.size;
    for (std::size_t p = 0; p < components.size; ++p)
      if ((places.index[p] = s.comp.place(components.index[p])) < 0) return false;
    return true;
  }

  /// The sum over pairs: calls f(places, coefficients of eta^0 to eta^4) for each pair of the mixture.
  template <class T, class F>
  static void each_pair(const MixtureState<T>& s, int type, F&& f) {
    Monomial places;
    for (const Pair& pair : s.template tables<Polar>().pairs[at(type)]) {
      if (!places_of(s, pair.components, places)) continue;
      const auto i = at(pair.components.index[0]), j = at(pair.components.index[1]);
      const T softening = energy_ratio(s.parameters(), i, j, s.inverse_t) * s.inverse_t;
      std::array<T, 5> c;
      for (std::size_t k = 0; k < 5; ++k) c[k] = softening * pair.b[k] + pair.a[k];
      f(places, c);
    }
  }
  /// The sum over triplets, whose coefficients do not depend on temperature.
  template <class T, class F>
  static void each_triplet(const MixtureState<T>& s, int type, F&& f) {
    Monomial places;
    for (const Triplet& triplet : s.template tables<Polar>().triplets[at(type)])
      if (places_of(s, triplet.components, places)) f(places, triplet.c);
  }
};

}  // namespace tessarel::eos
