// The compressibility factor z = p / (rho k t) and its derivatives, module calc_z_module.
//
// t [K], rho [1/A3], plain derivatives (z_rho carries no factor rho). `ipure` = 0: the mixture x; i of 1 or more:
// component i alone, x is not read.
#pragma once

namespace tessarel::calc_z_module {

double calc_z(int n, const double* x, int ipure, double t, double rho);
double calc_dz_drho(int n, const double* x, int ipure, double t, double rho);
double calc_d2z_drho2(int n, const double* x, int ipure, double t, double rho);
double calc_d3z_drho3(int n, const double* x, int ipure, double t, double rho);

double calc_dz_dt(int n, const double* x, double t, double rho);
double calc_d2z_dt2(int n, const double* x, double t, double rho);
double calc_d2z_dtdrho(int n, const double* x, double t, double rho);

/// z with its first derivative by t or by rho, in one evaluation.
struct ValueAndSlope {
  double value, slope;
};
ValueAndSlope calc_z_first_t(int n, const double* x, double t, double rho);
ValueAndSlope calc_z_first_rho(int n, const double* x, double t, double rho);

/// z, z_rho and z_x of a mixture, in one evaluation.
ValueAndSlope calc_z_rho_x(int n, const double* x, double t, double rho, double* z_x);

/// z with its density derivatives up to the third.
struct DensityDerivatives {
  double z, z_rho, z_rhorho, z_rhorhorho;
};
DensityDerivatives calc_z_rho123(int n, const double* x, int ipure, double t, double rho);

/// z with its derivatives by t and rho up to the second order, in one evaluation.
struct ZDerivatives {
  double z, zt, ztt, zr, zrr, ztr;
};
ZDerivatives calc_z_second(int n, const double* x, double t, double rho);

void calc_dz_dx(int n, const double* x, double t, double rho, double* z_x);
void calc_d2z_dxdx(int n, const double* x, double t, double rho, double* z_xx);

/// By mole numbers at constant t and total volume, at one mole in total: a central difference with a step of 1e-6 in
/// the amount. The density follows the amount, so this is not the projection of calc_dz_dx.
void calc_dz_dn(int n, const double* x, double t, double rho, double* z_n);
/// By mole numbers at constant t and rho, from calc_dz_dx and calc_d2z_dxdx.
void calc_d2z_dndn(int n, const double* x, double t, double rho, double* z_nn);

/// By p at the vapour-like root of (t, p): z_rho / p_rho.
double calc_dz_dp(int n, const double* x, double t, double p);

/// The perturbed states of the differences by amounts: component i up or down by 1e-6 of a mole at constant volume.
struct AmountStep {
  static constexpr double size = 1e-6, up = 1.000001, down = 0.999999;
};
/// The fractions after the step of component i; `factor` is AmountStep::up or down.
void step_amount(int n, const double* x, int i, double factor, double* stepped);

}  // namespace tessarel::calc_z_module
