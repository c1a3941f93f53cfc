// Pressure of the equation of state and its derivatives. Pressures in Pa, t in K, rho in 1/A3.
#pragma once

#include "eos/mixture_state.hpp"

namespace tessarel::eos {

/// Pressure of the mixture `x` at `t` [K] and `v` [m3/mol].
double calc_p(const Eos& eos, int n, const double* x, double t, double v);

double calc_p_rho(const Eos& eos, int n, const double* x, double t, double rho);
double calc_dp_dt(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d2p_dt2(const Eos& eos, int n, const double* x, double t, double rho);
double calc_dp_drho(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d2p_drho2(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d3p_drho3(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d2p_dtdrho(const Eos& eos, int n, const double* x, double t, double rho);
void calc_dp_dx(const Eos& eos, int n, const double* x, double t, double rho, double* p_x);
/// Projection of calc_dp_dx: by mole numbers at constant t and rho.
void calc_dp_dn(const Eos& eos, int n, const double* x, double t, double rho, double* p_n);
/// Second derivative by mole numbers: central difference of calc_dz_dx over the amount of component i, at constant
/// volume; entry (i,j) at [i + j n].
void calc_d2p_dndn(const Eos& eos, int n, const double* x, double t, double rho, double* p_nn);

/// Pressure of component `ipure` alone by the packing fraction, with three derivatives; with `ipure` = 0 all fractions
/// count as 1.
struct EtaSlopes {
  double p, dp_deta, d2p_deta2, d3p_deta3;
};
EtaSlopes calc_p_deta(const Eos& eos, int n, int ipure, double t, double eta);
EtaSlopes p_deta(const MixtureState<double>& state, double eta);  ///< of a prepared state

}  // namespace tessarel::eos
