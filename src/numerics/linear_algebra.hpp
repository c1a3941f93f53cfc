// Small dense kernels: Crout LU with implicit pivoting, null vector, determinant (Press et al. 1992, sec. 2.3).
//
// Matrices are n x n, n at most 22, element (i, j) at [i + n j]; pivots count from 1, as hosts see them.
#pragma once

#include <cstdint>

namespace tessarel::numerics {

inline constexpr std::int32_t singular_matrix = 310;  ///< a row without a non-zero entry

/// Factors `a` in place. `d` is +1 or -1 by the parity of the row exchanges. Returns 0 or singular_matrix; then `a` is
/// as far as it got. A pivot of exactly 0 becomes 1e-20, so that a singular matrix can be factored.
std::int32_t lu_dcmp(int n, double* a, std::int32_t* indx, double& d);

/// Solves a x = b in place for factors from lu_dcmp.
void lu_bksb(int n, const double* a, const std::int32_t* indx, double* b);

/// A unit vector approximately in the null space of `a`, by one step of inverse iteration. `a` is overwritten with its
/// factors.
void solution_vector(int n, double* a, double* x);

/// Scales `x` to unit length and returns its former length; a vector of length 0 stays and returns 0.
double normalize_vec(int n, double* x);

/// det(a) by LU on a copy. Returns 0 or singular_matrix; then `det` stays.
std::int32_t determinant(int n, const double* a, double& det);

}  // namespace tessarel::numerics
