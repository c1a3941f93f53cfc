// The dense kernels against random matrices, singular ones and their edge cases.
#include "numerics/linear_algebra.hpp"

#include <gtest/gtest.h>

#include <algorithm>
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
  }
}

TEST(LinearAlgebra, DeterminantAndNullVector) {
  std::mt19937 random(5);
  for (int n = 1; n <= 20; ++n) {
    const auto size = static_cast<std::size_t>(n);
    // The product of two triangular matrices, rows in reverse order.
    Values left = random_matrix(n, random), right = random_matrix(n, random);
    Values a(size * size, 0.0), all_but_one(size * size, -1.0), x(size);
    double det = 0, expected = n / 2 % 2 == 0 ? 1 : -1;
    for (std::size_t i = 0; i < size; ++i) expected *= (left[i + size * i] += 2) * (right[i + size * i] += 2);
    for (std::size_t i = 0; i < size; ++i) {
      for (std::size_t j = 0; j < size; ++j)
        for (std::size_t k = 0; k <= std::min(i, j); ++k)
          a[size - 1 - i + size * j] += left[i + size * k] * right[k + size * j];
      all_but_one[i + size * i] += n;
    }
    ASSERT_EQ(determinant(n, a.data(), det), 0);
    EXPECT_NEAR(det, expected, 1e-9 * std::abs(expected)) << n;
    // n on the diagonal less 1 everywhere annuls (1, ..., 1).
    if (n == 1) continue;
    solution_vector(n, all_but_one.data(), x.data());
    for (const double value : x) EXPECT_NEAR(value * x[0] * n, 1.0, 1e-8) << n;
  }
}

TEST(LinearAlgebra, EdgeCases) {
  std::vector<std::int32_t> indx(3);
  double d = 0, det = -7;
  Values zero_row = {1, 0, 2, 3, 0, 4, 5, 0, 6};
  EXPECT_EQ(determinant(3, zero_row.data(), det), 310);
  EXPECT_EQ(det, -7);
  EXPECT_EQ(lu_dcmp(3, zero_row.data(), indx.data(), d), 310);

  Values singular = {1, 2, 2, 4};  // no row is zero: the pivot is replaced, and the determinant is not exactly 0
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
