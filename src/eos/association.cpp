#include "eos/association.hpp"

namespace tessarel::eos {

Arena arena;

void reserve_site_storage() {
  // The largest demand of the usual paths: a few site-pair arrays of numbers with ten coefficients.
  const std::size_t sites = tables.classes.size();
  arena.reserve((1U << 16U) + sites * sites * sizeof(double) * 10 * 8);
}

int solve_unbonded(int count, const double* types, const double* bond, double tolerance, double* x) {
  const auto n = static_cast<std::size_t>(count);
  const Arena::Frame frame(arena);
  double* next = arena.take<double>(n);
  for (std::size_t k = 0; k < n; ++k) x[k] = 1.0;
  double error = 1.0;
  for (int pass = 0; pass < max_site_passes && error > tolerance; ++pass) {
    error = 0;
    for (std::size_t k = 0; k < n; ++k) {
      double sum = 0;
      for (std::size_t l = 0; l < n; ++l) sum += bond[k * n + l] * x[l];
      next[k] = 1.0 / (1.0 + sum);
      error += types[k] * std::abs(next[k] - x[k]);
    }
    for (std::size_t k = 0; k < n; ++k) x[k] = site_damping * next[k] + (1.0 - site_damping) * x[k];
  }
  return error > tolerance || std::isnan(error) ? 1 : 0;
}

int solve_unbonded_order(int count, const double* types, const double* bond, double tolerance, const double* x,
                         const double* r, double* v) {
  const auto n = static_cast<std::size_t>(count);
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
      double sum = 0;
      for (std::size_t l = 0; l < n; ++l) sum += bond[k * n + l] * v[l];
      next[k] = r[k] - x[k] * x[k] * sum;
      error += types[k] * std::abs(next[k] - v[k]);
    }
    for (std::size_t k = 0; k < n; ++k) v[k] = site_damping * next[k] + (1.0 - site_damping) * v[k];
  }
  return error > tolerance * scale || std::isnan(error) ? 1 : 0;
}

}  // namespace tessarel::eos
