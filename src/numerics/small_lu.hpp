// L U of small matrices without pivoting, in the header for the innermost loops: for matrices that are symmetric and
// positive definite up to weights of their rows, as those of association sites are with the sites' amounts.
#pragma once

#include <cmath>
#include <cstddef>

namespace tessarel::numerics {

/// Factors n rows in place; false where a pivot is zero or not finite.
inline bool factor(std::size_t n, double* a) {
  for (std::size_t j = 0; j < n; ++j) {
    const double pivot = a[j * n + j];
    if (!(std::abs(pivot) > 1e-300) || !std::isfinite(pivot)) return false;
    const double inverse = 1.0 / pivot;
    a[j * n + j] = inverse;
    for (std::size_t i = j + 1; i < n; ++i) {
      const double ratio = a[i * n + j] * inverse;
      a[i * n + j] = ratio;
      for (std::size_t k = j + 1; k < n; ++k) a[i * n + k] -= ratio * a[j * n + k];
    }
  }
  return true;
}

/// Solves with the factors, in place.
inline void solve_factored(std::size_t n, const double* lu, double* b) {
  for (std::size_t i = 1; i < n; ++i)
    for (std::size_t k = 0; k < i; ++k) b[i] -= lu[i * n + k] * b[k];
  for (std::size_t i = n; i-- > 0;) {
    for (std::size_t k = i + 1; k < n; ++k) b[i] -= lu[i * n + k] * b[k];
    b[i] *= lu[i * n + i];
  }
}

}  // namespace tessarel::numerics
