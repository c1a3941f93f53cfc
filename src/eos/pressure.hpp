// Pressure of the equation of state and its derivatives, module calc_p_module. Pressures in Pa, t in K, rho in 1/A3.
#pragma once

namespace tessarel::calc_p_module {

/// Pressure of the selected mixture at `t` [K] and `v` [m3/mol].
double calc_p(double t, double v);

double calc_p_rho(int n, const double* x, double t, double rho);
double calc_dp_dt(int n, const double* x, double t, double rho);
double calc_d2p_dt2(int n, const double* x, double t, double rho);
double calc_dp_drho(int n, const double* x, double t, double rho);
double calc_d2p_drho2(int n, const double* x, double t, double rho);
double calc_d3p_drho3(int n, const double* x, double t, double rho);
double calc_d2p_dtdrho(int n, const double* x, double t, double rho);
void calc_dp_dx(int n, const double* x, double t, double rho, double* p_x);
/// Projection of calc_dp_dx: by mole numbers at constant t and rho.
void calc_dp_dn(int n, const double* x, double t, double rho, double* p_n);
/// Second derivative by mole numbers: central difference of calc_dz_dx over the amount of component i, at constant
/// volume; entry (i,j) at [i + j n].
void calc_d2p_dndn(int n, const double* x, double t, double rho, double* p_nn);

/// Pressure of component `ipure` alone by the packing fraction, with three derivatives; with `ipure` = 0 all fractions
/// count as 1.
struct EtaSlopes {
  double p, dp_deta, d2p_deta2, d3p_deta3;
};
EtaSlopes calc_p_deta(int n, int ipure, double t, double eta);

}  // namespace tessarel::calc_p_module
