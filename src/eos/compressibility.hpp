// The compressibility factor z = p / (rho k t) and its derivatives.
//
// t [K], rho [1/A3], plain derivatives (z_rho carries no factor rho). `ipure` = 0: the mixture x; i of 1 or more:
// component i alone, x is not read.
#pragma once

#include "eos/mixture_state.hpp"

namespace tessarel::eos {

double calc_z(const Eos& eos, int n, const double* x, int ipure, double t, double rho);
double calc_dz_drho(const Eos& eos, int n, const double* x, int ipure, double t, double rho);
double calc_d2z_drho2(const Eos& eos, int n, const double* x, int ipure, double t, double rho);
double calc_d3z_drho3(const Eos& eos, int n, const double* x, int ipure, double t, double rho);

double calc_dz_dt(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d2z_dt2(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d2z_dtdrho(const Eos& eos, int n, const double* x, double t, double rho);

/// z with its first derivative by t or by rho, in one evaluation.
struct ValueAndSlope {
  double value, slope;
};
ValueAndSlope calc_z_first_t(const Eos& eos, int n, const double* x, double t, double rho);
ValueAndSlope calc_z_first_rho(const Eos& eos, int n, const double* x, double t, double rho);

/// z, z_rho and z_x of a mixture, in one evaluation.
ValueAndSlope calc_z_rho_x(const Eos& eos, int n, const double* x, double t, double rho, double* z_x);

/// z with its density derivatives up to the third.
struct DensityDerivatives {
  double z, z_rho, z_rhorho, z_rhorhorho;
};
DensityDerivatives calc_z_rho123(const Eos& eos, int n, const double* x, int ipure, double t, double rho);
DensityDerivatives z_rho123(const MixtureState<double>& state, double rho);  ///< of a prepared state

/// z with its derivatives by t and rho up to the second order, in one evaluation.
struct ZDerivatives {
  double z, zt, ztt, zr, zrr, ztr;
};
ZDerivatives calc_z_second(const Eos& eos, int n, const double* x, double t, double rho);

void calc_dz_dx(const Eos& eos, int n, const double* x, double t, double rho, double* z_x);
void calc_d2z_dxdx(const Eos& eos, int n, const double* x, double t, double rho, double* z_xx);

/// By mole numbers at constant t and total volume, at one mole in total: a central difference with a step of 1e-6 in
/// the amount. The density follows the amount, so this is not the projection of calc_dz_dx.
void calc_dz_dn(const Eos& eos, int n, const double* x, double t, double rho, double* z_n);
/// By mole numbers at constant t and rho, from calc_dz_dx and calc_d2z_dxdx.
void calc_d2z_dndn(const Eos& eos, int n, const double* x, double t, double rho, double* z_nn);

/// By p at the vapour-like root of (t, p): z_rho / p_rho.
double calc_dz_dp(const Eos& eos, int n, const double* x, double t, double p);

/// The perturbed states of the differences by amounts: component i up or down by 1e-6 of a mole at constant volume.
struct AmountStep {
  static constexpr double size = 1e-6, up = 1.000001, down = 0.999999;
};
/// The fractions after the step of component i; `factor` is AmountStep::up or down.
void step_amount(int n, const double* x, int i, double factor, double* stepped);

}  // namespace tessarel::eos
