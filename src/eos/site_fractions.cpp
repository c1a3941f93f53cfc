#include "eos/site_fractions.hpp"

#include <algorithm>
#include <array>
#include <limits>

#include "numerics/small_lu.hpp"

namespace tessarel::eos {

using numerics::factor, numerics::solve_factored;

namespace {

double bound(std::size_t n, const double* bond, const double* x, std::size_t k) {
  double sum = 0;
  for (std::size_t l = 0; l < n; ++l) sum += bond[k * n + l] * x[l];
  return sum;
}

/// Newton's method on Q for `n` classes, with `matrix` (n x n) and `step` (n) to work in. False where it does not
/// settle. Inline: with n known to the compiler the loops are written out, which takes half the time.
inline bool newton(std::size_t n, const double* bond, double* x, double* matrix, double* step, long long* passes) {
  constexpr int max_steps = 60;
  // Each site as if all it bonds with were like itself.
  for (std::size_t k = 0; k < n; ++k) {
    double sum = 0;
    for (std::size_t l = 0; l < n; ++l) sum += bond[k * n + l];
    x[k] = 2.0 / (1.0 + std::sqrt(1.0 + 4.0 * sum));
  }
  double last = 1e300;
  for (int count = 0; count < max_steps; ++count) {
    if (passes != nullptr) ++*passes;
    for (std::size_t k = 0; k < n; ++k) {
      const double sum = bound(n, bond, x, k);
      step[k] = 1.0 / x[k] - 1.0 - sum;
      for (std::size_t l = 0; l < n; ++l) matrix[k * n + l] = bond[k * n + l];
      matrix[k * n + k] += (1.0 + sum) / x[k];
    }
    if (!factor(n, matrix)) return false;
    solve_factored(n, matrix, step);
    double size = 0;
    for (std::size_t k = 0; k < n; ++k) {
      if (!std::isfinite(step[k])) return false;
      const double next = x[k] + step[k];
      size = std::max(size, std::abs(step[k]) / x[k]);
      x[k] = next > 0 ? next : 0.2 * x[k];
    }
    // After a step of 1e-8 the error is its square; at rounding the steps no longer fall.
    if (size < 1e-9 || (size < 1e-6 && size >= last)) return true;
    last = size;
  }
  return false;
}

template <std::size_t n>
bool newton_of(const double* bond, double* x, long long* passes) {
  std::array<double, n * n> matrix;
  std::array<double, n> step;
  return newton(n, bond, x, matrix.data(), step.data(), passes);
}

bool newton(Arena& arena, std::size_t n, const double* bond, double* x, long long* passes) {
  switch (n) {
    case 1:
      x[0] = 2.0 / (1.0 + std::sqrt(1.0 + 4.0 * bond[0]));
      return x[0] > 0;
    case 2:
      return newton_of<2>(bond, x, passes);
    case 3:
      return newton_of<3>(bond, x, passes);
    case 4:
      return newton_of<4>(bond, x, passes);
    default:
      break;
  }
  const Arena::Frame frame(arena);
  double* matrix = arena.take<double>(n * n);
  return newton(n, bond, x, matrix, arena.take<double>(n), passes);
}

}  // namespace

int solve_unbonded(Arena& arena, int count, const double* types, const double* bond, double tolerance, double* x,
                   long long* passes) {
  const auto n = static_cast<std::size_t>(count);
  if (newton(arena, n, bond, x, passes)) return 0;
  if (!std::all_of(bond, bond + n * n, [](double value) { return std::isfinite(value); })) {
    std::fill_n(x, n, std::numeric_limits<double>::quiet_NaN());
    return 1;
  }
  const Arena::Frame frame(arena);
  double* next = arena.take<double>(n);
  for (std::size_t k = 0; k < n; ++k) x[k] = 1.0;
  double error = 1.0;
  for (int pass = 0; pass < max_site_passes && error > tolerance; ++pass) {
    if (passes != nullptr) ++*passes;
    error = 0;
    for (std::size_t k = 0; k < n; ++k) {
      next[k] = 1.0 / (1.0 + bound(n, bond, x, k));
      error += types[k] * std::abs(next[k] - x[k]);
    }
    for (std::size_t k = 0; k < n; ++k) x[k] = site_damping * next[k] + (1.0 - site_damping) * x[k];
  }
  return error > tolerance || std::isnan(error) ? 1 : 0;
}

SiteMatrix::SiteMatrix(Arena& arena, int count, const double* bond, const double* x)
    : n_(static_cast<std::size_t>(count)), lu_(arena.take<double>(n_ * n_)) {
  for (std::size_t k = 0; k < n_; ++k) {
    const double square = x[k] * x[k];
    for (std::size_t l = 0; l < n_; ++l) lu_[k * n_ + l] = square * bond[k * n_ + l];
    lu_[k * n_ + k] += 1.0;
  }
  regular_ = factor(n_, lu_);
}

void SiteMatrix::solve(double* v) const {
  solve_factored(n_, lu_, v);
}

int solve_unbonded_order(Arena& arena, const SiteMatrix& matrix, int count, const double* types, const double* bond,
                         double tolerance, const double* x, const double* r, double* v) {
  const auto n = static_cast<std::size_t>(count);
  if (matrix.regular()) {
    std::copy_n(r, n, v);
    matrix.solve(v);
    if (std::all_of(v, v + n, [](double value) { return std::isfinite(value); })) return 0;
  }
  const Arena::Frame frame(arena);
  double* next = arena.take<double>(n);
  double scale = 0;
  for (std::size_t k = 0; k < n; ++k) {
    v[k] = r[k] / (2.0 - x[k]);
    scale += types[k] * std::abs(r[k]);
  }
  if (scale == 0) return 0;
  double error = 2.0 * tolerance * scale;
  for (int pass = 0; pass < max_site_passes && error > tolerance * scale; ++pass) {
    error = 0;
    for (std::size_t k = 0; k < n; ++k) {
      next[k] = r[k] - x[k] * x[k] * bound(n, bond, v, k);
      error += types[k] * std::abs(next[k] - v[k]);
    }
    for (std::size_t k = 0; k < n; ++k) v[k] = site_damping * next[k] + (1.0 - site_damping) * v[k];
  }
  return error > tolerance * scale || std::isnan(error) ? 1 : 0;
}

int solve_unbonded_order(Arena& arena, int count, const double* types, const double* bond, double tolerance,
                         const double* x, const double* r, double* v) {
  const Arena::Frame frame(arena);
  return solve_unbonded_order(arena, SiteMatrix(arena, count, bond, x), count, types, bond, tolerance, x, r, v);
}

}  // namespace tessarel::eos
