#include "numerics/linear_algebra.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace tessarel::numerics {

namespace {
constexpr int capacity = 22;  // the components, T and P
constexpr double smallest_pivot = 1e-20;
}  // namespace

std::int32_t lu_dcmp(int n, double* a, std::int32_t* indx, double& d) {
  const auto at = [n, a](int i, int j) -> double& { return a[i + n * j]; };
  std::array<double, capacity> scale{};
  d = 1.0;
  // All pivots first: solution_vector goes on with them after a failure.
  for (int i = 0; i < n; ++i) indx[i] = i + 1;
  for (int i = 0; i < n; ++i) {
    double largest = 0;
    for (int j = 0; j < n; ++j) largest = std::max(largest, std::abs(at(i, j)));
    if (largest == 0) return singular_matrix;
    scale[static_cast<std::size_t>(i)] = 1.0 / largest;
  }
  for (int j = 0; j < n; ++j) {
    int pivot = j;
    double best = -1.0;
    for (int i = j; i < n; ++i) {
      const double size = scale[static_cast<std::size_t>(i)] * std::abs(at(i, j));
      if (size > best) {
        best = size;
        pivot = i;
      }
    }
    if (pivot != j) {
      for (int k = 0; k < n; ++k) std::swap(at(pivot, k), at(j, k));
      d = -d;
      scale[static_cast<std::size_t>(pivot)] = scale[static_cast<std::size_t>(j)];
    }
    indx[j] = pivot + 1;
    if (at(j, j) == 0) at(j, j) = smallest_pivot;
    for (int i = j + 1; i < n; ++i) {
      at(i, j) /= at(j, j);
      for (int k = j + 1; k < n; ++k) at(i, k) -= at(i, j) * at(j, k);
    }
  }
  return 0;
}

void lu_bksb(int n, const double* a, const std::int32_t* indx, double* b) {
  int first = -1;  // place of the first non-zero entry of b
  for (int i = 0; i < n; ++i) {
    const int pivot = indx[i] - 1;
    double sum = b[pivot];
    b[pivot] = b[i];
    if (first >= 0)
      for (int j = first; j < i; ++j) sum -= a[i + n * j] * b[j];
    else if (sum != 0)
      first = i;
    b[i] = sum;
  }
  for (int i = n - 1; i >= 0; --i) {
    for (int j = i + 1; j < n; ++j) b[i] -= a[i + n * j] * b[j];
    b[i] /= a[i + n * i];
  }
}

void solution_vector(int n, double* a, double* x) {
  std::array<std::int32_t, capacity> indx{};
  double d = 0;
  lu_dcmp(n, a, indx.data(), d);
  std::fill_n(x, n, 1e-10);
  lu_bksb(n, a, indx.data(), x);
  normalize_vec(n, x);
}

double normalize_vec(int n, double* x) {
  double sum = 0;
  for (int i = 0; i < n; ++i) sum += x[i] * x[i];
  const double length = std::sqrt(sum);
  if (length == 0) return 0;
  for (int i = 0; i < n; ++i) x[i] /= length;
  return length;
}

std::int32_t determinant(int n, const double* a, double& det) {
  std::array<double, capacity * capacity> copy;
  std::array<std::int32_t, capacity> indx{};
  std::copy_n(a, n * n, copy.begin());
  double d = 0;
  const std::int32_t ierr = lu_dcmp(n, copy.data(), indx.data(), d);
  if (ierr != 0) return ierr;
  for (int i = 0; i < n; ++i) d *= copy[static_cast<std::size_t>(i + n * i)];
  det = d;
  return 0;
}

}  // namespace tessarel::numerics
