// The kernel of the tensor contractions: weighted sums of rows.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>

namespace tessarel::numerics {

/// Rows of equal length in one array: row r starts at data + r * stride.
template <class S>
struct Rows {
  const S* data = nullptr;
  std::size_t stride = 0, count = 0;
};

/// Columns that are summed side by side: four of plain numbers fill two vectors, a number with derivatives is one
/// itself.
template <class S>
inline constexpr std::size_t columns_at_once = std::is_same_v<S, double> ? 4 : 1;

/// The number of columns to compute where `needed` are wanted of `n`: a full block costs less than its parts.
template <class S>
constexpr std::size_t columns_for(std::size_t needed, std::size_t n) {
  constexpr std::size_t width = columns_at_once<S>;
  return std::min((needed + width - 1) / width * width, n);
}

/// sum_j = start_j + sum over r of weights_r rows_r,j for j < n, in the order of the rows; `start` is null for zeros
/// and can be `sum`. Weight r stands at weights + r * weight_stride. A block of columns stays in registers over all
/// rows. (With the choice of the start as a template parameter `calc_d2z_dxdx` at 20 components takes 11 % more
/// instructions.)
template <class S>
void sum_weighted_rows(const S* start, S* sum, std::size_t n, const S* weights, std::size_t weight_stride,
                       const Rows<S>& rows) {
  const auto columns = [&](auto width, std::size_t j) {
    std::array<S, width> block;
    for (std::size_t l = 0; l < width; ++l) block[l] = start == nullptr ? S(0.0) : start[j + l];
    const S* from = rows.data + j;
    const S* weight = weights;
    for (std::size_t r = 0; r < rows.count; ++r, from += rows.stride, weight += weight_stride)
      for (std::size_t l = 0; l < width; ++l) block[l] += from[l] * *weight;
    // The analysis takes the comparison of `start` with null for a doubt about `sum`.
    for (std::size_t l = 0; l < width; ++l) sum[j + l] = block[l];  // NOLINT(clang-analyzer-core.CallAndMessage)
  };
  constexpr std::size_t width = columns_at_once<S>;
  std::size_t j = 0;
  for (; j + width <= n; j += width) columns(std::integral_constant<std::size_t, width>{}, j);
  for (; j < n; ++j) columns(std::integral_constant<std::size_t, 1>{}, j);
}
template <class S>
void weighted_rows(S* sum, std::size_t n, const S* weights, std::size_t weight_stride, const Rows<S>& rows) {
  sum_weighted_rows<S>(nullptr, sum, n, weights, weight_stride, rows);
}
template <class S>
void add_weighted_rows(S* sum, std::size_t n, const S* weights, std::size_t weight_stride, const Rows<S>& rows) {
  sum_weighted_rows<S>(sum, sum, n, weights, weight_stride, rows);
}

}  // namespace tessarel::numerics
