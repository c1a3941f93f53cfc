// Kernels of symmetric matrices against their definitions: residuals, and the conditions of a restricted minimum.
#include "numerics/symmetric.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace tessarel::numerics {
namespace {

using Values = std::vector<double>;

/// Symmetric, with eigenvalues of both signs unless `shift` is large.
Values random_symmetric(std::size_t n, double shift, std::mt19937& random) {
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  Values a(n * n);
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j <= i; ++j) a[i * n + j] = a[j * n + i] = unit(random) + (i == j ? shift : 0.0);
  return a;
}
double row_times(const Values& a, std::size_t n, std::size_t i, const double* x) {
  double sum = 0;
  for (std::size_t j = 0; j < n; ++j) sum += a[i * n + j] * x[j];
  return sum;
}

TEST(Symmetric, EigenvectorsAndFactors) {
  std::mt19937 random(11);
  for (std::size_t n = 1; n <= 20; ++n)
    for (const double shift : {0.0, 2.0 * static_cast<double>(n)}) {
      const Values a = random_symmetric(n, shift, random);
      Values spoilt = a, vectors(n * n), values(n), factors = a, b(n);
      eigen({spoilt.data(), n}, values.data(), {vectors.data(), n});
      for (std::size_t k = 0; k < n; ++k) {
        const double* v = &vectors[k * n];
        for (std::size_t i = 0; i < n; ++i) EXPECT_NEAR(row_times(a, n, i, v), values[k] * v[i], 1e-12 * (1 + shift));
        for (std::size_t l = 0; l < n; ++l) EXPECT_NEAR(row_times(vectors, n, l, v), l == k ? 1.0 : 0.0, 1e-13);
      }
      // Positive definite is what has no eigenvalue below zero.
      const bool positive = *std::min_element(values.begin(), values.end()) > 0;
      ASSERT_EQ(cholesky({factors.data(), n}), positive);
      if (!positive) continue;
      const Values x(n, 0.7);
      for (std::size_t i = 0; i < n; ++i) b[i] = row_times(a, n, i, x.data());
      cholesky_solve({factors.data(), n}, b.data());
      for (std::size_t i = 0; i < n; ++i) EXPECT_NEAR(b[i], 0.7, 1e-12);
    }
}

/// No step of the same length or shorter does better; inside the radius the step is Newton's.
TEST(Symmetric, RestrictedStepIsTheBest) {
  std::mt19937 random(12);
  std::normal_distribution<double> normal;
  for (const std::size_t n : {1UL, 2UL, 5UL, 12UL})
    for (const double shift : {0.0, 3.0 * static_cast<double>(n)})
      for (const double radius : {0.05, 1.0, 100.0}) {
        const Values a = random_symmetric(n, shift, random);
        Values g(n), work(2 * n * (n + 1)), step(n), other(n);
        for (double& v : g) v = normal(random);
        const auto change = [&](const Values& s) {
          double sum = 0;
          for (std::size_t i = 0; i < n; ++i) sum += s[i] * (g[i] + 0.5 * row_times(a, n, i, s.data()));
          return sum;
        };
        Values matrix = a;
        const double predicted = restricted_step({matrix.data(), n}, g.data(), radius, work.data(), step.data());
        double length = 0;
        for (const double s : step) length += s * s;
        length = std::sqrt(length);
        EXPECT_LE(length, 1.01 * radius);
        EXPECT_NEAR(predicted, change(step), 1e-12 * (1 + std::abs(predicted)));
        EXPECT_LT(predicted, 0);
        for (int trial = 0; trial < 200; ++trial) {
          double size = 0;
          for (double& v : other) {
            v = normal(random);
            size += v * v;
          }
          for (double& v : other) v *= length / std::sqrt(size);
          EXPECT_GE(change(other), predicted - 2e-3 * std::abs(predicted));
        }
        if (!(length < 0.99 * radius && shift > 0)) continue;
        for (std::size_t i = 0; i < n; ++i) EXPECT_NEAR(row_times(a, n, i, step.data()), -g[i], 1e-11);
      }
}

}  // namespace
}  // namespace tessarel::numerics
