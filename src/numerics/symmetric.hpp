// Symmetric matrices of the second-order methods: eigenvalues, and the step of a minimisation within a radius.
#pragma once

#include "numerics/views.hpp"

namespace tessarel::numerics {

/// Factors `a` in place as L L^T (lower triangle). False if it is not positive definite; `a` is then spoilt.
bool cholesky(Square<double> a);
/// Solves with the factors, in place.
void cholesky_solve(Square<double> factors, double* b);

/// Eigenvalues `values` (n) and eigenvectors, the rows of `vectors`, by Jacobi rotations; `a` is spoilt.
void eigen(Square<double> a, double* values, Square<double> vectors);

/// The step that minimises g.s + s.A s / 2 within |s| <= radius: Newton's where A is positive definite and the step
/// short enough, else that of A + lambda I. `work` is of 2 n^2 + 2 n. Returns the predicted change, or NaN where
/// an input is not finite.
double restricted_step(Square<double> a, const double* g, double radius, double* work, double* step);

}  // namespace tessarel::numerics
