// Derivatives by mole numbers at a total of one mole from those by independent fractions, for a function of the
// fractions x_k = N_k / N: the chain rule with dx_k/dN_i = delta_ki - x_k, and its repetitions.
#pragma once

#include <cstddef>

#include "numerics/views.hpp"

namespace tessarel::eos {

using numerics::Cube;
using numerics::HostSquare;
using numerics::Square;

/// Sum of x_k f_k.
inline double weighted(std::size_t n, const double* x, const double* f) {
  double sum = 0;
  for (std::size_t k = 0; k < n; ++k) sum += x[k] * f[k];
  return sum;
}

/// f_n from f_x; the arrays may be the same.
inline void project_first(std::size_t n, const double* x, const double* f_x, double* f_n) {
  const double mean = weighted(n, x, f_x);
  for (std::size_t i = 0; i < n; ++i) f_n[i] = f_x[i] - mean;
}

/// M(i,j) - sum over k of x_k M(i,k) in place.
inline void project_rows(const double* x, HostSquare<double> m) {
  for (std::size_t i = 0; i < m.n; ++i) {
    double sum = 0;
    for (std::size_t k = 0; k < m.n; ++k) sum += x[k] * m(i, k);
    for (std::size_t j = 0; j < m.n; ++j) m(i, j) -= sum;
  }
}

/// f_nn from f_x and f_xx; `row` is a work array of n.
inline void project_second(const double* x, const double* f_x, Square<double> f_xx, double* row, Square<double> f_nn) {
  const std::size_t n = f_xx.n;
  double s1 = 0, s2 = 0;
  for (std::size_t i = 0; i < n; ++i) {
    row[i] = weighted(n, x, &f_xx(i, 0));
    s1 += x[i] * f_x[i];
    s2 += x[i] * row[i];
  }
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < n; ++j) f_nn(i, j) = f_xx(i, j) - row[i] - row[j] + s2 - (f_x[i] + f_x[j] - 2.0 * s1);
}

/// f_nnn from the derivatives by x; `work` is an array of n + n + n^2.
inline void project_third(const double* x, const double* f_x, Square<double> f_xx, Cube<double> f_xxx, double* work,
                          Cube<double> f_nnn) {
  const std::size_t n = f_xx.n;
  double* r = work;
  double* q = work + n;
  const Square<double> m{work + 2 * n, n};  // sum over l of x_l f_ijl
  double s1 = 0, s2 = 0, s3 = 0;
  for (std::size_t i = 0; i < n; ++i) {
    r[i] = q[i] = 0;
    for (std::size_t j = 0; j < n; ++j) {
      double sum = 0;
      for (std::size_t l = 0; l < n; ++l) sum += x[l] * f_xxx(i, j, l);
      m(i, j) = sum;
      r[i] += x[j] * f_xx(i, j);
      q[i] += x[j] * sum;
    }
    s1 += x[i] * f_x[i];
    s2 += x[i] * r[i];
    s3 += x[i] * q[i];
  }
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < n; ++j)
      for (std::size_t k = 0; k < n; ++k)
        f_nnn(i, j, k) = f_xxx(i, j, k) - m(i, j) - m(i, k) - m(j, k) + q[i] + q[j] + q[k] - s3 -
                         2.0 * (f_xx(i, j) + f_xx(i, k) + f_xx(j, k)) + 4.0 * (r[i] + r[j] + r[k]) - 6.0 * s2 +
                         2.0 * (f_x[i] + f_x[j] + f_x[k]) - 6.0 * s1;
}

}  // namespace tessarel::eos
