// Association term (Wertheim 1984, doi:10.1007/BF01017362; Chapman et al. 1990, doi:10.1021/ie00104a021; Gross &
// Sadowski 2002, doi:10.1021/ie010954d).
//
//   a_assoc = sum over components i and sites a of x_i n_ia (ln X_ia + (1 - X_ia) / 2)
//
// The fractions X of unbonded sites solve the mass-action system X_ia = 1 / (1 + rho s_ia),
// s_ia = sum over k, b of x_k n_kb X_kb delta_ikab (site_fractions.hpp). Sites that are alike share one unknown.
//
// At the solution a_assoc is stationary in X (Michelsen & Hendriks 2001, doi:10.1016/S0378-3812(01)00344-2), so a first
// derivative needs no derivative of X: with Q = -rho/2 sum x_i x_k n_ia n_kb X_ia X_kb delta_ikab the slope by anything
// in delta is that of Q at fixed X.
//
// As a function of moments the term depends on zeta2, zeta3 and the fractions of the associating components: the slope
// by a fraction is sum n_ia ln X_ia, that by zeta_m is -rho/2 sum x_i x_k n_ia n_kb X_ia X_kb delta g_zeta. Higher
// orders are the derivatives of this gradient, over numbers seeded in the moments.
#pragma once

#include <vector>

#include "eos/hard_chain.hpp"
#include "eos/moments.hpp"
#include "eos/site_fractions.hpp"

namespace tessarel::eos {

/// The number type that carries K - 1 further variables of first order each beside those of S.
template <int K, class S>
struct SeededNumber {
  using type = Taylor<2, 2>;
};
template <class S>
struct SeededNumber<1, S> {
  using type = S;
};
template <>
struct SeededNumber<2, double> {
  using type = Taylor<1, 1>;
};

struct Association {
  /// Sites that are alike: same component, same number, same partners. Their unbonded fractions are equal in every
  /// pass of the iteration, so one unknown serves for all of them.
  struct SiteClass {
    int component;
    double types;  ///< number of site types merged, the weight in the error sum of the iteration
    double sites;  ///< number of sites on a molecule, over all merged types
    std::array<bool, fluid::max_sites> member{};
  };

  /// A bond between class `k` and class `l`: contributes volume * (exp(energy / t) - 1) to the strength of the pair.
  struct Bond {
    int k, l;
    double volume;  ///< sigma_ij^3 kap_hb_ij times the number of partner sites [A3]
    double energy;  ///< eps_hb [K]
  };

  struct Tables {
    std::vector<SiteClass> classes;
    std::vector<Bond> bonds;
    int first_associating = nmax;  ///< the first component with sites; nmax where there is none

    /// Partition refinement of the sites into classes of alike ones, and the bonds between the classes.
    void update(const fluid::Parameters& p);
  };

  /// The site system of a state at a density: its bonds and unbonded fractions, in the caller's arena frame.
  template <class N>
  struct SiteSystem {
    const N* bond;
    const N* x;
  };

  template <class T>
  struct State {
    State() {}  // NOLINT(modernize-use-equals-default): a tuple would fill a defaulted one with zeros

    bool present = false;
    int classes = 0;
    const int* component = nullptr;  ///< place of each class's component in the mixture state
    const double* types = nullptr;   ///< site types in each class
    const double* sites = nullptr;   ///< sites of each class on a molecule
    const T* strength = nullptr;     ///< [k * classes + l], sum over partners of volume (exp(energy / t) - 1) [A3]

    void prepare(const MixtureState<T>& s) {
      const Tables& tables = s.template tables<Association>();
      present = s.ipure > 0 ? s.parameters().is_assoc_cmp[at(s.ipure - 1)] : tables.first_associating < s.n;
      if (present) fill(s, tables);
    }

    /// The arrays belong to the caller's arena frame.
    void fill(const MixtureState<T>& s, const Tables& tables) {
      Arena& arena = s.arena();
      const std::size_t all = tables.classes.size();
      int* place = arena.take<int>(all);
      double* type_count = arena.take<double>(all);
      double* site_count = arena.take<double>(all);
      int* place_of_class = arena.take<int>(all);
      classes = 0;
      for (std::size_t k = 0; k < all; ++k) {
        const SiteClass& c = tables.classes[k];
        const int where = s.comp.place(c.component);
        place_of_class[k] = where < 0 ? -1 : classes;
        if (where < 0) continue;
        place[classes] = where;
        type_count[classes] = c.types;
        site_count[classes] = c.sites;
        ++classes;
      }
      const numerics::Square<T> sum{arena.zeros<T>(at(classes) * at(classes)), at(classes)};
      for (const Bond& bond : tables.bonds) {
        const int k = place_of_class[bond.k], l = place_of_class[bond.l];
        if (k < 0 || l < 0) continue;
        using std::exp;
        sum(at(k), at(l)) += (exp(s.inverse_t * bond.energy) - 1.0) * bond.volume;
      }
      component = place, types = type_count, sites = site_count, strength = sum.data;
    }

    template <class U>
    void lift(const State<U>& from, Arena& arena) {
      present = from.present;
      if (!present) return;
      classes = from.classes, component = from.component, types = from.types, sites = from.sites;
      const auto size = at(classes) * at(classes);
      T* lifted_strength = arena.take<T>(size);
      for (std::size_t i = 0; i < size; ++i) lifted_strength[i] = numerics::lifted<T>(from.strength[i]);
      strength = lifted_strength;
    }

    /// Solves the site system at a density: bond_kl = rho x_l strength_kl g_kl.
    template <class N>
    SiteSystem<N> solve(const MixtureState<T>& s, Point<N>& q) const {
      Arena& arena = s.arena();
      const auto n = at(classes);
      N* bond = arena.take<N>(n * n);
      N* x = arena.take<N>(n);
      for (std::size_t k = 0; k < n; ++k) {
        for (std::size_t l = 0; l < n; ++l) {
          const N g = contact(q.u, s.contact_k(component[k], component[l]));
          bond[k * n + l] = q.rho * g * strength[k * n + l] * s.comp.x[at(component[l])];
        }
      }
      q.status |= solve_unbonded(arena, classes, types, bond, q.tolerance, x);
      return {bond, x};
    }

    template <class N>
    N a(const MixtureState<T>& s, Point<N>& q) const {
      const Arena::Frame frame(s.arena());
      const auto [bond, x] = solve(s, q);
      N sum(0.0);
      for (std::size_t k = 0; k < at(classes); ++k)
        sum += (log(x[k]) + (1.0 - x[k]) * 0.5) * (sites[k] * s.comp.x[at(component[k])]);
      return sum;
    }

    template <class N>
    N z(const MixtureState<T>& s, Point<N>& q) const {
      const Arena::Frame frame(s.arena());
      const auto n = at(classes);
      const auto [bond, x] = solve(s, q);
      const N excess = q.eta * q.u;
      N z(0.0);
      for (std::size_t k = 0; k < n; ++k) {
        N sum(0.0);
        for (std::size_t l = 0; l < n; ++l) {
          const auto kc = s.contact_k(component[k], component[l]);
          // rho g_rho / g = eta u^2 g_u / g
          const N slope = excess * q.u * contact_slope(q.u, kc) / contact(q.u, kc);
          sum += bond[k * n + l] * x[l] * (slope + 1.0);
        }
        z += x[k] * sum * (-0.5 * sites[k] * s.comp.x[at(component[k])]);
      }
      return z;
    }
  };

  template <int K, class T, class S>
  class Composition : public NoComposition {
   public:
    explicit Composition(const MixtureState<T>& s) : s_(s) {
      const auto& a = s.template term<Association>();
      if (!a.present) return;
      rank_.fill(-1);
      for (int k = 0; k < a.classes; ++k) {
        const int place = a.component[k];
        if (rank_[at(place)] >= 0) continue;
        rank_[at(place)] = static_cast<int>(count_);
        place_[count_++] = place;
      }
    }

    [[nodiscard]] std::size_t further_moments() const { return count_; }

    void fill_gradients(const MomentGradients<S>& g, int further) const {
      for (std::size_t r = 0; r < count_; ++r)
        for (std::size_t i = 0; i < g.n; ++i) g[at(further) + r][i] = S(at(place_[r]) == i ? 1.0 : 0.0);
    }

    void add_outer(const S& rho, const std::array<S, 4>& zeta, int further, OuterDerivatives<S>& out) const {
      static_assert(K < 3 || std::is_same_v<S, double>);
      if (count_ == 0) return;
      const Arena::Frame frame(s_.arena());
      Arena& arena = s_.arena();
      const std::size_t count = count_ + 2;
      N* variables = arena.take<N>(count);  // zeta2, zeta3, fractions
      N* gradient = arena.take<N>(count);
      const auto place = [&](std::size_t c) {
        return c < 2 ? moment::zeta2 + static_cast<int>(c) : further + static_cast<int>(c) - 2;
      };
      const auto evaluate = [&](auto&& seed) {
        variables[0] = numerics::lifted<N>(zeta[2]);
        variables[1] = numerics::lifted<N>(zeta[3]);
        for (std::size_t r = 0; r < count_; ++r) variables[2 + r] = N(s_.comp.x[at(place_[r])]);
        seed();
        return value_and_gradient(numerics::lifted<N>(rho), numerics::value(rho), variables[0], variables[1],
                                  variables + 2, gradient);
      };
      const auto add_value_and_gradient = [&](const N& value) {
        out.value += unseeded(value);
        for (std::size_t c = 0; c < count; ++c) out.f1[at(place(c))] += unseeded(gradient[c]);
      };
      if constexpr (K == 1) {
        add_value_and_gradient(evaluate([] {}));
      } else if constexpr (K == 2) {
        for (std::size_t b = 0; b < count; ++b) {
          const N value = evaluate([&] { variables[b].c[seed_place] += 1.0; });
          if (b == 0) add_value_and_gradient(value);
          for (std::size_t c = 0; c < count; ++c) out.second(place(c), place(b)) += by_seed(gradient[c]);
        }
      } else {
        constexpr auto first_seed = N::Monomials::index({1, 0}), second_seed = N::Monomials::index({0, 1});
        for (std::size_t b = 0; b < count; ++b) {
          for (std::size_t d = b; d < count; ++d) {
            const N value = evaluate([&] {
              variables[b].c[first_seed] += 1.0;
              variables[d].c[second_seed] += 1.0;
            });
            if (b == 0 && d == 0) add_value_and_gradient(value);
            for (std::size_t c = 0; c < count; ++c) {
              if (d == b) out.second(place(c), place(b)) += gradient[c].c[first_seed];
              const double mixed = gradient[c].c[N::Monomials::index({1, 1})];
              out.third(place(c), place(b), place(d)) += mixed;
              if (d != b) out.third(place(c), place(d), place(b)) += mixed;
            }
          }
        }
      }
    }

   private:
    using N = typename SeededNumber<K, S>::type;
    /// Coefficient of the seeded variable: of the only one, or of the second beside that of S.
    static constexpr std::size_t seed_place = std::is_same_v<S, double> ? 1 : 2;

    /// The part of a number that belongs to S.
    static S unseeded(const N& a) {
      if constexpr (std::is_same_v<N, S>) {
        return a;
      } else if constexpr (std::is_same_v<S, double>) {
        return a.c[0];
      } else {
        S r;
        for (int k = 0; k <= S::order; ++k) r.c[at(k)] = a.c[N::Monomials::index({k, 0})];
        return r;
      }
    }
    /// The derivative by the only seed.
    static S by_seed(const N& a) {
      if constexpr (std::is_same_v<S, double>) {
        return a.c[1];
      } else {
        S r;
        r.c[0] = a.c[N::Monomials::index({0, 1})];
        r.c[1] = a.c[N::Monomials::index({1, 1})];
        return r;
      }
    }

    /// The gradient of a_assoc by zeta2, zeta3 and the fractions, in this order; returns a_assoc.
    N value_and_gradient(const N& rho, double density, const N& zeta2, const N& zeta3, const N* fraction,
                         N* gradient) const {
      Arena& arena = s_.arena();
      const Arena::Frame frame(arena);
      const auto& a = s_.template term<Association>();
      const auto n = at(a.classes);
      const numerics::Square<N> bond{arena.take<N>(n * n), n}, by_zeta2{arena.take<N>(n * n), n},
          by_zeta3{arena.take<N>(n * n), n};
      N* x = arena.take<N>(n);
      const N u = inverse(1.0 - zeta3);
      const N w = zeta2 * u;
      for (std::size_t k = 0; k < n; ++k) {
        for (std::size_t l = 0; l < n; ++l) {
          const auto i = at(a.component[k]), j = at(a.component[l]);
          const N factor = rho * fraction[rank_[j]] * numerics::lifted<N>(a.strength[k * n + l]);
          if (s_.eos->simplified) {
            bond(k, l) = factor * contact(u, 0.5);
            by_zeta2(k, l) = N(0.0);
            by_zeta3(k, l) = factor * contact_slope(u, 0.5) * u * u;
            continue;
          }
          // g = u (1 + q w)(1 + 2 q w), q = d_i d_j / (d_i + d_j), w = zeta2 u
          const N q = numerics::lifted<N>(T(s_.d[i] * s_.d[j] / (s_.d[i] + s_.d[j])));
          const N y = q * w;
          const N product = (y + 1.0) * (y * 2.0 + 1.0), slope = u * (y * 4.0 + 3.0) * q;
          bond(k, l) = factor * u * product;
          by_zeta2(k, l) = factor * slope * u;
          by_zeta3(k, l) = factor * u * (u * product + slope * w);
        }
      }
      solve_unbonded(arena, a.classes, a.types, bond.data, site_tolerance(density), x);
      N value(0.0);
      for (std::size_t c = 0; c < count_ + 2; ++c) gradient[c] = N(0.0);
      for (std::size_t k = 0; k < n; ++k) {
        const auto rank = at(rank_[at(a.component[k])]);
        const N log_x = log(x[k]);
        gradient[2 + rank] += log_x * a.sites[k];
        value += (log_x + (1.0 - x[k]) * 0.5) * fraction[rank] * a.sites[k];
        N sum2(0.0), sum3(0.0);
        for (std::size_t l = 0; l < n; ++l) {
          sum2 += by_zeta2(k, l) * x[l];
          sum3 += by_zeta3(k, l) * x[l];
        }
        const N weight = x[k] * fraction[rank] * (-0.5 * a.sites[k]);
        gradient[0] += weight * sum2;
        gradient[1] += weight * sum3;
      }
      return value;
    }

    const MixtureState<T>& s_;
    std::size_t count_ = 0;        ///< associating components
    std::array<int, nmax> place_;  ///< their places in the mixture
    std::array<int, nmax> rank_;   ///< and back
  };
};

}  // namespace tessarel::eos
