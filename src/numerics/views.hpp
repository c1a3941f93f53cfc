// Views of contiguous storage as matrices and cubes. They own nothing; a null view is allowed where nothing is stored.
#pragma once

#include <cassert>
#include <cstddef>

namespace tessarel::numerics {

/// n x n entries, the last index fastest.
template <class S>
struct Square {
  S* data = nullptr;
  std::size_t n = 0;

  [[nodiscard]] std::size_t size() const { return n * n; }
  S& operator()(std::size_t i, std::size_t j) const {
    assert(i < n && j < n);
    return data[i * n + j];
  }
};

/// n x n x n entries, the last index fastest.
template <class S>
struct Cube {
  S* data = nullptr;
  std::size_t n = 0;

  [[nodiscard]] std::size_t size() const { return n * n * n; }
  S& operator()(std::size_t i, std::size_t j, std::size_t k) const {
    assert(i < n && j < n && k < n);
    return data[(i * n + j) * n + k];
  }
};

/// n x n entries as hosts lay them out, the first index fastest.
template <class S>
struct HostSquare {
  S* data = nullptr;
  std::size_t n = 0;

  S& operator()(std::size_t i, std::size_t j) const {
    assert(i < n && j < n);
    return data[i + n * j];
  }
  S* column(std::size_t j) const { return data + n * j; }
};

}  // namespace tessarel::numerics
