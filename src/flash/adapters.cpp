#include "flash/adapters.hpp"

#include <algorithm>
#include <cmath>

#include "eos/compressibility.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "eos/helmholtz.hpp"

namespace tessarel::flash {

using eos::Eos;
using fluid::avogadro_factor;
using fluid::gas_constant;
using fluid::pressure_factor;

namespace {

/// Phase code of the equation of state for one of the flash.
int phase_of(std::int32_t mt) {
  return mt == 1 ? 1 : mt == -1 ? 2 : -1;
}

}  // namespace

void fugacoeff(const Eos& eos, std::int32_t icon, std::int32_t mt, int n, const double* z, double t, double p,
               double* lnphi, double* dlnphi_dt, double* dlnphi_dp, double* dlnphi_dn, std::int32_t& ic,
               std::int32_t& ierr) {
  ierr = 0;
  ic = mt == 0 ? 2 : 1;
  double sum = 0;
  for (int i = 0; i < n; ++i) sum += z[i];
  fluid::Vector fractions;
  for (int i = 0; i < n; ++i) fractions[fluid::at(i)] = z[i] / sum;
  const double* x = fractions.data();
  const double pressure = p * pascal_per_bar;
  const int phase = phase_of(mt);
  std::fill_n(lnphi, n, 0.0);
  const bool by_tp = icon == 2 || icon == 6, by_n = icon == 3 || icon == 6;
  if (by_tp) {
    std::fill_n(dlnphi_dt, n, 0.0);
    std::fill_n(dlnphi_dp, n, 0.0);
  }
  if (by_n) std::fill_n(dlnphi_dn, n * n, 0.0);
  switch (icon) {
    case 1:
      eos::calc_lnphi(eos, n, x, t, pressure, phase, lnphi);
      break;
    case 2:
      eos::calc_lnphi_tp(eos, n, x, t, pressure, phase, lnphi, dlnphi_dt, dlnphi_dp);
      break;
    case 3:
      eos::calc_lnphi_n(eos, n, x, t, pressure, phase, lnphi, dlnphi_dn);
      break;
    case 6:
      eos::calc_lnphi_tpn(eos, n, x, t, pressure, phase, lnphi, dlnphi_dt, dlnphi_dp, dlnphi_dn);
      break;
    default:
      break;
  }
  if (by_tp)
    for (int i = 0; i < n; ++i) dlnphi_dp[i] *= pascal_per_bar;
}

void fluiddata(const fluid::Parameters& p, const fluid::Limits& limits, int i, double& tc, double& pc, double& omega) {
  const auto k = fluid::at(i - 1);
  tc = limits.tci[k];
  pc = limits.pci[k] / pascal_per_bar;
  omega = p.omega[k];
}

double auxprop_rho(const Eos& eos, int n, const double* x, double t, double rho, double& p, double* aux) {
  const double vr = avogadro_factor / rho / gas_constant * 100000.0;
  double a = 0, a_t = 0, a_tt = 0;
  eos::calc_a_dt12(eos, n, x, t, rho, a, a_t, a_tt);
  const auto [z_eos, z_t] = eos::calc_z_first_t(eos, n, x, t, rho);
  const double z_rho = eos::calc_dz_drho(eos, n, x, 0, t, rho);
  if (p == 0) p = pressure_factor * z_eos * t * rho * 1e-5;
  const double z = p * vr / t;
  const double dpdv = -pressure_factor * t * (rho * z_rho + z) * rho * rho / avogadro_factor;
  const double dpdt = pressure_factor * rho * (t * z_t + z);
  const double w = -100000.0 * dpdt / (gas_constant * dpdv);
  aux[2] = t * (z - 1.0 - t * a_t);
  aux[3] = std::log(std::abs(z)) - a - t * a_t;  // under tension z and p are negative, and ln (z / p) is what counts
  aux[4] = -t * (2.0 * a_t + t * a_tt) - 1.0 - (t / gas_constant) * dpdt * dpdt / dpdv;
  aux[5] = 1.0 / p - w;
  aux[6] = vr - t * w;
  aux[7] = dpdv * gas_constant * 1e-10;
  aux[8] = w;
  aux[9] = aux[7] / t;
  return z;
}

void auxprop(const Eos& eos, int n, const double* x, double t, double& p, std::int32_t mt, double& z, double* aux) {
  double rho = 0;
  eos::calc_rho(eos, n, x, t, p * pascal_per_bar, phase_of(mt), rho);
  z = auxprop_rho(eos, n, x, t, rho, p, aux);
}

void auxprop_v(const Eos& eos, int n, const double* x, double t, double& p, double v, double* aux) {
  const double rho = avogadro_factor / v / gas_constant * 100000.0;
  auxprop_rho(eos, n, x, t, rho, p, aux);
}

}  // namespace tessarel::flash
