#include "numerics/symmetric.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessarel::numerics {

bool cholesky(Square<double> a) {
  for (std::size_t j = 0; j < a.n; ++j) {
    double pivot = a(j, j);
    for (std::size_t k = 0; k < j; ++k) pivot -= a(j, k) * a(j, k);
    if (!(pivot > 1e-14 * std::abs(a(j, j)))) return false;
    pivot = std::sqrt(pivot);
    a(j, j) = pivot;
    for (std::size_t i = j + 1; i < a.n; ++i) {
      double sum = a(i, j);
      for (std::size_t k = 0; k < j; ++k) sum -= a(i, k) * a(j, k);
      a(i, j) = sum / pivot;
    }
  }
  return true;
}

void cholesky_solve(Square<double> factors, double* b) {
  const std::size_t n = factors.n;
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t k = 0; k < i; ++k) b[i] -= factors(i, k) * b[k];
    b[i] /= factors(i, i);
  }
  for (std::size_t i = n; i-- > 0;) {
    for (std::size_t k = i + 1; k < n; ++k) b[i] -= factors(k, i) * b[k];
    b[i] /= factors(i, i);
  }
}

void eigen(Square<double> a, double* values, Square<double> vectors) {
  const std::size_t n = a.n;
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < n; ++j) vectors(i, j) = i == j ? 1.0 : 0.0;
  for (int sweep = 0; sweep < 30; ++sweep) {
    double off = 0, diagonal = 0;
    for (std::size_t i = 0; i < n; ++i) {
      diagonal += a(i, i) * a(i, i);
      for (std::size_t j = 0; j < i; ++j) off += a(i, j) * a(i, j);
    }
    if (!(off > 1e-30 * diagonal)) break;
    for (std::size_t p = 0; p < n; ++p)
      for (std::size_t q = p + 1; q < n; ++q) {
        if (a(p, q) == 0) continue;
        const double theta = 0.5 * (a(q, q) - a(p, p)) / a(p, q);
        const double t = (theta < 0 ? -1.0 : 1.0) / (std::abs(theta) + std::sqrt(theta * theta + 1.0));
        const double c = 1.0 / std::sqrt(t * t + 1.0), s = t * c;
        for (std::size_t k = 0; k < n; ++k) {
          const double kp = a(k, p), kq = a(k, q);
          a(k, p) = c * kp - s * kq;
          a(k, q) = s * kp + c * kq;
        }
        for (std::size_t k = 0; k < n; ++k) {
          const double pk = a(p, k), qk = a(q, k);
          a(p, k) = c * pk - s * qk;
          a(q, k) = s * pk + c * qk;
          const double vp = vectors(p, k), vq = vectors(q, k);
          vectors(p, k) = c * vp - s * vq;
          vectors(q, k) = s * vp + c * vq;
        }
      }
  }
  for (std::size_t i = 0; i < n; ++i) values[i] = a(i, i);
}

namespace {

double norm(std::size_t n, const double* v) {
  double sum = 0;
  for (std::size_t i = 0; i < n; ++i) sum += v[i] * v[i];
  return std::sqrt(sum);
}

double predicted_change(Square<double> a, const double* g, const double* step) {
  double change = 0;
  for (std::size_t i = 0; i < a.n; ++i) {
    double row = 0;
    for (std::size_t j = 0; j < a.n; ++j) row += a(i, j) * step[j];
    change += step[i] * (g[i] + 0.5 * row);
  }
  return change;
}

}  // namespace

double restricted_step(Square<double> a, const double* g, double radius, double* work, double* step) {
  const std::size_t n = a.n;
  const Square<double> factors{work, n}, vectors{work + n * n, n};
  std::copy_n(a.data, n * n, factors.data);
  if (cholesky(factors)) {
    for (std::size_t i = 0; i < n; ++i) step[i] = -g[i];
    cholesky_solve(factors, step);
    if (norm(n, step) <= radius) return predicted_change(a, g, step);
  }
  // In the eigenvectors' frame the length of the step is an explicit, falling function of lambda.
  double* values = work + 2 * n * n;
  double* projected = values + n;
  std::copy_n(a.data, n * n, factors.data);
  eigen(factors, values, vectors);
  double smallest = values[0];
  for (std::size_t i = 0; i < n; ++i) {
    projected[i] = 0;
    for (std::size_t k = 0; k < n; ++k) projected[i] += vectors(i, k) * g[k];
    smallest = std::min(smallest, values[i]);
    if (!std::isfinite(projected[i]) || !std::isfinite(values[i])) return std::numeric_limits<double>::quiet_NaN();
  }
  const auto length = [&](double lambda) {
    double sum = 0;
    for (std::size_t i = 0; i < n; ++i) {
      const double s = projected[i] / (values[i] + lambda);
      sum += s * s;
    }
    return std::sqrt(sum);
  };
  double lo = std::max(0.0, -smallest), hi = lo + norm(n, g) / radius + 1e-8;
  for (int cycle = 0; cycle < 40; ++cycle) {
    const double lambda = 0.5 * (lo + hi);
    (length(lambda) > radius ? lo : hi) = lambda;
    if (hi - lo < 1e-3 * hi) break;
  }
  std::fill_n(step, n, 0.0);
  for (std::size_t i = 0; i < n; ++i) {
    const double s = -projected[i] / (values[i] + hi);
    for (std::size_t k = 0; k < n; ++k) step[k] += s * vectors(i, k);
  }
  // A gradient without a part along a negative curvature would keep the step on the ridge.
  for (std::size_t i = 0; i < n; ++i)
    if (values[i] == smallest && smallest < 0 && norm(n, step) < 0.5 * radius) {
      for (std::size_t k = 0; k < n; ++k) step[k] += (projected[i] > 0 ? -0.5 : 0.5) * radius * vectors(i, k);
      break;
    }
  return predicted_change(a, g, step);
}

}  // namespace tessarel::numerics
