// The conditions of a critical point of a mixture (Heidemann & Khalil 1980, doi:10.1002/aic.690260510; Michelsen 1984,
// doi:10.1016/0378-3812(84)80011-3). With F_i = d(n a)/dn_i at given T and V and amounts n_i = z_i + s sqrt(z_i) u_i:
//
//   Q_ij = delta_ij + sqrt(z_i z_j) dF_i/dn_j   is singular, Q u = 0, and
//   c = d/ds (u' Q u)                           vanishes: the cubic form along the null vector.
//
// Everything is formed from a, not from the pressure, which is negative on the way of a search.
#pragma once

#include "eos/model.hpp"
#include "numerics/views.hpp"

namespace tessarel::envelope {

/// Q at t [K] and rho [1/A3], for amounts `z` of any sum, with the scaling by the amounts `scale` (z itself at s = 0).
void criticality_matrix(const eos::Eos& eos, int n, const double* z, const double* scale, double t, double rho,
                        numerics::Square<double> q);

/// The cubic form along `u` (n).
double cubic_form(const eos::Eos& eos, int n, const double* z, double t, double rho, const double* u);

/// The smallest eigenvalue of Q, its unit eigenvector, and the cubic form along it.
struct Criticality {
  double lambda = 0, c = 0;
  fluid::Vector u{};
};
/// `like`, unless null, settles the free sign of u, and with it of c.
Criticality criticality(const eos::Eos& eos, int n, const double* z, double t, double rho,
                        const double* like = nullptr);

/// Newton's method on lambda = 0 and c = 0 in t and ln rho from a start nearby. False if it does not converge or ends
/// where no phase is: t or the slope of the pressure not positive, p not below 1e9 Pa.
bool refine_critical(const eos::Eos& eos, int n, const double* z, double& t, double& rho);

/// Says whether a critical state found is one to keep.
using Accept = bool (*)(const eos::Eos& eos, int n, const double* z, double t, double rho);

/// Searches along the limit of stability, from low densities to high ones, for where c changes sign. `t_start` is an
/// estimate of the critical temperature.
bool find_critical(const eos::Eos& eos, int n, const double* z, double t_start, double& t, double& rho, Accept accept);

/// Whether Q is positive definite at `t` at a series of densities, with a margin: then `t` is above the critical point.
bool stable_at_all_densities(const eos::Eos& eos, int n, const double* z, double t);

}  // namespace tessarel::envelope
