#include "eos/pressure.hpp"

#include "eos/compressibility.hpp"
#include "eos/density.hpp"
#include "eos/mole_numbers.hpp"

namespace tessarel::calc_p_module {

using namespace calc_z_module;
using fluid_module::pressure_factor;
using fluid_module::record;

double calc_p(double t, double v) {
  return calc_p_rho(record.n, record.z.data(), t, fluid_module::avogadro_factor / v);
}

double calc_p_rho(int n, const double* x, double t, double rho) {
  return pressure_factor * calc_z(n, x, 0, t, rho) * t * rho;
}

double calc_dp_dt(int n, const double* x, double t, double rho) {
  // z and z_t come from one evaluation.
  const auto z = calc_z_first_t(n, x, t, rho);
  return pressure_factor * rho * (t * z.slope + z.value);
}

double calc_d2p_dt2(int n, const double* x, double t, double rho) {
  const auto z = calc_z_second(n, x, t, rho);
  return pressure_factor * rho * (2.0 * z.zt + t * z.ztt);
}

double calc_dp_drho(int n, const double* x, double t, double rho) {
  const auto z = calc_z_first_rho(n, x, t, rho);
  return pressure_factor * t * (rho * z.slope + z.value);
}

double calc_d2p_drho2(int n, const double* x, double t, double rho) {
  const auto z = calc_z_rho123(n, x, 0, t, rho);
  return pressure_factor * t * (2.0 * z.z_rho + rho * z.z_rhorho);
}

double calc_d3p_drho3(int n, const double* x, double t, double rho) {
  const auto z = calc_z_rho123(n, x, 0, t, rho);
  return pressure_factor * t * (3.0 * z.z_rhorho + rho * z.z_rhorhorho);
}

double calc_d2p_dtdrho(int n, const double* x, double t, double rho) {
  const auto z = calc_z_second(n, x, t, rho);
  return pressure_factor * ((rho * z.ztr + z.zt) * t + (rho * z.zr + z.z));
}

void calc_dp_dx(int n, const double* x, double t, double rho, double* p_x) {
  calc_dz_dx(n, x, t, rho, p_x);
  for (int i = 0; i < n; ++i) p_x[i] *= pressure_factor * t * rho;
}

void calc_dp_dn(int n, const double* x, double t, double rho, double* p_n) {
  calc_dp_dx(n, x, t, rho, p_n);
  eos::project_first(eos::at(n), x, p_n, p_n);
}

void calc_d2p_dndn(int n, const double* x, double t, double rho, double* p_nn) {
  fluid_module::Vector stepped, up, down;
  // The first derivative by amounts at constant volume of a perturbed state, times its total amount:
  // K t rho (z + rho z_rho + z_x(j) - sum x_k z_x(k)).
  const auto slopes = [&](int i, double factor, fluid_module::Vector& a) {
    step_amount(n, x, i, factor, stepped.data());
    const double density = factor * rho;
    const auto z = calc_z_rho_x(n, stepped.data(), t, density, a.data());
    eos::project_first(eos::at(n), stepped.data(), a.data(), a.data());
    for (int j = 0; j < n; ++j)
      a[eos::at(j)] = pressure_factor * t * density * (z.value + density * z.slope + a[eos::at(j)]);
  };
  for (int i = 0; i < n; ++i) {
    slopes(i, AmountStep::up, up);
    slopes(i, AmountStep::down, down);
    for (int j = 0; j < n; ++j)
      p_nn[i + j * n] =
          (up[eos::at(j)] / AmountStep::up - down[eos::at(j)] / AmountStep::down) / (2.0 * AmountStep::size);
  }
}

EtaSlopes calc_p_deta(int n, int ipure, double t, double eta) {
  fluid_module::Vector ones;
  ones.fill(1.0);
  const double rho = calc_vrho_module::calc_rho_eta(n, ones.data(), ipure, t, eta);
  const auto z = calc_z_rho123(n, ones.data(), ipure, t, rho);
  const double q = rho / eta, factor = pressure_factor * t;
  return {factor * rho * z.z, factor * q * (z.z + rho * z.z_rho), factor * q * q * (2.0 * z.z_rho + rho * z.z_rhorho),
          factor * q * q * q * (3.0 * z.z_rhorho + rho * z.z_rhorhorho)};
}

}  // namespace tessarel::calc_p_module
