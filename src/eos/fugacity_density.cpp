// The fugacity forms at constant density, and the pure-fluid forms.
#include <cmath>

#include "eos/composition.hpp"
#include "eos/compressibility.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "eos/helmholtz.hpp"
#include "eos/mole_numbers.hpp"
#include "eos/pressure.hpp"

namespace tessarel::eos {

void calc_dlnphi_dt_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out) {
  const double a_t = calc_da_dt(eos, n, x, t, rho);
  const auto z = calc_z_first_t(eos, n, x, t, rho);
  const double common = a_t + (1.0 - 1.0 / z.value) * z.slope;
  if (n == 1) {
    out[0] = common;
    return;
  }
  calc_d2a_dtdx(eos, n, x, t, rho, out);
  const double s = weighted(at(n), x, out);
  for (int i = 0; i < n; ++i) out[i] += common - s;
}

void calc_dlnphi_drho_t(const Eos& eos, int n, const double* x, double t, double rho, double* out) {
  const auto z = calc_z_rho_x(eos, n, x, t, rho, out);
  const double s = weighted(at(n), x, out);
  for (int i = 0; i < n; ++i)
    out[i] = ((n == 1 ? 0.0 : out[i] - s) + z.value - 1.0) / rho + (1.0 - 1.0 / z.value) * z.slope;
}

void calc_dlnphi_dx_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out) {
  Vector z_x;
  const auto z = calc_z_rho_x(eos, n, x, t, rho, z_x.data());
  calc_d2a_dxdx(eos, n, x, t, rho, out);
  for (int j = 0; j < n; ++j) {
    double* column = out + j * n;
    const double common = (1.0 - 1.0 / z.value) * z_x[at(j)] - weighted(at(n), x, column);
    for (int i = 0; i < n; ++i) column[i] += common;
  }
}

void calc_dlnphi_dn_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out) {
  calc_dlnphi_dx_rho(eos, n, x, t, rho, out);
  project_rows(x, {out, at(n)});
}

void calc_d2lnphi_dxdx_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out) {
  const Arena::Frame frame(eos.arena());
  const auto size = at(n);
  double* a_xx = eos.arena().take<double>(size * size);
  double* z_xx = eos.arena().take<double>(size * size);
  Vector z_x;
  const double z = calc_z_rho_x(eos, n, x, t, rho, z_x.data()).value;
  calc_d2a_dxdx(eos, n, x, t, rho, a_xx);
  calc_d2z_dxdx(eos, n, x, t, rho, z_xx);
  calc_d3a_dxdxdx(eos, n, x, t, rho, out);
  for (std::size_t j = 0; j < size; ++j) {
    for (std::size_t k = 0; k < size; ++k) {
      // a_ijk is symmetric: the entries over i lie together.
      double* line = out + (j + size * k) * size;
      const double s = a_xx[j * size + k] + weighted(at(n), x, line);
      const double common = (1.0 - 1.0 / z) * z_xx[j * size + k] + z_x[j] * z_x[k] / (z * z) - s;
      for (std::size_t i = 0; i < size; ++i) line[i] += common;
    }
  }
}

void calc_d2lnphi_dndn_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out) {
  const Arena::Frame frame(eos.arena());
  const auto size = at(n);
  double* l_x = eos.arena().take<double>(size * size);
  double* l_xx = eos.arena().take<double>(size * size * size);
  double* gradient = eos.arena().take<double>(size);
  double* hessian = eos.arena().take<double>(size * size);
  double* projected = eos.arena().take<double>(size * size);
  double* row = eos.arena().take<double>(size);
  calc_dlnphi_dx_rho(eos, n, x, t, rho, l_x);
  calc_d2lnphi_dxdx_rho(eos, n, x, t, rho, l_xx);
  for (std::size_t i = 0; i < size; ++i) {
    for (std::size_t jk = 0; jk < size * size; ++jk) hessian[jk] = l_xx[i + size * jk];
    for (std::size_t j = 0; j < size; ++j) gradient[j] = l_x[i + size * j];
    project_second(x, gradient, {hessian, size}, row, {projected, size});
    for (std::size_t jk = 0; jk < size * size; ++jk) out[i + size * jk] = projected[jk];
  }
}

void calc_lnfug_rho(const Eos& eos, int n, const double* x, double t, double rho, double* lnfug) {
  calc_lnphi_rho(eos, n, x, t, rho, lnfug);
  const double p = calc_p_rho(eos, n, x, t, rho);
  for (int i = 0; i < n; ++i) lnfug[i] += std::log(x[i] * p);
}

void calc_dlnfug_dn_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out) {
  Vector p_n;
  calc_dlnphi_dn_rho(eos, n, x, t, rho, out);
  calc_dp_dn(eos, n, x, t, rho, p_n.data());
  const double p = calc_p_rho(eos, n, x, t, rho);
  for (int j = 0; j < n; ++j)
    for (int i = 0; i < n; ++i) out[i + j * n] += (i == j ? 1.0 / x[i] : 0.0) - 1.0 + p_n[at(j)] / p;
}

void calc_d2lnfug_dndn_rho(const Eos& eos, int n, const double* x, double t, double rho, double* out) {
  const Arena::Frame frame(eos.arena());
  double* z_nn = eos.arena().take<double>(at(n * n));
  Vector p_n;
  calc_d2lnphi_dndn_rho(eos, n, x, t, rho, out);
  calc_dp_dn(eos, n, x, t, rho, p_n.data());
  calc_d2z_dndn(eos, n, x, t, rho, z_nn);
  const double p = calc_p_rho(eos, n, x, t, rho);
  for (int k = 0; k < n; ++k)
    for (int j = 0; j < n; ++j)
      for (int i = 0; i < n; ++i)
        out[i + n * (j + n * k)] += (i == j && i == k ? -1.0 / (x[i] * x[i]) : 0.0) + 1.0 +
                                    pressure_factor * t * rho * z_nn[j * n + k] / p - p_n[at(j)] * p_n[at(k)] / (p * p);
}

namespace {

/// ln phi of a root of the pure fluid whose packing fraction is found from `eta`.
double root_of_pure(const MixtureState<double>& state, double p, double& eta) {
  densiter(state, p, eta);
  const double rho = eta * state.rho_eta;
  const double a = residual_a(state, rho, site_tolerance(eta));
  const double z = p / (pressure_factor * state.t * rho);
  return a - 1.0 - std::log(z) + z;
}

}  // namespace

void calc_lnphi_rho_pure(const Eos& eos, double t, double p, double& lnphi_l, double& lnphi_v, double& rho_l,
                         double& rho_v) {
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  const double x = 1.0;
  prepare(eos, state, 1, &x, 0, t);
  double eta_l = liquid_start, eta_v = vapour_start;
  lnphi_l = root_of_pure(state, p, eta_l);
  lnphi_v = root_of_pure(state, p, eta_v);
  rho_l = eta_l * state.rho_eta;
  rho_v = eta_v * state.rho_eta;
}

void calc_lnphi_eta(const Eos& eos, double t, double p, double& lnphi_l, double& lnphi_v) {
  double rho_l = 0, rho_v = 0;
  calc_lnphi_rho_pure(eos, t, p, lnphi_l, lnphi_v, rho_l, rho_v);
}

void calc_dlnphi_dp_rho_pure(double t, double p, double rho_l, double rho_v, double& d_l, double& d_v) {
  d_l = (p / (pressure_factor * t * rho_l) - 1.0) / p;
  d_v = (p / (pressure_factor * t * rho_v) - 1.0) / p;
}

void calc_dlnphi_dt_rho_pure(const Eos& eos, double t, double p, double rho_l, double rho_v, double& d_l, double& d_v) {
  const double x = 1.0;
  d_l = calc_da_dt(eos, 1, &x, t, rho_l) - (p / (pressure_factor * t * rho_l) - 1.0) / t;
  d_v = calc_da_dt(eos, 1, &x, t, rho_v) - (p / (pressure_factor * t * rho_v) - 1.0) / t;
}

}  // namespace tessarel::eos
