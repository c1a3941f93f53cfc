// The density iteration and the pure-fluid paths in pieces, as hosts call them: functions with several derivatives in
// one pass, and evaluations on a state that the host has prepared.
#pragma once

#include "blocks/context.hpp"

namespace tessarel::blocks {

/// What stays fixed while the density varies. Moments per density [A^k], `conv` = rho / eta [1/A3], diameters `d` (n)
/// and `dij` (n x n) [A], dispersion sums [A3], and `delta_t0` (n x n x 5 x 5), association strengths at g = 1 [A3].
struct FixedState {
  double zeta0r, zeta1r, zeta2r, conv;
  const double *d, *dij;
  double m2es3, m2e2s3;
  const double* delta_t0;
};

/// The mixture state that `f` describes, at t. Its arrays belong to the caller's arena frame.
void prepare_fixed(const Eos& eos, eos::MixtureState<double>& s, int n, const double* x, double t, const FixedState& f);

/// A function and its first three derivatives.
using Four = std::array<double, 4>;
Four contact_rho123(double eta);             ///< of one diameter, scaled by rho to its order
Four c1_eta123(const Eos& eos, double eta);  ///< at the mean segment number of set_mmean
/// eta I1 (0) or eta I2 (1) at the coefficients of set_mmean.
Four scaled_integral_eta123(const Eos& eos, int which, double eta);
/// The contact value of i and j by rho, scaled, or by eta; zeta2 in proportion. For n = 1 that of one diameter.
enum class ContactVariable { rho, eta };
Four contact_pair(int n, const double* d, double zeta2, double zeta3, int i, int j, ContactVariable by);

/// Association and polar terms of a for component 1 alone. `delta_t` (5 x 5): strengths at g = 1; `u`: energy [K].
double association_of_pure(const Eos& eos, double rho, double eta, const double* delta_t);
double polar_of_pure(const Eos& eos, double t, double rho, double eta, double u);

}  // namespace tessarel::blocks
