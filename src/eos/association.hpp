// Association term (Wertheim 1984; Chapman et al. 1990; Gross & Sadowski 2002).
//
//   a_assoc = sum over components i and sites a of x_i n_ia (ln X_ia + (1 - X_ia) / 2)
//
// The fractions X of unbonded sites solve the mass-action system X_ia = 1 / (1 + rho s_ia),
// s_ia = sum over k, b of x_k n_kb X_kb delta_ikab, by damped successive substitution. Sites that are alike share one
// unknown (tables.hpp). Derivatives of X follow order by order from the differentiated system, each linear in its
// unknown, by the same damped iteration with all lower orders held.
//
// At the solution a_assoc is stationary in X (Michelsen & Hendriks 2001), so a first derivative needs no derivative
// of X: with Q = -rho/2 sum x_i x_k n_ia n_kb X_ia X_kb delta_ikab the slope by anything in delta is that of Q at fixed
// X.
#pragma once

#include <cmath>

#include "eos/tables.hpp"
#include "numerics/taylor.hpp"
#include "support/arena.hpp"

namespace tessarel::eos {

/// Working storage of the evaluations.
extern Arena arena;

/// Sizes the working storage for the selected fluid.
void reserve_site_storage();

inline constexpr double site_damping = 0.7;
inline constexpr int max_site_passes = 1000;

/// Tolerance of the site iterations, by number density or packing fraction.
constexpr double site_tolerance(double density) {
  return density < 0.01 ? 1e-12 : density < 0.2 ? 1e-11 : 1e-10;
}

/// The unbonded fractions of a system of sites: X_k = 1 / (1 + sum over l of bond_kl X_l), bond_kl at [k * count + l].
/// `types` weighs the sites in the error sum. Returns 0, or 1 after max_site_passes without convergence.
int solve_unbonded(int count, const double* types, const double* bond, double tolerance, double* x);

/// Brings fractions that have met the tolerance to the rounding of the machine; solve_unbonded ends with it.
void polish_unbonded(int count, const double* bond, double* x);

/// One order of derivatives: v_k = r_k - x_k^2 sum over l of bond_kl v_l, by the damped iteration. The start is exact
/// where all sites are alike; the tolerance is relative to the driving term r, since orders differ widely in size.
int solve_unbonded_order(int count, const double* types, const double* bond, double tolerance, const double* x,
                         const double* r, double* v);

/// All Taylor coefficients of X from those of the bonds.
template <int V, int K>
int solve_unbonded(int count, const double* types, const numerics::Taylor<V, K>* bond, double tolerance,
                   numerics::Taylor<V, K>* x) {
  using N = numerics::Taylor<V, K>;
  const auto n = static_cast<std::size_t>(count);
  const Arena::Frame frame(arena);
  double* bond0 = arena.take<double>(n * n);
  double* x0 = arena.take<double>(n);
  double* r = arena.take<double>(n);
  double* v = arena.take<double>(n);
  N* y = arena.take<N>(n);  // y = 1 / X = 1 + sum bond X
  for (std::size_t i = 0; i < n * n; ++i) bond0[i] = bond[i].c[0];
  int status = solve_unbonded(count, types, bond0, tolerance, x0);
  for (std::size_t k = 0; k < n; ++k) {
    x[k] = N(x0[k]);
    y[k] = N(0.0);
  }
  [&]<std::size_t... I>(std::index_sequence<I...>) {
    const auto one_order = [&](auto order) {
      using F = numerics::detail::Factors<V, K, order>;
      // With the unknown coefficient at 0: y_I = sum over l, J > 0 of bond_J X_(I-J).
      for (std::size_t k = 0; k < n; ++k) {
        double sum = 0;
        for (std::size_t l = 0; l < n; ++l) {
          const N& b = bond[k * n + l];
          sum += numerics::detail::fold_factors<F, 1>([&](auto j, auto rest) { return b.c[j] * x[l].c[rest]; });
        }
        y[k].c[order] = sum;
        r[k] =
            -x0[k] * numerics::detail::fold_factors<F, 1>([&](auto j, auto rest) { return y[k].c[j] * x[k].c[rest]; });
      }
      status |= solve_unbonded_order(count, types, bond0, tolerance, x0, r, v);
      for (std::size_t k = 0; k < n; ++k) x[k].c[order] = v[k];
      for (std::size_t k = 0; k < n; ++k)
        for (std::size_t l = 0; l < n; ++l) y[k].c[order] += bond0[k * n + l] * v[l];
    };
    (one_order(std::integral_constant<std::size_t, I + 1>{}), ...);
  }
  (std::make_index_sequence<N::size - 1>{});
  return status;
}

/// The association of a mixture, or of one of its components, at one temperature.
template <class T>
struct AssociationState {
  int classes = 0;
  const int* component = nullptr;  ///< place of each class's component in the mixture state
  const double* types = nullptr;   ///< site types in each class
  const double* sites = nullptr;   ///< sites of each class on a molecule
  const T* strength = nullptr;     ///< [k * classes + l], sum over partners of volume (exp(energy / t) - 1) [A3]
};

/// The temperature part for the components `places` maps to 0 and above (-1: not present). Arrays live in the
/// caller's arena frame.
template <class T>
AssociationState<T> prepare_association(const T& t, const std::array<int, nmax>& places) {
  const std::size_t all = tables.classes.size();
  int* component = arena.take<int>(all);
  double* types = arena.take<double>(all);
  double* sites = arena.take<double>(all);
  int* place_of_class = arena.take<int>(all);
  int count = 0;
  for (std::size_t k = 0; k < all; ++k) {
    const SiteClass& c = tables.classes[k];
    const int place = places[static_cast<std::size_t>(c.component)];
    place_of_class[k] = place < 0 ? -1 : count;
    if (place < 0) continue;
    component[count] = place;
    types[count] = c.types;
    sites[count] = c.sites;
    ++count;
  }
  const auto n = static_cast<std::size_t>(count);
  T* strength = arena.take<T>(n * n);
  for (std::size_t i = 0; i < n * n; ++i) strength[i] = T(0.0);
  const T inverse_t = numerics::inverse(t);
  for (const Bond& bond : tables.bonds) {
    const int k = place_of_class[bond.k], l = place_of_class[bond.l];
    if (k < 0 || l < 0) continue;
    using std::exp;
    strength[static_cast<std::size_t>(k) * n + static_cast<std::size_t>(l)] +=
        (exp(inverse_t * bond.energy) - 1.0) * bond.volume;
  }
  return {count, component, types, sites, strength};
}

}  // namespace tessarel::eos
