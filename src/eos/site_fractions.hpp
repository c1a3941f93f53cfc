// Fractions of unbonded association sites: the solution of X_k = 1 / (1 + sum over l of bond_kl X_l) and its
// derivatives.
//
// The value by Newton's method on the function Q whose maximum it is, with the Hessian that keeps its sign (Michelsen
// 2006, doi:10.1021/ie060029x). Derivatives follow order by order from the differentiated system, each linear in its
// unknown with the one matrix I + X_k^2 bond_kl (Michelsen & Hendriks 2001). Behind both stands the damped successive
// substitution.
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

/// The unbonded fractions of a system of sites: X_k = 1 / (1 + sum over l of bond_kl X_l), bond_kl at [k * count + l],
/// to rounding. `types` weighs the sites in the error sum of the substitution, which `tolerance` ends. Returns 0, or 1
/// if the fractions miss their equations. `passes`, unless null, counts Newton's steps and substitutions.
int solve_unbonded(Arena& arena, int count, const double* types, const double* bond, double tolerance, double* x,
                   long long* passes = nullptr);

/// The matrix I + x_k^2 bond_kl of the derivatives, factored. False if it cannot be.
class SiteMatrix {
 public:
  /// The factors belong to the caller's arena frame.
  SiteMatrix(Arena& arena, int count, const double* bond, const double* x);
  [[nodiscard]] bool regular() const { return regular_; }
  /// Solves in place.
  void solve(double* v) const;

 private:
  std::size_t n_;
  double* lu_;
  bool regular_ = true;
};

/// One order of derivatives: v_k = r_k - x_k^2 sum over l of bond_kl v_l; by the damped substitution where the matrix
/// is singular, with a tolerance relative to r, since orders differ widely in size.
int solve_unbonded_order(Arena& arena, int count, const double* types, const double* bond, double tolerance,
                         const double* x, const double* r, double* v);
int solve_unbonded_order(Arena& arena, const SiteMatrix& matrix, int count, const double* types, const double* bond,
                         double tolerance, const double* x, const double* r, double* v);

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
  const SiteMatrix matrix(arena, count, bond0, x0);
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
      status |= solve_unbonded_order(arena, matrix, count, types, bond0, tolerance, x0, r, v);
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
