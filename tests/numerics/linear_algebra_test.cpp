// The dense kernels against random matrices, singular ones and their edge cases.
#include "numerics/linear_algebra.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace tessarel::numerics {
namespace {

using Values = std::vector<double>;

Values random_matrix(int n, std::mt19937& random) {
  std::uniform_real_distribution<double> entry(-1.0, 1.0);
  Values a(static_cast<std::size_t>(n * n));
  for (double& value : a) value = entry(random);
  return a;
}

Values product(int n, const Values& a, const Values& x) {
  Values b(x.size(), 0.0);
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < n; ++j)
      b[static_cast<std::size_t>(i)] += a[static_cast<std::size_t>(i + n * j)] * x[static_cast<std::size_t>(j)];
  return b;
}

/// Determinant by cofactors, for small n.
double cofactors(int n, const Values& a) {
  if (n == 1) return a[0];
  double sum = 0;
  for (int j = 0; j < n; ++j) {
    Values minor;
    for (int c = 0; c < n; ++c)
      for (int r = 1; r < n; ++r)
        if (c != j) minor.push_back(a[static_cast<std::size_t>(r + n * c)]);
    sum += (j % 2 == 0 ? 1.0 : -1.0) * a[static_cast<std::size_t>(n * j)] * cofactors(n - 1, minor);
  }
  return sum;
}

TEST(LinearAlgebra, SolvesRandomSystems) {
  std::mt19937 random(3);
  for (int n = 1; n <= 20; ++n) {
    const Values a = random_matrix(n, random);
    Values x(static_cast<std::size_t>(n));
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = i % 3 == 0 ? 0.0 : std::sin(static_cast<double>(i));
    Values b = product(n, a, x), factors = a;
    std::vector<std::int32_t> indx(x.size());
    double d = 0;
    ASSERT_EQ(lu_dcmp(n, factors.data(), indx.data(), d), 0);
    EXPECT_EQ(std::abs(d), 1.0);
    lu_bksb(n, factors.data(), indx.data(), b.data());
    for (std::size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(b[i], x[i], 1e-10) << n;
    if (n > 7) continue;
    double det = 0;
    ASSERT_EQ(determinant(n, a.data(), det), 0);
    EXPECT_NEAR(det, cofactors(n, a), 1e-12);
  }
}

TEST(LinearAlgebra, NullVectorOfSingularMatrices) {
  std::mt19937 random(5);
  for (int n = 2; n <= 20; ++n) {
    // Symmetric, with the null vector v: a - (a v) v' - v (a v)' + (v' a v) v v'.
    Values half = random_matrix(n, random), v(static_cast<std::size_t>(n)), a(half.size());
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = 1.0 + static_cast<double>(i);
    normalize_vec(n, v.data());
    const auto at = [n](int i, int j) { return static_cast<std::size_t>(i + n * j); };
    for (int i = 0; i < n; ++i)
      for (int j = 0; j < n; ++j) a[at(i, j)] = half[at(i, j)] + half[at(j, i)];
    const Values av = product(n, a, v);
    double vav = 0;
    for (std::size_t i = 0; i < v.size(); ++i) vav += v[i] * av[i];
    for (int i = 0; i < n; ++i)
      for (int j = 0; j < n; ++j) {
        const auto k = static_cast<std::size_t>(i), l = static_cast<std::size_t>(j);
        a[at(i, j)] += vav * v[k] * v[l] - av[k] * v[l] - v[k] * av[l];
      }
    double det = 1;
    ASSERT_EQ(determinant(n, a.data(), det), 0);
    double bound = 1;  // Hadamard: the product of the row lengths
    for (int i = 0; i < n; ++i) {
      double row = 0;
      for (int j = 0; j < n; ++j) row += a[at(i, j)] * a[at(i, j)];
      bound *= std::sqrt(row);
    }
    EXPECT_NEAR(det, 0, 1e-14 * bound);
    Values x(v.size()), copy = a;
    solution_vector(n, copy.data(), x.data());
    double along = 0;
    for (std::size_t i = 0; i < v.size(); ++i) along += x[i] * v[i];
    EXPECT_NEAR(std::abs(along), 1.0, 1e-8) << n;
  }
}

TEST(LinearAlgebra, EdgeCases) {
  std::vector<std::int32_t> indx(3);
  double d = 0, det = -7;
  Values zero_row = {1, 0, 2, 3, 0, 4, 5, 0, 6};
  EXPECT_EQ(determinant(3, zero_row.data(), det), 310);
  EXPECT_EQ(det, -7);
  EXPECT_EQ(lu_dcmp(3, zero_row.data(), indx.data(), d), 310);

  Values singular = {1, 2, 2,
                     4};  // rows that are not zero: the pivot is replaced, and the determinant is not exactly 0
  ASSERT_EQ(determinant(2, singular.data(), det), 0);
  EXPECT_NE(det, 0);
  EXPECT_NEAR(det, 0, 1e-19);

  Values tie = {1, 1, 0, 1};  // equal candidates for the pivot: the first row stays
  ASSERT_EQ(lu_dcmp(2, tie.data(), indx.data(), d), 0);
  EXPECT_EQ(indx[0], 1);
  EXPECT_EQ(d, 1.0);

  for (const double entry : {4.0, -4.0}) {
    Values one = {entry};
    double x = 0;
    solution_vector(1, one.data(), &x);
    EXPECT_EQ(x, entry > 0 ? 1.0 : -1.0);
  }
  // Without a solution the vector is none, and what stands around it is left alone.
  Values no_rows(9, 0.0), around(5, 7.0);
  solution_vector(3, no_rows.data(), around.data() + 1);
  EXPECT_EQ(around.front(), 7.0);
  EXPECT_EQ(around.back(), 7.0);

  Values nothing = {0, 0};
  EXPECT_EQ(normalize_vec(2, nothing.data()), 0.0);
  Values three_four = {3, 4};
  EXPECT_EQ(normalize_vec(2, three_four.data()), 5.0);
  EXPECT_DOUBLE_EQ(three_four[1], 0.8);
}

}  // namespace
}  // namespace tessarel::numerics
