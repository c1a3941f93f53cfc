#include "eos/site_fractions.hpp"

namespace tessarel::eos {

namespace {

/// Passes after the tolerance is met. The tolerance leaves some 1e-11 in X, which shows ten times larger in z where
/// association and repulsion nearly cancel. Each site is damped by 1 / (2 - x), which removes the error where the sites
/// of a system are alike; every second step is stretched by the observed ratio of two steps (Aitken), which removes the
/// slow mode of systems with unlike sites. `image(k)` is the right-hand side of site k.
template <class Image>
void polish(Arena& arena, std::size_t n, const double* x, double* v, Image image) {
  constexpr int passes = 16;
  const Arena::Frame frame(arena);
  double* step = arena.take<double>(n);
  double* previous = arena.take<double>(n);
  for (int pass = 0; pass < passes; ++pass) {
    double error = 0, size = 0, with_previous = 0, previous_norm = 0;
    for (std::size_t k = 0; k < n; ++k) {
      step[k] = (image(k) - v[k]) / (2.0 - x[k]);
      error += std::abs(step[k]);
      size += std::abs(v[k]);
    }
    if (!(error > 2e-16 * size)) return;
    double stretch = 1.0;
    if (pass % 2 == 1) {
      for (std::size_t k = 0; k < n; ++k) {
        with_previous += step[k] * previous[k];
        previous_norm += previous[k] * previous[k];
      }
      const double ratio = with_previous / previous_norm;
      if (std::abs(ratio) < 0.999) stretch = 1.0 / (1.0 - ratio);
    }
    for (std::size_t k = 0; k < n; ++k) {
      v[k] += stretch * step[k];
      previous[k] = step[k];
    }
  }
}

}  // namespace

void polish_unbonded(Arena& arena, int count, const double* bond, double* x) {
  const auto n = static_cast<std::size_t>(count);
  polish(arena, n, x, x, [&](std::size_t k) {
    double sum = 0;
    for (std::size_t l = 0; l < n; ++l) sum += bond[k * n + l] * x[l];
    return 1.0 / (1.0 + sum);
  });
}

int solve_unbonded(Arena& arena, int count, const double* types, const double* bond, double tolerance, double* x) {
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
  if (error <= tolerance) polish_unbonded(arena, count, bond, x);
  return error > tolerance || std::isnan(error) ? 1 : 0;
}

int solve_unbonded_order(Arena& arena, int count, const double* types, const double* bond, double tolerance,
                         const double* x, const double* r, double* v) {
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
  if (error <= tolerance * scale) {
    polish(arena, n, x, v, [&](std::size_t k) {
      double sum = 0;
      for (std::size_t l = 0; l < n; ++l) sum += bond[k * n + l] * v[l];
      return r[k] - x[k] * x[k] * sum;
    });
  }
  return error > tolerance * scale || std::isnan(error) ? 1 : 0;
}

}  // namespace tessarel::eos
