// Fractions of unbonded association sites: the solution of X_k = 1 / (1 + sum over l of bond_kl X_l) and its
// derivatives.
//
// The value follows by damped successive substitution. Derivatives of X follow order by order from the differentiated
// system, each linear in its unknown, by the same damped iteration with all lower orders held.
#pragma once

#include <cmath>

#include "numerics/taylor.hpp"
#include "support/arena.hpp"

namespace tessarel::eos {

inline constexpr double site_damping = 0.7;
inline constexpr int max_site_passes = 1000;

/// Tolerance of the site iterations, by number density or packing fraction.
constexpr double site_tolerance(double density) {
  return density < 0.01 ? 1e-12 : density < 0.2 ? 1e-11 : 1e-10;
}

/// The unbonded fractions of a system of sites: X_k = 1 / (1 + sum over l of bond_kl X_l), bond_kl at [k * count + l].
/// `types` weighs the sites in the error sum. Returns 0, or 1 after max_site_passes without convergence.
int solve_unbonded(Arena& arena, int count, const double* types, const double* bond, double tolerance, double* x);

/// Brings fractions that have met the tolerance to the rounding of the machine; solve_unbonded ends with it.
void polish_unbonded(Arena& arena, int count, const double* bond, double* x);

/// One order of derivatives: v_k = r_k - x_k^2 sum over l of bond_kl v_l, by the damped iteration. The start is exact
/// where all sites are alike; the tolerance is relative to the driving term r, since orders differ widely in size.
int solve_unbonded_order(Arena& arena, int count, const double* types, const double* bond, double tolerance,
                         const double* x, const double* r, double* v);

/// All Taylor coefficients of X from those of the bonds.
template <int V, int K>
int solve_unbonded(Arena& arena, int count, const double* types, const numerics::Taylor<V, K>* bond, double tolerance,
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
  int status = solve_unbonded(arena, count, types, bond0, tolerance, x0);
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
      status |= solve_unbonded_order(arena, count, types, bond0, tolerance, x0, r, v);
      for (std::size_t k = 0; k < n; ++k) x[k].c[order] = v[k];
      for (std::size_t k = 0; k < n; ++k)
        for (std::size_t l = 0; l < n; ++l) y[k].c[order] += bond0[k * n + l] * v[l];
    };
    (one_order(std::integral_constant<std::size_t, I + 1>{}), ...);
  }
  (std::make_index_sequence<N::size - 1>{});
  return status;
}

}  // namespace tessarel::eos
