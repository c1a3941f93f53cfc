// The reduced residual Helmholtz energy a and its derivatives.
//
// t [K], rho [1/A3]; fractions are independent variables in the derivatives by x. Arrays: by x n values, second order
// n x n, third order n x n x n. Plain derivatives, nothing scaled.
#pragma once

#include "eos/model.hpp"

namespace tessarel::eos {

double calc_a(const Eos& eos, int n, const double* x, double t, double rho);

double calc_da_dt(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d2a_dt2(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d3a_dt3(const Eos& eos, int n, const double* x, double t, double rho);
/// a and a_t in one evaluation.
void calc_a_da_dt(const Eos& eos, int n, const double* x, double t, double rho, double& a, double& a_t);
/// a with its first two derivatives by t in one evaluation.
void calc_a_dt12(const Eos& eos, int n, const double* x, double t, double rho, double& a, double& a1, double& a2);
/// The first three derivatives by t in one evaluation.
void calc_da_dt123(const Eos& eos, int n, const double* x, double t, double rho, double& a1, double& a2, double& a3);

double calc_da_drho(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d2a_drho2(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d3a_drho3(const Eos& eos, int n, const double* x, double t, double rho);
double calc_d4a_drho4(const Eos& eos, int n, const double* x, double t, double rho);

void calc_da_dx(const Eos& eos, int n, const double* x, double t, double rho, double* a_x);
void calc_d2a_dxdx(const Eos& eos, int n, const double* x, double t, double rho, double* a_xx);
void calc_d3a_dxdxdx(const Eos& eos, int n, const double* x, double t, double rho, double* a_xxx);
void calc_d2a_dtdx(const Eos& eos, int n, const double* x, double t, double rho, double* a_tx);
void calc_d2a_drhodx(const Eos& eos, int n, const double* x, double t, double rho, double* a_rhox);

/// Derivatives by mole numbers at a total of one mole, constant t and rho.
void calc_da_dn(const Eos& eos, int n, const double* x, double t, double rho, double* a_n);
void calc_d2a_dndn(const Eos& eos, int n, const double* x, double t, double rho, double* a_nn);
void calc_d3a_dndndn(const Eos& eos, int n, const double* x, double t, double rho, double* a_nnn);

}  // namespace tessarel::eos
