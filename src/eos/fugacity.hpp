// Logarithms of the fugacity coefficients and their derivatives.
//
//   lnphi(i) = a_x(i) + a + z - 1 - sum x_k a_x(k) - ln z        (Gross & Sadowski 2001, eq. A.32)
//
// t [K], p [Pa], rho [1/A3]. Matrices are n x n with the component of lnphi as first index, the fastest; the second is
// the component by whose fraction (x, others held) or mole number (n, at one mole in total) the derivative is taken.
// `phase`: 1 liquid-like root, 2 vapour-like, -1 lower Gibbs energy. For a single component the terms in a_x drop out.
#pragma once

#include "eos/phase_root.hpp"

namespace tessarel::eos {

// Given t, p and a phase: the density is solved for. In the first four, z is p / (K t rho); in the others that of the
// equation of state.
void calc_lnphi(const Eos& eos, int n, const double* x, double t, double p, int phase, double* lnphi);
void calc_lnphi_tp(const Eos& eos, int n, const double* x, double t, double p, int phase, double* lnphi,
                   double* dlnphi_dt, double* dlnphi_dp);
void calc_lnphi_n(const Eos& eos, int n, const double* x, double t, double p, int phase, double* lnphi,
                  double* dlnphi_dn);
void calc_lnphi_tpn(const Eos& eos, int n, const double* x, double t, double p, int phase, double* lnphi,
                    double* dlnphi_dt, double* dlnphi_dp, double* dlnphi_dn);
void calc_dlnphi_dt(const Eos& eos, int n, const double* x, double t, double p, int phase, double* dlnphi_dt);
void calc_dlnphi_dp(const Eos& eos, int n, const double* x, double t, double p, int phase, double* dlnphi_dp);
void calc_dlnphi_dx(const Eos& eos, int n, const double* x, double t, double p, int phase, double* dlnphi_dx);
void calc_dlnphi_dn(const Eos& eos, int n, const double* x, double t, double p, int phase, double* dlnphi_dn);

/// Outputs of a call; those not wanted are null.
struct FugacityOutputs {
  double *lnphi = nullptr, *dt = nullptr, *dp = nullptr, *dx = nullptr, *dn = nullptr;
};

/// Given t, p and the root wanted, with starts from an earlier evaluation nearby: what the phase-split calculations
/// call. z is p / (K t rho). Returns the density.
double calc_lnphi_near(const Eos& eos, int n, const double* x, double t, double p, Root root, RootMemory& memory,
                       const FugacityOutputs& out);

// Given t, p and the density that belongs to them; z is p / (K t rho).
void calc_lnphi_tprho(const Eos& eos, int n, const double* x, double t, double p, double rho, double* lnphi);
void calc_lnphi_tpxn(const Eos& eos, int n, const double* x, double t, double p, double rho, double* dlnphi_dt,
                     double* dlnphi_dp, double* dlnphi_dx, double* dlnphi_dn);

// Given t and the density; derivatives at constant density unless said otherwise.
void calc_lnphi_rho(const Eos& eos, int n, const double* x, double t, double rho, double* lnphi);
void calc_dlnphi_dt_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out);
void calc_dlnphi_dp_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out);  ///< at constant t
void calc_dlnphi_drho_t(const Eos& eos, int n, const double* x, double t, double rho,
                        double* out);  ///< by rho at constant t
void calc_dlnphi_dx_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out);
void calc_dlnphi_dn_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out);
void calc_d2lnphi_dxdx_rho(const Eos& eos, int n, const double* x, double t, double rho,
                           double* out);  ///< n^3, [i + n (j + n k)]
void calc_d2lnphi_dndn_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out);
void calc_lnfug_rho(const Eos& eos, int n, const double* x, double t, double rho,
                    double* lnfug);  ///< ln(x_i p) + lnphi_i
void calc_dlnfug_dn_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out);
void calc_d2lnfug_dndn_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out);

// Component 1 of the model as a pure fluid: the liquid-like and the vapour-like root at (t, p).
void calc_lnphi_rho_pure(const Eos& eos, double t, double p, double& lnphi_l, double& lnphi_v, double& rho_l,
                         double& rho_v);
void calc_lnphi_eta(const Eos& eos, double t, double p, double& lnphi_l, double& lnphi_v);
void calc_dlnphi_dp_rho_pure(double t, double p, double rho_l, double rho_v, double& d_l, double& d_v);
void calc_dlnphi_dt_rho_pure(const Eos& eos, double t, double p, double rho_l, double rho_v, double& d_l, double& d_v);

}  // namespace tessarel::eos
