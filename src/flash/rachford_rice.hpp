// The material balance of two phases with given ratios K_i = y_i / x_i (Rachford & Rice 1952):
//   x_i = z_i / (1 - beta + beta K_i), y_i = K_i x_i, sum of (y_i - x_i) = 0.
#pragma once

namespace tessarel::flash {

/// Solves for the vapour fraction `beta`, with it as a start if it fits, and sets `x` and `y`. With all the feed on one
/// side, `beta` is 0 or 1 and the other phase the normalised incipient one. |f| + |step| of 1e-8 or 25 cycles end the
/// iteration.
void solrac(int n, const double* z, const double* lnk, double* x, double* y, double& beta);

/// The plain form: Newton's method from `beta`, a step below 1e-8, at most 100 cycles.
void rr_solve(int n, const double* z, const double* lnk, double* x, double* y, double& beta);

/// The root to rounding, wherever it lies between the asymptotes 1 / (1 - K) of the largest and the smallest K: outside
/// 0 to 1 the phases are those of a feed beyond the boundary of the two-phase region. False, with nothing written, if
/// not all numbers are finite or no K lies on the other side of 1.
bool solve_balance(int n, const double* z, const double* lnk, double* x, double* y, double& beta);

}  // namespace tessarel::flash
